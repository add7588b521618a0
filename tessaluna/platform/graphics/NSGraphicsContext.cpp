#include "tessaluna/platform/graphics/NSGraphicsContext.h"

#include "tessaluna/platform/foundation/SystemVersion.h"

namespace tessaluna::platform {

namespace {

thread_local Ref<NSGraphicsContext> current;

}  // namespace

const ClassInfo NSGraphicsContext::staticClassInfo{.name = "NSGraphicsContext", .base = &NSObject::staticClassInfo};

Ref<NSGraphicsContext> NSGraphicsContext::graphicsContextWithCGContext(platform::CGContext& context, bool flipped) {
  return make<NSGraphicsContext>(context, flipped);
}

Ref<NSGraphicsContext> NSGraphicsContext::currentContext() { return current; }

void NSGraphicsContext::setCurrentContext(Ref<NSGraphicsContext> context) { current = std::move(context); }

platform::CGContext& NSGraphicsContext::currentCgContext() {
  if (!current) stopProgram("NSGraphicsContext: currentCgContext was asked for without a current graphics context");
  const bool isModern = isOperatingSystemAtLeastVersion({10, 10, 0});
  return isModern ? current->CGContext() : current->graphicsPort();
}

platform::CGContext* NSGraphicsContext::currentCGContextIfAny() { return current ? &current->CGContext() : nullptr; }

void NSGraphicsContext::saveGraphicsState() {
  if (current) current->CGContext().saveState();
}

void NSGraphicsContext::restoreGraphicsState() {
  if (current) current->CGContext().restoreState();
}

}  // namespace tessaluna::platform
