#include "tessaluna/ready/search/SearchField.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <random>

#include "tessaluna/platform/accessibility/accessibleTree.h"
#include "tessaluna/platform/time/DispatchQueue.h"
#include "tessaluna/platform/views/NSScrollView.h"
#include "tessaluna/ready/search/matchedLetters.h"
#include "tests/harness/StillWorld.h"
#include "tests/harness/printing.h"

namespace tessaluna::ready {
namespace {

using namespace platform;
using testing::ElementsAre;

constexpr const char* returnKey = "\r";
constexpr const char* escape = "\x1B";

// A field over a library of three things, or one whose questions the test answers.
class SearchFieldTest : public harness::StillWorld {
 protected:
  SearchFieldTest() {
    search->setSource([this](const SearchQuestion& question) {
      asked.push_back(question);
      if (!answersLater) question.answer(matches(question.text()));
    });
    search->setOnPick([this](const SearchRow& row) { calls.push_back("pick " + row.title); });
    search->setOnSearch([this](const std::string& text) { calls.push_back("search " + text); });
    window->contentView()->addSubview(search);
    user.click(*window, {100, 210});
    desktop.settle();
  }
  ~SearchFieldTest() override {
    if (search) search->popUp()->cancelSuggestions();
  }

  static std::vector<SearchRow> matches(std::string_view typed) {
    const std::vector<SearchRow> library{{.title = "Amber Quartet", .section = "Artists", .id = 1},
                                         {.title = "Amber Signal", .detail = "by Noor Hale", .section = "Albums", .id = 2},
                                         {.title = "Amber Tide", .detail = "Noor Hale", .section = "Tracks", .id = 3}};
    std::vector<SearchRow> rows;
    for (const SearchRow& row : library)
      if (!matchedLetters(row.title, typed).empty()) rows.push_back(row);
    return rows;
  }
  static std::vector<SearchRow> counted(int count) {
    std::vector<SearchRow> rows;
    for (int i = 0; i < count; ++i) rows.push_back({.title = std::to_string(i), .id = i});
    return rows;
  }
  void answerCounted(int count) {
    answersLater = true;
    user.type("x");
    asked.back().answer(counted(count));
  }

  SearchPopUp& popUp() { return *search->popUp(); }
  NSWindow& popUpWindow() { return *popUp().window(); }
  std::string text() { return search->field()->currentEditor() ? search->field()->currentEditor()->string() : "not edited"; }
  std::vector<std::string> titles() {
    std::vector<std::string> result;
    for (const SearchRow& row : popUp().content().rows) result.push_back(row.title);
    return result;
  }
  std::string selected() {
    const auto row = popUp().selected();
    return row ? row->title : "none";
  }
  // Of the rows, headings and note as they are laid out, from the top.
  std::vector<Ref<NSView>> laidOut() {
    const auto views = dynamic_cast<NSScrollView&>(*popUpWindow().contentView()).documentView()->subviews();
    return {views.begin(), views.end()};
  }
  // The middle of a row, in the pop-up's base space.
  CGPoint row(std::size_t index) {
    std::size_t row = 0;
    for (const Ref<NSView>& view : laidOut())
      if (dynamic_cast<TessalunaUIKit::HighlightingView*>(view.get()) && row++ == index)
        return view->convertPointToView({view->frame().size.width / 2, view->frame().size.height / 2}, nullptr);
    ADD_FAILURE() << "no row " << index;
    return {};
  }
  // What assistive clients find in the pop-up.
  std::string list() {
    std::string lines;
    for (const std::string& line : accessibleTreeLines(search->field()->cell())) lines += line + "\n";
    return lines;
  }

  bool answersLater = false;
  std::vector<SearchQuestion> asked;
  std::vector<std::string> calls;
  Ref<SearchField> search = make<SearchField>(CGRect{50, 200, 300, 26});
  Ref<NSWindow> window = showWindow({100, 300, 500, 300});
};

TEST_F(SearchFieldTest, ShowsWhatMatchesAsOneTypesAndSelectsNothing) {
  user.type("amb");
  EXPECT_TRUE(popUp().isOpen());
  EXPECT_THAT(titles(), ElementsAre("Amber Quartet", "Amber Signal", "Amber Tide"));
  EXPECT_EQ(selected(), "none");
  EXPECT_EQ(text(), "amb");
  user.type("er s");
  EXPECT_THAT(titles(), ElementsAre("Amber Quartet", "Amber Signal", "Amber Tide"));
}

TEST_F(SearchFieldTest, HangsBelowItsFieldAndIsAsWide) {
  user.type("a");
  const CGRect frame = popUpWindow().frame();
  EXPECT_EQ(frame.origin.x, 150);
  EXPECT_EQ(CGRectGetMaxY(frame), 498);
  EXPECT_EQ(frame.size.width, 300);
}

TEST_F(SearchFieldTest, EachSectionHasAHeadingAboveItsFirstRow) {
  user.type("amb");
  const auto views = laidOut();
  ASSERT_EQ(views.size(), 6u);
  for (std::size_t i = 0; i < views.size(); ++i) {
    EXPECT_EQ(dynamic_cast<TessalunaUIKit::HighlightingView*>(views[i].get()) != nullptr, i % 2 == 1) << i;
    EXPECT_EQ(views[i]->frame().origin.y, i == 0 ? 0 : CGRectGetMaxY(views[i - 1]->frame())) << i;
  }
  answerCounted(3);
  EXPECT_EQ(laidOut().size(), 3u) << "rows without a section have no heading";
  user.type("y");
  asked.back().answer(
      {{.title = "One", .section = "A"}, {.title = "Two", .section = "A"}, {.title = "Three", .section = "B"}});
  EXPECT_EQ(laidOut().size(), 5u) << "one heading for each section";
}

TEST_F(SearchFieldTest, ShowsAtMostTenRowsAtTheStart) {
  answerCounted(50);
  const CGFloat rowHeight = laidOut()[0]->frame().size.height;
  EXPECT_EQ(popUpWindow().frame().size.height, 10 * rowHeight);
  search->setMaximumRows(8);
  EXPECT_EQ(popUpWindow().frame().size.height, 8 * rowHeight);
}

// Answers.

TEST_F(SearchFieldTest, TheRowsStayUntilTheAnswerToTheLastQuestion) {
  user.type("amb");
  answersLater = true;
  user.type("e");
  user.type("r");
  EXPECT_EQ(titles().size(), 3u);
  asked[asked.size() - 2].answer(counted(9));
  EXPECT_EQ(titles().size(), 3u) << "a late answer";
  asked.back().answer(counted(2));
  EXPECT_THAT(titles(), ElementsAre("0", "1"));
}

TEST_F(SearchFieldTest, WhileNothingIsThereYetANoteSaysThatItLooks) {
  answersLater = true;
  user.type("a");
  EXPECT_FALSE(popUp().isOpen());
  desktop.advance(0.3);
  EXPECT_TRUE(popUp().isOpen());
  EXPECT_EQ(popUp().content().note, "Searching…");
  EXPECT_TRUE(popUp().content().isBusy);
  EXPECT_EQ(laidOut().size(), 1u);
  EXPECT_GT(popUpWindow().frame().size.height, 0);
  asked.back().answer(matches("a"));
  EXPECT_EQ(popUp().content().note, "");
  EXPECT_EQ(titles().size(), 3u);
}

TEST_F(SearchFieldTest, AnAnswerWithoutRowsIsSaid) {
  user.type("nothing of this");
  EXPECT_TRUE(popUp().isOpen());
  EXPECT_EQ(popUp().content().note, "Nothing found");
  EXPECT_FALSE(popUp().content().isBusy);
  user.pressKey(NSDownArrowFunctionKey);
  EXPECT_EQ(text(), "nothing of this");
}

TEST_F(SearchFieldTest, TheDelayIsThatOfTheLastKey) {
  search->setDelay(0.25);
  user.type("a");
  desktop.advance(0.2);
  user.type("m");
  desktop.advance(0.2);
  EXPECT_TRUE(asked.empty());
  desktop.advance(0.1);
  ASSERT_EQ(asked.size(), 1u);
  EXPECT_EQ(asked[0].text(), "am");
  EXPECT_TRUE(popUp().isOpen());
}

TEST_F(SearchFieldTest, ABlankTextAsksNothingAndClosesThePopUp) {
  user.type("a");
  user.pressKey("\x7F");
  EXPECT_FALSE(popUp().isOpen());
  user.type("  ");
  EXPECT_EQ(asked.size(), 1u);
}

TEST_F(SearchFieldTest, AnAnswerAfterTheUserHasClosedOpensNothing) {
  answersLater = true;
  user.type("a");
  user.pressKey(escape);
  asked.back().answer(matches("a"));
  EXPECT_FALSE(popUp().isOpen());

  user.type("m");
  desktop.advance(0.3);
  ASSERT_TRUE(popUp().isOpen());
  user.click(*window, {400, 20});
  ASSERT_FALSE(popUp().isOpen());
  asked.back().answer(matches("am"));
  EXPECT_FALSE(popUp().isOpen());
}

TEST_F(SearchFieldTest, WhatTheUserHasClosedIsNoLongerAsked) {
  answersLater = true;
  user.type("a");
  user.pressKey(escape);
  EXPECT_FALSE(asked.back().isCurrent());
  search->setDelay(0.2);
  user.type("m");
  user.pressKey(escape);
  desktop.advance(1);
  EXPECT_EQ(asked.size(), 1u);
}

TEST_F(SearchFieldTest, AnAnswerWhenAnotherWindowHasTheKeysOpensNothing) {
  answersLater = true;
  user.type("a");
  showWindow();
  asked.back().answer(matches("a"));
  EXPECT_FALSE(popUp().isOpen());
}

TEST_F(SearchFieldTest, ASelectedRowStaysSelectedWhereTheNewRowsHaveIt) {
  user.type("amb");
  answersLater = true;
  user.type("e");
  user.pressKey(NSDownArrowFunctionKey);
  user.pressKey(NSDownArrowFunctionKey);
  EXPECT_EQ(text(), "Amber Signal");
  asked.back().answer(matches("amber s"));
  EXPECT_EQ(selected(), "Amber Signal");
  EXPECT_EQ(text(), "Amber Signal");
}

TEST_F(SearchFieldTest, ARowOfTheSameTitleIsAnotherOne) {
  answersLater = true;
  user.type("x");
  asked.back().answer({{.title = "Live", .id = 1}, {.title = "Live", .id = 2}});
  user.pressKey(NSDownArrowFunctionKey);
  user.type("y");
  asked.back().answer({{.title = "Live", .id = 2}});
  EXPECT_EQ(selected(), "none");
}

TEST_F(SearchFieldTest, WithoutItsRowTheTitleGivesWayToWhatWasTyped) {
  user.type("amb");
  answersLater = true;
  user.type("e");
  user.pressKey(NSDownArrowFunctionKey);
  asked.back().answer(counted(2));
  EXPECT_EQ(selected(), "none");
  EXPECT_EQ(text(), "ambe");
}

TEST_F(SearchFieldTest, AnAnswerComesFromAnotherThreadThroughTheRunLoop) {
  search->setSource([](const SearchQuestion& question) {
    DispatchQueue::main().answer([] { return counted(2); },
                                 [question](const std::vector<SearchRow>& rows) { question.answer(rows); });
  });
  user.type("a");
  for (int i = 0; i < 1000000 && titles().empty(); ++i) desktop.advance(0.001);
  EXPECT_THAT(titles(), ElementsAre("0", "1"));
}

// Texts that are typed and answers to them in random order: what shows is the answer to the last question, or what showed before.
TEST_F(SearchFieldTest, AnswersInAnyOrderShowTheLastQuestionsRowsOnly) {
  std::mt19937 random(5);
  answersLater = true;
  std::string expected;
  user.type("x");
  for (int i = 0; i < 400; ++i) {
    if (random() % 2) {
      user.type("x");
      continue;
    }
    const SearchQuestion& question = asked[asked.size() - 1 - random() % std::min<std::size_t>(asked.size(), 5)];
    if (question.isCurrent()) expected = std::to_string(question.number());
    question.answer({{.title = std::to_string(question.number())}});
    if (expected.empty()) continue;
    ASSERT_THAT(titles(), ElementsAre(expected)) << i;
  }
  EXPECT_GT(std::stoi(expected), 100);
}

// The keyboard.

TEST_F(SearchFieldTest, ArrowKeysMoveTheSelectionAndTheFieldShowsIt) {
  user.type("amb");
  user.pressKey(NSDownArrowFunctionKey);
  EXPECT_EQ(text(), "Amber Quartet");
  user.pressKey(NSDownArrowFunctionKey);
  EXPECT_EQ(text(), "Amber Signal");
  EXPECT_EQ(search->text(), "amb");
  user.pressKey(NSUpArrowFunctionKey);
  EXPECT_EQ(text(), "Amber Quartet");
  user.pressKey(NSUpArrowFunctionKey);
  EXPECT_EQ(text(), "amb") << "above the first row is what was typed";
  EXPECT_EQ(selected(), "none");
  EXPECT_TRUE(popUp().isOpen());
}

TEST_F(SearchFieldTest, PageKeysAndHomeAndEndWithControlMoveTheSelection) {
  answerCounted(50);
  user.pressKey(NSPageDownFunctionKey);
  EXPECT_EQ(selected(), "8");
  user.pressKey(NSPageDownFunctionKey);
  EXPECT_EQ(selected(), "17");
  user.pressKey(NSPageUpFunctionKey);
  EXPECT_EQ(selected(), "8");
  user.pressKey(NSEndFunctionKey, NSEventModifierFlagControl);
  EXPECT_EQ(text(), "49");
  user.pressKey(NSHomeFunctionKey, NSEventModifierFlagControl);
  EXPECT_EQ(text(), "0");
  user.pressKey(NSPageUpFunctionKey);
  EXPECT_EQ(text(), "0");
}

TEST_F(SearchFieldTest, TheHeadingAboveARowComesIntoSightWithIt) {
  search->setMaximumRows(2);
  user.type("amb");
  for (int i = 0; i < 3; ++i) user.pressKey(NSDownArrowFunctionKey);
  EXPECT_EQ(selected(), "Amber Tide");
  user.pressKey(NSHomeFunctionKey, NSEventModifierFlagControl);
  const auto& scroll = dynamic_cast<NSScrollView&>(*popUpWindow().contentView());
  EXPECT_EQ(scroll.contentView()->bounds().origin.y, 0);
}

TEST_F(SearchFieldTest, ReturnPicksTheSelectedRowAndTheNextSearchIsTypedOverIt) {
  user.type("amb");
  user.pressKey(NSDownArrowFunctionKey);
  user.pressKey(NSDownArrowFunctionKey);
  user.pressKey(returnKey);
  EXPECT_FALSE(popUp().isOpen());
  EXPECT_THAT(calls, ElementsAre("pick Amber Signal"));
  EXPECT_EQ(search->field()->stringValue(), "Amber Signal");
  user.type("q");
  EXPECT_EQ(text(), "q");
}

TEST_F(SearchFieldTest, ReturnWithoutASelectionSearchesForWhatWasTyped) {
  user.type("amb");
  user.pressKey(returnKey);
  EXPECT_THAT(calls, ElementsAre("search amb"));
  EXPECT_FALSE(popUp().isOpen());
}

TEST_F(SearchFieldTest, ReturnInAnEmptyFieldDoesNothing) {
  user.pressKey(returnKey);
  EXPECT_THAT(calls, ElementsAre());
}

TEST_F(SearchFieldTest, EscapeGivesBackWhatWasTyped) {
  user.type("amb");
  user.pressKey(NSDownArrowFunctionKey);
  user.pressKey(escape);
  EXPECT_FALSE(popUp().isOpen());
  EXPECT_EQ(text(), "amb");
}

TEST_F(SearchFieldTest, DownAndAltDownOpenThePopUpAgain) {
  for (const std::uint32_t modifiers : {0u, std::uint32_t(NSEventModifierFlagOption)}) {
    user.type("amb");
    user.pressKey(escape);
    user.pressKey(NSDownArrowFunctionKey, modifiers);
    EXPECT_TRUE(popUp().isOpen()) << modifiers;
    EXPECT_EQ(selected(), "none");
    user.pressKey(escape);
    search->setText("");
  }
}

TEST_F(SearchFieldTest, TypingContinuesFromTheTitleThatAKeyBroughtIntoTheField) {
  user.type("amb");
  user.pressKey(NSDownArrowFunctionKey);
  user.type("s");
  EXPECT_EQ(search->text(), "Amber Quartets");
  EXPECT_EQ(asked.back().text(), "Amber Quartets");
}

// The mouse.

TEST_F(SearchFieldTest, MovingTheMouseOverThePopUpLeavesWhatIsTyped) {
  user.type("amb");
  user.moveTo(popUpWindow(), row(1));
  EXPECT_EQ(selected(), "Amber Signal");
  EXPECT_EQ(text(), "amb");
  user.type("e");
  EXPECT_EQ(text(), "ambe");
  user.pressKey(returnKey);
  EXPECT_THAT(calls, ElementsAre("search ambe"));
}

TEST_F(SearchFieldTest, ReturnWhileTheMouseOnlyPointsSearchesForWhatWasTyped) {
  user.type("amb");
  user.moveTo(popUpWindow(), row(1));
  user.pressKey(returnKey);
  EXPECT_THAT(calls, ElementsAre("search amb"));
}

TEST_F(SearchFieldTest, AButtonThatSubmitsDoesAsReturnDoes) {
  const auto button = make<NSButton>(CGRect{0, 0, 40, 20});
  button->setTarget(search);
  button->setAction("submit:");
  user.type("amb");
  button->performClick(nullptr);
  EXPECT_FALSE(popUp().isOpen());
  user.type("amb");
  user.moveTo(popUpWindow(), row(1));
  button->performClick(nullptr);
  user.type("amb");
  user.pressKey(NSDownArrowFunctionKey);
  button->performClick(nullptr);
  EXPECT_THAT(calls, ElementsAre("search amb", "search amb", "pick Amber Quartet"));
}

TEST_F(SearchFieldTest, TheMouseTakesTheTitleOutOfTheFieldAgain) {
  user.type("amb");
  user.pressKey(NSDownArrowFunctionKey);
  ASSERT_EQ(text(), "Amber Quartet");
  user.moveTo(popUpWindow(), row(2));
  EXPECT_EQ(text(), "amb");
  user.pressKey(NSUpArrowFunctionKey);
  EXPECT_EQ(text(), "Amber Signal") << "keys go on from where the mouse is";
}

TEST_F(SearchFieldTest, WhatTheMouseOnlyPointedAtIsNotSelectedInTheNextAnswer) {
  user.type("amb");
  user.moveTo(popUpWindow(), row(0));
  EXPECT_EQ(selected(), "Amber Quartet");
  user.type("e");
  EXPECT_EQ(selected(), "none");
}

TEST_F(SearchFieldTest, AClickOnARowPicksIt) {
  user.type("amb");
  user.moveTo(popUpWindow(), row(2));
  user.click(popUpWindow(), row(2));
  EXPECT_FALSE(popUp().isOpen());
  EXPECT_THAT(calls, ElementsAre("pick Amber Tide"));
  EXPECT_EQ(text(), "Amber Tide");
}

TEST_F(SearchFieldTest, AClickOnAHeadingPicksNothing) {
  user.type("amb");
  const CGRect heading = laidOut()[2]->convertRectToView(laidOut()[2]->bounds(), nullptr);
  const CGPoint place{heading.origin.x + 40, heading.origin.y + heading.size.height / 2};
  user.moveTo(popUpWindow(), row(0));
  user.moveTo(popUpWindow(), place);
  EXPECT_EQ(selected(), "none");
  user.click(popUpWindow(), place);
  EXPECT_THAT(calls, ElementsAre());
  EXPECT_EQ(text(), "amb");
}

TEST_F(SearchFieldTest, APressThatIsDraggedOffItsRowPicksAndSearchesNothing) {
  user.type("amb");
  user.moveTo(popUpWindow(), row(0));
  user.press(popUpWindow(), row(0));
  user.dragTo({-50, row(0).y});
  user.release();
  EXPECT_FALSE(popUp().isOpen());
  EXPECT_THAT(calls, ElementsAre());
  EXPECT_EQ(text(), "amb");
}

TEST_F(SearchFieldTest, AfterTheWheelAClickPicksTheRowUnderThePointer) {
  answerCounted(50);
  const CGPoint place = row(3);
  user.moveTo(popUpWindow(), place);
  user.scroll(popUpWindow(), place, {0, -2 * laidOut()[0]->frame().size.height});
  desktop.advance(0.05);
  EXPECT_EQ(selected(), "5");
  user.click(popUpWindow(), place);
  EXPECT_THAT(calls, ElementsAre("pick 5"));
}

TEST_F(SearchFieldTest, AClickElsewhereOnlyClosesThePopUp) {
  user.type("amb");
  user.click(*window, {400, 20});
  EXPECT_FALSE(popUp().isOpen());
  EXPECT_EQ(text(), "amb");
}

TEST_F(SearchFieldTest, AfterAClickElsewhereTheEarlierRowsDoNotComeBack) {
  user.type("a");
  user.click(*window, {20, 20});
  ASSERT_FALSE(popUp().isOpen());
  answersLater = true;
  user.type("m");
  desktop.advance(1);
  EXPECT_TRUE(popUp().isOpen());
  EXPECT_TRUE(titles().empty());
  EXPECT_EQ(popUp().content().note, "Searching…");
}

TEST_F(SearchFieldTest, AClickInTheFieldClosesThePopUpAndMovesTheCaret) {
  user.type("amb");
  user.click(*window, {50 + 23, 213});
  EXPECT_FALSE(popUp().isOpen());
  user.type("x");
  EXPECT_EQ(text(), "xamb");
}

TEST_F(SearchFieldTest, ARightClickInTheFieldClosesThePopUpAndOpensTheMenuOfTheText) {
  user.type("amb");
  user.press(*window, {50 + 60, 213}, {.button = 1});
  EXPECT_FALSE(popUp().isOpen());
  EXPECT_NE(desktop.openMenu(), nullptr);
}

TEST_F(SearchFieldTest, TheClearButtonIsThereWithATextAndOneClickEmptiesTheField) {
  const Ref<NSView> button = search->subviews().back();
  EXPECT_TRUE(button->isHidden());
  user.type("amb");
  EXPECT_FALSE(button->isHidden());
  user.click(*window, {50 + 288, 213});
  EXPECT_EQ(text(), "");
  EXPECT_FALSE(popUp().isOpen());
  EXPECT_TRUE(button->isHidden());
  EXPECT_THAT(calls, ElementsAre("search "));
  user.type("s");
  EXPECT_EQ(text(), "s") << "the field has the keyboard";
}

// What else ends it.

TEST_F(SearchFieldTest, TheActionMayRemoveTheField) {
  search->setOnPick([this](const SearchRow&) {
    search->removeFromSuperview();
    search.reset();
  });
  user.type("amb");
  user.moveTo(popUpWindow(), row(0));
  const WeakRef<NSWindow> held = popUp().window();
  const WeakRef<SearchField> field = search;
  user.click(popUpWindow(), row(0));
  desktop.settle();
  EXPECT_TRUE(field.expired());
  EXPECT_TRUE(held.expired() || !held.lock()->isVisible());
}

TEST_F(SearchFieldTest, TheActionOfReturnMayRemoveTheFieldAndCloseTheWindow) {
  search->setOnSearch([this](const std::string&) {
    window->close();
    search->removeFromSuperview();
    search.reset();
  });
  user.type("amb");
  const WeakRef<SearchField> field = search;
  user.pressKey(returnKey);
  desktop.settle();
  EXPECT_TRUE(field.expired());
}

TEST_F(SearchFieldTest, TheSourceMayRemoveTheField) {
  search->setSource([this](const SearchQuestion& question) {
    search->removeFromSuperview();
    search.reset();
    question.answer({});
  });
  const WeakRef<SearchField> field = search;
  user.type("a");
  desktop.settle();
  EXPECT_TRUE(field.expired());
}

TEST_F(SearchFieldTest, AFieldThatGoesTakesItsPopUpAlong) {
  answersLater = true;
  user.type("amb");
  asked.back().answer(matches("amb"));
  const WeakRef<NSWindow> held = popUp().window();
  user.type("e");
  search->removeFromSuperview();
  search.reset();
  EXPECT_TRUE(held.expired() || !held.lock()->isVisible());
  asked.back().answer(matches("ambe"));
}

TEST_F(SearchFieldTest, HidingTheFieldUnderThePointerEndsThePopUp) {
  user.type("amb");
  user.moveTo(popUpWindow(), row(1));
  search->setHidden(true);
  desktop.settle();
  EXPECT_FALSE(popUp().isOpen());
}

TEST_F(SearchFieldTest, ClosingTheWindowEndsThePopUp) {
  user.type("amb");
  nativeOf(*window).closeByUser();
  EXPECT_FALSE(popUp().isOpen());
  EXPECT_EQ(popUpWindow().parentWindow(), nullptr);
}

TEST_F(SearchFieldTest, OtherKeysThanTheFieldsEndThePopUp) {
  user.type("amb");
  window->makeFirstResponder(nullptr);
  EXPECT_FALSE(popUp().isOpen());
}

TEST_F(SearchFieldTest, StaysBelowTheFieldWhenItMovesOrTheWindowDoes) {
  search->setAutoresizingMask(NSViewWidthSizable);
  user.type("amb");
  user.pressKey(NSDownArrowFunctionKey);
  window->setFrame({200, 350, 600, 300}, true);
  EXPECT_EQ(popUpWindow().frame().origin.x, 250);
  EXPECT_EQ(popUpWindow().frame().size.width, 400);
  EXPECT_EQ(selected(), "Amber Quartet");
  search->setFrameOrigin({60, 180});
  desktop.settle();
  EXPECT_EQ(popUpWindow().frame().origin.x, 260);
  EXPECT_EQ(CGRectGetMaxY(popUpWindow().frame()), 350 + 180 - 2);
  // A layout of the program's makes the field wider without another window.
  search->setFrame({60, 180, 350, 26});
  desktop.settle();
  EXPECT_EQ(popUpWindow().frame().size.width, 350);
  EXPECT_EQ(selected(), "Amber Quartet");
}

// Assistive clients.

TEST_F(SearchFieldTest, AssistiveClientsReadRowsWithTheirSections) {
  user.type("amb");
  user.pressKey(NSDownArrowFunctionKey);
  EXPECT_EQ(list(), R"(text field "Search" = "Amber Quartet" [focusable, focused, editable] focus
  list "Search results" []
    row "Amber Quartet" help "Artists" [selectable, selected] press, choose
    row "Amber Signal, by Noor Hale" help "Albums" [selectable] press, choose
    row "Amber Tide, Noor Hale" help "Tracks" [selectable] press, choose
)");
}

TEST_F(SearchFieldTest, AssistiveClientsReadTheNotes) {
  answersLater = true;
  user.type("a");
  desktop.advance(0.3);
  EXPECT_THAT(list(), testing::EndsWith("    static text \"Searching…\" [read-only]\n"));
  asked.back().answer({});
  EXPECT_THAT(list(), testing::EndsWith("    static text \"Nothing found\" [read-only]\n")) << "and no row to select";
}

TEST_F(SearchFieldTest, SaysEverythingInTheUsersLanguage) {
  search->setTexts({.name = "Suche", .placeholder = "Suchen", .clear = "Leeren", .list = "Treffer", .empty = "Nichts"});
  EXPECT_EQ(dynamic_cast<NSTextFieldCell&>(*search->field()->cell()).placeholderString(), "Suchen");
  user.type("a");
  std::string lines;
  for (const std::string& line : accessibleTreeLines(search)) lines += line + "\n";
  for (const char* name : {"\"Suche\"", "\"Leeren\"", "\"Treffer\""}) EXPECT_THAT(lines + list(), testing::HasSubstr(name));
  user.type("zz");
  EXPECT_THAT(list(), testing::HasSubstr("Nichts"));
}

TEST_F(SearchFieldTest, ATextThatAnAssistiveClientWritesAsksAsTypingDoes) {
  window->makeFirstResponder(nullptr);
  accessibilityOf(search->field()->cell())->accessibilitySetValue("amber s", NSAccessibilityValueAttribute);
  EXPECT_TRUE(popUp().isOpen());
}

TEST_F(SearchFieldTest, ARowThatAnAssistiveClientSelectsOrChoosesIsPicked) {
  using TessalunaUIKit::HighlightingView;
  user.type("amb");
  accessibilityOf(laidOut()[1])->accessibilityPerformAction(NSAccessibilityPressAction);
  user.pressKey(returnKey);
  EXPECT_THAT(calls, ElementsAre("pick Amber Quartet"));
  calls.clear();
  search->setText("");
  user.type("amb");
  accessibilityOf(laidOut()[3])->accessibilityPerformAction(HighlightingView::chooseAction);
  EXPECT_THAT(calls, ElementsAre("pick Amber Signal"));
}

TEST_F(SearchFieldTest, TheSourceMayRemoveTheFieldAfterADelay) {
  search->setDelay(0.1);
  search->setSource([this](const SearchQuestion& question) {
    search->removeFromSuperview();
    search.reset();
    calls.push_back(question.text() + std::to_string(question.number()));
    question.answer({{.title = "late"}});
  });
  const WeakRef<SearchField> field = search;
  user.type("a");
  desktop.advance(1);
  EXPECT_TRUE(field.expired());
  EXPECT_THAT(calls, ElementsAre("a1"));
}

TEST_F(SearchFieldTest, TheSourceMayBeReplacedOrTextSetWithinItsCall) {
  const auto held = std::make_shared<int>(3);
  search->setSource([this, held](const SearchQuestion& question) {
    search->setSource(nullptr);
    search->setText("other");
    calls.push_back(std::to_string(*held));
    question.answer({{.title = "late"}});
  });
  user.type("a");
  desktop.advance(1);
  EXPECT_FALSE(popUp().isOpen());
  EXPECT_EQ(search->text(), "other");
  user.type("b");
  desktop.advance(1);
  EXPECT_THAT(calls, ElementsAre("3"));
}

TEST_F(SearchFieldTest, WhatIsCalledMaySetAnotherCallAndAnotherText) {
  const auto held = std::make_shared<int>(3);
  search->setOnPick([this, held](const SearchRow& row) {
    search->setOnPick(nullptr);
    search->setText("");
    calls.push_back(row.title + std::to_string(*held));
  });
  search->setOnSearch([this, held](const std::string& text) {
    search->setOnSearch(nullptr);
    search->setText("zz");
    calls.push_back(text + std::to_string(*held));
  });
  user.type("amb");
  user.pressKey(NSDownArrowFunctionKey);
  user.pressKey(returnKey);
  user.type("amb");
  user.pressKey(returnKey);
  EXPECT_THAT(calls, ElementsAre("Amber Quartet3", "amb3"));
}

TEST_F(SearchFieldTest, AHiddenOrDisabledFieldOpensNothing) {
  answersLater = true;
  user.type("amb");
  search->setHidden(true);
  asked.back().answer(matches("amb"));
  desktop.advance(1);
  EXPECT_FALSE(popUp().isOpen());
  search->setHidden(false);
  user.click(*window, {100, 210});
  user.type("e");
  search->field()->setEnabled(false);
  asked.back().answer(matches("amb"));
  desktop.advance(1);
  EXPECT_FALSE(popUp().isOpen());
}

}  // namespace
}  // namespace tessaluna::ready
