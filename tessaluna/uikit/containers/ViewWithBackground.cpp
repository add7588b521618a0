#include "tessaluna/uikit/containers/ViewWithBackground.h"

#include "tessaluna/platform/events/NSEvent.h"
#include "tessaluna/platform/foundation/memberTables.h"
#include "tessaluna/platform/interface_files/archivedLooks.h"
#include "tessaluna/platform/text/unicode.h"
#include "tessaluna/platform/views/NSTextField.h"
#include "tessaluna/platform/windows/NSWindow.h"

namespace TessalunaUIKit {

using namespace tessaluna::platform;

namespace {

constexpr Property properties[] = {property<&ViewWithBackground::setBackgroundColor, "backgroundColor">()};

// Where the keys go now, if that is the editor of a text field.
Ref<NSText> editorOfFieldInWindow(const NSWindow* window) {
  const auto* text = window ? dynamic_cast<const NSText*>(window->firstResponder()) : nullptr;
  if (!text || !text->isFieldEditor()) return nullptr;
  const auto field = std::dynamic_pointer_cast<NSTextField>(text->delegate());
  return field ? field->currentEditor() : nullptr;
}

// Caps Lock counts; the keypad and function bits, which arrow keys set, do not.
constexpr std::uint32_t countedModifiers = NSEventModifierFlagCapsLock | NSEventModifierFlagShift |
                                           NSEventModifierFlagControl | NSEventModifierFlagOption |
                                           NSEventModifierFlagCommand;

// Empty for any other key.
std::string_view lineEndCommand(const NSEvent& event) {
  if ((event.modifierFlags() & countedModifiers) != NSEventModifierFlagCommand) return {};
  switch (firstScalar(event.characters())) {
    case NSRightArrowFunctionKey: return "moveToEndOfLine:";
    case NSLeftArrowFunctionKey: return "moveToBeginningOfLine:";
  }
  return {};
}

}  // namespace

const ClassInfo ViewWithBackground::staticClassInfo{
    .name = "TessalunaUIKit.ViewWithBackground", .base = &NSView::staticClassInfo, .properties = properties};

bool ViewWithBackground::performKeyEquivalent(const Ref<NSEvent>& event) {
  const Ref<NSText> editor = editorOfFieldInWindow(window());
  const std::string_view command = editor ? lineEndCommand(*event) : std::string_view();
  if (command.empty()) return NSView::performKeyEquivalent(event);
  editor->performSelector(command, this);
  return true;
}

}  // namespace TessalunaUIKit
