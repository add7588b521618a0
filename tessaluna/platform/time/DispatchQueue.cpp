#include "tessaluna/platform/time/DispatchQueue.h"

#include "tessaluna/platform/backend/Backend.h"
#include "tessaluna/platform/foundation/stopProgram.h"

namespace tessaluna::platform {

namespace {

backend::Backend& currentBackend() {
  backend::Backend* backend = backend::Backend::current();
  if (!backend) stopProgram("DispatchQueue: used without a backend");
  return *backend;
}

}  // namespace

void DispatchQueue::asyncAfter(double seconds, std::function<void()> block) const {
  currentBackend().callAfter(seconds, std::move(block));
}

void DispatchQueue::callElsewhere(std::function<void()> work, std::function<void()> answer) {
  currentBackend().callElsewhere(std::move(work), std::move(answer));
}

}  // namespace tessaluna::platform
