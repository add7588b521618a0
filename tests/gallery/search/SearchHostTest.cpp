#include "gallery/search/SearchHost.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tessaluna/platform/events/NSEvent.h"
#include "tessaluna/platform/views/NSText.h"
#include "tests/harness/StillWorld.h"

namespace gallery {
namespace {

using namespace tessaluna::platform;
using testing::ElementsAre;
using Kind = LibraryItem::Kind;

constexpr const char* returnKey = "\r";
constexpr const char* escape = "\x1B";

class SearchHostTest : public harness::StillWorld {
 protected:
  SearchHostTest() {
    host->setReport([this](const std::string& what) { reports.push_back(what); });
    host->view()->setFrameOrigin({50, 200});
    window->contentView()->addSubview(host->view());
    user.click(*window, {100, 210});
    desktop.settle();
  }
  ~SearchHostTest() override { host->popUp()->cancelSuggestions(); }

  std::string text() { return host->field()->currentEditor() ? host->field()->currentEditor()->string() : "not edited"; }
  bool isOpen() { return host->popUp()->window()->isVisible(); }
  std::string selected() {
    const auto suggestion = host->popUp()->selectedSuggestion();
    return suggestion ? suggestion->label : "none";
  }
  // The middle of a row, in the pop-up's base space.
  CGPoint row(std::size_t index) {
    const Ref<NSView> view = host->popUp()->selectedView()->superview()->subviews()[index];
    return view->convertPointToView({view->frame().size.width / 2, view->frame().size.height / 2}, nullptr);
  }

  std::vector<std::string> reports;
  Ref<SearchHost> host = make<SearchHost>(std::vector<LibraryItem>{{Kind::Track, "Amber Tide", "Noor Hale"},
                                                                   {Kind::Album, "Amber Signal", "Album by Noor Hale"},
                                                                   {Kind::Artist, "Amber Quartet", "Artist"}});
  Ref<NSWindow> window = showWindow({100, 300, 500, 300});
};

TEST_F(SearchHostTest, ShowsWhatMatchesAsOneTypesWithTheFirstRowSelected) {
  user.type("amb");
  EXPECT_TRUE(isOpen());
  EXPECT_EQ(host->popUp()->suggestions()->size(), 3u);
  EXPECT_EQ(selected(), "Amber Quartet");
  EXPECT_EQ(text(), "amb");
  user.type("er s");
  EXPECT_EQ(host->popUp()->suggestions()->size(), 1u);
  user.type("x");
  EXPECT_FALSE(isOpen());
}

TEST_F(SearchHostTest, TheTextsOfTheSelectedRowStandOnItsColorFromTheStart) {
  user.type("am");
  const auto rows = host->popUp()->selectedView()->superview()->subviews();
  for (std::size_t i = 0; i < rows.size(); ++i) {
    for (const Ref<NSView>& view : rows[i]->subviews()) {
      const auto* field = dynamic_cast<NSTextField*>(view.get());
      if (!field) continue;
      EXPECT_EQ(field->cell()->backgroundStyle(), i == 0 ? NSBackgroundStyleDark : NSBackgroundStyleLight) << i;
    }
  }
}

TEST_F(SearchHostTest, HangsTwoPointsBelowItsFieldAndIsAsWide) {
  user.type("a");
  const CGRect frame = host->popUp()->window()->frame();
  EXPECT_EQ(frame.origin.x, 150);
  EXPECT_EQ(frame.origin.y + frame.size.height, 498);
  EXPECT_EQ(frame.size.width, host->field()->frame().size.width);
}

TEST_F(SearchHostTest, ArrowKeysMoveTheSelectionAndTheFieldShowsIt) {
  user.type("amb");
  user.pressKey(NSDownArrowFunctionKey);
  EXPECT_EQ(text(), "Amber Signal");
  user.pressKey(NSDownArrowFunctionKey);
  EXPECT_EQ(text(), "Amber Tide");
  user.pressKey(NSUpArrowFunctionKey);
  EXPECT_EQ(text(), "Amber Signal");
}

TEST_F(SearchHostTest, EscapeBringsBackWhatWasTyped) {
  user.type("amb");
  user.pressKey(NSDownArrowFunctionKey);
  user.pressKey(escape);
  EXPECT_FALSE(isOpen());
  EXPECT_EQ(text(), "amb");
}

TEST_F(SearchHostTest, ReturnTakesTheSelectedRowAndTheNextSearchIsTypedOverIt) {
  user.type("amb");
  user.pressKey(NSDownArrowFunctionKey);
  user.pressKey(returnKey);
  EXPECT_FALSE(isOpen());
  EXPECT_THAT(reports, ElementsAre("Amber Signal – Album by Noor Hale"));
  EXPECT_EQ(host->field()->stringValue(), "Amber Signal");
  user.type("q");
  EXPECT_EQ(text(), "q");
}

TEST_F(SearchHostTest, ReturnTakesTheFirstRowThatNobodyMovedTo) {
  user.type("ti");
  user.pressKey(returnKey);
  EXPECT_THAT(reports, ElementsAre("Amber Tide – Noor Hale"));
}

TEST_F(SearchHostTest, ReturnWithoutAPopUpSendsOffWhatWasTyped) {
  user.type("nothing of this");
  user.pressKey(returnKey);
  EXPECT_THAT(reports, ElementsAre("search for “nothing of this”"));
}

TEST_F(SearchHostTest, AClickOnARowTakesIt) {
  user.type("amb");
  NSWindow& popUp = *host->popUp()->window();
  user.moveTo(popUp, row(2));
  EXPECT_EQ(text(), "Amber Tide");
  user.click(popUp, row(2));
  EXPECT_FALSE(isOpen());
  EXPECT_THAT(reports, ElementsAre("Amber Tide – Noor Hale"));
}

// A pop-up of two rows over the lower edge of the screen, whose first row is under the pointer.
struct ShortSearchPopUpTest : SearchHostTest {
  ShortSearchPopUpTest() {
    user.type("amb");
    height = host->popUp()->selectedView()->frame().size.height;
    const CGRect frame = window->frame();
    const CGFloat top = CGRectGetMaxY(popUp().frame());
    window->setFrame({{frame.origin.x, frame.origin.y - top + 2 * height}, frame.size}, true);
    desktop.settle();
  }
  NSWindow& popUp() { return *host->popUp()->window(); }
  CGPoint inFirst() { return {50, popUp().frame().size.height - height / 2}; }
  CGFloat height = 0;
};

TEST_F(ShortSearchPopUpTest, AfterTheWheelAClickTakesTheRowUnderThePointer) {
  ASSERT_LT(popUp().frame().size.height, 3 * height);
  user.moveTo(popUp(), inFirst());
  EXPECT_EQ(text(), "Amber Quartet");
  user.scroll(popUp(), inFirst(), {0, -height / 2 - 1});
  desktop.advance(0.01);
  EXPECT_EQ(text(), "Amber Signal");
  user.click(popUp(), inFirst());
  EXPECT_THAT(reports, ElementsAre("Amber Signal – Album by Noor Hale"));
}

TEST_F(ShortSearchPopUpTest, AClickBeforeTheFrameTakesNoRowThatIsOutOfSight) {
  user.moveTo(popUp(), inFirst());
  user.scroll(popUp(), inFirst(), {0, -height / 2 - 1});
  user.click(popUp(), inFirst());
  EXPECT_THAT(reports, testing::Not(testing::Contains(testing::HasSubstr("Amber Quartet"))));
}

TEST_F(SearchHostTest, ArrowKeysBringBackASelectionThatTheMouseTookAway) {
  user.type("amb");
  NSWindow& popUp = *host->popUp()->window();
  user.moveTo(popUp, row(1));
  user.leave(popUp);
  EXPECT_EQ(selected(), "none");
  EXPECT_EQ(text(), "amb");
  user.pressKey(NSDownArrowFunctionKey);
  EXPECT_EQ(text(), "Amber Quartet");
}

TEST_F(SearchHostTest, AFirstClickInTheFieldsWindowOnlyClosesThePopUp) {
  user.type("amb");
  user.click(*window, {400, 20});
  EXPECT_FALSE(isOpen());
  EXPECT_EQ(text(), "amb");
}

TEST_F(SearchHostTest, DownOpensThePopUpAgain) {
  user.type("amb");
  user.pressKey(escape);
  user.pressKey(NSDownArrowFunctionKey);
  EXPECT_TRUE(isOpen());
  EXPECT_EQ(selected(), "Amber Quartet");
}

TEST_F(SearchHostTest, StaysBelowItsFieldWhenTheWindowIsMovedAndResized) {
  host->view()->setAutoresizingMask(NSViewWidthSizable);
  user.type("amb");
  user.pressKey(NSDownArrowFunctionKey);
  window->setFrame({200, 350, 600, 300}, true);
  const CGRect frame = host->popUp()->window()->frame();
  EXPECT_EQ(frame.origin.x, 250);
  EXPECT_EQ(frame.size.width, host->field()->frame().size.width);
  EXPECT_EQ(selected(), "Amber Signal");
}

TEST_F(SearchHostTest, GoesWithTheKeysOfItsField) {
  user.type("amb");
  window->makeFirstResponder(nullptr);
  EXPECT_FALSE(isOpen());
}

TEST_F(SearchHostTest, AHostThatGoesTakesItsPopUpAlong) {
  user.type("amb");
  const WeakRef<NSWindow> popUp = host->popUp()->window();
  host->view()->removeFromSuperview();
  host.reset();
  EXPECT_TRUE(popUp.expired() || !popUp.lock()->isVisible());
  host = make<SearchHost>(std::vector<LibraryItem>{});
}

TEST_F(SearchHostTest, ATextThatAnAssistiveClientWritesOpensThePopUpAsTypingDoes) {
  window->makeFirstResponder(nullptr);
  accessibilityOf(host->field()->cell())->accessibilitySetValue("amber s", NSAccessibilityValueAttribute);
  EXPECT_TRUE(isOpen());
  EXPECT_EQ(selected(), "Amber Signal");
  user.pressKey(returnKey);
  EXPECT_THAT(reports, ElementsAre("Amber Signal – Album by Noor Hale"));
}

}  // namespace
}  // namespace gallery
