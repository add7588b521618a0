// A push button that is a cross. Everything but its picture is a stock button's. Disabled by itself it looks as if it were enabled;
// while a view above has its controls disabled, it is pale.
#pragma once

#include "tessaluna/platform/views/NSButton.h"

namespace TessalunaUIKit {

class CloseButton : public tessaluna::platform::NSButton {
 public:
  static const tessaluna::platform::ClassInfo staticClassInfo;
  const tessaluna::platform::ClassInfo& classInfo() const override { return staticClassInfo; }

  explicit CloseButton(tessaluna::platform::CGRect frame) : NSButton(frame) {}
  explicit CloseButton(tessaluna::platform::NSCoder& coder) : NSButton(coder) {}

  // The cross fills the rectangle that is to be redrawn, not the bounds.
  void drawRect(tessaluna::platform::CGRect rect) override;
};

}  // namespace TessalunaUIKit
