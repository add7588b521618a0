#include "tessaluna/platform/views/NSScroller.h"

#include <gtest/gtest.h>

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
