#include "tessaluna/platform/windows/NSWindow.h"

#include <gmock/gmock.h>

#include <cmath>
#include <functional>
#include <limits>
#include <stdexcept>

#include "tessaluna/platform/graphics/NSBezierPath.h"
#include "tessaluna/platform/graphics/NSColor.h"
#include "tessaluna/platform/windows/NSWindowDelegate.h"
#include "tessaluna/platform/windows/NSWindowOcclusion.h"
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

Ref<NSWindow> unshownWindow(std::uint32_t style = NSWindowStyleMaskTitled) {
  return make<NSWindow>(CGRect{100, 100, 200, 150}, style, NSBackingStoreBuffered, true);
}

// Does what a test says when its window asks it for something.
class AnsweringView : public NSView {
 public:
  using NSView::NSView;
  std::function<void()> onLayout, onCome, onLeave, onFrame, onCursorRects;
  void setFrame(CGRect frame) override {
    NSView::setFrame(frame);
    if (onFrame) onFrame();
  }
  void layout() override {
    NSView::layout();
    if (window() && onLayout) onLayout();
  }
  void viewDidMoveToWindow() override {
    if (window() && onCome) onCome();
    if (!window() && onLeave) onLeave();
  }
  void resetCursorRects() override {
    if (onCursorRects) onCursorRects();
  }
};

class ClosingDelegate : public NSObject, public NSWindowDelegate {
 public:
  void windowWillClose(const Ref<NSNotification>& notification) override {
    ++closes;
    std::static_pointer_cast<NSWindow>(notification->object())->close();
  }
  int closes = 0;
};

class AskedDelegate : public NSObject, public NSWindowDelegate {
 public:
  bool windowShouldClose(NSWindow& sender) override {
    asking.push_back(&sender);
    return agrees;
  }
  bool agrees = false;
  std::vector<NSWindow*> asking;
};

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

TEST_F(NSWindowTest, TheDelegateMayRefuseTheUsersClose) {
  const auto window = showWindow();
  const auto delegate = make<AskedDelegate>();
  window->setDelegate(delegate);
  nativeOf(*window).closeByUser();
  EXPECT_TRUE(window->isVisible());
  EXPECT_THAT(delegate->asking, ElementsAre(window.get()));
  delegate->agrees = true;
  nativeOf(*window).closeByUser();
  EXPECT_FALSE(window->isVisible());
}

TEST_F(NSWindowTest, PerformCloseAsksTheDelegate) {
  const auto window = unshownWindow(NSWindowStyleMaskTitled | NSWindowStyleMaskClosable);
  const auto delegate = make<AskedDelegate>();
  window->setDelegate(delegate);
  window->orderFront(nullptr);
  EXPECT_TRUE(NSApp->sendAction("performClose:", window.get(), nullptr));
  EXPECT_TRUE(window->isVisible());
  delegate->agrees = true;
  window->performClose(nullptr);
  EXPECT_FALSE(window->isVisible());
  EXPECT_EQ(delegate->asking.size(), 2u);
}

TEST_F(NSWindowTest, PerformCloseDoesNothingToAWindowThatItsUserCannotClose) {
  const auto window = unshownWindow();
  window->orderFront(nullptr);
  window->performClose(nullptr);
  EXPECT_TRUE(window->isVisible());
}

TEST_F(NSWindowTest, CloseAsksNobody) {
  const auto window = showWindow();
  const auto delegate = make<AskedDelegate>();
  window->setDelegate(delegate);
  window->close();
  EXPECT_FALSE(window->isVisible());
  EXPECT_THAT(delegate->asking, IsEmpty());
}

TEST_F(NSWindowTest, ADelegateThatIsAskedMayLetTheWindowGo) {
  class Releasing : public NSObject, public NSWindowDelegate {
   public:
    bool windowShouldClose(NSWindow&) override { return window = nullptr, true; }
    Ref<NSWindow> window;
  };
  const auto delegate = make<Releasing>();
  delegate->window = showWindow();
  delegate->window->setDelegate(delegate);
  nativeOf(*delegate->window).closeByUser();
  EXPECT_THAT(NSApp->windows(), IsEmpty());
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

TEST_F(NSWindowTest, AtASizeThatShowsNothingNothingIsPainted) {
  const auto window = showWindow();
  for (const double height : {-50.0, std::numeric_limits<double>::infinity()}) {
    nativeOf(*window).forgetPaints();
    window->setFrame({100, 100, 200, height}, true);
    window->contentView()->setNeedsDisplay(true);
    desktop.settle();
    EXPECT_THAT(nativeOf(*window).paints(), IsEmpty()) << height;
  }
  window->setFrame({100, 100, 200, 150}, true);
  ASSERT_EQ(nativeOf(*window).paints().size(), 1u);
  EXPECT_THAT(nativeOf(*window).paints()[0].dirty, ElementsAre(CGRect{0, 0, 200, 150}));
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

// Callbacks that change what the window is about to do.

TEST_F(NSWindowTest, OneThatALayoutHidesAsItAppearsStaysHiddenWithItsChildren) {
  const auto window = unshownWindow(), child = unshownWindow();
  const auto content = make<AnsweringView>(CGRect{0, 0, 200, 150});
  window->setContentView(content);
  window->addChildWindow(child, NSWindowAbove);
  content->onLayout = [&] { window->orderOut(nullptr); };
  window->makeKeyAndOrderFront(nullptr);
  EXPECT_FALSE(window->isVisible());
  EXPECT_FALSE(nativeOf(*window).isVisible());
  EXPECT_FALSE(window->isKeyWindow());
  EXPECT_FALSE(child->isVisible());
}

TEST_F(NSWindowTest, OneThatAnObserverHidesAsItAppearsStaysHiddenWithItsChildren) {
  const auto window = unshownWindow(), child = unshownWindow();
  window->addChildWindow(child, NSWindowAbove);
  const auto token = NSNotificationCenter::defaultCenter().addObserverForName(
      NSWindowDidChangeOcclusionStateNotification, window, nullptr, [](const Ref<NSNotification>& notification) {
        const auto appeared = std::static_pointer_cast<NSWindow>(notification->object());
        if (appeared->isVisible()) appeared->orderOut(nullptr);
      });
  window->makeKeyAndOrderFront(nullptr);
  NSNotificationCenter::defaultCenter().removeObserver(token);
  EXPECT_FALSE(window->isVisible());
  EXPECT_FALSE(window->isKeyWindow());
  EXPECT_FALSE(child->isVisible());
}

TEST_F(NSWindowTest, ADelegateThatClosesTheClosingWindowIsNotifiedOnce) {
  const auto window = showWindow();
  const auto delegate = make<ClosingDelegate>();
  window->setDelegate(delegate);
  window->close();
  EXPECT_EQ(delegate->closes, 1);
  EXPECT_FALSE(window->isVisible());
  window->close();
  EXPECT_EQ(delegate->closes, 2);
}

TEST_F(NSWindowTest, AContentViewMayTakeItselfOutAsItComesIn) {
  const auto window = showWindow();
  const auto content = make<AnsweringView>(CGRect{0, 0, 200, 150});
  content->onCome = [&] { content->removeFromSuperview(); };
  window->setContentView(content);
  EXPECT_EQ(window->contentView(), nullptr);
  EXPECT_EQ(content->window(), nullptr);
}

TEST_F(NSWindowTest, AContentViewMayBeReplacedAsItIsFittedIntoTheWindow) {
  const auto window = showWindow();
  const auto content = make<AnsweringView>(NSZeroRect), other = make<AnsweringView>(NSZeroRect);
  content->onFrame = [&] { window->setContentView(other); };
  window->setContentView(content);
  EXPECT_EQ(window->contentView(), other);
  EXPECT_EQ(other->window(), window.get());
  EXPECT_EQ(content->window(), nullptr);
}

TEST_F(NSWindowTest, AContentViewMayBeReplacedAsItLeavesItsEarlierWindow) {
  const auto window = showWindow(), earlier = showWindow();
  const auto content = make<AnsweringView>(NSZeroRect), other = make<AnsweringView>(NSZeroRect);
  earlier->contentView()->addSubview(content);
  content->onLeave = [&] { window->setContentView(other); };
  window->setContentView(content);
  EXPECT_EQ(window->contentView(), other);
  EXPECT_EQ(other->window(), window.get());
  EXPECT_EQ(content->window(), nullptr);
  EXPECT_EQ(content->frame(), NSZeroRect);
}

TEST_F(NSWindowTest, AfterAViewHasThrownItsCursorRectanglesAreAskedForAgain) {
  const auto content = make<AnsweringView>(CGRect{0, 0, 200, 150});
  const auto window = showWindowWith(content);
  int asked = 0;
  content->onCursorRects = [&] {
    if (++asked == 1) throw std::runtime_error("refused");
  };
  EXPECT_THROW(window->resetCursorRects(), std::runtime_error);
  window->resetCursorRects();
  EXPECT_EQ(asked, 2);
}

TEST_F(NSWindowTest, AContentViewMayBeTakenOutAsItIsResized) {
  const auto window = showWindow();
  window->setContentView(make<AnsweringView>(NSZeroRect));
  const WeakRef<NSView> weak = window->contentView();
  bool livesAfterRelease = false;
  static_cast<AnsweringView&>(*window->contentView()).onFrame = [&] {
    window->setContentView(nullptr);
    livesAfterRelease = !weak.expired();
  };
  window->setFrame({100, 100, 300, 200}, false);
  EXPECT_EQ(window->contentView(), nullptr);
  EXPECT_TRUE(livesAfterRelease);
  EXPECT_TRUE(weak.expired());
}

TEST_F(NSWindowTest, AContentViewMayBeTakenOutAsItIsAskedForItsCursorRectangles) {
  const auto window = showWindow();
  window->setContentView(make<AnsweringView>(NSZeroRect));
  const WeakRef<NSView> weak = window->contentView();
  bool livesAfterRelease = false;
  static_cast<AnsweringView&>(*window->contentView()).onCursorRects = [&] {
    window->setContentView(nullptr);
    livesAfterRelease = !weak.expired();
  };
  window->resetCursorRects();
  EXPECT_TRUE(livesAfterRelease);
  EXPECT_TRUE(weak.expired());
}
