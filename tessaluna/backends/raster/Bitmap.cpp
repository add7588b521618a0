#include "tessaluna/backends/raster/Bitmap.h"

#include <algorithm>
#include <cstdlib>

namespace tessaluna::backend::raster {

namespace {

constexpr std::size_t maximumBytes = std::size_t(1) << 30;

bool isPossibleSize(int width, int height) {
  return width > 0 && height > 0 && width <= Bitmap::maximumSide && height <= Bitmap::maximumSide &&
         std::size_t(width) * 4 <= maximumBytes / std::size_t(height);
}

}  // namespace

void Bitmap::Free::operator()(std::byte* bytes) const { std::free(bytes); }

std::optional<Bitmap> Bitmap::make(int width, int height) {
  if (!isPossibleSize(width, height)) return std::nullopt;
  // calloc rather than new: the system hands out large blocks zeroed, so only the pixels that are drawn on cost memory.
  auto* bytes = static_cast<std::byte*>(std::calloc(std::size_t(width) * std::size_t(height), 4));
  if (!bytes) return std::nullopt;
  Bitmap bitmap(bytes, width, height, std::size_t(width) * 4);
  bitmap.owned_.reset(bytes);
  return bitmap;
}

std::optional<Bitmap> Bitmap::borrow(std::uint32_t* pixels, int width, int height, std::size_t stride) {
  if (!pixels || !isPossibleSize(width, height) || stride % 4 != 0 || stride < std::size_t(width) * 4) return std::nullopt;
  return Bitmap(reinterpret_cast<std::byte*>(pixels), width, height, stride);
}

void Bitmap::clear(std::uint32_t pixel) {
  for (int y = 0; y < height_; ++y) std::fill_n(row(y), width_, pixel);
}

}  // namespace tessaluna::backend::raster
