#include "tessaluna/platform/layout/NSLayoutConstraint.h"

#include <gmock/gmock.h>

#include <cmath>

#include "tessaluna/platform/interface_files/NSNib.h"
#include "tessaluna/platform/text/NSFont.h"
#include "tessaluna/platform/time/NSAnimationContext.h"
#include "tessaluna/platform/views/NSTextField.h"
#include "tests/harness/ProbeView.h"
#include "tests/harness/StillWorld.h"
#include "tests/harness/printing.h"

using namespace tessaluna::platform;
using harness::ProbeView;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

namespace {

class ContentView : public ProbeView {
 public:
  using ProbeView::ProbeView;
  CGSize intrinsic{noIntrinsicMetric, noIntrinsicMetric};
  std::function<void()> onUpdate;
  CGSize intrinsicContentSize() const override { return intrinsic; }
  void updateConstraints() override {
    if (onUpdate) onUpdate();
    NSView::updateConstraints();
  }
};

// A window of 200 by 150 points whose content view, flipped or not, holds views that constraints place.
class NSLayoutConstraintTest : public harness::StillWorld {
 protected:
  NSLayoutConstraintTest() {
    NSLayoutConstraint::setConflictHandler([this](const std::string& line) { conflicts.push_back(line); });
  }
  ~NSLayoutConstraintTest() override { NSLayoutConstraint::setConflictHandler(nullptr); }

  Ref<ContentView> addView(const Ref<NSView>& superview, std::string identifier = "") {
    const auto view = make<ContentView>(CGRect{});
    view->setIdentifier(std::move(identifier));
    view->setTranslatesAutoresizingMaskIntoConstraints(false);
    superview->addSubview(view);
    return view;
  }
  Ref<NSLayoutConstraint> constrain(const Ref<NSView>& item, NSLayoutAttribute attribute, NSLayoutRelation relation,
                                    const Ref<NSView>& toItem, NSLayoutAttribute toAttribute, CGFloat constant,
                                    NSLayoutPriority priority = 1000, CGFloat multiplier = 1) {
    const auto result =
        NSLayoutConstraint::constraintWithItem(item, attribute, relation, toItem, toAttribute, multiplier, constant);
    result->setPriority(priority);
    result->setActive(true);
    return result;
  }
  Ref<NSLayoutConstraint> equal(const Ref<NSView>& item, NSLayoutAttribute attribute, const Ref<NSView>& toItem,
                                CGFloat constant, NSLayoutPriority priority = 1000) {
    return constrain(item, attribute, NSLayoutRelationEqual, toItem, attribute, constant, priority);
  }
  Ref<NSLayoutConstraint> size(const Ref<NSView>& item, NSLayoutAttribute attribute, CGFloat constant,
                               NSLayoutPriority priority = 1000) {
    return constrain(item, attribute, NSLayoutRelationEqual, nullptr, NSLayoutAttributeNotAnAttribute, constant, priority);
  }
  void placeAt(const Ref<NSView>& view, CGFloat left, CGFloat top) {
    equal(view, NSLayoutAttributeLeft, refTo(*view->superview()), left);
    equal(view, NSLayoutAttributeTop, refTo(*view->superview()), top);
  }
  CGRect laidOut(const Ref<NSView>& view) {
    window->layoutIfNeeded();
    return view->frame();
  }

  Ref<NSWindow> window = showWindow();
  Ref<NSView> content = window->contentView();
  Ref<ContentView> view = addView(content, "one"), other = addView(content, "two");
  std::vector<std::string> conflicts;
};

constexpr auto left = NSLayoutAttributeLeft, right = NSLayoutAttributeRight, top = NSLayoutAttributeTop,
               bottom = NSLayoutAttributeBottom, leading = NSLayoutAttributeLeading, trailing = NSLayoutAttributeTrailing,
               width = NSLayoutAttributeWidth, height = NSLayoutAttributeHeight, centerX = NSLayoutAttributeCenterX,
               centerY = NSLayoutAttributeCenterY;

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

// Conflicts.

TEST_F(NSLayoutConstraintTest, OfTwoThatConflictTheOneAddedLastGivesWayAndOneLineNamesThem) {
  placeAt(view, 0, 0);
  size(view, width, 10);
  const auto second = size(view, width, 30);
  second->setIdentifier("wide");
  EXPECT_EQ(laidOut(view).size.width, 10);
  ASSERT_EQ(conflicts.size(), 1u);
  EXPECT_EQ(conflicts[0], "Constraints conflict: \"wide\" gives way to NSView \"one\".width = 10");
}

TEST_F(NSLayoutConstraintTest, OneThatGaveWayHoldsOnceItCan) {
  placeAt(view, 0, 0);
  const auto first = size(view, width, 10);
  size(view, width, 30);
  EXPECT_EQ(laidOut(view).size.width, 10);
  first->setActive(false);
  EXPECT_EQ(laidOut(view).size.width, 30);
}

TEST_F(NSLayoutConstraintTest, AConflictWithAFrameNamesTheFrame) {
  const auto framed = make<NSView>(CGRect{20, 30, 40, 50});
  content->addSubview(framed);
  size(framed, width, 100);
  EXPECT_EQ(laidOut(framed).size.width, 40);
  ASSERT_EQ(conflicts.size(), 1u);
  EXPECT_THAT(conflicts[0], HasSubstr("gives way to the frame of NSView"));
}

TEST_F(NSLayoutConstraintTest, OneWhosePriorityChangesStillCountsAsAddedWhenItWas) {
  placeAt(view, 0, 0);
  const auto first = size(view, width, 10);
  size(view, width, 30);
  EXPECT_EQ(laidOut(view).size.width, 10);
  first->setPriority(900);
  EXPECT_EQ(laidOut(view).size.width, 30);
  first->setPriority(1000);
  EXPECT_EQ(laidOut(view).size.width, 10);
}

TEST_F(NSLayoutConstraintTest, AFrameThatFollowsInAnotherWayStillComesBeforeLaterConstraints) {
  const auto box = make<NSView>(CGRect{0, 0, 200, 150}), framed = make<NSView>(CGRect{20, 30, 40, 50});
  content->addSubview(box);
  box->addSubview(framed);
  placeAt(view, 0, 0);
  size(view, width, 10);
  constrain(view, width, NSLayoutRelationEqual, framed, width, 0);
  equal(other, top, content, 0);
  constrain(other, left, NSLayoutRelationEqual, framed, right, 0);
  EXPECT_EQ(laidOut(view).size.width, 10);
  framed->setAutoresizingMask(NSViewWidthSizable);
  framed->setFrame({20, 30, 60, 50});
  EXPECT_EQ(laidOut(other).origin.x, 80);
  EXPECT_EQ(view->frame().size.width, 10);
  for (const std::string& line : conflicts) EXPECT_THAT(line, HasSubstr(".width = NSView.width gives way to"));
}

TEST_F(NSLayoutConstraintTest, AHandlerMayRemoveWhatConflicts) {
  placeAt(view, 0, 0);
  size(view, width, 10);
  const auto second = size(view, width, 30);
  NSLayoutConstraint::setConflictHandler([&](const std::string&) { second->setActive(false); });
  EXPECT_EQ(laidOut(view).size.width, 10);
  EXPECT_FALSE(second->isActive());
}

// Where constraints are held.

TEST_F(NSLayoutConstraintTest, ActivatingAddsItToTheNearestViewAboveBothItems) {
  const auto inner = addView(view);
  const auto within = constrain(inner, left, NSLayoutRelationEqual, view, left, 1);
  const auto across = constrain(inner, left, NSLayoutRelationEqual, other, left, 1);
  EXPECT_THAT(view->constraints(), ElementsAre(within));
  EXPECT_THAT(content->constraints(), ElementsAre(across));
  within->setActive(false);
  EXPECT_THAT(view->constraints(), IsEmpty());
  EXPECT_FALSE(within->isActive());
}

TEST_F(NSLayoutConstraintTest, AddingOneThatAnotherViewHasMovesIt) {
  const auto wide = size(view, width, 10);
  EXPECT_THAT(view->constraints(), ElementsAre(wide));
  content->addConstraint(wide);
  EXPECT_THAT(view->constraints(), IsEmpty());
  EXPECT_THAT(content->constraints(), ElementsAre(wide));
  EXPECT_EQ(laidOut(view).size.width, 10);
  view->removeConstraint(wide);
  EXPECT_TRUE(wide->isActive()) << "it is not here any more";
}

TEST_F(NSLayoutConstraintTest, ADescriptionSaysWhatTheConstraintSays) {
  EXPECT_EQ(equal(view, right, content, -20)->description(), "NSView \"one\".right = NSView.right - 20");
  EXPECT_EQ(constrain(view, width, NSLayoutRelationGreaterThanOrEqual, other, height, 3, 1000, 0.5)->description(),
            "NSView \"one\".width >= 0.5 * NSView \"two\".height + 3");
}

TEST_F(NSLayoutConstraintTest, AViewKeepsItsConstraintsAlive) {
  WeakRef<NSLayoutConstraint> weak = size(view, width, 10);
  EXPECT_FALSE(weak.expired());
  view->removeConstraints(view->constraints());
  EXPECT_TRUE(weak.expired());
}

TEST_F(NSLayoutConstraintTest, AViewThatLeavesLosesConstraintsToOthersAndKeepsItsOwn) {
  placeAt(view, 30, 30);
  size(view, width, 50);
  size(view, height, 50);
  const auto inner = addView(view);
  placeAt(inner, 5, 5);
  size(inner, width, 7);
  EXPECT_EQ(laidOut(view).size.width, 50);
  view->removeFromSuperview();
  EXPECT_THAT(content->constraints(), IsEmpty());
  EXPECT_EQ(view->constraints().size(), 4u);
  // By itself it is a tree of its own.
  inner->constraints()[0]->setConstant(9);
  view->layoutSubtreeIfNeeded();
  EXPECT_EQ(inner->frame().size.width, 9);
  // And a part of the window again.
  content->addSubview(view);
  inner->constraints()[0]->setConstant(11);
  EXPECT_EQ(laidOut(inner).size.width, 11);
}

TEST_F(NSLayoutConstraintTest, ASubviewThatOutlivesItsTreeKeepsItsConstraints) {
  auto root = make<NSView>(CGRect{0, 0, 100, 100});
  const auto kept = addView(root);
  placeAt(kept, 1, 1);
  const auto wide = size(kept, width, 20);
  root->layoutSubtreeIfNeeded();
  root.reset();
  content->addSubview(kept);
  wide->setConstant(33);
  equal(kept, left, content, 0);
  EXPECT_EQ(laidOut(kept).size.width, 33);
}

TEST_F(NSLayoutConstraintTest, AViewBelowASubviewThatGoesKeepsItsConstraints) {
  auto root = make<ContentView>(CGRect{0, 0, 100, 100});
  auto middle = addView(root);
  const auto inner = addView(middle), innermost = addView(inner);
  placeAt(inner, 1, 1);
  size(innermost, width, 7);
  equal(innermost, width, inner, 0);
  middle.reset();
  root.reset();
  content->addSubview(inner);
  placeAt(inner, 3, 3);
  EXPECT_EQ(laidOut(inner).size.width, 7);
}

TEST_F(NSLayoutConstraintTest, ConstraintsAreUpdatedBeforeTheyAreSolved) {
  placeAt(view, 0, 0);
  const auto wide = size(view, width, 10);
  window->layoutIfNeeded();
  int updates = 0;
  view->onUpdate = [&] {
    ++updates;
    wide->setConstant(70);
  };
  view->setNeedsUpdateConstraints(true);
  EXPECT_EQ(laidOut(view).size.width, 70);
  EXPECT_EQ(updates, 1);
  EXPECT_FALSE(view->needsUpdateConstraints());
}

TEST_F(NSLayoutConstraintTest, AViewIsUpdatedOnceAndAfterItsSubviews) {
  const auto inner = addView(view);
  placeAt(view, 0, 0);
  std::vector<std::string> updated;
  view->onUpdate = [&] { updated.push_back("view"); };
  inner->onUpdate = [&] { updated.push_back("inner"); };
  for (const auto& each : {view, inner, view, inner}) each->setNeedsUpdateConstraints(true);
  window->layoutIfNeeded();
  EXPECT_THAT(updated, ElementsAre("inner", "view"));
}

TEST_F(NSLayoutConstraintTest, AViewThatWaitsForItsUpdateGetsItInTheWindowThatItComesTo) {
  const auto root = make<ContentView>(CGRect{0, 0, 50, 50});
  int updates = 0;
  root->onUpdate = [&] { ++updates; };
  root->setNeedsUpdateConstraints(true);
  content->addSubview(root);
  window->layoutIfNeeded();
  EXPECT_EQ(updates, 1);
}

TEST_F(NSLayoutConstraintTest, AViewThatLeavesWhileItWaitsForItsUpdateGetsItWhereItComesTo) {
  placeAt(view, 0, 0);
  const auto inner = addView(view);
  int updates = 0, updatesOfOther = 0;
  inner->onUpdate = [&] { ++updates; };
  other->onUpdate = [&] { ++updatesOfOther; };
  inner->setNeedsUpdateConstraints(true);
  other->setNeedsUpdateConstraints(true);
  view->removeFromSuperview();
  window->layoutIfNeeded();
  EXPECT_EQ(updates, 0);
  EXPECT_EQ(updatesOfOther, 1);
  const auto second = showWindow();
  window->close();
  window->setContentView(nullptr);
  second->contentView()->addSubview(view);
  second->layoutIfNeeded();
  EXPECT_EQ(updates, 1);
  EXPECT_FALSE(inner->needsUpdateConstraints());
}

TEST_F(NSLayoutConstraintTest, AFrameThatIsSetLastsUntilTheNextPass) {
  placeAt(view, 0, 0);
  size(view, width, 10);
  size(view, height, 10);
  window->layoutIfNeeded();
  view->setFrame({50, 50, 50, 50});
  EXPECT_EQ(laidOut(view), (CGRect{0, 140, 10, 10}));
}

// fittingSize.

TEST_F(NSLayoutConstraintTest, TheFittingSizeIsTheLeastThatTheConstraintsAllow) {
  equal(view, left, content, 0);
  size(view, width, 300, 40);
  const auto inner = addView(view);
  inner->intrinsic = {30, 12};
  for (const auto attribute : {left, top}) equal(inner, attribute, view, 4);
  for (const auto attribute : {right, bottom}) equal(inner, attribute, view, -6);
  EXPECT_EQ(view->fittingSize(), (CGSize{40, 22}));
  inner->intrinsic = {30, 50};
  inner->invalidateIntrinsicContentSize();
  EXPECT_EQ(view->fittingSize(), (CGSize{40, 60}));
}

TEST_F(NSLayoutConstraintTest, TheFittingSizeIsFreeAlongTheAxesThatConstraintsWithinTie) {
  const auto framed = make<NSView>(CGRect{0, 0, 70, 40});
  const auto inner = addView(framed);
  constrain(inner, height, NSLayoutRelationEqual, framed, width, 0);
  size(inner, height, 30);
  EXPECT_EQ(framed->fittingSize(), (CGSize{30, 40}));
}

TEST_F(NSLayoutConstraintTest, AViewWhoseOwnConstraintsLimitItFitsWithinThem) {
  const auto framed = make<NSView>(CGRect{0, 0, 40, 70});
  constrain(framed, height, NSLayoutRelationLessThanOrEqual, nullptr, NSLayoutAttributeNotAnAttribute, 24);
  EXPECT_EQ(framed->fittingSize(), (CGSize{40, 24}));
}

// Bad uses.

TEST_F(NSLayoutConstraintTest, AttributesThatDoNotGoTogetherStopTheProgram) {
  const auto make = [&](NSLayoutAttribute a, NSLayoutAttribute b, CGFloat multiplier = 1, CGFloat constant = 0) {
    NSLayoutConstraint::constraintWithItem(view, a, NSLayoutRelationEqual, b ? content : nullptr, b, multiplier, constant);
  };
  EXPECT_DEATH(make(left, top), "cannot be combined");
  EXPECT_DEATH(make(left, leading), "cannot be combined");
  EXPECT_DEATH(make(width, left), "cannot be combined");
  EXPECT_DEATH(make(left, NSLayoutAttributeNotAnAttribute), "needs an attribute of a second item");
  EXPECT_DEATH(make(width, width, 0), "multiplier");
  EXPECT_DEATH(make(width, width, 1, NAN), "constant");
  const auto wide = size(view, width, 10);
  EXPECT_DEATH(wide->setConstant(INFINITY), "constant must be finite");
  for (const double priority : {0.0, -1.0, 1000.5, double(NAN)})
    EXPECT_DEATH(wide->setPriority(priority), "priority must be above 0");
}

TEST_F(NSLayoutConstraintTest, ItemsWithoutAViewAboveBothStopTheProgram) {
  const auto elsewhere = make<NSView>(CGRect{});
  const auto constraint = NSLayoutConstraint::constraintWithItem(view, left, NSLayoutRelationEqual, elsewhere, left, 1, 0);
  EXPECT_DEATH(constraint->setActive(true), "no view contains its items");
  EXPECT_DEATH(content->addConstraint(constraint), "belongs to a view that contains both items");
}

// Interface files.

namespace {

constexpr std::string_view document = R"({"objects": [{"id": "row", "class": "NSView", "frame": [0, 0, 100, 20],
  "subviews": [{"id": "label", "class": "NSView",
                "properties": {"translatesAutoresizingMaskIntoConstraints": false, "contentHuggingPriorities": [300, 400]}}],
  "constraints": [
    {"class": "NSLayoutConstraint", "firstAttribute": "leading", "secondAttribute": "leading", "constant": 8,
     "outlets": {"firstItem": "label", "secondItem": "row"}},
    {"class": "NSLayoutConstraint", "firstAttribute": "width", "relation": "lessThanOrEqual", "constant": 30,
     "priority": 900, "identifier": "narrow", "outlets": {"firstItem": "label"}}]}]})";

}  // namespace

TEST_F(NSLayoutConstraintTest, InterfaceFilesHoldConstraints) {
  const auto contents = make<NSNib>(document)->instantiateWithOwner(nullptr);
  ASSERT_EQ(contents.error, std::nullopt);
  const auto row = std::static_pointer_cast<NSView>(contents.topLevelObjects.at(0));
  ASSERT_EQ(row->constraints().size(), 2u);
  const auto& narrow = row->constraints()[1];
  EXPECT_EQ(narrow->description(), "\"narrow\"");
  EXPECT_EQ(narrow->priority(), 900);
  EXPECT_EQ(narrow->relation(), NSLayoutRelationLessThanOrEqual);
  const Ref<NSView> label = row->subviews()[0];
  EXPECT_EQ(label->contentHuggingPriorityForOrientation(NSLayoutConstraintOrientationVertical), 400);
  content->addSubview(row);
  EXPECT_EQ(laidOut(label).origin.x, 8);
}

TEST_F(NSLayoutConstraintTest, AConstraintOfAnInterfaceFileThatMakesNoSenseIsAnError) {
  const auto errorOf = [](std::string_view constraint) {
    const std::string json = R"({"objects": [{"id": "row", "class": "NSView", "constraints": [)" + std::string(constraint) +
                             R"(]}, {"id": "elsewhere", "class": "NSView"}]})";
    return make<NSNib>(json)->instantiateWithOwner(nullptr).error.value_or("");
  };
  EXPECT_THAT(errorOf(R"({"class": "NSLayoutConstraint", "firstAttribute": "width"})"), HasSubstr("an item for each"));
  EXPECT_THAT(errorOf(R"({"class": "NSLayoutConstraint", "firstAttribute": "left", "outlets": {"firstItem": "row"}})"),
              HasSubstr("needs an attribute of a second item"));
  EXPECT_THAT(
      errorOf(R"({"class": "NSLayoutConstraint", "firstAttribute": "width", "outlets": {"firstItem": "elsewhere"}})"),
      HasSubstr("belongs to a view that contains both items"));
  EXPECT_THAT(errorOf(R"({"class": "NSLayoutConstraint", "firstAttribute": "wide", "outlets": {"firstItem": "row"}})"),
              HasSubstr("firstAttribute"));
  EXPECT_THAT(errorOf(R"({"class": "NSLayoutConstraint", "firstAttribute": "width", "priority": 0})"),
              HasSubstr("priority"));
}
