#include "tessaluna/platform/time/durations.h"

#include "tessaluna/platform/backend/Backend.h"

namespace tessaluna::platform {

double animationDuration(double seconds) {
  const backend::Backend* backend = backend::Backend::current();
  return backend && seconds > 0 && !backend->prefersReducedMotion() ? seconds : 0;
}

}  // namespace tessaluna::platform
