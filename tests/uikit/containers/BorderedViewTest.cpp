#include "tessaluna/uikit/containers/BorderedView.h"

#include <gmock/gmock.h>

#include "tessaluna/platform/foundation/NSCoder.h"
#include "tessaluna/platform/graphics/NSBezierPath.h"
#include "tessaluna/platform/graphics/NSImage.h"
#include "tessaluna/platform/interface_files/NSNib.h"
#include "tessaluna/uikit/interfaceFileClasses.h"
#include "tests/harness/StillWorld.h"
#include "tests/harness/printing.h"
#include "tests/harness/recordingOf.h"

namespace TessalunaUIKit {
namespace {

using namespace tessaluna::platform;
using harness::Lines;
using testing::ElementsAre;
using testing::HasSubstr;

struct BorderedViewTest : harness::StillWorld {
  static Ref<BorderedView> sized(CGFloat width, CGFloat height) {
    NSCoder coder;
    coder.encode(CGRect{5, 6, width, height}, "frame");
    return make<BorderedView>(coder);
  }
  static Lines drawn(BorderedView& view) {
    return harness::recordingOf([&] { view.drawRect({0, 0, 1, 1}); });
  }
  static std::string colorLine(const Ref<NSColor>& color) {
    return harness::only("setFillColor", harness::recordingOf([&] { color->setFill(); })).at(0);
  }
  static std::string filledPath(CGRect rect, CGFloat radius) {
    return harness::only(
               "fill", harness::recordingOf([&] { NSBezierPath::bezierPathWithRoundedRect(rect, radius, radius)->fill(); }))
        .at(0);
  }
  Ref<BorderedView> view = sized(100, 40);
};

TEST_F(BorderedViewTest, StartsBlackWithALayerWhateverAnArchiveHolds) {
  NSCoder coder(R"({"borderColor": "redColor", "frame": [1, 2, 3, 4]})");
  const auto archived = make<BorderedView>(coder);
  EXPECT_EQ(archived->borderColor(), NSColor::blackColor());
  EXPECT_TRUE(archived->wantsLayer());
  EXPECT_FALSE(archived->isOpaque());
  EXPECT_EQ(archived->frame(), (CGRect{1, 2, 3, 4}));
  EXPECT_EQ(coder.firstUnknownKey(), std::nullopt);
}

TEST_F(BorderedViewTest, AnArchiveThatGivesNoViewGivesNone) {
  NSCoder coder;
  coder.fail("nothing here");
  EXPECT_EQ(make<BorderedView>(coder), nullptr);
}

TEST_F(BorderedViewTest, ThereIsNoMakingItWithAFrame) {
  EXPECT_DEATH(make<BorderedView>(CGRect{0, 0, 10, 10}), R"(TessalunaUIKit\.BorderedView.*init\(frame:\))");
}

TEST_F(BorderedViewTest, TheFrameIsTheRingBetweenTwoFills) {
  view->setBorderColor(NSColor::redColor());
  const Lines lines = drawn(*view);
  EXPECT_THAT(harness::only("setFillColor", lines),
              ElementsAre(colorLine(NSColor::redColor()), colorLine(NSColor::whiteColor())));
  EXPECT_EQ(harness::only("setStrokeColor", lines).size(), 1u);  // white is set for both
  EXPECT_THAT(harness::only("fill", lines), ElementsAre(filledPath({0, 1, 100, 39}, 3.6), filledPath({1, 2, 98, 37}, 2.6)));
}

TEST_F(BorderedViewTest, WithoutTheApplicationsAttentionTheColorIsMutedAndTheInsideStaysWhite) {
  view->setBorderColor(NSColor::redColor());
  NSApp->setActive(false);
  const Lines lines = drawn(*view);
  const auto muted = NSColor::redColor()->blendedColorWithFraction(0.7, NSColor::lightGrayColor());
  EXPECT_THAT(harness::only("setFillColor", lines), ElementsAre(colorLine(muted), colorLine(NSColor::whiteColor())));
  EXPECT_NE(colorLine(muted), colorLine(NSColor::redColor()));
  EXPECT_EQ(harness::only("setStrokeColor", lines).size(), 1u) << "that of the inside";
}

TEST_F(BorderedViewTest, AColorThatCannotBeBlendedLeavesTheFillColorAsItWas) {
  view->setBorderColor(NSColor::colorWithPatternImage(make<NSImage>(CGSize{4, 4})));
  NSApp->setActive(false);
  EXPECT_THAT(harness::only("setFillColor", drawn(*view)), ElementsAre(colorLine(NSColor::whiteColor())));
}

TEST_F(BorderedViewTest, ThePlaceOfTheFrameAndTheBoundsDoNotMatter) {
  const Lines before = drawn(*view);
  view->setFrameOrigin({70, 80});
  view->setBoundsOrigin({3, 4});
  EXPECT_EQ(drawn(*view), before);
}

TEST_F(BorderedViewTest, ATinyPanelPassesOnWhatIsLeft) {
  EXPECT_THAT(harness::only("fill", drawn(*sized(2, 40))),
              ElementsAre(filledPath({0, 1, 2, 39}, 3.6), filledPath({1, 2, 0, 37}, 2.6)));
  EXPECT_THAT(harness::only("fill", drawn(*sized(30, 3))),
              ElementsAre(filledPath({0, 1, 30, 2}, 3.6), filledPath({1, 2, 28, 0}, 2.6)));
}

TEST_F(BorderedViewTest, SettingTheColorRequestsARedrawAlsoOfTheSameColor) {
  const auto window = showWindowWith(view);
  view->setBorderColor(view->borderColor());
  EXPECT_TRUE(view->needsDisplay());
  desktop.settle();
  EXPECT_EQ(nativeOf(*window).paints().size(), 1u);
}

TEST_F(BorderedViewTest, TheMutedColorWaitsForTheNextRedraw) {
  const auto window = showWindowWith(view);
  NSApp->setActive(false);
  desktop.settle();
  EXPECT_TRUE(nativeOf(*window).paints().empty());
}

TEST_F(BorderedViewTest, DrawingWithoutAnApplicationStopsTheProgram) {
  EXPECT_DEATH(
      {
        NSApp.reset();
        drawn(*view);
      },
      "without an application");
}

TEST_F(BorderedViewTest, AnInterfaceFileSetsItsColor) {
  registerInterfaceFileClasses();
  const auto contents = make<NSNib>(R"({"objects": [{"class": "TessalunaUIKit.BorderedView", "frame": [0, 0, 9, 9],
      "properties": {"borderColor": "redColor"}}]})")
                            ->instantiateWithOwner(nullptr);
  ASSERT_EQ(contents.error, std::nullopt);
  EXPECT_EQ(std::dynamic_pointer_cast<BorderedView>(contents.topLevelObjects[0])->borderColor(), NSColor::redColor());
}

}  // namespace
}  // namespace TessalunaUIKit
