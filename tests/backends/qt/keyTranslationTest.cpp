#include "tessaluna/backends/qt/keyTranslation.h"

#include <gtest/gtest.h>

#include "tessaluna/platform/events/keyFields.h"

namespace tessaluna::backend::qt {

using namespace tessaluna::platform;

namespace {

struct Typed {
  int key;
  Qt::KeyboardModifiers modifiers;
  QString text;
  std::string characters, ignoringModifiers;
  std::uint32_t flags;
};

constexpr std::uint32_t function = NSEventModifierFlagFunction, arrow = function | NSEventModifierFlagNumericPad;

NSEvent::Fields fieldsOf(QEvent::Type type, int key, Qt::KeyboardModifiers modifiers, const QString& text = {},
                         CommandKey commandKey = CommandKey::Meta) {
  return keyFieldsOf(keyInputOf(QKeyEvent(type, key, modifiers, text), commandKey)).value();
}

}  // namespace

TEST(keyTranslation, CharactersAndModifiers) {
  const Typed table[] = {
      {Qt::Key_A, {}, "a", "a", "a", 0},
      {Qt::Key_A, Qt::ShiftModifier, "A", "A", "A", NSEventModifierFlagShift},
      {Qt::Key_A, Qt::ControlModifier, "\x01", "\x01", "a", NSEventModifierFlagControl},
      {Qt::Key_A, Qt::ControlModifier | Qt::ShiftModifier, "\x01", "\x01", "A",
       NSEventModifierFlagControl | NSEventModifierFlagShift},
      {Qt::Key_A, Qt::MetaModifier, "", "a", "a", NSEventModifierFlagCommand},
      {Qt::Key_A, Qt::AltModifier, "a", "a", "a", NSEventModifierFlagOption},
      {Qt::Key_Odiaeresis, {}, QString::fromUtf8("ö"), "ö", "ö", 0},
      {Qt::Key_5, Qt::KeypadModifier, "5", "5", "5", NSEventModifierFlagNumericPad},
      {Qt::Key_Left, {}, "", "\uF702", "\uF702", arrow},
      {Qt::Key_F1, {}, "", "\uF704", "\uF704", function},
      {Qt::Key_F12, {}, "", "\uF70F", "\uF70F", function},
      {Qt::Key_PageDown, {}, "", "\uF72D", "\uF72D", function},
      {Qt::Key_Menu, {}, "", "\uF735", "\uF735", function},
      {Qt::Key_Delete, {}, "\x7F", "\uF728", "\uF728", function},
      {Qt::Key_Backspace, {}, "\b", "\x7F", "\x7F", 0},
      {Qt::Key_Return, {}, "\r", "\r", "\r", 0},
      {Qt::Key_Enter, Qt::KeypadModifier, "\r", "\x03", "\x03", NSEventModifierFlagNumericPad},
      {Qt::Key_Escape, {}, "\x1B", "\x1B", "\x1B", 0},
      {Qt::Key_Tab, {}, "\t", "\t", "\t", 0},
      {Qt::Key_Backtab, Qt::ShiftModifier, "", "\x19", "\x19", NSEventModifierFlagShift},
  };
  for (const Typed& typed : table) {
    SCOPED_TRACE(typed.key);
    const NSEvent::Fields fields = fieldsOf(QEvent::KeyPress, typed.key, typed.modifiers, typed.text);
    EXPECT_EQ(fields.type, NSEventType::KeyDown);
    EXPECT_EQ(fields.characters, typed.characters);
    EXPECT_EQ(fields.charactersIgnoringModifiers, typed.ignoringModifiers);
    EXPECT_EQ(fields.modifiers, typed.flags);
  }
}

TEST(keyTranslation, ModifierKeysChangeTheFlags) {
  const NSEvent::Fields down = fieldsOf(QEvent::KeyPress, Qt::Key_Shift, {});
  EXPECT_EQ(down.type, NSEventType::FlagsChanged);
  EXPECT_EQ(down.modifiers, NSEventModifierFlagShift);
  const NSEvent::Fields up = fieldsOf(QEvent::KeyRelease, Qt::Key_Shift, Qt::ShiftModifier | Qt::AltModifier);
  EXPECT_EQ(up.type, NSEventType::FlagsChanged);
  EXPECT_EQ(up.modifiers, NSEventModifierFlagOption);
}

TEST(keyTranslation, RepeatsAreKeyDownsOnly) {
  EXPECT_FALSE(keyFieldsOf(keyInputOf(QKeyEvent(QEvent::KeyRelease, Qt::Key_A, {}, "a", true), CommandKey::Meta)));
  EXPECT_TRUE(
      keyFieldsOf(keyInputOf(QKeyEvent(QEvent::KeyPress, Qt::Key_A, {}, "a", true), CommandKey::Meta)).value().isRepeat);
  EXPECT_EQ(fieldsOf(QEvent::KeyRelease, Qt::Key_A, {}, "a").type, NSEventType::KeyUp);
}

TEST(keyTranslation, MenusShowKeysAsTheDesktopNamesThem) {
  EXPECT_EQ(shortcutTextOf("p", NSEventModifierFlagControl, CommandKey::Meta), "Ctrl+P");
  EXPECT_EQ(shortcutTextOf("P", NSEventModifierFlagControl, CommandKey::Meta), "Ctrl+Shift+P");
  EXPECT_EQ(shortcutTextOf("7", NSEventModifierFlagOption, CommandKey::Meta), "Alt+7");
  EXPECT_EQ(shortcutTextOf("\x7F", NSEventModifierFlagCommand, CommandKey::Meta), "Meta+Backspace");
  EXPECT_EQ(shortcutTextOf(reinterpret_cast<const char*>(u8"\uF706"), 0, CommandKey::Meta), "F3");
  EXPECT_EQ(shortcutTextOf("", NSEventModifierFlagControl, CommandKey::Meta), "");
}

TEST(keyTranslation, ControlAsTheCommandKeyChangesPlacesWithMeta) {
  const Typed table[] = {
      {Qt::Key_Left, Qt::ControlModifier, "", "\uF702", "\uF702", arrow | NSEventModifierFlagCommand},
      {Qt::Key_Left, Qt::MetaModifier, "", "\uF702", "\uF702", arrow | NSEventModifierFlagControl},
      {Qt::Key_Left, Qt::ControlModifier | Qt::MetaModifier, "", "\uF702", "\uF702",
       arrow | NSEventModifierFlagControl | NSEventModifierFlagCommand},
      {Qt::Key_Left, Qt::ControlModifier | Qt::ShiftModifier, "", "\uF702", "\uF702",
       arrow | NSEventModifierFlagShift | NSEventModifierFlagCommand},
      {Qt::Key_Left, Qt::AltModifier, "", "\uF702", "\uF702", arrow | NSEventModifierFlagOption},
      // Qt's control character is none of the command's.
      {Qt::Key_A, Qt::ControlModifier, "\x01", "a", "a", NSEventModifierFlagCommand},
      // AltGr types.
      {Qt::Key_Q, Qt::ControlModifier | Qt::AltModifier, "@", "@", "q",
       NSEventModifierFlagControl | NSEventModifierFlagOption},
  };
  for (const Typed& typed : table) {
    SCOPED_TRACE(typed.key);
    const NSEvent::Fields fields = fieldsOf(QEvent::KeyPress, typed.key, typed.modifiers, typed.text, CommandKey::Control);
    EXPECT_EQ(fields.characters, typed.characters);
    EXPECT_EQ(fields.charactersIgnoringModifiers, typed.ignoringModifiers);
    EXPECT_EQ(fields.modifiers, typed.flags);
  }
  EXPECT_EQ(fieldsOf(QEvent::KeyPress, Qt::Key_Control, {}, "", CommandKey::Control).modifiers, NSEventModifierFlagCommand);
  EXPECT_EQ(fieldsOf(QEvent::KeyPress, Qt::Key_Meta, {}, "", CommandKey::Control).modifiers, NSEventModifierFlagControl);
  EXPECT_EQ(modifierFlagsOf(Qt::ControlModifier, CommandKey::Control), NSEventModifierFlagCommand);
}

TEST(keyTranslation, MenusShowTheCommandKeyThatWasChosen) {
  EXPECT_EQ(shortcutTextOf("p", NSEventModifierFlagCommand, CommandKey::Control), "Ctrl+P");
  EXPECT_EQ(shortcutTextOf("p", NSEventModifierFlagControl, CommandKey::Control), "Meta+P");
}

}  // namespace tessaluna::backend::qt
