#include "gallery/search/SearchIndex.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace gallery {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using Kind = LibraryItem::Kind;

std::vector<std::string> labelsFor(const std::vector<LibraryItem>& items, std::string_view query, std::size_t most = 50) {
  std::vector<std::string> labels;
  for (const std::size_t index : SearchIndex(items).bestMatches(query, most)) labels.push_back(items[index].label);
  return labels;
}

TEST(SearchIndex, FindsThePrefixOfAnyWord) {
  const std::vector<LibraryItem> items{{Kind::Track, "Silver Tide", ""}, {Kind::Track, "Lost Silver", ""}};
  EXPECT_THAT(labelsFor(items, "sil"), ElementsAre("Silver Tide", "Lost Silver"));
  EXPECT_THAT(labelsFor(items, "ilver"), IsEmpty());
}

TEST(SearchIndex, IgnoresCaseAndAccentsOnEitherSide) {
  const std::vector<LibraryItem> items{{Kind::Track, "Étude", ""}, {Kind::Artist, "Søren Straße", ""}};
  EXPECT_THAT(labelsFor(items, "ETU"), ElementsAre("Étude"));
  EXPECT_THAT(labelsFor(items, "étu"), ElementsAre("Étude"));
  EXPECT_THAT(labelsFor(items, "soren"), ElementsAre("Søren Straße"));
  EXPECT_THAT(labelsFor(items, "strasse"), ElementsAre("Søren Straße"));
}

TEST(SearchIndex, AllWordsOfTheQueryAreFoundInAnyOrderAndInTheDetailToo) {
  const std::vector<LibraryItem> items{{Kind::Track, "Quiet Harbour", "Noor Hale · 3:07"}};
  EXPECT_THAT(labelsFor(items, "noor qui"), ElementsAre("Quiet Harbour"));
  EXPECT_THAT(labelsFor(items, "noor loud"), IsEmpty());
}

TEST(SearchIndex, LabelsThatBeginWithTheQueryComeFirstThenOtherLabelsThenDetails) {
  const std::vector<LibraryItem> items{{Kind::Artist, "Detail", "amber"},
                                       {Kind::Artist, "Slow Amber", ""},
                                       {Kind::Track, "Amber Tide", ""},
                                       {Kind::Album, "Amber Tide II", ""}};
  EXPECT_THAT(labelsFor(items, "amber"), ElementsAre("Amber Tide II", "Amber Tide", "Slow Amber", "Detail"));
}

TEST(SearchIndex, AQueryWithoutAWordFindsNothing) {
  const std::vector<LibraryItem> items{{Kind::Track, "Silver Tide", ""}};
  EXPECT_THAT(labelsFor(items, ""), IsEmpty());
  EXPECT_THAT(labelsFor(items, " – \t"), IsEmpty());
}

TEST(SearchIndex, FindsNoMoreThanRequested) {
  const auto items = inventedLibrary(20000);
  EXPECT_EQ(SearchIndex(items).bestMatches("a", 50).size(), 50u);
}

TEST(SearchIndexLibrary, HasAsManyItemsAsRequestedAndTheSameAtEveryStart) {
  for (const std::size_t count : {0u, 1u, 7u, 20000u}) EXPECT_EQ(inventedLibrary(count).size(), count);
  const auto first = inventedLibrary(500), second = inventedLibrary(500);
  for (std::size_t i = 0; i < first.size(); ++i) EXPECT_EQ(first[i].label, second[i].label);
}

}  // namespace
}  // namespace gallery
