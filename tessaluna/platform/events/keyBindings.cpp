#include "tessaluna/platform/events/keyBindings.h"

#include "tessaluna/platform/text/unicode.h"

namespace tessaluna::platform {

namespace {

struct KeyBinding {
  char32_t key;
  std::uint32_t modifiers;
  std::string_view selector;
};

constexpr std::uint32_t none = 0, shift = NSEventModifierFlagShift, control = NSEventModifierFlagControl,
                        option = NSEventModifierFlagOption, command = NSEventModifierFlagCommand;
constexpr std::uint32_t counted = shift | control | option | command;
constexpr char32_t left = NSLeftArrowFunctionKey, right = NSRightArrowFunctionKey, up = NSUpArrowFunctionKey,
                   down = NSDownArrowFunctionKey, home = NSHomeFunctionKey, end = NSEndFunctionKey,
                   pageUp = NSPageUpFunctionKey, pageDown = NSPageDownFunctionKey, insert = NSInsertFunctionKey,
                   forwardDelete = NSDeleteFunctionKey, backspace = 0x7F, returnKey = '\r', enter = 3, tab = '\t',
                   backtab = 0x19, escape = 0x1B;

// The desktop's keys (Control) beside those of the names' own system (Command, Option). Control may be the Command key: what the
// two systems do not contradict each other in is there with both.
constexpr KeyBinding bindings[] = {
    {left, none, "moveLeft:"},
    {left, shift, "moveLeftAndModifySelection:"},
    {left, control, "moveWordLeft:"},
    {left, control | shift, "moveWordLeftAndModifySelection:"},
    {left, option, "moveWordLeft:"},
    {left, option | shift, "moveWordLeftAndModifySelection:"},
    {left, command, "moveToLeftEndOfLine:"},
    {left, command | shift, "moveToLeftEndOfLineAndModifySelection:"},
    {right, none, "moveRight:"},
    {right, shift, "moveRightAndModifySelection:"},
    {right, control, "moveWordRight:"},
    {right, control | shift, "moveWordRightAndModifySelection:"},
    {right, option, "moveWordRight:"},
    {right, option | shift, "moveWordRightAndModifySelection:"},
    {right, command, "moveToRightEndOfLine:"},
    {right, command | shift, "moveToRightEndOfLineAndModifySelection:"},
    {up, none, "moveUp:"},
    {up, shift, "moveUpAndModifySelection:"},
    {up, command, "moveToBeginningOfDocument:"},
    {up, command | shift, "moveToBeginningOfDocumentAndModifySelection:"},
    {down, none, "moveDown:"},
    {down, shift, "moveDownAndModifySelection:"},
    {down, command, "moveToEndOfDocument:"},
    {down, command | shift, "moveToEndOfDocumentAndModifySelection:"},
    {pageUp, none, "pageUp:"},
    {pageDown, none, "pageDown:"},
    {home, none, "moveToBeginningOfLine:"},
    {home, shift, "moveToBeginningOfLineAndModifySelection:"},
    {home, control, "moveToBeginningOfDocument:"},
    {home, control | shift, "moveToBeginningOfDocumentAndModifySelection:"},
    {home, command, "moveToBeginningOfDocument:"},
    {home, command | shift, "moveToBeginningOfDocumentAndModifySelection:"},
    {end, none, "moveToEndOfLine:"},
    {end, shift, "moveToEndOfLineAndModifySelection:"},
    {end, control, "moveToEndOfDocument:"},
    {end, control | shift, "moveToEndOfDocumentAndModifySelection:"},
    {end, command, "moveToEndOfDocument:"},
    {end, command | shift, "moveToEndOfDocumentAndModifySelection:"},
    {backspace, none, "deleteBackward:"},
    {backspace, shift, "deleteBackward:"},
    {backspace, control, "deleteWordBackward:"},
    {backspace, option, "deleteWordBackward:"},
    {backspace, command, "deleteToBeginningOfLine:"},
    {forwardDelete, none, "deleteForward:"},
    {forwardDelete, shift, "cut:"},
    {forwardDelete, control, "deleteWordForward:"},
    {forwardDelete, option, "deleteWordForward:"},
    {forwardDelete, command, "deleteWordForward:"},
    {insert, shift, "paste:"},
    {insert, control, "copy:"},
    {insert, command, "copy:"},
    {returnKey, none, "insertNewline:"},
    {returnKey, shift, "insertNewline:"},
    {enter, none, "insertNewline:"},
    {tab, none, "insertTab:"},
    {tab, shift, "insertBacktab:"},
    {backtab, none, "insertBacktab:"},
    {backtab, shift, "insertBacktab:"},
    {escape, none, "cancelOperation:"},
    {'a', control, "selectAll:"},
    {'a', command, "selectAll:"},
    {'c', control, "copy:"},
    {'c', command, "copy:"},
    {'v', control, "paste:"},
    {'v', command, "paste:"},
    {'x', control, "cut:"},
    {'x', command, "cut:"},
    {'y', control, "redo:"},
    {'y', command, "redo:"},
    {'z', control, "undo:"},
    {'z', command, "undo:"},
    {'z', control | shift, "redo:"},
    {'z', command | shift, "redo:"},
};

}  // namespace

std::string_view commandForKey(const NSEvent& event) {
  char32_t key = firstScalar(event.charactersIgnoringModifiers());
  if (key >= 'A' && key <= 'Z') key += 'a' - 'A';
  const std::uint32_t modifiers = event.modifierFlags() & counted;
  for (const KeyBinding& binding : bindings)
    if (binding.key == key && binding.modifiers == modifiers) return binding.selector;
  return {};
}

std::string_view textOfKey(const NSEvent& event) {
  const std::uint32_t modifiers = event.modifierFlags() & (control | option | command);
  const bool isOtherCharacter = event.characters() != event.charactersIgnoringModifiers();
  // Control and Option together are how some desktops report AltGr.
  const bool types = modifiers == none || (isOtherCharacter && (modifiers == option || modifiers == (control | option)));
  const char32_t first = firstScalar(event.characters());
  const bool isControl = first < 0x20 || (first >= 0x7F && first < 0xA0);
  const bool isFunctionKey = first >= NSUpArrowFunctionKey && first <= 0xF8FF;
  return types && !isControl && !isFunctionKey ? std::string_view(event.characters()) : std::string_view();
}

}  // namespace tessaluna::platform
