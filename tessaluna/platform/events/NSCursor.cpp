#include "tessaluna/platform/events/NSCursor.h"

namespace tessaluna::platform {

using backend::CursorShape;

const ClassInfo NSCursor::staticClassInfo{.name = "NSCursor", .base = &NSObject::staticClassInfo};

Ref<NSCursor> NSCursor::arrowCursor() {
  static const Ref<NSCursor> cursor = make<NSCursor>(CursorShape::Arrow);
  return cursor;
}

Ref<NSCursor> NSCursor::pointingHandCursor() {
  static const Ref<NSCursor> cursor = make<NSCursor>(CursorShape::PointingHand);
  return cursor;
}

Ref<NSCursor> NSCursor::IBeamCursor() {
  static const Ref<NSCursor> cursor = make<NSCursor>(CursorShape::IBeam);
  return cursor;
}

Ref<NSCursor> NSCursor::resizeLeftRightCursor() {
  static const Ref<NSCursor> cursor = make<NSCursor>(CursorShape::ResizeLeftRight);
  return cursor;
}

Ref<NSCursor> NSCursor::resizeUpDownCursor() {
  static const Ref<NSCursor> cursor = make<NSCursor>(CursorShape::ResizeUpDown);
  return cursor;
}

}  // namespace tessaluna::platform
