// What the pointer looks like. One object for each shape.
#pragma once

#include "tessaluna/platform/backend/Backend.h"
#include "tessaluna/platform/foundation/NSObject.h"

namespace tessaluna::platform {

class NSCursor : public NSObject {
 public:
  static const ClassInfo staticClassInfo;
  const ClassInfo& classInfo() const override { return staticClassInfo; }

  static Ref<NSCursor> arrowCursor();
  static Ref<NSCursor> pointingHandCursor();
  static Ref<NSCursor> IBeamCursor();
  static Ref<NSCursor> resizeLeftRightCursor();
  static Ref<NSCursor> resizeUpDownCursor();

  explicit NSCursor(backend::CursorShape shape) : shape_(shape) {}
  backend::CursorShape shape() const { return shape_; }

 private:
  backend::CursorShape shape_;
};

}  // namespace tessaluna::platform
