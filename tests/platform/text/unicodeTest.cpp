#include "tessaluna/platform/text/unicode.h"

#include <gtest/gtest.h>

using namespace tessaluna::platform;

namespace {

using Borders = std::vector<std::size_t>;

}  // namespace

TEST(unicode, TextOfEveryLengthOfEncodingGoesThereAndBack) {
  const std::string utf8 = "a\xC3\xA9\xE2\x82\xAC\xF0\x9F\x8E\xB5";  // a, e with acute, euro, note
  const std::u16string utf16 = u"a\u00E9\u20AC\U0001F3B5";
  EXPECT_EQ(utf16FromUtf8(utf8), utf16);
  EXPECT_EQ(utf8FromUtf16(utf16), utf8);
  EXPECT_EQ(utf16.size(), 5u);
}

TEST(unicode, CharactersOfTheHigherPlanesGoThereAndBack) {
  for (const char32_t scalar : {0x10000u, 0x40000u, 0xFFFFFu, 0x100000u, 0x10FFFFu}) {
    const std::string utf8 = utf8FromScalar(scalar);
    EXPECT_EQ(firstScalar(utf8), scalar);
    EXPECT_EQ(utf8FromUtf16(utf16FromUtf8(utf8)), utf8);
  }
}

TEST(unicode, AByteThatIsNotUtf8BecomesTheReplacementCharacter) {
  EXPECT_EQ(utf16FromUtf8("a\xFFz"), u"a\uFFFDz");
  EXPECT_EQ(utf16FromUtf8("\x80"), u"\uFFFD");
}

TEST(unicode, ACutOffCharacterIsOneReplacementHoweverManyOfItsBytesAreThere) {
  EXPECT_EQ(utf16FromUtf8("\xE2\x82"), u"\uFFFD");
  EXPECT_EQ(utf16FromUtf8("\xF0\x9F\x8E!"), u"\uFFFD!");
}

TEST(unicode, OverlongFormsAndEncodedSurrogatesAreNotCharacters) {
  EXPECT_EQ(utf16FromUtf8("\xC0\xAF"), u"\uFFFD\uFFFD");
  EXPECT_EQ(utf16FromUtf8("\xE0\x80\x80"), u"\uFFFD\uFFFD\uFFFD");
  EXPECT_EQ(utf16FromUtf8("\xED\xA0\x80"), u"\uFFFD\uFFFD\uFFFD");
  EXPECT_EQ(utf16FromUtf8("\xF4\x90\x80\x80"), u"\uFFFD\uFFFD\uFFFD\uFFFD");
}

TEST(unicode, ALoneSurrogateLeavesAsTheReplacementCharacter) {
  EXPECT_EQ(utf8FromUtf16(std::u16string{u'a', 0xD83C, u'b'}),
            "a\xEF\xBF\xBD"
            "b");
  EXPECT_EQ(utf8FromUtf16(std::u16string{0xDFB5}), "\xEF\xBF\xBD");
}

TEST(unicode, TheFirstScalarOfNothingIsZero) {
  EXPECT_EQ(firstScalar(""), U'\0');
  EXPECT_EQ(firstScalar("\xF0\x9F\x8E\xB5x"), U'\U0001F3B5');
  EXPECT_EQ(utf8FromScalar(0xF702), "\xEF\x9C\x82");
}

TEST(unicode, SmallLettersOfEachScalar) {
  EXPECT_EQ(lowercase("AbÖЖ 1🎵"), "aböж 1🎵");
  EXPECT_EQ(lowercase(""), "");
}

TEST(unicodeCharacterBorders, OfAnEmptyTextIsItsLengthAlone) { EXPECT_EQ(characterBorders(u""), Borders{0}); }

TEST(unicodeCharacterBorders, ACombiningMarkBelongsToItsBase) {
  EXPECT_EQ(characterBorders(u"ae\u0301\u0323b"), (Borders{0, 1, 4, 5}));
}

TEST(unicodeCharacterBorders, AFamilyOfJoinedEmojiIsOneCharacter) {
  const std::u16string family = u"\U0001F468\u200D\U0001F469\u200D\U0001F467";
  EXPECT_EQ(characterBorders(family + u"!"), (Borders{0, family.size(), family.size() + 1}));
}

TEST(unicodeCharacterBorders, FlagsAreTwoLettersEach) {
  EXPECT_EQ(characterBorders(u"\U0001F1E9\U0001F1EA\U0001F1EB\U0001F1F7"), (Borders{0, 4, 8}));
}

TEST(unicodeCharacterBorders, ASkinToneBelongsToItsEmoji) {
  EXPECT_EQ(characterBorders(u"\U0001F44D\U0001F3FDx"), (Borders{0, 4, 5}));
}

TEST(unicodeCharacterBorders, ALoneSurrogateIsACharacter) {
  EXPECT_EQ(characterBorders(std::u16string{u'a', 0xD83C, u'b', 0xDFB5}), (Borders{0, 1, 2, 3, 4}));
}

TEST(unicodeCharacterBorders, ReturnAndNewlineAreOne) { EXPECT_EQ(characterBorders(u"a\r\nb"), (Borders{0, 1, 3, 4})); }
