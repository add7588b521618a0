#include "tessaluna/backends/raster/Painter.h"

namespace tessaluna::backend::raster {

Painter::Painter(const Painting& painting, const PixelRect& shapeBox, Memory& memory)
    : painting_(painting),
      memory_(memory),
      shape_(shapeBox.intersected(painting.clip.box)),
      isUnbounded_(isUnbounded(painting.mode)) {
  const Clip& clip = painting.clip;
  const Surface& surface = painting.surface;
  PixelRect changed = shape_;
  if (surface.layer && !surface.layer->include(changed)) return;
  // An unbounded operator changes the whole clip, also beyond the shape; in a layer the rest is transparent anyway.
  if (isUnbounded_) changed = surface.bitmap ? clip.box : clip.box.intersected(surface.layer->content());
  if (changed.isEmpty()) return;

  const std::size_t width = std::size_t(changed.width());
  coverage_ = memory.coverage.prepare(width);
  const bool ready = coverage_ && memory.clip.prepare(width) && memory.source.prepare(width) &&
                     memory.destination.prepare(width) && memory.inks.prepare(changed.width()) &&
                     (!isUnbounded_ || memory.shape.beginEmpty(shape_));
  if (!ready) return;
  box_ = changed;
  if (!surface.bitmap || painting.mode != BlendMode::Normal) return;
  const Source& source = painting.source;
  if (source.isUniform()) color_.emplace(*surface.bitmap, source.color);
  else rows_.emplace(*surface.bitmap, *source.rows, source.alpha, memory.inks);
}

void Painter::uniformRows(const PixelRect& box, float winding) {
  if (isUnbounded_) return memory_.shape.uniformRows(box, winding);
  paintRows(box, [&] { std::fill_n(coverage_, box.width(), coverageOf(winding)); });
}

void Painter::variedRows(const PixelRect& box, const float* windings) {
  if (isUnbounded_) return memory_.shape.variedRows(box, windings);
  paintRows(box, [&] { writeCoverage(windings, box.width(), coverage_); });
}

void Painter::finish() {
  if (!isUnbounded_) return;
  for (int y = box_.top; y < box_.bottom; ++y) paintUnboundedRow(y);
}

template <class WriteCoverage>
void Painter::paintRows(const PixelRect& box, WriteCoverage write) {
  for (int y = box.top, bottom; y < box.bottom; y = bottom) {
    bottom = color_ ? std::min(box.bottom, painting_.clip.endOfRepeat(y)) : y + 1;
    write();
    painting_.clip.multiply(box.left, y, box.width(), coverage_);
    if (color_) color_->variedRows({box.left, y, box.right, bottom}, coverage_);
    else if (rows_) rows_->varied(box.left, y, box.width(), coverage_);
    else blend(box.left, y, box.width(), nullptr);
  }
}

void Painter::paintUnboundedRow(int y) {
  const int width = box_.width();
  std::fill_n(coverage_, width, 0.0f);
  if (y >= shape_.top && y < shape_.bottom)
    std::copy_n(memory_.shape.row(y), shape_.width(), coverage_ + (shape_.left - box_.left));
  float* clip = nullptr;
  if (!painting_.clip.isPlain()) {
    clip = memory_.clip.data();
    std::fill_n(clip, width, 1.0f);
    painting_.clip.multiply(box_.left, y, width, clip);
  }
  blend(box_.left, y, width, clip);
}

void Painter::blend(int x, int y, int count, const float* clip) {
  const Surface& surface = painting_.surface;
  writeColors(x, y, count);
  const Float4* const colors = memory_.source.data();
  if (surface.layer) return blendRow(painting_.mode, surface.layer->pixel(x, y), colors, coverage_, clip, count);
  std::uint32_t* pixels = surface.bitmap->row(y) + x;
  Float4* destination = memory_.destination.data();
  loadRow(pixels, destination, count);
  blendRow(painting_.mode, destination, colors, coverage_, clip, count);
  storeRow(destination, pixels, count);
}

void Painter::writeColors(int x, int y, int count) {
  const Source& source = painting_.source;
  Float4* const colors = memory_.source.data();
  if (source.isUniform()) return void(std::fill_n(colors, count, source.color));
  // Pixels without coverage need no colors.
  const PixelRect run{x, y, x + count, y + 1}, colored = run.intersected(shape_);
  std::fill_n(colors, count, Float4{});
  if (colored.isEmpty()) return;
  source.rows->writeInks(colored.left, y, colored.width(), memory_.inks);
  for (int i = 0; i < colored.width(); ++i) colors[colored.left - x + i] = memory_.inks.colorAt(i) * splat(source.alpha);
}

}  // namespace tessaluna::backend::raster
