#include "tessaluna/platform/windows/NSScreen.h"

#include <gtest/gtest.h>

#include "tests/harness/StillWorld.h"
#include "tests/harness/printing.h"

namespace tessaluna::platform {
namespace {

constexpr CGRect first{0, 0, 1440, 900}, second{1440, -200, 1000, 1100};

struct NSScreenTest : harness::StillWorld {
  NSScreenTest() {
    desktop.setScreens({{.frame = first, .visibleFrame = {0, 0, 1440, 870}, .scale = 1},
                        {.frame = second, .visibleFrame = second, .scale = 2}});
  }
};

TEST_F(NSScreenTest, AllAreListedThePrimaryOneFirst) {
  const std::vector<Ref<NSScreen>> screens = NSScreen::screens();
  ASSERT_EQ(screens.size(), 2u);
  EXPECT_EQ(screens[0]->frame(), first);
  EXPECT_EQ(screens[0]->visibleFrame(), (CGRect{0, 0, 1440, 870}));
  EXPECT_EQ(screens[1]->frame(), second);
  EXPECT_EQ(screens[1]->backingScaleFactor(), 2);
}

TEST_F(NSScreenTest, TheMainOneIsThatOfTheKeyWindowOrElseThePrimaryOne) {
  EXPECT_EQ(NSScreen::mainScreen()->frame(), first);
  const auto window = showWindow({1600, 100, 200, 150});
  EXPECT_EQ(NSScreen::mainScreen()->frame(), second);
  window->orderOut(nullptr);
  EXPECT_EQ(NSScreen::mainScreen()->frame(), first);
}

TEST_F(NSScreenTest, AScreenEqualsItselfAskedForAgain) {
  EXPECT_TRUE(areEqual(NSScreen::mainScreen().get(), NSScreen::screens()[0].get()));
  EXPECT_FALSE(areEqual(NSScreen::mainScreen().get(), NSScreen::screens()[1].get()));
  const Ref<NSScreen> before = NSScreen::screens()[0];
  desktop.setScreens({{.frame = first, .visibleFrame = first, .scale = 2}});
  EXPECT_FALSE(before->isEqual(NSScreen::screens()[0].get()));
  desktop.setScreens({{.frame = second, .visibleFrame = second, .scale = 1}});
  EXPECT_FALSE(before->isEqual(NSScreen::screens()[0].get())) << "of the same scale";
  EXPECT_FALSE(before->isEqual(NSApp.get()));
}

TEST_F(NSScreenTest, OfTwoThatShowAsMuchItIsTheFirst) {
  const std::vector<backend::Screen> screens = desktop.screens();
  EXPECT_EQ(screenShowing({1430, 100, 20, 20}, screens)->frame, first);
  EXPECT_EQ(screenShowing({1431, 100, 20, 20}, screens)->frame, second);
}

TEST_F(NSScreenTest, WhatHasNoAreaIsWhereItsMiddleIs) {
  const std::vector<backend::Screen> screens = desktop.screens();
  EXPECT_EQ(screenShowing({1500, 100, 0, 20}, screens)->frame, second);
  EXPECT_EQ(screenShowing({1430, 100, 0, 0}, screens)->frame, first);
  EXPECT_FALSE(screenShowing({-5, 100, 0, 20}, screens));
}

TEST(NSScreen, WithoutABackendThereIsNone) {
  EXPECT_TRUE(NSScreen::screens().empty());
  EXPECT_EQ(NSScreen::mainScreen(), nullptr);
}

}  // namespace
}  // namespace tessaluna::platform
