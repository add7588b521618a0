// A search field and its pop-up under the keyboard and the mouse.
#include <gmock/gmock.h>

#include "tessaluna/platform/accessibility/AccessibleChanges.h"
#include "tessaluna/platform/events/NSEvent.h"
#include "tessaluna/platform/views/NSButton.h"
#include "tessaluna/platform/views/NSTextView.h"
#include "tests/ready/search/SearchFieldWorld.h"

namespace tessaluna::ready {
namespace {

using namespace platform;
using SearchFieldTest = SearchFieldWorld;
using testing::ElementsAre;

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

TEST_F(SearchFieldTest, EscapeRestoresWhatWasTyped) {
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

TEST_F(SearchFieldTest, DownBringsNoCaretToTheEndWhereItOpensThePopUp) {
  user.type("amb");
  user.pressKey(escape);
  user.pressKey(NSHomeFunctionKey);
  user.pressKey(NSDownArrowFunctionKey);
  ASSERT_TRUE(popUp().isOpen());
  user.type("x");
  EXPECT_EQ(text(), "xamb");
}

TEST_F(SearchFieldTest, DownAsksForTheTitleThatAClickElsewhereHasLeftInTheField) {
  user.type("amb");
  user.pressKey(NSDownArrowFunctionKey);
  user.click(*window, {400, 20});
  ASSERT_FALSE(popUp().isOpen());
  user.pressKey(NSDownArrowFunctionKey);
  EXPECT_EQ(asked.back().text(), "Amber Quartet");
}

TEST_F(SearchFieldTest, AltDownAsksNothingWhileThePopUpIsOpenOrTheKeysGoElsewhere) {
  user.type("a");
  user.pressKey(NSDownArrowFunctionKey, NSEventModifierFlagOption);
  EXPECT_EQ(asked.size(), 1u);
  window->makeFirstResponder(nullptr);
  user.pressKey(NSDownArrowFunctionKey, NSEventModifierFlagOption);
  EXPECT_EQ(asked.size(), 1u);
}

TEST_F(SearchFieldTest, TakesTheCommandsThatItActsOn) {
  const auto takes = [this](std::string_view command) {
    auto& editor = dynamic_cast<NSTextView&>(*search->field()->currentEditor());
    return search->controlTextViewDoCommandBySelector(*search->field(), editor, command);
  };
  EXPECT_FALSE(takes("moveDown:")) << "an empty field";
  EXPECT_TRUE(asked.empty());
  EXPECT_FALSE(takes("cancelOperation:"));
  answersLater = true;
  user.type("amb");
  EXPECT_FALSE(takes("insertNewline:")) << "a question, and no pop-up yet";
  EXPECT_TRUE(takes("cancelOperation:"));
  EXPECT_TRUE(takes("moveDown:"));
  asked.back().answer({});
  EXPECT_FALSE(takes("moveDown:")) << "a pop-up without rows";
  EXPECT_TRUE(takes("cancelOperation:"));
  EXPECT_TRUE(takes("moveDown:"));
  asked.back().answer(matches("amb"));
  EXPECT_TRUE(takes("moveDown:"));
  EXPECT_FALSE(takes("moveLeft:"));
}

TEST_F(SearchFieldTest, UpSelectsNothingWhereNothingIsSelected) {
  user.type("amb");
  user.pressKey(NSUpArrowFunctionKey);
  EXPECT_EQ(selected(), "none");
}

TEST_F(SearchFieldTest, LeavingTheFieldTakesTheTitleThatItShows) {
  user.type("amb");
  user.pressKey(NSDownArrowFunctionKey);
  window->makeFirstResponder(nullptr);
  EXPECT_EQ(search->text(), "Amber Quartet");
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

TEST_F(SearchFieldTest, TheMouseOverThePopUpLeavesTheCaret) {
  user.type("amb");
  user.pressKey(NSHomeFunctionKey);
  user.moveTo(popUpWindow(), row(1));
  user.type("x");
  EXPECT_EQ(text(), "xamb");
}

TEST_F(SearchFieldTest, ReturnPicksTheRowUnderTheMouseThatKeysHaveComeBackTo) {
  user.type("amb");
  user.moveTo(popUpWindow(), row(1));
  user.pressKey(NSDownArrowFunctionKey);
  user.pressKey(NSUpArrowFunctionKey);
  user.pressKey(returnKey);
  EXPECT_THAT(calls, ElementsAre("pick Amber Signal"));
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
  EXPECT_EQ(text(), "Amber Signal") << "keys continue from where the mouse is";
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
  EXPECT_EQ(search->text(), "Amber Tide");
}

TEST_F(SearchFieldTest, AClickInThePopUpIsNotOneInTheFieldWhereverItsPlaceInTheWindow) {
  answerCounted(10);
  const CGPoint place = row(2);
  ASSERT_TRUE(NSPointInRect(place, search->frame()));
  user.moveTo(popUpWindow(), place);
  user.click(popUpWindow(), place);
  EXPECT_THAT(calls, ElementsAre("pick 2"));
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

TEST_F(SearchFieldTest, ClientsAreNotifiedAsTheClearButtonComesAndGoes) {
  std::vector<std::string> changes;
  const AccessibleChanges listener(
      {.isListening = [] { return true; },
       .changed =
           [&](const AccessibleChange& change) {
             // As a client that asks for what it is notified of.
             accessibilityOf(change.element)->setAccessibilityCompanion(std::make_unique<AccessibleMemory>(change.element));
             if (accessibleNameOf(change.element) == "Clear") changes.push_back(lineOf(change));
           }});
  user.type("am");
  search->setText("");
  EXPECT_THAT(changes, ElementsAre("button \"Clear\": created", "button \"Clear\": destroyed"));
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

TEST_F(SearchFieldTest, TheClearButtonEmptiesItsOwnFieldAndGivesItTheKeyboard) {
  const auto other = make<SearchField>(CGRect{50, 100, 300, 26});
  window->contentView()->addSubview(other);
  search->setText("amb");
  other->setText("other");
  user.click(*window, {100, 110});
  user.click(*window, {50 + 288, 213});
  EXPECT_EQ(other->text(), "other");
  EXPECT_EQ(search->text(), "");
  EXPECT_NE(search->field()->currentEditor(), nullptr);
}

}  // namespace
}  // namespace tessaluna::ready
