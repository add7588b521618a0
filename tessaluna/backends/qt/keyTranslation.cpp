#include "tessaluna/backends/qt/keyTranslation.h"

#include <QKeySequence>

#include "tessaluna/platform/events/keyFields.h"

namespace tessaluna::backend::qt {

using namespace tessaluna::platform;

namespace {

struct QtKey {
  int key;
  KeyName name;
};

constexpr QtKey qtKeys[] = {
    {Qt::Key_Up, KeyName::Up},
    {Qt::Key_Down, KeyName::Down},
    {Qt::Key_Left, KeyName::Left},
    {Qt::Key_Right, KeyName::Right},
    {Qt::Key_Insert, KeyName::Insert},
    {Qt::Key_Delete, KeyName::Delete},
    {Qt::Key_Home, KeyName::Home},
    {Qt::Key_End, KeyName::End},
    {Qt::Key_PageUp, KeyName::PageUp},
    {Qt::Key_PageDown, KeyName::PageDown},
    {Qt::Key_Menu, KeyName::Menu},
    {Qt::Key_Return, KeyName::Return},
    {Qt::Key_Enter, KeyName::Enter},
    {Qt::Key_Tab, KeyName::Tab},
    {Qt::Key_Backtab, KeyName::Backtab},
    {Qt::Key_Escape, KeyName::Escape},
    {Qt::Key_Backspace, KeyName::Backspace},
    {Qt::Key_Shift, KeyName::Shift},
    {Qt::Key_Control, KeyName::Control},
    {Qt::Key_Alt, KeyName::Option},
    {Qt::Key_Meta, KeyName::Command},
    {Qt::Key_Super_L, KeyName::Command},
    {Qt::Key_Super_R, KeyName::Command},
    {Qt::Key_CapsLock, KeyName::CapsLock},
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

KeyName forCommandKey(KeyName name, CommandKey commandKey) {
  if (commandKey == CommandKey::Meta) return name;
  return name == KeyName::Control ? KeyName::Command : name == KeyName::Command ? KeyName::Control : name;
}

// Some desktops report AltGr as Control and Alt. It is then not a command, but the character that it types.
bool isTypedWithAltGr(const QKeyEvent& event) {
  constexpr Qt::KeyboardModifiers altGr = Qt::ControlModifier | Qt::AltModifier;
  return (event.modifiers() & altGr) == altGr && !event.text().isEmpty() && event.text().front().isPrint();
}

// Zero for a key without a name.
int qtKeyOf(const NamedKey& key) {
  if (key.name == KeyName::Function) return Qt::Key_F1 + key.functionNumber - 1;
  for (const QtKey& entry : qtKeys)
    if (entry.name == key.name) return entry.key;
  return 0;
}

KeyInput::What whatOf(const QKeyEvent& event) {
  switch (event.type()) {
    case QEvent::ShortcutOverride: return KeyInput::What::Announced;
    case QEvent::KeyRelease: return KeyInput::What::Released;
    default: return KeyInput::What::Pressed;
  }
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
  const QString capital = typed.toUpper();
  const int named = qtKeyOf(keyOfCharacter(typed.toUcs4().front()));
  int keys = named ? named : static_cast<int>(capital.toUcs4().front());
  // A capital letter is typed with Shift.
  if (typed == capital && typed != typed.toLower()) modifiers |= NSEventModifierFlagShift;
  const std::uint32_t flags = forCommandKey(modifiers, commandKey);
  for (const Modifier& entry : flagOfModifier)
    if (flags & entry.flag) keys |= static_cast<int>(entry.modifier);
  return QKeySequence(keys).toString(QKeySequence::NativeText);
}

KeyInput keyInputOf(const QKeyEvent& event, CommandKey commandKey) {
  if (isTypedWithAltGr(event)) commandKey = CommandKey::Meta;
  KeyInput key{.what = whatOf(event),
               .text = event.text().toStdString(),
               .modifiers = modifierFlagsOf(event.modifiers(), commandKey),
               .isRepeat = event.isAutoRepeat(),
               .code = event.key()};
  for (const QtKey& entry : qtKeys)
    if (entry.key == event.key()) key.name = forCommandKey(entry.name, commandKey);
  if (event.key() >= Qt::Key_F1 && event.key() <= Qt::Key_F35) {
    key.name = KeyName::Function;
    key.functionNumber = event.key() - Qt::Key_F1 + 1;
  }
  // Qt names keys that type by their characters, letters by their capitals.
  const auto character = static_cast<char32_t>(event.key());
  if (event.key() > 0 && event.key() < Qt::Key_Escape) key.letter = QString::fromUcs4(&character, 1).toStdString();
  return key;
}

int buttonNumberOf(Qt::MouseButton button) {
  if (button == Qt::LeftButton) return 0;
  if (button == Qt::RightButton) return 1;
  int number = 2;
  for (unsigned bit = Qt::MiddleButton; bit < static_cast<unsigned>(button); bit <<= 1) ++number;
  return number;
}

// Qt's own bits are in the same order.
std::uint32_t buttonBitsOf(Qt::MouseButtons buttons) { return static_cast<std::uint32_t>(buttons.toInt()); }

}  // namespace tessaluna::backend::qt
