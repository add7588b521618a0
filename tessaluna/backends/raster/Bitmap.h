// Pixels in memory: premultiplied 8-bit ARGB, one 0xAARRGGBB word a pixel in the machine's byte order. Row 0
// is the uppermost. A bitmap owns its pixels or borrows a caller's, which must then outlive it. Moved, never
// copied.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>

#include "tessaluna/backends/raster/PixelRect.h"

namespace tessaluna::backend::raster {

class Bitmap {
 public:
  // No side may be longer than this, nor all pixels together take more than a gibibyte.
  static constexpr int maximumSide = 32767;

  // All pixels transparent. Absent for a size that is not positive, too large, or that memory cannot hold.
  static std::optional<Bitmap> make(int width, int height);
  // Over the caller's pixels, which stay as they are. Absent for an impossible size, no memory, or a stride
  // (in bytes) that is too short for a row or no multiple of four.
  static std::optional<Bitmap> borrow(std::uint32_t* pixels, int width, int height, std::size_t stride);

  int width() const { return width_; }
  int height() const { return height_; }
  std::size_t stride() const { return stride_; }  // bytes from a row to the next
  PixelRect bounds() const { return {0, 0, width_, height_}; }

  std::uint32_t* row(int y) { return reinterpret_cast<std::uint32_t*>(bytes_ + std::size_t(y) * stride_); }
  const std::uint32_t* row(int y) const { return reinterpret_cast<const std::uint32_t*>(bytes_ + std::size_t(y) * stride_); }
  std::uint32_t pixel(int x, int y) const { return row(y)[x]; }

  // Makes every pixel this one; transparent when nothing is said.
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
