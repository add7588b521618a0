// Pixels in memory: premultiplied 8-bit ARGB, one 0xAARRGGBB word per pixel in the machine's byte order. Row 0 is
// the top row. A bitmap owns its pixels or borrows a caller's, which must then outlive it. It can be moved but not copied.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>

#include "tessaluna/backends/raster/PixelRect.h"

namespace tessaluna::backend::raster {

class Bitmap {
 public:
  // No side may be longer than this, and all pixels together may not take more than a gibibyte.
  static constexpr int maximumSide = 32767;

  // All pixels are transparent. Absent if the size is not positive, is too large, or does not fit into memory.
  static std::optional<Bitmap> make(int width, int height);
  // Uses the caller's pixels, which keep their values. Absent if the size is impossible, if there are no pixels, or if the
  // stride (in bytes) is too short for a row or is not a multiple of four.
  static std::optional<Bitmap> borrow(std::uint32_t* pixels, int width, int height, std::size_t stride);

  int width() const { return width_; }
  int height() const { return height_; }
  std::size_t stride() const { return stride_; }  // bytes from one row to the next
  PixelRect bounds() const { return {0, 0, width_, height_}; }

  std::uint32_t* row(int y) { return reinterpret_cast<std::uint32_t*>(bytes_ + std::size_t(y) * stride_); }
  const std::uint32_t* row(int y) const { return reinterpret_cast<const std::uint32_t*>(bytes_ + std::size_t(y) * stride_); }
  std::uint32_t pixel(int x, int y) const { return row(y)[x]; }

  // Sets every pixel to this value, which is transparent by default.
  void clear(std::uint32_t pixel = 0);

 private:
  struct Free {
    void operator()(std::byte* bytes) const;
  };

  Bitmap(std::byte* bytes, int width, int height, std::size_t stride)
      : bytes_(bytes), width_(width), height_(height), stride_(stride) {}

  std::unique_ptr<std::byte, Free> owned_;
  std::byte* bytes_;
  int width_, height_;
  std::size_t stride_;
};

}  // namespace tessaluna::backend::raster
