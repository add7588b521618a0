// A cross that is easier to hit than it is large: the button of a host that clears or stops something.
#pragma once

#include "tessaluna/platform/foundation/Geometry.h"
#include "tessaluna/uikit/trackrow/CloseButton.h"

namespace tessaluna::ready {

class CrossButton : public TessalunaUIKit::CloseButton {
 public:
  explicit CrossButton(platform::CGRect frame) : CloseButton(frame) {}
  // The cross is in the middle of the bounds.
  void drawRect(platform::CGRect) override { CloseButton::drawRect(platform::NSInsetRect(bounds(), 6, 6)); }
};

}  // namespace tessaluna::ready
