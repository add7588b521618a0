// Where constraints put views, and when.
#include "tessaluna/platform/layout/NSLayoutConstraint.h"

#include <gmock/gmock.h>

#include <cmath>

#include "tessaluna/platform/text/NSFont.h"
#include "tessaluna/platform/time/NSAnimationContext.h"
#include "tessaluna/platform/views/NSTextField.h"
#include "tessaluna/platform/windows/effectiveAppearance.h"
#include "tests/platform/layout/ConstraintsWorld.h"

using namespace tessaluna::platform;
using harness::ProbeView;
using testing::IsEmpty;

namespace {

using NSLayoutConstraintTest = ConstraintsWorld;

}  // namespace

TEST_F(NSLayoutConstraintTest, EdgesOfASuperviewThatCountsUpward) {
  equal(view, left, content, 10);
  equal(view, right, content, -20);
  equal(view, top, content, 5);
  equal(view, bottom, content, -15);
  EXPECT_EQ(laidOut(view), (CGRect{10, 15, 170, 130}));
}

TEST_F(NSLayoutConstraintTest, EdgesOfASuperviewThatCountsDownward) {
  const auto flipped = make<ProbeView>(CGRect{0, 0, 100, 100});
  flipped->flipped = true;
  content->addSubview(flipped);
  const auto inner = addView(flipped);
  placeAt(inner, 10, 5);
  size(inner, width, 20);
  size(inner, height, 30);
  EXPECT_EQ(laidOut(inner), (CGRect{10, 5, 20, 30}));
}

TEST_F(NSLayoutConstraintTest, CentersAndMultipliers) {
  equal(view, centerX, content, 0);
  equal(view, centerY, content, 10);
  constrain(view, width, NSLayoutRelationEqual, content, width, 0, 1000, 0.5);
  constrain(view, height, NSLayoutRelationEqual, view, width, -60);
  constrain(other, left, NSLayoutRelationEqual, content, centerX, 7);
  EXPECT_EQ(laidOut(view), (CGRect{50, 45, 100, 40}));
  EXPECT_EQ(other->frame().origin.x, 107);
}

TEST_F(NSLayoutConstraintTest, ViewsOfDifferentSuperviewsAreComparedInTheNearestOneAboveBoth) {
  placeAt(view, 30, 40);
  size(view, width, 100);
  size(view, height, 100);
  const auto inner = addView(view);
  placeAt(inner, 5, 6);
  size(inner, width, 10);
  size(inner, height, 10);
  constrain(other, left, NSLayoutRelationEqual, inner, right, 3);
  constrain(other, top, NSLayoutRelationEqual, inner, bottom, 4);
  size(other, width, 10);
  size(other, height, 10);
  EXPECT_EQ(laidOut(other), (CGRect{48, 80, 10, 10}));
}

TEST_F(NSLayoutConstraintTest, LeadingAndTrailingFollowTheDirectionOfTheText) {
  equal(view, leading, content, 10);
  constrain(view, trailing, NSLayoutRelationEqual, content, trailing, -150);
  equal(view, top, content, 0);
  size(view, height, 10);
  EXPECT_EQ(laidOut(view), (CGRect{10, 140, 40, 10}));
  view->setUserInterfaceLayoutDirection(NSUserInterfaceLayoutDirectionRightToLeft);
  EXPECT_EQ(laidOut(view), (CGRect{150, 140, 40, 10}));
}

TEST_F(NSLayoutConstraintTest, LeadingAndTrailingFollowADirectionOfTheApplicationThatChanges) {
  equal(view, leading, content, 10);
  size(view, width, 40);
  EXPECT_EQ(laidOut(view).origin.x, 10);
  desktop.setLayoutDirection(tessaluna::backend::LayoutDirection::RightToLeft);
  effectiveAppearanceDidChange();
  EXPECT_EQ(laidOut(view).origin.x, 150);
  desktop.setLayoutDirection(tessaluna::backend::LayoutDirection::LeftToRight);
  effectiveAppearanceDidChange();
  EXPECT_EQ(laidOut(view).origin.x, 10);
}

TEST_F(NSLayoutConstraintTest, ACenterFollowsTheDirectionOfTheTextWithAnEdgeThatDoes) {
  constrain(view, centerX, NSLayoutRelationEqual, content, leading, 20);
  size(view, width, 10);
  EXPECT_EQ(laidOut(view).origin.x, 15);
  view->setUserInterfaceLayoutDirection(NSUserInterfaceLayoutDirectionRightToLeft);
  EXPECT_EQ(laidOut(view).origin.x, 175);
}

TEST_F(NSLayoutConstraintTest, FromRightToLeftMultipliersCountFromTheRight) {
  for (const auto& each : {view, other}) {
    each->setUserInterfaceLayoutDirection(NSUserInterfaceLayoutDirectionRightToLeft);
    size(each, width, 10);
  }
  equal(other, leading, content, 40);
  constrain(view, leading, NSLayoutRelationEqual, other, leading, 0, 1000, 0.5);
  EXPECT_EQ(laidOut(view).origin.x, 200 - 20 - 10);
}

TEST_F(NSLayoutConstraintTest, AViewFromTheTopStaysThereWhenItsSuperviewBecomesHigher) {
  placeAt(view, 0, 0);
  const auto high = size(view, height, 50);
  const auto inner = addView(view);
  placeAt(inner, 0, 5);
  size(inner, height, 10);
  EXPECT_EQ(laidOut(inner).origin.y, 35);
  high->setConstant(80);
  EXPECT_EQ(laidOut(inner).origin.y, 65);
}

TEST_F(NSLayoutConstraintTest, TextsOfDifferentSizesAreOnOneBaseline) {
  const auto small = NSTextField::labelWithString("small"), large = NSTextField::labelWithString("large");
  large->setFont(NSFont::systemFontOfSize(26));
  for (const auto& label : {small, large}) {
    label->setTranslatesAutoresizingMaskIntoConstraints(false);
    content->addSubview(label);
    equal(label, left, content, 0);
  }
  equal(large, top, content, 0);
  constrain(small, NSLayoutAttributeFirstBaseline, NSLayoutRelationEqual, large, NSLayoutAttributeLastBaseline, 0);
  const CGRect small_ = laidOut(small), large_ = large->frame();
  const auto baseline = [](const CGRect& frame, const NSTextField& label) {
    return CGRectGetMaxY(frame) - label.firstBaselineOffsetFromTop();
  };
  EXPECT_NEAR(baseline(small_, *small), baseline(large_, *large), 1);
  EXPECT_GT(CGRectGetMaxY(large_) - CGRectGetMaxY(small_), 5);
  EXPECT_EQ(small_.size.width, std::ceil(small->intrinsicContentSize().width));
}

TEST_F(NSLayoutConstraintTest, ABaselineMovesWithTheFont) {
  const auto label = NSTextField::labelWithString("text");
  label->setTranslatesAutoresizingMaskIntoConstraints(false);
  content->addSubview(label);
  equal(label, left, content, 0);
  constrain(label, NSLayoutAttributeFirstBaseline, NSLayoutRelationEqual, content, top, 40);
  constrain(view, top, NSLayoutRelationEqual, label, NSLayoutAttributeLastBaseline, 0);
  const CGFloat before = CGRectGetMaxY(laidOut(label));
  EXPECT_NEAR(view->frame().origin.y, 110, 1);
  label->setFont(NSFont::systemFontOfSize(30));
  EXPECT_GT(CGRectGetMaxY(laidOut(label)), before + 10);
  EXPECT_NEAR(view->frame().origin.y, 110, 1);
}

TEST_F(NSLayoutConstraintTest, HuggingAndResistanceAreWishesAgainstEachOther) {
  for (const auto& one : {view, other}) {
    one->intrinsic = {50, 10};
    equal(one, top, content, 0);
  }
  equal(view, left, content, 0);
  constrain(other, left, NSLayoutRelationEqual, view, right, 0);
  equal(other, right, content, 0);
  view->setContentHuggingPriority(251, NSLayoutConstraintOrientationHorizontal);
  EXPECT_EQ(laidOut(view).size.width, 50);
  EXPECT_EQ(other->frame().size.width, 150);
  view->setContentHuggingPriority(249, NSLayoutConstraintOrientationHorizontal);
  EXPECT_EQ(laidOut(view).size.width, 150);
  view->intrinsic = other->intrinsic = {150, 10};
  view->setContentCompressionResistancePriority(751, NSLayoutConstraintOrientationHorizontal);
  view->invalidateIntrinsicContentSize();
  other->invalidateIntrinsicContentSize();
  EXPECT_EQ(laidOut(view).size.width, 150);
  EXPECT_EQ(other->frame().size.width, 50);
}

TEST_F(NSLayoutConstraintTest, AResistanceThatIsRaisedDecidesAgain) {
  for (const auto& one : {view, other}) {
    one->intrinsic = {150, 10};
    equal(one, top, content, 0);
  }
  equal(view, left, content, 0);
  constrain(other, left, NSLayoutRelationEqual, view, right, 0);
  equal(other, right, content, 0);
  window->layoutIfNeeded();
  other->setContentCompressionResistancePriority(751, NSLayoutConstraintOrientationHorizontal);
  EXPECT_EQ(laidOut(view).size.width, 50);
  view->setContentCompressionResistancePriority(752, NSLayoutConstraintOrientationHorizontal);
  EXPECT_EQ(laidOut(view).size.width, 150);
}

// Where several places do, one of them is taken, and the same one for as long as nothing else is said.
TEST_F(NSLayoutConstraintTest, WhatConstraintsLeaveOpenIsAtTheStartAndWithoutALength) {
  equal(view, top, content, 20);
  EXPECT_EQ(laidOut(view), (CGRect{0, 130, 0, 0}));
  const auto elsewhere = size(other, width, 30);
  elsewhere->setConstant(50);
  EXPECT_EQ(laidOut(view), (CGRect{0, 130, 0, 0}));
  size(view, height, 10);
  size(view, width, 40);
  EXPECT_EQ(laidOut(view), (CGRect{0, 120, 40, 10}));
}

TEST_F(NSLayoutConstraintTest, WhatIsLeftOpenBetweenBoundsIsWithinThem) {
  const auto atLeast =
      constrain(view, width, NSLayoutRelationGreaterThanOrEqual, nullptr, NSLayoutAttributeNotAnAttribute, 30);
  constrain(view, width, NSLayoutRelationLessThanOrEqual, nullptr, NSLayoutAttributeNotAnAttribute, 50);
  EXPECT_GE(laidOut(view).size.width, 30);
  EXPECT_LE(view->frame().size.width, 50);
  atLeast->setConstant(45);
  EXPECT_GE(laidOut(view).size.width, 45);
  EXPECT_LE(view->frame().size.width, 50);
}

TEST_F(NSLayoutConstraintTest, WhatHasAContentIsAsLargeAsThatWhereNothingElseIsSaid) {
  view->intrinsic = {40, 20};
  equal(view, left, content, 5);
  EXPECT_EQ(laidOut(view), (CGRect{5, 130, 40, 20}));
}

// When views are placed.

TEST_F(NSLayoutConstraintTest, ViewsWithoutConstraintsKeepTheirFrames) {
  const auto plain = make<NSView>(CGRect{1, 2, 3, 4});
  plain->setTranslatesAutoresizingMaskIntoConstraints(false);
  content->addSubview(plain);
  placeAt(view, 0, 0);
  EXPECT_EQ(laidOut(plain), (CGRect{1, 2, 3, 4}));
}

TEST_F(NSLayoutConstraintTest, ViewsFollowAWindowThatGrows) {
  equal(view, left, content, 10);
  equal(view, right, content, -10);
  equal(view, top, content, 10);
  size(view, height, 20);
  EXPECT_EQ(laidOut(view), (CGRect{10, 120, 180, 20}));
  window->setFrame({100, 100, 400, 300}, false);
  EXPECT_EQ(laidOut(view), (CGRect{10, 270, 380, 20}));
}

TEST_F(NSLayoutConstraintTest, AChangedConstantMovesTheViewWithTheNextPass) {
  placeAt(view, 0, 0);
  const auto high = size(view, height, 10);
  size(view, width, 10);
  EXPECT_EQ(laidOut(view).size.height, 10);
  high->setConstant(60);
  EXPECT_EQ(view->frame().size.height, 10);
  EXPECT_EQ(laidOut(view), (CGRect{0, 90, 10, 60}));
}

TEST_F(NSLayoutConstraintTest, AChangedPriorityDecidesAgain) {
  placeAt(view, 0, 0);
  const auto low = size(view, width, 10, 300), high = size(view, width, 90, 400);
  EXPECT_EQ(laidOut(view).size.width, 90);
  low->setPriority(500);
  EXPECT_EQ(laidOut(view).size.width, 10);
}

TEST_F(NSLayoutConstraintTest, AConstantTakesItsTimeThroughTheAnimator) {
  placeAt(view, 0, 0);
  const auto wide = size(view, width, 0);
  desktop.settle();
  NSAnimationContext::runAnimationGroup([&](NSAnimationContext& context) {
    context.setDuration(1);
    wide->animator()->setConstant(100);
  });
  desktop.advance(0.5);
  EXPECT_GT(view->frame().size.width, 20);
  EXPECT_LT(view->frame().size.width, 95);
  desktop.advance(0.6);
  EXPECT_EQ(view->frame().size.width, 100);
  EXPECT_EQ(wide->constant(), 100);
}

TEST_F(NSLayoutConstraintTest, AConstantThatIsSetDirectlyDuringAnAnimationStays) {
  placeAt(view, 0, 0);
  const auto wide = size(view, width, 0);
  desktop.settle();
  wide->animator()->setConstant(100);
  desktop.advance(0.1);
  wide->setConstant(30);
  desktop.advance(1);
  EXPECT_EQ(view->frame().size.width, 30);
}

TEST_F(NSLayoutConstraintTest, EdgesLieOnWholePixels) {
  placeAt(view, 10.3, 0);
  size(view, width, 20.4);
  size(view, height, 10);
  constrain(other, left, NSLayoutRelationEqual, view, right, 0);
  equal(other, right, content, 0);
  equal(other, top, content, 0);
  EXPECT_EQ(laidOut(view), (CGRect{10, 140, 21, 10}));
  EXPECT_EQ(other->frame().origin.x, 31);
}

TEST_F(NSLayoutConstraintTest, WhereDevicePixelsAreHalfAPointEdgesLieOnThoseAsSoonAsTheWindowHasThem) {
  placeAt(view, 10.3, 0.2);
  view->intrinsic = {20.4, 10.7};
  placeAt(other, 10.3, 0);
  size(other, width, 20.4);
  EXPECT_EQ(laidOut(view), (CGRect{10, 139, 21, 11}));
  EXPECT_EQ(other->frame(), (CGRect{10, 150, 21, 0}));
  desktop.setScale(2);
  EXPECT_EQ(laidOut(view), (CGRect{10.5, 139, 20.5, 11}));
  EXPECT_EQ(other->frame(), (CGRect{10.5, 150, 20, 0}));
}

TEST_F(NSLayoutConstraintTest, ALengthNeverBecomesNegative) {
  equal(view, left, content, 150, 900);
  equal(view, right, content, -150, 800);
  equal(view, top, content, 0);
  EXPECT_EQ(laidOut(view).size.width, 0);
  EXPECT_THAT(conflicts, IsEmpty());
}

TEST_F(NSLayoutConstraintTest, AViewThatHasNoSizeYetIsTooSmallForMarginsInSilence) {
  const auto box = make<NSView>(CGRect{});
  content->addSubview(box);
  const auto inner = addView(box);
  equal(inner, top, box, 0);
  equal(inner, left, box, 10);
  equal(inner, right, box, -10);
  EXPECT_EQ(laidOut(inner).size.width, 0);
  EXPECT_THAT(conflicts, IsEmpty());
  box->setFrame({0, 0, 100, 100});
  EXPECT_EQ(laidOut(inner), (CGRect{10, 100, 80, 0}));
}

TEST_F(NSLayoutConstraintTest, AFrameOfNegativeSizeIsReportedByNobody) {
  const auto framed = make<NSView>(CGRect{20, 30, -40, 50});
  content->addSubview(framed);
  equal(view, top, framed, 0);
  EXPECT_EQ(laidOut(view).origin.y, 80);
  EXPECT_EQ(framed->frame(), (CGRect{20, 30, -40, 50}));
  EXPECT_THAT(conflicts, IsEmpty());
}

TEST_F(NSLayoutConstraintTest, WhatMustBeWiderThanTheWindowReachesBeyondIt) {
  equal(view, left, content, 0);
  equal(view, right, content, 0);
  equal(view, top, content, 0);
  constrain(view, width, NSLayoutRelationGreaterThanOrEqual, nullptr, NSLayoutAttributeNotAnAttribute, 500);
  EXPECT_EQ(laidOut(view).size.width, 500);
  EXPECT_EQ(content->frame().size.width, 200);
  EXPECT_THAT(conflicts, IsEmpty());
}
