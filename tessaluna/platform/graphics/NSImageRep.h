// One rendering that an image holds: its size in points and in pixels, and the pixels themselves, which may have to be decoded
// first.
#pragma once

#include "tessaluna/platform/backend/ImagePixels.h"
#include "tessaluna/platform/foundation/Geometry.h"
#include "tessaluna/platform/foundation/NSObject.h"

namespace tessaluna::platform {

class EncodedPicture;

class NSImageRep : public NSObject {
 public:
  static const ClassInfo staticClassInfo;
  const ClassInfo& classInfo() const override { return staticClassInfo; }

  // One point per pixel initially. Without pixels both dimensions are 0.
  explicit NSImageRep(std::shared_ptr<const backend::ImagePixels> pixels);
  // Of a picture that is decoded when its pixels are first asked for; the dimensions are those that it says it has.
  NSImageRep(std::shared_ptr<const EncodedPicture> encoded, int pixelsWide, int pixelsHigh);
  // Without pixels to draw.
  NSImageRep(CGSize size, int pixelsWide, int pixelsHigh) : size_(size), pixelsWide_(pixelsWide), pixelsHigh_(pixelsHigh) {}

  int pixelsWide() const { return pixelsWide_; }
  int pixelsHigh() const { return pixelsHigh_; }
  virtual CGSize size() const { return size_; }
  virtual void setSize(CGSize size) { size_ = size; }

  // Decoded at the first call, on the main thread, and kept. Null without any, and for a damaged picture.
  const std::shared_ptr<const backend::ImagePixels>& pixels() const;
  // What is still to be decoded; null once it is.
  const std::shared_ptr<const EncodedPicture>& encoded() const { return encoded_; }

 private:
  mutable std::shared_ptr<const EncodedPicture> encoded_;
  mutable std::shared_ptr<const backend::ImagePixels> pixels_;
  CGSize size_;
  int pixelsWide_ = 0, pixelsHigh_ = 0;
};

}  // namespace tessaluna::platform
