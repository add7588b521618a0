#include "tessaluna/platform/text/searchWords.h"

#include <gtest/gtest.h>

namespace tessaluna::platform {
namespace {

std::string words(std::string_view text) {
  std::string result;
  for (const SearchWord& word : searchWords(text)) result += (result.empty() ? "" : " ") + word.letters;
  return result;
}

TEST(searchWordsTest, CapitalsAndAccentsDoNotCount) { EXPECT_EQ(words("Édith ÅNGSTRÖM"), "edith angstrom"); }

TEST(searchWordsTest, LettersThatPeopleTypeInAnotherWayArePlain) {
  EXPECT_EQ(words("Sigur Rós Ægir Łódź Straße Đorđe"), "sigur ros aegir lodz strasse dorde");
}

TEST(searchWordsTest, PunctuationSeparatesWordsButAnApostropheDoesNot) {
  EXPECT_EQ(words("AC/DC, don't – rock’n’roll"), "ac dc dont rocknroll");
}

TEST(searchWordsTest, OtherScriptsDigitsAndPictogramsAreLetters) { EXPECT_EQ(words("Кино 99 🎵"), "кино 99 🎵"); }

TEST(searchWordsTest, TextWithoutALetterHasNoWord) {
  EXPECT_EQ(words(""), "");
  EXPECT_EQ(words(" – !"), "");
  EXPECT_EQ(words("\xCC\x81"), "");
}

TEST(searchWordsTest, EachByteKnowsWhereItsCharacterBegins) {
  const std::vector<SearchWord> found = searchWords("a Ægir");
  ASSERT_EQ(found.size(), 2u);
  EXPECT_EQ(found[0].places, (std::vector<std::size_t>{0, 1}));
  EXPECT_EQ(found[1].letters, "aegir");
  EXPECT_EQ(found[1].places, (std::vector<std::size_t>{2, 2, 3, 4, 5, 6}));
}

TEST(searchWordsTest, AnAccentOfItsOwnBelongsToTheLetterBeforeIt) {
  // "e" and a combining acute, twice; a pictogram takes two units.
  EXPECT_EQ(searchWords("e\xCC\x81"
                        "te\xCC\x81")
                .at(0)
                .places,
            (std::vector<std::size_t>{0, 2, 3, 5}));
  EXPECT_EQ(searchWords("🎵a").at(0).places, (std::vector<std::size_t>{0, 0, 0, 0, 2, 3}));
}

}  // namespace
}  // namespace tessaluna::platform
