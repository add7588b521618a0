#include "tessaluna/platform/graphics/CGContext.h"

#include <algorithm>
#include <cmath>

#include "tessaluna/platform/graphics/NSColor.h"
#include "tessaluna/platform/graphics/NSImage.h"

namespace tessaluna::platform {

void CGContext::saveState() {
  saved_.push_back({state_, Saved::By::State});
  canvas_.saveState();
}

void CGContext::restoreState() {
  if (takeBack(Saved::By::State)) canvas_.restoreState();
}

void CGContext::beginTransparencyLayer() {
  saved_.push_back({state_, Saved::By::Layer});
  state_.alpha = 1;
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
  state_ = std::move(saved_.back().state);
  saved_.pop_back();
  return true;
}

void CGContext::setAlpha(CGFloat alpha) {
  state_.alpha = alpha;
  canvas_.setAlpha(alpha);
}

void CGContext::setFillColor(const backend::Color& color) {
  state_.fillPattern = nullptr;
  canvas_.setFillColor(color);
}

void CGContext::setFillPattern(Ref<NSImage> image) { state_.fillPattern = std::move(image); }

void CGContext::setStrokeColor(const backend::Color& color) {
  state_.strokePattern = nullptr;
  canvas_.setStrokeColor(color);
}

void CGContext::setStrokePattern(Ref<NSImage> image) { state_.strokePattern = std::move(image); }

namespace {

// Which tiles touch the area, counted in columns and rows from the origin. Empty where nothing is to be seen, and for more
// tiles than any screen has room for.
CGRect tilesUnder(CGRect area, CGSize tile) {
  constexpr double maxTiles = 1 << 20;
  if (NSIsEmptyRect({{}, tile}) || NSIsEmptyRect(area)) return {};
  const double left = std::floor(area.origin.x / tile.width), bottom = std::floor(area.origin.y / tile.height);
  const double right = std::ceil(CGRectGetMaxX(area) / tile.width), top = std::ceil(CGRectGetMaxY(area) / tile.height);
  const double count = (right - left) * (top - bottom);
  return count <= maxTiles ? CGRect{left, bottom, right - left, top - bottom} : CGRect{};  // none for NaN
}

}  // namespace

void CGContext::fillPath(const backend::Path& path, backend::FillRule rule) {
  const Ref<NSImage> tile = state_.fillPattern;
  if (!tile) {
    canvas_.fillPath(path, rule);
    return;
  }
  const CGRect tiles = tilesUnder(path.bounds(), tile->size());
  if (NSIsEmptyRect(tiles)) return;
  const GraphicsStateScope scope(*this);
  clipPath(path, rule);
  drawTiles(*tile, tiles);
}

void CGContext::strokePath(const backend::Path& path, const backend::StrokeStyle& style) {
  const Ref<NSImage> tile = state_.strokePattern;
  if (!tile) {
    canvas_.strokePath(path, style);
    return;
  }
  const double reach = style.width / 2 * (style.join == backend::LineJoin::Miter ? std::max(style.miterLimit, 2.0) : 2.0);
  const CGRect tiles = tilesUnder(NSInsetRect(path.bounds(), -reach, -reach), tile->size());
  if (NSIsEmptyRect(tiles)) return;
  // A line is not a clip: it is drawn first, and what is laid over it stays where the line is.
  beginTransparencyLayer();
  setStrokeColor({});
  canvas_.strokePath(path, style);
  setBlendMode(CGBlendMode::SourceIn);
  beginTransparencyLayer();
  drawTiles(*tile, tiles);
  endTransparencyLayer();
  endTransparencyLayer();
}

void CGContext::drawTiles(NSImage& tile, CGRect tiles) {
  state_.fillPattern = state_.strokePattern = nullptr;
  const CGSize size = tile.size();
  for (double row = CGRectGetMinY(tiles); row < CGRectGetMaxY(tiles); ++row)
    for (double column = CGRectGetMinX(tiles); column < CGRectGetMaxX(tiles); ++column)
      tile.drawInContext(*this, {column * size.width, row * size.height, size.width, size.height});
}

void CGContextSetShadowWithColor(CGContext& context, CGSize offset, CGFloat blur, const NSColor* color) {
  backend::Shadow shadow{.offset = offset, .blur = blur, .color = {}};
  if (color) shadow.color = color->components();
  context.setShadow(shadow);
}

}  // namespace tessaluna::platform
