#include "tessaluna/uikit/links/JoinedLinks.h"

#include <gtest/gtest.h>

#include <cmath>
#include <functional>
#include <numeric>
#include <random>

#include "tessaluna/backends/headless/HeadlessBackend.h"
#include "tessaluna/platform/text/NSFont.h"
#include "tessaluna/platform/text/unicode.h"

using namespace tessaluna::platform;
using tessaluna::backend::headless::HeadlessBackend;
using tessaluna::backend::headless::HeadlessTextEngine;
using TessalunaUIKit::JoinedLinks;

namespace {

// Counts the lines that are measured, and can give each character an advance of its own.
class CountingTextEngine : public HeadlessTextEngine {
 public:
  mutable int measures = 0;
  std::function<CGFloat(char32_t)> advanceOf;
  std::shared_ptr<const tessaluna::backend::ShapedLine> shape(
      std::u16string_view text, std::span<const tessaluna::backend::FontSpan> fonts) const override {
    ++measures;
    auto line = HeadlessTextEngine::shape(text, fonts);
    if (!advanceOf) return line;
    const auto proportional = std::make_shared<tessaluna::backend::ShapedLine>(*line);
    proportional->advance = 0;
    for (tessaluna::backend::TextCluster& cluster : proportional->clusters) {
      cluster.left = proportional->advance;
      cluster.right = proportional->advance += advanceOf(scalarAt(text, cluster.start));
    }
    return proportional;
  }
};

class CountingDesktop : public HeadlessBackend {
 public:
  CountingTextEngine engine;
  const HeadlessTextEngine& textEngine() const override { return engine; }
};

constexpr CGFloat advance = 5;  // of each character

// What the search leaves of characters with these advances, in numbers alone.
struct Expected {
  std::size_t characters;  // before the "…"
  CGFloat suffixPosition;
};
Expected expectedCut(const std::vector<CGFloat>& advances, CGFloat ellipsis, CGFloat width) {
  const auto prefixWidth = [&](std::size_t characters) {
    return std::accumulate(advances.begin(), advances.begin() + static_cast<std::ptrdiff_t>(characters), CGFloat{0});
  };
  const auto cutWidth = [&](std::size_t characters) { return prefixWidth(characters) + ellipsis; };
  std::size_t low = 0, high = advances.size();
  while (high > low) {
    const std::size_t middle = (low + high) / 2;
    if (cutWidth(middle) == width) return {middle, prefixWidth(middle - 1)};
    if (cutWidth(middle) < width) low = middle + 1;
    else high = middle - 1;
  }
  const std::size_t position = high > 0 && cutWidth(high) > width + 1 ? high - 1 : high;
  return {position, prefixWidth(position)};
}

class JoinedLinksTest : public testing::Test {
 protected:
  JoinedLinks::Cut cut(CGFloat width) const { return links.cutToWidth(width, attributes); }
  void set(const std::vector<std::string>& strings) { links.setStrings(strings, attributes); }

  CountingDesktop desktop;
  const NSAttributes attributes{{NSFontAttributeName, NSFont::systemFontOfSize(10)}};
  JoinedLinks links;
};

}  // namespace

TEST_F(JoinedLinksTest, OverRandomStringsAndWidthsTheSearchDecides) {
  std::mt19937 random(11);
  const auto upTo = [&random](unsigned most) { return random() % (most + 1); };
  const std::string letters[] = {"a", "b", "e\xCC\x81", "\xF0\x9F\x8E\xB5", " ", "\xD7\xA9", "\xFF"};
  int cuts = 0, exactHits = 0;
  for (int round = 0; round < 500; ++round) {
    std::vector<std::string> strings(upTo(4) + 1);
    for (std::string& string : strings)
      for (unsigned i = upTo(12); i > 0; --i) string += letters[upTo(6)];
    set(strings);
    const std::vector<std::size_t> borders = characterBorders(links.text());
    // In every other round the advances differ, in quarters of a point.
    const bool isProportional = round % 2 == 1;
    const auto advanceOf = [](char32_t scalar) { return 2 + 0.25 * static_cast<CGFloat>(scalar * 7 % 29); };
    desktop.engine.advanceOf = isProportional ? std::function<CGFloat(char32_t)>(advanceOf) : nullptr;
    const CGFloat ellipsis = isProportional ? advanceOf(U'…') : advance;
    std::vector<CGFloat> advances;
    for (std::size_t i = 0; i + 1 < borders.size(); ++i)
      advances.push_back(isProportional ? advanceOf(scalarAt(links.text(), borders[i])) : advance);
    const CGFloat whole = std::accumulate(advances.begin(), advances.end(), CGFloat{0});
    const CGFloat width = ellipsis + 0.25 * (1 + upTo(4 * static_cast<unsigned>(whole) + 20));
    const JoinedLinks::Cut now = cut(width);
    if (whole <= width + 1) {
      EXPECT_EQ(now.text, links.text());
      EXPECT_FALSE(now.suffixPosition);
      continue;
    }
    ++cuts;
    const auto [characters, suffixPosition] = expectedCut(advances, ellipsis, width);
    const std::size_t units = borders[characters];
    const CGFloat kept =
        std::accumulate(advances.begin(), advances.begin() + static_cast<std::ptrdiff_t>(characters), CGFloat{0});
    EXPECT_EQ(now.text, links.text().substr(0, units) + u"…") << width;
    EXPECT_EQ(now.suffixPosition, suffixPosition) << width;
    EXPECT_EQ(now.suffixLength(), 1u);
    EXPECT_TRUE(characters == 0 || kept + ellipsis <= width + 1);
    exactHits += suffixPosition < kept;
  }
  EXPECT_GT(cuts, 200);
  EXPECT_GT(exactHits, 10);
}

TEST_F(JoinedLinksTest, AShorteningMeasuresLessOftenThanTheLogarithmOfTheLengthAndFourMore) {
  for (const std::size_t length : {2u, 40u, 1000u, 10000u}) {
    set({std::string(length, 'a')});
    const int most = static_cast<int>(std::ceil(std::log2(length))) + 4;
    for (const double share : {0.1, 0.33, 0.5, 0.77, 0.99}) {
      const CGFloat width = advance + 0.7 + share * advance * static_cast<CGFloat>(length);
      desktop.engine.measures = 0;
      cut(width);
      EXPECT_LE(desktop.engine.measures, most) << length << " " << share;
    }
  }
}

TEST_F(JoinedLinksTest, EachStringIsMeasuredOnceWhenTheyAreSet) {
  desktop.engine.measures = 0;
  set({"abc", "de", "fgh"});
  EXPECT_EQ(desktop.engine.measures, 4) << "and the separator";
}

TEST_F(JoinedLinksTest, PlacesAreInPointsAndCharactersInThoseOfTheUser) {
  set({"e\xCC\x81x", "\xF0\x9F\x8E\xB5", ""});
  ASSERT_EQ(links.places()->size(), 3u);
  const JoinedLinks::Span places[] = {{0, 10}, {20, 25}, {35, 35}}, characters[] = {{0, 2}, {4, 5}, {7, 7}};
  for (std::size_t i = 0; i < 3; ++i) {
    EXPECT_EQ(links.places()->at(i).lower, places[i].lower);
    EXPECT_EQ(links.places()->at(i).upper, places[i].upper);
    EXPECT_EQ(links.characters()->at(i).lower, characters[i].lower);
    EXPECT_EQ(links.characters()->at(i).upper, characters[i].upper);
  }
}

TEST_F(JoinedLinksTest, PlacesAreCutToWholePointsOnlyAfterTheyAreAddedUp) {
  desktop.engine.advanceOf = [](char32_t) { return 4.75; };
  set({"abc", "d", "ef"});  // at 0 to 14.25, 23.75 to 28.5 and 38 to 47.5
  const JoinedLinks::Span places[] = {{0, 14}, {23, 28}, {38, 47}};
  for (std::size_t i = 0; i < 3; ++i) {
    EXPECT_EQ(links.places()->at(i).lower, places[i].lower);
    EXPECT_EQ(links.places()->at(i).upper, places[i].upper);
  }
}

TEST_F(JoinedLinksTest, AStringThatBeginsWithACombiningMarkCountsAsIfItWereAlone) {
  set({"a",
       "\xCC\x81"
       "b"});
  EXPECT_EQ(characterBorders(links.text()).size() - 1, 4u) << "the mark is on the blank";
  EXPECT_EQ(links.characters()->at(1).lower, 3);
  EXPECT_EQ(links.characters()->at(1).upper, 5);
  EXPECT_EQ(links.places()->at(1).upper, 25);
}

TEST_F(JoinedLinksTest, ASeparatorIsLeftOutOnlyWhileNothingBeforeItHasAWidth) {
  desktop.engine.advanceOf = [](char32_t scalar) { return scalar == ',' || scalar == ' ' ? 0.0 : 5.0; };
  set({"", "", "a", "b"});
  EXPECT_EQ(links.text(), u"a, b");
  EXPECT_EQ(links.places()->at(2).lower, 0);
  EXPECT_EQ(links.characters()->at(2).lower, 4);
}

TEST_F(JoinedLinksTest, AnEmptyFirstStringCountsWithItsSeparator) {
  set({"", "a"});
  EXPECT_EQ(links.text(), u", a");
  EXPECT_EQ(links.characters()->at(1).lower, 2);
  EXPECT_EQ(links.characters()->at(1).upper, 3);
  EXPECT_EQ(links.places()->at(1).lower, 10);
  EXPECT_EQ(links.places()->at(1).upper, 15);
}

TEST_F(JoinedLinksTest, WithoutStringsThePlacesGoAndTheCharactersStay) {
  set({"abc"});
  links.setStrings(std::nullopt, attributes);
  EXPECT_TRUE(links.text().empty());
  EXPECT_FALSE(links.places());
  ASSERT_TRUE(links.characters());
  EXPECT_EQ(links.characters()->size(), 1u);
}
