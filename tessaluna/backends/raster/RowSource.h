// A source with a different color at every pixel: a gradient, an image or a layer. It writes the colors of a run of pixels
// in one row.
#pragma once

#include "tessaluna/backends/raster/Inks.h"
#include "tessaluna/backends/raster/PixelRect.h"
#include "tessaluna/backends/raster/WorkBuffer.h"
#include "tessaluna/platform/foundation/stopProgram.h"

namespace tessaluna::backend::raster {

// The colors of a run, in two lists: one word per pixel for its even channels, and one for its odd channels.
class InkRow {
 public:
  // Makes room for this many pixels and those that complete the last four. False when memory is short.
  bool prepare(int count) {
    odd_ = count + 4;
    return memory_.prepare(2 * std::size_t(odd_)) != nullptr;
  }
  FourInks at(int index) { return {loadFour(memory_.data() + index), loadFour(memory_.data() + odd_ + index)}; }
  // Premultiplied, 0...1.
  Float4 colorAt(int index) {
    const std::uint32_t even = memory_.data()[index], odd = memory_.data()[odd_ + index];
    const Int4 channels{int(even & 0xffff), int(odd & 0xffff), int(even >> 16), int(odd >> 16)};
    return __builtin_convertvector(channels, Float4) * splat(1.0f / 0xff00);
  }
  void set(int index, const FourInks& inks) {
    storeFour(inks.even, memory_.data() + index);
    storeFour(inks.odd, memory_.data() + odd_ + index);
  }

 private:
  WorkBuffer<std::uint32_t> memory_;
  int odd_ = 0;
};

class RowSource {
 public:
  virtual ~RowSource() = default;
  // True if no pixel is translucent.
  virtual bool isOpaque() const { return false; }
  // Writes the colors of an opaque source.
  virtual void writePixels(int, int, int, std::uint32_t*) { platform::unreachable(); }
  // The same for the rows of a box, which lie `stride` bytes apart.
  virtual void writeRows(const PixelRect& box, std::uint32_t* pixels, std::size_t stride) {
    for (int y = box.top; y < box.bottom; ++y, pixels = rowAfter(pixels, stride))
      writePixels(box.left, y, box.width(), pixels);
  }
  // The row must have room for the pixels.
  virtual void writeInks(int x, int y, int count, InkRow& row) = 0;

 protected:
  static std::uint32_t* rowAfter(std::uint32_t* row, std::size_t stride) { return row + stride / sizeof(std::uint32_t); }
};

}  // namespace tessaluna::backend::raster
