// The inside of a raster canvas: graphics states, open layers and working memory, and the steps of an operation. A shape
// becomes polygons in device pixels. These become coverage, first for its shadow and then for the shape itself, and a
// painter puts color where the coverage is.
#pragma once

#include "tessaluna/backends/raster/Blur.h"
#include "tessaluna/backends/raster/ColorPainter.h"
#include "tessaluna/backends/raster/GlyphCache.h"
#include "tessaluna/backends/raster/GradientRamp.h"
#include "tessaluna/backends/raster/ImageSampler.h"
#include "tessaluna/backends/raster/Painter.h"
#include "tessaluna/backends/raster/Plane.h"
#include "tessaluna/backends/raster/RasterCanvas.h"
#include "tessaluna/backends/raster/RowPainter.h"
#include "tessaluna/backends/raster/ShapeCache.h"
#include "tessaluna/backends/raster/Stroker.h"
#include "tessaluna/backends/raster/upperHalves.h"

namespace tessaluna::backend::raster {

// Working memory, which means nothing between operations. It is given back from time to time, so that a huge drawing's is not
// kept forever.
struct OperationMemory {
  Polygons polygons_;
  Stroker stroker_;
  CoverageBuffer coverage_;
  GradientRamp ramp_;
  Blur blur_;
  Plane cast_;
  WorkBuffer<float> outOfShadow_;
  ClipMaskPool masks_;
  KeptShape shape_;  // the shape that was seen for the second time
  ImageSampler sampler_;
  Painter::Memory painterMemory_;
};

class RasterCanvas::Pipeline : OperationMemory {
 public:
  struct State {
    CGAffineTransform toDevice;
    Clip clip;
    Color fillColor, strokeColor;
    Shadow shadow;
    double alpha = 1;
    BlendMode blendMode = BlendMode::Normal;
  };

  void begin(Bitmap& bitmap, const View& view);
  State& state() { return state_; }
  // Begins an operation.
  Pipeline& atFullSpeed() {
    clearUpperHalves();
    if (++operations_ >= operationsOfMemory && openLayers_ == 0) giveMemoryBack();
    return *this;
  }

  void saveState();
  void restoreState();
  void clip(CGRect rect);
  void clip(const Path& path, FillRule rule);
  void beginLayer();
  void endLayer();
  void fill(const Path& path, FillRule rule);
  void stroke(const Path& path, const StrokeStyle& style);
  void fillGradient(const Path& path, FillRule rule, const LinearGradient& gradient);
  void drawGlyphs(const GlyphRun& run, CGPoint origin);
  void drawImage(const ImagePixels& image, CGRect source, CGRect destination);

 private:
  // The state's shadow, in device pixels.
  struct CastShadow {
    double dx = 0, dy = 0, deviation = 0;
    Float4 color{};
    bool isTakenOut = false;  // of its shape, instead of falling beside it
  };
  struct OpenLayer {
    Layer pixels;                 // what will be visible
    Layer casting;                // what casts a shadow into the clip from afar; unused if `pixels` contains it
    std::size_t savedStates = 0;  // when it began; the last one is the state before it
    PixelRect limit;              // what lies beyond it cannot appear in the picture
    // A layer with one shape in one color is kept as that shape: nothing is painted until more follows.
    enum class Content { Nothing, Shape, Pixels } content = Content::Nothing;
    Polygons shape;
    std::optional<CastShadow> takenOut;  // of the shape
    FillRule shapeRule{};
    Float4 shapeColor{};
  };

  // What is painted: filled, or stroked if there is a pen.
  struct Outline {
    const Path& path;
    FillRule rule = FillRule::NonZero;
    const StrokeStyle* pen = nullptr;
  };

  OpenLayer& openLayer() { return *layers_[openLayers_ - 1]; }
  bool keepAsShape(const CoverageBuffer::Shape& shape, const Source& source, const std::optional<CastShadow>& shadow);
  void paintKeptShape();
  std::optional<CastShadow> castShadow() const;
  PixelRect castingBox(const CastShadow& shadow) const;
  PixelRect neededBox(const std::optional<CastShadow>& shadow) const;
  void flatten(const Path& path, const CGAffineTransform& transform, const PixelRect& visible);
  bool makePolygons(const Outline& outline, const CGAffineTransform& transform, const PixelRect& visible);
  void paintOutline(const Outline& outline, const Source& source);
  void paintKnownOutline(const Outline& outline, const Source& source);
  void fillGlyphs(const GlyphRun& run, CGPoint origin);
  const Plane* maskOf(const GlyphPlace& place, const std::shared_ptr<const Typeface>& typeface);
  void fillRect(const DeviceRect& rect, const Source& source);
  bool replaceWholePixels(const DeviceRect& rect, const Source& source);
  bool paintsPlainly(const Source& source) const;
  template <class Cover>
  void paint(const Source& source, const PixelRect& box, Cover cover);
  template <class Cover>
  void paintOn(const Surface& surface, const Source& source, const PixelRect& box, Cover cover);
  void paintPolygons(const CoverageBuffer::Shape& shape, const Source& source, const std::optional<CastShadow>& shadow);
  void paintShape(CoverageBuffer::Shape shape, const Source& source, const std::optional<CastShadow>& takenOut);
  bool blurShape(CoverageBuffer::Shape shape, const Source& source, const CastShadow& shadow, const PixelRect& shaded);
  bool blurCast();
  void paintShadowOfPolygons(const CoverageBuffer::Shape& shape, const Source& source, const CastShadow& shadow);
  void composite(OpenLayer& layer);
  void giveMemoryBack();
  void paintShadowOfLayer(const Layer& layer, const CastShadow& shadow);
  template <class BlurPart>
  void paintBlurred(const DeviceRect& cast, const CastShadow& shadow, Float4 color, BlurPart blur);

  Bitmap* bitmap_ = nullptr;
  double scale_ = 1;
  State state_;
  std::vector<State> saved_;
  std::vector<std::unique_ptr<OpenLayer>> layers_;  // the first openLayers_ are in use, the rest keep their memory
  std::size_t openLayers_ = 0;
  std::size_t layerPixels_ = 0;  // how many more open layers may take

  GlyphCache glyphs_;
  ShapeCache shapes_;
  // A hundred redraws of a window with a hundred shapes: allocating again costs next to nothing beside them.
  static constexpr int operationsOfMemory = 10000;
  int operations_ = 0;  // since working memory was given back
};

// Calls cover(sink, part) with a part of the box; the sink must receive the coverage within that part.
template <class Cover>
void RasterCanvas::Pipeline::paint(const Source& source, const PixelRect& box, Cover cover) {
  if (paintsPlainly(source)) {
    if (box.isEmpty()) return;
    if (source.isUniform()) {
      ColorPainter painter(*bitmap_, source.color);
      return cover(painter, box);
    }
    if (!painterMemory_.inks.prepare(box.width())) return;
    RowPainter painter(*bitmap_, *source.rows, source.alpha, painterMemory_.inks);
    return cover(painter, box);
  }
  if (openLayers_ == 0) return paintOn({.bitmap = bitmap_}, source, box, cover);
  paintKeptShape();
  OpenLayer& layer = openLayer();
  for (Layer* part : {&layer.pixels, &layer.casting}) {
    if (!part->maxBox().isEmpty()) paintOn({.layer = part}, source, box.intersected(part->maxBox()), cover);
  }
}

template <class Cover>
void RasterCanvas::Pipeline::paintOn(const Surface& surface, const Source& source, const PixelRect& box, Cover cover) {
  const Painting painting{surface, source, state_.blendMode, state_.clip};
  Painter painter(painting, box, painterMemory_);
  if (painter.box().isEmpty()) return;
  if (!box.isEmpty()) cover(painter, box);
  painter.finish();
}

}  // namespace tessaluna::backend::raster
