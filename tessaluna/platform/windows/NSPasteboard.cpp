#include "tessaluna/platform/windows/NSPasteboard.h"

#include "tessaluna/platform/backend/Backend.h"

namespace tessaluna::platform {

const ClassInfo NSPasteboard::staticClassInfo{.name = "NSPasteboard", .base = &NSObject::staticClassInfo};

Ref<NSPasteboard> NSPasteboard::generalPasteboard() {
  static const Ref<NSPasteboard> pasteboard = make<NSPasteboard>();
  return pasteboard;
}

void NSPasteboard::clearContents() { setString("", NSPasteboardTypeString); }

bool NSPasteboard::setString(std::string_view text, std::string_view type) {
  backend::Backend* backend = backend::Backend::current();
  if (!backend || type != NSPasteboardTypeString) return false;
  backend->setClipboardText(std::string(text));
  return true;
}

std::optional<std::string> NSPasteboard::stringForType(std::string_view type) const {
  const backend::Backend* backend = backend::Backend::current();
  if (!backend || type != NSPasteboardTypeString) return std::nullopt;
  std::string text = backend->clipboardText();
  return text.empty() ? std::nullopt : std::optional(std::move(text));
}

}  // namespace tessaluna::platform
