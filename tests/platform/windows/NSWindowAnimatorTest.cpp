// Windows that move over time, by their animator and by setFrame:display:animate:.
#include "tessaluna/platform/windows/NSWindowAnimator.h"

#include "tessaluna/platform/time/CAMediaTimingFunction.h"
#include "tessaluna/platform/time/NSAnimationContext.h"
#include "tests/harness/StillWorld.h"
#include "tests/harness/printing.h"

using namespace tessaluna::platform;

namespace {

class NSWindowAnimatorTest : public harness::StillWorld {
 protected:
  static constexpr CGRect small{100, 100, 200, 150}, large{100, 50, 400, 250};
  Ref<NSWindow> window = showWindow(small);
};

}  // namespace

TEST_F(NSWindowAnimatorTest, AnAnimatedFrameReturnsAtOnceAndIsThereAfterAFifthOfASecond) {
  window->setFrame(large, true, true);
  EXPECT_EQ(window->frame(), small);
  desktop.advance(0.1);
  EXPECT_NEAR(window->frame().size.width, 300, 1e-6);
  EXPECT_NEAR(nativeOf(*window).frame().size.width, 300, 1e-6);
  desktop.advance(0.09);
  EXPECT_LT(window->frame().size.width, 400);
  desktop.advance(0.01);
  EXPECT_EQ(window->frame(), large);
  EXPECT_EQ(nativeOf(*window).frame(), large);
}

TEST_F(NSWindowAnimatorTest, EachStepIsPainted) {
  nativeOf(*window).forgetPaints();
  window->setFrame(large, true, true);
  desktop.advance(0.05);
  EXPECT_EQ(nativeOf(*window).paints().size(), 5u);
}

TEST_F(NSWindowAnimatorTest, NotAnimatedItMovesAtOnce) {
  window->setFrame(large, true, false);
  EXPECT_EQ(window->frame(), large);
}

TEST_F(NSWindowAnimatorTest, AWindowThatDoesNotShowMovesAtOnce) {
  window->orderOut(nullptr);
  window->setFrame(large, true, true);
  EXPECT_EQ(window->frame(), large);
}

TEST_F(NSWindowAnimatorTest, WithLessMotionItMovesAtOnce) {
  desktop.setPrefersReducedMotion(true);
  window->setFrame(large, true, true);
  EXPECT_EQ(window->frame(), large);
}

TEST_F(NSWindowAnimatorTest, ALaterAnimatedFrameTakesOverFromWhereTheFirstHasGotTo) {
  window->setFrame(large, true, true);
  desktop.advance(0.1);
  window->setFrame(small, true, true);
  EXPECT_NEAR(window->frame().size.width, 300, 1e-6);
  desktop.advance(0.1);
  EXPECT_NEAR(window->frame().size.width, 250, 1e-6);
  desktop.advance(0.1);
  EXPECT_EQ(window->frame(), small);
  desktop.advance(1);
  EXPECT_EQ(window->frame(), small);
}

TEST_F(NSWindowAnimatorTest, ALaterFrameEndsTheMove) {
  window->setFrame(large, true, true);
  desktop.advance(0.1);
  window->setFrame({0, 0, 50, 50}, true);
  desktop.advance(1);
  EXPECT_EQ(window->frame(), (CGRect{0, 0, 50, 50}));
}

TEST_F(NSWindowAnimatorTest, TheAnimatorTakesTheGroupsDurationAndTimingFunction) {
  bool isDone = false;
  NSAnimationContext::runAnimationGroup(
      [&](NSAnimationContext& context) {
        context.setDuration(0.4);
        context.setTimingFunction(CAMediaTimingFunction::functionWithName(kCAMediaTimingFunctionLinear));
        window->animator()->setFrame(large, true);
      },
      [&] { isDone = true; });
  desktop.advance(0.1);
  EXPECT_NEAR(window->frame().size.width, 250, 1e-6);
  desktop.advance(0.29);
  EXPECT_FALSE(isDone);
  desktop.advance(0.01);
  EXPECT_EQ(window->frame(), large);
  EXPECT_TRUE(isDone);
}

TEST_F(NSWindowAnimatorTest, AGroupHasNoPartInAnAnimatedFrame) {
  bool isDone = false;
  NSAnimationContext::runAnimationGroup(
      [&](NSAnimationContext& context) {
        context.setDuration(5);
        window->setFrame(large, true, true);
      },
      [&] { isDone = true; });
  desktop.settle();
  EXPECT_TRUE(isDone);
  desktop.advance(0.2);
  EXPECT_EQ(window->frame(), large);
}

TEST_F(NSWindowAnimatorTest, AWindowMayBeReleasedMeanwhile) {
  window->setFrame(large, true, true);
  desktop.advance(0.1);
  const WeakRef<NSWindow> weak = window;
  window->close();
  window = nullptr;
  EXPECT_TRUE(weak.expired());
  desktop.advance(1);
}

TEST_F(NSWindowAnimatorTest, AClassSaysHowLongItTakes) {
  class SlowWindow : public NSWindow {
   public:
    using NSWindow::NSWindow;
    double animationResizeTime(CGRect) const override { return 1; }
  };
  const auto slow = make<SlowWindow>(small, NSWindowStyleMaskTitled, NSBackingStoreBuffered, true);
  slow->orderFront(nullptr);
  slow->setFrame(large, true, true);
  desktop.advance(0.5);
  EXPECT_NEAR(slow->frame().size.width, 300, 1e-6);
  desktop.advance(0.5);
  EXPECT_EQ(slow->frame(), large);
}
