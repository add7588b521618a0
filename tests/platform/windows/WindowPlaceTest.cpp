#include "tessaluna/platform/windows/WindowPlace.h"

#include <gtest/gtest.h>

#include "tessaluna/platform/windows/NSScreen.h"
#include "tests/harness/StillWorld.h"
#include "tests/harness/printing.h"

namespace tessaluna::platform {
namespace {

struct WindowPlaceTest : harness::StillWorld {
  WindowPlaceTest() {
    desktop.setScreens({{.frame = {0, 0, 1440, 900}, .visibleFrame = {0, 40, 1440, 830}, .scale = 1},
                        {.frame = {1440, 0, 1000, 900}, .visibleFrame = {1440, 0, 1000, 900}, .scale = 2}});
  }
  static Ref<NSWindow> unshown(CGRect frame) {
    return make<NSWindow>(frame, NSWindowStyleMaskTitled, NSBackingStoreBuffered, /*defer=*/true);
  }
};

TEST_F(WindowPlaceTest, ItsScreenShowsMostOfIt) {
  const auto window = showWindow({1300, 100, 200, 150});
  EXPECT_EQ(window->screen()->frame(), (CGRect{0, 0, 1440, 900}));
  EXPECT_EQ(window->screen()->visibleFrame(), (CGRect{0, 40, 1440, 830}));
  window->setFrame({1400, 100, 200, 150}, false);
  EXPECT_EQ(window->screen()->frame(), (CGRect{1440, 0, 1000, 900}));
  window->setFrame({5000, 100, 200, 150}, false);
  EXPECT_EQ(window->screen(), nullptr);
}

TEST_F(WindowPlaceTest, AWindowThatWasNeverShownHasAScreenAndItsScale) {
  EXPECT_EQ(unshown({1500, 100, 20, 20})->screen()->frame(), (CGRect{1440, 0, 1000, 900}));
  EXPECT_EQ(unshown({1500, 100, 20, 20})->backingScaleFactor(), 2);
  EXPECT_EQ(unshown({1500, 100, 0, 0})->backingScaleFactor(), 2);
  EXPECT_EQ(unshown({9000, 100, 20, 20})->screen(), nullptr);
  EXPECT_EQ(unshown({9000, 100, 20, 20})->backingScaleFactor(), 1) << "that of the main screen";
}

TEST_F(WindowPlaceTest, BackingCountsDevicePixels) {
  const auto window = showWindow({1500, 100, 200, 150});
  EXPECT_EQ(window->convertRectToBacking({1, 2, 3.25, 4}), (CGRect{2, 4, 6.5, 8}));
  EXPECT_EQ(window->convertRectFromBacking({0, 0, 1000, 1001}), (CGRect{0, 0, 500, 500.5}));
  const auto coarse = showWindow();
  EXPECT_EQ(coarse->convertRectFromBacking({0, 0, 1000, 1001}), (CGRect{0, 0, 1000, 1001}));
}

}  // namespace
}  // namespace tessaluna::platform
