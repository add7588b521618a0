#include "tessaluna/backends/headless/VirtualUser.h"

#include <gtest/gtest.h>

#include "tests/harness/StillWorld.h"
#include "tests/harness/printing.h"

using namespace tessaluna::platform;

namespace {

// Everything is seen by a monitor, where all events of the application pass.
class VirtualUserTest : public harness::StillWorld {
 protected:
  VirtualUserTest() {
    NSEvent::addLocalMonitorForEventsMatchingMask(NSEventMaskAny, [this](const Ref<NSEvent>& event) {
      seen.push_back(event);
      return event;
    });
  }
  std::vector<NSEventType> types() const {
    std::vector<NSEventType> result;
    for (const auto& event : seen) result.push_back(event->type());
    return result;
  }
  std::vector<Ref<NSEvent>> seen;
};

using enum NSEventType;
using Types = std::vector<NSEventType>;

}  // namespace

TEST_F(VirtualUserTest, APressADragAndAReleaseAreEventsOfTheWindow) {
  const auto window = showWindow();
  user.press(*window, {10, 20});
  user.dragTo({30, 40});
  user.release();
  EXPECT_EQ(types(), (Types{LeftMouseDown, LeftMouseDragged, LeftMouseUp}));
  for (const auto& event : seen) EXPECT_EQ(event->window(), window);
  EXPECT_EQ(seen[0]->locationInWindow(), (CGPoint{10, 20}));
  EXPECT_EQ(seen[1]->locationInWindow(), (CGPoint{30, 40}));
  EXPECT_EQ(seen[2]->locationInWindow(), (CGPoint{30, 40}));
}

TEST_F(VirtualUserTest, ThePointerFollowsInScreenSpace) {
  const auto window = showWindow({100, 200, 50, 50});
  user.press(*window, {10, 20});
  EXPECT_EQ(NSEvent::mouseLocation(), (CGPoint{110, 220}));
  user.dragTo({-5, 0});
  EXPECT_EQ(NSEvent::mouseLocation(), (CGPoint{95, 200}));
}

TEST_F(VirtualUserTest, ButtonAndModifiersGoWithThePress) {
  const auto window = showWindow();
  user.click(*window, {1, 1}, {.button = 1, .modifiers = NSEventModifierFlagShift});
  EXPECT_EQ(types(), (Types{RightMouseDown, RightMouseUp}));
  EXPECT_EQ(seen[0]->buttonNumber(), 1);
  EXPECT_EQ(seen[0]->modifierFlags(), NSEventModifierFlagShift);
  EXPECT_EQ(seen[1]->modifierFlags(), NSEventModifierFlagShift);
}

TEST_F(VirtualUserTest, TwoPressesSoonAfterEachOtherAreADoubleClick) {
  const auto window = showWindow();
  user.click(*window, {10, 10});
  desktop.advance(0.4);
  user.click(*window, {12, 10});
  desktop.advance(0.6);
  user.click(*window, {12, 10});
  user.click(*window, {40, 10});
  EXPECT_EQ(seen[0]->clickCount(), 1);
  EXPECT_EQ(seen[2]->clickCount(), 2);
  EXPECT_EQ(seen[3]->clickCount(), 2);
  EXPECT_EQ(seen[4]->clickCount(), 1);
  EXPECT_EQ(seen[6]->clickCount(), 1);
}

TEST_F(VirtualUserTest, APressGivesItsWindowKeyStatusAndRaisesIt) {
  const auto first = showWindow(), second = showWindow();
  EXPECT_TRUE(second->isKeyWindow());
  user.click(*first, {10, 10});
  EXPECT_TRUE(first->isKeyWindow());
  EXPECT_FALSE(second->isKeyWindow());
  EXPECT_EQ(desktop.windows().back(), &nativeOf(*first));
}

TEST_F(VirtualUserTest, WithoutAPressNothingIsDraggedOrReleased) {
  const auto window = showWindow();
  user.dragTo({1, 1});
  user.release();
  user.click(*window, {1, 1});
  user.release();
  EXPECT_EQ(seen.size(), 2u);
}

TEST_F(VirtualUserTest, ALostReleaseEndsWithTheNextMove) {
  const auto window = showWindow();
  user.press(*window, {10, 20});
  user.loseRelease();
  user.moveTo(*window, {12, 20});
  EXPECT_EQ(types(), (Types{LeftMouseDown, LeftMouseUp, MouseMoved}));
  EXPECT_LT(seen[1]->locationInWindow().x, -1000);
}

TEST_F(VirtualUserTest, WhenTheWindowHasGoneItsReleaseGoesToNobody) {
  auto window = showWindow();
  user.press(*window, {10, 20});
  seen.clear();
  window.reset();
  user.dragTo({1, 1});
  user.release();
  EXPECT_TRUE(seen.empty());
}

TEST_F(VirtualUserTest, APressElsewhereIsAnEventWithoutAWindow) {
  showWindow();
  user.pressElsewhere({700, 800});
  ASSERT_EQ(types(), Types{LeftMouseDown});
  EXPECT_EQ(seen[0]->window(), nullptr);
  EXPECT_EQ(seen[0]->locationInWindow(), (CGPoint{700, 800}));
}

TEST_F(VirtualUserTest, KeysGoToTheKeyWindow) {
  const auto window = showWindow();
  user.pressKey("a", NSEventModifierFlagCommand);
  ASSERT_EQ(types(), (Types{KeyDown, KeyUp}));
  EXPECT_EQ(seen[0]->window(), window);
  EXPECT_EQ(seen[0]->characters(), "a");
  EXPECT_EQ(seen[0]->charactersIgnoringModifiers(), "a");
  EXPECT_EQ(seen[0]->modifierFlags(), NSEventModifierFlagCommand);
}

TEST_F(VirtualUserTest, WithoutAKeyWindowKeysHaveNoWindow) {
  user.pressKey("a");
  ASSERT_EQ(seen.size(), 2u);
  EXPECT_EQ(seen[0]->window(), nullptr);
}

TEST_F(VirtualUserTest, MovesAndScrollsCarryPlaceAndAmount) {
  const auto window = showWindow();
  user.moveTo(*window, {3, 4});
  user.scroll(*window, {5, 6}, {0, -10});
  user.leave(*window);
  EXPECT_EQ(types(), (Types{MouseMoved, ScrollWheel, MouseExited}));
  EXPECT_EQ(seen[0]->locationInWindow(), (CGPoint{3, 4}));
  EXPECT_EQ(seen[1]->scrollingDeltaY(), -10);
}

TEST_F(VirtualUserTest, EventsAreStampedWithTheClock) {
  const auto window = showWindow();
  desktop.advance(2.5);
  user.moveTo(*window, {3, 4});
  EXPECT_EQ(seen[0]->timestamp(), 2.5);
}

TEST_F(VirtualUserTest, TheApplicationMayEndInsideAnEvent) {
  const auto window = showWindow();
  const WeakRef<NSApplication> application = NSApp;
  NSEvent::addLocalMonitorForEventsMatchingMask(NSEventMaskAny, [&](const Ref<NSEvent>& event) {
    NSApp.reset();
    EXPECT_FALSE(application.expired());
    return event;
  });
  user.moveTo(*window, {3, 4});
  EXPECT_TRUE(application.expired());
}

using VirtualUserDeathTest = VirtualUserTest;

TEST_F(VirtualUserDeathTest, WithoutAnApplicationTheProgramStops) {
  const auto window = showWindow();
  NSApp.reset();
  EXPECT_DEATH(user.moveTo(*window, {1, 1}), "without NSApp");
}

TEST_F(VirtualUserDeathTest, APressOnAWindowThatWasNeverShownStopsTheProgram) {
  const auto window = make<NSWindow>(CGRect{0, 0, 9, 9}, NSWindowStyleMaskTitled, NSBackingStoreBuffered, true);
  EXPECT_DEATH(user.press(*window, {1, 1}), "has not been shown");
}
