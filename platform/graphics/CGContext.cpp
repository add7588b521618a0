#include "platform/graphics/CGContext.h"

#include <cmath>

#include "platform/graphics/NSColor.h"
#include "platform/graphics/NSImage.h"

namespace platform {

void CGContext::saveState() {
  savedPatterns_.push_back(fillPattern_);
  canvas_.saveState();
}

void CGContext::restoreState() {
  if (savedPatterns_.empty()) return;
  fillPattern_ = std::move(savedPatterns_.back());
  savedPatterns_.pop_back();
  canvas_.restoreState();
}

void CGContext::setFillColor(const backend::Color& color) {
  fillPattern_ = nullptr;
  canvas_.setFillColor(color);
}

void CGContext::setFillPattern(Ref<NSImage> image) { fillPattern_ = std::move(image); }

void CGContext::fillPath(const backend::Path& path, backend::FillRule rule) {
  if (!fillPattern_) {
    canvas_.fillPath(path, rule);
    return;
  }
  const Ref<NSImage> tile = fillPattern_;
  const CGSize size = tile->size();
  const CGRect area = path.bounds();
  if (NSIsEmptyRect({{}, size}) || NSIsEmptyRect(area)) return;
  const GraphicsStateScope scope(*this);
  fillPattern_ = nullptr;
  clipPath(path, rule);
  const double firstColumn = std::floor(area.origin.x / size.width), firstRow = std::floor(area.origin.y / size.height);
  for (double row = firstRow; row * size.height < CGRectGetMaxY(area); ++row)
    for (double column = firstColumn; column * size.width < CGRectGetMaxX(area); ++column)
      tile->drawInContext(*this, {column * size.width, row * size.height, size.width, size.height});
}

void CGContextSetShadowWithColor(CGContext& context, CGSize offset, CGFloat blur, const NSColor* color) {
  backend::Shadow shadow{.offset = offset, .blur = blur, .color = {}};
  if (color) shadow.color = color->components();
  context.setShadow(shadow);
}

}  // namespace platform
