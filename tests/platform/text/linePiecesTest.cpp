#include "tessaluna/platform/text/linePieces.h"

#include <gmock/gmock.h>

#include <string>

namespace tessaluna::platform {
namespace {

using testing::ElementsAre;

// Alef, bet and gimel run from right to left, "\u0661" is an Arabic number.
std::u16string repeated(std::u16string_view text, int times) {
  std::u16string result;
  for (int i = 0; i < times; ++i) result += text;
  return result;
}

std::vector<std::u16string> textsOf(const LinePieces& pieces, std::u16string_view line) {
  std::vector<std::u16string> texts;
  for (const LinePiece& piece : pieces.inTextOrder) texts.emplace_back(line.substr(piece.start, piece.length));
  return texts;
}

// Pieces of four to eight units.
LinePieces shortPieces(std::u16string_view line) { return linePieces(line, 4, 8); }

}  // namespace

TEST(linePieces, AShortLineIsOnePiece) {
  const LinePieces pieces = shortPieces(u"\u05D0\u05D1 abc");
  ASSERT_EQ(pieces.inTextOrder.size(), 1u);
  EXPECT_EQ(pieces.inTextOrder[0].length, 6u);
  EXPECT_TRUE(pieces.inTextOrder[0].isRightToLeft);
  EXPECT_TRUE(linePieces(u"", 4, 8).inTextOrder.size() == 1);
}

TEST(linePieces, PiecesEndAfterABlankOrWhereTheyWouldBeTooLong) {
  const std::u16string line = u"abcd efg hijklmnopq";
  EXPECT_THAT(textsOf(shortPieces(line), line), ElementsAre(u"abcd ", u"efg ", u"hijklmno", u"pq"));
  EXPECT_THAT(shortPieces(line).fromLeft, ElementsAre(0, 1, 2, 3));
}

TEST(linePieces, NumbersAndSignsBetweenLettersFromLeftToRightAreLetters) {
  const std::u16string line = u"1234 5678 90 .... ...";
  EXPECT_THAT(textsOf(shortPieces(line), line), ElementsAre(u"1234 ", u"5678 ", u"90 .... ", u"..."));
}

TEST(linePieces, PiecesOfALineFromRightToLeftAreFromTheRight) {
  const std::u16string line = u"\u05D0\u05D1\u05D2\u05D0 \u05D1\u05D2\u05D0\u05D1 \u05D2\u05D0";
  const LinePieces pieces = shortPieces(line);
  EXPECT_THAT(textsOf(pieces, line), ElementsAre(line.substr(0, 5), line.substr(5, 5), line.substr(10)));
  EXPECT_THAT(pieces.fromLeft, ElementsAre(2, 1, 0));
  for (const LinePiece& piece : pieces.inTextOrder) EXPECT_TRUE(piece.isRightToLeft);
}

TEST(linePieces, NumbersStayWithTheLettersBeforeThem) {
  const std::u16string line = u"\u05D0\u05D1\u05D2\u05D0 12 34 \u05D1 \u05D2\u05D0\u05D1 \u05D2";
  EXPECT_THAT(textsOf(shortPieces(line), line), ElementsAre(line.substr(0, 13), line.substr(13, 4), line.substr(17)));
}

TEST(linePieces, ALongStretchOfTheOtherDirectionIsTurnedAsAWhole) {
  // Eight letters before it, five behind it, and twelve in it.
  const std::u16string inner = u"\u05D0\u05D1\u05D2\u05D0 \u05D1\u05D2\u05D0\u05D1 \u05D2\u05D0";
  const std::u16string line = u"abcd, " + inner + u". efgh";
  const LinePieces pieces = shortPieces(line);
  EXPECT_THAT(textsOf(pieces, line),
              ElementsAre(u"abcd, ", inner.substr(0, 5), inner.substr(5, 5), inner.substr(10), u". efgh"));
  EXPECT_THAT(pieces.fromLeft, ElementsAre(0, 3, 2, 1, 4));
  EXPECT_FALSE(pieces.inTextOrder[0].isRightToLeft);
  EXPECT_TRUE(pieces.inTextOrder[1].isRightToLeft);
  EXPECT_FALSE(pieces.inTextOrder[4].isRightToLeft);
}

TEST(linePieces, InALineFromRightToLeftALongStretchIsFromLeftToRight) {
  const std::u16string line = u"\u05D0\u05D1 abcd efgh ij \u05D2";
  const LinePieces pieces = shortPieces(line);
  EXPECT_THAT(textsOf(pieces, line), ElementsAre(u"\u05D0\u05D1 ", u"abcd ", u"efgh ", u"ij", u" \u05D2"));
  EXPECT_THAT(pieces.fromLeft, ElementsAre(4, 1, 2, 3, 0));
}

TEST(linePieces, ANumberAtTheEndOfALongStretchBelongsToIt) {
  const std::u16string inner = u"\u05D0\u05D1\u05D2\u05D0 \u05D1\u05D2\u05D0\u05D1 12%";
  const std::u16string line = u"ab " + inner + u" cd";
  EXPECT_THAT(textsOf(shortPieces(line), line), ElementsAre(u"ab ", inner.substr(0, 5), inner.substr(5), u" cd"));
}

TEST(linePieces, AShortStretchOfTheOtherDirectionIsNotCut) {
  const std::u16string line = u"abcd \u05D0\u05D1 \u05D2 efgh ij";
  EXPECT_THAT(textsOf(shortPieces(line), line), ElementsAre(u"abcd \u05D0\u05D1 \u05D2 e", u"fgh ", u"ij"));
}

TEST(linePieces, AfterAnArabicNumberAStretchHasNoSureBeginning) {
  const std::u16string line = u"ab \u0661 " + repeated(u"\u05D0\u05D1\u05D2\u05D0 ", 3) + u"c";
  EXPECT_THAT(textsOf(shortPieces(line), line), ElementsAre(line));
}

TEST(linePieces, APairOfBracketsAtTheEndOfALongStretchBelongsToIt) {
  const std::u16string inner = u"\u05D0\u05D1\u05D2\u05D0 \u05D1\u05D2\u05D0\u05D1 (\u05D2)";
  const std::u16string line = u"ab " + inner + u"() cd";
  EXPECT_THAT(textsOf(shortPieces(line), line), ElementsAre(u"ab ", inner.substr(0, 5), inner.substr(5), u"() cd"));
}

TEST(linePieces, ABracketWhosePartnerIsElsewhereEndsAStretch) {
  const std::u16string inner = u"\u05D0\u05D1\u05D2\u05D0 \u05D1\u05D2\u05D0\u05D1 \u05D2\u05D0";
  // It may run as the letters along the line do that are in the pair with it.
  const std::u16string opened = u"ab " + inner + u" (\u05D2 cd) ef", closed = u"ab (cd " + inner + u") " + inner + u" c";
  EXPECT_THAT(textsOf(shortPieces(opened), opened),
              ElementsAre(u"ab ", inner.substr(0, 5), inner.substr(5, 5), inner.substr(10), u" (\u05D2 cd) ", u"ef"));
  EXPECT_THAT(textsOf(shortPieces(closed), closed),
              ElementsAre(u"ab (cd ", inner.substr(0, 5), inner.substr(5, 5), inner.substr(10), u") ", inner.substr(0, 5),
                          inner.substr(5, 5), inner.substr(10), u" c"));
}

TEST(linePieces, AWordOfJoinedLettersIsCutOnlyWhereItIsVeryLong) {
  const std::u16string letters = repeated(u"\u0628", 63), line = letters + u" " + letters + u"\u0628\u0628\u0628";
  EXPECT_THAT(textsOf(shortPieces(line), line), ElementsAre(letters + u" ", letters + u"\u0628", u"\u0628\u0628"));
}

TEST(linePieces, NoNumberIsCut) {
  for (const std::u16string_view number : {u"123456789012", u"\u0661\u0662\u0663\u0661\u0662\u0663\u0661\u0662\u0663"}) {
    const std::u16string line = u"\u05D0\u05D1 " + std::u16string(number) + u" \u05D2";
    EXPECT_THAT(textsOf(shortPieces(line), line), ElementsAre(line));
  }
}

TEST(linePieces, MarksThatSetDirectionsKeepALineWhole) {
  for (const char16_t mark : {u'\u202A', u'\u202E', u'\u2067', u'\u2069'}) {
    const std::u16string line = u"abcd efgh " + std::u16string(1, mark) + u"ijkl mnop";
    EXPECT_THAT(textsOf(shortPieces(line), line), ElementsAre(line));
  }
}

TEST(linePieces, CharactersOfSeveralUnitsAreNotCut) {
  const std::u16string line = repeated(u"e\u0301", 9);
  EXPECT_THAT(textsOf(shortPieces(line), line), ElementsAre(line.substr(0, 8), line.substr(8, 8), line.substr(16)));
}

}  // namespace tessaluna::platform
