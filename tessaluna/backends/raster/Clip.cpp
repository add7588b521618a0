#include "tessaluna/backends/raster/Clip.h"

namespace tessaluna::backend::raster {

namespace {

// The length that two intervals share.
float shared(double low, double high, double otherLow, double otherHigh) {
  return float(std::max(0.0, std::min(high, otherHigh) - std::max(low, otherLow)));
}

class MaskWriter {
 public:
  explicit MaskWriter(ClipMask& mask) : mask_(mask) {}
  void uniform(int x, int y, int count, float winding) {
    std::fill_n(mask_.row(y) + (x - mask_.box.left), count, coverageOf(winding));
  }
  void varied(int x, int y, int count, const float* windings) {
    writeCoverage(windings, count, mask_.row(y) + (x - mask_.box.left));
  }

 private:
  ClipMask& mask_;
};

}  // namespace

std::shared_ptr<ClipMask> ClipMaskPool::take(const PixelRect& box) {
  const auto isFree = [](const std::shared_ptr<ClipMask>& mask) { return mask.use_count() == 1; };
  // Masks that only a deeper nest of clips needed are freed after a while.
  std::erase_if(masks_,
                [&](const std::shared_ptr<ClipMask>& mask) { return isFree(mask) && ++mask->passedBy > maxPassedBy; });
  auto found = std::find_if(masks_.begin(), masks_.end(), isFree);
  if (found == masks_.end()) {
    masks_.push_back(std::make_shared<ClipMask>());
    found = masks_.end() - 1;
  }
  ClipMask& mask = **found;
  mask.box = box;
  mask.passedBy = 0;
  mask.values = mask.memory.prepare(std::size_t(box.width()) * std::size_t(box.height()));
  return mask.values ? *found : nullptr;
}

void Clip::intersectRect(const DeviceRect& rect) {
  DeviceRect all{snapped(rect.left), snapped(rect.top), snapped(rect.right), snapped(rect.bottom)};
  if (edges) all = all.intersected(*edges);
  box = box.intersected(all.roundedOut());
  if (box.isEmpty()) return makeEmpty();
  // An edge outside the box changes none of its pixels.
  const DeviceRect whole = DeviceRect::of(box);
  const bool cuts = all.left > whole.left || all.top > whole.top || all.right < whole.right || all.bottom < whole.bottom;
  if (cuts) edges = all;
  else edges.reset();
}

void Clip::intersectShape(const CoverageBuffer::Shape& shape, const PixelRect& shapeBox, CoverageBuffer& buffer,
                          ClipMaskPool& pool) {
  const std::shared_ptr<ClipMask> made = pool.take(shapeBox);
  if (!made) return makeEmpty();
  std::fill_n(made->values, std::size_t(shapeBox.width()) * std::size_t(shapeBox.height()), 0.0f);
  MaskWriter writer(*made);
  buffer.sweep(shape, shapeBox, writer);
  box = shapeBox;
  if (mask) {
    for (int y = box.top; y < box.bottom; ++y) {
      const float* before = mask->row(y) + (box.left - mask->box.left);
      float* values = made->row(y);
      for (int i = 0; i < box.width(); ++i) values[i] *= before[i];
    }
  }
  mask = made;
}

void Clip::multiply(int x, int y, int count, float* coverage) const {
  if (edges) {
    const float height = shared(edges->top, edges->bottom, y, y + 1);
    const auto scale = [&](int column) {
      coverage[column - x] *= height * shared(edges->left, edges->right, column, column + 1);
    };
    // Only the first and the last column of the box can be cut.
    const int last = box.right - 1;
    const int from = std::max(x, box.left + 1), to = std::min(x + count, last);
    if (height != 1) {
      for (int column = from; column < to; ++column) coverage[column - x] *= height;
    }
    if (x <= box.left && x + count > box.left) scale(box.left);
    if (last != box.left && x <= last && x + count > last) scale(last);
  }
  if (mask) {
    const float* values = mask->row(y) + (x - mask->box.left);
    for (int i = 0; i < count; ++i) coverage[i] *= values[i];
  }
}

}  // namespace tessaluna::backend::raster
