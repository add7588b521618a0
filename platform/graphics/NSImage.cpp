#include "platform/graphics/NSImage.h"

#include "platform/graphics/CGContext.h"
#include "platform/graphics/NSGraphicsContext.h"

namespace platform {

const ClassInfo NSImage::staticClassInfo{.name = "NSImage", .base = &NSObject::staticClassInfo};

Ref<NSImage> NSImage::imageWithSize(CGSize size, bool flipped, DrawingHandler handler) {
  return make<NSImage>(size, flipped, std::move(handler));
}

void NSImage::drawInRect(CGRect rect) {
  if (CGContext* context = NSGraphicsContext::currentCGContextIfAny()) drawInContext(*context, rect);
}

void NSImage::drawInContext(CGContext& context, CGRect rect) {
  const CGRect whole{{}, handlerSize_};
  if (!handler_ || NSIsEmptyRect(whole) || NSIsEmptyRect(rect)) return;
  const GraphicsStateScope scope(context);
  context.clipRect(rect);
  const CGFloat xScale = rect.size.width / whole.size.width, yScale = rect.size.height / whole.size.height;
  context.concat(CGAffineTransform::scale(xScale, yScale)
                     .then(CGAffineTransform::translation(rect.origin.x, rect.origin.y)));
  if (handlerIsFlipped_) context.concat({1, 0, 0, -1, 0, whole.size.height});
  const CurrentContextScope current(NSGraphicsContext::graphicsContextWithCGContext(context, handlerIsFlipped_));
  handler_(whole);
}

}  // namespace platform
