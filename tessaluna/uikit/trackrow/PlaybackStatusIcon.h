// Shows the mark of an inverted polarity. It has no state.
#pragma once

#include "tessaluna/platform/views/NSView.h"

namespace TessalunaUIKit {

class PlaybackStatusIcon : public tessaluna::platform::NSView {
 public:
  static const tessaluna::platform::ClassInfo staticClassInfo;
  const tessaluna::platform::ClassInfo& classInfo() const override { return staticClassInfo; }

  explicit PlaybackStatusIcon(tessaluna::platform::CGRect frame) : NSView(frame) {}
  explicit PlaybackStatusIcon(tessaluna::platform::NSCoder& coder) : NSView(coder) {}

  // The mark fills the rectangle that is to be redrawn, not the bounds.
  void drawRect(tessaluna::platform::CGRect rect) override;

  bool isAccessibilityElement() const override { return true; }
  std::string accessibilityRole() const override { return std::string(tessaluna::platform::NSAccessibilityImageRole); }
  std::string accessibilityTitle() const override;  // "Inverted polarity" in the user's language
};

}  // namespace TessalunaUIKit
