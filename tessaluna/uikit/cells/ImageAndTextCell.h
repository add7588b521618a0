// A text field cell for tables and outlines: a square image at the left, and the text beside it. One with a title and no image
// is a group row, whose text is in the middle of the height.
#pragma once

#include "tessaluna/platform/cells/NSTextFieldCell.h"

namespace TessalunaUIKit {

class ImageAndTextCell : public tessaluna::platform::NSTextFieldCell {
 public:
  static const tessaluna::platform::ClassInfo staticClassInfo;
  const tessaluna::platform::ClassInfo& classInfo() const override { return staticClassInfo; }

  ImageAndTextCell();  // in the small system font
  explicit ImageAndTextCell(std::string text) : NSTextFieldCell(std::move(text)) {}
  explicit ImageAndTextCell(tessaluna::platform::NSCoder& coder) : NSTextFieldCell(coder) {}
  tessaluna::platform::Ref<NSCell> copy() const override { return tessaluna::platform::make<ImageAndTextCell>(*this); }

  // Null for text only; a property of interface files. Setting it requests no redraw.
  const tessaluna::platform::Ref<tessaluna::platform::NSImage>& cellImage() const { return cellImage_; }
  void setCellImage(tessaluna::platform::Ref<tessaluna::platform::NSImage> image) { cellImage_ = std::move(image); }
  bool isGroupCell() const { return !cellImage_ && !title().empty(); }

  // The stock cell's size and a gap in width; with an image also a square slot as high as the cell.
  tessaluna::platform::CGSize cellSize() const override;
  // Where the text is edited: 2 points inside of what is beside the slot and the gap, but as wide, so that it reaches beyond the
  // right edge. The slot is left free also without an image.
  tessaluna::platform::CGRect titleRectForBounds(tessaluna::platform::CGRect bounds) const override;
  void editWithFrame(tessaluna::platform::CGRect frame, tessaluna::platform::NSView& inView,
                     const tessaluna::platform::Ref<tessaluna::platform::NSText>& editor,
                     const tessaluna::platform::Ref<tessaluna::platform::NSTextDelegate>& delegate,
                     const tessaluna::platform::Ref<tessaluna::platform::NSEvent>& event) override;
  void selectWithFrame(tessaluna::platform::CGRect frame, tessaluna::platform::NSView& inView,
                       const tessaluna::platform::Ref<tessaluna::platform::NSText>& editor,
                       const tessaluna::platform::Ref<tessaluna::platform::NSTextDelegate>& delegate, std::size_t start,
                       std::size_t length) override;

  // The image fills its square whatever its own shape, and is on the text's background if the cell draws one.
  void drawWithFrame(tessaluna::platform::CGRect frame, tessaluna::platform::NSView& view) override;

 protected:
  tessaluna::platform::CGRect drawnTextRectForBounds(tessaluna::platform::CGRect bounds) const override;

 private:
  // What is left of a frame for the stock cell, beside the image or in the middle of a group row.
  tessaluna::platform::CGRect textFrameIn(tessaluna::platform::CGRect frame) const;

  tessaluna::platform::Ref<tessaluna::platform::NSImage> cellImage_;
};

}  // namespace TessalunaUIKit
