// A small text above a point of a slider, in a window of its own, so that no edge cuts it off. It takes no clicks and is not
// seen by assistive clients, which get the same from the slider.
#pragma once

#include <string>

#include "tessaluna/platform/foundation/Geometry.h"
#include "tessaluna/platform/foundation/Reference.h"
#include "tessaluna/platform/windows/NSWindow.h"

namespace TessalunaUIKit {

class TimeBubble {
 public:
  TimeBubble() = default;
  TimeBubble(const TimeBubble&) = delete;
  TimeBubble& operator=(const TimeBubble&) = delete;
  ~TimeBubble();

  // Above the rectangle, which is in the parent's base space, or below it at the upper edge of the screen.
  void show(const std::string& text, tessaluna::platform::CGRect rect, tessaluna::platform::NSWindow& parent);
  void hide();

 private:
  class Window;
  tessaluna::platform::Ref<Window> window_;  // null until it is shown
};

}  // namespace TessalunaUIKit
