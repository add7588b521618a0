// A virtual window has a frame every hundredth of a second.
#include "tessaluna/platform/views/NSViewAnimator.h"

#include <stdexcept>
#include <utility>

#include "tessaluna/platform/layout/NSLayoutConstraint.h"
#include "tessaluna/platform/time/CAMediaTimingFunction.h"
#include "tessaluna/platform/time/NSAnimationContext.h"
#include "tests/harness/StillWorld.h"
#include "tests/harness/printing.h"

using namespace tessaluna::platform;

namespace {

// Throws at the next frame that it is given.
class ThrowingView : public NSView {
 public:
  using NSView::NSView;
  bool throwsNext = false;
  void setFrame(CGRect frame) override {
    if (std::exchange(throwsNext, false)) throw std::runtime_error("setFrame");
    NSView::setFrame(frame);
  }
};

// A view of 10 by 10 in a window.
class NSViewAnimatorTest : public harness::StillWorld {
 protected:
  NSViewAnimatorTest() { window = showWindowWith(view); }
  void grow(double seconds = 0.1) {
    NSAnimationContext::runAnimationGroup(
        [&](NSAnimationContext& context) {
          context.setTimingFunction(CAMediaTimingFunction::functionWithName(kCAMediaTimingFunctionLinear));
          context.setDuration(seconds);
          view->animator()->setFrame({0, 0, 110, 10});
        },
        [this] { isGrown = true; });
  }
  bool isGrown = false;
  Ref<NSView> view = make<NSView>(CGRect{0, 0, 10, 10});
  Ref<NSWindow> window;
};

}  // namespace

TEST_F(NSViewAnimatorTest, AFrameMovesWithTheFramesOfTheWindow) {
  grow();
  EXPECT_EQ(view->frame().size.width, 10);
  for (int frame = 1; frame <= 10; ++frame) {
    desktop.advance(0.01);
    EXPECT_NEAR(view->frame().size.width, 10 + 10 * frame, 1e-6);
  }
  EXPECT_TRUE(isGrown);
}

TEST_F(NSViewAnimatorTest, EachFrameIsPaintedOnce) {
  grow();
  desktop.advance(0.05);
  EXPECT_EQ(nativeOf(*window).paints().size(), 5u);
}

TEST_F(NSViewAnimatorTest, AFrameThatIsSetDirectlyMeanwhileStays) {
  grow();
  desktop.advance(0.05);
  view->setFrameOrigin({7, 0});
  desktop.settle();
  EXPECT_TRUE(isGrown);
  desktop.advance(1);
  EXPECT_NEAR(view->frame().size.width, 60, 1e-6);
  EXPECT_EQ(view->frame().origin, (CGPoint{7, 0}));
}

TEST_F(NSViewAnimatorTest, TheFrameThatTheViewHasAlreadyStopsIt) {
  grow();
  desktop.advance(0.05);
  view->setFrame(view->frame());
  desktop.advance(1);
  EXPECT_NEAR(view->frame().size.width, 60, 1e-6);
}

TEST_F(NSViewAnimatorTest, AWindowThatIsResizedMeanwhileStopsNothing) {
  const auto inner = make<NSView>(CGRect{0, 0, 10, 10});
  inner->setAutoresizingMask(NSViewWidthSizable);
  view->addSubview(inner);
  NSAnimationContext::runAnimationGroup([&](NSAnimationContext&) { inner->animator()->setFrame({0, 0, 50, 10}); });
  desktop.advance(0.05);
  view->setFrameSize({200, 10});
  desktop.advance(1);
  EXPECT_EQ(inner->frame().size.width, 50);
}

TEST_F(NSViewAnimatorTest, ConstraintsThatPlaceTheViewStopNothing) {
  const auto inner = make<NSView>(CGRect{0, 0, 10, 10});
  inner->setTranslatesAutoresizingMaskIntoConstraints(false);
  view->addSubview(inner);
  for (const auto attribute : {NSLayoutAttributeWidth, NSLayoutAttributeHeight})
    NSLayoutConstraint::constraintWithItem(inner, attribute, NSLayoutRelationEqual, nullptr, NSLayoutAttributeNotAnAttribute,
                                           1, 10)
        ->setActive(true);
  desktop.settle();
  NSAnimationContext::runAnimationGroup(
      [&](NSAnimationContext& context) {
        context.setDuration(0.1);
        inner->animator()->setFrame({0, 0, 50, 10});
      },
      [this] { isGrown = true; });
  desktop.advance(0.05);
  EXPECT_FALSE(isGrown);
  desktop.advance(0.1);
  EXPECT_TRUE(isGrown);
  EXPECT_EQ(inner->frame().size.width, 10);
}

TEST_F(NSViewAnimatorTest, AfterAStepThatThrowsAFrameThatIsSetDirectlyStays) {
  const auto inner = make<ThrowingView>(CGRect{0, 0, 10, 10});
  view->addSubview(inner);
  inner->animator()->setFrame({0, 0, 50, 10});
  inner->throwsNext = true;
  EXPECT_THROW(desktop.advance(0.01), std::runtime_error);
  inner->setFrame({0, 0, 7, 10});
  desktop.advance(1);
  EXPECT_EQ(inner->frame().size.width, 7);
}

TEST_F(NSViewAnimatorTest, AfterAResizeThatThrowsAFrameThatIsSetDirectlyStays) {
  const auto inner = make<ThrowingView>(CGRect{0, 0, 10, 10});
  inner->setAutoresizingMask(NSViewWidthSizable);
  view->addSubview(inner);
  inner->throwsNext = true;
  EXPECT_THROW(view->setFrameSize({20, 10}), std::runtime_error);
  inner->animator()->setFrame({0, 0, 50, 10});
  inner->setFrame({0, 0, 7, 10});
  desktop.advance(1);
  EXPECT_EQ(inner->frame().size.width, 7);
}

TEST_F(NSViewAnimatorTest, AViewThatLeavesItsWindowMovesOn) {
  grow();
  desktop.advance(0.05);
  view->removeFromSuperview();
  desktop.advance(0.05);
  EXPECT_EQ(view->frame().size.width, 110);
  EXPECT_TRUE(isGrown);
}

TEST_F(NSViewAnimatorTest, InAHiddenWindowItEndsInTimeToo) {
  grow();
  desktop.advance(0.05);
  window->orderOut(nullptr);
  desktop.advance(0.05);
  EXPECT_EQ(view->frame().size.width, 110);
  EXPECT_TRUE(isGrown);
}

TEST_F(NSViewAnimatorTest, AViewMayBeReleasedMeanwhile) {
  grow();
  desktop.advance(0.05);
  const WeakRef<NSView> weak = view;
  view->removeFromSuperview();
  view = nullptr;
  EXPECT_TRUE(weak.expired());
  desktop.advance(0.05);
  EXPECT_TRUE(isGrown);
}

TEST_F(NSViewAnimatorTest, AWindowMayBeReleasedMeanwhile) {
  grow();
  desktop.advance(0.05);
  window->close();
  window->setContentView(nullptr);
  window = nullptr;
  desktop.advance(0.05);
  EXPECT_EQ(view->frame().size.width, 110);
}

TEST_F(NSViewAnimatorTest, TheOriginOfTheBoundsScrollsOverTime) {
  NSAnimationContext::runAnimationGroup([&](NSAnimationContext& context) {
    context.setTimingFunction(CAMediaTimingFunction::functionWithName(kCAMediaTimingFunctionLinear));
    context.setDuration(0.1);
    view->animator()->setBoundsOrigin({0, 50});
  });
  desktop.advance(0.05);
  EXPECT_NEAR(view->bounds().origin.y, 25, 1e-6);
  desktop.advance(0.05);
  EXPECT_EQ(view->bounds().origin, (CGPoint{0, 50}));
}

TEST_F(NSViewAnimatorTest, AnOriginOfTheBoundsThatIsSetDirectlyMeanwhileStays) {
  view->animator()->setBoundsOrigin({0, 50});
  desktop.advance(0.05);
  view->setBoundsOrigin({0, 3});
  desktop.advance(1);
  EXPECT_EQ(view->bounds().origin, (CGPoint{0, 3}));
}
