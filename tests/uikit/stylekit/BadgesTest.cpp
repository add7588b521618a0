#include <algorithm>
#include <array>

#include <gmock/gmock.h>

#include "tessaluna/platform/foundation/numberText.h"
#include "tessaluna/platform/graphics/NSColor.h"
#include "tessaluna/uikit/stylekit/Badges.h"
#include "tessaluna/uikit/stylekit/palette.h"
#include "tests/harness/printing.h"
#include "tests/harness/recordingOf.h"
#include "tests/uikit/stylekit/Outline.h"

namespace {

using namespace tessaluna::platform;
using harness::Lines;
using harness::only;
using harness::paintedBy;
using harness::recordingOf;
using harness::subpathsOf;
using harness::windingAt;
using testing::Each;
using testing::HasSubstr;
using testing::StartsWith;
using Kit = TessalunaUIKit::Badges;

std::string fillOf(const std::string& color) { return R"({"op":"setFillColor","color":)" + color + "}"; }

constexpr const char* black = "[0,0,0,1]";
constexpr const char* blue = "[0,0.498,1,1]";
constexpr const char* green = "[0.114,1,0,1]";
constexpr const char* ink = "[0.041,0.043,0.038,1]";
constexpr const char* ground = "[0.137,0.145,0.16,1]";
constexpr const char* paper = "[1,0.998,0.995,1]";
constexpr const char* gray = "[0.418,0.425,0.438,1]";

const auto small = [] { Kit::drawTidalLogoSmall(); };
const auto tall = [] { Kit::drawTidalLogoTall(); };
const auto wide = [] { Kit::drawTidalLogoWide(); };
const auto mqa = [] { Kit::drawMqaLogo(); };
const auto highRes = [] { Kit::drawHighResAudioLogo(); };

// The outlines that are given.

TEST(TidalLogoSmall, IsTheMarkOfFourDiamonds) {
  const auto painted = paintedBy([] { Kit::drawTidalLogoSmall({0, 0, 1, 1}); });
  EXPECT_EQ(harness::listingOf(painted.filled.at(0)),
            "M (0.80901, 0.81118), C (0.96386, 0.65633; 0.809, 0.81119; 0.96386, 0.65633), "
            "L (0.809, 0.50148), C (0.65433, 0.65614; 0.809, 0.50148; 0.66038, 0.6501), "
            "C (0.49969, 0.5015; 0.64833, 0.65014; 0.5018, 0.50361), "
            "C (0.65452, 0.34667; 0.50185, 0.49934; 0.65452, 0.34667), L (0.49967, 0.19181), "
            "L (0.34481, 0.34667), C (0.49964, 0.5015; 0.34481, 0.34667; 0.49749, 0.49934), "
            "C (0.35047, 0.65068; 0.49774, 0.50341; 0.37811, 0.62303), "
            "C (0.34483, 0.65631; 0.34707, 0.65407; 0.34507, 0.65608), "
            "C (0.19, 0.50148; 0.34268, 0.65415; 0.19, 0.50148), L (0.03514, 0.65633), "
            "L (0.19, 0.81119), C (0.34483, 0.65636; 0.19, 0.81119; 0.34268, 0.65851), "
            "C (0.49967, 0.81119; 0.34699, 0.65851; 0.49967, 0.81119), "
            "C (0.65433, 0.65652; 0.49967, 0.81119; 0.64829, 0.66257), "
            "C (0.809, 0.81119; 0.66038, 0.66257; 0.809, 0.81119), L (0.80901, 0.81118), Z");
  EXPECT_THAT(painted.lines.at(0), fillOf(black));
}

TEST(HighResAudioLogo, OutlinesTwoSquaresWithStraightCurves) {
  // Of the mark's own frame, whose corner and size are told by the ground.
  const auto painted = paintedBy(highRes);
  const CGRect frame = painted.filled.at(0).shape().rect;
  const auto listed = std::to_array<CGPoint>({{0.35819, 0.96937}, {0.35819, 0.87872}, {0.35819, 0.78806}, {0.35819, 0.6974},
                                              {0.42294, 0.6974},  {0.48769, 0.6974},  {0.55245, 0.6974},  {0.55245, 0.78806},
                                              {0.55245, 0.87872}, {0.55245, 0.96937}, {0.48769, 0.96937}, {0.42295, 0.96937},
                                              {0.35819, 0.96937}, {0.35819, 0.29936}, {0.35819, 0.2087},  {0.35819, 0.11805},
                                              {0.35819, 0.02739}, {0.42294, 0.02739}, {0.48769, 0.02739}, {0.55245, 0.02739},
                                              {0.55245, 0.11805}, {0.55245, 0.2087},  {0.55245, 0.29936}, {0.48769, 0.29936},
                                              {0.42295, 0.29936}, {0.35819, 0.29936}});
  const auto points = painted.stroked.at(0).points();
  ASSERT_EQ(points.size(), listed.size());
  for (std::size_t i = 0; i < listed.size(); ++i) {
    EXPECT_NEAR(points[i].x, frame.origin.x + frame.size.width * listed[i].x, 1e-9) << i;
    EXPECT_NEAR(points[i].y, frame.origin.y + frame.size.height * listed[i].y, 1e-9) << i;
  }
  EXPECT_THAT(only("stroke", painted.lines),
              testing::ElementsAre(HasSubstr(R"("lineWidth":1,"cap":"butt","join":"miter","miterLimit":4)")));
  EXPECT_THAT(only("setStrokeColor", painted.lines),
              testing::ElementsAre(R"({"op":"setStrokeColor","color":)" + std::string(paper) + "}"));
}

// The outlines that are drawn to fit.

struct Shape {
  const char* what;
  std::size_t fill;  // which fill of the routine
  int subpaths, holes, lines, curves;
  // Where it reaches on the canvas, met to a twentieth of a point; an edge that is free repeats what is
  // drawn.
  double left, right, bottom, top;
};

struct Badge {
  const char* name;
  void (*draw)();
  Lines fills;  // the colors of all fills, in painting order
  std::vector<Shape> shapes;
};

void PrintTo(const Badge& badge, std::ostream* out) { *out << badge.name; }

const Badge badges[] = {
    {"TidalLogoSmall", small, {black}, {{"mark", 0, 1, 0, 6, 12, 5.27, 144.58, 28.77, 121.68}}},
    {"TidalLogoTall",
     tall,
     {black, black},
     {{"word", 0, 7, 2, 35, 4, 31.5, 554.3, 62.4, 147.5}, {"mark", 1, 1, 0, 6, 12, 223.3, 362.6, 223.8, 316.7}}},
    {"TidalLogoWide",
     wide,
     {black, black, black},
     {{"line of small capitals", 0, 29, 3, 205, 56, 44.8, 799.7, 78.8, 110.8},
      {"word", 1, 7, 2, 35, 4, 274.3, 797.1, 179.4, 264.5},
      {"mark", 2, 3, 0, 10, 10, 44.8, 194.1, 177.4, 277}}},
    {"MqaLogo",
     mqa,
     {blue, ink, ink, ink, ink, ink},
     {{"emblem", 1, 7, 6, 12, 28, 0, 17.8, 0, 17.8},
      {"M", 2, 1, 0, 13, 13, 20.6, 30.8, 4.95, 12.85},
      {"Q", 4, 2, 1, 8, 8, 31.9, 40.1, 4.95, 12.85},
      {"A", 5, 2, 1, 12, 16, 41.6, 50.3, 4.95, 12.85}}},
    {"HighResAudioLogo",
     highRes,
     {ground, paper, gray, paper, paper, ground, paper},
     {{"tag", 3, 5, 0, 24, 24, 86.2, 106.7, 66.2, 70.7},
      {"AUDIO", 4, 8, 3, 23, 24, 114.7, 193, 127.3, 141.5},
      {"RES", 5, 4, 1, 22, 14, 75.1, 108, 127.3, 141.5},
      {"HIGH", 6, 4, 0, 30, 8, 8.4, 65.9, 127.3, 141.5}}},
};

class BadgeTest : public testing::TestWithParam<Badge> {};

TEST_P(BadgeTest, FillsInItsColorsAndOrder) {
  const auto painted = paintedBy(GetParam().draw);
  Lines expected;
  for (const std::string& color : GetParam().fills) expected.push_back(fillOf(color));
  EXPECT_EQ(only("setFillColor", painted.lines), expected);
  EXPECT_EQ(painted.filled.size(), expected.size());
}

TEST_P(BadgeTest, ShapesHaveTheirSubpathsSegmentsAndReach) {
  const auto painted = paintedBy(GetParam().draw);
  for (const Shape& shape : GetParam().shapes) {
    SCOPED_TRACE(shape.what);
    const tessaluna::backend::Path& path = painted.filled.at(shape.fill);
    int lines = 0, curves = 0;
    for (const auto& subpath : subpathsOf(path)) {
      EXPECT_TRUE(subpath.isClosed);
      lines += subpath.lines;
      curves += subpath.curves;
    }
    EXPECT_EQ(subpathsOf(path).size(), std::size_t(shape.subpaths));
    EXPECT_EQ(lines, shape.lines);
    EXPECT_EQ(curves, shape.curves);
    const CGRect box = path.bounds();
    EXPECT_NEAR(CGRectGetMinX(box), shape.left, 0.05);
    EXPECT_NEAR(CGRectGetMaxX(box), shape.right, 0.05);
    EXPECT_NEAR(CGRectGetMinY(box), shape.bottom, 0.05);
    EXPECT_NEAR(CGRectGetMaxY(box), shape.top, 0.05);
  }
}

TEST_P(BadgeTest, CountersAreWoundAgainstTheLettersAndOpen) {
  const auto painted = paintedBy(GetParam().draw);
  for (const Shape& shape : GetParam().shapes) {
    SCOPED_TRACE(shape.what);
    const tessaluna::backend::Path& path = painted.filled.at(shape.fill);
    const auto subpaths = subpathsOf(path);
    // The letter or disc that reaches lowest is an outline.
    const auto outline = std::min_element(subpaths.begin(), subpaths.end(), [](const auto& a, const auto& b) {
      return CGRectGetMinY(a.path.bounds()) < CGRectGetMinY(b.path.bounds());
    });
    int holes = 0;
    for (const auto& subpath : subpaths) {
      if ((subpath.area > 0) == (outline->area > 0)) continue;
      ++holes;
      const CGRect box = subpath.path.bounds();
      const CGPoint middle{CGRectGetMidX(box), CGRectGetMidY(box)};
      EXPECT_EQ(windingAt(path, middle), 0) << testing::PrintToString(middle);
      const CGPoint ring{middle.x, CGRectGetMinY(box) - 0.03 * box.size.height};
      EXPECT_NE(windingAt(path, ring), 0) << testing::PrintToString(ring);
    }
    EXPECT_EQ(holes, shape.holes);
  }
}

TEST_P(BadgeTest, UsesNoGradientShadowClipOrLayer) {
  for (const std::string& line : recordingOf(GetParam().draw))
    EXPECT_THAT(line, testing::AnyOf(StartsWith(R"({"op":"setFillColor",)"), StartsWith(R"({"op":"fill",)"),
                                     StartsWith(R"({"op":"setStrokeColor",)"), StartsWith(R"({"op":"stroke",)")));
}

INSTANTIATE_TEST_SUITE_P(All, BadgeTest, testing::ValuesIn(badges),
                         [](const auto& info) { return std::string(info.param.name); });

TEST(Badges, SegmentsOfARoutineAddUp) {
  const auto sum = [](void (*draw)()) {
    const auto painted = paintedBy(draw);
    std::vector<int> counts(3);
    const auto add = [&](const tessaluna::backend::Path& path) {
      if (path.shape().kind != tessaluna::backend::PathShape::Kind::None) return;
      for (const auto& subpath : subpathsOf(path)) {
        ++counts[0];
        counts[1] += subpath.lines;
        counts[2] += subpath.curves;
      }
    };
    for (const auto& path : painted.filled) add(path);
    for (const auto& path : painted.stroked) add(path);
    return counts;
  };
  EXPECT_EQ(sum(mqa), (std::vector{12, 45, 65}));
  EXPECT_EQ(sum(highRes), (std::vector{23, 99, 78}));
  EXPECT_EQ(sum(wide), (std::vector{39, 250, 70}));
  EXPECT_EQ(sum(tall), (std::vector{8, 41, 16}));
  EXPECT_EQ(sum(small), (std::vector{1, 6, 12}));
}

TEST(TidalLogoTall, HasTheSmallMarkAtTheSameSizeInPoints) {
  const auto smallMark = paintedBy(small).filled.at(0), tallMark = paintedBy(tall).filled.at(1);
  ASSERT_TRUE(std::ranges::equal(smallMark.verbs(), tallMark.verbs()));
  const CGPoint first = smallMark.points()[0], moved = tallMark.points()[0];
  for (std::size_t i = 0; i < smallMark.points().size(); ++i) {
    EXPECT_NEAR(tallMark.points()[i].x - moved.x, smallMark.points()[i].x - first.x, 0.01) << i;
    EXPECT_NEAR(tallMark.points()[i].y - moved.y, smallMark.points()[i].y - first.y, 0.01) << i;
  }
}

TEST(TidalLogoWide, HasAMarkOfItsOwn) {
  EXPECT_EQ(subpathsOf(paintedBy(wide).filled.at(2)).size(), 3u);
  EXPECT_EQ(subpathsOf(paintedBy(tall).filled.at(1)).size(), 1u);
}

TEST(TidalLogos, AFrameOfAnotherProportionDistortsThem) {
  const struct {
    void (*draw)(CGRect);
    CGSize canvas;
  } logos[] = {{Kit::drawTidalLogoWideWithFrame, {835, 332}},
               {Kit::drawTidalLogoTallWithFrame, {586, 354}},
               {Kit::drawTidalLogoSmallWithFrame, {150, 150}}};
  for (const auto& logo : logos) {
    const auto designed = paintedBy([&] { logo.draw({{0, 0}, logo.canvas}); });
    const auto drawn = paintedBy([&] { logo.draw({30, -40, 2 * logo.canvas.width, logo.canvas.height / 2}); });
    ASSERT_EQ(drawn.filled.size(), designed.filled.size());
    for (std::size_t i = 0; i < drawn.filled.size(); ++i) {
      const CGPoint from = designed.filled[i].points()[0], to = drawn.filled[i].points()[0];
      EXPECT_NEAR(to.x, 30 + 2 * from.x, 1e-9);
      EXPECT_NEAR(to.y, -40 + from.y / 2, 1e-9);
      const CGRect before = designed.filled[i].bounds(), after = drawn.filled[i].bounds();
      EXPECT_NEAR(after.size.width, 2 * before.size.width, 1e-9);
      EXPECT_NEAR(after.size.height, before.size.height / 2, 1e-9);
    }
  }
}

TEST(TidalLogos, AFrameWithoutSizePutsAllPointsOnItsCorner) {
  const auto painted = paintedBy([] { Kit::drawTidalLogoWide({7, 9, 0, 0}); });
  for (const auto& path : painted.filled)
    for (const CGPoint point : path.points()) EXPECT_EQ(point, (CGPoint{7, 9}));
}

TEST(MqaLogo, EnabledChangesTheColorOfTheDotAndNothingElse) {
  Lines enabled = recordingOf([] { Kit::drawMqaLogo({0, 0, 65, 18}, true); });
  const Lines disabled = recordingOf([] { Kit::drawMqaLogo({0, 0, 65, 18}, false); });
  EXPECT_EQ(enabled.at(0), fillOf(blue));
  EXPECT_EQ(disabled.at(0), fillOf(green));
  enabled[0] = disabled[0];
  EXPECT_EQ(enabled, disabled);
}

TEST(MqaLogo, TheDotIsNotACircle) {
  const auto shape = paintedBy(mqa).filled.at(0).shape();
  EXPECT_EQ(shape.kind, tessaluna::backend::PathShape::Kind::Oval);
  EXPECT_EQ(shape.rect, (CGRect{55, 5, 8, 7}));
}

TEST(MqaLogo, TheTailOfTheQIsARoundBarOnTheFeetOfTheLetters) {
  const auto shape = paintedBy(mqa).filled.at(3).shape();
  EXPECT_EQ(shape.kind, tessaluna::backend::PathShape::Kind::RoundedRect);
  EXPECT_EQ(shape.radii, (CGSize{0.75, 0.75}));
  EXPECT_NEAR(CGRectGetMinX(shape.rect), 34.95, 1e-9);
  EXPECT_NEAR(CGRectGetMinY(shape.rect), 4.95, 1e-9);
  EXPECT_NEAR(shape.rect.size.width, 5.9, 1e-9);
  EXPECT_NEAR(shape.rect.size.height, 1.5, 1e-9);
}

TEST(MqaLogo, TheSealsCircleComesLastAndTheCountersFirst) {
  const auto painted = paintedBy(mqa);
  const auto seal = subpathsOf(painted.filled.at(1));
  EXPECT_NEAR(seal.back().path.bounds().size.width, 17.8, 0.01);
  for (std::size_t i = 0; i + 1 < seal.size(); ++i) EXPECT_LT(seal[i].path.bounds().size.width, 2);
  for (const std::size_t letter : {4, 5}) {
    const auto subpaths = subpathsOf(painted.filled.at(letter));
    EXPECT_LT(subpaths.front().path.bounds().size.width, subpaths.back().path.bounds().size.width);
  }
}

TEST(MqaLogo, SnapsToWholePointsOfAnyFrame) {
  // 100 by 30: floor(77.416 + 0.18) + 0.32 and floor(29.6799 - 0.31) + 0.81.
  const auto painted = paintedBy([] { Kit::drawMqaLogo({10, 20, 100, 30}); });
  EXPECT_EQ(painted.filled.at(0).shape().rect, (CGRect{95, 28, 12, 12}));
  const CGRect seal = painted.filled.at(1).bounds();
  EXPECT_NEAR(CGRectGetMaxX(seal) - 10, 17.8 / 50.32 * 77.32, 0.001);
  EXPECT_NEAR(CGRectGetMaxY(seal) - 20, 17.8 / 17.81 * 29.81, 0.001);
}

TEST(HighResAudioLogo, GroundAndSquaresSitOnTheirSnappedEdges) {
  const auto painted = paintedBy(highRes);
  const CGRect expected[] = {{0.47, 58.48, 199.45, 141.75}, {71.07, 109.33, 40.55, 39.55}, {71.57, 157.33, 39.55, 38.55}};
  for (std::size_t i = 0; i < 3; ++i) {
    SCOPED_TRACE(i);
    const auto shape = painted.filled.at(i).shape();
    EXPECT_EQ(shape.kind, tessaluna::backend::PathShape::Kind::Rect);
    EXPECT_NEAR(shape.rect.origin.x, expected[i].origin.x, 1e-9);
    EXPECT_NEAR(shape.rect.origin.y, expected[i].origin.y, 1e-9);
    EXPECT_NEAR(shape.rect.size.width, expected[i].size.width, 1e-9);
    EXPECT_NEAR(shape.rect.size.height, expected[i].size.height, 1e-9);
  }
}

TEST(HighResAudioLogo, LeavesTheLowestPointsUnpaintedAndPassesTheTop) {
  const auto painted = paintedBy(highRes);
  for (const auto& path : painted.filled) EXPECT_GE(CGRectGetMinY(path.bounds()), 58.48 - 1e-9);
  for (const auto& path : painted.stroked) EXPECT_GE(CGRectGetMinY(path.bounds()) - 0.5, 58.48);
  EXPECT_NEAR(CGRectGetMaxY(painted.filled.at(0).bounds()), 200.23, 1e-9);
}

TEST(HighResAudioLogo, DoesNotUseThePublicColorOfItsName) {
  const auto level = numberText(TessalunaUIKit::Palette::highResAudioColor()->redComponent());
  EXPECT_THAT(only("setFillColor", recordingOf(highRes)), Each(testing::Not(HasSubstr(level))));
}

TEST(Badges, WithoutArgumentsPaintInTheFrameThatTheyWereDesignedIn) {
  EXPECT_EQ(recordingOf(mqa), recordingOf([] { Kit::drawMqaLogoWithButtonFrame({0, 0, 65, 18}, true); }));
  EXPECT_EQ(recordingOf(highRes), recordingOf([] { Kit::drawHighResAudioLogoWithFrame({0, 0, 200, 200}); }));
  EXPECT_EQ(recordingOf(wide), recordingOf([] { Kit::drawTidalLogoWideWithFrame({0, 0, 835, 332}); }));
  EXPECT_EQ(recordingOf(tall), recordingOf([] { Kit::drawTidalLogoTallWithFrame({0, 0, 586, 354}); }));
  EXPECT_EQ(recordingOf(small), recordingOf([] { Kit::drawTidalLogoSmallWithFrame({0, 0, 150, 150}); }));
}

}  // namespace
