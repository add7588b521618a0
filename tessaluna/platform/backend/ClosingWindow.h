// What a native window derives from, beside NativeWindow, on a desktop that distinguishes a window that closes from one that is
// only hidden: it may end a program with its last window.
#pragma once

#include "tessaluna/platform/foundation/languageVersion.h"

namespace tessaluna::backend {

class ClosingWindow {
 public:
  virtual ~ClosingWindow() = default;
  // The next hide() closes the window, which may be shown again later. The window may be hidden already; hide() is called
  // even then.
  virtual void willClose() = 0;
};

}  // namespace tessaluna::backend
