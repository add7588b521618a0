#include "tessaluna/platform/graphics/NSImageRep.h"

#include <utility>

#include "tessaluna/platform/graphics/EncodedPicture.h"

namespace tessaluna::platform {

const ClassInfo NSImageRep::staticClassInfo{.name = "NSImageRep", .base = &NSObject::staticClassInfo};

NSImageRep::NSImageRep(std::shared_ptr<const backend::ImagePixels> pixels) : pixels_(std::move(pixels)) {
  if (!pixels_) return;
  pixelsWide_ = pixels_->width;
  pixelsHigh_ = pixels_->height;
  size_ = {static_cast<CGFloat>(pixelsWide_), static_cast<CGFloat>(pixelsHigh_)};
}

NSImageRep::NSImageRep(std::shared_ptr<const EncodedPicture> encoded, int pixelsWide, int pixelsHigh)
    : encoded_(std::move(encoded)),
      size_{static_cast<CGFloat>(pixelsWide), static_cast<CGFloat>(pixelsHigh)},
      pixelsWide_(pixelsWide),
      pixelsHigh_(pixelsHigh) {}

const std::shared_ptr<const backend::ImagePixels>& NSImageRep::pixels() const {
  if (const auto encoded = std::exchange(encoded_, nullptr)) pixels_ = encoded->decode();
  return pixels_;
}

}  // namespace tessaluna::platform
