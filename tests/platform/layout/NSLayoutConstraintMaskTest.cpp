// Views that hold their frames, by their masks, among those that constraints place.
#include <gmock/gmock.h>

#include "tests/platform/layout/ConstraintsWorld.h"

using namespace tessaluna::platform;
using testing::IsEmpty;

namespace {

using NSLayoutConstraintTest = ConstraintsWorld;

// A view of 100 points that a constraint can make wider, and a frame in it.
struct NSLayoutConstraintMaskTest : NSLayoutConstraintTest {
  NSLayoutConstraintMaskTest() {
    placeAt(view, 0, 0);
    size(view, height, 100);
    window->layoutIfNeeded();
    equal(other, top, content, 0);
  }
  void widen() {
    wide->setConstant(150);
    window->layoutIfNeeded();
  }
  Ref<NSView> addFrame(CGRect frame, std::uint32_t mask) {
    const auto framed = make<NSView>(frame);
    framed->setAutoresizingMask(mask);
    view->addSubview(framed);
    constrain(other, left, NSLayoutRelationEqual, framed, right, 0);
    window->layoutIfNeeded();
    return framed;
  }
  Ref<NSLayoutConstraint> wide = size(view, width, 100);
};

}  // namespace

TEST_F(NSLayoutConstraintTest, AViewThatTranslatesItsMaskHoldsItsFrame) {
  const auto framed = make<NSView>(CGRect{20, 30, 40, 50});
  content->addSubview(framed);
  constrain(view, left, NSLayoutRelationEqual, framed, right, 8);
  constrain(view, top, NSLayoutRelationEqual, framed, top, 0);
  size(view, width, 10);
  size(view, height, 10);
  EXPECT_EQ(laidOut(view), (CGRect{68, 70, 10, 10}));
  framed->setFrame({0, 0, 50, 50});
  EXPECT_EQ(laidOut(view), (CGRect{58, 40, 10, 10}));
  EXPECT_EQ(framed->frame(), (CGRect{0, 0, 50, 50}));
}

TEST_F(NSLayoutConstraintTest, AViewMayStopAndBeginAgainToHoldItsFrame) {
  const auto framed = make<NSView>(CGRect{20, 30, 40, 50});
  content->addSubview(framed);
  constrain(view, left, NSLayoutRelationEqual, framed, right, 0);
  EXPECT_EQ(laidOut(view).origin.x, 60);
  framed->setTranslatesAutoresizingMaskIntoConstraints(false);
  placeAt(framed, 5, 0);
  const auto wide = size(framed, width, 7);
  EXPECT_EQ(laidOut(view).origin.x, 12);
  EXPECT_EQ(framed->frame(), (CGRect{5, 150, 7, 0}));
  framed->removeConstraint(wide);
  content->removeConstraints(content->constraints());
  framed->setFrame({20, 30, 40, 50});
  framed->setTranslatesAutoresizingMaskIntoConstraints(true);
  constrain(view, left, NSLayoutRelationEqual, framed, right, 3);
  EXPECT_EQ(laidOut(view).origin.x, 63);
  EXPECT_EQ(framed->frame(), (CGRect{20, 30, 40, 50}));
  EXPECT_THAT(conflicts, IsEmpty());
}

TEST_F(NSLayoutConstraintTest, MasksCountAsConstraints) {
  const auto wide = make<NSView>(CGRect{10, 0, 100, 50});
  wide->setAutoresizingMask(NSViewWidthSizable | NSViewMinYMargin);
  content->addSubview(wide);
  constrain(view, width, NSLayoutRelationEqual, wide, width, 0);
  constrain(view, top, NSLayoutRelationEqual, wide, bottom, 0);
  equal(view, left, content, 0);
  size(view, height, 10);
  EXPECT_EQ(laidOut(view), (CGRect{0, -10, 100, 10}));
  window->setFrame({100, 100, 300, 250}, false);
  EXPECT_EQ(laidOut(wide), (CGRect{10, 100, 200, 50}));
  EXPECT_EQ(view->frame(), (CGRect{0, 90, 200, 10}));
}

TEST_F(NSLayoutConstraintMaskTest, ConstraintsKnowHowAFrameFollows) {
  const struct {
    CGRect frame;
    std::uint32_t mask;
    CGRect expected;
  } cases[] = {{{10, 10, 20, 20}, NSViewNotSizable, {10, 10, 20, 20}},
               {{10, 10, 20, 20}, NSViewWidthSizable, {10, 10, 70, 20}},
               {{10, 10, 20, 20}, NSViewMinXMargin, {60, 10, 20, 20}},
               {{10, 10, 20, 20}, NSViewMaxXMargin, {10, 10, 20, 20}},
               {{10, 10, 40, 20}, NSViewMinXMargin | NSViewWidthSizable, {20, 10, 80, 20}},
               {{0, 0, 0, 0}, NSViewMinXMargin | NSViewWidthSizable, {25, 0, 25, 0}}};
  for (const auto& each : cases) {
    const auto framed = addFrame(each.frame, each.mask);
    widen();
    EXPECT_EQ(framed->frame(), each.expected);
    EXPECT_EQ(other->frame().origin.x, CGRectGetMaxX(each.expected));
    framed->removeFromSuperview();
    wide->setConstant(100);
    window->layoutIfNeeded();
  }
}

TEST_F(NSLayoutConstraintMaskTest, WhatIsNotPassedOnIsNotFollowed) {
  view->setAutoresizesSubviews(false);
  const auto framed = addFrame({10, 10, 20, 20}, NSViewWidthSizable);
  widen();
  EXPECT_EQ(framed->frame(), (CGRect{10, 10, 20, 20}));
  EXPECT_EQ(other->frame().origin.x, 30);
}

TEST_F(NSLayoutConstraintMaskTest, AMaskThatChangesAfterALayoutIsFollowedFromThenOn) {
  const auto framed = addFrame({10, 10, 20, 20}, NSViewNotSizable);
  framed->setAutoresizingMask(NSViewWidthSizable);
  widen();
  EXPECT_EQ(framed->frame(), (CGRect{10, 10, 70, 20}));
  EXPECT_EQ(other->frame().origin.x, 80);
  framed->setAutoresizingMask(NSViewMinXMargin);
  wide->setConstant(100);
  window->layoutIfNeeded();
  EXPECT_EQ(framed->frame(), (CGRect{-40, 10, 70, 20}));
  EXPECT_EQ(other->frame().origin.x, 30);
}

TEST_F(NSLayoutConstraintMaskTest, AChangedMaskAloneDecidesAgain) {
  wide->setActive(false);
  const auto framed = addFrame({10, 10, 20, 20}, NSViewWidthSizable);
  size(framed, width, 50);
  EXPECT_EQ(laidOut(view).size.width, 130);
  framed->setAutoresizingMask(NSViewNotSizable);
  EXPECT_EQ(laidOut(view).size.width, 0);
  EXPECT_EQ(framed->frame(), (CGRect{10, 10, 50, 20}));
}

TEST_F(NSLayoutConstraintMaskTest, WhatIsNoLongerPassedOnIsNoLongerFollowed) {
  const auto framed = addFrame({10, 10, 20, 20}, NSViewWidthSizable);
  view->setAutoresizesSubviews(false);
  widen();
  EXPECT_EQ(framed->frame(), (CGRect{10, 10, 20, 20}));
  EXPECT_EQ(other->frame().origin.x, 30);
  view->setAutoresizesSubviews(true);
  wide->setConstant(160);
  window->layoutIfNeeded();
  EXPECT_EQ(other->frame().origin.x, 40);
}

TEST_F(NSLayoutConstraintMaskTest, AFrameInAFlippedViewIsMeasuredFromTheTop) {
  view->flipped = true;
  const auto framed = addFrame({10, 5, 20, 30}, NSViewNotSizable);
  const auto below = addView(view);
  constrain(below, top, NSLayoutRelationEqual, framed, bottom, 2);
  EXPECT_EQ(laidOut(below).origin.y, 37);
}
