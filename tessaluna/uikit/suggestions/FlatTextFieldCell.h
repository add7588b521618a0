// A text field cell with a flat look: a rounded frame of one color around a white shape. Comes from interface files only.
#pragma once

#include "tessaluna/uikit/suggestions/SuggestibleTextFieldCell.h"

namespace TessalunaUIKit {

class FlatTextFieldCell : public SuggestibleTextFieldCell {
 public:
  static const tessaluna::platform::ClassInfo staticClassInfo;
  const tessaluna::platform::ClassInfo& classInfo() const override { return staticClassInfo; }

  explicit FlatTextFieldCell(tessaluna::platform::NSCoder& coder);
  explicit FlatTextFieldCell(std::string text);  // not supported: stops the program
  tessaluna::platform::Ref<NSCell> copy() const override { return tessaluna::platform::make<FlatTextFieldCell>(*this); }

  // Black initially, whatever an archive holds; a property of interface files. Setting it requests no redraw.
  // Drawing with a null color stops the program.
  const tessaluna::platform::Ref<tessaluna::platform::NSColor>& borderColor() const { return borderColor_.optional(); }
  void setBorderColor(tessaluna::platform::Ref<tessaluna::platform::NSColor> color) { borderColor_ = std::move(color); }

  // The shapes have the size of the frame, but are at the origin of the view's coordinates wherever the frame is; the text
  // is in the frame. The border fades toward light gray while the application is not active; whoever changes that requests
  // the redraw. The program stops without NSApp.
  void drawWithFrame(tessaluna::platform::CGRect frame, tessaluna::platform::NSView& view) override;
  // The shape stays white on a dark desktop. There the texts, the caret and the selection are those of a light one, but for
  // a text color of the host's.
  tessaluna::platform::Ref<tessaluna::platform::NSText> setUpFieldEditorAttributes(
      const tessaluna::platform::Ref<tessaluna::platform::NSText>& editor) override;

 protected:
  tessaluna::platform::Ref<tessaluna::platform::NSColor> plainTextColor() const override;
  tessaluna::platform::Ref<tessaluna::platform::NSColor> placeholderColor() const override;

 private:
  tessaluna::platform::Required<tessaluna::platform::Ref<tessaluna::platform::NSColor>> borderColor_{"borderColor"};
};

}  // namespace TessalunaUIKit
