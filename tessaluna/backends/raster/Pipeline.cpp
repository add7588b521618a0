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

// Paints a shape into an empty layer of one color, less its shadow.
class OutOfShadowWriter : public RowByRowSink<OutOfShadowWriter> {
 public:
  OutOfShadowWriter(TintLayer& tint, Blur& shadow, float alpha, float shadowAlpha)
      : tint_(tint), shadow_(shadow), alpha_(alpha), shadowAlpha_(shadowAlpha) {}
  void uniform(int x, int y, int count, float winding) {
    std::fill_n(tint_.pixel(x, y), count, coverageOf(winding));
    takeOut(x, y, count);
  }
  void varied(int x, int y, int count, const float* windings) {
    writeCoverage(windings, count, tint_.pixel(x, y));
    takeOut(x, y, count);
  }

 private:
  void takeOut(int x, int y, int count) {
    const float* shadow = shadow_.valuesAt(x, y, count);
    float* values = tint_.pixel(x, y);
    for (; count >= 4; count -= 4, values += 4, shadow += 4) {
      const Float4 left = splat(alpha_) * fourOf(values) * (splat(1) - splat(shadowAlpha_) * coverageOfFour(shadow));
      std::memcpy(values, &left, sizeof left);
    }
    for (int i = 0; i < count; ++i) values[i] = alpha_ * values[i] * (1 - shadowAlpha_ * coverageOf(shadow[i]));
  }

  TintLayer& tint_;
  Blur& shadow_;
  const float alpha_, shadowAlpha_;
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
  return openLayers_ == 0 && !source.layer && isPlainMode && state_.clip.isPlain();
}

void RasterCanvas::Pipeline::paintPolygons(CoverageBuffer::Shape shape, const Source& source,
                                           const std::optional<CastShadow>& shadow) {
  if (keepAsShape(shape, source, shadow)) return;
  if (shadow && paintOutOfShadow(shape, source, *shadow)) return;
  if (shadow) paintShadowOfPolygons(shape, source, *shadow);
  const PixelRect whole = polygons_.bounds().roundedOut();
  paint(source, whole.intersected(state_.clip.box), [&](auto& painter, const PixelRect& box) {
    shape.liesInBox = box == whole;
    coverage_.sweep(shape, box, painter);
  });
}

// Returns the part of the moved shape that casts a shadow into the clip; empty if nothing does.
DeviceRect RasterCanvas::Pipeline::sweepCast(CoverageBuffer::Shape shape, const CastShadow& shadow) {
  // The shape itself is moved, not its pixels, so that an offset by a fraction of a pixel stays exact.
  shape.moved = {shadow.dx, shadow.dy};
  shape.scale = 1.0 / Blur::cellSize(shadow.deviation);
  const PixelRect near = state_.clip.box.grown(Blur::reach(shadow.deviation));
  const DeviceRect part = shape.polygons.bounds().moved(shadow.dx, shadow.dy).intersected(DeviceRect::of(near));
  const PixelRect box = part.scaled(shape.scale).roundedOut();
  if (box.isEmpty() || !cast_.beginEmpty(box)) return {};
  coverage_.sweep(shape, box, cast_);
  return part;
}

// An inner shadow: a layer's first shape, of its shadow's color, which takes its own shadow out of itself. Only what lies
// within the shape is blurred. False if this is something else.
bool RasterCanvas::Pipeline::paintOutOfShadow(const CoverageBuffer::Shape& shape, const Source& source,
                                              const CastShadow& shadow) {
  if (openLayers_ == 0 || state_.blendMode != BlendMode::SourceOut || !state_.clip.isPlain()) return false;
  OpenLayer& layer = openLayer();
  const Source shaded{.color = shadow.color * splat(source.color[3])};
  const bool isFirst = layer.content == OpenLayer::Content::Nothing && layer.tint.content().isEmpty();
  const PixelRect box = shape.polygons.bounds().roundedOut().intersected(state_.clip.box);
  if (!isFirst || box.isEmpty() || Blur::cellSize(shadow.deviation) > 1) return false;
  if (!source.isUniform() || !takesAsTint(layer, shaded) || !takesAsTint(layer, source)) return false;
  if (sweepCast(shape, shadow).isEmpty() || !blur_.begin(cast_, box, {.deviation = shadow.deviation})) return false;
  if (!layer.tint.include(box)) return true;
  OutOfShadowWriter writer(layer.tint, blur_, source.color[3], shaded.color[3]);
  coverage_.sweep(shape, box, writer);
  return true;
}

void RasterCanvas::Pipeline::paintShadowOfPolygons(const CoverageBuffer::Shape& shape, const Source& source,
                                                   const CastShadow& shadow) {
  const int cell = Blur::cellSize(shadow.deviation), reach = Blur::reach(shadow.deviation);
  const DeviceRect casting = sweepCast(shape, shadow);
  if (casting.isEmpty()) return paintNothing();
  const PixelRect& box = cast_.box();
  Float4 color = shadow.color;
  if (source.rows) {
    // The mean of a cell, since a gradient may have several stops within it.
    const int side = std::min(cell, 8);  // places in a cell
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
  } else {
    color *= splat(source.color[3]);
  }
  paintBlurred(casting.grown(reach), {.deviation = shadow.deviation}, color);
}

bool RasterCanvas::Pipeline::keepAsShape(const CoverageBuffer::Shape& shape, const Source& source,
                                         const std::optional<CastShadow>& shadow) {
  if (openLayers_ == 0) return false;
  OpenLayer& layer = openLayer();
  const bool isAlone = layer.content == OpenLayer::Content::Nothing && !shadow && source.isUniform() &&
                       state_.blendMode == BlendMode::Normal && state_.clip.isPlain() &&
                       state_.clip.box == layer.pixels.maxBox().united(layer.casting.maxBox());
  if (!isAlone) return false;
  layer.content = OpenLayer::Content::Shape;
  layer.shapeRule = shape.rule;
  layer.shapeColor = source.color;
  std::swap(layer.shape, polygons_);
  return true;
}

// Called before the open layer receives more than its one shape.
void RasterCanvas::Pipeline::paintKeptShape() {
  OpenLayer& layer = openLayer();
  if (layer.content != OpenLayer::Content::Shape) return;
  layer.content = OpenLayer::Content::Nothing;
  State now = state_;
  state_.clip = {.box = layer.pixels.maxBox().united(layer.casting.maxBox())};
  state_.blendMode = BlendMode::Normal;
  const CoverageBuffer::Shape shape{.polygons = layer.shape, .rule = layer.shapeRule};
  const PixelRect box = layer.shape.bounds().roundedOut().intersected(state_.clip.box);
  paint({.color = layer.shapeColor}, box,
        [&](auto& painter, const PixelRect& part) { coverage_.sweep(shape, part, painter); });
  state_ = std::move(now);
}

// True if the source is one color and the layer has no other color.
bool RasterCanvas::Pipeline::takesAsTint(OpenLayer& layer, const Source& source) {
  const bool isNew = layer.content == OpenLayer::Content::Nothing;
  if (!source.isUniform() || !layer.casting.maxBox().isEmpty() || !(isNew || layer.content == OpenLayer::Content::Tint))
    return false;
  const float alpha = source.color[3];
  if (isNew) layer.tintColor = alpha > 0 ? source.color * splat(1 / alpha) : Float4{0, 0, 0, 1};
  constexpr float rounding = 1e-6f;
  if (isAnySet(magnitude(source.color - layer.tintColor * splat(alpha)) > splat(rounding))) return false;
  layer.content = OpenLayer::Content::Tint;
  return true;
}

void RasterCanvas::Pipeline::turnIntoPixels(OpenLayer& layer) {
  const bool isTint = layer.content == OpenLayer::Content::Tint;
  layer.content = OpenLayer::Content::Pixels;
  const PixelRect box = layer.tint.content();
  if (!isTint || !layer.pixels.include(box)) return;
  for (int y = box.top; y < box.bottom; ++y) {
    const float* values = layer.tint.pixel(box.left, y);
    Float4* pixels = layer.pixels.pixel(box.left, y);
    for (int i = 0; i < box.width(); ++i) pixels[i] = layer.tintColor * splat(values[i]);
  }
}

// Paints a shadow that has no part in the clip, which changes the picture if the operator is unbounded.
void RasterCanvas::Pipeline::paintNothing() {
  paint({}, {}, [](auto&, const PixelRect&) {});
}

// Paints one color with the blurred coverage of what casts a shadow.
void RasterCanvas::Pipeline::paintBlurred(const DeviceRect& reached, const Blur::Style& style, Float4 color) {
  const PixelRect shaded = reached.roundedOut().intersected(state_.clip.box);
  if (shaded.isEmpty() || color[3] == 0) return paintNothing();
  if (!blurred_.begin(shaded) || !blur_.apply(cast_, blurred_, style)) return;
  paint({.color = color}, shaded, [&](auto& painter, const PixelRect& part) {
    for (int y = part.top; y < part.bottom; ++y) {
      painter.varied(part.left, y, part.width(), blurred_.row(y) + (part.left - shaded.left));
    }
  });
}

void RasterCanvas::Pipeline::beginLayer() {
  saveState();
  if (openLayers_ == layers_.size()) layers_.push_back(std::make_unique<OpenLayer>());
  OpenLayer& layer = *layers_[openLayers_++];
  layer.savedStates = saved_.size();
  layer.content = OpenLayer::Content::Nothing;
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
  layer.tint.begin(seen, layerPixels_);
  // The current clip is applied once, when the layer is composited.
  state_.clip = {.box = seen.united(casting)};
  state_.alpha = 1;
  state_.blendMode = BlendMode::Normal;
  state_.shadow = {};
}

void RasterCanvas::Pipeline::endLayer() {
  if (openLayers_ == 0) return;
  OpenLayer& layer = openLayer();
  // The layer's picture is as large as the clip, even where it is empty, but only two operators show its empty parts.
  if (showsEmptyParts(saved_[layer.savedStates - 1].blendMode)) {
    paintKeptShape();
    turnIntoPixels(layer);
  }
  --openLayers_;
  saved_.resize(layer.savedStates);
  state_ = std::move(saved_.back());
  saved_.pop_back();
  if (!state_.clip.box.isEmpty()) composite(layer);
  layer.pixels.end();
  layer.casting.end();
  layer.tint.end();
  if (openLayers_ >= maxLayersKept) layers_.resize(openLayers_);
}

void RasterCanvas::Pipeline::composite(OpenLayer& layer) {
  const float alpha = float(clamp01(state_.alpha));
  const std::optional<CastShadow> shadow = castShadow();
  if (layer.content == OpenLayer::Content::Shape) {
    std::swap(layer.shape, polygons_);
    const Source source{.color = layer.shapeColor * splat(alpha)};
    return paintPolygons({.polygons = polygons_, .rule = layer.shapeRule}, source, shadow);
  }
  if (layer.content == OpenLayer::Content::Tint) {
    if (!shadow) return paintTint(layer, alpha);
    turnIntoPixels(layer);
  }
  if (shadow) paintShadowOfLayer(layer.casting.maxBox().isEmpty() ? layer.pixels : layer.casting, *shadow);
  const PixelRect& clip = state_.clip.box;
  const PixelRect box = showsEmptyParts(state_.blendMode) ? clip : layer.pixels.content().intersected(clip);
  paint({.layer = &layer.pixels, .alpha = alpha}, box, [](auto& painter, const PixelRect& part) {
    for (int y = part.top; y < part.bottom; ++y) painter.uniform(part.left, y, part.width(), 1);
  });
}

// The layer's values are not needed afterwards.
void RasterCanvas::Pipeline::paintTint(OpenLayer& layer, float alpha) {
  const PixelRect box = layer.tint.content().intersected(state_.clip.box);
  if (openLayers_ == 0 && state_.blendMode == BlendMode::Normal) {
    ColorPainter painter(*bitmap_, layer.tintColor * splat(alpha));
    for (int y = box.top; y < box.bottom; ++y) {
      float* values = layer.tint.pixel(box.left, y);
      state_.clip.multiply(box.left, y, box.width(), values);
      painter.sparse(box.left, y, box.width(), values);
    }
    return;
  }
  paint({.color = layer.tintColor * splat(alpha)}, box, [&](auto& painter, const PixelRect& part) {
    for (int y = part.top; y < part.bottom; ++y) {
      painter.varied(part.left, y, part.width(), layer.tint.pixel(part.left, y));
    }
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
  const DeviceRect fallen = DeviceRect::of(content).moved(shadow.dx, shadow.dy).grown(Blur::reach(shadow.deviation) + 1);
  const PixelRect box = DeviceRect::of(content).scaled(1.0 / cell).roundedOut();
  if (content.isEmpty() || !cast_.beginEmpty(box)) return paintNothing();
  const float share = 1.0f / float(cell * cell);
  const auto cellOf = [cell](int pixel) { return (pixel >= 0 ? pixel : pixel - cell + 1) / cell; };
  for (int y = content.top; y < content.bottom; ++y) {
    const Float4* pixels = layer.pixel(content.left, y);
    float* row = cast_.row(cellOf(y));
    for (int i = 0; i < content.width(); ++i) row[cellOf(content.left + i) - box.left] += pixels[i][3] * share;
  }
  const Blur::Style style{.deviation = shadow.deviation, .dx = shadow.dx, .dy = shadow.dy};
  paintBlurred(fallen, style, shadow.color * splat(float(clamp01(state_.alpha))));
}

}  // namespace tessaluna::backend::raster
