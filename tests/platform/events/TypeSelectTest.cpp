#include "tessaluna/platform/events/TypeSelect.h"

#include <gtest/gtest.h>

#include <vector>

namespace tessaluna::platform {

namespace {

class TypeSelectTest : public testing::Test {
 protected:
  // The highlighted title after the letter, which is the earlier one where it goes nowhere.
  std::string type(std::string_view letter, double secondsLater = 0.1) {
    now += secondsLater;
    if (search.takesText(letter, now))
      if (const auto found = search.entryAmong(titles.size(), titleAt, highlighted)) highlighted = found;
    return highlighted ? titles[*highlighted] : "";
  }

  const TypeSelect::TitleAt titleAt = [this](std::size_t index) { return titles[index]; };
  std::vector<std::string> titles{"By title", "By artist", "", "Album", "Zoé", "by year", "Été"};
  std::optional<std::size_t> highlighted;
  double now = 100;
  TypeSelect search{0.4};
};

TEST_F(TypeSelectTest, ALetterGoesToTheFirstEntryThatBeginsWithItAndALongerWordFurther) {
  EXPECT_EQ(type("a"), "Album");
  EXPECT_EQ(type("b", 1), "by year");  // the next one after the highlighted entry
  EXPECT_EQ(type("Y"), "by year");
  EXPECT_EQ(type(" "), "by year");
  EXPECT_EQ(type("t"), "By title");
}

TEST_F(TypeSelectTest, AWordStaysAtTheEntryThatItBegins) {
  highlighted = 0;
  EXPECT_EQ(type("b"), "By artist");
  EXPECT_EQ(type("y"), "By artist");
}

TEST_F(TypeSelectTest, TheSameLetterAgainAndAgainGoesFromEntryToEntryAndAround) {
  EXPECT_EQ(type("b"), "By title");
  EXPECT_EQ(type("b"), "By artist");
  EXPECT_EQ(type("B"), "by year");
  EXPECT_EQ(type("b"), "By title");
}

TEST_F(TypeSelectTest, ALetterAfterAPauseBeginsANewWord) {
  EXPECT_EQ(type("b"), "By title");
  EXPECT_EQ(type("a", 0.5), "Album");
}

TEST_F(TypeSelectTest, WhatNoEntryBeginsWithLeavesTheHighlight) {
  highlighted = 3;
  EXPECT_EQ(type("x"), "Album");
  EXPECT_EQ(type("a"), "Album");
}

TEST_F(TypeSelectTest, LettersOutsideOfAsciiAreFoundInEitherCase) {
  EXPECT_EQ(type("é"), "Été");
  EXPECT_EQ(type("Z", 1), "Zoé");
}

TEST_F(TypeSelectTest, ASpaceThatBeginsAWordAndControlCharactersAreNotForTheSearch) {
  EXPECT_FALSE(search.takesText(" ", 1));
  EXPECT_FALSE(search.takesText("\r", 1));
  EXPECT_FALSE(search.takesText("\x7F", 1));
  EXPECT_FALSE(search.takesText("", 1));
  EXPECT_TRUE(search.takesText("b", 1));
  EXPECT_TRUE(search.takesText(" ", 1.1));
}

TEST_F(TypeSelectTest, WhatWasTakenBackIsNotPartOfTheWord) {
  EXPECT_EQ(type("b"), "By title");
  EXPECT_EQ(type("z"), "By title");
  search.takeBack();
  EXPECT_EQ(type("y"), "By title");
}

TEST_F(TypeSelectTest, AWordContinuesWhereSomethingWasTakenBack) {
  EXPECT_EQ(type("b"), "By title");
  EXPECT_EQ(type("y"), "By title");
  EXPECT_EQ(type("z"), "By title");
  search.takeBack();
  EXPECT_EQ(type(" "), "By title");
  EXPECT_EQ(type("a"), "By artist");
}

TEST_F(TypeSelectTest, BeforeAnythingIsTypedNoEntryIsSought) {
  EXPECT_EQ(search.entryAmong(titles.size(), titleAt, 0), std::nullopt);
}

TEST_F(TypeSelectTest, AListWithoutEntriesGoesNowhere) {
  titles.clear();
  EXPECT_EQ(type("a"), "");
}

}  // namespace
}  // namespace tessaluna::platform
