// What else ends the pop-up of a search field, and fields that go while they are in use.
#include <gmock/gmock.h>

#include <algorithm>

#include "tessaluna/platform/views/NSProgressIndicator.h"
#include "tests/ready/search/SearchFieldWorld.h"

namespace tessaluna::ready {
namespace {

using namespace platform;
using SearchFieldTest = SearchFieldWorld;
using testing::ElementsAre;
using testing::IsEmpty;

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

TEST_F(SearchFieldTest, AFieldThatOpenedAgainAfterAPressElsewhereLeavesNothingBehind) {
  const auto other = make<NSTextField>(CGRect{400, 20, 80, 24});
  window->contentView()->addSubview(other);
  desktop.settle();
  user.type("amb");
  user.click(*window, {440, 32});
  EXPECT_FALSE(popUp().isOpen());
  user.type("e");
  EXPECT_TRUE(popUp().isOpen());
  search->removeFromSuperview();
  desktop.settle();
  EXPECT_EQ(search.use_count(), 1);
  search = nullptr;
  user.click(*window, {440, 32});
  EXPECT_NE(other->currentEditor(), nullptr);
}

TEST_F(SearchFieldTest, APopUpThatWasHiddenByOthersOpensAgainAndTakesNoLaterClick) {
  const auto other = make<NSTextField>(CGRect{400, 20, 80, 24});
  window->contentView()->addSubview(other);
  desktop.settle();
  user.type("amb");
  popUpWindow().orderOut(nullptr);
  user.type("e");
  EXPECT_TRUE(popUp().isOpen());
  user.pressKey("\x1b");
  user.click(*window, {440, 32});
  EXPECT_NE(other->currentEditor(), nullptr);
}

TEST_F(SearchFieldTest, AWheelTurnsInTheMagnifiersPlaceUntilTheSearchEnds) {
  const auto hasWheel = [this] {
    return std::ranges::any_of(search->subviews(), [](const Ref<NSView>& view) {
      return dynamic_cast<NSProgressIndicator*>(view.get()) && !view->isHidden();
    });
  };
  answersLater = true;
  user.type("a");
  EXPECT_FALSE(hasWheel());
  desktop.advance(0.3);
  EXPECT_TRUE(hasWheel());
  user.pressKey("\x1b");
  EXPECT_FALSE(hasWheel());
  user.type("m");
  desktop.advance(0.3);
  EXPECT_TRUE(hasWheel());
  asked.back().answer(counted(1));
  EXPECT_FALSE(hasWheel());
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
  EXPECT_EQ(laidOut()[1]->frame().size.width, 350);
  EXPECT_EQ(selected(), "Amber Quartet");
}

TEST_F(SearchFieldTest, ScrollingTheFieldOutOfSightEndsThePopUpAndNotTheTyping) {
  const auto cut = make<NSView>(window->contentView()->bounds());
  window->contentView()->addSubview(cut);
  cut->addSubview(search);
  user.click(*window, {100, 210});
  user.type("amb");
  ASSERT_TRUE(popUp().isOpen());
  cut->setBoundsOrigin({0, 210});
  desktop.settle();
  EXPECT_TRUE(popUp().isOpen()) << "a part of the field shows";
  cut->setBoundsOrigin({0, 300});
  desktop.settle();
  EXPECT_FALSE(popUp().isOpen());
  user.type("er");
  EXPECT_EQ(text(), "amber");
  EXPECT_FALSE(popUp().isOpen());
  cut->setBoundsOrigin({0, 0});
  user.type("s");
  EXPECT_TRUE(popUp().isOpen());
}

TEST_F(SearchFieldTest, ALateAnswerOpensBelowAFieldOnlyIfThatIsInSight) {
  answersLater = true;
  const auto cut = make<NSView>(window->contentView()->bounds());
  window->contentView()->addSubview(cut);
  cut->addSubview(search);
  user.click(*window, {100, 210});
  const auto scrollTo = [&](CGFloat y) {
    cut->setBoundsOrigin({0, y});
    desktop.settle();
  };
  user.type("amb");
  scrollTo(300);
  asked.back().answer(matches("amb"));
  EXPECT_FALSE(popUp().isOpen());
  scrollTo(0);
  user.type("er");
  scrollTo(300);
  scrollTo(0);
  asked.back().answer(matches("amber"));
  EXPECT_TRUE(popUp().isOpen());
}

TEST_F(SearchFieldTest, AWindowThatGoesToTheScreensEdgeAndBackHasTheWholePopUpAgain) {
  answerCounted(10);
  const CGFloat height = popUpWindow().frame().size.height;
  nativeOf(*window).moveByUser({100, -100, 500, 300});
  desktop.settle();
  EXPECT_EQ(popUpWindow().frame().origin.y, 0);
  EXPECT_LT(popUpWindow().frame().size.height, height);
  nativeOf(*window).moveByUser({100, 300, 500, 300});
  desktop.settle();
  EXPECT_EQ(popUpWindow().frame().size.height, height);
}

TEST_F(SearchFieldTest, AWindowThatIsHiddenHasNoPopUpWhenItComesBack) {
  // A window with the keys loses them first, which ends the pop-up as well.
  showWindow({700, 300, 100, 100});
  accessibilityOf(search->field()->cell())->accessibilitySetValue("amb", NSAccessibilityValueAttribute);
  ASSERT_TRUE(popUp().isOpen());
  window->orderOut(nullptr);
  window->orderFront(nullptr);
  desktop.settle();
  EXPECT_FALSE(popUp().isOpen());
}

TEST_F(SearchFieldTest, TheScrollBarHasTheGroundOfTheRows) {
  desktop.setPictures(tessaluna::backend::headless::Pictures::Painted);
  answerCounted(40);
  desktop.settle();
  ASSERT_TRUE(popUp().isOpen());
  const auto* picture = nativeOf(popUpWindow()).picture();
  ASSERT_TRUE(picture);
  // Beside the rows under the bar's short knob, and in a row after its title.
  const int low = picture->height() - 4;
  EXPECT_EQ(picture->pixel(picture->width() - 4, low), picture->pixel(picture->width() / 2, low));
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

TEST_F(SearchFieldTest, WithoutItsSourceTheFieldClosesItsPopUpAndStopsWaiting) {
  user.type("a");
  desktop.advance(1);
  ASSERT_TRUE(popUp().isOpen());
  search->setSource(nullptr);
  EXPECT_FALSE(popUp().isOpen());
  EXPECT_THAT(titles(), IsEmpty());
  EXPECT_EQ(search->text(), "a");
}

TEST_F(SearchFieldTest, AnotherSourceLeavesThePopUpOpen) {
  user.type("amb");
  search->setSource([](const SearchQuestion&) {});
  EXPECT_TRUE(popUp().isOpen());
}

TEST_F(SearchFieldTest, WithoutASourceTypingOpensNothing) {
  search->setSource(nullptr);
  user.type("amb");
  desktop.advance(1);
  EXPECT_FALSE(popUp().isOpen());
}

TEST_F(SearchFieldTest, ATextThatTheProgramSetsEndsThePopUpAndTheQuestion) {
  user.type("amb");
  search->setText("other");
  EXPECT_FALSE(popUp().isOpen());
  answersLater = true;
  user.type("x");
  search->setText("again");
  EXPECT_FALSE(asked.back().isCurrent());
}

TEST_F(SearchFieldTest, WithoutCallsPickingSearchingAndClearingDoNothingElse) {
  search->setOnPick(nullptr);
  search->setOnSearch(nullptr);
  user.type("amb");
  user.pressKey(NSDownArrowFunctionKey);
  user.pressKey(returnKey);
  EXPECT_EQ(search->text(), "Amber Quartet");
  user.pressKey(returnKey);
  user.click(*window, {50 + 288, 213});
  EXPECT_EQ(search->text(), "");
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
