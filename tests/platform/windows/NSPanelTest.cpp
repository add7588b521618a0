#include "tessaluna/platform/windows/NSPanel.h"

#include <gtest/gtest.h>

#include "tests/harness/StillWorld.h"

namespace tessaluna::platform {
namespace {

struct NSPanelTest : harness::StillWorld {
  static Ref<NSPanel> shown(std::uint32_t style) {
    const auto panel = make<NSPanel>(CGRect{100, 100, 200, 150}, style, NSBackingStoreBuffered, /*defer=*/false);
    panel->makeKeyAndOrderFront(nullptr);
    return panel;
  }
  void pressEscape() { user.pressKey("\x1B"); }
};

TEST_F(NSPanelTest, IsAPanelToTheDesktop) {
  EXPECT_TRUE(nativeOf(*shown(NSWindowStyleMaskTitled)).options().isPanel);
  EXPECT_FALSE(nativeOf(*showWindow()).options().isPanel);
}

TEST_F(NSPanelTest, EscapeClosesOneThatItsUserCanClose) {
  const auto panel = shown(NSWindowStyleMaskTitled | NSWindowStyleMaskClosable);
  pressEscape();
  EXPECT_FALSE(panel->isVisible());
}

TEST_F(NSPanelTest, TheDelegateMayRefuseTheCloseByEscape) {
  class Refusing : public NSObject, public NSWindowDelegate {
    bool windowShouldClose(NSWindow&) override { return false; }
  };
  const auto delegate = make<Refusing>();
  const auto panel = shown(NSWindowStyleMaskTitled | NSWindowStyleMaskClosable);
  panel->setDelegate(delegate);
  pressEscape();
  EXPECT_TRUE(panel->isVisible());
}

TEST_F(NSPanelTest, EscapeClosesNoOther) {
  const auto panel = shown(NSWindowStyleMaskTitled);
  pressEscape();
  EXPECT_TRUE(panel->isVisible());
  EXPECT_EQ(nativeOf(*panel).eventsNotTaken(), 1);
}

TEST_F(NSPanelTest, ATextInOneThatItsUserCannotCloseDoesNotCloseIt) {
  const auto panel = shown(NSWindowStyleMaskTitled);
  panel->performSelector("cancelOperation:", nullptr);
  EXPECT_TRUE(panel->isVisible());
}

TEST_F(NSPanelTest, OtherKeysGoWhereTheyGoInAWindow) {
  const auto panel = shown(NSWindowStyleMaskTitled | NSWindowStyleMaskClosable);
  user.pressKey("a");
  EXPECT_TRUE(panel->isVisible());
  EXPECT_EQ(nativeOf(*panel).eventsNotTaken(), 1);
}

}  // namespace
}  // namespace tessaluna::platform
