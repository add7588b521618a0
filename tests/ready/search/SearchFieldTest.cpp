// What a search field shows and asks as one types, and what assistive clients see of it.
#include "tessaluna/ready/search/SearchField.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <random>

#include "tessaluna/platform/time/DispatchQueue.h"
#include "tests/harness/recordingOf.h"
#include "tests/ready/search/SearchFieldWorld.h"

namespace tessaluna::ready {
namespace {

using namespace platform;
using SearchFieldTest = SearchFieldWorld;
using testing::ElementsAre;

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

TEST_F(SearchFieldTest, BeforeTheFirstAnswerANoteSaysThatItSearches) {
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

TEST_F(SearchFieldTest, AnAnswerWithoutRowsShowsANote) {
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

TEST_F(SearchFieldTest, ARowThatIsAnotherInAnythingThatShowsIsNotSelectedAgain) {
  answersLater = true;
  const SearchRow live{.title = "Live", .detail = "1971", .section = "Albums", .id = 1};
  const SearchRow others[] = {{.title = "Live!", .detail = "1971", .section = "Albums", .id = 1},
                              {.title = "Live", .detail = "1972", .section = "Albums", .id = 1},
                              {.title = "Live", .detail = "1971", .section = "Tracks", .id = 1}};
  for (const SearchRow& other : others) {
    user.type("x");
    asked.back().answer({live});
    user.pressKey(NSDownArrowFunctionKey);
    ASSERT_EQ(selected(), "Live");
    user.type("y");
    asked.back().answer({other});
    EXPECT_EQ(selected(), "none") << other.title << " " << other.detail << " " << other.section;
  }
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

TEST_F(SearchFieldTest, ATextThatAnAssistiveClientWritesOpensInAWindowWithoutTheKeysToo) {
  answersLater = true;
  showWindow({700, 300, 100, 100});
  accessibilityOf(search->field()->cell())->accessibilitySetValue("amber s", NSAccessibilityValueAttribute);
  ASSERT_FALSE(window->isKeyWindow());
  asked.back().answer(matches("amber s"));
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

}  // namespace
}  // namespace tessaluna::ready
