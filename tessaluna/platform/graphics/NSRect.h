// Drawing rectangles in the current context without a path of one's own. Without a current context: nothing.
#pragma once

#include "tessaluna/platform/backend/Canvas.h"
#include "tessaluna/platform/foundation/Geometry.h"

namespace tessaluna::platform {

// How a source combines with the pixels below; the values are the published ones.
enum NSCompositingOperation {
  NSCompositingOperationClear = 0,
  NSCompositingOperationCopy = 1,
  NSCompositingOperationSourceOver = 2,
  NSCompositingOperationSourceIn = 3,
  NSCompositingOperationSourceOut = 4,
  NSCompositingOperationSourceAtop = 5,
  NSCompositingOperationDestinationOver = 6,
  NSCompositingOperationDestinationIn = 7,
  NSCompositingOperationDestinationOut = 8,
  NSCompositingOperationDestinationAtop = 9,
  NSCompositingOperationXOR = 10,
  NSCompositingOperationPlusLighter = 13,
};
backend::BlendMode blendModeForOperation(NSCompositingOperation operation);

// Replaces what is in the rectangle by the fill color, its alpha included.
void NSRectFill(CGRect rect);
void NSRectFillUsingOperation(CGRect rect, NSCompositingOperation operation);
// Intersects the clip with the rectangle.
void NSRectClip(CGRect rect);

}  // namespace tessaluna::platform
