#include "tessaluna/backends/raster/Layer.h"

#include <cstring>

namespace tessaluna::backend::raster {

bool Layer::include(const PixelRect& box) {
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
  Float4* pixels = memory_.prepare(newCount, oldCount);
  if (!pixels) {
    *pixelsLeft_ += oldCount;
    content_ = {};
    return false;
  }
  *pixelsLeft_ -= newCount - oldCount;
  content_ = wanted;
  if (oldCount == 0) {
    std::fill_n(pixels, newCount, Float4{});
    return true;
  }
  // Rows only move towards the end of the block, so going from the last row to the first overwrites nothing that is needed.
  const std::size_t shift = std::size_t(before.left - wanted.left);
  const int below = wanted.bottom - before.bottom;
  std::fill_n(pixels + newCount - std::size_t(below) * newWidth, std::size_t(below) * newWidth, Float4{});
  for (int y = before.bottom - 1; y >= before.top; --y) {
    Float4* row = pixels + std::size_t(y - wanted.top) * newWidth;
    std::memmove(row + shift, pixels + std::size_t(y - before.top) * oldWidth, oldWidth * sizeof(Float4));
    std::fill_n(row + shift + oldWidth, newWidth - shift - oldWidth, Float4{});
  }
  // The left margins are cleared last: while rows were moving, other rows could still be in them.
  for (int y = wanted.top; y < wanted.bottom; ++y) {
    std::fill_n(pixels + std::size_t(y - wanted.top) * newWidth, y < before.top ? newWidth : shift, Float4{});
  }
  return true;
}

void Layer::writeInks(int x, int y, int count, InkRow& row) {
  const bool isRowInside = y >= content_.top && y < content_.bottom;
  const int first = isRowInside ? std::clamp(content_.left - x, 0, count) : count;
  const int end = isRowInside ? std::clamp(content_.right - x, first, count) : count;
  for (int i = 0; i < first; i += 4) row.set(i, FourInks{});
  const Float4* pixels = isRowInside ? pixel(x + first, y) : nullptr;
  for (int i = first; i < end; i += 4) {
    Long2 inks[4] = {};
    for (int place = 0; place < std::min(4, end - i); ++place) {
      const Int4 channels = __builtin_convertvector(*pixels++ * splat(0xff00) + splat(0.5f), Int4);
      // Blue and green, below red and alpha.
      inks[place] = reinterpret_cast<Long2>(channels | __builtin_shufflevector(channels, channels, 2, 3, 2, 3) << 16);
    }
    const auto pairOf = [](Long2 a, Long2 b) {
      return __builtin_shufflevector(reinterpret_cast<Int4>(a), reinterpret_cast<Int4>(b), 0, 4, 1, 5);
    };
    const Int4 low = pairOf(inks[0], inks[1]), high = pairOf(inks[2], inks[3]);
    const Int4 even = __builtin_shufflevector(low, high, 0, 1, 4, 5), odd = __builtin_shufflevector(low, high, 2, 3, 6, 7);
    row.set(i, {halves(even), halves(odd)});
  }
  for (int i = end; i < count; i += 4) row.set(i, FourInks{});
}

}  // namespace tessaluna::backend::raster
