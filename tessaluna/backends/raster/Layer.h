// The picture of a transparency layer: float channels, kept only for the part that was painted on.
#pragma once

#include "tessaluna/backends/raster/Float4.h"
#include "tessaluna/backends/raster/PixelRect.h"
#include "tessaluna/backends/raster/WorkBuffer.h"

namespace tessaluna::backend::raster {

class Layer {
 public:
  // Starts empty; nothing will be painted outside `most`.
  void begin(const PixelRect& most) {
    most_ = most;
    content_ = {};
  }
  // Makes pixels of the part of `box` that is within the layer. False when memory is short.
  bool include(const PixelRect& box);

  const PixelRect& most() const { return most_; }
  const PixelRect& content() const { return content_; }  // outside it everything is transparent
  Float4* pixel(int x, int y) {
    return memory_.data() + std::size_t(y - content_.top) * std::size_t(content_.width()) + (x - content_.left);
  }
  const Float4* pixel(int x, int y) const { return const_cast<Layer*>(this)->pixel(x, y); }

 private:
  PixelRect most_, content_;
  WorkBuffer<Float4> memory_;
};

}  // namespace tessaluna::backend::raster
