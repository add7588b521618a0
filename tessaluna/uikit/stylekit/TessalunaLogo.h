// Shows the application's name in a flowing script, black, without a ground. The name takes almost all of
// the width of the bounds, leaves about a twelfth of their height free at the top and at the bottom, and takes their proportion:
// give the view 415 by 100 points, or a multiple of it, to show it undistorted.
#pragma once

#include "tessaluna/platform/views/NSView.h"

namespace TessalunaUIKit {

class TessalunaLogo : public tessaluna::platform::NSView {
 public:
  static const tessaluna::platform::ClassInfo staticClassInfo;
  const tessaluna::platform::ClassInfo& classInfo() const override { return staticClassInfo; }

  explicit TessalunaLogo(tessaluna::platform::CGRect frame) : NSView(frame) {}
  explicit TessalunaLogo(tessaluna::platform::NSCoder& coder) : NSView(coder) {}

  // Paints the whole name, whichever part is to be redrawn.
  void drawRect(tessaluna::platform::CGRect) override;

  // An addition: to assistive clients it is an image that is called by the name.
  bool isAccessibilityElement() const override { return true; }
  std::string accessibilityRole() const override { return std::string(tessaluna::platform::NSAccessibilityImageRole); }
  std::string accessibilityTitle() const override { return "Tessaluna"; }
};

}  // namespace TessalunaUIKit
