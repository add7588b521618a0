#include "tessaluna/uikit/cells/ImageAndTextCell.h"

#include <cmath>

#include "tessaluna/platform/foundation/memberTables.h"
#include "tessaluna/platform/graphics/NSColor.h"
#include "tessaluna/platform/graphics/NSImage.h"
#include "tessaluna/platform/graphics/NSRect.h"
#include "tessaluna/platform/interface_files/archivedLooks.h"
#include "tessaluna/platform/text/NSFont.h"

namespace TessalunaUIKit {

using namespace tessaluna::platform;

namespace {

// Between the image's slot and the text, and around the text while it is edited.
constexpr CGFloat gap = 3, titleInset = 2;

constexpr Property properties[] = {property<&ImageAndTextCell::setCellImage, "cellImage">()};

}  // namespace

const ClassInfo ImageAndTextCell::staticClassInfo{
    .name = "TessalunaUIKit.ImageAndTextCell", .base = &NSTextFieldCell::staticClassInfo, .properties = properties};

ImageAndTextCell::ImageAndTextCell() { setFont(NSFont::systemFontOfSize(NSFont::smallSystemFontSize())); }

CGSize ImageAndTextCell::cellSize() const {
  const CGSize text = NSTextFieldCell::cellSize();
  return {cellImage_ ? text.width + gap + text.height : text.width + gap, text.height};
}

CGRect ImageAndTextCell::titleRectForBounds(CGRect bounds) const {
  CGRect slot, rest;
  NSDivideRect(bounds, slot, rest, cellSize().height + gap, NSMinXEdge);
  // Intentional: the width stays, so the rectangle reaches beyond the right edge.
  return {rest.origin.x + titleInset, rest.origin.y + titleInset, rest.size.width, rest.size.height - 2 * titleInset};
}

void ImageAndTextCell::editWithFrame(CGRect frame, NSView& view, const Ref<NSText>& editor,
                                     const Ref<NSTextDelegate>& delegate, const Ref<NSEvent>& event) {
  NSTextFieldCell::editWithFrame(titleRectForBounds(frame), view, editor, delegate, event);
}

void ImageAndTextCell::selectWithFrame(CGRect frame, NSView& view, const Ref<NSText>& editor,
                                       const Ref<NSTextDelegate>& delegate, std::size_t start, std::size_t length) {
  NSTextFieldCell::selectWithFrame(titleRectForBounds(frame), view, editor, delegate, start, length);
}

CGRect ImageAndTextCell::textFrameIn(CGRect frame) const {
  if (cellImage_) {
    CGRect slot, rest;
    // Intentional: without the gap that the title's rectangle has.
    NSDivideRect(frame, slot, rest, cellSize().height, NSMinXEdge);
    return rest;
  }
  if (!isGroupCell()) return frame;
  const CGFloat offset = std::floor((frame.size.height - attributedStringValue()->size().height) * 0.5);
  return {frame.origin.x, frame.origin.y + offset, frame.size.width, frame.size.height - 2 * offset};
}

CGRect ImageAndTextCell::drawnTextRectForBounds(CGRect bounds) const { return drawingRectForBounds(textFrameIn(bounds)); }

void ImageAndTextCell::drawWithFrame(CGRect frame, NSView& view) {
  if (cellImage_) {
    const CGFloat side = cellSize().height;
    CGRect slot, rest;
    NSDivideRect(frame, slot, rest, side, NSMinXEdge);
    if (drawsBackground()) {
      if (backgroundColor()) backgroundColor()->set();
      else NSColor::controlBackgroundColor()->set();
      NSRectFill(slot);
    }
    slot.origin.y += 1;
    slot.size = {side, side};
    cellImage_->drawInRect(slot, {.operation = NSCompositingOperationSourceOver, .fraction = 1, .respectFlipped = true});
  }
  NSTextFieldCell::drawWithFrame(textFrameIn(frame), view);
}

}  // namespace TessalunaUIKit
