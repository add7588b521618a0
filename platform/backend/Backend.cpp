#include "platform/backend/Backend.h"

#include "platform/foundation/stopProgram.h"

namespace backend {

namespace {

Backend* living = nullptr;

}  // namespace

Backend::Backend() {
  if (living) platform::stopProgram("a second backend was made while a first one lives");
  living = this;
}

Backend::~Backend() { living = nullptr; }

Backend* Backend::current() { return living; }

}  // namespace backend
