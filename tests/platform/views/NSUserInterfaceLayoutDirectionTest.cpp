#include "tessaluna/platform/views/NSUserInterfaceLayoutDirection.h"

#include "tests/harness/StillWorld.h"

namespace tessaluna::platform {
namespace {

using NSUserInterfaceLayoutDirectionTest = harness::StillWorld;
using backend::LayoutDirection;

TEST_F(NSUserInterfaceLayoutDirectionTest, IsTheDesktopsOneAtEachMoment) {
  const auto view = make<NSView>(CGRect{});
  EXPECT_EQ(NSApp->userInterfaceLayoutDirection(), NSUserInterfaceLayoutDirectionLeftToRight);
  EXPECT_EQ(view->userInterfaceLayoutDirection(), NSUserInterfaceLayoutDirectionLeftToRight);
  desktop.setLayoutDirection(LayoutDirection::RightToLeft);
  EXPECT_EQ(NSApp->userInterfaceLayoutDirection(), NSUserInterfaceLayoutDirectionRightToLeft);
  EXPECT_EQ(view->userInterfaceLayoutDirection(), NSUserInterfaceLayoutDirectionRightToLeft);
}

TEST_F(NSUserInterfaceLayoutDirectionTest, AViewKeepsTheOneThatWasSetForIt) {
  const auto view = make<NSView>(CGRect{});
  view->setUserInterfaceLayoutDirection(NSUserInterfaceLayoutDirectionLeftToRight);
  desktop.setLayoutDirection(LayoutDirection::RightToLeft);
  EXPECT_EQ(view->userInterfaceLayoutDirection(), NSUserInterfaceLayoutDirectionLeftToRight);
}

TEST_F(NSUserInterfaceLayoutDirectionTest, AnotherOneHasTheViewLaidOutAndDrawnAgain) {
  const auto view = make<NSView>(CGRect{0, 0, 10, 10});
  const auto window = showWindowWith(view);
  ASSERT_FALSE(view->needsLayout() || view->needsDisplay());
  view->setUserInterfaceLayoutDirection(NSUserInterfaceLayoutDirectionRightToLeft);
  EXPECT_TRUE(view->needsLayout());
  EXPECT_TRUE(view->needsDisplay());
  desktop.settle();
  view->setUserInterfaceLayoutDirection(NSUserInterfaceLayoutDirectionRightToLeft);
  EXPECT_FALSE(view->needsLayout() || view->needsDisplay());
}

}  // namespace
}  // namespace tessaluna::platform
