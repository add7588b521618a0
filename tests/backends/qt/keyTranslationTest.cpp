#include "tessaluna/backends/qt/keyTranslation.h"

#include <gtest/gtest.h>

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

NSEvent::Fields fieldsOf(QEvent::Type type, int key, Qt::KeyboardModifiers modifiers, const QString& text = {}) {
  return keyFieldsOf(QKeyEvent(type, key, modifiers, text)).value();
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
  EXPECT_FALSE(keyFieldsOf(QKeyEvent(QEvent::KeyRelease, Qt::Key_A, {}, "a", true)));
  EXPECT_TRUE(keyFieldsOf(QKeyEvent(QEvent::KeyPress, Qt::Key_A, {}, "a", true)).value().isRepeat);
  EXPECT_EQ(fieldsOf(QEvent::KeyRelease, Qt::Key_A, {}, "a").type, NSEventType::KeyUp);
}

TEST(keyTranslation, MenusShowKeysAsTheDesktopNamesThem) {
  EXPECT_EQ(shortcutTextOf("p", NSEventModifierFlagControl), "Ctrl+P");
  EXPECT_EQ(shortcutTextOf("P", NSEventModifierFlagControl), "Ctrl+Shift+P");
  EXPECT_EQ(shortcutTextOf("7", NSEventModifierFlagOption), "Alt+7");
  EXPECT_EQ(shortcutTextOf("\x7F", NSEventModifierFlagCommand), "Meta+Backspace");
  EXPECT_EQ(shortcutTextOf(reinterpret_cast<const char*>(u8"\uF706"), 0), "F3");
  EXPECT_EQ(shortcutTextOf("", NSEventModifierFlagControl), "");
}

}  // namespace tessaluna::backend::qt
