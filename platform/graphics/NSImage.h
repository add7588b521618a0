// A picture of some size in points. One made with a drawing handler holds no pixels: the handler runs whenever the image
// is rendered, so it stays vector at any size and on any screen scale.
#pragma once

#include "platform/foundation/NSObject.h"
#include "platform/graphics/DrawingHandler.h"
#include "platform/graphics/Forward.h"

namespace platform {

class NSImage : public NSObject {
 public:
  static const ClassInfo staticClassInfo;
  const ClassInfo& classInfo() const override { return staticClassInfo; }

  // The handler draws into the current context, in the rectangle (0, 0, size), y up unless flipped, and returns whether
  // it could. Nothing is drawn until the image is.
  static Ref<NSImage> imageWithSize(CGSize size, bool flipped, DrawingHandler handler);

  CGSize size() const { return size_; }
  void setSize(CGSize size) { size_ = size; }

  // Renders the whole image into the rectangle, scaled to it and clipped by it. Nothing outside a drawing pass.
  void drawInRect(CGRect rect);
  void drawInContext(CGContext& context, CGRect rect);

  NSImage(CGSize size, bool flipped, DrawingHandler handler)
      : size_(size), handlerSize_(size), handlerIsFlipped_(flipped), handler_(std::move(handler)) {}

 private:
  CGSize size_;
  CGSize handlerSize_;  // the space that the handler draws in; a later setSize scales it
  bool handlerIsFlipped_;
  DrawingHandler handler_;
};

}  // namespace platform
