// A push button that is a cross. Everything but its picture is a stock button's; whether it is enabled does not show.
#pragma once

#include "platform/views/NSButton.h"

namespace TessalunaUIKit {

class CloseButton : public platform::NSButton {
 public:
  static const platform::ClassInfo staticClassInfo;
  const platform::ClassInfo& classInfo() const override { return staticClassInfo; }

  explicit CloseButton(platform::CGRect frame) : NSButton(frame) {}
  explicit CloseButton(platform::NSCoder& coder) : NSButton(coder) {}

  // The cross fills the rectangle that is to be redrawn, not the bounds.
  void drawRect(platform::CGRect rect) override;
};

}  // namespace TessalunaUIKit
