#include "tessaluna/platform/windows/NSPasteboard.h"

#include "tessaluna/platform/backend/Backend.h"
#include "tessaluna/platform/backend/PrimarySelection.h"

namespace tessaluna::platform {

const ClassInfo NSPasteboard::staticClassInfo{.name = "NSPasteboard", .base = &NSObject::staticClassInfo};

Ref<NSPasteboard> NSPasteboard::generalPasteboard() {
  static const Ref<NSPasteboard> pasteboard = make<NSPasteboard>(Contents::Copied);
  return pasteboard;
}

Ref<NSPasteboard> NSPasteboard::selectionPasteboard() {
  static const Ref<NSPasteboard> pasteboard = make<NSPasteboard>(Contents::Selected);
  return pasteboard;
}

namespace {

// Null where the desktop has none.
backend::PrimarySelection* primarySelection() {
  auto* selection = dynamic_cast<backend::PrimarySelection*>(backend::Backend::current());
  return selection && selection->hasPrimarySelection() ? selection : nullptr;
}

}  // namespace

void NSPasteboard::clearContents() { setString("", NSPasteboardTypeString); }

bool NSPasteboard::setString(std::string_view text, std::string_view type) {
  backend::Backend* backend = backend::Backend::current();
  backend::PrimarySelection* selection = primarySelection();
  if (!backend || type != NSPasteboardTypeString || (contents_ == Contents::Selected && !selection)) return false;
  if (contents_ == Contents::Selected) selection->setPrimarySelectionText(std::string(text));
  else backend->setClipboardText(std::string(text));
  return true;
}

std::optional<std::string> NSPasteboard::stringForType(std::string_view type) const {
  const backend::Backend* backend = backend::Backend::current();
  const backend::PrimarySelection* selection = primarySelection();
  if (!backend || type != NSPasteboardTypeString || (contents_ == Contents::Selected && !selection)) return std::nullopt;
  std::string text = contents_ == Contents::Selected ? selection->primarySelectionText() : backend->clipboardText();
  return text.empty() ? std::nullopt : std::optional(std::move(text));
}

}  // namespace tessaluna::platform
