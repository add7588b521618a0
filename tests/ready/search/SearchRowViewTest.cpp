#include "tessaluna/ready/search/SearchRowView.h"

#include <gtest/gtest.h>

#include <algorithm>

#include "tests/harness/StillWorld.h"
#include "tests/harness/recordingOf.h"

namespace tessaluna::ready {
namespace {

using namespace platform;

struct SearchRowViewTest : harness::StillWorld {
  static harness::Lines drawn(const SearchRow& row, std::string_view typed, bool isHighlighted = false) {
    const auto view = make<SearchRowView>(row, typed);
    view->setFrameSize({300, view->frame().size.height});
    view->setIsHighlighted(isHighlighted);
    return harness::recordingOf([&] { view->drawRect(view->bounds()); });
  }
  // How many are in each run that is drawn.
  static std::vector<std::size_t> glyphsOf(const SearchRow& row, std::string_view typed) {
    std::vector<std::size_t> counts;
    for (const std::string& line : harness::only("glyphs", drawn(row, typed)))
      counts.push_back(static_cast<std::size_t>(std::ranges::count(line, '[') - 1));
    return counts;
  }
};

TEST_F(SearchRowViewTest, IsHigherWithADetailOrAPicture) {
  const auto height = [](const SearchRow& row) { return make<SearchRowView>(row, "")->frame().size.height; };
  EXPECT_EQ(height({.title = "Blue"}), 30);
  EXPECT_EQ(height({.title = "Blue", .detail = "Noor"}), 44);
  EXPECT_EQ(height({.title = "Blue", .image = NSImage::imageWithSize({28, 28}, false, [](CGRect) { return true; })}), 44);
}

TEST_F(SearchRowViewTest, MatchedLettersAreBold) {
  // A run of glyphs for each font.
  const auto glyphs = [](std::string_view typed) { return glyphsOf({.title = "Blue Bayou"}, typed); };
  EXPECT_EQ(glyphs(""), (std::vector<std::size_t>{10}));
  EXPECT_EQ(glyphs("bay"), (std::vector<std::size_t>{5, 3, 2}));
}

TEST_F(SearchRowViewTest, TextsAreThoseOfASelectionWhileHighlighted) {
  const SearchRow row{.title = "Blue", .detail = "Noor"};
  EXPECT_NE(drawn(row, "b"), drawn(row, "b", true));
}

}  // namespace
}  // namespace tessaluna::ready
