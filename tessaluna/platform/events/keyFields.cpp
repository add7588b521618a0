#include "tessaluna/platform/events/keyFields.h"

#include "tessaluna/platform/events/menuKey.h"
#include "tessaluna/platform/text/unicode.h"

namespace tessaluna::platform {

namespace {

using backend::KeyInput;
using backend::KeyName;

struct KeyCharacter {
  KeyName name;
  char32_t character;
};

constexpr KeyCharacter characterOfKey[] = {
    {KeyName::Up, NSUpArrowFunctionKey},
    {KeyName::Down, NSDownArrowFunctionKey},
    {KeyName::Left, NSLeftArrowFunctionKey},
    {KeyName::Right, NSRightArrowFunctionKey},
    {KeyName::Insert, NSInsertFunctionKey},
    {KeyName::Delete, NSDeleteFunctionKey},
    {KeyName::Home, NSHomeFunctionKey},
    {KeyName::End, NSEndFunctionKey},
    {KeyName::PageUp, NSPageUpFunctionKey},
    {KeyName::PageDown, NSPageDownFunctionKey},
    {KeyName::Menu, NSMenuFunctionKey},
    {KeyName::Return, '\r'},
    {KeyName::Enter, '\x03'},
    {KeyName::Tab, '\t'},
    {KeyName::Backtab, '\x19'},
    {KeyName::Backspace, '\x7F'},
    {KeyName::Escape, '\x1B'},
};
constexpr char32_t lastFunctionKey = NSInsertFunctionKey - 1;

struct KeyFlag {
  KeyName name;
  std::uint32_t flag;
};

constexpr KeyFlag flagOfKey[] = {
    {KeyName::Shift, NSEventModifierFlagShift},       {KeyName::Control, NSEventModifierFlagControl},
    {KeyName::Option, NSEventModifierFlagOption},     {KeyName::Command, NSEventModifierFlagCommand},
    {KeyName::CapsLock, NSEventModifierFlagCapsLock},
};

// Zero for a key without a character of its own.
char32_t fixedCharacterOf(const KeyInput& key) {
  for (const KeyCharacter& entry : characterOfKey)
    if (entry.name == key.name) return entry.character;
  const char32_t character = NSF1FunctionKey + static_cast<char32_t>(key.functionNumber - 1);
  const bool isFunctionKey = key.name == KeyName::Function && key.functionNumber > 0 && character <= lastFunctionKey;
  return isFunctionKey ? character : 0;
}

bool isFunctionKey(char32_t character) { return character >= NSUpArrowFunctionKey && character <= 0xF8FF; }
bool isArrow(char32_t character) { return character >= NSUpArrowFunctionKey && character <= NSRightArrowFunctionKey; }

// What the key would type with no modifier but Shift.
std::string plainTextOf(const KeyInput& key) {
  constexpr std::uint32_t changing = NSEventModifierFlagControl | NSEventModifierFlagOption | NSEventModifierFlagCommand;
  if (!(key.modifiers & changing)) return key.text;
  return key.modifiers & NSEventModifierFlagShift ? key.letter : lowercase(key.letter);
}

}  // namespace

std::optional<NSEvent::Fields> keyFieldsOf(const KeyInput& key) {
  const bool isDown = key.what != KeyInput::What::Released;
  if (!isDown && key.isRepeat) return std::nullopt;
  NSEvent::Fields fields{.type = isDown ? NSEventType::KeyDown : NSEventType::KeyUp, .modifiers = key.modifiers};
  for (const KeyFlag& entry : flagOfKey) {
    if (entry.name != key.name) continue;
    fields.type = NSEventType::FlagsChanged;
    fields.modifiers = isDown ? fields.modifiers | entry.flag : fields.modifiers & ~entry.flag;
    return fields;
  }
  fields.isRepeat = key.isRepeat;
  if (const char32_t character = fixedCharacterOf(key)) {
    fields.characters = fields.charactersIgnoringModifiers = utf8FromScalar(character);
    if (isFunctionKey(character)) fields.modifiers |= NSEventModifierFlagFunction;
    if (isArrow(character)) fields.modifiers |= NSEventModifierFlagNumericPad;
    return fields;
  }
  fields.charactersIgnoringModifiers = plainTextOf(key);
  // Desktops make control characters of letters that are typed with their Control, whatever that key is here.
  const bool isControlCharacter = !key.text.empty() && static_cast<unsigned char>(key.text.front()) < 0x20;
  const bool isUsable = !key.text.empty() && !(isControlCharacter && (key.modifiers & NSEventModifierFlagCommand));
  fields.characters = isUsable ? key.text : fields.charactersIgnoringModifiers;
  return fields;
}

NamedKey keyOfCharacter(char32_t character) {
  for (const KeyCharacter& entry : characterOfKey)
    if (entry.character == character) return {entry.name};
  if (character >= NSF1FunctionKey && character <= lastFunctionKey)
    return {KeyName::Function, static_cast<int>(character - NSF1FunctionKey) + 1};
  return {};
}

}  // namespace tessaluna::platform
