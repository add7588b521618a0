#include "tessaluna/backends/raster/Pipeline.h"

#include <utility>

namespace tessaluna::backend::raster {

namespace {

// Tolerances for flattened curves, in device pixels. In a pixel that a chord crosses diagonally its distance counts 1.4
// times.
constexpr double chordTolerance = 0.0083, areaTolerance = 0.006;
constexpr double endStep = 2.0 / 3;  // with this, no area is lost at the ends either
// Of a shadow's blur, in device pixels. A wider shadow is nearly even over any screen; its reach bounds the planes for it.
constexpr double largestDeviation = 1000;
// How far outside a clip, in pixels, a layer keeps shapes that cast a shadow into it: a huge blur would need a huge layer.
constexpr int farthestCast = 512;
// All open layers together may have this many times the bitmap's pixels, and some more for small bitmaps.
constexpr std::size_t layersPerBitmap = 8, leastLayerPixels = std::size_t(8) << 20;
// Layers nested deeper than this do not keep their memory, since few drawings need them.
constexpr std::size_t maxLayersKept = 8;

// The rectangle in device pixels, if the transform keeps it upright.
std::optional<DeviceRect> uprightRect(CGRect r, const CGAffineTransform& t) {
  const bool keepsAxes = (t.b == 0 && t.c == 0) || (t.a == 0 && t.d == 0);
  if (!keepsAxes) return std::nullopt;
  const CGPoint a = t.apply({CGRectGetMinX(r), CGRectGetMinY(r)}), b = t.apply({CGRectGetMaxX(r), CGRectGetMaxY(r)});
  if (!isUsable(a) || !isUsable(b)) return std::nullopt;
  return DeviceRect{std::min(a.x, b.x), std::min(a.y, b.y), std::max(a.x, b.x), std::max(a.y, b.y)};
}

std::optional<DeviceRect> uprightRect(const Path& path, const CGAffineTransform& t) {
  return path.shape().kind == PathShape::Kind::Rect ? uprightRect(path.shape().rect, t) : std::nullopt;
}

// Passes a shape on to a painter, less its shadow.
template <class Sink>
class OutOfShadowSink {
 public:
  // `left` must have room for a row.
  OutOfShadowSink(Sink& sink, Blur& shadow, float shadowAlpha, float* left)
      : sink_(sink), shadow_(shadow), shadowAlpha_(shadowAlpha), left_(left) {}
  void uniform(int x, int y, int count, float winding) { uniformRows({x, y, x + count, y + 1}, winding); }
  void varied(int x, int y, int count, const float* windings) { variedRows({x, y, x + count, y + 1}, windings); }
  void uniformRows(const PixelRect& box, float winding) {
    const float coverage = coverageOf(winding);
    pass(
        box, [=](int) { return splat(coverage); }, [=](int) { return coverage; });
  }
  void variedRows(const PixelRect& box, const float* windings) {
    pass(
        box, [=](int i) { return coverageOfFour(windings + i); }, [=](int i) { return coverageOf(windings[i]); });
  }

 private:
  template <class FourAt, class OneAt>
  void pass(const PixelRect& box, FourAt fourAt, OneAt oneAt) {
    for (int y = box.top, bottom; y < box.bottom; y = bottom) {
      const Blur::Rows shadow = shadow_.rowsAt(box.left, y, box.width());
      bottom = std::min(box.bottom, shadow.bottom);
      int i = 0;
      for (; i + 4 <= box.width(); i += 4) {
        const Float4 four = fourAt(i) * (splat(1) - splat(shadowAlpha_) * fourOf(shadow.values + i));
        std::memcpy(left_ + i, &four, sizeof four);
      }
      for (; i < box.width(); ++i) left_[i] = oneAt(i) * (1 - shadowAlpha_ * shadow.values[i]);
      sink_.variedRows({box.left, y, box.right, bottom}, left_);
    }
  }

  Sink& sink_;
  Blur& shadow_;
  const float shadowAlpha_;
  float* const left_;
};

}  // namespace

void RasterCanvas::Pipeline::begin(Bitmap& bitmap, const View& view) {
  bitmap_ = &bitmap;
  saved_.clear();
  openLayers_ = 0;
  layerPixels_ = bitmap.bounds().area() * layersPerBitmap + leastLayerPixels;
  state_ = {};
  scale_ = view.scale;
  const double s = view.scale;
  const bool isUsableView = s > 0 && std::isfinite(s) && isUsable(view.origin);
  state_.toDevice = {s, 0, 0, -s, -view.origin.x * s, bitmap.height() + view.origin.y * s};
  state_.clip.box = isUsableView ? bitmap.bounds() : PixelRect{};
}

void RasterCanvas::Pipeline::saveState() { saved_.push_back(state_); }

void RasterCanvas::Pipeline::restoreState() {
  // States that were saved before the innermost layer began are restored only after it ends.
  const std::size_t kept = openLayers_ ? layers_[openLayers_ - 1]->savedStates : 0;
  if (saved_.size() <= kept) return;
  state_ = std::move(saved_.back());
  saved_.pop_back();
}

std::optional<RasterCanvas::Pipeline::CastShadow> RasterCanvas::Pipeline::castShadow() const {
  const Shadow& shadow = state_.shadow;
  if (!shadow.color) return std::nullopt;
  CastShadow cast;
  cast.color = premultiplied(*shadow.color, 1);
  cast.dx = shadow.offset.width * scale_;
  cast.dy = -shadow.offset.height * scale_;
  const double deviation = shadow.blur * scale_ / 2;
  cast.deviation = deviation > 0 ? std::min(deviation, largestDeviation) : 0;
  // An offset larger than any picture moves the shadow out of it.
  if (cast.color[3] == 0 || !(std::abs(cast.dx) < 1e6) || !(std::abs(cast.dy) < 1e6)) return std::nullopt;
  return cast;
}

// The box from which a shadow falls into the clip.
PixelRect RasterCanvas::Pipeline::castingBox(const CastShadow& shadow) const {
  const int reach = std::min(Blur::reach(shadow.deviation), farthestCast) + 1;
  const int dx = int(std::floor(shadow.dx)), dy = int(std::floor(shadow.dy));
  const PixelRect& clip = state_.clip.box;
  return {clip.left - dx - reach - 1, clip.top - dy - reach - 1, clip.right - dx + reach, clip.bottom - dy + reach};
}

// The box in which a shape's pixels matter: the clip, and the box from which its shadow falls into the clip.
PixelRect RasterCanvas::Pipeline::neededBox(const std::optional<CastShadow>& shadow) const {
  const PixelRect& clip = state_.clip.box;
  return !shadow || clip.isEmpty() ? clip : clip.united(castingBox(*shadow));
}

void RasterCanvas::Pipeline::flatten(const Path& path, const CGAffineTransform& transform, const PixelRect& visible) {
  const FlattenSettings settings{
      .visible = DeviceRect::of(visible), .tolerance = chordTolerance, .areaTolerance = areaTolerance, .endStep = endStep};
  Flattener<Polygons>(settings, polygons_).add(path, transform);
}

void RasterCanvas::Pipeline::clip(CGRect rect) {
  if (state_.clip.box.isEmpty()) return;
  if (const auto upright = uprightRect(rect, state_.toDevice)) return state_.clip.intersectRect(*upright);
  clip(Path::rect(rect), FillRule::NonZero);
}

void RasterCanvas::Pipeline::clip(const Path& path, FillRule rule) {
  Clip& clip = state_.clip;
  if (clip.box.isEmpty()) return;
  if (const std::optional<DeviceRect> rect = uprightRect(path, state_.toDevice)) return clip.intersectRect(*rect);
  polygons_.clear();
  flatten(path, state_.toDevice, clip.box);
  const PixelRect covered = clip.box.intersected(polygons_.bounds().roundedOut());
  if (covered.isEmpty()) return clip.makeEmpty();
  clip.intersectShape({.polygons = polygons_, .rule = rule}, covered, coverage_, masks_);
}

void RasterCanvas::Pipeline::fill(const Path& path, FillRule rule) {
  paintOutline({.path = path, .rule = rule}, {.color = premultiplied(state_.fillColor, state_.alpha)});
}

void RasterCanvas::Pipeline::stroke(const Path& path, const StrokeStyle& style) {
  paintOutline({.path = path, .pen = &style}, {.color = premultiplied(state_.strokeColor, state_.alpha)});
}

void RasterCanvas::Pipeline::fillGradient(const Path& path, FillRule rule, const LinearGradient& gradient) {
  if (state_.clip.box.isEmpty() || !ramp_.begin(gradient, state_.toDevice)) return;
  paintOutline({.path = path, .rule = rule}, {.rows = &ramp_, .alpha = float(clamp01(state_.alpha))});
}

// Every window begins its redraws with a clear background: a translucent rectangle on whole pixels that replaces what is
// there.
bool RasterCanvas::Pipeline::replaceWholePixels(const DeviceRect& rect, const Source& source) {
  if (state_.blendMode != BlendMode::Copy || !source.isUniform() || openLayers_ > 0 || !state_.clip.isPlain()) return false;
  Clip filled = state_.clip;
  filled.intersectRect(rect);
  if (!filled.isPlain()) return false;
  std::uint32_t pixel = 0;
  storeRow(&source.color, &pixel, 1);
  for (int y = filled.box.top; y < filled.box.bottom; ++y)
    fillPixels(bitmap_->row(y) + filled.box.left, filled.box.width(), pixel);
  return true;
}

// Fills row by row, without computing coverage from sides.
void RasterCanvas::Pipeline::fillRect(const DeviceRect& rect, const Source& source) {
  const PixelRect box = rect.roundedOut().intersected(state_.clip.box);
  const int last = box.right - 1;
  const float leftShare = shareOfPixel(box.left, rect.left, rect.right),
              rightShare = shareOfPixel(last, rect.left, rect.right);
  const int from = leftShare < 1 ? box.left + 1 : box.left, to = rightShare < 1 ? last : box.right;
  // An image is averaged row by row, and only the last row is kept: the three parts of a row must follow each other.
  const bool goesRowByRow = source.rows && (leftShare < 1 || rightShare < 1);
  paint(source, box, [&](auto& painter, const PixelRect& part) {
    const int partFrom = std::max(from, part.left), partTo = std::min(to, part.right);
    for (int top = part.top, bottom; top < part.bottom; top = bottom) {
      // Only the first and the last row may be partly covered.
      const bool isEdge = top == part.top || top + 1 == part.bottom;
      bottom = isEdge || goesRowByRow ? top + 1 : part.bottom - 1;
      const float height = shareOfPixel(top, rect.top, rect.bottom);
      if (from > part.left) painter.uniformRows({part.left, top, part.left + 1, bottom}, height * leftShare);
      if (partFrom < partTo) painter.uniformRows({partFrom, top, partTo, bottom}, height);
      if (to < part.right && last >= from) painter.uniformRows({last, top, last + 1, bottom}, height * rightShare);
    }
  });
}

// False if a part of a stroke was left out because it is not visible.
bool RasterCanvas::Pipeline::makePolygons(const Outline& outline, const CGAffineTransform& transform,
                                          const PixelRect& visible) {
  polygons_.clear();
  if (outline.pen) return stroker_.stroke(outline.path, *outline.pen, transform, DeviceRect::of(visible), polygons_);
  flatten(outline.path, transform, visible);
  return true;
}

void RasterCanvas::Pipeline::paintOutline(const Outline& outline, const Source& source) {
  // What is transparent casts no shadow either.
  const bool leavesNoMark = source.isUniform() && source.color[3] == 0 && needsSource(state_.blendMode);
  if (state_.clip.box.isEmpty() || leavesNoMark) return;
  const std::optional<CastShadow> shadow = castShadow();
  if (const auto rect = shadow || outline.pen ? std::nullopt : uprightRect(outline.path, state_.toDevice)) {
    if (paintsPlainly(source)) return fillRect(*rect, source);
    if (replaceWholePixels(*rect, source)) return;
  }
  // Layers that keep a shape, and shadows, need polygons.
  const bool mayBeKnown = !shadow && openLayers_ == 0 && outline.path.points().size() <= ShapeCache::maxPoints &&
                          PixelPlacement::isPossible(state_.toDevice);
  if (mayBeKnown) return paintKnownOutline(outline, source);
  makePolygons(outline, state_.toDevice, neededBox(shadow));
  paintPolygons({.polygons = polygons_, .rule = outline.rule}, source, shadow);
}

// Coverage is computed near the origin even if it is not kept, so that it is the same wherever in the picture it appears.
void RasterCanvas::Pipeline::paintKnownOutline(const Outline& outline, const Source& source) {
  const PixelPlacement place(state_.toDevice);
  const ShapeCache::Key key(outline.path, outline.rule, outline.pen, place.rest);
  const PixelRect clip = state_.clip.box.moved({-place.moved.x, -place.moved.y});
  const ShapeCache::Sight sight = shapes_.look(key, clip);
  const auto paintKept = [&](const CoverageRuns& coverage) {
    paint(source, coverage.box().moved(place.moved),
          [&](auto& painter, const PixelRect&) { coverage.sendTo(painter, place.moved); });
  };
  if (sight.kept) return paintKept(sight.kept->coverage);

  const bool hasAllPoints = makePolygons(outline, place.rest, clip);
  CoverageBuffer::Shape shape{.polygons = polygons_, .rule = outline.rule};
  const PixelRect whole = polygons_.bounds().roundedOut(), box = whole.intersected(clip);
  shape.liesInBox = whole == box;
  const bool hasRoom = !box.isEmpty() && box.width() <= CoverageRuns::maxSide && box.height() <= CoverageRuns::maxSide;
  if (sight.isSecond && hasRoom) {
    shape_.coverage.begin(box);
    shape_.isWhole = hasAllPoints && shape.liesInBox;
    shape_.clip = clip;
    if (!coverage_.sweep(shape, box, shape_.coverage)) return;
    shapes_.keep(key, shape_);
    return paintKept(shape_.coverage);
  }
  shape.shown = place.moved;
  paint(source, box.moved(place.moved), [&](auto& painter, const PixelRect&) { coverage_.sweep(shape, box, painter); });
}

// True if colors go straight to the bitmap's own pixels.
bool RasterCanvas::Pipeline::paintsPlainly(const Source& source) const {
  const bool isOpaque = source.rows ? source.rows->isOpaque() && source.alpha == 1 : source.color[3] == 1;
  const bool isPlainMode = state_.blendMode == BlendMode::Normal || (state_.blendMode == BlendMode::Copy && isOpaque);
  return openLayers_ == 0 && isPlainMode && state_.clip.isPlain();
}

void RasterCanvas::Pipeline::paintPolygons(const CoverageBuffer::Shape& shape, const Source& source,
                                           const std::optional<CastShadow>& shadow) {
  if (keepAsShape(shape, source, shadow)) return;
  const bool isOutOfShadow = shadow && shadow->isTakenOut;
  if (shadow && !isOutOfShadow) paintShadowOfPolygons(shape, source, *shadow);
  paintShape(shape, source, isOutOfShadow ? shadow : std::nullopt);
}

void RasterCanvas::Pipeline::paintShape(CoverageBuffer::Shape shape, const Source& source,
                                        const std::optional<CastShadow>& takenOut) {
  const PixelRect whole = shape.polygons.bounds().roundedOut();
  paint(source, whole.intersected(state_.clip.box), [&](auto& painter, const PixelRect& box) {
    shape.liesInBox = box == whole;
    if (!takenOut) return void(coverage_.sweep(shape, box, painter));
    float* const left = outOfShadow_.prepare(std::size_t(box.width()));
    if (!left || !blurShape(shape, {}, *takenOut, box)) return;
    OutOfShadowSink sink(painter, blur_, takenOut->color[3], left);
    coverage_.sweep(shape, box, sink);
  });
}

// Blurs what casts a shadow into a box. False when memory is short.
bool RasterCanvas::Pipeline::blurShape(CoverageBuffer::Shape shape, const Source& source, const CastShadow& shadow,
                                       const PixelRect& shaded) {
  // The shape itself is moved, not its pixels, so that an offset by a fraction of a pixel stays exact.
  shape.moved = {shadow.dx, shadow.dy};
  shape.scale = 1.0 / Blur::cellSize(shadow.deviation);
  shape.liesInBox = false;
  const PixelRect near = shaded.grown(Blur::reach(shadow.deviation));
  const DeviceRect casting = shape.polygons.bounds().moved(shadow.dx, shadow.dy).intersected(DeviceRect::of(near));
  const PixelRect box = casting.scaled(shape.scale).roundedOut();
  if (!blur_.begin(box, shaded, {.deviation = shadow.deviation})) return false;
  if (!source.rows) return coverage_.sweep(shape, box, blur_) && blur_.end();
  if (!cast_.beginEmpty(box) || !coverage_.sweep(shape, box, cast_)) return false;
  // The mean of a cell, since a gradient may have several stops within it.
  const int cell = Blur::cellSize(shadow.deviation), side = std::min(cell, 8);  // places in a cell
  const auto placeOf = [step = double(cell) / side](int place) { return (place + 0.5) * step - 0.5; };
  for (int y = box.top; y < box.bottom; ++y) {
    for (int x = box.left; x < box.right; ++x) {
      float alphas = 0;
      for (int i = 0; i < side * side; ++i) {
        alphas += ramp_.colorAt(placeOf(x * side + i % side) - shadow.dx, placeOf(y * side + i / side) - shadow.dy)[3];
      }
      cast_.row(y)[x - box.left] *= alphas / float(side * side) * source.alpha;
    }
  }
  return blurCast();
}

bool RasterCanvas::Pipeline::blurCast() {
  const PixelRect& box = cast_.box();
  for (int y = box.top; y < box.bottom; ++y) blur_.varied(box.left, y, box.width(), cast_.row(y));
  return blur_.end();
}

void RasterCanvas::Pipeline::paintShadowOfPolygons(const CoverageBuffer::Shape& shape, const Source& source,
                                                   const CastShadow& shadow) {
  const DeviceRect cast = shape.polygons.bounds().moved(shadow.dx, shadow.dy);
  const Float4 color = source.rows ? shadow.color : shadow.color * splat(source.color[3]);
  paintBlurred(cast, shadow, color, [&](const PixelRect& part) { return blurShape(shape, source, shadow, part); });
}

// Calls blur(part) for a part of the box that the shadow reaches, which must blur what casts the shadow; then paints it.
template <class BlurPart>
void RasterCanvas::Pipeline::paintBlurred(const DeviceRect& cast, const CastShadow& shadow, Float4 color, BlurPart blur) {
  const bool isSeen = !cast.isEmpty() && color[3] > 0;
  const PixelRect reached = isSeen ? cast.grown(Blur::reach(shadow.deviation)).roundedOut() : PixelRect{};
  paint({.color = color}, reached.intersected(state_.clip.box), [&](auto& painter, const PixelRect& part) {
    if (!blur(part)) return;
    for (int y = part.top, bottom; y < part.bottom; y = bottom) {
      const Blur::Rows rows = blur_.rowsAt(part.left, y, part.width());
      bottom = std::min(part.bottom, rows.bottom);
      painter.variedRows({part.left, y, part.right, bottom}, rows.values);
    }
  });
}

// An inner shadow is a shape that takes its own shadow out of itself: painted after that shadow, both with this operator, it
// leaves nothing of the shadow.
bool RasterCanvas::Pipeline::keepAsShape(const CoverageBuffer::Shape& shape, const Source& source,
                                         const std::optional<CastShadow>& shadow) {
  if (openLayers_ == 0) return false;
  OpenLayer& layer = openLayer();
  const bool fallsInside = shadow && !shadow->isTakenOut;
  const bool isAlone = layer.content == OpenLayer::Content::Nothing && source.isUniform() &&
                       state_.blendMode == (fallsInside ? BlendMode::SourceOut : BlendMode::Normal) &&
                       state_.clip.isPlain() && state_.clip.box == layer.pixels.maxBox().united(layer.casting.maxBox());
  if (!isAlone) return false;
  layer.content = OpenLayer::Content::Shape;
  layer.shapeRule = shape.rule;
  layer.shapeColor = source.color;
  layer.takenOut = shadow;
  if (fallsInside) {
    layer.takenOut->isTakenOut = true;
    layer.takenOut->color *= splat(source.color[3]);
  }
  std::swap(layer.shape, polygons_);
  return true;
}

// Called before the open layer receives more than its one shape.
void RasterCanvas::Pipeline::paintKeptShape() {
  OpenLayer& layer = openLayer();
  if (std::exchange(layer.content, OpenLayer::Content::Pixels) != OpenLayer::Content::Shape) return;
  State now = state_;
  state_.clip = {.box = layer.pixels.maxBox().united(layer.casting.maxBox())};
  state_.blendMode = BlendMode::Normal;
  paintShape({.polygons = layer.shape, .rule = layer.shapeRule}, {.color = layer.shapeColor}, layer.takenOut);
  state_ = std::move(now);
}

void RasterCanvas::Pipeline::beginLayer() {
  saveState();
  if (openLayers_ == layers_.size()) layers_.push_back(std::make_unique<OpenLayer>());
  OpenLayer& layer = *layers_[openLayers_++];
  layer.savedStates = saved_.size();
  layer.content = OpenLayer::Content::Nothing;
  layer.takenOut.reset();
  layer.limit = openLayers_ > 1 ? layers_[openLayers_ - 2]->limit : bitmap_->bounds().grown(farthestCast);
  // An invisible layer need not be painted.
  const bool isUnseen = !(state_.alpha > 0) && needsSource(state_.blendMode);
  PixelRect seen = isUnseen ? PixelRect{} : state_.clip.box, casting;
  const std::optional<CastShadow> shadow = castShadow();
  if (shadow && !seen.isEmpty()) {
    const int dx = int(std::floor(shadow->dx)), dy = int(std::floor(shadow->dy));
    const PixelRect moved = layer.limit.moved({-dx, -dy});
    casting = castingBox(*shadow).intersected(moved);
    layer.limit = layer.limit.united(moved);
    if (!seen.intersected(casting).isEmpty()) seen = seen.united(std::exchange(casting, {}));
  }
  layer.pixels.begin(seen, layerPixels_);
  layer.casting.begin(casting, layerPixels_);
  // The current clip is applied once, when the layer is composited.
  state_.clip = {.box = seen.united(casting)};
  state_.alpha = 1;
  state_.blendMode = BlendMode::Normal;
  state_.shadow = {};
}

void RasterCanvas::Pipeline::endLayer() {
  if (openLayers_ == 0) return;
  OpenLayer& layer = openLayer();
  // The layer's picture is as large as the clip, even where it is empty, but only two operators show its empty parts. What a
  // shadow leaves of a shape casts another one only as a picture.
  const State& outside = saved_[layer.savedStates - 1];
  if (showsEmptyParts(outside.blendMode) || (layer.takenOut && outside.shadow.color)) paintKeptShape();
  --openLayers_;
  saved_.resize(layer.savedStates);
  state_ = std::move(saved_.back());
  saved_.pop_back();
  if (!state_.clip.box.isEmpty()) composite(layer);
  layer.pixels.end();
  layer.casting.end();
  if (openLayers_ >= maxLayersKept) layers_.resize(openLayers_);
}

void RasterCanvas::Pipeline::composite(OpenLayer& layer) {
  const float alpha = float(clamp01(state_.alpha));
  const std::optional<CastShadow> shadow = castShadow();
  if (layer.content == OpenLayer::Content::Shape) {
    std::swap(layer.shape, polygons_);
    const Source source{.color = layer.shapeColor * splat(alpha)};
    return paintPolygons({.polygons = polygons_, .rule = layer.shapeRule}, source, shadow ? shadow : layer.takenOut);
  }
  if (shadow) paintShadowOfLayer(layer.casting.maxBox().isEmpty() ? layer.pixels : layer.casting, *shadow);
  const PixelRect& clip = state_.clip.box;
  const PixelRect box = showsEmptyParts(state_.blendMode) ? clip : layer.pixels.content().intersected(clip);
  paint({.rows = &layer.pixels, .alpha = alpha}, box, [](auto& painter, const PixelRect& part) {
    for (int y = part.top; y < part.bottom; ++y) painter.uniform(part.left, y, part.width(), 1);
  });
}

void RasterCanvas::Pipeline::giveMemoryBack() {
  static_cast<OperationMemory&>(*this) = {};
  layers_.clear();
  saved_.shrink_to_fit();
  operations_ = 0;
}

void RasterCanvas::Pipeline::paintShadowOfLayer(const Layer& layer, const CastShadow& shadow) {
  const PixelRect& content = layer.content();
  const int cell = Blur::cellSize(shadow.deviation);
  const PixelRect box = DeviceRect::of(content).scaled(1.0 / cell).roundedOut();
  const float share = 1.0f / float(cell * cell);
  const auto cellOf = [cell](int pixel) { return (pixel >= 0 ? pixel : pixel - cell + 1) / cell; };
  const DeviceRect cast = DeviceRect::of(content).moved(shadow.dx, shadow.dy).grown(1);
  const Float4 color = shadow.color * splat(float(clamp01(state_.alpha)));
  paintBlurred(content.isEmpty() ? DeviceRect{} : cast, shadow, color, [&](const PixelRect& part) {
    const Blur::Style style{.deviation = shadow.deviation, .dx = shadow.dx, .dy = shadow.dy};
    if (!cast_.beginEmpty(box) || !blur_.begin(box, part, style)) return false;
    for (int y = content.top; y < content.bottom; ++y) {
      const Float4* pixels = layer.pixel(content.left, y);
      float* row = cast_.row(cellOf(y));
      for (int i = 0; i < content.width(); ++i) row[cellOf(content.left + i) - box.left] += pixels[i][3] * share;
    }
    return blurCast();
  });
}

}  // namespace tessaluna::backend::raster
