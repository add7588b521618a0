// What a search field looks like, and where its parts are.
#include <gmock/gmock.h>

#include "tessaluna/platform/graphics/NSColor.h"
#include "tessaluna/platform/graphics/NSImage.h"
#include "tessaluna/platform/graphics/NSRect.h"
#include "tessaluna/platform/views/NSProgressIndicator.h"
#include "tests/harness/LookBook.h"
#include "tests/ready/search/SearchFieldWorld.h"

namespace tessaluna::ready {
namespace {

using namespace platform;
using testing::ElementsAre;
using testing::Not;

struct SearchFieldLooksTest : SearchFieldWorld {
  // In the order in which they were added: the field, the magnifier, the wheel, the clear button.
  Ref<NSView> part(std::size_t index) const {
    return *std::next(search->subviews().begin(), static_cast<std::ptrdiff_t>(index));
  }
  std::vector<CGRect> frames() const { return {part(1)->frame(), part(2)->frame(), part(3)->frame()}; }
  const NSProgressIndicator& wheel() const { return dynamic_cast<const NSProgressIndicator&>(*part(2)); }
  harness::Lines drawn(std::size_t index) const {
    return harness::recordingOf([&] { part(index)->drawRect(part(index)->bounds()); });
  }
};

TEST_F(SearchFieldLooksTest, MagnifierAndClearButtonStayAtTheirEndsInTheMiddleOfTheHeight) {
  const CGRect magnifier{7, 6, 14, 14};
  EXPECT_THAT(frames(), ElementsAre(magnifier, magnifier, CGRect{278, 3, 20, 20}));
  search->setFrameSize({400, 40});
  const CGRect raised{7, 13, 14, 14};
  EXPECT_THAT(frames(), ElementsAre(raised, raised, CGRect{378, 10, 20, 20}));
  EXPECT_EQ(search->field()->frame(), search->bounds());
}

TEST_F(SearchFieldLooksTest, TheTextEndsBeforeTheClearButton) {
  const CGRect text = dynamic_cast<const NSTextFieldCell&>(*search->field()->cell()).drawingRectForBounds({0, 0, 300, 26});
  EXPECT_EQ(text.origin.x, 26);
  EXPECT_EQ(CGRectGetMaxX(text), 276);
}

TEST_F(SearchFieldLooksTest, ItsBorderIsGrayAndItsMagnifierAGlyph) {
  EXPECT_THAT(drawn(0), testing::Contains(R"({"op":"setFillColor","color":[0.55,0.55,0.55,1]})"));
  EXPECT_THAT(harness::only("fill", drawn(1)), testing::SizeIs(1));
}

TEST_F(SearchFieldLooksTest, AWheelSpinsInTheMagnifiersPlaceAndClientsDoNotSeeIt) {
  EXPECT_EQ(wheel().style(), NSProgressIndicatorStyleSpinning);
  answersLater = true;
  user.type("a");
  desktop.advance(0.3);
  EXPECT_TRUE(part(1)->isHidden());
  EXPECT_TRUE(wheel().isAnimating());
  for (const std::string& line : accessibleTreeLines(search)) EXPECT_THAT(line, Not(testing::HasSubstr("progress")));
  asked.back().answer(counted(1));
  EXPECT_FALSE(part(1)->isHidden());
  EXPECT_FALSE(wheel().isAnimating());
}

TEST_F(SearchFieldLooksTest, ASearchThatIsAnsweredOrEndedSoonShowsNoWheel) {
  user.type("a");
  desktop.advance(1);
  EXPECT_TRUE(wheel().isHidden()) << "answered at once";
  answersLater = true;
  user.type("m");
  desktop.advance(0.1);
  asked.back().answer(counted(1));
  desktop.advance(1);
  EXPECT_TRUE(wheel().isHidden()) << "answered";
  user.type("b");
  desktop.advance(0.1);
  user.pressKey(escape);
  desktop.advance(1);
  EXPECT_TRUE(wheel().isHidden()) << "closed";
}

TEST_F(SearchFieldLooksTest, TheRowsStayWhileTheWheelSpins) {
  user.type("amb");
  answersLater = true;
  user.type("e");
  desktop.advance(0.3);
  EXPECT_FALSE(wheel().isHidden());
  EXPECT_EQ(titles().size(), 3u);
  EXPECT_EQ(popUp().content().note, "");
}

TEST_F(SearchFieldLooksTest, EveryStateDrawsAsTheExpectedFileSays) {
  harness::LookBook look(desktop);
  look.add("an empty field", *window);
  answersLater = true;
  user.type("amb");
  desktop.advance(0.3);
  look.add("a text while a search is under way", *window);
  look.add("its pop-up", popUpWindow());
  asked.back().answer({});
  look.add("nothing found", popUpWindow());
  const auto picture = NSImage::imageWithSize({28, 28}, false, [](CGRect rect) {
    NSColor::redColor()->setFill();
    NSRectFill(rect);
    return true;
  });
  user.type("e");
  asked.back().answer({{.title = "Amber Quartet", .section = "Artists", .image = picture},
                       {.title = "Amber Signal", .detail = "Noor Hale", .section = "Albums", .image = picture},
                       {.title = "Amber Tide", .detail = "Noor Hale", .section = "Albums"},
                       {.title = "Last amber", .section = "Tracks"}});
  look.add("rows", popUpWindow());
  user.pressKey(NSDownArrowFunctionKey);
  user.pressKey(NSDownArrowFunctionKey);
  look.add("the second one selected", popUpWindow());
  look.expectSameAsFile("ready/search/expected/SearchField.txt");
}

}  // namespace
}  // namespace tessaluna::ready
