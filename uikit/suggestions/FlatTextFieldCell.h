// A text field cell with a flat look: a rounded frame of one color around a white shape. Comes from interface files only.
#pragma once

#include "uikit/suggestions/SuggestibleTextFieldCell.h"

namespace TessalunaUIKit {

class FlatTextFieldCell : public SuggestibleTextFieldCell {
 public:
  static const platform::ClassInfo staticClassInfo;
  const platform::ClassInfo& classInfo() const override { return staticClassInfo; }

  explicit FlatTextFieldCell(platform::NSCoder& coder);
  explicit FlatTextFieldCell(std::string text);  // not supported: stops the program

  // Of the frame; black at the start. Setting it asks for no redraw.
  const platform::Ref<platform::NSColor>& borderColor() const { return borderColor_; }
  void setBorderColor(platform::Ref<platform::NSColor> color) { borderColor_ = std::move(color); }

  // The frame fades toward light gray while the application is not active; whoever changes that asks for the redraw. The
  // program stops without NSApp.
  void drawWithFrame(platform::CGRect frame, platform::NSView& view) override;

 private:
  platform::Ref<platform::NSColor> borderColor_;
};

}  // namespace TessalunaUIKit
