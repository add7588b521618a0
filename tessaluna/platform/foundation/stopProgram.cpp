#include "tessaluna/platform/foundation/stopProgram.h"

#include <cstdio>
#include <cstdlib>
#include <string>

namespace tessaluna::platform {

void stopProgram(std::string_view report) {
  const std::string line = std::string(report) + "\n";
  std::fwrite(line.data(), 1, line.size(), stderr);
  std::fflush(stderr);
  std::abort();
}

void stopUnimplementedInitializer(std::string_view className, std::string_view initializer) {
  stopProgram(std::string(className) + ": use of unimplemented initializer " + std::string(initializer));
}

void unreachable() { stopProgram("reached a state that cannot be"); }

}  // namespace tessaluna::platform
