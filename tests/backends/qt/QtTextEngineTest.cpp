#include "tessaluna/backends/qt/QtTextEngine.h"

#include <QGlyphRun>
#include <QGuiApplication>
#include <QImage>
#include <QTextLayout>
#include <algorithm>
#include <limits>
#include <random>

#include "tessaluna/platform/text/unicode.h"
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

  // Of each user-perceived character, in a line that is shaped at once.
  static std::vector<double> leftsInOneLayout(std::u16string_view text) {
    QFont font = QGuiApplication::font();
    font.setPixelSize(13);
    font.setHintingPreference(QFont::PreferNoHinting);
    QTextLayout layout(QString(reinterpret_cast<const QChar*>(text.data()), static_cast<qsizetype>(text.size())), font);
    QTextOption option;
    option.setWrapMode(QTextOption::NoWrap);
    option.setUseDesignMetrics(true);
    layout.setTextOption(option);
    layout.beginLayout();
    const QTextLine line = layout.createLine();
    layout.endLayout();
    std::vector<double> lefts;
    const std::vector<std::size_t> borders = platform::characterBorders(text);
    for (std::size_t i = 0; i + 1 < borders.size(); ++i) {
      const auto start = static_cast<int>(borders[i]), length = static_cast<int>(borders[i + 1] - borders[i]);
      double left = std::numeric_limits<double>::infinity();
      for (const QGlyphRun& run : layout.glyphRuns(start, length))
        for (const QPointF& position : run.positions()) left = std::min(left, position.x());
      lefts.push_back(left);
    }
    EXPECT_TRUE(line.isValid());
    return lefts;
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
       {u"\u05D0\u05D1 cd \u05D2", u"a \u05D0 12 \u05D1 b", u"\u05D0b\u05D1c\u05D2", u"1\u05D0", u"a\u0627\u0628b",
        u"\u05D0 e\u0301a \u05D0", u"a \u05D0\u05B8\u05D1 b"})
    expectWhole(*shape(text), text.size());
}

TEST_F(QtTextEngineTest, ABoldFontIsWider) {
  const std::u16string_view text = u"Mmmm";
  const FontSpan plain{{.family = "", .size = 13}, text.size()},
      bold{{.family = "", .size = 13, .isBold = true}, text.size()};
  EXPECT_GT(engine.shape(text, {&bold, 1})->advance, engine.shape(text, {&plain, 1})->advance);
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

TEST_F(QtTextEngineTest, ALongLineFromRightToLeftBeginsAtTheRight) {
  const std::u16string text = repeated(u"\u05D0\u05D1\u05D2 ", 500);
  const auto line = shape(text);
  expectWhole(*line, text.size());
  EXPECT_NEAR(line->clusters.front().right, line->advance, tolerance);
  for (const TextCluster& cluster : line->clusters) ASSERT_TRUE(cluster.isRightToLeft);
}

TEST_F(QtTextEngineTest, EveryLetterOfALongLineStandsWhereItDoesInOneThatIsShapedAsAWhole) {
  const std::u16string_view words[] = {u"Ada ",
                                       u"Brink, ",
                                       u"\u05E0\u05D5\u05E2\u05D4 ",
                                       u"\u05DC\u05D1\u05D9\u05D0. ",
                                       u"12 ",
                                       u"7% ",
                                       u"\u0644\u064A\u0644\u0649 ",
                                       u"\u0661\u0662 ",
                                       u"(live) ",
                                       u"\u05E9\u05DC\u05D5\u05DD! ",
                                       u"e\u0301a ",
                                       u"\U0001F3B5 "};
  std::mt19937 random(5);
  for (int round = 0; round < 20; ++round) {
    // Words of one direction come in long rows, so that rows of either can be taken apart in lines of either.
    std::u16string text;
    while (text.size() < 2400) {
      const std::size_t first = random() % std::size(words);
      const std::size_t second = random() % std::size(words);
      for (std::size_t i = random() % 3 == 0 ? 300 : 4; i > 0; --i) text += words[random() % 4 == 0 ? second : first];
    }
    const auto line = shape(text);
    const std::vector<double> lefts = leftsInOneLayout(text);
    ASSERT_EQ(lefts.size(), line->clusters.size());
    for (std::size_t i = 0; i < lefts.size(); ++i)
      ASSERT_NEAR(line->clusters[i].left, lefts[i], 1) << "round " << round << ", the character at "
                                                       << line->clusters[i].start << " of " << platform::utf8FromUtf16(text);
  }
}

TEST_F(QtTextEngineTest, AFontIsAsLargeWhateverResolutionQtHasMadeItFor) {
  const FontMetrics before = engine.metrics({.family = "", .size = 13});
  const double advance = shape(u"Salt Harbour")->advance;
  const QFont font = QGuiApplication::font();
  QImage device(1, 1, QImage::Format_RGB32);
  device.setDotsPerMeterX(5906);  // 150 dots per inch
  device.setDotsPerMeterY(5906);
  QGuiApplication::setFont(QFont(font, &device));
  engine.forgetFonts();
  EXPECT_EQ(engine.metrics({.family = "", .size = 13}).ascent, before.ascent);
  EXPECT_EQ(shape(u"Salt Harbour")->advance, advance);
  QGuiApplication::setFont(font);
}

TEST_F(QtTextEngineTest, WhatIsKeptOfLinesIsBoundedByTheirBytes) {
  const auto first = shape(u"the first line");
  EXPECT_EQ(shape(u"the first line"), first);
  // Each of these is about a megabyte.
  for (char16_t i = 0; i < 40; ++i) shape(repeated(std::u16string(1, static_cast<char16_t>(u'A' + i)) + u" b", 4000));
  EXPECT_NE(shape(u"the first line"), first);
}

// Glyphs with colors of their own. The font of emoji is one that `setup` installs.

TEST_F(QtTextEngineTest, AnEmojiIsAPictureWhereItsClusterIs) {
  const std::u16string text = u"a\U0001F1EB\U0001F1EEb";  // the flag of Finland
  const auto line = shape(text);
  expectWhole(*line, text.size());
  ASSERT_EQ(line->pictures.size(), 1u);
  const auto& [pixels, place, font] = line->pictures[0];
  EXPECT_EQ(font, 0u);
  EXPECT_NEAR(CGRectGetMidX(place), (line->clusters[1].left + line->clusters[1].right) / 2, 1);
  EXPECT_GT(place.size.width, 10);
  EXPECT_LT(place.size.width, 20);
  EXPECT_GT(CGRectGetMaxY(place), 6);
  EXPECT_LT(CGRectGetMinY(place), 0);
  ASSERT_EQ(pixels->argb.size(), std::size_t(pixels->width * pixels->height));
  // A blue cross on white.
  const auto pixelAt = [&](double x, double y) {
    return pixels->argb[std::size_t(pixels->height * y) * std::size_t(pixels->width) + std::size_t(pixels->width * x)];
  };
  const std::uint32_t cross = pixelAt(0.7, 0.5), white = pixelAt(0.8, 0.35);
  EXPECT_GT(cross & 0xff, 2 * (cross >> 16 & 0xff)) << "blue and red";
  EXPECT_GT(white >> 16 & 0xff, 200u);
  EXPECT_EQ(pixelAt(0.5, 0), 0u) << "above it";
}

TEST_F(QtTextEngineTest, PicturesHaveFourPixelsPerPoint) {
  const auto line = shape(u"\U0001F3B5");
  ASSERT_EQ(line->pictures.size(), 1u);
  const auto& [pixels, place, font] = line->pictures[0];
  EXPECT_NEAR(pixels->width / place.size.width, 4, 1e-9);
  EXPECT_NEAR(pixels->height / place.size.height, 4, 1e-9);
}

TEST_F(QtTextEngineTest, LettersAndSpacesAreNoPictures) {
  EXPECT_TRUE(shape(u"Quiet Harbour 12 \u2605")->pictures.empty());
  EXPECT_EQ(shape(u" \U0001F3B5 ")->pictures.size(), 1u);
}

TEST_F(QtTextEngineTest, APictureKnowsItsStretchOfTheText) {
  const std::u16string text = u"a\U0001F3B5\U0001F3B5";
  const FontSpan spans[] = {{{.family = "", .size = 13}, 3}, {{.family = "", .size = 26}, 2}};
  const auto line = engine.shape(text, spans);
  ASSERT_EQ(line->pictures.size(), 2u);
  EXPECT_EQ(line->pictures[0].font, 0u);
  EXPECT_EQ(line->pictures[1].font, 1u);
  EXPECT_NEAR(line->pictures[1].place.size.width, 2 * line->pictures[0].place.size.width, 1);
}

TEST_F(QtTextEngineTest, PicturesOfALongLineAreWhereTheirClustersAre) {
  const std::u16string text = repeated(u"Salt \U0001F3B5 ", 200);
  const auto line = shape(text);
  ASSERT_EQ(line->pictures.size(), 200u);
  for (std::size_t i = 0; i < 200; ++i) {
    const TextCluster& cluster = line->clusters[i * 7 + 5];
    ASSERT_NEAR(CGRectGetMidX(line->pictures[i].place), (cluster.left + cluster.right) / 2, 1);
    ASSERT_EQ(line->pictures[i].pixels, line->pictures[0].pixels) << "made again";
  }
}

TEST_F(QtTextEngineTest, PicturesOfALongLineKnowTheirStretches) {
  const std::u16string text = repeated(u"Salt \U0001F3B5 ", 200);
  const FontSpan spans[] = {{{.family = "", .size = 13}, 8}, {{.family = "", .size = 14}, text.size() - 8}};
  const auto line = engine.shape(text, spans);
  ASSERT_EQ(line->pictures.size(), 200u);
  EXPECT_EQ(line->pictures.front().font, 0u);
  EXPECT_EQ(line->pictures[1].font, 1u);
  EXPECT_EQ(line->pictures.back().font, 1u);
}

}  // namespace tessaluna::backend::qt
