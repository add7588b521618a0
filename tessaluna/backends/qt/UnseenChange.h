// While one of these lives, nobody else sees what becomes of the screen: what a window does meanwhile is seen as one change.
// On X11; elsewhere it does nothing. It stops the whole screen: for what takes no time, and never around the program's code.
#pragma once

#include "tessaluna/platform/foundation/languageVersion.h"

struct xcb_connection_t;

namespace tessaluna::backend::qt {

class UnseenChange {
 public:
  UnseenChange();
  ~UnseenChange();
  UnseenChange(const UnseenChange&) = delete;
  UnseenChange& operator=(const UnseenChange&) = delete;

 private:
  xcb_connection_t* connection_;  // absent elsewhere
};

}  // namespace tessaluna::backend::qt
