#include "tessaluna/uikit/trackrow/PrevNextButton.h"

#include <gmock/gmock.h>

#include "tessaluna/platform/foundation/NSCoder.h"
#include "tessaluna/uikit/stylekit/TessalunaStyleKit.h"
#include "tests/harness/StillWorld.h"
#include "tests/harness/printing.h"
#include "tests/harness/recordingOf.h"

using namespace tessaluna::platform;
using TessalunaUIKit::PrevNextButton;
using Kit = TessalunaUIKit::TessalunaStyleKit;
using harness::Lines;
using harness::recordingOf;
using testing::ElementsAre;

namespace {

class Host : public NSObject {
 public:
  static const ClassInfo staticClassInfo;
  const ClassInfo& classInfo() const override { return staticClassInfo; }
  void step(NSObject* sender) { senders.push_back(sender); }
  std::vector<NSObject*> senders;
};
constexpr Selector hostSelectors[] = {action<&Host::step>("step:")};
const ClassInfo Host::staticClassInfo{.name = "Tests.Host", .base = &NSObject::staticClassInfo, .selectors = hostSelectors};

// A button of 20 by 20 at (10, 10).
class PrevNextButtonTest : public harness::StillWorld {
 protected:
  Ref<PrevNextButton> button = make<PrevNextButton>(CGRect{10, 10, 20, 20});

  Lines drawn() const {
    return recordingOf([this] { button->drawRect(box); });
  }
  static Lines leftArrow(bool enabled, bool isPressed) {
    return recordingOf([=] { Kit::drawLeftArrow(box, enabled, isPressed); });
  }
  static Lines rightArrow(bool enabled, bool isPressed) {
    return recordingOf([=] { Kit::drawRightArrow(box, enabled, isPressed); });
  }
  static constexpr CGRect box{0, 0, 20, 20};
  static constexpr CGPoint inside{20, 20}, outside{100, 100};
};

}  // namespace

TEST_F(PrevNextButtonTest, MadeInCodeItDrawsALeftChevron) {
  EXPECT_FALSE(button->next());
  EXPECT_EQ(drawn(), leftArrow(true, false));
}

TEST_F(PrevNextButtonTest, WithNextItDrawsARightChevron) {
  button->setNext(true);
  EXPECT_TRUE(button->next());
  EXPECT_EQ(drawn(), rightArrow(true, false));
}

TEST_F(PrevNextButtonTest, DecodedItPointsToTheLeftWhateverTheArchiveHolds) {
  NSCoder coder(R"({"frame": [1, 2, 20, 20], "next": true, "action": "step:", "cell": {"enabled": false}})");
  button = make<PrevNextButton>(coder);
  EXPECT_EQ(button->frame(), (CGRect{1, 2, 20, 20}));
  EXPECT_EQ(button->action(), "step:");
  EXPECT_FALSE(button->next());
  EXPECT_EQ(drawn(), leftArrow(false, false));
  EXPECT_EQ(button->className(), "TessalunaUIKit.PrevNextButton");
}

TEST_F(PrevNextButtonTest, NeitherBezelNorTitleAppear) {
  button->setTitle("Previous");
  EXPECT_EQ(drawn().size(), 2u);
}

TEST_F(PrevNextButtonTest, TheChevronFillsTheRectangleThatIsRedrawnAndNotTheBounds) {
  EXPECT_EQ(recordingOf([&] {
              button->drawRect({5, 6, 7, 8});
            }),
            recordingOf([] {
              Kit::drawLeftArrow({5, 6, 7, 8}, true, false);
            }));
  button->setNext(true);
  EXPECT_EQ(recordingOf([&] {
              button->drawRect({5, 6, 7, 8});
            }),
            recordingOf([] {
              Kit::drawRightArrow({5, 6, 7, 8}, true, false);
            }));
}

TEST_F(PrevNextButtonTest, APartialRedrawOnScreenScalesTheChevronToThatPart) {
  const auto window = showWindowWith(button);
  button->setNeedsDisplayInRect({0, 0, 10, 10});
  desktop.settle();
  const auto strokes = harness::only("stroke", nativeOf(*window).paints().back().lines);
  EXPECT_EQ(strokes, harness::only("stroke", recordingOf([] { Kit::drawLeftArrow({0, 0, 10, 10}, true, false); })));
}

TEST_F(PrevNextButtonTest, SetNextOnAVisibleButtonChangesNothingUntilTheNextRedraw) {
  const auto window = showWindowWith(button);
  button->setNext(true);
  desktop.settle();
  EXPECT_TRUE(nativeOf(*window).paints().empty());
  button->setNeedsDisplay(true);
  desktop.settle();
  EXPECT_EQ(harness::only("stroke", nativeOf(*window).paints().back().lines),
            harness::only("stroke", rightArrow(true, false)));
}

TEST_F(PrevNextButtonTest, PressedItIsThickAndReleasedThinAgain) {
  const auto window = showWindowWith(button);
  user.press(*window, inside);
  EXPECT_EQ(drawn(), leftArrow(true, true));
  user.dragTo(outside);
  EXPECT_EQ(drawn(), leftArrow(true, false));
  user.dragTo(inside);
  EXPECT_EQ(drawn(), leftArrow(true, true));
  user.release();
  EXPECT_EQ(drawn(), leftArrow(true, false));
}

TEST_F(PrevNextButtonTest, PressAndReleaseAreShownInTheWindow) {
  const auto window = showWindowWith(button);
  user.press(*window, inside);
  desktop.settle();
  EXPECT_EQ(harness::only("stroke", nativeOf(*window).paints().back().lines),
            harness::only("stroke", leftArrow(true, true)));
  user.release();
  desktop.settle();
  EXPECT_EQ(harness::only("stroke", nativeOf(*window).paints().back().lines),
            harness::only("stroke", leftArrow(true, false)));
}

TEST_F(PrevNextButtonTest, AReleaseInsideSendsItsActionAndOneOutsideDoesNot) {
  const auto host = make<Host>();
  button->setTarget(host);
  button->setAction("step:");
  const auto window = showWindowWith(button);
  user.click(*window, inside);
  EXPECT_THAT(host->senders, ElementsAre(button.get()));
  user.press(*window, inside);
  user.dragTo(outside);
  user.release();
  EXPECT_EQ(host->senders.size(), 1u);
}

TEST_F(PrevNextButtonTest, ADisabledButtonThatIsHighlightedIsGrayAndThick) {
  button->setEnabled(false);
  EXPECT_EQ(drawn(), leftArrow(false, false));
  button->setHighlighted(true);
  EXPECT_EQ(drawn(), leftArrow(false, true));
}

TEST_F(PrevNextButtonTest, APressOnADisabledButtonChangesNothing) {
  button->setEnabled(false);
  const auto window = showWindowWith(button);
  user.press(*window, inside);
  EXPECT_EQ(drawn(), leftArrow(false, false));
}

TEST_F(PrevNextButtonTest, Before1010AButtonWithoutACellDrawsAsPressed) {
  setOperatingSystemVersion({10, 9, 5});
  EXPECT_EQ(drawn(), leftArrow(true, false));
  button->setCell(nullptr);
  EXPECT_EQ(drawn(), leftArrow(false, true));
}

TEST_F(PrevNextButtonTest, Since1010AButtonWithoutACellDrawsAsReleased) {
  setOperatingSystemVersion({10, 10, 0});
  button->setCell(nullptr);
  EXPECT_EQ(drawn(), leftArrow(false, false));
}

TEST_F(PrevNextButtonTest, Before1010ItIsTheModifiersOfTheLastPressThatCount) {
  setOperatingSystemVersion({10, 9, 5});
  const auto window = showWindowWith(button);
  user.press(*window, inside);
  EXPECT_EQ(drawn(), leftArrow(true, false));
  user.release();
  user.click(*window, inside, {.modifiers = NSEventModifierFlagShift});
  EXPECT_EQ(drawn(), leftArrow(true, true));
}

TEST_F(PrevNextButtonTest, AHighlightCountsFrom10100On) {
  button->setHighlighted(true);
  setOperatingSystemVersion({10, 9, 9});
  EXPECT_EQ(drawn(), leftArrow(true, false));
  setOperatingSystemVersion({10, 10, 0});
  EXPECT_EQ(drawn(), leftArrow(true, true));
}
