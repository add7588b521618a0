#include "platform/graphics/CGContext.h"

#include <algorithm>
#include <cmath>

#include "platform/graphics/NSColor.h"
#include "platform/graphics/NSImage.h"

namespace platform {

void CGContext::saveState() {
  saved_.push_back({fillPattern_, Saved::By::State});
  canvas_.saveState();
}

void CGContext::restoreState() {
  if (takeBack(Saved::By::State)) canvas_.restoreState();
}

void CGContext::beginTransparencyLayer() {
  saved_.push_back({fillPattern_, Saved::By::Layer});
  canvas_.beginTransparencyLayer();
}

void CGContext::endTransparencyLayer() {
  // What was saved within the layer ends with it.
  const auto isLayer = [](const Saved& saved) { return saved.by == Saved::By::Layer; };
  if (std::none_of(saved_.begin(), saved_.end(), isLayer)) return;
  while (!isLayer(saved_.back())) restoreState();
  takeBack(Saved::By::Layer);
  canvas_.endTransparencyLayer();
}

bool CGContext::takeBack(Saved::By by) {
  if (saved_.empty() || saved_.back().by != by) return false;
  fillPattern_ = std::move(saved_.back().fillPattern);
  saved_.pop_back();
  return true;
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
