#include "tessaluna/platform/windows/NSWindow.h"

#include <gmock/gmock.h>

#include <cmath>

#include "tessaluna/platform/graphics/NSBezierPath.h"
#include "tessaluna/platform/graphics/NSColor.h"
#include "tests/harness/ProbeView.h"
#include "tests/harness/StillWorld.h"
#include "tests/harness/printing.h"
#include "tests/harness/recordingOf.h"

using namespace tessaluna::platform;
using harness::ProbeView;
using tessaluna::backend::headless::HeadlessWindow;
using tessaluna::backend::headless::Pictures;
using testing::ElementsAre;
using testing::IsEmpty;

namespace {

Ref<ProbeView> view(CGRect frame) { return make<ProbeView>(frame); }

Ref<ProbeView> keyView(CGRect frame = {0, 0, 10, 10}) {
  auto v = view(frame);
  v->acceptsFirst = true;
  return v;
}

// Accepts the first responder and leaves all keys to the chain.
Ref<NSView> passingKeyView() {
  class PassingKeyView : public NSView {
   public:
    using NSView::NSView;
    bool acceptsFirstResponder() const override { return true; }
  };
  return make<PassingKeyView>(CGRect{0, 0, 10, 10});
}

Ref<NSWindow> unshownWindow(std::uint32_t style = NSWindowStyleMaskTitled) {
  return make<NSWindow>(CGRect{100, 100, 200, 150}, style, NSBackingStoreBuffered, true);
}

class NSWindowTest : public harness::StillWorld {};

}  // namespace

// Its life.

TEST_F(NSWindowTest, AFreshWindowHasAnEmptyContentViewOfItsSize) {
  const auto window = unshownWindow();
  ASSERT_NE(window->contentView(), nullptr);
  EXPECT_EQ(window->contentView()->frame(), (CGRect{0, 0, 200, 150}));
  EXPECT_EQ(window->contentView()->window(), window.get());
  EXPECT_FALSE(window->isVisible());
  EXPECT_EQ(window->firstResponder(), window.get());
}

TEST_F(NSWindowTest, WithDeferTheNativeWindowComesWhenItIsShown) {
  const auto deferred = unshownWindow();
  EXPECT_EQ(deferred->nativeWindow(), nullptr);
  deferred->orderFront(nullptr);
  EXPECT_NE(deferred->nativeWindow(), nullptr);
  const auto atOnce = make<NSWindow>(CGRect{0, 0, 9, 9}, NSWindowStyleMaskTitled, NSBackingStoreBuffered, /*defer=*/false);
  EXPECT_NE(atOnce->nativeWindow(), nullptr);
}

TEST(NSWindowDeathTest, ShowingAWindowWithoutADesktopStopsTheProgram) {
  const auto window = unshownWindow();
  EXPECT_DEATH(window->orderFront(nullptr), "without a backend");
}

TEST_F(NSWindowTest, ShowingAndHidingReachTheDesktop) {
  const auto window = unshownWindow();
  window->setTitle("Player");
  window->orderFront(nullptr);
  EXPECT_TRUE(window->isVisible());
  EXPECT_TRUE(nativeOf(*window).isVisible());
  EXPECT_EQ(nativeOf(*window).title(), "Player");
  EXPECT_EQ(nativeOf(*window).frame(), (CGRect{100, 100, 200, 150}));
  window->setTitle("Paused");
  EXPECT_EQ(nativeOf(*window).title(), "Paused");
  window->orderOut(nullptr);
  EXPECT_FALSE(window->isVisible());
  EXPECT_FALSE(nativeOf(*window).isVisible());
}

TEST_F(NSWindowTest, ATitledWindowTakesKeyStatus) {
  const auto window = unshownWindow();
  window->makeKeyAndOrderFront(nullptr);
  EXPECT_TRUE(window->isKeyWindow());
  EXPECT_EQ(NSApp->keyWindow(), window);
}

TEST_F(NSWindowTest, ABorderlessWindowIsShownAndDoesNotTakeKeyStatus) {
  const auto window = unshownWindow(NSWindowStyleMaskBorderless);
  window->makeKeyAndOrderFront(nullptr);
  EXPECT_TRUE(window->isVisible());
  EXPECT_FALSE(window->isKeyWindow());
  EXPECT_EQ(NSApp->keyWindow(), nullptr);
  EXPECT_EQ(nativeOf(*window).options().kind, tessaluna::backend::WindowKind::Popup);
}

TEST_F(NSWindowTest, ABorderlessWindowThatSaysSoTakesKeyStatus) {
  class KeyPanel : public NSWindow {
   public:
    using NSWindow::NSWindow;
    bool canBecomeKeyWindow() const override { return true; }
  };
  const auto window = make<KeyPanel>(CGRect{0, 0, 9, 9}, NSWindowStyleMaskBorderless, NSBackingStoreBuffered, true);
  window->makeKeyAndOrderFront(nullptr);
  EXPECT_TRUE(window->isKeyWindow());
  EXPECT_EQ(nativeOf(*window).options().kind, tessaluna::backend::WindowKind::Borderless);
}

TEST_F(NSWindowTest, KeyStatusThatADesktopGivesToAWindowThatCannotIsRefused) {
  const auto window = unshownWindow(NSWindowStyleMaskBorderless);
  window->orderFront(nullptr);
  window->windowClient().nativeKeyStatusChanged(true);
  EXPECT_FALSE(window->isKeyWindow());
}

TEST_F(NSWindowTest, AHiddenWindowLosesKeyStatus) {
  const auto window = showWindow();
  window->orderOut(nullptr);
  EXPECT_FALSE(window->isKeyWindow());
  EXPECT_EQ(NSApp->keyWindow(), nullptr);
}

TEST_F(NSWindowTest, ClosingByTheUserHidesIt) {
  const auto window = showWindow();
  nativeOf(*window).closeByUser();
  EXPECT_FALSE(window->isVisible());
}

TEST_F(NSWindowTest, TheApplicationKnowsItsWindowsWithoutKeepingThem) {
  auto first = unshownWindow();
  const auto second = unshownWindow();
  EXPECT_THAT(NSApp->windows(), ElementsAre(first, second));
  first.reset();
  EXPECT_THAT(NSApp->windows(), ElementsAre(second));
}

// Its place.

TEST_F(NSWindowTest, ScreenSpaceIsMovedByTheFrame) {
  const auto window = unshownWindow();
  EXPECT_EQ(window->convertPointToScreen({1, 2}), (CGPoint{101, 102}));
  EXPECT_EQ(window->convertPointFromScreen({101, 102}), (CGPoint{1, 2}));
  EXPECT_EQ(window->convertRectToScreen({1, 2, 3, 4}), (CGRect{101, 102, 3, 4}));
  EXPECT_EQ(window->convertRectFromScreen({101, 102, 3, 4}), (CGRect{1, 2, 3, 4}));
}

TEST_F(NSWindowTest, ANewSizeResizesTheContent) {
  const auto window = showWindow();
  const auto child = view({0, 0, 200, 150});
  child->setAutoresizingMask(NSViewWidthSizable | NSViewHeightSizable);
  window->contentView()->addSubview(child);
  window->setFrame({0, 0, 300, 100}, false);
  EXPECT_EQ(window->contentView()->frame(), (CGRect{0, 0, 300, 100}));
  EXPECT_EQ(child->frame(), (CGRect{0, 0, 300, 100}));
  EXPECT_EQ(nativeOf(*window).frame(), (CGRect{0, 0, 300, 100}));
}

TEST_F(NSWindowTest, AResizeByTheUserResizesTheContent) {
  const auto window = showWindow();
  nativeOf(*window).moveByUser({5, 6, 70, 80});
  EXPECT_EQ(window->frame(), (CGRect{5, 6, 70, 80}));
  EXPECT_EQ(window->contentView()->frame(), (CGRect{0, 0, 70, 80}));
}

TEST_F(NSWindowTest, AMovedWindowIsNotDrawnAgain) {
  const auto window = showWindow();
  nativeOf(*window).forgetPaints();
  window->setFrame({300, 300, 200, 150}, true);
  desktop.settle();
  EXPECT_THAT(nativeOf(*window).paints(), IsEmpty());
}

TEST_F(NSWindowTest, AResizedWindowIsDrawnAgainAsAWhole) {
  const auto window = showWindow();
  nativeOf(*window).forgetPaints();
  window->setFrame({100, 100, 210, 150}, false);
  EXPECT_THAT(nativeOf(*window).paints(), IsEmpty());
  desktop.settle();
  ASSERT_EQ(nativeOf(*window).paints().size(), 1u);
  EXPECT_THAT(nativeOf(*window).paints()[0].dirty, ElementsAre(CGRect{0, 0, 210, 150}));
}

TEST_F(NSWindowTest, WithDisplayAResizeIsDrawnAtOnce) {
  const auto window = showWindow();
  nativeOf(*window).forgetPaints();
  window->setFrame({100, 100, 210, 150}, true);
  EXPECT_EQ(nativeOf(*window).paints().size(), 1u);
}

TEST_F(NSWindowTest, ANewScaleDrawsEverythingAgain) {
  const auto window = showWindow();
  nativeOf(*window).forgetPaints();
  desktop.setScale(2);
  desktop.settle();
  EXPECT_EQ(window->backingScaleFactor(), 2);
  EXPECT_THAT(nativeOf(*window).paints().back().dirty, ElementsAre(CGRect{0, 0, 200, 150}));
}

TEST_F(NSWindowTest, AtANegativeSizeNothingShows) {
  const auto window = showWindow();
  window->setFrame({100, 100, 200, -50}, true);
  EXPECT_TRUE(window->isVisible());
  EXPECT_FALSE(nativeOf(*window).isVisible());
  EXPECT_EQ(nativeOf(*window).frame(), (CGRect{100, 100, 200, 150}));
  window->setFrame({300, 300, 200, 80}, true);
  EXPECT_TRUE(nativeOf(*window).isVisible());
  EXPECT_EQ(nativeOf(*window).frame(), (CGRect{300, 300, 200, 80}));
}

TEST_F(NSWindowTest, WithoutAreaATitledWindowShowsItsTitleAndABorderlessOneNothing) {
  const auto titled = unshownWindow(), borderless = unshownWindow(NSWindowStyleMaskBorderless);
  for (const auto& window : {titled, borderless}) {
    window->setFrame({100, 100, 200, 0}, false);
    window->orderFront(nullptr);
  }
  EXPECT_TRUE(nativeOf(*titled).isVisible());
  EXPECT_FALSE(nativeOf(*borderless).isVisible());
}

// What it tells the desktop.

TEST_F(NSWindowTest, ItsStyleReachesTheDesktop) {
  const auto plain = unshownWindow(), all = unshownWindow(NSWindowStyleMaskTitled | NSWindowStyleMaskClosable |
                                                          NSWindowStyleMaskMiniaturizable | NSWindowStyleMaskResizable);
  plain->orderFront(nullptr);
  all->orderFront(nullptr);
  const auto& bare = nativeOf(*plain).options();
  EXPECT_FALSE(bare.isClosable || bare.isMiniaturizable || bare.isResizable || bare.isPanel);
  const auto& full = nativeOf(*all).options();
  EXPECT_TRUE(full.isClosable && full.isMiniaturizable && full.isResizable);
}

TEST_F(NSWindowTest, OpacityAndShadowReachTheDesktopAlsoWhenItIsShown) {
  const auto window = showWindow();
  nativeOf(*window).forgetPaints();
  window->setOpaque(false);
  window->setHasShadow(false);
  EXPECT_FALSE(nativeOf(*window).options().isOpaque);
  EXPECT_FALSE(nativeOf(*window).options().hasShadow);
  desktop.settle();
  ASSERT_EQ(nativeOf(*window).paints().size(), 1u);
  EXPECT_THAT(nativeOf(*window).paints()[0].dirty, ElementsAre(CGRect{0, 0, 200, 150}));
  window->setOpaque(true);
  window->setHasShadow(true);
  EXPECT_TRUE(nativeOf(*window).options().isOpaque);
  EXPECT_TRUE(nativeOf(*window).options().hasShadow);
}

// Its picture.

TEST_F(NSWindowTest, AShownWindowIsPaintedWithItsBackground) {
  const auto window = showWindow();
  ASSERT_EQ(nativeOf(*window).paints().size(), 1u);
  const auto& paint = nativeOf(*window).paints()[0];
  EXPECT_THAT(paint.dirty, ElementsAre(CGRect{0, 0, 200, 150}));
  EXPECT_THAT(harness::only("setFillColor", paint.lines),
              ElementsAre(testing::HasSubstr(R"("named":"windowBackgroundColor")")));
}

TEST_F(NSWindowTest, AnotherBackgroundIsPaintedSoon) {
  const auto window = showWindow();
  window->setBackgroundColor(NSColor::redColor());
  desktop.settle();
  EXPECT_THAT(harness::only("setFillColor", nativeOf(*window).paints().back().lines),
              ElementsAre(testing::HasSubstr(R"("named":"redColor")")));
}

TEST_F(NSWindowTest, AWindowThatIsNotShownPaintsNothing) {
  const auto window = showWindow();
  window->orderOut(nullptr);
  nativeOf(*window).forgetPaints();
  window->contentView()->setNeedsDisplay(true);
  desktop.settle();
  EXPECT_THAT(nativeOf(*window).paints(), IsEmpty());
  window->orderFront(nullptr);
  EXPECT_EQ(nativeOf(*window).paints().size(), 1u);
}

TEST_F(NSWindowTest, EveryRectangleOfAPaintIsWholeDevicePixels) {
  desktop.setScale(1.25);
  const auto window = showWindow({0, 0, 101.3, 77.7});
  const auto v = view({80.3, 60.1, 40, 40});
  window->contentView()->addSubview(v);
  desktop.settle();
  for (const auto& paint : nativeOf(*window).paints()) {
    for (const CGRect& rect : paint.dirty) {
      for (const double edge : {CGRectGetMinX(rect), CGRectGetMaxX(rect), CGRectGetMinY(rect), CGRectGetMaxY(rect)})
        EXPECT_NEAR(edge * 1.25, std::round(edge * 1.25), 1e-6) << testing::PrintToString(rect);
    }
  }
}

TEST_F(NSWindowTest, APaintIsClippedToEachOfItsRectangles) {
  const auto a = view({0, 0, 10, 10}), b = view({50, 50, 10, 10});
  const auto window = showWindow();
  window->contentView()->addSubview(a);
  window->contentView()->addSubview(b);
  desktop.settle();
  nativeOf(*window).forgetPaints();
  a->setNeedsDisplay(true);
  b->setNeedsDisplay(true);
  desktop.settle();
  ASSERT_EQ(nativeOf(*window).paints().size(), 1u);
  const auto clips = harness::only("clipRect", nativeOf(*window).paints()[0].lines);
  EXPECT_THAT(clips, testing::Contains(R"({"op":"clipRect","rect":[0,0,10,10]})"));
  EXPECT_THAT(clips, testing::Contains(R"({"op":"clipRect","rect":[50,50,10,10]})"));
}

TEST_F(NSWindowTest, ThePictureIsKeptWhereNothingChanged) {
  desktop.setPictures(Pictures::Painted);
  const auto window = showWindow();
  window->setBackgroundColor(NSColor::whiteColor());
  const auto v = view({10, 10, 20, 20});
  Ref<NSColor> ink = NSColor::redColor();
  v->onDraw = [&](CGRect) {
    ink->setFill();
    NSBezierPath::bezierPathWithRect({0, 0, 20, 20})->fill();
  };
  window->contentView()->addSubview(v);
  desktop.settle();
  const auto& picture = *nativeOf(*window).picture();
  EXPECT_EQ(picture.pixel(15, 135), 0xFFFF0000);
  EXPECT_EQ(picture.pixel(100, 20), 0xFFFFFFFF);
  ink = NSColor::blueColor();
  v->setNeedsDisplayInRect({0, 0, 10, 20});
  desktop.settle();
  EXPECT_EQ(picture.pixel(15, 135), 0xFF0000FF);
  EXPECT_EQ(picture.pixel(25, 135), 0xFFFF0000) << "outside the changed part the picture stays";
  EXPECT_EQ(picture.pixel(100, 20), 0xFFFFFFFF);
}

TEST_F(NSWindowTest, UnderAClearBackgroundTheOldPictureGoes) {
  desktop.setPictures(Pictures::Painted);
  const auto window = showWindow();
  window->setBackgroundColor(NSColor::clearColor());
  const auto v = view({10, 10, 20, 20});
  v->onDraw = [&](CGRect) {
    NSColor::redColor()->setFill();
    NSBezierPath::bezierPathWithRect({0, 0, 20, 20})->fill();
  };
  window->contentView()->addSubview(v);
  desktop.settle();
  EXPECT_EQ(nativeOf(*window).picture()->pixel(15, 135), 0xFFFF0000);
  v->setHidden(true);
  desktop.settle();
  EXPECT_EQ(nativeOf(*window).picture()->pixel(15, 135), 0u);
}

TEST_F(NSWindowTest, AnotherContentViewTakesThePlaceOfTheFirst) {
  const auto window = showWindow();
  const Ref<NSView> first = window->contentView();
  const auto second = view({0, 0, 5, 5});
  window->setContentView(second);
  EXPECT_EQ(first->window(), nullptr);
  EXPECT_EQ(second->window(), window.get());
  EXPECT_EQ(second->frame(), (CGRect{0, 0, 200, 150}));
  desktop.settle();
  EXPECT_THAT(second->drawn, ElementsAre(CGRect{0, 0, 200, 150}));
}

TEST_F(NSWindowTest, AContentViewThatGoesElsewhereIsTheWindowsNoLonger) {
  const auto first = showWindow(), second = showWindow(), third = showWindow();
  const Ref<NSView> wanderer = first->contentView();
  second->setContentView(wanderer);
  EXPECT_EQ(first->contentView(), nullptr);
  EXPECT_EQ(wanderer->window(), second.get());
  third->contentView()->addSubview(wanderer);
  EXPECT_EQ(second->contentView(), nullptr);
  EXPECT_EQ(wanderer->window(), third.get());
  EXPECT_EQ(wanderer->superview(), third->contentView().get());
}

TEST_F(NSWindowTest, AContentViewMayBeTakenOut) {
  const auto window = showWindow();
  const Ref<NSView> content = window->contentView();
  content->removeFromSuperview();
  EXPECT_EQ(window->contentView(), nullptr);
  EXPECT_EQ(content->window(), nullptr);
}

TEST_F(NSWindowTest, WithoutAContentViewEventsGoNowhere) {
  const auto window = showWindow();
  window->setContentView(nullptr);
  user.click(*window, {10, 10});
  user.moveTo(*window, {10, 10});
  user.scroll(*window, {10, 10}, {0, 1});
  user.pressKey("a");
  desktop.settle();
  EXPECT_EQ(window->contentView(), nullptr);
}

// The press.

TEST_F(NSWindowTest, APressGoesToTheViewUnderIt) {
  const auto v = view({10, 20, 30, 40});
  const auto window = showWindowWith(v);
  v->calls.clear();
  user.press(*window, {15, 25});
  user.release();
  EXPECT_THAT(v->calls, ElementsAre("mouseDown", "mouseUp"));
}

TEST_F(NSWindowTest, DragsAndTheReleaseGoToThePressedViewWhereverThePointerIs) {
  const auto window = showWindow();
  const auto v = view({10, 20, 30, 40}), other = view({100, 100, 30, 40});
  window->contentView()->addSubview(v);
  window->contentView()->addSubview(other);
  v->calls.clear();
  other->calls.clear();
  user.press(*window, {15, 25});
  user.dragTo({110, 110});
  user.release();
  EXPECT_THAT(v->calls, ElementsAre("mouseDown", "mouseDragged", "mouseUp"));
  EXPECT_THAT(other->calls, IsEmpty());
}

TEST_F(NSWindowTest, EachButtonHasAPressOfItsOwn) {
  const auto window = showWindow();
  const auto a = view({0, 0, 10, 10}), b = view({50, 50, 10, 10});
  window->contentView()->addSubview(a);
  window->contentView()->addSubview(b);
  a->calls.clear();
  b->calls.clear();
  const auto send = [&](NSEventType type, CGPoint point) {
    NSApp->sendEvent(make<NSEvent>(NSEvent::Fields{.type = type, .location = point, .window = window}));
  };
  send(NSEventType::LeftMouseDown, {5, 5});
  send(NSEventType::RightMouseDown, {55, 55});
  send(NSEventType::LeftMouseUp, {55, 55});
  send(NSEventType::RightMouseUp, {5, 5});
  EXPECT_THAT(a->calls, ElementsAre("mouseDown", "mouseUp"));
  EXPECT_THAT(b->calls, ElementsAre("rightMouseDown", "rightMouseUp"));
}

TEST_F(NSWindowTest, AWindowMayGoInsideItsOwnEvent) {
  auto v = view({10, 20, 30, 40});
  auto window = showWindowWith(v);
  const WeakRef<NSWindow> weak = window;
  v->onCall = [&](const std::string&) {
    v->events.clear();  // which hold the window
    window.reset();
  };
  NSWindow& raw = *window;
  user.press(raw, {15, 25});
  EXPECT_TRUE(weak.expired());
}

TEST_F(NSWindowTest, ScrollingGoesToTheViewUnderThePointer) {
  const auto v = view({10, 20, 30, 40});
  const auto window = showWindowWith(v);
  v->calls.clear();
  user.scroll(*window, {15, 25}, {0, -3});
  ASSERT_THAT(v->calls, ElementsAre("scrollWheel"));
  EXPECT_EQ(v->events[0]->scrollingDeltaY(), -3);
}

// The first responder.

TEST_F(NSWindowTest, APressMakesAViewThatAcceptsTheFirstResponder) {
  const auto window = showWindow();
  const auto accepts = keyView({0, 0, 10, 10}), refuses = view({50, 50, 10, 10});
  window->contentView()->addSubview(accepts);
  window->contentView()->addSubview(refuses);
  user.click(*window, {5, 5});
  EXPECT_EQ(window->firstResponder(), accepts.get());
  user.click(*window, {55, 55});
  EXPECT_EQ(window->firstResponder(), accepts.get());
}

TEST_F(NSWindowTest, ARightPressChangesNoFirstResponder) {
  const auto v = keyView();
  const auto window = showWindowWith(v);
  user.click(*window, {5, 5}, {.button = 1});
  EXPECT_EQ(window->firstResponder(), window.get());
}

TEST_F(NSWindowTest, TheEarlierOneResignsBeforeTheNewOneBecomes) {
  const auto window = showWindow();
  const auto a = keyView(), b = keyView();
  window->contentView()->addSubview(a);
  window->contentView()->addSubview(b);
  a->calls.clear();
  b->calls.clear();
  EXPECT_TRUE(window->makeFirstResponder(a.get()));
  EXPECT_TRUE(window->makeFirstResponder(b.get()));
  EXPECT_THAT(a->calls, ElementsAre("become", "resign"));
  EXPECT_THAT(b->calls, ElementsAre("become"));
}

TEST_F(NSWindowTest, AFirstResponderThatRefusesToResignStays) {
  const auto window = showWindow();
  const auto a = keyView(), b = keyView();
  window->contentView()->addSubview(a);
  window->contentView()->addSubview(b);
  window->makeFirstResponder(a.get());
  a->refusesToResign = true;
  EXPECT_FALSE(window->makeFirstResponder(b.get()));
  EXPECT_EQ(window->firstResponder(), a.get());
}

TEST_F(NSWindowTest, AViewThatRefusesLeavesTheWindowAsFirstResponder) {
  const auto window = showWindow();
  const auto a = keyView(), refuses = keyView(), never = view({});
  window->contentView()->addSubview(a);
  window->contentView()->addSubview(refuses);
  window->contentView()->addSubview(never);
  refuses->refusesToBecome = true;
  window->makeFirstResponder(a.get());
  EXPECT_FALSE(window->makeFirstResponder(refuses.get()));
  EXPECT_EQ(window->firstResponder(), window.get());
  EXPECT_FALSE(window->makeFirstResponder(never.get()));
}

TEST_F(NSWindowTest, AViewThatIsNotInTheWindowIsNotMadeItsFirstResponder) {
  const auto a = keyView(), elsewhere = keyView(), nowhere = keyView();
  const auto window = showWindowWith(a), other = showWindowWith(elsewhere);
  window->makeFirstResponder(a.get());
  a->calls.clear();
  EXPECT_FALSE(window->makeFirstResponder(elsewhere.get()));
  EXPECT_FALSE(window->makeFirstResponder(nowhere.get()));
  EXPECT_EQ(window->firstResponder(), a.get());
  EXPECT_THAT(a->calls, IsEmpty()) << "nobody was asked";
}

TEST_F(NSWindowTest, AViewThatIsTakenAwayWhileItBecomesTheFirstResponderIsNot) {
  struct Leaving : ProbeView {
    using ProbeView::ProbeView;
    bool becomeFirstResponder() override {
      removeFromSuperview();
      return ProbeView::becomeFirstResponder();
    }
  };
  const auto leaving = make<Leaving>(CGRect{0, 0, 10, 10});
  leaving->acceptsFirst = true;
  const auto window = showWindowWith(leaving);
  leaving->calls.clear();
  EXPECT_FALSE(window->makeFirstResponder(leaving.get()));
  EXPECT_EQ(window->firstResponder(), window.get());
  EXPECT_THAT(leaving->calls, testing::IsSupersetOf({"become", "resign"}));
}

TEST_F(NSWindowTest, AViewThatTheEarlierFirstResponderTakesAwayIsNotMadeTheFirst) {
  struct Removing : ProbeView {
    using ProbeView::ProbeView;
    Ref<NSView> other;
    bool resignFirstResponder() override {
      other->removeFromSuperview();
      return true;
    }
  };
  const auto removing = make<Removing>(CGRect{0, 0, 10, 10});
  const auto taken = keyView();
  removing->acceptsFirst = true;
  removing->other = taken;
  const auto window = showWindowWith(removing);
  window->contentView()->addSubview(taken);
  window->makeFirstResponder(removing.get());
  taken->calls.clear();
  EXPECT_FALSE(window->makeFirstResponder(taken.get()));
  EXPECT_EQ(window->firstResponder(), window.get());
  EXPECT_THAT(taken->calls, testing::Not(testing::Contains("become")));
}

TEST_F(NSWindowTest, AnAbsentResponderMakesTheWindowTheFirst) {
  const auto v = keyView();
  const auto window = showWindowWith(v);
  window->makeFirstResponder(v.get());
  EXPECT_TRUE(window->makeFirstResponder(nullptr));
  EXPECT_EQ(window->firstResponder(), window.get());
}

TEST_F(NSWindowTest, MakingTheFirstResponderTheFirstResponderAgainAsksNobody) {
  const auto v = keyView();
  const auto window = showWindowWith(v);
  window->makeFirstResponder(v.get());
  v->calls.clear();
  EXPECT_TRUE(window->makeFirstResponder(v.get()));
  EXPECT_THAT(v->calls, IsEmpty());
}

TEST_F(NSWindowTest, AFirstResponderThatLeavesTheWindowIsItNoMore) {
  const auto v = keyView();
  const auto window = showWindowWith(v);
  window->makeFirstResponder(v.get());
  v->removeFromSuperview();
  EXPECT_EQ(window->firstResponder(), window.get());
}

TEST_F(NSWindowTest, AFirstResponderLeavesWithTheViewThatHoldsIt) {
  const auto outer = view({0, 0, 50, 50}), inner = keyView();
  outer->addSubview(inner);
  const auto window = showWindowWith(outer);
  window->makeFirstResponder(inner.get());
  outer->removeFromSuperview();
  EXPECT_EQ(window->firstResponder(), window.get());
}

// Keys.

TEST_F(NSWindowTest, KeysGoToTheFirstResponder) {
  const auto v = keyView();
  const auto window = showWindowWith(v);
  window->makeFirstResponder(v.get());
  v->calls.clear();
  user.pressKey("a");
  EXPECT_THAT(v->calls, ElementsAre("keyEquivalent", "keyDown", "keyUp"));
}

TEST_F(NSWindowTest, AKeyEquivalentGoesDownTheTreeBeforeTheKey) {
  const auto outer = view({0, 0, 50, 50}), inner = view({0, 0, 10, 10}), first = keyView();
  outer->addSubview(inner);
  const auto window = showWindowWith(outer);
  window->contentView()->addSubview(first);
  window->makeFirstResponder(first.get());
  inner->takesKeyEquivalents = true;
  outer->calls.clear();
  inner->calls.clear();
  first->calls.clear();
  user.keyDown("x");
  EXPECT_THAT(outer->calls, ElementsAre("keyEquivalent"));
  EXPECT_THAT(inner->calls, ElementsAre("keyEquivalent"));
  EXPECT_THAT(first->calls, IsEmpty());
}

TEST_F(NSWindowTest, AHiddenViewTakesNoKeyEquivalent) {
  const auto v = view({0, 0, 50, 50});
  const auto window = showWindowWith(v);
  v->takesKeyEquivalents = true;
  v->setHidden(true);
  v->calls.clear();
  user.keyDown("x");
  EXPECT_THAT(v->calls, IsEmpty());
}

TEST_F(NSWindowTest, TheKeyViewLoopGoesThroughTheTreeInItsOrder) {
  const auto a = keyView(), group = view({0, 0, 50, 50}), b = keyView(), skipped = view({}), c = keyView();
  group->addSubview(b);
  group->addSubview(skipped);
  const auto window = showWindow();
  for (const auto& v : {a, group, c}) window->contentView()->addSubview(v);
  std::vector<NSResponder*> stops;
  while (window->selectNextKeyView()) stops.push_back(window->firstResponder());
  EXPECT_THAT(stops, ElementsAre(a.get(), b.get(), c.get()));
  EXPECT_TRUE(window->selectPreviousKeyView());
  EXPECT_EQ(window->firstResponder(), b.get());
}

TEST_F(NSWindowTest, TabGoesAlongTheKeyViewsAndRoundAtTheEnds) {
  const auto a = passingKeyView(), b = passingKeyView();
  const auto window = showWindow();
  window->contentView()->addSubview(a);
  window->contentView()->addSubview(b);
  const auto afterKey = [&](std::string_view character, std::uint32_t modifiers = 0) {
    user.pressKey(std::string(character), modifiers);
    return window->firstResponder();
  };
  EXPECT_EQ(afterKey(NSTabCharacter), a.get());
  EXPECT_EQ(afterKey(NSTabCharacter), b.get());
  EXPECT_EQ(afterKey(NSTabCharacter), a.get());
  EXPECT_EQ(afterKey(NSBackTabCharacter, NSEventModifierFlagShift), b.get());
  EXPECT_EQ(afterKey(NSTabCharacter, NSEventModifierFlagShift), a.get());
  EXPECT_EQ(afterKey(NSTabCharacter, NSEventModifierFlagControl), a.get());
}

TEST_F(NSWindowTest, AKeyOrAScrollThatNobodyTakesIsReportedToTheDesktop) {
  const auto window = showWindow();
  user.pressKey("a");
  user.scroll(*window, {10, 10}, {0, 1});
  EXPECT_EQ(nativeOf(*window).eventsNotTaken(), 2);
  user.pressKey(std::string(NSTabCharacter));
  EXPECT_EQ(nativeOf(*window).eventsNotTaken(), 2);
}

TEST_F(NSWindowTest, AKeyOrAScrollThatAViewTakesIsNotReportedToTheDesktop) {
  const auto v = keyView();
  const auto window = showWindowWith(v);
  window->makeFirstResponder(v.get());
  user.pressKey("a");
  user.scroll(*window, {5, 5}, {0, 1});
  EXPECT_EQ(nativeOf(*window).eventsNotTaken(), 0);
}

TEST_F(NSWindowTest, BackwardsTheKeyViewLoopBeginsAtTheEnd) {
  const auto a = keyView(), b = keyView();
  const auto window = showWindow();
  window->contentView()->addSubview(a);
  window->contentView()->addSubview(b);
  EXPECT_TRUE(window->selectPreviousKeyView());
  EXPECT_EQ(window->firstResponder(), b.get());
  EXPECT_TRUE(window->selectPreviousKeyView());
  EXPECT_FALSE(window->selectPreviousKeyView());
}

TEST_F(NSWindowTest, TheKeyViewLoopPassesHiddenViewsAndThoseThatRefuse) {
  const auto hidden = keyView(), group = view({}), inGroup = keyView(), refuses = keyView(), last = keyView();
  const auto window = showWindow();
  group->addSubview(inGroup);
  group->setHidden(true);
  hidden->setHidden(true);
  refuses->refusesToBecome = true;
  for (const auto& v : {hidden, group, refuses, last}) window->contentView()->addSubview(v);
  EXPECT_TRUE(window->selectNextKeyView());
  EXPECT_EQ(window->firstResponder(), last.get());
}
