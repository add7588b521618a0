#include "tessaluna/ready/search/matchedLetters.h"

#include <gtest/gtest.h>

#include "tessaluna/platform/text/unicode.h"

namespace tessaluna::ready {
namespace {

using namespace platform;

// The text with what is matched in brackets.
std::string marked(std::string_view text, std::string_view typed) {
  std::u16string units = utf16FromUtf8(text);
  const std::vector<NSRange> ranges = matchedLetters(text, typed);
  for (auto range = ranges.rbegin(); range != ranges.rend(); ++range) {
    units.insert(range->location + range->length, u"]");
    units.insert(range->location, u"[");
  }
  return utf8FromUtf16(units);
}

TEST(matchedLettersTest, WhatWasTypedIsMarkedWhereAWordBeginsWithIt) {
  EXPECT_EQ(marked("Blue Bayou", "b"), "[B]lue [B]ayou");
  EXPECT_EQ(marked("Blue Bayou", "bay"), "Blue [Bay]ou");
  EXPECT_EQ(marked("Ablaze", "b"), "Ablaze");
}

TEST(matchedLettersTest, TheLongestTypedWordCounts) { EXPECT_EQ(marked("Blue Bayou", "b bl"), "[Bl]ue [B]ayou"); }

TEST(matchedLettersTest, AccentsAreMarkedWithTheirLetters) {
  EXPECT_EQ(marked("E\xCC\x81"
                   "dith",
                   "e"),
            "[E\xCC\x81]dith");
  EXPECT_EQ(marked("Édith", "edi"), "[Édi]th");
}

TEST(matchedLettersTest, HalfOfALetterThatIsTypedAsTwoMarksAllOfIt) {
  EXPECT_EQ(marked("Ægir", "a"), "[Æ]gir");
  EXPECT_EQ(marked("Groß", "gros"), "[Groß]");
}

TEST(matchedLettersTest, NothingTypedMarksNothing) {
  EXPECT_EQ(marked("Blue", ""), "Blue");
  EXPECT_EQ(marked("Blue", " – "), "Blue");
  EXPECT_EQ(marked("", "b"), "");
}

}  // namespace
}  // namespace tessaluna::ready
