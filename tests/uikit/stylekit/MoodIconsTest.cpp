#include <algorithm>
#include <cmath>

#include <gmock/gmock.h>

#include "tessaluna/uikit/stylekit/MoodIcons.h"
#include "tests/harness/pixelsOf.h"
#include "tests/harness/printing.h"
#include "tests/harness/recordingOf.h"
#include "tests/uikit/stylekit/Outline.h"

namespace {

using namespace tessaluna::platform;
using harness::Lines;
using harness::paintedBy;
using harness::recordingOf;
using harness::subpathsOf;
using harness::windingAt;
using testing::StartsWith;
using Kit = TessalunaUIKit::MoodIcons;

constexpr CGRect canvas{0, 0, 200, 200};
constexpr const char* black = R"({"op":"setFillColor","color":[0,0,0,1]})";
constexpr const char* white = R"({"op":"setFillColor","color":[1,1,1,1]})";

struct Icon {
  const char* name;
  void (*draw)(CGRect, bool);
  void (*drawByDefault)();
  int subpaths, lines, curves;
  double left, right, bottom, top;  // met to a hundredth of a point
};

void PrintTo(const Icon& icon, std::ostream* out) { *out << icon.name; }

const Icon icons[] = {
    {"Relax", Kit::drawMoodRelaxWithFrame, [] { Kit::drawMoodRelax(); }, 12, 47, 180, 13, 188, 13, 188},
    {"Party", Kit::drawMoodPartyWithFrame, [] { Kit::drawMoodParty(); }, 5, 41, 48, 42, 158, 13, 188},
    {"Workout", Kit::drawMoodWorkoutWithFrame, [] { Kit::drawMoodWorkout(); }, 8, 30, 220, 13, 188, 33, 165},
    {"Love", Kit::drawMoodLoveWithFrame, [] { Kit::drawMoodLove(); }, 3, 10, 60, 13, 188, 19, 182},
    {"Focus", Kit::drawMoodFocusWithFrame, [] { Kit::drawMoodFocus(); }, 9, 45, 144, 42, 158, 13, 188},
    {"Dinner", Kit::drawMoodDinnerWithFrame, [] { Kit::drawMoodDinner(); }, 10, 36, 234, 13, 188, 40, 160},
    {"Celebrities", Kit::drawMoodCelebritiesWithFrame, [] { Kit::drawMoodCelebrities(); }, 8, 36, 104, 23, 177, 13, 188},
    {"Media", Kit::drawMoodMediaWithFrame, [] { Kit::drawMoodMedia(); }, 21, 46, 200, 13, 188, 38, 162},
    {"Seasonal", Kit::drawMoodSeasonalWithFrame, [] { Kit::drawMoodSeasonal(); }, 20, 40, 200, 13, 188, 13, 188},
    {"History", Kit::drawMoodHistoryWithFrame, [] { Kit::drawMoodHistory(); }, 23, 38, 256, 13, 188, 39, 161},
    {"Charts", Kit::drawMoodChartsWithFrame, [] { Kit::drawMoodCharts(); }, 7, 46, 228, 13, 188, 13, 188},
    {"Events", Kit::drawMoodEventsWithFrame, [] { Kit::drawMoodEvents(); }, 4, 6, 128, 13, 188, 44, 157},
};

class MoodIcon : public testing::TestWithParam<Icon> {
 protected:
  static tessaluna::backend::Path drawn(CGRect frame = canvas) {
    return paintedBy([&] { GetParam().draw(frame, false); }).filled.at(0);
  }
};

TEST_P(MoodIcon, IsOnePathWithItsSubpathsAndSegments) {
  int lines = 0, curves = 0;
  const auto subpaths = subpathsOf(drawn());
  for (const auto& subpath : subpaths) {
    EXPECT_TRUE(subpath.isClosed);
    lines += subpath.lines;
    curves += subpath.curves;
  }
  EXPECT_EQ(subpaths.size(), std::size_t(GetParam().subpaths));
  EXPECT_EQ(lines, GetParam().lines);
  EXPECT_EQ(curves, GetParam().curves);
}

TEST_P(MoodIcon, FillsItsPartOfTheSquare) {
  const CGRect box = drawn().bounds();
  EXPECT_NEAR(CGRectGetMinX(box), GetParam().left, 0.01);
  EXPECT_NEAR(CGRectGetMaxX(box), GetParam().right, 0.01);
  EXPECT_NEAR(CGRectGetMinY(box), GetParam().bottom, 0.01);
  EXPECT_NEAR(CGRectGetMaxY(box), GetParam().top, 0.01);
}

// A thousandth of the canvas beside the middle of the first segment of a subpath, to the left of its
// direction or to the right.
CGPoint beside(const tessaluna::backend::Path& subpath, double toTheLeft) {
  const auto points = subpath.points();
  const bool isCurve = subpath.verbs()[1] == tessaluna::backend::PathVerb::Curve;
  const CGPoint a = points[0], b = isCurve ? points[1] : a, c = isCurve ? points[2] : points[1], d = isCurve ? points[3] : c;
  const CGPoint middle{(a.x + 3 * b.x + 3 * c.x + d.x) / 8, (a.y + 3 * b.y + 3 * c.y + d.y) / 8};
  const CGPoint along{d.x + c.x - a.x - b.x, d.y + c.y - a.y - b.y};
  const double length = std::hypot(along.x, along.y);
  return {middle.x - along.y / length * toTheLeft, middle.y + along.x / length * toTheLeft};
}

TEST_P(MoodIcon, RingsArePaintedAndWhatTheyEncloseIsOpen) {
  const tessaluna::backend::Path path = drawn();
  const auto subpaths = subpathsOf(path);
  const auto outer = std::max_element(subpaths.begin(), subpaths.end(),
                                      [](const auto& a, const auto& b) { return std::abs(a.area) < std::abs(b.area); });
  const double paintSide = outer->area > 0 ? 0.2 : -0.2;
  for (std::size_t i = 0; i < subpaths.size(); ++i) {
    SCOPED_TRACE(i);
    // Paint lies on one side of all outlines, the left where the outermost one runs counterclockwise.
    EXPECT_NE(windingAt(path, beside(subpaths[i].path, paintSide)), 0);
    EXPECT_EQ(windingAt(path, beside(subpaths[i].path, -paintSide)), 0);
  }
}

TEST_P(MoodIcon, IsBlackOrWhiteAndOtherwiseTheSame) {
  const Lines plain = recordingOf([] { GetParam().draw(canvas, false); });
  const Lines onDark = recordingOf([] { GetParam().draw(canvas, true); });
  ASSERT_EQ(plain.size(), 2u);
  ASSERT_EQ(onDark.size(), 2u);
  EXPECT_EQ(plain[0], black);
  EXPECT_EQ(onDark[0], white);
  EXPECT_THAT(plain[1], StartsWith(R"({"op":"fill",)"));
  EXPECT_EQ(plain[1], onDark[1]);
}

TEST_P(MoodIcon, InWhiteOnAWhiteGroundItShowsNothing) {
  const auto nothing = harness::pixelsOnWhite({200, 200}, [] {});
  EXPECT_TRUE(harness::arePixelsEqual(harness::pixelsOnWhite({200, 200}, [] { GetParam().draw(canvas, true); }), nothing));
  EXPECT_FALSE(harness::arePixelsEqual(harness::pixelsOnWhite({200, 200}, [] { GetParam().draw(canvas, false); }), nothing));
}

TEST_P(MoodIcon, WithoutArgumentsIsBlackInTheFrameThatItWasDesignedIn) {
  EXPECT_EQ(recordingOf(GetParam().drawByDefault), recordingOf([] { GetParam().draw(canvas, false); }));
}

TEST_P(MoodIcon, StretchesToTheShapeOfItsFrame) {
  const auto designed = drawn(), stretched = drawn({10, -20, 400, 100});
  ASSERT_EQ(designed.points().size(), stretched.points().size());
  for (std::size_t i = 0; i < designed.points().size(); ++i) {
    EXPECT_NEAR(stretched.points()[i].x, 10 + 2 * designed.points()[i].x, 1e-9);
    EXPECT_NEAR(stretched.points()[i].y, -20 + designed.points()[i].y / 2, 1e-9);
  }
}

INSTANTIATE_TEST_SUITE_P(All, MoodIcon, testing::ValuesIn(icons),
                         [](const auto& info) { return std::string(info.param.name); });

TEST(MoodLove, IsTheHeartAsItIsGiven) {
  EXPECT_EQ(harness::listingOf(paintedBy([] {
                                 Kit::drawMoodLove({0, 0, 1, 1});
                               }).filled.at(0)),
            "M (0.68326, 0.88345), C (0.72911, 0.87814; 0.69898, 0.88345; 0.71426, 0.88168), "
            "C (0.77234, 0.86487; 0.74395, 0.8746; 0.75836, 0.87018), "
            "C (0.81163, 0.84363; 0.78631, 0.85956; 0.79941, 0.85248), "
            "C (0.84831, 0.81443; 0.82386, 0.83478; 0.83608, 0.82505), "
            "C (0.89808, 0.73744; 0.87101, 0.79142; 0.8876, 0.76576), "
            "C (0.9138, 0.64984; 0.90856, 0.70913; 0.9138, 0.67992), "
            "C (0.89808, 0.5609; 0.9138, 0.61975; 0.90856, 0.59011), "
            "C (0.84831, 0.48259; 0.8876, 0.5317; 0.87101, 0.5056), L (0.5025, 0.13217), "
            "L (0.15669, 0.48259), C (0.10692, 0.5609; 0.13399, 0.5056; 0.1174, 0.5317), "
            "C (0.0912, 0.64984; 0.09644, 0.59011; 0.0912, 0.61975), "
            "C (0.10692, 0.73744; 0.0912, 0.67992; 0.09644, 0.70913), "
            "C (0.15669, 0.81443; 0.1174, 0.76576; 0.13399, 0.79142), "
            "C (0.19337, 0.84363; 0.16892, 0.82505; 0.18114, 0.83478), "
            "C (0.23266, 0.86487; 0.20559, 0.85248; 0.21869, 0.85956), "
            "C (0.27589, 0.87814; 0.24664, 0.87018; 0.26105, 0.8746), "
            "C (0.32174, 0.88345; 0.29074, 0.88168; 0.30602, 0.88345), "
            "C (0.36758, 0.87814; 0.33746, 0.88345; 0.35274, 0.88168), "
            "C (0.4095, 0.86487; 0.38243, 0.8746; 0.3964, 0.87018), "
            "C (0.44879, 0.84363; 0.4226, 0.85956; 0.4357, 0.85248), "
            "C (0.48416, 0.81443; 0.46189, 0.83478; 0.47368, 0.82505), L (0.5025, 0.79585), "
            "L (0.52084, 0.81443), C (0.55621, 0.84363; 0.53132, 0.82505; 0.54311, 0.83478), "
            "C (0.5955, 0.86487; 0.5693, 0.85248; 0.5824, 0.85956), "
            "C (0.63742, 0.87814; 0.6086, 0.87018; 0.62257, 0.8746), "
            "C (0.68326, 0.88345; 0.65226, 0.88168; 0.66754, 0.88345), Z, M (0.68326, 0.91), "
            "C (0.6348, 0.90469; 0.66754, 0.91; 0.65139, 0.90823), "
            "C (0.58764, 0.89009; 0.61821, 0.90115; 0.60249, 0.89628), "
            "C (0.54311, 0.8662; 0.5728, 0.8839; 0.55795, 0.87593), "
            "C (0.5025, 0.83301; 0.52826, 0.85646; 0.51473, 0.8454), "
            "C (0.46189, 0.8662; 0.49027, 0.8454; 0.47674, 0.85646), "
            "C (0.41736, 0.89009; 0.44705, 0.87593; 0.4322, 0.8839), "
            "C (0.3702, 0.90469; 0.40251, 0.89628; 0.38679, 0.90115), "
            "C (0.32174, 0.91; 0.35361, 0.90823; 0.33746, 0.91), "
            "C (0.27196, 0.90469; 0.30427, 0.91; 0.28768, 0.90823), "
            "C (0.22481, 0.89009; 0.25624, 0.90115; 0.24052, 0.89628), "
            "C (0.18027, 0.8662; 0.20909, 0.8839; 0.19424, 0.87593), "
            "C (0.13835, 0.83301; 0.1663, 0.85646; 0.15233, 0.8454), "
            "C (0.08334, 0.74673; 0.1139, 0.80824; 0.09556, 0.77948), "
            "C (0.065, 0.64851; 0.07111, 0.71399; 0.065, 0.68125), "
            "C (0.08334, 0.55161; 0.065, 0.61577; 0.07111, 0.58347), "
            "C (0.13835, 0.46401; 0.09556, 0.51976; 0.1139, 0.49055), L (0.5025, 0.095), "
            "L (0.86665, 0.46401), C (0.92166, 0.55161; 0.8911, 0.49055; 0.90944, 0.51976), "
            "C (0.94, 0.64851; 0.93389, 0.58347; 0.94, 0.61577), "
            "C (0.92166, 0.74673; 0.94, 0.68125; 0.93389, 0.71399), "
            "C (0.86665, 0.83301; 0.90944, 0.77948; 0.8911, 0.80824), "
            "C (0.82473, 0.8662; 0.85267, 0.8454; 0.8387, 0.85646), "
            "C (0.78019, 0.89009; 0.81076, 0.87593; 0.79591, 0.8839), "
            "C (0.73304, 0.90469; 0.76448, 0.89628; 0.74876, 0.90115), "
            "C (0.68326, 0.91; 0.71732, 0.90823; 0.70073, 0.91), Z, M (0.83521, 0.50117), "
            "C (0.86141, 0.53436; 0.84569, 0.51179; 0.85442, 0.52285), "
            "C (0.87975, 0.57152; 0.86839, 0.54586; 0.87451, 0.55825), "
            "C (0.89153, 0.61134; 0.88499, 0.5848; 0.88891, 0.59807), "
            "C (0.89546, 0.65249; 0.89415, 0.62462; 0.89546, 0.63833), "
            "C (0.89022, 0.69497; 0.89546, 0.66665; 0.89372, 0.68081), "
            "C (0.87713, 0.73479; 0.88673, 0.70913; 0.88237, 0.7224), "
            "C (0.85748, 0.77195; 0.87189, 0.74718; 0.86534, 0.75957), "
            "C (0.82997, 0.80647; 0.84962, 0.78434; 0.84045, 0.79585), L (0.81949, 0.79585), "
            "C (0.86665, 0.72815; 0.84045, 0.77638; 0.85617, 0.75381), "
            "C (0.88237, 0.65116; 0.87713, 0.70249; 0.88237, 0.67683), "
            "C (0.86796, 0.57683; 0.88237, 0.6255; 0.87756, 0.60072), "
            "C (0.82473, 0.50914; 0.85835, 0.55294; 0.84394, 0.53037), L (0.49726, 0.18261), "
            "L (0.50774, 0.17199), L (0.83521, 0.50117), Z");
}

TEST(MoodLove, TheInnerOutlineRunsAgainstTheOuterOne) {
  const auto subpaths = subpathsOf(paintedBy([] { Kit::drawMoodLove(); }).filled.at(0));
  ASSERT_EQ(subpaths.size(), 3u);
  EXPECT_LT(subpaths[0].area * subpaths[1].area, 0);
  EXPECT_GT(subpaths[1].area * subpaths[2].area, 0);
}

}  // namespace
