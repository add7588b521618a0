// One rendering that an image holds: its size in points, and the pixels that it was decoded to, if it was.
#pragma once

#include "tessaluna/platform/backend/ImagePixels.h"
#include "tessaluna/platform/foundation/Geometry.h"
#include "tessaluna/platform/foundation/NSObject.h"

namespace tessaluna::platform {

class NSImageRep : public NSObject {
 public:
  static const ClassInfo staticClassInfo;
  const ClassInfo& classInfo() const override { return staticClassInfo; }

  // Without pixels both dimensions are 0. One point a pixel at the start.
  explicit NSImageRep(std::shared_ptr<const backend::ImagePixels> pixels);
  NSImageRep(CGSize size, int pixelsWide, int pixelsHigh) : size_(size), pixelsWide_(pixelsWide), pixelsHigh_(pixelsHigh) {}

  int pixelsWide() const { return pixelsWide_; }
  int pixelsHigh() const { return pixelsHigh_; }
  virtual CGSize size() const { return size_; }
  virtual void setSize(CGSize size) { size_ = size; }
  const std::shared_ptr<const backend::ImagePixels>& pixels() const { return pixels_; }

 private:
  std::shared_ptr<const backend::ImagePixels> pixels_;
  CGSize size_;
  int pixelsWide_ = 0, pixelsHigh_ = 0;
};

}  // namespace tessaluna::platform
