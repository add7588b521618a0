#include "tessaluna/platform/events/keyBindings.h"

#include <gtest/gtest.h>

#include "tessaluna/platform/text/unicode.h"

using namespace tessaluna::platform;

namespace {

Ref<NSEvent> key(std::string characters, std::uint32_t modifiers = 0, std::string ignoring = {}) {
  if (ignoring.empty()) ignoring = characters;
  return make<NSEvent>(NSEvent::Fields{.type = NSEventType::KeyDown,
                                       .modifiers = modifiers,
                                       .characters = std::move(characters),
                                       .charactersIgnoringModifiers = std::move(ignoring)});
}

}  // namespace

TEST(keyBindings, OnlyTheFourModifiersCount) {
  const std::uint32_t others = NSEventModifierFlagFunction | NSEventModifierFlagNumericPad | NSEventModifierFlagCapsLock;
  EXPECT_EQ(commandForKey(*key(utf8FromScalar(NSLeftArrowFunctionKey), others)), "moveLeft:");
  EXPECT_EQ(commandForKey(*key(utf8FromScalar(NSLeftArrowFunctionKey), NSEventModifierFlagControl | others)),
            "moveWordLeft:");
  EXPECT_EQ(
      commandForKey(*key(utf8FromScalar(NSLeftArrowFunctionKey), NSEventModifierFlagControl | NSEventModifierFlagCommand)),
      "");
}

TEST(keyBindings, ALetterIsFoundWhateverControlMakesOfItAndWithShift) {
  EXPECT_EQ(commandForKey(*key("\x03", NSEventModifierFlagControl, "c")), "copy:");
  EXPECT_EQ(commandForKey(*key("\x1A", NSEventModifierFlagControl | NSEventModifierFlagShift, "Z")), "redo:");
  EXPECT_EQ(commandForKey(*key("a")), "");
  EXPECT_EQ(commandForKey(*key("A", NSEventModifierFlagShift)), "");
}

TEST(keyBindings, EnterOfTheKeypadIsReturn) {
  EXPECT_EQ(commandForKey(*key("\x03")), "insertNewline:");
  EXPECT_EQ(commandForKey(*key("\r")), "insertNewline:");
}

TEST(keyBindings, OnlyCharactersAreTyped) {
  EXPECT_EQ(textOfKey(*key("a")), "a");
  EXPECT_EQ(textOfKey(*key("\u00E9")), "\u00E9");
  EXPECT_EQ(textOfKey(*key(" ")), " ");
  EXPECT_EQ(textOfKey(*key("")), "");
  EXPECT_EQ(textOfKey(*key("\x1B")), "");
  EXPECT_EQ(textOfKey(*key("\x7F")), "");
  EXPECT_EQ(textOfKey(*key(utf8FromScalar(NSF1FunctionKey))), "");
  EXPECT_EQ(textOfKey(*key("a", NSEventModifierFlagCommand)), "");
  EXPECT_EQ(textOfKey(*key("A", NSEventModifierFlagShift)), "A");
}

// Control may be the Command key.
TEST(keyBindings, TheDesktopsKeysWorkWithCommandWhereItMeansNothingElse) {
  const auto both = [](std::string characters, std::uint32_t modifiers = 0) {
    const std::string_view first = commandForKey(*key(characters, NSEventModifierFlagControl | modifiers));
    const std::string_view second = commandForKey(*key(characters, NSEventModifierFlagCommand | modifiers));
    EXPECT_EQ(first, second) << characters;
    return first;
  };
  EXPECT_EQ(both(utf8FromScalar(NSHomeFunctionKey)), "moveToBeginningOfDocument:");
  EXPECT_EQ(both(utf8FromScalar(NSEndFunctionKey), NSEventModifierFlagShift), "moveToEndOfDocumentAndModifySelection:");
  EXPECT_EQ(both(utf8FromScalar(NSInsertFunctionKey)), "copy:");
  EXPECT_EQ(both(utf8FromScalar(NSDeleteFunctionKey)), "deleteWordForward:");
  EXPECT_EQ(both("y"), "redo:");
  EXPECT_EQ(commandForKey(*key(utf8FromScalar(NSLeftArrowFunctionKey), NSEventModifierFlagCommand)), "moveToLeftEndOfLine:");
}
