#include "tessaluna/backends/raster/Painter.h"

namespace tessaluna::backend::raster {

Painter::Painter(const Painting& painting, const PixelRect& shapeBox, Memory& memory)
    : painting_(painting), memory_(memory), isUnbounded_(isUnbounded(painting.mode)) {
  const Clip& clip = painting.clip;
  const Surface& surface = painting.surface;
  PixelRect changed = shapeBox.intersected(clip.box);
  if (!surface.include(changed)) return;
  // An unbounded operator changes the whole clip, also beyond the shape; in a layer the rest is transparent anyway.
  if (isUnbounded_) changed = surface.bitmap ? clip.box : clip.box.intersected(surface.content());
  if (changed.isEmpty()) return;

  const std::size_t width = std::size_t(changed.width());
  coverage_ = memory.coverage.prepare(width);
  const bool ready = coverage_ && memory.clip.prepare(width) && memory.source.prepare(width) &&
                     memory.destination.prepare(width) && memory.inks.prepare(changed.width());
  if (!ready) return;
  box_ = changed;
  std::fill_n(coverage_, width, 0.0f);
  row_ = box_.top;
  left_ = box_.right;
  right_ = box_.left;
  if (!surface.bitmap || painting.mode != BlendMode::Normal) return;
  const Source& source = painting.source;
  if (source.isUniform()) color_.emplace(*surface.bitmap, source.color);
  else if (source.rows) rows_.emplace(*surface.bitmap, *source.rows, source.alpha, memory.inks);
}

void Painter::goToRow(int y) {
  for (; row_ < y; ++row_) paintRow();
}

void Painter::uniform(int x, int y, int count, float winding) {
  goToRow(y);
  std::fill_n(coverage_ + (x - box_.left), count, coverageOf(winding));
  left_ = std::min(left_, x);
  right_ = std::max(right_, x + count);
}

void Painter::varied(int x, int y, int count, const float* windings) {
  goToRow(y);
  writeCoverage(windings, count, coverage_ + (x - box_.left));
  left_ = std::min(left_, x);
  right_ = std::max(right_, x + count);
}

void Painter::finish() {
  if (!box_.isEmpty()) goToRow(box_.bottom);
}

void Painter::paintRow() {
  if (isUnbounded_) {
    blend(box_.left, box_.right);
  } else if (left_ < right_) {
    blend(left_, right_);
  }
  if (left_ < right_) std::fill_n(coverage_ + (left_ - box_.left), right_ - left_, 0.0f);
  left_ = box_.right;
  right_ = box_.left;
}

void Painter::blend(int left, int right) {
  const int count = right - left;
  float* coverage = coverage_ + (left - box_.left);
  const float* clip = nullptr;
  if (!painting_.clip.isPlain()) {
    if (isUnbounded_) {
      std::fill_n(memory_.clip.data(), count, 1.0f);
      painting_.clip.multiply(left, row_, count, memory_.clip.data());
      clip = memory_.clip.data();
    } else {
      painting_.clip.multiply(left, row_, count, coverage);
    }
  }

  if (color_) return color_->sparse(left, row_, count, coverage);
  if (rows_) return rows_->varied(left, row_, count, coverage);
  const Surface& surface = painting_.surface;
  if (surface.tint) {
    const Everywhere alpha{painting_.source.color[3]};
    return blendRow(painting_.mode, surface.tint->pixel(left, row_), alpha, coverage, clip, count);
  }
  writeColors(left, right);
  const Float4* const colors = memory_.source.data();
  if (surface.layer) return blendRow(painting_.mode, surface.layer->pixel(left, row_), colors, coverage, clip, count);
  std::uint32_t* pixels = surface.bitmap->row(row_) + left;
  Float4* destination = memory_.destination.data();
  loadRow(pixels, destination, count);
  blendRow(painting_.mode, destination, colors, coverage, clip, count);
  storeRow(destination, pixels, count);
}

void Painter::writeColors(int left, int right) {
  const int count = right - left;
  const Source& source = painting_.source;
  Float4* colors = memory_.source.data();
  if (source.rows) {
    // Pixels without coverage need no colors.
    const int from = std::clamp(left_, left, right), to = std::clamp(right_, from, right);
    std::fill_n(colors, count, Float4{});
    if (from < to) source.rows->writeInks(from, row_, to - from, memory_.inks);
    for (int i = 0; i < to - from; ++i) colors[from - left + i] = memory_.inks.colorAt(i) * splat(source.alpha);
  } else if (source.layer) {
    const PixelRect& content = source.layer->content();
    const bool isRowInside = row_ >= content.top && row_ < content.bottom;
    const int from = std::clamp(content.left, left, right), to = isRowInside ? std::clamp(content.right, from, right) : from;
    std::fill_n(colors, count, Float4{});
    if (from < to) {
      const Float4* pixels = source.layer->pixel(from, row_);
      for (int i = 0; i < to - from; ++i) colors[from - left + i] = pixels[i] * splat(source.alpha);
    }
  } else {
    std::fill_n(colors, count, source.color);
  }
}

}  // namespace tessaluna::backend::raster
