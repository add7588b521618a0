#include "tessaluna/platform/backend/Backend.h"

#include "tessaluna/platform/foundation/stopProgram.h"

namespace tessaluna::backend {

namespace {

Backend* living = nullptr;

}  // namespace

Backend::Backend() {
  if (living) platform::stopProgram("a second backend was made while a first one lives");
  living = this;
}

Backend::~Backend() { living = nullptr; }

Backend* Backend::current() { return living; }

}  // namespace tessaluna::backend
