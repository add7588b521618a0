#include "tessaluna/platform/events/menuKey.h"

#include <gtest/gtest.h>

#include "tessaluna/platform/text/unicode.h"

namespace tessaluna::platform {
namespace {

bool opensMenu(char32_t key, std::uint32_t modifiers = 0) {
  const std::string characters = utf8FromScalar(key);
  return isMenuKey(NSEvent({.type = NSEventType::KeyDown,
                            .modifiers = modifiers | NSEventModifierFlagFunction,
                            .characters = characters,
                            .charactersIgnoringModifiers = characters}));
}

TEST(MenuKeyTest, TheMenuKeyAndF10WithShiftOpenAMenu) {
  constexpr char32_t f9 = NSF1FunctionKey + 8, f10 = NSF1FunctionKey + 9;
  EXPECT_TRUE(opensMenu(NSMenuFunctionKey));
  EXPECT_TRUE(opensMenu(f10, NSEventModifierFlagShift));
  EXPECT_FALSE(opensMenu(f10));
  EXPECT_FALSE(opensMenu(f10, NSEventModifierFlagShift | NSEventModifierFlagControl));
  EXPECT_FALSE(opensMenu(f9, NSEventModifierFlagShift));
  EXPECT_FALSE(opensMenu(NSMenuFunctionKey, NSEventModifierFlagCommand));
}

}  // namespace
}  // namespace tessaluna::platform
