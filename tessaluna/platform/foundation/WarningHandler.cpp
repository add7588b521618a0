#include "tessaluna/platform/foundation/WarningHandler.h"

#include <cstdio>

namespace tessaluna::platform {

void WarningHandler::warn(const std::string& line) const {
  const Function held = function_;  // it may set another one
  if (held) return held(line);
#ifndef NDEBUG
  std::fprintf(stderr, "%s\n", line.c_str());
#endif
}

}  // namespace tessaluna::platform
