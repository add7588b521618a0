#include "tessaluna/platform/text/textBoundaries.h"

#include <gtest/gtest.h>

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
