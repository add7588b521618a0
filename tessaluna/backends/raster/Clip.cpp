#include "tessaluna/backends/raster/Clip.h"

namespace tessaluna::backend::raster {

std::shared_ptr<Plane> ClipMaskPool::take(const PixelRect& box) {
  auto found = std::find_if(kept_.begin(), kept_.end(), [](const auto& mask) { return mask.use_count() == 1; });
  if (found == kept_.end()) found = kept_.insert(found, std::make_shared<Plane>());
  return (*found)->beginEmpty(box) ? *found : nullptr;
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
  const std::shared_ptr<Plane> made = pool.take(shapeBox);
  if (!made) return makeEmpty();
  if (!buffer.sweep(shape, shapeBox, *made)) return makeEmpty();
  box = shapeBox;
  if (mask) {
    for (int y = box.top; y < box.bottom; ++y) {
      const float* before = mask->row(y) + (box.left - mask->box().left);
      float* values = made->row(y);
      for (int i = 0; i < box.width(); ++i) values[i] *= before[i];
    }
  }
  mask = made;
}

void Clip::multiply(int x, int y, int count, float* coverage) const {
  if (edges) {
    const float height = shareOfPixel(y, edges->top, edges->bottom);
    const auto scale = [&](int column) { coverage[column - x] *= height * shareOfPixel(column, edges->left, edges->right); };
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
    const float* values = mask->row(y) + (x - mask->box().left);
    for (int i = 0; i < count; ++i) coverage[i] *= values[i];
  }
}

}  // namespace tessaluna::backend::raster
