// The picture of a transparency layer, kept only for the part that was painted on: float channels, or one value per pixel
// while everything in the layer has one color.
#pragma once

#include "tessaluna/backends/raster/Float4.h"
#include "tessaluna/backends/raster/PixelRect.h"
#include "tessaluna/backends/raster/WorkBuffer.h"

namespace tessaluna::backend::raster {

template <class Value>
class LayerOf {
 public:
  // Starts empty; nothing will be painted outside `maxBox`. The layer subtracts its pixels from `pixelsLeft`, which all
  // layers share, and returns them at its end.
  void begin(const PixelRect& maxBox, std::size_t& pixelsLeft) {
    maxBox_ = maxBox;
    content_ = {};
    pixelsLeft_ = &pixelsLeft;
  }
  void end() { *pixelsLeft_ += content_.area(); }
  // Makes room for the part of `box` that lies within `maxBox`. False when memory is short.
  bool include(const PixelRect& box);

  const PixelRect& maxBox() const { return maxBox_; }
  const PixelRect& content() const { return content_; }  // outside it everything is transparent
  Value* pixel(int x, int y) {
    return memory_.data() + std::size_t(y - content_.top) * std::size_t(content_.width()) + (x - content_.left);
  }
  const Value* pixel(int x, int y) const { return const_cast<LayerOf*>(this)->pixel(x, y); }

 private:
  PixelRect maxBox_, content_;
  std::size_t* pixelsLeft_ = nullptr;
  WorkBuffer<Value> memory_;
};

using Layer = LayerOf<Float4>;
using TintLayer = LayerOf<float>;

}  // namespace tessaluna::backend::raster
