// A push button that is a chevron: to the left, or with `next` set to the right. Everything but its picture is a stock
// button's: target and action, press, key equivalent.
#pragma once

#include "tessaluna/platform/views/NSButton.h"

namespace TessalunaUIKit {

class PrevNextButton : public tessaluna::platform::NSButton {
 public:
  static const tessaluna::platform::ClassInfo staticClassInfo;
  const tessaluna::platform::ClassInfo& classInfo() const override { return staticClassInfo; }

  explicit PrevNextButton(tessaluna::platform::CGRect frame) : NSButton(frame) {}
  explicit PrevNextButton(tessaluna::platform::NSCoder& coder) : NSButton(coder) { coder.overlookKeys({"next"}); }

  // The direction; false initially, whatever an archive holds; a property of interface files. Setting it requests no redraw.
  bool next() const { return next_; }
  void setNext(bool next) { next_ = next; }

  // The chevron fills the rectangle that is to be redrawn, not the bounds.
  void drawRect(tessaluna::platform::CGRect rect) override;

 private:
  bool next_ = false;
};

}  // namespace TessalunaUIKit
