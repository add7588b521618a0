#include "tessaluna/platform/views/NSScrollView.h"

#include <limits>

#include "tessaluna/platform/foundation/NSCoder.h"
#include "tessaluna/platform/views/NSScroller.h"
#include "tessaluna/platform/views/NSViewAnimator.h"
#include "tests/harness/ProbeView.h"
#include "tests/harness/StillWorld.h"
#include "tests/harness/printing.h"
#include "tests/harness/recordingOf.h"

using namespace tessaluna::platform;
using harness::ProbeView;

namespace {

// Remembers what it was asked to prepare.
class PreparingView : public ProbeView {
 public:
  using ProbeView::ProbeView;
  std::vector<CGRect> prepared;
  void prepareContentInRect(CGRect rect) override { prepared.push_back(rect); }
  void scrollWheel(const EventRef& event) override { NSView::scrollWheel(event); }  // for the scroll view
};

// A scroll view of 100 by 100 points at (50, 25) of a window, onto a flipped document of 300 by 1000.
class NSScrollViewTest : public harness::StillWorld {
 protected:
  NSScrollViewTest() {
    document->flipped = true;
    scrollView->setDocumentView(document);
    window = showWindowWith(scrollView);
  }

  void layOut() const { scrollView->layoutSubtreeIfNeeded(); }
  CGPoint origin() const {
    layOut();
    return scrollView->contentView()->bounds().origin;
  }
  const NSScroller& verticalBar() const {
    layOut();
    return *scrollView->verticalScroller();
  }
  const NSScroller& horizontalBar() const {
    layOut();
    return *scrollView->horizontalScroller();
  }
  CGRect clipFrame() const {
    layOut();
    return scrollView->contentView()->frame();
  }
  void scrollTo(CGPoint point) { scrollView->contentView()->scrollToPoint(point); }
  void wheel(CGSize delta) { user.scroll(*window, {75, 75}, delta); }

  // A point of the vertical bar, counted from its top, in the window.
  CGPoint onBar(CGFloat y) const { return scrollView->verticalScroller()->convertPointToView({6, y}, nullptr); }

  Ref<NSScrollView> scrollView = make<NSScrollView>(CGRect{50, 25, 100, 100});
  Ref<PreparingView> document = make<PreparingView>(CGRect{0, 0, 300, 1000});
  Ref<NSWindow> window;
};

}  // namespace

// The clip view.

TEST_F(NSScrollViewTest, AContentViewOfAWindowMayBecomeADocumentByTheWindowsOwnReference) {
  const auto other = showWindow();
  const Ref<NSView> content = other->contentView();
  scrollView->setDocumentView(other->contentView());
  EXPECT_EQ(scrollView->documentView(), content);
  EXPECT_EQ(content->window(), window.get());
  EXPECT_EQ(other->contentView(), nullptr);
}

TEST_F(NSScrollViewTest, StartsAtTheTopLeftOfItsDocument) {
  EXPECT_EQ(origin(), (CGPoint{0, 0}));
  EXPECT_EQ(scrollView->contentView()->documentVisibleRect(), (CGRect{0, 0, 100, 100}));
  EXPECT_EQ(scrollView->documentView(), document);
  EXPECT_EQ(document->superview(), scrollView->contentView().get());
}

TEST_F(NSScrollViewTest, ADocumentThatCountsUpwardStartsWithItsTopInSight) {
  const auto upward = make<ProbeView>(CGRect{0, 0, 100, 1000});
  scrollView->setDocumentView(upward);
  EXPECT_EQ(scrollView->contentView()->documentVisibleRect(), (CGRect{0, 900, 100, 100}));
}

TEST_F(NSScrollViewTest, AnotherDocumentTakesThePlaceOfTheFirst) {
  scrollTo({50, 500});
  const auto other = make<PreparingView>(CGRect{0, 0, 50, 50});
  other->flipped = true;
  scrollView->setDocumentView(other);
  EXPECT_EQ(document->superview(), nullptr);
  EXPECT_EQ(origin(), (CGPoint{0, 0}));
}

TEST_F(NSScrollViewTest, ADocumentThatWentElsewhereIsNoDocumentAnyMore) {
  scrollTo({50, 500});
  window->contentView()->addSubview(document);
  EXPECT_EQ(scrollView->documentView(), nullptr);
  document->prepared.clear();
  scrollTo({50, 500});
  EXPECT_EQ(origin(), (CGPoint{0, 0}));
  EXPECT_TRUE(document->prepared.empty());
  scrollView->setDocumentView(nullptr);
  EXPECT_EQ(document->superview(), window->contentView().get());
}

TEST_F(NSScrollViewTest, ScrollsAsFarAsTheDocumentReaches) {
  scrollTo({-10, -10});
  EXPECT_EQ(origin(), (CGPoint{0, 0}));
  scrollTo({5000, 5000});
  EXPECT_EQ(origin(), (CGPoint{200, 900}));
}

TEST_F(NSScrollViewTest, ADocumentThatIsSmallerThanItsWindowDoesNotScroll) {
  document->setFrame({0, 0, 40, 40});
  scrollTo({10, 10});
  EXPECT_EQ(origin(), (CGPoint{0, 0}));
}

TEST_F(NSScrollViewTest, ADocumentThatShrinksIsFollowed) {
  scrollTo({0, 900});
  document->setFrame({0, 0, 300, 500});
  EXPECT_EQ(origin(), (CGPoint{0, 400}));
}

TEST_F(NSScrollViewTest, AWindowThatGrowsShowsNothingBesideTheDocument) {
  scrollTo({0, 900});
  scrollView->setFrame({50, 25, 100, 120});
  EXPECT_EQ(origin(), (CGPoint{0, 880}));
}

TEST_F(NSScrollViewTest, TheDocumentIsNotifiedOfWhatShows) {
  document->prepared.clear();
  scrollTo({10, 300});
  EXPECT_EQ(document->prepared.back(), (CGRect{10, 300, 100, 100}));
}

TEST_F(NSScrollViewTest, OnlyWhatShowsIsDrawn) {
  document->drawn.clear();
  scrollTo({10, 300});
  desktop.settle();
  ASSERT_FALSE(document->drawn.empty());
  EXPECT_EQ(document->drawn.back(), (CGRect{10, 300, 100, 100}));
}

TEST_F(NSScrollViewTest, PointsAreConvertedThroughTheScrolledWindow) {
  scrollTo({10, 300});
  // The upper left corner of the scroll view is the window's (50, 125).
  EXPECT_EQ(document->convertPointFromView({50, 125}, nullptr), (CGPoint{10, 300}));
  EXPECT_EQ(document->visibleRect(), (CGRect{10, 300, 100, 100}));
}

// Making something visible.

TEST_F(NSScrollViewTest, ARectangleComesIntoSightByTheLeastWay) {
  EXPECT_TRUE(document->scrollRectToVisible({0, 150, 50, 20}));
  EXPECT_EQ(origin(), (CGPoint{0, 70}));
  EXPECT_FALSE(document->scrollRectToVisible({0, 80, 50, 20}));  // shows already
  EXPECT_TRUE(document->scrollRectToVisible({120, 20, 50, 20}));
  EXPECT_EQ(origin(), (CGPoint{70, 20}));
}

TEST_F(NSScrollViewTest, ARectangleThatIsTooLargeShowsItsNearerEnd) {
  EXPECT_TRUE(document->scrollRectToVisible({0, 200, 50, 300}));
  EXPECT_EQ(origin(), (CGPoint{0, 200}));
  EXPECT_FALSE(document->scrollRectToVisible({0, 100, 50, 300}));  // fills the window already
}

TEST_F(NSScrollViewTest, AViewWithinTheDocumentScrollsItToo) {
  const auto inner = make<NSView>(CGRect{0, 400, 50, 50});
  document->addSubview(inner);
  EXPECT_TRUE(inner->scrollRectToVisible(inner->bounds()));
  EXPECT_EQ(origin(), (CGPoint{0, 350}));
  EXPECT_EQ(inner->enclosingScrollView(), scrollView.get());
}

TEST_F(NSScrollViewTest, AViewOutsideScrollsNothing) {
  EXPECT_FALSE(window->contentView()->scrollRectToVisible({0, 0, 10, 10}));
  EXPECT_EQ(window->contentView()->enclosingScrollView(), nullptr);
}

TEST_F(NSScrollViewTest, ScrollPointPutsAPointToTheOrigin) {
  document->scrollPoint({20, 30});
  EXPECT_EQ(origin(), (CGPoint{20, 30}));
}

// The wheel.

TEST_F(NSScrollViewTest, TheWheelMovesTheContentWithTheHand) {
  wheel({0, -30});
  EXPECT_EQ(origin(), (CGPoint{0, 30}));
  wheel({-5, 10});
  EXPECT_EQ(origin(), (CGPoint{5, 20}));
}

TEST_F(NSScrollViewTest, TheWheelMovesADocumentThatCountsUpwardWithTheHand) {
  scrollView->setDocumentView(make<NSView>(CGRect{0, 0, 100, 1000}));
  wheel({0, -30});
  EXPECT_EQ(origin(), (CGPoint{0, 870}));
}

TEST_F(NSScrollViewTest, TheWheelStopsAtWholePointsAndItsSmallStepsAddUp) {
  wheel({0, -0.4});
  EXPECT_EQ(origin().y, 0);
  wheel({0, -0.4});
  EXPECT_EQ(origin().y, 1);
  for (int i = 0; i < 8; ++i) wheel({0, -0.4});
  EXPECT_EQ(origin().y, 4);
}

TEST_F(NSScrollViewTest, WhatIsNotANumberScrollsNothing) {
  constexpr double nan = std::numeric_limits<double>::quiet_NaN();
  scrollTo({0, 50});
  wheel({nan, nan});
  scrollTo({nan, nan});
  EXPECT_EQ(origin(), (CGPoint{0, 50}));
  wheel({0, -10});
  EXPECT_EQ(origin(), (CGPoint{0, 60}));
}

TEST_F(NSScrollViewTest, AtTheEndOfItsWayTheWheelContinuesToTheViewAround) {
  const auto around = make<ProbeView>(CGRect{0, 0, 200, 150});
  window->contentView()->addSubview(around);
  scrollView->removeFromSuperview();
  around->addSubview(scrollView);
  const auto wheels = [&] { return std::count(around->calls.begin(), around->calls.end(), "scrollWheel"); };
  wheel({0, 20});
  EXPECT_EQ(wheels(), 1);
  wheel({0, -20});
  EXPECT_EQ(wheels(), 1);
  scrollTo({0, 900});
  wheel({0, -0.1});
  EXPECT_EQ(wheels(), 2);
}

TEST_F(NSScrollViewTest, AtTheEndOfItsWayTheWheelForgetsItsSmallSteps) {
  wheel({0, -0.4});
  wheel({0, 0.5});
  wheel({0, -0.2});
  EXPECT_EQ(origin().y, 0);
}

TEST_F(NSScrollViewTest, AWheelThatDoesNotTurnRoundsNothing) {
  scrollTo({0, 10.5});
  wheel({0, 0});
  EXPECT_EQ(origin().y, 10.5);
}

TEST_F(NSScrollViewTest, AtAnEndBetweenWholePointsSmallStepsOfTheWheelMoveNothing) {
  document->setFrame({0, 0, 300, 1000.5});
  scrollTo({0, 900});
  wheel({0, -0.6});
  EXPECT_EQ(origin().y, 900.5);
  for (int i = 0; i < 4; ++i) {
    wheel({0, -0.3});
    EXPECT_EQ(origin().y, 900.5);
  }
}

TEST_F(NSScrollViewTest, AStepThatTakesBackASmallOneDoesNotContinueToTheViewAround) {
  const auto around = make<ProbeView>(CGRect{0, 0, 200, 150});
  window->contentView()->addSubview(around);
  scrollView->removeFromSuperview();
  around->addSubview(scrollView);
  scrollTo({0, 50});
  wheel({0, -0.25});
  wheel({0, 0.25});
  EXPECT_EQ(std::count(around->calls.begin(), around->calls.end(), "scrollWheel"), 0);
}

// Bars.

TEST_F(NSScrollViewTest, ALayoutDoesNotStopAScrollThatIsUnderWay) {
  const Ref<NSClipView> clip = scrollView->contentView();
  layOut();
  clip->animator()->setBoundsOrigin({0, 500});
  desktop.advance(0.02);
  clip->setNeedsLayout(true);
  desktop.advance(1);
  EXPECT_EQ(origin(), (CGPoint{0, 500}));
}

TEST_F(NSScrollViewTest, AScrollThatIsUnderWayContinuesWithinADocumentThatHasShrunk) {
  struct {
    CGFloat from, to, atOnce, atTheEnd;
  } cases[] = {{0, 500, 0, 200}, {400, 500, 200, 200}, {900, 100, 200, 100}};
  for (const auto& [from, to, atOnce, atTheEnd] : cases) {
    document->setFrame({0, 0, 300, 1000});
    scrollTo({0, from});
    scrollView->contentView()->animator()->setBoundsOrigin({0, to});
    document->setFrame({0, 0, 300, 300});
    layOut();
    EXPECT_EQ(origin().y, atOnce);
    for (int frame = 0; frame < 50; ++frame) {
      desktop.advance(0.01);
      EXPECT_LE(origin().y, 200);
    }
    EXPECT_EQ(origin().y, atTheEnd);
  }
}

TEST_F(NSScrollViewTest, AScrollThatIsUnderWayMovesTheKnob) {
  scrollView->setHasVerticalScroller(true);
  layOut();
  scrollView->contentView()->animator()->setBoundsOrigin({0, 450});
  desktop.advance(0.1);
  EXPECT_GT(verticalBar().doubleValue(), 0);
  EXPECT_EQ(verticalBar().doubleValue(), origin().y / 900);
  desktop.advance(1);
  EXPECT_EQ(verticalBar().doubleValue(), 0.5);
}

TEST_F(NSScrollViewTest, BarsTakeTheirRoomFromTheClipView) {
  scrollView->setHasVerticalScroller(true);
  EXPECT_EQ(clipFrame(), (CGRect{0, 0, 88, 100}));
  EXPECT_EQ(verticalBar().frame(), (CGRect{88, 0, 12, 100}));
  scrollView->setHasHorizontalScroller(true);
  EXPECT_EQ(clipFrame(), (CGRect{0, 0, 88, 88}));
  EXPECT_EQ(horizontalBar().frame(), (CGRect{0, 88, 88, 12}));
  scrollView->setHasVerticalScroller(false);
  EXPECT_EQ(clipFrame(), (CGRect{0, 0, 100, 88}));
}

TEST_F(NSScrollViewTest, ABorderTakesAPointAround) {
  scrollView->setBorderType(NSLineBorder);
  EXPECT_EQ(clipFrame(), (CGRect{1, 1, 98, 98}));
}

TEST_F(NSScrollViewTest, TheKnobShowsWhereAndHowMuch) {
  scrollView->setHasVerticalScroller(true);
  EXPECT_EQ(verticalBar().knobProportion(), 0.1);
  EXPECT_EQ(verticalBar().doubleValue(), 0);
  scrollTo({0, 450});
  EXPECT_EQ(verticalBar().doubleValue(), 0.5);
  document->setFrame({0, 0, 300, 200});
  EXPECT_EQ(verticalBar().knobProportion(), 0.5);
  EXPECT_EQ(verticalBar().doubleValue(), 1);
}

TEST_F(NSScrollViewTest, TheKnobOfADocumentThatCountsUpwardStartsAtTheTop) {
  scrollView->setHasVerticalScroller(true);
  scrollView->setDocumentView(make<NSView>(CGRect{0, 0, 100, 1000}));
  EXPECT_EQ(verticalBar().doubleValue(), 0);
  scrollTo({0, 0});
  EXPECT_EQ(verticalBar().doubleValue(), 1);
}

TEST_F(NSScrollViewTest, BarsThatHideComeOnlyWhenThereIsAWayToGo) {
  scrollView->setAutohidesScrollers(true);
  scrollView->setHasVerticalScroller(true);
  scrollView->setHasHorizontalScroller(true);
  document->setFrame({0, 0, 100, 100});
  EXPECT_TRUE(verticalBar().isHidden());
  EXPECT_TRUE(horizontalBar().isHidden());
  EXPECT_EQ(clipFrame(), (CGRect{0, 0, 100, 100}));
  document->setFrame({0, 0, 80, 1000});
  EXPECT_FALSE(verticalBar().isHidden());
  EXPECT_TRUE(horizontalBar().isHidden());
  document->setFrame({0, 0, 80, 100});
  EXPECT_TRUE(verticalBar().isHidden());
}

TEST_F(NSScrollViewTest, BarsThatHideGoWithADocumentThatIsTakenOut) {
  scrollView->setAutohidesScrollers(true);
  scrollView->setHasVerticalScroller(true);
  scrollTo({0, 500});
  desktop.settle();
  ASSERT_FALSE(scrollView->verticalScroller()->isHidden());
  document->removeFromSuperview();
  desktop.settle();
  EXPECT_TRUE(scrollView->verticalScroller()->isHidden());
  EXPECT_EQ(scrollView->contentView()->bounds(), (CGRect{0, 0, 100, 100}));
}

TEST_F(NSScrollViewTest, ABarThatComesTakesRoomSoThatTheOtherIsNeeded) {
  scrollView->setAutohidesScrollers(true);
  scrollView->setHasVerticalScroller(true);
  scrollView->setHasHorizontalScroller(true);
  document->setFrame({0, 0, 95, 1000});  // wide enough but for the vertical bar
  EXPECT_FALSE(horizontalBar().isHidden());
  document->setFrame({0, 0, 300, 95});  // high enough but for the horizontal one
  EXPECT_FALSE(horizontalBar().isHidden());
  EXPECT_FALSE(verticalBar().isHidden());
}

TEST_F(NSScrollViewTest, ADocumentThatFollowsTheWidthNeedsNoHorizontalBar) {
  document->setFrame({0, 0, 100, 100});
  document->setAutoresizingMask(NSViewWidthSizable);
  scrollView->setAutohidesScrollers(true);
  scrollView->setHasVerticalScroller(true);
  scrollView->setHasHorizontalScroller(true);
  document->setFrameSize({100, 1000});
  EXPECT_FALSE(verticalBar().isHidden());
  EXPECT_TRUE(horizontalBar().isHidden());
  EXPECT_EQ(document->frame().size.width, 88);
}

TEST_F(NSScrollViewTest, DraggingTheKnobScrolls) {
  scrollView->setHasVerticalScroller(true);
  // The knob is 24 points long, the least, and its way 76.
  user.press(*window, onBar(10));
  user.dragTo(onBar(10 + 38));
  EXPECT_EQ(origin().y, 450);
  user.dragTo(onBar(900));
  EXPECT_EQ(origin().y, 900);
  user.dragTo(onBar(10));
  EXPECT_EQ(origin().y, 0);
  user.release();
  user.dragTo(onBar(50));
  EXPECT_EQ(origin().y, 0);
}

TEST_F(NSScrollViewTest, AClickBesideTheKnobGoesAPageOn) {
  scrollView->setHasVerticalScroller(true);
  user.click(*window, onBar(90));
  EXPECT_EQ(origin().y, 90);
  user.click(*window, onBar(99));
  EXPECT_EQ(origin().y, 180);
  user.click(*window, onBar(1));
  EXPECT_EQ(origin().y, 90);
}

TEST_F(NSScrollViewTest, TheHorizontalBarScrollsAcross) {
  scrollView->setHasHorizontalScroller(true);
  const auto& bar = scrollView->horizontalScroller();
  user.click(*window, bar->convertPointToView({95, 6}, nullptr));
  EXPECT_EQ(origin(), (CGPoint{90, 0}));
}

TEST_F(NSScrollViewTest, DraggingTheKnobOfTheHorizontalBarScrollsAcross) {
  scrollView->setHasHorizontalScroller(true);
  document->setFrame({0, 0, 300, 2000});
  layOut();
  const auto& bar = scrollView->horizontalScroller();
  // The knob is a third of the bar.
  user.press(*window, bar->convertPointToView({10, 6}, nullptr));
  user.dragTo(bar->convertPointToView({10 + 100.0 / 3, 6}, nullptr));
  user.release();
  EXPECT_NEAR(origin().x, 100, 1e-9);
  EXPECT_EQ(origin().y, 0);
}

TEST_F(NSScrollViewTest, DraggingTheKnobDownScrollsADocumentThatCountsUpwardDown) {
  scrollView->setHasVerticalScroller(true);
  scrollView->setDocumentView(make<NSView>(CGRect{0, 0, 100, 1000}));
  user.press(*window, onBar(10));
  user.dragTo(onBar(10 + 38));
  EXPECT_EQ(origin().y, 450);
  user.dragTo(onBar(900));
  EXPECT_EQ(origin().y, 0);
}

TEST_F(NSScrollViewTest, WithoutADocumentOrAScrollerNothingIsScrolled) {
  scrollView->setHasVerticalScroller(true);
  scrollView->performSelector("scrollerMoved:", nullptr);
  EXPECT_EQ(origin(), (CGPoint{0, 0}));
  scrollView->setDocumentView(nullptr);
  scrollView->performSelector("scrollerMoved:", scrollView->verticalScroller().get());
  EXPECT_EQ(origin(), (CGPoint{0, 0}));
}

TEST_F(NSScrollViewTest, ABarThatIsNotWantedAnyMoreLeavesTheView) {
  scrollView->setHasVerticalScroller(true);
  const Ref<NSView> bar = scrollView->verticalScroller();
  scrollView->setHasVerticalScroller(false);
  EXPECT_EQ(bar->superview(), nullptr);
}

TEST_F(NSScrollViewTest, BarsThatAreToHideDoSoAtTheNextLayout) {
  scrollView->setHasVerticalScroller(true);
  document->setFrame({0, 0, 50, 50});
  EXPECT_FALSE(verticalBar().isHidden());
  scrollView->setAutohidesScrollers(true);
  EXPECT_TRUE(verticalBar().isHidden());
}

TEST_F(NSScrollViewTest, FillsItselfUnlessItIsToDrawNoBackground) {
  const auto fills = [&] {
    return harness::only("fill", harness::recordingOf([&] { scrollView->drawRect({0, 0, 9, 9}); }));
  };
  EXPECT_EQ(fills().size(), 1u);
  desktop.settle();
  scrollView->setDrawsBackground(false);
  EXPECT_TRUE(scrollView->needsDisplay());
  EXPECT_EQ(fills().size(), 0u);
}

TEST_F(NSScrollViewTest, AClickBelowAShortDocumentIsNotTheDocuments) {
  const auto around = make<ProbeView>(CGRect{0, 0, 200, 150});
  window->contentView()->addSubview(around);
  scrollView->removeFromSuperview();
  around->addSubview(scrollView);
  document->setFrame({0, 0, 100, 50});
  layOut();
  user.press(*window, {60, 30});
  EXPECT_EQ(std::count(document->calls.begin(), document->calls.end(), "mouseDown"), 0);
  EXPECT_EQ(std::count(around->calls.begin(), around->calls.end(), "mouseDown"), 1);
}

TEST_F(NSScrollViewTest, ScrollingRedrawsTheBarsOnlyIfTheyMove) {
  scrollView->setHasVerticalScroller(true);
  scrollView->setHasHorizontalScroller(true);
  desktop.settle();
  scrollTo({0, 100});
  EXPECT_TRUE(scrollView->verticalScroller()->needsDisplay());
  EXPECT_FALSE(scrollView->horizontalScroller()->needsDisplay());
}

TEST_F(NSScrollViewTest, IsDecodedWithItsBars) {
  NSCoder coder(R"({"frame": [0, 0, 100, 50], "hasVerticalScroller": true, "autohidesScrollers": true})");
  const auto decoded = make<NSScrollView>(coder);
  ASSERT_NE(decoded, nullptr);
  EXPECT_TRUE(decoded->hasVerticalScroller());
  EXPECT_FALSE(decoded->hasHorizontalScroller());
  EXPECT_TRUE(decoded->autohidesScrollers());
  EXPECT_EQ(decoded->verticalScroller()->target(), decoded);
}

TEST_F(NSScrollViewTest, IsDecodedWithWhatItShowsAndDraws) {
  NSCoder coder(R"({"frame": [0, 0, 100, 50], "hasHorizontalScroller": true, "drawsBackground": false})");
  const auto decoded = make<NSScrollView>(coder);
  EXPECT_EQ(decoded->contentView()->superview(), decoded.get());
  EXPECT_FALSE(decoded->hasVerticalScroller());
  EXPECT_TRUE(decoded->hasHorizontalScroller());
  EXPECT_FALSE(decoded->drawsBackground());
  NSCoder silent(R"({"frame": [0, 0, 100, 50]})");
  EXPECT_TRUE(make<NSScrollView>(silent)->drawsBackground());
}
