// An addition: an image of many pixels, decoded on another thread and reduced to the pixels that show of it, so that the main
// thread takes no part in the one and memory holds none of the other. Whoever draws it keeps it alive and draws its picture.
#pragma once

#include <functional>
#include <memory>
#include <vector>

#include "tessaluna/platform/foundation/Geometry.h"
#include "tessaluna/platform/foundation/Reference.h"
#include "tessaluna/platform/graphics/Forward.h"

namespace tessaluna::platform {

class PreparedImage {
 public:
  // Whether drawing the image would first decode a picture of many pixels.
  static bool isNeededFor(const NSImage& image);

  // Begins at once; needs a backend. The picture gets no fewer pixels than `pixels` each way, as far as the image has them. One
  // that somebody keeps alive and that is large enough serves again. `changed` is called on the main queue, once, when the
  // picture is ready or known to be damaged, unless it is so already; it must keep nothing alive, so it holds what it needs weakly.
  static std::shared_ptr<PreparedImage> of(const Ref<NSImage>& image, CGSize pixels, std::function<void()> changed);

  PreparedImage(const Ref<NSImage>& image, CGSize pixels);

  // As large as the image in points. Null until it is ready, and for a damaged one.
  const Ref<NSImage>& picture() const { return picture_; }
  bool isDone() const { return isDone_; }
  bool serves(CGSize pixels) const { return pixels.width <= pixels_.width && pixels.height <= pixels_.height; }

 private:
  static void begin(const std::shared_ptr<PreparedImage>& prepared);

  WeakRef<NSImage> image_;
  CGSize pixels_;
  Ref<NSImage> picture_;
  bool isDone_ = false;
  std::vector<std::function<void()>> waiting_;
};

}  // namespace tessaluna::platform
