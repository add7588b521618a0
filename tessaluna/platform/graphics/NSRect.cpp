#include "tessaluna/platform/graphics/NSRect.h"

#include "tessaluna/platform/graphics/CGContext.h"
#include "tessaluna/platform/graphics/NSGraphicsContext.h"

namespace tessaluna::platform {

backend::BlendMode blendModeForOperation(NSCompositingOperation operation) {
  using enum backend::BlendMode;
  switch (operation) {
    case NSCompositingOperationClear: return Clear;
    case NSCompositingOperationCopy: return Copy;
    case NSCompositingOperationSourceOver: return Normal;
    case NSCompositingOperationSourceIn: return SourceIn;
    case NSCompositingOperationSourceOut: return SourceOut;
    case NSCompositingOperationSourceAtop: return SourceAtop;
    case NSCompositingOperationDestinationOver: return DestinationOver;
    case NSCompositingOperationDestinationIn: return DestinationIn;
    case NSCompositingOperationDestinationOut: return DestinationOut;
    case NSCompositingOperationDestinationAtop: return DestinationAtop;
    case NSCompositingOperationXOR: return Xor;
    case NSCompositingOperationPlusLighter: return PlusLighter;
  }
  unreachable();
}

void NSRectFill(CGRect rect) { NSRectFillUsingOperation(rect, NSCompositingOperationCopy); }

void NSRectFillUsingOperation(CGRect rect, NSCompositingOperation operation) {
  CGContext* context = NSGraphicsContext::currentCGContextIfAny();
  if (!context) return;
  const GraphicsStateScope scope(*context);
  context->setBlendMode(blendModeForOperation(operation));
  context->fillPath(backend::Path::rect(rect), backend::FillRule::NonZero);
}

void NSRectClip(CGRect rect) {
  if (CGContext* context = NSGraphicsContext::currentCGContextIfAny()) context->clipRect(rect);
}

}  // namespace tessaluna::platform
