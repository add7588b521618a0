// A push button that is a chevron: to the left, or with `next` set to the right. Everything but its picture is a stock
// button's: target and action, press, key equivalent.
#pragma once

#include "platform/views/NSButton.h"

namespace TessalunaUIKit {

class PrevNextButton : public platform::NSButton {
 public:
  static const platform::ClassInfo staticClassInfo;
  const platform::ClassInfo& classInfo() const override { return staticClassInfo; }

  explicit PrevNextButton(platform::CGRect frame) : NSButton(frame) {}
  explicit PrevNextButton(platform::NSCoder& coder) : NSButton(coder) {}

  // The direction; false at the start, whatever an archive holds. Setting it asks for no redraw.
  bool next() const { return next_; }
  void setNext(bool next) { next_ = next; }

  // The chevron fills the rectangle that is to be redrawn, not the bounds.
  void drawRect(platform::CGRect rect) override;

 private:
  bool next_ = false;
};

}  // namespace TessalunaUIKit
