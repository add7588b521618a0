#include "tessaluna/platform/text/NSFont.h"

#include "tessaluna/platform/backend/Backend.h"

namespace tessaluna::platform {

const ClassInfo NSFont::staticClassInfo{.name = "NSFont", .base = &NSObject::staticClassInfo};

namespace {

Ref<NSFont> systemFont(CGFloat size, CGFloat usualSize, bool isBold) {
  return make<NSFont>(backend::FontDescription{.family = "", .size = size > 0 ? size : usualSize, .isBold = isBold});
}

}  // namespace

const backend::TextEngine& textEngine() {
  const backend::Backend* backend = backend::Backend::current();
  if (!backend) stopProgram("text was measured or drawn without a backend");
  return backend->textEngine();
}

Ref<NSFont> NSFont::systemFontOfSize(CGFloat size) { return systemFont(size, systemFontSize(), false); }
Ref<NSFont> NSFont::boldSystemFontOfSize(CGFloat size) { return systemFont(size, systemFontSize(), true); }
Ref<NSFont> NSFont::labelFontOfSize(CGFloat size) { return systemFont(size, labelFontSize(), false); }

Ref<NSFont> NSFont::fontWithName(const std::string& family, CGFloat size) {
  if (family.empty() || !textEngine().hasFamily(family)) return nullptr;
  return make<NSFont>(backend::FontDescription{.family = family, .size = size > 0 ? size : 12.0, .isBold = false});
}

backend::FontMetrics NSFont::metrics() const { return textEngine().metrics(description_); }

bool NSFont::isEqual(const NSObject* other) const {
  const auto* font = dynamic_cast<const NSFont*>(other);
  return font && font->description_ == description_;
}

}  // namespace tessaluna::platform
