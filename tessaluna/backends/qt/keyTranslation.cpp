#include "tessaluna/backends/qt/keyTranslation.h"

#include <QKeySequence>

namespace tessaluna::backend::qt {

using namespace tessaluna::platform;

namespace {

struct KeyCharacter {
  int key;
  char32_t character;
};

// Keys whose character Qt does not tell, or tells otherwise.
constexpr KeyCharacter characterOfKey[] = {
    {Qt::Key_Up, NSUpArrowFunctionKey},
    {Qt::Key_Down, NSDownArrowFunctionKey},
    {Qt::Key_Left, NSLeftArrowFunctionKey},
    {Qt::Key_Right, NSRightArrowFunctionKey},
    {Qt::Key_Insert, NSInsertFunctionKey},
    {Qt::Key_Delete, NSDeleteFunctionKey},
    {Qt::Key_Home, NSHomeFunctionKey},
    {Qt::Key_End, NSEndFunctionKey},
    {Qt::Key_PageUp, NSPageUpFunctionKey},
    {Qt::Key_PageDown, NSPageDownFunctionKey},
    {Qt::Key_Return, '\r'},
    {Qt::Key_Enter, '\x03'},
    {Qt::Key_Tab, '\t'},
    {Qt::Key_Backtab, '\x19'},
    {Qt::Key_Backspace, '\x7F'},
    {Qt::Key_Escape, '\x1B'},
};

struct KeyModifier {
  int key;
  std::uint32_t flag;
};

constexpr KeyModifier flagOfKey[] = {
    {Qt::Key_Shift, NSEventModifierFlagShift},       {Qt::Key_Control, NSEventModifierFlagControl},
    {Qt::Key_Alt, NSEventModifierFlagOption},        {Qt::Key_Meta, NSEventModifierFlagCommand},
    {Qt::Key_Super_L, NSEventModifierFlagCommand},   {Qt::Key_Super_R, NSEventModifierFlagCommand},
    {Qt::Key_CapsLock, NSEventModifierFlagCapsLock},
};

struct Modifier {
  Qt::KeyboardModifier modifier;
  std::uint32_t flag;
};

constexpr Modifier flagOfModifier[] = {
    {Qt::ShiftModifier, NSEventModifierFlagShift},       {Qt::ControlModifier, NSEventModifierFlagControl},
    {Qt::AltModifier, NSEventModifierFlagOption},        {Qt::MetaModifier, NSEventModifierFlagCommand},
    {Qt::KeypadModifier, NSEventModifierFlagNumericPad},
};

constexpr std::uint32_t exchangedFlags = NSEventModifierFlagControl | NSEventModifierFlagCommand;

// Control and Command together stay as they are; one alone becomes the other.
std::uint32_t forCommandKey(std::uint32_t flags, CommandKey commandKey) {
  const std::uint32_t present = flags & exchangedFlags;
  const bool isOne = present && present != exchangedFlags;
  return commandKey == CommandKey::Control && isOne ? flags ^ exchangedFlags : flags;
}

std::optional<int> keyOfFixedCharacter(char32_t character) {
  for (const KeyCharacter& entry : characterOfKey)
    if (entry.character == character) return entry.key;
  if (character >= NSF1FunctionKey && character < NSInsertFunctionKey)
    return Qt::Key_F1 + static_cast<int>(character - NSF1FunctionKey);
  return std::nullopt;
}

char32_t fixedCharacterOf(int key) {
  for (const KeyCharacter& entry : characterOfKey)
    if (entry.key == key) return entry.character;
  if (key >= Qt::Key_F1 && key <= Qt::Key_F35) return NSF1FunctionKey + static_cast<char32_t>(key - Qt::Key_F1);
  return 0;
}

bool isFunctionKey(char32_t character) { return character >= NSUpArrowFunctionKey && character <= 0xF8FF; }
bool isArrow(char32_t character) { return character >= NSUpArrowFunctionKey && character <= NSRightArrowFunctionKey; }

std::string utf8(const QString& text) { return text.toStdString(); }
std::string utf8(char32_t character) { return QString::fromUcs4(&character, 1).toStdString(); }

// Some desktops report AltGr as Control and Alt. It is no command then, but the character that it types.
bool isTypedWithAltGr(const QKeyEvent& event) {
  constexpr Qt::KeyboardModifiers altGr = Qt::ControlModifier | Qt::AltModifier;
  return (event.modifiers() & altGr) == altGr && !event.text().isEmpty() && event.text().front().isPrint();
}

// What the key would type with no modifier but Shift.
QString plainText(const QKeyEvent& event) {
  constexpr Qt::KeyboardModifiers changing = Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier;
  if (!(event.modifiers() & changing)) return event.text();
  const int key = event.key();
  if (key <= 0 || key >= Qt::Key_Escape) return {};  // no character
  const auto character = static_cast<char32_t>(key);
  const QString text = QString::fromUcs4(&character, 1);
  return event.modifiers() & Qt::ShiftModifier ? text : text.toLower();  // Qt names letters by their capitals
}

}  // namespace

std::uint32_t modifierFlagsOf(Qt::KeyboardModifiers modifiers, CommandKey commandKey) {
  std::uint32_t flags = 0;
  for (const Modifier& entry : flagOfModifier)
    if (modifiers & entry.modifier) flags |= entry.flag;
  return forCommandKey(flags, commandKey);
}

QString shortcutTextOf(const std::string& characters, std::uint32_t modifiers, CommandKey commandKey) {
  const QString typed = QString::fromStdString(characters);
  if (typed.isEmpty()) return {};
  const char32_t first = typed.toUcs4().front();
  const QString capital = typed.toUpper();
  int keys = keyOfFixedCharacter(first).value_or(static_cast<int>(capital.toUcs4().front()));
  // A capital letter is typed with Shift.
  if (typed == capital && typed != typed.toLower()) modifiers |= NSEventModifierFlagShift;
  const std::uint32_t flags = forCommandKey(modifiers, commandKey);
  for (const Modifier& entry : flagOfModifier)
    if (flags & entry.flag) keys |= static_cast<int>(entry.modifier);
  return QKeySequence(keys).toString(QKeySequence::NativeText);
}

std::optional<NSEvent::Fields> keyFieldsOf(const QKeyEvent& event, CommandKey commandKey) {
  const bool isDown = event.type() != QEvent::KeyRelease;
  if (isTypedWithAltGr(event)) commandKey = CommandKey::Meta;
  if (!isDown && event.isAutoRepeat()) return std::nullopt;
  NSEvent::Fields fields{.type = isDown ? NSEventType::KeyDown : NSEventType::KeyUp,
                         .modifiers = modifierFlagsOf(event.modifiers(), commandKey)};
  for (const KeyModifier& entry : flagOfKey) {
    if (entry.key != event.key()) continue;
    // Whether Qt counts a modifier key among the modifiers of its own press depends on the desktop.
    fields.type = NSEventType::FlagsChanged;
    const std::uint32_t flag = forCommandKey(entry.flag, commandKey);
    fields.modifiers = isDown ? fields.modifiers | flag : fields.modifiers & ~flag;
    return fields;
  }
  constexpr std::uint32_t command = NSEventModifierFlagCommand;
  fields.isRepeat = event.isAutoRepeat();
  if (const char32_t character = fixedCharacterOf(event.key())) {
    fields.characters = fields.charactersIgnoringModifiers = utf8(character);
    if (isFunctionKey(character)) fields.modifiers |= NSEventModifierFlagFunction;
    if (isArrow(character)) fields.modifiers |= NSEventModifierFlagNumericPad;
    return fields;
  }
  fields.charactersIgnoringModifiers = utf8(plainText(event));
  // Qt makes control characters of letters that are typed with Control, whatever that key is here.
  const bool isUsable = !event.text().isEmpty() && (event.text().front() >= QChar(' ') || !(fields.modifiers & command));
  fields.characters = isUsable ? utf8(event.text()) : fields.charactersIgnoringModifiers;
  return fields;
}

int buttonNumberOf(Qt::MouseButton button) {
  if (button == Qt::LeftButton) return 0;
  if (button == Qt::RightButton) return 1;
  int number = 2;
  for (unsigned bit = Qt::MiddleButton; bit < static_cast<unsigned>(button); bit <<= 1) ++number;
  return number;
}

}  // namespace tessaluna::backend::qt
