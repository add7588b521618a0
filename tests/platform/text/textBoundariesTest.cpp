#include "tessaluna/platform/text/textBoundaries.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <iterator>
#include <random>
#include <string>

#include "tessaluna/platform/text/unicode.h"
#include "tests/harness/allocations.h"

using namespace tessaluna::platform;

TEST(textBoundaries, CharactersAreThoseThatTheUserSees) {
  constexpr std::u16string_view text = u"ae\u0301b";
  EXPECT_EQ(characterBorderAfter(text, 0), 1u);
  EXPECT_EQ(characterBorderAfter(text, 1), 3u);
  EXPECT_EQ(characterBorderAfter(text, 2), 3u);  // within one
  EXPECT_EQ(characterBorderAfter(text, 4), 4u);
  EXPECT_EQ(characterBorderBefore(text, 4), 3u);
  EXPECT_EQ(characterBorderBefore(text, 3), 1u);
  EXPECT_EQ(characterBorderBefore(text, 2), 1u);
  EXPECT_EQ(characterBorderBefore(text, 0), 0u);
  EXPECT_EQ(characterBorderAfter(u"", 0), 0u);
  EXPECT_EQ(characterBorderBefore(u"", 9), 0u);
}

TEST(textBoundaries, WordsAreLettersAndDigitsOfAnyScript) {
  constexpr std::u16string_view text = u"don't, \u00FCber_2 \u0436\u0438\u0437\u043D\u044C!";
  EXPECT_EQ(wordEndAfter(text, 0), 5u);
  EXPECT_EQ(wordEndAfter(text, 5), 13u);
  EXPECT_EQ(wordEndAfter(text, 13), 19u);
  EXPECT_EQ(wordEndAfter(text, 19), 20u);
  EXPECT_EQ(wordStartBefore(text, 20), 14u);
  EXPECT_EQ(wordStartBefore(text, 14), 7u);
  EXPECT_EQ(wordStartBefore(text, 7), 0u);
  EXPECT_EQ(wordStartBefore(text, 0), 0u);
  EXPECT_EQ(wordEndAfter(u"", 3), 0u);
  EXPECT_EQ(wordStartBefore(u"", 3), 0u);
}

TEST(textBoundaries, ADoubleClickTakesWhatIsOfOneKind) {
  constexpr std::u16string_view text = u"ab  ?!c";
  EXPECT_EQ(wordRangeAt(text, 0), (NSRange{0, 2}));
  EXPECT_EQ(wordRangeAt(text, 1), (NSRange{0, 2}));
  EXPECT_EQ(wordRangeAt(text, 3), (NSRange{2, 2}));
  EXPECT_EQ(wordRangeAt(text, 4), (NSRange{4, 2}));
  EXPECT_EQ(wordRangeAt(text, 7), (NSRange{6, 1}));
  EXPECT_EQ(wordRangeAt(u"", 0), (NSRange{0, 0}));
}

TEST(textBoundaries, AnApostropheAtAWordsEdgeIsNotPartOfIt) {
  EXPECT_EQ(wordRangeAt(u"'tis'", 1), (NSRange{1, 3}));
  EXPECT_EQ(wordRangeAt(u"rock\u2019n", 0), (NSRange{0, 6}));
}

TEST(textBoundaries, AnApostropheBesideABlankOrAtTheEndOfTheTextIsNotPartOfAWord) {
  EXPECT_EQ(wordRangeAt(u"dogs' bed", 0), (NSRange{0, 4}));
  EXPECT_EQ(wordRangeAt(u"a 'tis", 3), (NSRange{3, 3}));
  EXPECT_EQ(wordRangeAt(u"dogs'", 4), (NSRange{4, 1}));
  EXPECT_EQ(wordRangeAt(u"'", 0), (NSRange{0, 1}));
}

TEST(textBoundaries, AParagraphEndsBeforeItsLineEnd) {
  EXPECT_EQ(paragraphRangeAt(u"ab\ncd", 1), (NSRange{0, 2}));
  EXPECT_EQ(paragraphRangeAt(u"ab\ncd", 2), (NSRange{0, 2}));
  EXPECT_EQ(paragraphRangeAt(u"ab\ncd", 3), (NSRange{3, 2}));
  EXPECT_EQ(paragraphRangeAt(u"", 5), (NSRange{0, 0}));
}

TEST(textBoundaries, TheFirstLetterWithADirectionDecides) {
  EXPECT_FALSE(isRightToLeft(u""));
  EXPECT_FALSE(isRightToLeft(u"12 ..."));
  EXPECT_FALSE(isRightToLeft(u"a \u05D0"));
  EXPECT_TRUE(isRightToLeft(u"1 \u05D0 a"));
  EXPECT_TRUE(isRightToLeft(u"\u0627"));
  EXPECT_TRUE(isRightToLeft(u"\U0001F3B5 \u05D0"));
}

TEST(textBoundaries, LoneSurrogatesAreSteppedOver) {
  constexpr char16_t lone[] = {0xD800, 'a', 0xDC00, 0};
  const std::u16string_view text(lone, 3);
  std::size_t at = 0;
  for (int i = 0; i < 3; ++i) at = characterBorderAfter(text, at);
  EXPECT_EQ(at, 3u);
  EXPECT_LE(wordEndAfter(text, 0), 3u);
  EXPECT_EQ(wordStartBefore(text, 3), 1u);
}

// The ends of lines are blanks to words, so that one line with blanks in their places has its words there.
TEST(textBoundaries, StepsThroughManyLinesAreThoseOfTheWholeText) {
  constexpr std::u16string_view letters = u"ab' \u0301\n\r\u2028\u00E9\U0001F1E6\U0001F3B5\u200D";
  std::mt19937 random(11);
  for (int round = 0; round < 3000; ++round) {
    std::u16string text;
    while (text.size() < 20) text += letters[random() % letters.size()];
    std::u16string oneLine = text;
    for (char16_t& unit : oneLine)
      if (isLineEnd(unit)) unit = u' ';
    const std::vector<std::size_t> borders = characterBorders(text);
    for (std::size_t i = 0; i < text.size(); ++i) {
      ASSERT_EQ(characterBorderAfter(text, i), *std::upper_bound(borders.begin(), borders.end(), i));
      ASSERT_EQ(characterBorderBefore(text, i + 1), *std::prev(std::lower_bound(borders.begin(), borders.end(), i + 1)));
    }
    // A mark after a blank is part of the blank; after the end of a line it is a character.
    const auto isMarkAfterLineEnd = [](char16_t a, char16_t b) { return isLineEnd(a) && (b == 0x301 || b == 0x200D); };
    const bool hasMarkAtStart = std::ranges::adjacent_find(text, isMarkAfterLineEnd) != text.end();
    for (std::size_t i = 0; i <= text.size() && !hasMarkAtStart; ++i) {
      ASSERT_EQ(wordEndAfter(text, i), wordEndAfter(oneLine, i));
      ASSERT_EQ(wordStartBefore(text, i), wordStartBefore(oneLine, i));
      ASSERT_EQ(wordRangeAt(text, i), wordRangeAt(oneLine, i));
    }
  }
}

TEST(textBoundaries, AStepLooksAtItsLineOnly) {
  std::u16string text;
  for (int line = 0; line < 10000; ++line) text += u"Some words.\n";
  const std::size_t middle = text.size() / 2;
  const int before = harness::allocations;
  characterBorderAfter(text, middle);
  characterBorderBefore(text, middle);
  wordEndAfter(text, middle);
  wordStartBefore(text, middle);
  wordRangeAt(text, middle);
  wordRangeAt(text, middle - 1);  // the end of a line
  EXPECT_LE(harness::allocations - before, 40);
}
