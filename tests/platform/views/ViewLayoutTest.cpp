#include "tessaluna/platform/views/ViewLayout.h"

#include <gmock/gmock.h>

#include <stdexcept>

#include "tessaluna/platform/views/NSClipView.h"
#include "tessaluna/platform/views/NSScrollView.h"
#include "tessaluna/platform/views/NSTextField.h"
#include "tests/harness/ProbeView.h"
#include "tests/harness/StillWorld.h"
#include "tests/harness/printing.h"

using namespace tessaluna::platform;
using harness::ProbeView;

namespace {

class LayoutView : public ProbeView {
 public:
  using ProbeView::ProbeView;
  int layouts = 0;
  std::function<void()> onLayout;
  CGSize intrinsic{noIntrinsicMetric, noIntrinsicMetric};
  void layout() override {
    NSView::layout();
    ++layouts;
    if (onLayout) onLayout();
  }
  CGSize intrinsicContentSize() const override { return intrinsic; }
};

// In a window of 200 by 150 points an outer view of 100 by 100 at (10, 10), with an inner one of 20 by 20 in its corner.
class ViewLayoutTest : public harness::StillWorld {
 protected:
  ViewLayoutTest() {
    outer->addSubview(inner);
    window = showWindowWith(outer);
    outer->layouts = inner->layouts = 0;
  }
  // The layout puts the inner view to the place, and is due.
  void willPlaceInner(CGRect frame) {
    outer->onLayout = [this, frame] { inner->setFrame(frame); };
    outer->setNeedsLayout(true);
  }
  bool isDisplayScheduled() const { return nativeOf(*window).isDisplayScheduled(); }

  Ref<LayoutView> outer = make<LayoutView>(CGRect{10, 10, 100, 100});
  Ref<LayoutView> inner = make<LayoutView>(CGRect{0, 0, 20, 20});
  Ref<NSWindow> window;
};

}  // namespace

// The pass.

TEST_F(ViewLayoutTest, ANewViewIsLaidOutOnce) {
  const auto view = make<LayoutView>(CGRect{0, 0, 10, 10});
  EXPECT_TRUE(view->needsLayout());
  outer->addSubview(view);
  EXPECT_EQ(view->layouts, 0);
  desktop.settle();
  EXPECT_EQ(view->layouts, 1);
  EXPECT_FALSE(view->needsLayout());
  desktop.settle();
  EXPECT_EQ(view->layouts, 1);
}

TEST_F(ViewLayoutTest, APassComesAlsoWhenNothingIsDirty) {
  inner->setNeedsLayout(true);
  EXPECT_TRUE(isDisplayScheduled());
  desktop.settle();
  EXPECT_EQ(inner->layouts, 1);
  EXPECT_EQ(outer->layouts, 0);
  EXPECT_TRUE(nativeOf(*window).paints().empty());
}

TEST_F(ViewLayoutTest, AnotherSizeMarksAndAnotherPlaceDoesNot) {
  outer->setFrameOrigin({20, 20});
  EXPECT_FALSE(outer->needsLayout());
  outer->setFrameSize({90, 100});
  EXPECT_TRUE(outer->needsLayout());
}

TEST_F(ViewLayoutTest, AMarkCanBeTakenBack) {
  inner->setNeedsLayout(true);
  inner->setNeedsLayout(false);
  desktop.settle();
  EXPECT_EQ(inner->layouts, 0);
}

TEST_F(ViewLayoutTest, AutoresizingIsDoneAtOnce) {
  inner->setAutoresizingMask(NSViewWidthSizable);
  outer->setFrameSize({150, 100});
  EXPECT_EQ(inner->frame(), (CGRect{0, 0, 70, 20}));
  EXPECT_EQ(outer->layouts, 0);
}

TEST_F(ViewLayoutTest, SuperviewsComeBeforeTheirSubviews) {
  std::string order;
  outer->onLayout = [&] { order += "outer "; };
  inner->onLayout = [&] { order += "inner "; };
  inner->setNeedsLayout(true);
  outer->setNeedsLayout(true);
  desktop.settle();
  EXPECT_EQ(order, "outer inner ");
}

TEST_F(ViewLayoutTest, WhatALayoutMovesIsPaintedWithIt) {
  willPlaceInner({50, 50, 20, 20});
  desktop.settle();
  ASSERT_EQ(nativeOf(*window).paints().size(), 1u);
  EXPECT_EQ(nativeOf(*window).paints()[0].dirty, (std::vector<CGRect>{{10, 10, 20, 20}, {60, 60, 20, 20}}));
  EXPECT_FALSE(isDisplayScheduled());
}

TEST_F(ViewLayoutTest, AHiddenWindowIsLaidOutWhenItIsShown) {
  window->orderOut(nullptr);
  inner->setNeedsLayout(true);
  desktop.settle();
  EXPECT_EQ(inner->layouts, 0);
  window->orderFront(nullptr);
  EXPECT_EQ(inner->layouts, 1);
}

TEST_F(ViewLayoutTest, ASubtreeCanBeLaidOutAlone) {
  outer->setNeedsLayout(true);
  inner->setNeedsLayout(true);
  inner->layoutSubtreeIfNeeded();
  EXPECT_EQ(inner->layouts, 1);
  EXPECT_EQ(outer->layouts, 0);
  desktop.settle();
  EXPECT_EQ(inner->layouts, 1);
  EXPECT_EQ(outer->layouts, 1);
}

TEST_F(ViewLayoutTest, AMarkedViewIsLaidOutInTheTreeThatItMovedTo) {
  inner->setNeedsLayout(true);
  inner->removeFromSuperview();
  desktop.settle();
  EXPECT_EQ(inner->layouts, 0);
  window->contentView()->addSubview(inner);
  desktop.settle();
  EXPECT_EQ(inner->layouts, 1);
}

// Who asks where something is.

TEST_F(ViewLayoutTest, ConversionsLayOutFirst) {
  willPlaceInner({50, 60, 20, 20});
  EXPECT_EQ(inner->convertPointToView({0, 0}, nullptr), (CGPoint{60, 70}));
  willPlaceInner({30, 30, 20, 20});
  EXPECT_EQ(inner->convertRectFromView({40, 40, 5, 5}, nullptr), (CGRect{0, 0, 5, 5}));
  willPlaceInner({10, 20, 20, 20});
  EXPECT_EQ(window->contentView()->convertPointFromView({0, 0}, inner.get()), (CGPoint{20, 30}));
}

TEST_F(ViewLayoutTest, VisibleRectLaysOutFirst) {
  willPlaceInner({90, 0, 20, 20});
  EXPECT_EQ(inner->visibleRect(), (CGRect{0, 0, 10, 20}));
}

TEST_F(ViewLayoutTest, HitTestsLayOutFirst) {
  willPlaceInner({50, 50, 20, 20});
  EXPECT_EQ(window->contentView()->hitTest({65, 65}), inner.get());
}

TEST_F(ViewLayoutTest, APressFindsTheViewInItsPlace) {
  willPlaceInner({50, 50, 20, 20});
  user.click(*window, {65, 65});
  EXPECT_THAT(inner->calls, testing::Contains("mouseDown"));
}

TEST_F(ViewLayoutTest, ScrollingToARectangleLaysOutFirst) {
  const auto scrollView = make<NSScrollView>(CGRect{0, 0, 100, 100});
  const auto document = make<LayoutView>(CGRect{0, 0, 100, 100});
  document->flipped = true;
  scrollView->setDocumentView(document);
  outer->addSubview(scrollView);
  desktop.settle();
  document->onLayout = [&] { document->setFrameSize({100, 1000}); };
  document->setNeedsLayout(true);
  EXPECT_TRUE(document->scrollRectToVisible({0, 300, 10, 10}));
  EXPECT_EQ(scrollView->contentView()->bounds().origin, (CGPoint{0, 210}));
}

TEST_F(ViewLayoutTest, AssistiveClientsFindTheViewsThatALayoutMakes) {
  const auto made = make<NSTextField>(CGRect{0, 0, 10, 10});
  outer->onLayout = [&] { outer->addSubview(made); };
  outer->setNeedsLayout(true);
  EXPECT_EQ(outer->accessibilityChildren(), AccessibilityElements{made->cell()});
}

TEST_F(ViewLayoutTest, ATreeWithoutAWindowIsLaidOutWhenSomebodyAsks) {
  outer->removeFromSuperview();
  willPlaceInner({50, 60, 20, 20});
  EXPECT_EQ(inner->convertPointToView({0, 0}, outer.get()), (CGPoint{50, 60}));
}

// Layouts that change more than the places of their subviews.

TEST_F(ViewLayoutTest, AViewThatIsMarkedAfterThePassIsLaidOutInTheSamePass) {
  inner->onLayout = [&] {
    if (inner->layouts == 1) outer->setNeedsLayout(true);
  };
  inner->setNeedsLayout(true);
  desktop.settle();
  EXPECT_EQ(outer->layouts, 1);
  EXPECT_FALSE(outer->needsLayout());
}

TEST_F(ViewLayoutTest, ASiblingThatGetsAnotherSizeIsLaidOutInTheSamePass) {
  const auto sibling = make<LayoutView>(CGRect{50, 0, 20, 20});
  outer->addSubview(sibling);
  desktop.settle();
  sibling->onLayout = [&] { inner->setFrameSize({30, 30}); };
  sibling->setNeedsLayout(true);
  desktop.settle();
  EXPECT_EQ(inner->layouts, 1);
}

TEST_F(ViewLayoutTest, ALayoutThatAlwaysMarksItselfEnds) {
  inner->onLayout = [&] { inner->setNeedsLayout(true); };
  inner->setNeedsLayout(true);
  desktop.settle();
  const int once = inner->layouts;
  EXPECT_GT(once, 1);
  EXPECT_LE(once, 10);
  EXPECT_TRUE(inner->needsLayout());
  EXPECT_FALSE(isDisplayScheduled());
  // Others come to their turn, and it continues with them.
  outer->setNeedsLayout(true);
  EXPECT_TRUE(isDisplayScheduled());
  inner->onLayout = nullptr;
  desktop.settle();
  EXPECT_EQ(inner->layouts, once + 1);
  EXPECT_EQ(outer->layouts, 1);
}

TEST_F(ViewLayoutTest, ALayoutMayRemoveItsOwnView) {
  const WeakRef<NSView> weak = inner;
  inner->onLayout = [view = inner.get()] { view->removeFromSuperview(); };
  inner->setNeedsLayout(true);
  inner.reset();
  desktop.settle();
  EXPECT_TRUE(weak.expired());
  EXPECT_TRUE(outer->subviews().empty());
}

TEST_F(ViewLayoutTest, ALayoutMayRemoveAViewThatWaitsForItsOwn) {
  const auto sibling = make<LayoutView>(CGRect{50, 0, 20, 20});
  outer->addSubview(sibling);
  desktop.settle();
  const WeakRef<NSView> weak = inner;
  sibling->onLayout = [&] { outer->subviews().front()->removeFromSuperview(); };
  sibling->setNeedsLayout(true);
  inner->setNeedsLayout(true);
  inner.reset();
  desktop.settle();
  EXPECT_TRUE(weak.expired());
}

TEST_F(ViewLayoutTest, ALayoutMayCloseItsWindow) {
  inner->onLayout = [&] { window->close(); };
  inner->setNeedsLayout(true);
  inner->setNeedsDisplay(true);
  desktop.settle();
  EXPECT_EQ(inner->layouts, 1);
  EXPECT_TRUE(nativeOf(*window).paints().empty());
}

TEST_F(ViewLayoutTest, ALayoutThatBeginsAPassIsNotEnteredAgain) {
  inner->onLayout = [&] {
    inner->setNeedsLayout(true);
    if (inner->layouts < 100) outer->layoutSubtreeIfNeeded();
    inner->setNeedsLayout(false);
  };
  inner->setNeedsLayout(true);
  desktop.settle();
  EXPECT_EQ(inner->layouts, 1);
}

TEST_F(ViewLayoutTest, QuestionsDuringAPassAreAnsweredByThePlacesOfTheMoment) {
  CGPoint found;
  outer->onLayout = [&] {
    inner->setFrameOrigin({50, 50});
    found = inner->convertPointToView({0, 0}, nullptr);
  };
  outer->setNeedsLayout(true);
  desktop.settle();
  EXPECT_EQ(found, (CGPoint{60, 60}));
  EXPECT_EQ(outer->layouts, 1);
}

// Drawing.

TEST_F(ViewLayoutTest, NothingIsLaidOutWhileTheTreeDraws) {
  int during = 0;
  inner->onDraw = [&](CGRect) {
    outer->setNeedsLayout(true);
    inner->convertPointToView({0, 0}, nullptr);
    inner->visibleRect();
    outer->layoutSubtreeIfNeeded();
    window->contentView()->hitTest({20, 20});
    during = outer->layouts;
  };
  inner->setNeedsDisplay(true);
  window->displayIfNeeded();
  EXPECT_EQ(during, 0);
  EXPECT_TRUE(isDisplayScheduled());
  desktop.settle();
  EXPECT_EQ(outer->layouts, 1);
}

// Sizes that contents want.

TEST_F(ViewLayoutTest, AnotherIntrinsicSizeReachesAllSuperviews) {
  const auto label = NSTextField::labelWithString("one");
  inner->addSubview(label);
  desktop.settle();
  inner->layouts = outer->layouts = 0;
  label->setStringValue("two");
  EXPECT_TRUE(inner->needsLayout());
  EXPECT_TRUE(outer->needsLayout());
  EXPECT_TRUE(isDisplayScheduled());
  desktop.settle();
  EXPECT_EQ(inner->layouts, 1);
  EXPECT_EQ(outer->layouts, 1);
}

TEST_F(ViewLayoutTest, WhatADocumentWantsMattersToNobodyAroundItsClipView) {
  const auto clip = make<NSClipView>(CGRect{0, 0, 50, 50});
  outer->addSubview(clip);
  clip->setDocumentView(inner);
  const auto label = NSTextField::labelWithString("one");
  inner->addSubview(label);
  desktop.settle();
  label->setStringValue("two");
  EXPECT_TRUE(inner->needsLayout());
  EXPECT_FALSE(clip->needsLayout());
  EXPECT_FALSE(outer->needsLayout());
}

TEST_F(ViewLayoutTest, ALayoutThatSetsTheTextOfALabelIsDoneAfterwards) {
  const auto label = NSTextField::labelWithString("one");
  inner->addSubview(label);
  desktop.settle();
  inner->layouts = 0;
  inner->onLayout = [&] { label->setStringValue("two"); };
  inner->setNeedsLayout(true);
  desktop.settle();
  EXPECT_EQ(inner->layouts, 1);
  EXPECT_FALSE(inner->needsLayout());
}

TEST_F(ViewLayoutTest, TheFittingSizeIsTheIntrinsicOneByAxisElseTheOneThatTheViewCameWith) {
  const auto view = make<LayoutView>(CGRect{0, 0, 30, 40});
  EXPECT_EQ(view->fittingSize(), (CGSize{30, 40}));
  view->intrinsic.height = 0;
  EXPECT_EQ(view->fittingSize(), (CGSize{30, 0}));
  view->intrinsic = {7, 8};
  EXPECT_EQ(view->fittingSize(), (CGSize{7, 8}));
}

TEST_F(ViewLayoutTest, TheSizeThatAViewCameWithStaysWhenItsWindowResizesIt) {
  const auto view = make<LayoutView>(CGRect{0, 0, 30, 40});
  view->setFrame({0, 0, 50, 60});
  outer->addSubview(view);
  view->setFrame({0, 0, 99, 99});
  EXPECT_EQ(view->fittingSize(), (CGSize{50, 60}));
  view->removeFromSuperview();
  EXPECT_EQ(view->fittingSize(), (CGSize{50, 60}));
  view->setFrameSize({70, 80});
  EXPECT_EQ(view->fittingSize(), (CGSize{70, 80}));
}

TEST_F(ViewLayoutTest, AFieldToWriteInKeepsItsWidth) {
  const auto field = make<NSTextField>(CGRect{0, 0, 120, 24});
  const CGFloat height = field->intrinsicContentSize().height;
  field->setStringValue("some text");
  EXPECT_EQ(field->fittingSize(), (CGSize{120, height}));
  field->setEditable(false);
  EXPECT_NE(field->fittingSize().width, 120);
}

// Errors.

TEST_F(ViewLayoutTest, AfterALayoutThatThrowsTheOthersAreDoneByTheNextPass) {
  const auto next = make<LayoutView>(CGRect{50, 50, 10, 10}), below = make<LayoutView>(CGRect{0, 0, 5, 5});
  outer->addSubview(next);
  next->addSubview(below);
  desktop.settle();
  next->layouts = below->layouts = 0;
  bool throws = true;
  inner->onLayout = [&] {
    if (std::exchange(throws, false)) throw std::runtime_error("refused");
  };
  inner->setNeedsLayout(true);
  below->setNeedsLayout(true);
  EXPECT_THROW(window->displayIfNeeded(), std::runtime_error);
  EXPECT_EQ(below->layouts, 0);
  inner->setNeedsLayout(true);
  EXPECT_TRUE(isDisplayScheduled());
  desktop.settle();
  EXPECT_EQ(inner->layouts, 2);
  EXPECT_EQ(below->layouts, 1);
  EXPECT_EQ(next->layouts, 0);
}

TEST_F(ViewLayoutTest, AfterADrawingThatThrowsViewsAreLaidOut) {
  bool throws = true;
  inner->onDraw = [&](CGRect) {
    if (std::exchange(throws, false)) throw std::runtime_error("refused");
  };
  inner->setNeedsDisplay(true);
  EXPECT_THROW(window->displayIfNeeded(), std::runtime_error);
  inner->setNeedsLayout(true);
  desktop.settle();
  EXPECT_EQ(inner->layouts, 1);
}
