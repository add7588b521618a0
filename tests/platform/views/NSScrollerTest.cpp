#include "tessaluna/platform/views/NSScroller.h"

#include <gtest/gtest.h>

#include <cmath>

#include "tessaluna/platform/views/NSScrollView.h"
#include "tests/harness/ActionProbe.h"
#include "tests/harness/ProbeView.h"
#include "tests/harness/StillWorld.h"
#include "tests/harness/printing.h"
#include "tests/harness/recordingOf.h"

using namespace tessaluna::platform;
using harness::only;
using harness::recordingOf;

TEST(NSScroller, TheKnobIsItsShareOfTheSlotAndNotTooShortToGrab) {
  const auto scroller = make<NSScroller>(CGRect{0, 0, 12, 200});
  scroller->setKnobProportion(0.5);
  EXPECT_EQ(scroller->knobRect(), (CGRect{0, 0, 12, 100}));
  scroller->setDoubleValue(1);
  EXPECT_EQ(scroller->knobRect(), (CGRect{0, 100, 12, 100}));
  scroller->setKnobProportion(0.001);
  EXPECT_EQ(scroller->knobRect(), (CGRect{0, 176, 12, 24}));
}

TEST(NSScroller, TheKnobOfAShortSlotFillsIt) {
  const auto scroller = make<NSScroller>(CGRect{0, 0, 12, 15});
  scroller->setKnobProportion(0.1);
  EXPECT_EQ(scroller->knobRect(), (CGRect{0, 0, 12, 15}));
}

TEST(NSScroller, LiesAlongItsLongerSide) {
  const auto scroller = make<NSScroller>(CGRect{0, 0, 200, 12});
  EXPECT_FALSE(scroller->isVertical());
  scroller->setKnobProportion(0.25);
  scroller->setDoubleValue(0.5);
  EXPECT_EQ(scroller->knobRect(), (CGRect{75, 0, 50, 12}));
}

TEST(NSScroller, ValuesAreCutToTheirRange) {
  const auto scroller = make<NSScroller>(CGRect{0, 0, 12, 200});
  scroller->setDoubleValue(7);
  scroller->setKnobProportion(-1);
  EXPECT_EQ(scroller->doubleValue(), 1);
  EXPECT_EQ(scroller->knobProportion(), 0);
}

TEST(NSScroller, ANumberThatIsNoneIsTheStart) {
  const auto scroller = make<NSScroller>(CGRect{0, 0, 12, 200});
  scroller->setDoubleValue(0.5);
  scroller->setKnobProportion(0.5);
  scroller->setDoubleValue(std::nan(""));
  scroller->setKnobProportion(std::nan(""));
  EXPECT_EQ(scroller->doubleValue(), 0);
  EXPECT_EQ(scroller->knobProportion(), 0);
}

TEST(NSScroller, DrawsNoKnobWhereThereIsNothingToScroll) {
  const auto scroller = make<NSScroller>(CGRect{0, 0, 12, 200});
  EXPECT_TRUE(recordingOf([&] { scroller->drawRect({}); }).empty());
  scroller->setKnobProportion(0.5);
  EXPECT_EQ(only("fill", recordingOf([&] { scroller->drawRect({}); })).size(), 1u);
}

namespace {

class Listener : public NSObject {
 public:
  static const ClassInfo staticClassInfo;
  const ClassInfo& classInfo() const override { return staticClassInfo; }
  void moved(NSObject* sender) { parts.push_back(static_cast<NSScroller*>(sender)->hitPart()); }
  std::vector<NSScroller::Part> parts;
};
constexpr Selector listenerSelectors[] = {action<&Listener::moved>("moved:")};
const ClassInfo Listener::staticClassInfo{
    .name = "Tests.ScrollerListener", .base = &NSObject::staticClassInfo, .selectors = listenerSelectors};

class NSScrollerInAWindow : public harness::StillWorld {};

}  // namespace

TEST_F(NSScrollerInAWindow, SendsWithEachDragOfTheKnobAndWithEachPressBesideIt) {
  const auto scroller = make<NSScroller>(CGRect{0, 0, 12, 100});
  const auto listener = make<Listener>();
  scroller->setTarget(listener);
  scroller->setAction("moved:");
  scroller->setKnobProportion(0.5);
  const auto window = showWindowWith(scroller);
  using Part = NSScroller::Part;
  user.press(*window, {6, 90});
  EXPECT_TRUE(listener->parts.empty());
  user.dragTo({6, 80});
  user.dragTo({150, 70});  // beside the bar
  EXPECT_EQ(scroller->doubleValue(), 0.4);
  user.release();
  EXPECT_EQ(listener->parts, (std::vector{Part::Knob, Part::Knob}));
  listener->parts.clear();
  user.press(*window, {6, 1});
  user.dragTo({6, 90});
  user.release();
  EXPECT_EQ(listener->parts, (std::vector{Part::PageAfter}));
  EXPECT_EQ(scroller->doubleValue(), 0.4);
}

TEST_F(NSScrollerInAWindow, TheKnobIsDarkerWhileItIsHeld) {
  const auto scroller = make<NSScroller>(CGRect{0, 0, 12, 100});
  scroller->setKnobProportion(0.5);
  const auto window = showWindowWith(scroller);
  const auto look = [&] { return recordingOf([&] { scroller->drawRect({}); }); };
  const auto released = look();
  user.press(*window, {6, 1});
  EXPECT_EQ(look(), released);
  user.release();
  user.press(*window, {6, 90});
  EXPECT_NE(look(), released);
  user.release();
  EXPECT_EQ(look(), released);
}

TEST_F(NSScrollerInAWindow, AValueThatIsTheSameAsksForNoRedraw) {
  const auto scroller = make<NSScroller>(CGRect{0, 0, 12, 100});
  scroller->setDoubleValue(1);
  const auto window = showWindowWith(scroller);
  scroller->setDoubleValue(7);
  scroller->setStringValue("1");
  EXPECT_FALSE(scroller->needsDisplay());
  scroller->setDoubleValue(0.5);
  EXPECT_TRUE(scroller->needsDisplay());
}

TEST_F(NSScrollerInAWindow, LetsGoOfItsKnobWhenItIsHiddenOrTakenAway) {
  const auto scroller = make<NSScroller>(CGRect{0, 0, 12, 100});
  scroller->setKnobProportion(0.5);
  const auto window = showWindowWith(scroller);
  const auto dragAfter = [&](auto disturb) {
    scroller->setDoubleValue(0);
    user.press(*window, {6, 90});
    user.dragTo({6, 80});
    disturb();
    const CGFloat value = scroller->doubleValue();
    user.dragTo({6, 60});
    user.release();
    return scroller->doubleValue() - value;
  };
  EXPECT_GT(dragAfter([] {}), 0.3);
  EXPECT_EQ(dragAfter([&] {
              scroller->setHidden(true);
              scroller->setHidden(false);
            }),
            0);
  EXPECT_EQ(dragAfter([&] {
              scroller->removeFromSuperview();
              window->contentView()->addSubview(scroller);
            }),
            0);
}

namespace {

// A scroll view of 88 by 100 over a document of 1,000, with a bar of 12 by 100 at its right: a page is 90 points. The knob has its
// shortest length of 24 points and 76 points to go.
class NSScrollerHeldBesideItsKnob : public harness::StillWorld {
 protected:
  NSScrollerHeldBesideItsKnob() {
    scrollView->setHasVerticalScroller(true);
    const auto document = make<harness::ProbeView>(CGRect{0, 0, 88, 1000});
    document->flipped = true;
    scrollView->setDocumentView(document);

    window = showWindowWith(scrollView);
  }
  CGFloat scrolled() const { return scrollView->contentView()->bounds().origin.y; }
  // In the window, so far from the bar's start.
  static CGPoint onBar(CGFloat along) { return {94, 100 - along}; }

  Ref<NSScrollView> scrollView = make<NSScrollView>(CGRect{0, 0, 100, 100});
  Ref<NSWindow> window;
};

}  // namespace

TEST_F(NSScrollerHeldBesideItsKnob, ContinuesPageByPageAfterAWhile) {
  user.press(*window, onBar(99));
  EXPECT_EQ(scrolled(), 90);
  desktop.advance(0.49);
  EXPECT_EQ(scrolled(), 90);
  desktop.advance(0.02);
  EXPECT_EQ(scrolled(), 180);
  desktop.advance(0.1);
  EXPECT_EQ(scrolled(), 360);
  user.release();
  desktop.advance(5);
  EXPECT_EQ(scrolled(), 360);
}

TEST_F(NSScrollerHeldBesideItsKnob, StopsWhereTheKnobIsUnderThePointer) {
  user.press(*window, onBar(60));
  desktop.advance(5);
  // The knob ends past 60 once it has gone more than 36 of its 76 points: after 900 * 36 / 76 = 426 points, so with the fifth page.
  EXPECT_EQ(scrolled(), 450);
  EXPECT_TRUE(NSPointInRect({6, 60}, scrollView->verticalScroller()->knobRect()));
  user.dragTo(onBar(99));
  desktop.advance(5);
  EXPECT_EQ(scrolled(), 900);
  user.dragTo(onBar(1));
  desktop.advance(5);
  EXPECT_EQ(scrolled(), 900);
  user.release();
}

TEST_F(NSScrollerHeldBesideItsKnob, WaitsWhileThePointerIsBesideTheBar) {
  user.press(*window, onBar(99));
  user.dragTo({20, 1});
  desktop.advance(5);
  EXPECT_EQ(scrolled(), 90);
  user.dragTo(onBar(99));
  desktop.advance(0.06);
  EXPECT_EQ(scrolled(), 180);
  user.release();
}

TEST_F(NSScrollerHeldBesideItsKnob, GoesBackTheSameWay) {
  scrollView->contentView()->scrollToPoint({0, 900});
  user.press(*window, onBar(1));
  desktop.advance(5);
  EXPECT_EQ(scrolled(), 0);
  user.release();
}

TEST_F(NSScrollerHeldBesideItsKnob, StopsWhenItIsHiddenDisabledOrTakenAway) {
  const auto scrolledAfter = [&](auto disturb) {
    scrollView->contentView()->scrollToPoint({0, 0});
    user.press(*window, onBar(99));
    disturb();
    const CGFloat before = scrolled();
    desktop.advance(5);
    user.release();
    return scrolled() - before;
  };
  const Ref<NSScroller> bar = scrollView->verticalScroller();
  EXPECT_EQ(scrolledAfter([] {}), 810);
  EXPECT_EQ(scrolledAfter([&] { bar->setEnabled(false); }), 0);
  bar->setEnabled(true);
  EXPECT_EQ(scrolledAfter([&] { scrollView->setHidden(true); }), 0);
  scrollView->setHidden(false);
  EXPECT_EQ(scrolledAfter([&] { scrollView->removeFromSuperview(); }), 0);
}

TEST_F(NSScrollerInAWindow, AHeldPressMayEndWithTheScrollerGone) {
  auto scroller = make<NSScroller>(CGRect{0, 0, 12, 100});
  const auto listener = make<harness::ActionProbe>();
  listener->onAct = [&] {
    if (listener->acts < 2) return;
    scroller->removeFromSuperview();
    scroller.reset();
  };
  scroller->setTarget(listener);
  scroller->setAction("act:");
  scroller->setKnobProportion(0.1);
  const auto window = showWindowWith(scroller);
  user.press(*window, {6, 1});
  desktop.advance(5);
  EXPECT_EQ(listener->acts, 2);
  user.release();
}
