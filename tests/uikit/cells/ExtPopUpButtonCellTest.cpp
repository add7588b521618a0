#include "tessaluna/uikit/cells/ExtPopUpButtonCell.h"

#include <gmock/gmock.h>

#include "tessaluna/platform/foundation/NSCoder.h"
#include "tessaluna/platform/text/NSFont.h"
#include "tessaluna/platform/views/NSPopUpButton.h"
#include "tests/harness/StillWorld.h"
#include "tests/harness/printing.h"
#include "tests/harness/recordingOf.h"

namespace TessalunaUIKit {
namespace {

using namespace tessaluna::platform;
using harness::Lines;
using harness::only;
using testing::ElementsAre;
using testing::IsEmpty;

// In a font of 10 points: a character, and "…", is 5 points wide, and a line 12 high.
class ExtPopUpButtonCellTest : public harness::StillWorld {
 protected:
  ExtPopUpButtonCellTest() {
    cell->setFont(NSFont::systemFontOfSize(10));
    button->setCell(cell);
  }
  Lines border(CGRect frame) {
    return harness::recordingOf([&] { cell->drawBorderAndBackgroundWithFrame(frame, *button); });
  }
  Lines title(CGRect frame) {
    return harness::recordingOf([&] { cell->drawTitleWithFrame(frame, *button); });
  }

  Ref<NSPopUpButton> button = make<NSPopUpButton>(CGRect{10, 100, 120, 24});
  Ref<ExtPopUpButtonCell> cell = make<ExtPopUpButtonCell>(std::string("abcdefgh"), false);
};

TEST_F(ExtPopUpButtonCellTest, MadeInCodeItIsDark) {
  EXPECT_TRUE(make<ExtPopUpButtonCell>()->useDarkTheme());
  EXPECT_TRUE(make<ExtPopUpButtonCell>(std::string("Title"), true)->useDarkTheme());
  EXPECT_TRUE(make<ExtPopUpButtonCell>(std::string("Title"), true)->pullsDown());
  EXPECT_EQ(make<ExtPopUpButtonCell>(std::string("Title"), false)->title(), "Title");
}

TEST_F(ExtPopUpButtonCellTest, FromAnArchiveItIsLightUntilTheThemeIsSet) {
  NSCoder coder(R"({"useDarkTheme": true, "fontSize": 10, "items": [{"title": "abcdefgh"}]})");
  const auto archived = make<ExtPopUpButtonCell>(coder);
  EXPECT_FALSE(archived->useDarkTheme());
  const Lines light = harness::recordingOf([&] { archived->drawWithFrame({0, 0, 120, 24}, *button); });
  const Lines dark = harness::recordingOf([&] { cell->drawWithFrame({0, 0, 120, 24}, *button); });
  EXPECT_NE(light, dark);
  archived->setUseDarkTheme(true);
  EXPECT_EQ(harness::recordingOf([&] { archived->drawWithFrame({0, 0, 120, 24}, *button); }), dark);
}

TEST_F(ExtPopUpButtonCellTest, TheBoxAndItsChevronsInTheDarkTheme) {
  EXPECT_EQ(
      border({10, 20, 100, 44}),
      (Lines{
          R"({"op":"setFillColor","color":[0.1,0.1,0.1,1]})",
          R"({"op":"fill","path":[["M",18,23],["L",102,23],["C",107,28,104.76142374915396,23,107,25.238576250846034],["L",107,56],["C",102,61,107,58.76142374915397,104.76142374915396,61],["L",18,61],["C",13,56,15.238576250846034,61,13,58.76142374915397],["L",13,28],["C",18,23,13,25.238576250846034,15.238576250846034,23],["Z"]],"shape":["roundedRect",13,23,94,38,5,5]})",
          R"({"op":"setStrokeColor","color":[0.25,0.25,0.25,1]})",
          R"({"op":"stroke","path":[["M",18,23],["L",102,23],["C",107,28,104.76142374915396,23,107,25.238576250846034],["L",107,56],["C",102,61,107,58.76142374915397,104.76142374915396,61],["L",18,61],["C",13,56,15.238576250846034,61,13,58.76142374915397],["L",13,28],["C",18,23,13,25.238576250846034,15.238576250846034,23],["Z"]],"shape":["roundedRect",13,23,94,38,5,5],"lineWidth":1,"cap":"butt","join":"miter","miterLimit":10,"dash":[],"phase":0})",
          R"({"op":"setStrokeColor","color":[0.9,0.9,0.9,1]})",
          R"({"op":"stroke","path":[["M",98,38.000119999999995],["L",91.06656,31.99992],["L",85,38.000119999999995],["M",98,45.999880000000005],["L",91.06656,52.00008],["L",85,45.999880000000005]],"lineWidth":1,"cap":"butt","join":"miter","miterLimit":10,"dash":[],"phase":0})"}));
}

TEST_F(ExtPopUpButtonCellTest, TheColorsOfTheLightTheme) {
  cell->setUseDarkTheme(false);
  const Lines box = border({10, 20, 100, 44});
  EXPECT_THAT(only("setFillColor", box), ElementsAre(R"({"op":"setFillColor","color":[0.9,0.9,0.9,1]})"));
  EXPECT_THAT(only("setStrokeColor", box), ElementsAre(R"({"op":"setStrokeColor","color":[0.75,0.75,0.75,1]})",
                                                       R"({"op":"setStrokeColor","color":[0,0,0,1],"named":"blackColor"})"));
  EXPECT_THAT(only("setFillColor", title({10, 20, 100, 44})),
              ElementsAre(R"({"op":"setFillColor","color":[0,0,0,1],"named":"blackColor"})"));
}

TEST_F(ExtPopUpButtonCellTest, NeitherStateNorBorderOfTheStockCellCounts) {
  const Lines before = border({0, 0, 100, 24});
  cell->setHighlighted(true);
  cell->setBordered(false);
  cell->setEnabled(false);
  cell->setState(NSControlStateValueOn);
  EXPECT_EQ(border({0, 0, 100, 24}), before);
}

TEST_F(ExtPopUpButtonCellTest, TheTitleIsBesideTheChevronsAndIsCutThere) {
  EXPECT_EQ(
      title({10, 20, 200, 25}),
      (Lines{
          R"({"op":"save"})", R"({"op":"clipRect","rect":[23,20,168,22]})", R"({"op":"save"})", R"({"op":"save"})",
          R"({"op":"concat","transform":[1,0,0,1,23,28]})", R"({"op":"setFillColor","color":[0.9,0.9,0.9,1]})",
          R"({"op":"glyphs","glyphs":[[97,0,0],[98,5,0],[99,10,0],[100,15,0],[101,20,0],[102,25,0],[103,30,0],[104,35,0]]})",
          R"({"op":"restore"})", R"({"op":"restore"})", R"({"op":"restore"})"}));
}

TEST_F(ExtPopUpButtonCellTest, WithoutAFontItIsTheSystemsAtItsUsualSize) {
  cell->setFont(nullptr);
  EXPECT_EQ(cell->shortenedTitle(51), u"abcdefgh");  // 8 * 6.5 is 52
  EXPECT_EQ(cell->shortenedTitle(50.9), u"abcdef…");
}

TEST_F(ExtPopUpButtonCellTest, ATitleThatIsUpToAPointTooWideStaysAndIsCutByTheClip) {
  EXPECT_EQ(cell->shortenedTitle(39), u"abcdefgh");
  EXPECT_EQ(cell->shortenedTitle(38.9), u"abcdef…");
  // (70.2 - 16) - 0.842 * 18 is a little more than 39.
  const Lines lines = title({0, 0, 70.2, 24});
  EXPECT_EQ(only("clipRect", lines).front(), R"({"op":"clipRect","rect":[13,0,39.0421052631579,21]})");
  EXPECT_EQ(only("glyphs", lines).size(), 1u);
}

TEST_F(ExtPopUpButtonCellTest, ATitleIsCutAtTheTail) {
  const std::pair<double, std::u16string_view> table[] = {
      {35, u"abcdef…"}, {34, u"abcde…"}, {30, u"abcde…"}, {20, u"abc…"}, {15, u"ab…"}, {10, u"a…"}, {9, u"…"}, {5, u"…"},
  };
  for (const auto& [width, expected] : table) EXPECT_EQ(cell->shortenedTitle(width), expected) << width;
}

// The last step of the search is the only one that has not measured what it takes.
TEST_F(ExtPopUpButtonCellTest, ACutTitleMayBeAPointTooWideAndElseLosesAUnit) {
  EXPECT_EQ(cell->shortenedTitle(19), u"abc…");
  EXPECT_EQ(cell->shortenedTitle(18.9), u"ab…");
}

TEST_F(ExtPopUpButtonCellTest, InACellNarrowerThanTheEllipsisThereIsTheEllipsisCutByTheClip) {
  for (const double width : {4.9, 3.0, 0.0, -20.0}) EXPECT_EQ(cell->shortenedTitle(width), u"…") << width;
  const Lines lines = title({0, 0, 33, 24});
  // What the chevrons leave: (33 - 16) - 0.842 * 18.
  EXPECT_EQ(only("clipRect", lines).front(), R"({"op":"clipRect","rect":[13,0,1.8421052631578956,21]})");
  EXPECT_EQ(only("glyphs", lines), (Lines{R"({"op":"glyphs","glyphs":[[8230,0,0]]})"}));
}

TEST_F(ExtPopUpButtonCellTest, WhereOnlyTheEllipsisIsLeftItIsAloneHoweverLongTheTitle) {
  std::string title;
  for (int length = 1; length <= 12; ++length) {
    title += 'a';
    cell->setTitle(title);
    EXPECT_EQ(cell->shortenedTitle(3.9), u"…") << length;
  }
}

TEST_F(ExtPopUpButtonCellTest, APullDownsTitleIsItsFirstItemWhateverIsSelected) {
  cell = make<ExtPopUpButtonCell>(std::string("Head"), true);
  cell->addItemWithTitle("Other");
  cell->selectItemAtIndex(1);
  EXPECT_EQ(cell->shortenedTitle(500), u"Head");
}

TEST_F(ExtPopUpButtonCellTest, AWidthThatIsNotANumberEndsTheSearch) { EXPECT_EQ(cell->shortenedTitle(std::nan("")), u"…"); }

TEST_F(ExtPopUpButtonCellTest, TheCutCountsUnitsOfUTF16AndMaySplitACharacter) {
  cell->setTitle("😀😀😀😀");
  EXPECT_EQ(cell->shortenedTitle(10), std::u16string({0xD83D, u'…'}));
  EXPECT_FALSE(title({0, 0, 45, 24}).empty());
}

TEST_F(ExtPopUpButtonCellTest, AnEmptyTitleDrawsNothing) {
  cell->removeAllItems();
  EXPECT_EQ(cell->title(), "");
  EXPECT_THAT(only("glyphs", title({0, 0, 100, 24})), IsEmpty());
  EXPECT_THAT(only("glyphs", title({0, 0, 5, 24})), IsEmpty());
}

TEST_F(ExtPopUpButtonCellTest, DrawsTheBoxAndThenTheTitle) {
  Lines expected = border({0, 0, 100, 24});
  const Lines text = title({0, 0, 100, 24});
  expected.insert(expected.end(), text.begin(), text.end());
  EXPECT_EQ(harness::recordingOf([&] { cell->drawWithFrame({0, 0, 100, 24}, *button); }), expected);
}

TEST_F(ExtPopUpButtonCellTest, ItsMenuIsAStockPopUps) {
  cell->addItemWithTitle("Other");
  const auto window = showWindowWith(button);
  user.click(*window, {20, 110});
  ASSERT_NE(desktop.openMenu(), nullptr);
  EXPECT_EQ(desktop.openMenu()->place.over, (CGRect{110, 200, 120, 24}));
  desktop.chooseFromMenu(desktop.openMenu()->entries.at(1).number);
  desktop.settle();
  EXPECT_EQ(cell->title(), "Other");
}

TEST_F(ExtPopUpButtonCellTest, SettingTheThemeAsksForNoRedraw) {
  const auto window = showWindowWith(button);
  cell->setUseDarkTheme(false);
  desktop.settle();
  EXPECT_THAT(nativeOf(*window).paints(), IsEmpty());
}

TEST_F(ExtPopUpButtonCellTest, ACopyHasItsThemeAndItsTitle) {
  cell->setUseDarkTheme(false);
  const auto copy = std::dynamic_pointer_cast<ExtPopUpButtonCell>(cell->copy());
  ASSERT_NE(copy, nullptr);
  EXPECT_FALSE(copy->useDarkTheme());
  EXPECT_EQ(copy->title(), "abcdefgh");
}

}  // namespace
}  // namespace TessalunaUIKit
