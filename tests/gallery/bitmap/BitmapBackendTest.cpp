// A search field on a backend that does as little as a backend may.
#include "tests/gallery/bitmap/BitmapBackend.h"

#include <gtest/gtest.h>

#include "tessaluna/platform/graphics/NSColor.h"
#include "tessaluna/platform/views/NSText.h"
#include "tessaluna/platform/windows/NSApplication.h"
#include "tessaluna/platform/windows/NSWindow.h"
#include "tessaluna/platform/windows/WindowInput.h"
#include "tessaluna/ready/search/SearchField.h"
#include "tessaluna/ready/search/matchedLetters.h"

namespace bitmap {
namespace {

using namespace tessaluna::platform;
using namespace tessaluna::ready;
using Reports = std::vector<std::string>;

void answer(const SearchQuestion& question) {
  std::vector<SearchRow> rows;
  for (const char* name : {"Amber", "Ash", "Aspen", "Atlas", "Aurora", "Autumn", "Azure", "Anchor"})
    if (!matchedLetters(name, question.text()).empty()) rows.push_back({.title = name, .detail = "Noor Hale"});
  question.answer(std::move(rows));
}

class BitmapBackendTest : public testing::Test {
 protected:
  BitmapBackendTest() {
    NSApplication::sharedApplication();
    search = make<SearchField>(CGRect{20, 100, 360, 26});
    search->setSource(answer);
    search->setOnPick([this](const SearchRow& row) { reports.push_back(row.title); });
    window = make<NSWindow>(CGRect{100, 300, 400, 200}, NSWindowStyleMaskTitled, NSBackingStoreBuffered, true);
    window->contentView()->addSubview(search);
    window->makeKeyAndOrderFront(nullptr);
    desktop.move(inField());
    desktop.press();
    desktop.release();
    desktop.pass(1);
  }
  ~BitmapBackendTest() override {
    search->popUp()->cancelSuggestions();
    window->setContentView(nullptr);
    window->close();
    NSApp = nullptr;
  }

  static constexpr int rowHeight = 44;

  void type(std::string_view text) {
    for (const char c : text) desktop.type({.text = std::string(1, c), .letter = std::string(1, c)});
    desktop.pass(1);
  }
  void press(KeyName name) {
    desktop.type({.name = name});
    desktop.pass(1);
  }
  void click() {
    desktop.press();
    desktop.release();
    desktop.pass(1);
  }
  CGPoint inField() { return window->convertPointToScreen(search->field()->convertPointToView({30, 10}, nullptr)); }
  NSWindow& popUp() { return *search->popUp()->window(); }
  // The middle of a visible row, counted from the top, on the screen.
  CGPoint row(int index) {
    return {CGRectGetMidX(popUp().frame()), CGRectGetMaxY(popUp().frame()) - rowHeight * (index + 0.5)};
  }
  std::string text() { return search->field()->currentEditor() ? search->field()->currentEditor()->string() : "not edited"; }
  const BitmapWindow& native(const NSWindow& of) { return dynamic_cast<const BitmapWindow&>(*of.nativeWindow()); }
  static std::uint32_t pixelsOf(const NSColor& color) {
    const auto byte = [](double component) { return static_cast<std::uint32_t>(component * 255 + 0.5); };
    return 0xFF000000u | byte(color.redComponent()) << 16 | byte(color.greenComponent()) << 8 | byte(color.blueComponent());
  }
  // The pixel rows of the pop-up's picture that have the color of selections at the left edge: the first, and how many.
  std::pair<int, int> selectedBand() {
    const auto& picture = native(popUp()).picture();
    const std::uint32_t selected = pixelsOf(*NSColor::alternateSelectedControlColor());
    std::pair<int, int> band{-1, 0};
    for (int y = 0; y < picture.height(); ++y)
      if (picture.pixel(1, y) == selected) {
        if (band.first < 0) band.first = y;
        ++band.second;
      }
    return band;
  }

  BitmapBackend desktop;
  Reports reports;
  Ref<SearchField> search;
  Ref<NSWindow> window;
};

TEST_F(BitmapBackendTest, TypingOpensThePopUpAndSelectsNothing) {
  type("a");
  ASSERT_TRUE(popUp().isVisible());
  EXPECT_EQ(desktop.windows().back(), &native(popUp())) << "in front";
  EXPECT_EQ(selectedBand(), (std::pair{-1, 0}));
}

TEST_F(BitmapBackendTest, ArrowsMoveTheSelectionAndReturnPicksIt) {
  type("a");
  press(KeyName::Down);
  press(KeyName::Down);
  EXPECT_EQ(selectedBand(), (std::pair{rowHeight, rowHeight}));
  const std::string shown = text();
  press(KeyName::Return);
  EXPECT_FALSE(popUp().isVisible());
  EXPECT_EQ(reports, Reports{shown});
}

TEST_F(BitmapBackendTest, EscapeRestoresWhatWasTyped) {
  type("a");
  press(KeyName::Down);
  EXPECT_NE(text(), "a");
  press(KeyName::Escape);
  EXPECT_EQ(text(), "a");
}

TEST_F(BitmapBackendTest, ThePointerSelectsARowAndAClickPicksIt) {
  type("a");
  desktop.move(row(3));
  desktop.pass(1);
  EXPECT_EQ(text(), "a");
  EXPECT_EQ(selectedBand(), (std::pair{3 * rowHeight, rowHeight}));
  click();
  EXPECT_FALSE(popUp().isVisible());
  EXPECT_EQ(reports, Reports{"Atlas"});
}

TEST_F(BitmapBackendTest, AfterTheWheelAClickPicksTheRowUnderThePointer) {
  // Near the lower edge of the screen only some of the rows have room.
  window->setFrame({100, -20, 400, 200}, true);
  type("a");
  ASSERT_LT(popUp().frame().size.height, 8 * rowHeight);
  desktop.move(row(0));
  desktop.pass(1);
  desktop.turnWheel(-rowHeight / 16.0);
  desktop.pass(1);
  EXPECT_GE(selectedBand().second, rowHeight - 1) << "the selected row is visible";
  click();
  EXPECT_EQ(reports, Reports{"Ash"});
}

TEST_F(BitmapBackendTest, APointerAtRestWhereThePopUpOpensSelectsNothing) {
  type("a");
  const CGPoint inSecondRow = row(1);
  press(KeyName::Escape);
  desktop.move(inSecondRow);
  desktop.move(inField());
  click();
  desktop.move(inSecondRow);
  type("s");
  ASSERT_TRUE(popUp().isVisible());
  desktop.move(inSecondRow);
  EXPECT_EQ(selectedBand().first, -1);
}

TEST_F(BitmapBackendTest, ThreeClicksSelectAllAndWhatIsTypedReplacesIt) {
  type("a s");
  press(KeyName::Escape);
  for (int i = 0; i < 3; ++i) {
    desktop.press();
    desktop.release();
  }
  type("q");
  EXPECT_EQ(text(), "q");
}

TEST_F(BitmapBackendTest, ComposedTextIsSearchedForWhenItIsCommitted) {
  WindowInput& input = window->windowClient().input();
  input.composition({.composed = "a"});
  input.composition({.committed = "au"});
  desktop.pass(1);
  EXPECT_EQ(text(), "au");
  EXPECT_TRUE(popUp().isVisible());
}

}  // namespace
}  // namespace bitmap
