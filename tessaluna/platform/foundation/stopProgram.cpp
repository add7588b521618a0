#include "tessaluna/platform/foundation/stopProgram.h"

#include <cstdio>
#include <cstdlib>
#include <string>
#include <utility>

#include "tessaluna/platform/foundation/AtEndOfScope.h"
#include "tessaluna/platform/foundation/stopHandler.h"

namespace tessaluna::platform {

namespace {

std::function<void(std::string_view)>& stopHandler() {
  static std::function<void(std::string_view)> handler;
  return handler;
}

thread_local bool handlerRuns = false;

void callHandler(std::string_view report) {
  if (!stopHandler() || handlerRuns) return;
  const auto held = stopHandler();  // it may set another one
  handlerRuns = true;
  const AtEndOfScope end([] { handlerRuns = false; });
  held(report);
}

}  // namespace

void setStopHandler(std::function<void(std::string_view report)> handler) { stopHandler() = std::move(handler); }

void stopProgram(std::string_view report) {
  callHandler(report);
  const std::string line = std::string(report) + "\n";
  std::fwrite(line.data(), 1, line.size(), stderr);
  std::fflush(stderr);
  std::abort();
}

void stopUnimplementedInitializer(std::string_view className, std::string_view initializer) {
  stopProgram(std::string(className) + ": use of unimplemented initializer " + std::string(initializer));
}

void unreachable() { stopProgram("reached an impossible state"); }

}  // namespace tessaluna::platform
