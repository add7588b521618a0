#include "tessaluna/platform/events/keyFields.h"

#include <gtest/gtest.h>

#include "tessaluna/platform/text/unicode.h"

namespace tessaluna::platform {
namespace {

using backend::KeyInput;
using backend::KeyName;

constexpr std::uint32_t shift = NSEventModifierFlagShift, control = NSEventModifierFlagControl,
                        option = NSEventModifierFlagOption, command = NSEventModifierFlagCommand,
                        function = NSEventModifierFlagFunction, pad = NSEventModifierFlagNumericPad;

struct Typed {
  KeyInput key;
  std::string characters, ignoringModifiers;
  std::uint32_t flags;
};

TEST(KeyFieldsTest, CharactersAreWhatAKeyTypesWithItsModifiersAndWithout) {
  const Typed table[] = {
      {{.text = "a", .letter = "A"}, "a", "a", 0},
      {{.text = "A", .letter = "A", .modifiers = shift}, "A", "A", shift},
      {{.text = "\x01", .letter = "A", .modifiers = control}, "\x01", "a", control},
      {{.text = "\x01", .letter = "A", .modifiers = control | shift}, "\x01", "A", control | shift},
      {{.letter = "A", .modifiers = command}, "a", "a", command},
      {{.text = "\x01", .letter = "A", .modifiers = command}, "a", "a", command},
      {{.text = "@", .letter = "Q", .modifiers = option}, "@", "q", option},
      {{.text = "Ö", .letter = "Ö", .modifiers = command}, "Ö", "ö", command},
      {{.text = "5", .letter = "5", .modifiers = pad}, "5", "5", pad},
  };
  for (const Typed& typed : table) {
    const NSEvent::Fields fields = keyFieldsOf(typed.key).value();
    EXPECT_EQ(fields.type, NSEventType::KeyDown);
    EXPECT_EQ(fields.characters, typed.characters);
    EXPECT_EQ(fields.charactersIgnoringModifiers, typed.ignoringModifiers);
    EXPECT_EQ(fields.modifiers, typed.flags);
  }
}

TEST(KeyFieldsTest, KeysWithNamesHaveCharactersOfTheirOwn) {
  const Typed table[] = {
      {{.name = KeyName::Left}, "\uF702", "\uF702", function | pad},
      {{.name = KeyName::PageDown}, "\uF72D", "\uF72D", function},
      {{.name = KeyName::Menu}, "\uF735", "\uF735", function},
      {{.name = KeyName::Delete, .text = "\x7F"}, "\uF728", "\uF728", function},
      {{.name = KeyName::Backspace, .text = "\b"}, "\x7F", "\x7F", 0},
      {{.name = KeyName::Return, .text = "\r"}, "\r", "\r", 0},
      {{.name = KeyName::Enter, .text = "\r", .modifiers = pad}, "\x03", "\x03", pad},
      {{.name = KeyName::Backtab, .modifiers = shift}, "\x19", "\x19", shift},
      {{.name = KeyName::Function, .functionNumber = 1}, "\uF704", "\uF704", function},
      {{.name = KeyName::Function, .functionNumber = 35}, "\uF726", "\uF726", function},
      {{.name = KeyName::Function, .functionNumber = 36}, "", "", 0},
  };
  for (const Typed& typed : table) {
    SCOPED_TRACE(static_cast<int>(typed.key.name));
    const NSEvent::Fields fields = keyFieldsOf(typed.key).value();
    EXPECT_EQ(fields.characters, typed.characters);
    EXPECT_EQ(fields.charactersIgnoringModifiers, typed.ignoringModifiers);
    EXPECT_EQ(fields.modifiers, typed.flags);
  }
}

// Whether a desktop counts a modifier key among the modifiers of its own press differs.
TEST(KeyFieldsTest, AModifierKeyCountsFromItsPressToItsRelease) {
  for (const std::uint32_t counted : {0u, shift}) {
    KeyInput key{.name = KeyName::Shift, .modifiers = option | counted};
    EXPECT_EQ(keyFieldsOf(key)->type, NSEventType::FlagsChanged);
    EXPECT_EQ(keyFieldsOf(key)->modifiers, option | shift);
    key.what = KeyInput::What::Released;
    EXPECT_EQ(keyFieldsOf(key)->type, NSEventType::FlagsChanged);
    EXPECT_EQ(keyFieldsOf(key)->modifiers, option);
  }
}

TEST(KeyFieldsTest, AReleaseBetweenTheRepeatsOfAKeyIsNotAnEvent) {
  KeyInput key{.text = "a", .letter = "A", .isRepeat = true};
  EXPECT_TRUE(keyFieldsOf(key)->isRepeat);
  key.what = KeyInput::What::Released;
  EXPECT_FALSE(keyFieldsOf(key));
  key.isRepeat = false;
  EXPECT_EQ(keyFieldsOf(key)->type, NSEventType::KeyUp);
}

TEST(KeyFieldsTest, EachCharacterOfAKeyLeadsBackToIt) {
  for (int name = static_cast<int>(KeyName::Up); name <= static_cast<int>(KeyName::Escape); ++name) {
    const KeyInput key{.name = static_cast<KeyName>(name)};
    const std::string characters = keyFieldsOf(key)->characters;
    ASSERT_FALSE(characters.empty()) << name;
    EXPECT_EQ(keyOfCharacter(firstScalar(characters)).name, key.name);
  }
  EXPECT_EQ(keyOfCharacter(NSF1FunctionKey + 11), (NamedKey{KeyName::Function, 12}));
  EXPECT_EQ(keyOfCharacter('a'), NamedKey{});
}

}  // namespace
}  // namespace tessaluna::platform
