// What both kinds of native windows have here: one of its own, and one that a program's widgets share with our views.
#pragma once

#include "tessaluna/platform/backend/Backend.h"

class QWindow;

namespace tessaluna::backend::qt {

class QtNativeWindow : public NativeWindow {
 public:
  virtual QWindow* qWindow() const = 0;  // absent before there is one
  // Screen space counts from another corner of the desktop than before.
  virtual void screenSpaceHasMoved() = 0;
};

}  // namespace tessaluna::backend::qt
