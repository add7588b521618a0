#include "tessaluna/platform/events/keyEquivalents.h"

#include <gtest/gtest.h>

#include "tessaluna/platform/events/NSEvent.h"

using namespace tessaluna::platform;

namespace {

constexpr std::uint32_t shift = NSEventModifierFlagShift, command = NSEventModifierFlagCommand;

bool has(const std::string& typed, std::uint32_t held, std::string_view characters, std::uint32_t modifiers) {
  const auto event =
      make<NSEvent>(NSEvent::Fields{.type = NSEventType::KeyDown, .modifiers = held, .charactersIgnoringModifiers = typed});
  return isKeyEquivalent(*event, characters, modifiers);
}

}  // namespace

TEST(keyEquivalents, CharactersAndModifiersAreExactlyThese) {
  EXPECT_TRUE(has("p", command, "p", command));
  EXPECT_FALSE(has("p", command | NSEventModifierFlagOption, "p", command));
  EXPECT_FALSE(has("p", 0, "p", command));
  EXPECT_FALSE(has("q", command, "p", command));
}

TEST(keyEquivalents, FlagsThatAKeyBringsWithItDoNotCount) {
  EXPECT_TRUE(has("p", command | NSEventModifierFlagCapsLock | NSEventModifierFlagNumericPad, "p", command));
}

TEST(keyEquivalents, ACapitalLetterAsksForShift) {
  EXPECT_TRUE(has("P", command | shift, "P", command));
  EXPECT_FALSE(has("p", command, "P", command));
}

TEST(keyEquivalents, ShiftMayBeAskedForWithASmallLetterToo) { EXPECT_TRUE(has("P", command | shift, "p", command | shift)); }

TEST(keyEquivalents, NoCharactersAreNotAKey) { EXPECT_FALSE(has("", 0, "", 0)); }
