#include "tessaluna/platform/graphics/NSImageRep.h"

namespace tessaluna::platform {

const ClassInfo NSImageRep::staticClassInfo{.name = "NSImageRep", .base = &NSObject::staticClassInfo};

NSImageRep::NSImageRep(std::shared_ptr<const backend::ImagePixels> pixels) : pixels_(std::move(pixels)) {
  if (!pixels_) return;
  pixelsWide_ = pixels_->width;
  pixelsHigh_ = pixels_->height;
  size_ = {static_cast<CGFloat>(pixelsWide_), static_cast<CGFloat>(pixelsHigh_)};
}

}  // namespace tessaluna::platform
