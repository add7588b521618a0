#include "tessaluna/uikit/trackrow/CloseButton.h"

#include <gmock/gmock.h>

#include "tessaluna/platform/foundation/NSCoder.h"
#include "tessaluna/uikit/stylekit/TessalunaStyleKit.h"
#include "tests/harness/StillWorld.h"
#include "tests/harness/printing.h"
#include "tests/harness/recordingOf.h"

using namespace tessaluna::platform;
using TessalunaUIKit::CloseButton;
using Kit = TessalunaUIKit::TessalunaStyleKit;
using harness::Lines;
using harness::recordingOf;

namespace {

class Host : public NSObject {
 public:
  static const ClassInfo staticClassInfo;
  const ClassInfo& classInfo() const override { return staticClassInfo; }
  void close(NSObject*) { ++closes; }
  int closes = 0;
};
constexpr Selector hostSelectors[] = {action<&Host::close>("close:")};
const ClassInfo Host::staticClassInfo{
    .name = "Tests.ClosingHost", .base = &NSObject::staticClassInfo, .selectors = hostSelectors};

// A button of 16 by 16 at (10, 10).
class CloseButtonTest : public harness::StillWorld {
 protected:
  Ref<CloseButton> button = make<CloseButton>(CGRect{10, 10, 16, 16});

  Lines drawn() const {
    return recordingOf([this] { button->drawRect({0, 0, 16, 16}); });
  }
  static Lines cross(bool isPressed) {
    return recordingOf([=] { Kit::drawCloseButton({0, 0, 16, 16}, isPressed); });
  }
  static constexpr CGPoint inside{18, 18}, outside{100, 100};
};

}  // namespace

TEST_F(CloseButtonTest, DrawsACross) { EXPECT_EQ(drawn(), cross(false)); }

TEST_F(CloseButtonTest, IsDecodedFromAnArchive) {
  NSCoder coder(R"({"frame": [1, 2, 16, 16], "action": "close:"})");
  button = make<CloseButton>(coder);
  EXPECT_EQ(button->frame(), (CGRect{1, 2, 16, 16}));
  EXPECT_EQ(button->action(), "close:");
  EXPECT_EQ(drawn(), cross(false));
  EXPECT_EQ(button->className(), "TessalunaUIKit.CloseButton");
}

TEST_F(CloseButtonTest, TheCrossFillsTheRectangleThatIsRedrawnAndNotTheBounds) {
  EXPECT_EQ(recordingOf([&] { button->drawRect({5, 6, 7, 8}); }), recordingOf([] { Kit::drawCloseButton({5, 6, 7, 8}); }));
}

TEST_F(CloseButtonTest, ADisabledOneLooksLikeAnEnabledOne) {
  button->setEnabled(false);
  EXPECT_EQ(drawn(), cross(false));
}

TEST_F(CloseButtonTest, PressedItIsThickAndReleasedThinAgain) {
  const auto window = showWindowWith(button);
  user.press(*window, inside);
  EXPECT_EQ(drawn(), cross(true));
  user.dragTo(outside);
  EXPECT_EQ(drawn(), cross(false));
  user.release();
  EXPECT_EQ(drawn(), cross(false));
}

TEST_F(CloseButtonTest, AClickSendsItsAction) {
  const auto host = make<Host>();
  button->setTarget(host);
  button->setAction("close:");
  const auto window = showWindowWith(button);
  user.click(*window, inside);
  EXPECT_EQ(host->closes, 1);
}

TEST_F(CloseButtonTest, Before1010AButtonWithoutACellDrawsAsPressed) {
  button->setCell(nullptr);
  EXPECT_EQ(drawn(), cross(false));
  setOperatingSystemVersion({10, 9, 5});
  EXPECT_EQ(drawn(), cross(true));
}

TEST_F(CloseButtonTest, Before1010ItIsTheModifiersOfTheLastPressThatCount) {
  setOperatingSystemVersion({10, 9, 5});
  const auto window = showWindowWith(button);
  user.click(*window, inside);
  EXPECT_EQ(drawn(), cross(false));
  user.click(*window, inside, {.modifiers = NSEventModifierFlagControl});
  EXPECT_EQ(drawn(), cross(true));
}
