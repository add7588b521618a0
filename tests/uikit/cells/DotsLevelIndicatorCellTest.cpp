#include "tessaluna/uikit/cells/DotsLevelIndicatorCell.h"

#include <gmock/gmock.h>

#include "tessaluna/platform/foundation/NSCoder.h"
#include "tessaluna/platform/graphics/NSColor.h"
#include "tessaluna/platform/graphics/NSImage.h"
#include "tessaluna/platform/views/NSLevelIndicator.h"
#include "tests/harness/StillWorld.h"
#include "tests/harness/recordingOf.h"

namespace TessalunaUIKit {
namespace {

using namespace tessaluna::platform;
using harness::Lines;

struct DotsLevelIndicatorCellTest : harness::StillWorld {
  NSCoder coder{R"({"doubleValue": 2, "borderColor": "redColor", "highlighted": false})"};
  Ref<DotsLevelIndicatorCell> cell = make<DotsLevelIndicatorCell>(coder);
  Ref<NSLevelIndicator> indicator = make<NSLevelIndicator>(CGRect{0, 0, 70, 14});

  Lines drawn(const Ref<NSCell>& which) {
    return harness::recordingOf([&] { which->drawWithFrame({0, 0, 70, 14}, *indicator); });
  }
};

TEST_F(DotsLevelIndicatorCellTest, FromAnArchiveItIsHighlightedWithABlackBorderWhateverTheArchiveHolds) {
  EXPECT_TRUE(cell->isHighlighted());
  EXPECT_EQ(cell->borderColor(), NSColor::blackColor());
}

TEST_F(DotsLevelIndicatorCellTest, DrawsWhatAHighlightedStockCellDraws) {
  const auto stock = make<NSLevelIndicatorCell>();
  stock->setDoubleValue(2);
  EXPECT_NE(drawn(cell), drawn(stock));
  stock->setHighlighted(true);
  EXPECT_EQ(drawn(cell), drawn(stock));
}

TEST_F(DotsLevelIndicatorCellTest, TheBorderColorIsOnlyStored) {
  const Lines before = drawn(cell);
  cell->setBorderColor(NSColor::redColor());
  EXPECT_EQ(cell->borderColor(), NSColor::redColor());
  EXPECT_EQ(drawn(cell), before);
}

TEST_F(DotsLevelIndicatorCellTest, SettingTheColorAsksForNoRedraw) {
  indicator->setCell(cell);
  const auto window = showWindowWith(indicator);
  cell->setBorderColor(NSColor::redColor());
  desktop.settle();
  EXPECT_TRUE(nativeOf(*window).paints().empty());
}

TEST_F(DotsLevelIndicatorCellTest, StaysHighlightedWhenAPressHasChangedItsValue) {
  cell->setEditable(true);
  indicator->setCell(cell);
  const auto window = showWindowWith(indicator);
  user.click(*window, {50, 7});
  EXPECT_EQ(indicator->doubleValue(), 4);
  EXPECT_TRUE(cell->isHighlighted());
}

TEST_F(DotsLevelIndicatorCellTest, ACopyIsHighlightedAndHasTheColor) {
  cell->setBorderColor(NSColor::redColor());
  const auto copy = std::dynamic_pointer_cast<DotsLevelIndicatorCell>(cell->copy());
  ASSERT_NE(copy, nullptr);
  EXPECT_TRUE(copy->isHighlighted());
  EXPECT_EQ(copy->borderColor(), NSColor::redColor());
}

using DotsLevelIndicatorCellDeathTest = DotsLevelIndicatorCellTest;

TEST_F(DotsLevelIndicatorCellDeathTest, MakingItInCodeStopsTheProgram) {
  const std::string name = "TessalunaUIKit.DotsLevelIndicatorCell.*";
  EXPECT_DEATH(make<DotsLevelIndicatorCell>(), name + "init\\(\\)");
  EXPECT_DEATH(make<DotsLevelIndicatorCell>(NSLevelIndicatorStyleRating), name + "init\\(levelIndicatorStyle:\\)");
  EXPECT_DEATH(make<DotsLevelIndicatorCell>(std::string("text")), name + "init\\(textCell:\\)");
  EXPECT_DEATH(make<DotsLevelIndicatorCell>(Ref<NSImage>()), name + "init\\(imageCell:\\)");
}

}  // namespace
}  // namespace TessalunaUIKit
