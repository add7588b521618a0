#include "tessaluna/backends/raster/Layer.h"

#include <cstring>

namespace tessaluna::backend::raster {

template <class Value>
bool LayerOf<Value>::include(const PixelRect& box) {
  PixelRect wanted = box.intersected(maxBox_);
  if (wanted.isEmpty() || content_.contains(wanted)) return true;
  const PixelRect before = content_;
  if (!before.isEmpty()) {
    // Leaves spare room on the sides that grow, so that a row of small shapes does not move all pixels for each shape.
    wanted = wanted.united(before);
    const int spareX = wanted.width() / 4, spareY = wanted.height() / 4;
    if (wanted.left < before.left) wanted.left -= spareX;
    if (wanted.right > before.right) wanted.right += spareX;
    if (wanted.top < before.top) wanted.top -= spareY;
    if (wanted.bottom > before.bottom) wanted.bottom += spareY;
    wanted = wanted.intersected(maxBox_);
  }
  const std::size_t oldWidth = std::size_t(before.width()), newWidth = std::size_t(wanted.width());
  const std::size_t oldCount = before.area(), newCount = wanted.area();
  if (newCount - oldCount > *pixelsLeft_) return false;
  Value* pixels = memory_.prepare(newCount, oldCount);
  if (!pixels) {
    *pixelsLeft_ += oldCount;
    content_ = {};
    return false;
  }
  *pixelsLeft_ -= newCount - oldCount;
  content_ = wanted;
  if (oldCount == 0) {
    std::fill_n(pixels, newCount, Value{});
    return true;
  }
  // Rows only move towards the end of the block, so going from the last row to the first overwrites nothing that is needed.
  const std::size_t shift = std::size_t(before.left - wanted.left);
  const int below = wanted.bottom - before.bottom;
  std::fill_n(pixels + newCount - std::size_t(below) * newWidth, std::size_t(below) * newWidth, Value{});
  for (int y = before.bottom - 1; y >= before.top; --y) {
    Value* row = pixels + std::size_t(y - wanted.top) * newWidth;
    std::memmove(row + shift, pixels + std::size_t(y - before.top) * oldWidth, oldWidth * sizeof(Value));
    std::fill_n(row + shift + oldWidth, newWidth - shift - oldWidth, Value{});
  }
  // The left margins are cleared last: while rows were moving, other rows could still be in them.
  for (int y = wanted.top; y < wanted.bottom; ++y) {
    std::fill_n(pixels + std::size_t(y - wanted.top) * newWidth, y < before.top ? newWidth : shift, Value{});
  }
  return true;
}

template class LayerOf<Float4>;
template class LayerOf<float>;

}  // namespace tessaluna::backend::raster
