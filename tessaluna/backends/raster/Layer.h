// The picture of a transparency layer, with float channels, kept only for the part that was painted on.
#pragma once

#include "tessaluna/backends/raster/Float4.h"
#include "tessaluna/backends/raster/RowSource.h"

namespace tessaluna::backend::raster {

class Layer final : public RowSource {
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
  Float4* pixel(int x, int y) {
    return memory_.data() + std::size_t(y - content_.top) * std::size_t(content_.width()) + (x - content_.left);
  }
  const Float4* pixel(int x, int y) const { return const_cast<Layer*>(this)->pixel(x, y); }

  void writeInks(int x, int y, int count, InkRow& row) override;

 private:
  PixelRect maxBox_, content_;
  std::size_t* pixelsLeft_ = nullptr;
  WorkBuffer<Float4> memory_;
};

}  // namespace tessaluna::backend::raster
