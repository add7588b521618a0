#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "tessaluna/platform/windows/NSWindowAnimator.h"
#include "tessaluna/platform/windows/NSWindowOcclusion.h"
#include "tests/harness/StillWorld.h"
#include "tests/harness/printing.h"

namespace tessaluna::platform {
namespace {

struct ChildWindowsTest : harness::StillWorld {
  Ref<NSWindow> parent = showWindow({100, 100, 200, 150});
  Ref<NSWindow> child = popup({120, 50, 80, 40});

  static Ref<NSWindow> popup(CGRect frame) {
    return make<NSWindow>(frame, NSWindowStyleMaskBorderless, NSBackingStoreBuffered, /*defer=*/true);
  }
  std::ptrdiff_t level(const NSWindow& window) {
    const auto& all = desktop.windows();
    return std::find(all.begin(), all.end(), &nativeOf(window)) - all.begin();
  }
};

TEST_F(ChildWindowsTest, IsShownAtOnceAndAboveItsParent) {
  parent->addChildWindow(child, NSWindowAbove);
  EXPECT_TRUE(child->isVisible());
  EXPECT_EQ(child->parentWindow(), parent.get());
  EXPECT_EQ(parent->childWindows(), std::vector<Ref<NSWindow>>{child});
  EXPECT_EQ(nativeOf(*child).parent(), &nativeOf(*parent));
  parent->orderFront(nullptr);
  EXPECT_GT(level(*child), level(*parent));
}

TEST_F(ChildWindowsTest, OneThatIsClosedIsNoChildAnyMore) {
  parent->addChildWindow(child, NSWindowAbove);
  child->close();
  EXPECT_EQ(child->parentWindow(), nullptr);
  EXPECT_TRUE(parent->childWindows().empty());
  parent->orderOut(nullptr);
  parent->orderFront(nullptr);
  EXPECT_FALSE(child->isVisible());
}

TEST_F(ChildWindowsTest, AWindowCannotBeAChildOfItselfOrOfItsChildren) {
  parent->addChildWindow(child, NSWindowAbove);
  child->addChildWindow(parent, NSWindowAbove);
  parent->addChildWindow(parent, NSWindowAbove);
  EXPECT_EQ(parent->parentWindow(), nullptr);
  EXPECT_TRUE(child->childWindows().empty());
  EXPECT_EQ(parent->childWindows(), std::vector<Ref<NSWindow>>{child});
}

TEST_F(ChildWindowsTest, DoesNotTakeTheKeyStatus) {
  parent->addChildWindow(child, NSWindowAbove);
  EXPECT_TRUE(parent->isKeyWindow());
  user.click(*child, {5, 5});
  EXPECT_TRUE(parent->isKeyWindow());
}

TEST_F(ChildWindowsTest, MovesWithTheUpperLeftCornerOfItsParent) {
  parent->addChildWindow(child, NSWindowAbove);
  nativeOf(*parent).moveByUser({110, 130, 200, 150});
  EXPECT_EQ(child->frame(), (CGRect{130, 80, 80, 40}));
  EXPECT_EQ(nativeOf(*child).frame(), child->frame());
  parent->setFrame({110, 80, 300, 200}, true);  // larger downward and to the right
  EXPECT_EQ(child->frame(), (CGRect{130, 80, 80, 40}));
  child->setFrame({0, 0, 10, 10}, false);
  EXPECT_EQ(parent->frame(), (CGRect{110, 80, 300, 200}));
}

TEST_F(ChildWindowsTest, StaysWhereItIsWhileItsParentHasAFrameWithoutNumbers) {
  parent->addChildWindow(child, NSWindowAbove);
  const CGFloat infinity = std::numeric_limits<CGFloat>::infinity();
  for (const CGRect nowhere : {CGRect{NAN, 100, 200, 150}, CGRect{100, 100, 200, NAN}, CGRect{100, infinity, 200, 150},
                               CGRect{NAN, NAN, NAN, NAN}}) {
    parent->setFrame(nowhere, false);
    EXPECT_EQ(child->frame(), (CGRect{120, 50, 80, 40}));
  }
  parent->setFrame({110, 130, 200, 150}, false);
  EXPECT_EQ(child->frame(), (CGRect{130, 80, 80, 40})) << "from the last frame with numbers";
  parent->setFrame({100, 100, 200, 150}, false);
  EXPECT_EQ(child->frame(), (CGRect{120, 50, 80, 40}));
}

TEST_F(ChildWindowsTest, StaysWhereItIsWhenItsParentGoesFurtherThanNumbersDo) {
  const CGFloat far = std::numeric_limits<CGFloat>::max();
  const Ref<NSWindow> hidden = popup({-far, 100, 200, 150});
  hidden->addChildWindow(child, NSWindowAbove);
  hidden->setFrame({far, 100, 200, 150}, false);
  EXPECT_EQ(child->frame(), (CGRect{120, 50, 80, 40}));
}

TEST_F(ChildWindowsTest, OfAParentThatNeverHadAFrameWithNumbersStaysWhereItIs) {
  const Ref<NSWindow> nowhere = popup({NAN, 0, 10, 10});
  nowhere->addChildWindow(child, NSWindowAbove);
  nowhere->setFrame({300, 300, 10, 10}, false);
  EXPECT_EQ(child->frame(), (CGRect{120, 50, 80, 40}));
  nowhere->setFrame({310, 300, 10, 10}, false);
  EXPECT_EQ(child->frame(), (CGRect{130, 50, 80, 40}));
}

TEST_F(ChildWindowsTest, ThatIsRemovedWhenItsOwnWayEndsDoesNotMoveWithItsParent) {
  parent->addChildWindow(child, NSWindowAbove);
  const Ref<NSObject> token = NSNotificationCenter::defaultCenter().addObserverForName(
      NSWindowDidMoveNotification, child, nullptr, [&](const Ref<NSNotification>&) { parent->removeChildWindow(*child); });
  child->animator()->setFrame({300, 60, 80, 40}, false);
  nativeOf(*parent).moveByUser({110, 130, 200, 150});
  NSNotificationCenter::defaultCenter().removeObserver(token);
  EXPECT_EQ(child->parentWindow(), nullptr);
  EXPECT_EQ(child->frame(), (CGRect{300, 60, 80, 40}));
}

TEST_F(ChildWindowsTest, ThatIsRemovedWhenAnotherOneMovesStaysWhereItIs) {
  const Ref<NSWindow> first = popup({20, 20, 30, 30});
  parent->addChildWindow(first, NSWindowAbove);
  parent->addChildWindow(child, NSWindowAbove);
  const Ref<NSObject> token = NSNotificationCenter::defaultCenter().addObserverForName(
      NSWindowDidMoveNotification, first, nullptr, [&](const Ref<NSNotification>&) { parent->removeChildWindow(*child); });
  nativeOf(*parent).moveByUser({110, 130, 200, 150});
  NSNotificationCenter::defaultCenter().removeObserver(token);
  EXPECT_EQ(first->frame(), (CGRect{30, 50, 30, 30}));
  EXPECT_EQ(child->frame(), (CGRect{120, 50, 80, 40}));
}

TEST_F(ChildWindowsTest, IsStillThereWhenItsParentGivesUpTheKeyStatusToBeHidden) {
  parent->addChildWindow(child, NSWindowAbove);
  bool wasVisible = false;
  const Ref<NSObject> token = NSNotificationCenter::defaultCenter().addObserverForName(
      NSWindowDidResignKeyNotification, parent, nullptr,
      [&](const Ref<NSNotification>&) { wasVisible = child->isVisible(); });
  parent->orderOut(nullptr);
  NSNotificationCenter::defaultCenter().removeObserver(token);
  EXPECT_TRUE(wasVisible);
  EXPECT_FALSE(child->isVisible());
}

TEST_F(ChildWindowsTest, IsHiddenAndShownWithItsParent) {
  parent->addChildWindow(child, NSWindowAbove);
  parent->orderOut(nullptr);
  EXPECT_FALSE(child->isVisible());
  parent->orderFront(nullptr);
  EXPECT_TRUE(child->isVisible());
}

TEST_F(ChildWindowsTest, ThatWasHiddenByItselfStaysHidden) {
  parent->addChildWindow(child, NSWindowAbove);
  child->orderOut(nullptr);
  parent->orderOut(nullptr);
  parent->orderFront(nullptr);
  EXPECT_FALSE(child->isVisible());
}

TEST_F(ChildWindowsTest, OfAHiddenWindowIsShownWithIt) {
  parent->orderOut(nullptr);
  parent->addChildWindow(child, NSWindowAbove);
  EXPECT_FALSE(child->isVisible());
  parent->orderFront(nullptr);
  EXPECT_TRUE(child->isVisible());
  EXPECT_EQ(nativeOf(*child).parent(), &nativeOf(*parent));
}

TEST_F(ChildWindowsTest, ThatIsRemovedStaysWhereItIs) {
  parent->addChildWindow(child, NSWindowAbove);
  parent->removeChildWindow(*child);
  EXPECT_TRUE(child->isVisible());
  EXPECT_EQ(child->parentWindow(), nullptr);
  EXPECT_TRUE(parent->childWindows().empty());
  EXPECT_EQ(nativeOf(*child).parent(), nullptr);
  nativeOf(*parent).moveByUser({0, 0, 200, 150});
  EXPECT_EQ(child->frame(), (CGRect{120, 50, 80, 40}));
}

TEST_F(ChildWindowsTest, ChangesItsParent) {
  const Ref<NSWindow> other = showWindow({400, 100, 200, 150});
  parent->addChildWindow(child, NSWindowAbove);
  other->addChildWindow(child, NSWindowAbove);
  EXPECT_TRUE(parent->childWindows().empty());
  EXPECT_EQ(child->parentWindow(), other.get());
}

TEST_F(ChildWindowsTest, IsNeverItsOwnAncestor) {
  parent->addChildWindow(child, NSWindowAbove);
  child->addChildWindow(parent, NSWindowAbove);
  parent->addChildWindow(parent, NSWindowAbove);
  EXPECT_EQ(parent->parentWindow(), nullptr);
  EXPECT_TRUE(child->childWindows().empty());
}

TEST_F(ChildWindowsTest, OutlivesItsParent) {
  parent->addChildWindow(child, NSWindowAbove);
  parent = nullptr;
  EXPECT_EQ(child->parentWindow(), nullptr);
  EXPECT_EQ(nativeOf(*child).parent(), nullptr);
}

TEST_F(ChildWindowsTest, ThatIsVisibleByItselfIsAboveAHiddenParentAtOnce) {
  parent->orderOut(nullptr);
  child->orderFront(nullptr);
  parent->addChildWindow(child, NSWindowAbove);
  EXPECT_EQ(nativeOf(*child).parent(), &nativeOf(*parent));
}

TEST_F(ChildWindowsTest, RemovingOneLeavesTheOthers) {
  const Ref<NSWindow> other = popup({220, 50, 80, 40});
  parent->addChildWindow(child, NSWindowAbove);
  parent->addChildWindow(other, NSWindowAbove);
  parent->removeChildWindow(*other);
  EXPECT_EQ(parent->childWindows(), std::vector<Ref<NSWindow>>{child});
}

TEST_F(ChildWindowsTest, HidingOneKeepsNoOtherHidden) {
  const Ref<NSWindow> other = popup({220, 50, 80, 40});
  parent->addChildWindow(child, NSWindowAbove);
  parent->addChildWindow(other, NSWindowAbove);
  child->orderOut(nullptr);
  parent->orderOut(nullptr);
  parent->orderFront(nullptr);
  EXPECT_FALSE(child->isVisible());
  EXPECT_TRUE(other->isVisible());
}

TEST_F(ChildWindowsTest, ThatIsRemovedAsAnotherOneAppearsStaysHidden) {
  const Ref<NSWindow> other = popup({220, 50, 80, 40});
  parent->addChildWindow(child, NSWindowAbove);
  parent->addChildWindow(other, NSWindowAbove);
  parent->orderOut(nullptr);
  const Ref<NSObject> token = NSNotificationCenter::defaultCenter().addObserverForName(
      NSWindowDidChangeOcclusionStateNotification, child, nullptr,
      [&](const Ref<NSNotification>&) { parent->removeChildWindow(*other); });
  parent->orderFront(nullptr);
  NSNotificationCenter::defaultCenter().removeObserver(token);
  EXPECT_FALSE(other->isVisible());
}

TEST_F(ChildWindowsTest, KeepsItsUpperLeftCornerAtThePointThatItIsGiven) {
  child->setFrameTopLeftPoint({300, 200});
  EXPECT_EQ(child->frame(), (CGRect{300, 160, 80, 40}));
}

using ChildWindowsDeathTest = ChildWindowsTest;

TEST_F(ChildWindowsDeathTest, BelowItsParentIsNotOffered) {
  EXPECT_DEATH(parent->addChildWindow(child, NSWindowBelow), "can only be above its parent");
}

struct ChildWindowsNotifications : harness::StillWorld, NSWindowDelegate {
  std::vector<std::string> heard;
  Ref<NSWindow> window = showWindow();

  void windowDidBecomeKey(const Ref<NSNotification>& n) override { heard.push_back("delegate " + n->name()); }
  void windowDidResignKey(const Ref<NSNotification>& n) override { heard.push_back("delegate " + n->name()); }
  void windowDidMove(const Ref<NSNotification>& n) override { heard.push_back("delegate " + n->name()); }
  void windowDidResize(const Ref<NSNotification>& n) override { heard.push_back("delegate " + n->name()); }
  void windowWillClose(const Ref<NSNotification>& n) override { heard.push_back("delegate " + n->name()); }
};

TEST_F(ChildWindowsNotifications, GoToTheDelegateAndThenToTheObservers) {
  const Ref<NSWindowDelegate> delegate(this, [](NSWindowDelegate*) {});
  window->setDelegate(delegate);
  auto& center = NSNotificationCenter::defaultCenter();
  const Ref<NSObject> token = center.addObserverForName(
      "", window, nullptr, [&](const Ref<NSNotification>& n) { heard.push_back("observer " + n->name()); });
  nativeOf(*window).moveByUser({0, 0, 200, 150});
  window->setFrame({0, 0, 300, 150}, false);
  const Ref<NSWindow> other = showWindow();
  window->makeKeyAndOrderFront(nullptr);
  window->close();
  center.removeObserver(token);
  std::vector<std::string> expected;
  for (const char* name :
       {"NSWindowDidMoveNotification", "NSWindowDidResizeNotification", "NSWindowDidResignKeyNotification",
        "NSWindowDidBecomeKeyNotification", "NSWindowWillCloseNotification", "NSWindowDidResignKeyNotification"}) {
    expected.push_back(std::string("delegate ") + name);
    expected.push_back(std::string("observer ") + name);
  }
  expected.push_back("observer NSWindowDidChangeOcclusionStateNotification");
  EXPECT_EQ(heard, expected);
}

}  // namespace
}  // namespace tessaluna::platform
