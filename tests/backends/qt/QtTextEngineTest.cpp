#include "tessaluna/backends/qt/QtTextEngine.h"

#include <algorithm>

#include "tests/backends/qt/QtTest.h"

namespace tessaluna::backend::qt {

namespace {

// Places come from fonts that the tests do not choose, in steps of 1/64 of a pixel.
constexpr double tolerance = 0.05;

class QtTextEngineTest : public QtTest {
 protected:
  std::shared_ptr<const ShapedLine> shape(std::u16string_view text) const {
    const FontSpan all{{.family = "", .size = 13}, text.size()};
    return engine.shape(text, {&all, 1});
  }

  // Fails unless the clusters lie side by side from the start of the line to its end, and follow each other in the text.
  static void expectWhole(const ShapedLine& line, std::size_t length) {
    std::vector<TextCluster> clusters = line.clusters;
    std::size_t unit = 0;
    for (const TextCluster& cluster : clusters) {
      ASSERT_EQ(cluster.start, unit);
      unit += cluster.length;
    }
    ASSERT_EQ(unit, length);
    std::ranges::sort(clusters, {}, &TextCluster::left);
    double x = 0;
    for (const TextCluster& cluster : clusters) {
      ASSERT_NEAR(cluster.left, x, tolerance) << "the character at " << cluster.start;
      ASSERT_GT(cluster.right, cluster.left) << "the character at " << cluster.start;
      x = cluster.right;
    }
    ASSERT_NEAR(x, line.advance, tolerance);
  }

  QtTextEngine engine;
};

std::u16string repeated(std::u16string_view text, int times) {
  std::u16string result;
  for (int i = 0; i < times; ++i) result += text;
  return result;
}

}  // namespace

TEST_F(QtTextEngineTest, TheFirstLetterOfAnEmbeddedRunHasItsOwnPlace) {
  const std::u16string text = u"ab \u05D0\u05D1\u05D2 cd";
  const auto line = shape(text);
  expectWhole(*line, text.size());
  const TextCluster &alef = line->clusters[3], &bet = line->clusters[4];
  EXPECT_TRUE(alef.isRightToLeft);
  EXPECT_NEAR(alef.left, bet.right, tolerance);
}

TEST_F(QtTextEngineTest, SoHasEveryLetterWhereDirectionsChangeBackAndForth) {
  for (const std::u16string_view text :
       {u"\u05D0\u05D1 cd \u05D2", u"a \u05D0 12 \u05D1 b", u"\u05D0b\u05D1c\u05D2", u"1\u05D0", u"a\u0627\u0628b"})
    expectWhole(*shape(text), text.size());
}

TEST_F(QtTextEngineTest, ALongLineIsAsWideAsItsWords) {
  const std::u16string word = u"Salt Harbour, ";
  const std::u16string text = repeated(word, 300);
  const auto line = shape(text);
  expectWhole(*line, text.size());
  EXPECT_NEAR(line->advance, 300 * shape(word)->advance, 300 * tolerance);
  for (const TextCluster& cluster : line->clusters) ASSERT_FALSE(cluster.isRightToLeft);
  std::size_t glyphs = 0;
  for (const GlyphRun& run : line->runs) {
    glyphs += run.glyphs.size();
    ASSERT_EQ(run.glyphs.size(), run.positions.size());
    for (const CGPoint position : run.positions) {
      ASSERT_GE(position.x, -1);
      ASSERT_LT(position.x, line->advance);
    }
  }
  EXPECT_EQ(glyphs, text.size());
  EXPECT_EQ(line->metrics.ascent, shape(word)->metrics.ascent);
}

TEST_F(QtTextEngineTest, ALongLineKeepsCharactersOfSeveralUnitsWhole) {
  const std::u16string text = repeated(u"e\u0301\U0001F469\u200D\U0001F3A4x", 200);
  const auto line = shape(text);
  ASSERT_EQ(line->clusters.size(), 600u);
  std::size_t unit = 0;
  for (const TextCluster& cluster : line->clusters) {
    ASSERT_EQ(cluster.start, unit);
    unit += cluster.length;
  }
  EXPECT_EQ(unit, text.size());
}

TEST_F(QtTextEngineTest, AFontThatChangesWithinALongLineChangesThere) {
  const std::u16string text = repeated(u"Winter Engine ", 150);
  const FontSpan spans[] = {
      {{.family = "", .size = 10}, 700}, {{.family = "", .size = 20}, 0}, {{.family = "", .size = 30}, text.size() - 700}};
  const auto line = engine.shape(text, spans);
  expectWhole(*line, text.size());
  const FontSpan small{spans[0].font, 700}, large{spans[2].font, text.size() - 700};
  const double first = engine.shape(std::u16string_view(text).substr(0, 700), {&small, 1})->advance;
  EXPECT_NEAR(line->clusters[700].left, first, 1);
  EXPECT_NEAR(line->advance, first + engine.shape(std::u16string_view(text).substr(700), {&large, 1})->advance, 1);
  for (std::size_t i = 0; i < line->runs.size(); ++i)
    EXPECT_EQ(line->runFonts[i], line->runs[i].positions.front().x < first - 1 ? 0u : 2u);
}

TEST_F(QtTextEngineTest, ALongLineFromRightToLeftIsNotTakenApart) {
  const std::u16string text = repeated(u"\u05D0\u05D1\u05D2 ", 200);
  const auto line = shape(text);
  expectWhole(*line, text.size());
  EXPECT_NEAR(line->clusters.front().right, line->advance, tolerance);
}

TEST_F(QtTextEngineTest, WhatIsKeptOfLinesIsBoundedByTheirBytes) {
  const auto first = shape(u"the first line");
  EXPECT_EQ(shape(u"the first line"), first);
  // Each of these is about a megabyte.
  for (char16_t i = 0; i < 40; ++i) shape(repeated(std::u16string(1, static_cast<char16_t>(u'A' + i)) + u" b", 4000));
  EXPECT_NE(shape(u"the first line"), first);
}

}  // namespace tessaluna::backend::qt
