#include <gmock/gmock.h>

#include "tessaluna/uikit/stylekit/BrowseIcons.h"
#include "tests/harness/pixelsOf.h"
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
using testing::EndsWith;
using testing::HasSubstr;
using Kit = TessalunaUIKit::BrowseIcons;

constexpr CGRect unitFrame{0, 0, 1, 1};
constexpr const char* madeBlack = R"(,"color":[0,0,0,1]})";
constexpr const char* namedBlack = R"("named":"blackColor"})";

std::string listingOfFill(void (*draw)(CGRect), CGRect frame = unitFrame) {
  return harness::listingOf(paintedBy([&] { draw(frame); }).filled.at(0));
}
std::string listingOfStroke(void (*draw)(CGRect)) {
  return harness::listingOf(paintedBy([&] { draw(unitFrame); }).stroked.at(0));
}

// Outlines whose points are given.

TEST(BrowseIconNew, IsAHouseWithADoor) {
  EXPECT_EQ(listingOfFill(Kit::drawTidalIconNewWithFrame),
            "M (0.5, 0.93146), L (0.88581, 0.61078), L (0.88581, 0.11263), L (0.66516, 0.11263), "
            "L (0.66516, 0.47859), L (0.33484, 0.47859), L (0.33484, 0.11263), L (0.11419, 0.11263), "
            "L (0.11419, 0.61078), L (0.5, 0.93146), Z, "
            "M (0.5, 1), L (0.06, 0.63526), L (0.06, 0.06), L (0.39032, 0.06), L (0.39032, 0.42596), "
            "L (0.60968, 0.42596), L (0.60968, 0.06), L (0.94, 0.06), L (0.94, 0.63526), L (0.5, 1), Z");
}

TEST(BrowseIconNew, DoublesInAFrameOfAHundredPoints) {
  const auto small = paintedBy([] { Kit::drawTidalIconNew(); }).filled.at(0);
  const auto large = paintedBy([] { Kit::drawTidalIconNew({0, 0, 100, 100}); }).filled.at(0);
  ASSERT_EQ(small.points().size(), large.points().size());
  for (std::size_t i = 0; i < small.points().size(); ++i) {
    EXPECT_DOUBLE_EQ(large.points()[i].x, 2 * small.points()[i].x);
    EXPECT_DOUBLE_EQ(large.points()[i].y, 2 * small.points()[i].y);
  }
}

TEST(BrowseIconMyMusic, IsAStarThatHangsFromTheUpperLeftCorner) {
  // In a frame with its upper left corner at the origin the points are the distances from that corner,
  // downward negative.
  EXPECT_EQ(listingOfFill(Kit::drawTidalIconMyMusicWithFrame, {0, 0, 50, 0}),
            "M (25.5, -1), L (19.73, -18.97), L (1, -18.97), L (16.14, -30.03), L (10.36, -48), "
            "L (25.5, -36.89), L (40.64, -48), L (34.86, -30.03), L (50, -18.97), L (31.27, -18.97), "
            "L (25.5, -1), Z");
}

TEST(BrowseIconMyMusic, KeepsItsSizeInAFrameOfAHundredPoints) {
  const CGRect box = paintedBy([] { Kit::drawTidalIconMyMusic({0, 0, 100, 100}); }).filled.at(0).bounds();
  EXPECT_EQ(CGRectGetMaxY(box), 99);
  EXPECT_EQ(box, (CGRect{1, 52, 49, 47}));
}

TEST(BrowseIconMyMusic, PaintsPastTheRightAndLowerEdgesOfASmallFrame) {
  const auto painted = paintedBy([] { Kit::drawTidalIconMyMusic({0, 0, 25, 25}); });
  EXPECT_EQ(painted.filled.at(0).bounds(), (CGRect{1, -23, 49, 47}));
  EXPECT_TRUE(only("clipRect", painted.lines).empty());
  EXPECT_TRUE(only("clipPath", painted.lines).empty());
}

TEST(BrowseIconRising, IsTheLetterRInAHexagon) {
  EXPECT_EQ(listingOfStroke(Kit::drawTidalIconRisingWithFrame),
            "M (0.51, 0.97), L (0.91703, 0.735), L (0.91703, 0.265), L (0.51, 0.03), L (0.10297, 0.265), "
            "L (0.10297, 0.735), Z");
  EXPECT_EQ(listingOfFill(Kit::drawTidalIconRisingWithFrame),
            "M (0.62647, 0.59915), C (0.59623, 0.65938; 0.62647, 0.62706; 0.61639, 0.64714), "
            "C (0.51179, 0.67774; 0.57606, 0.67162; 0.54792, 0.67774), L (0.40339, 0.67774), "
            "L (0.40339, 0.51469), L (0.51414, 0.51469), "
            "C (0.59858, 0.53709; 0.55185, 0.51469; 0.57999, 0.52216), "
            "C (0.62647, 0.59915; 0.61717, 0.55202; 0.62647, 0.57271), Z, "
            "M (0.63432, 0.24), L (0.5, 0.43904), L (0.40417, 0.43904), L (0.40417, 0.24), "
            "L (0.30049, 0.24), L (0.30049, 0.76), L (0.52907, 0.76), "
            "C (0.6787, 0.71814; 0.594, 0.76; 0.64388, 0.74605), "
            "C (0.73094, 0.60282; 0.71353, 0.69023; 0.73094, 0.65179), "
            "C (0.72033, 0.54627; 0.73094, 0.58177; 0.7274, 0.56292), "
            "C (0.69245, 0.50257; 0.71326, 0.52962; 0.70397, 0.51506), "
            "C (0.65317, 0.47172; 0.68093, 0.49008; 0.66784, 0.4798), "
            "C (0.60762, 0.45446; 0.63851, 0.46364; 0.62333, 0.45789), L (0.76, 0.24), L (0.63432, 0.24), Z");
}

TEST(BrowseIconDiscovery, IsTheLetterDInAHexagon) {
  EXPECT_EQ(listingOfStroke(Kit::drawTidalIconDiscoveryWithFrame),
            "M (0.5, 0.97), L (0.90703, 0.735), L (0.90703, 0.265), L (0.5, 0.03), L (0.09297, 0.265), "
            "L (0.09297, 0.735), Z");
  EXPECT_EQ(listingOfFill(Kit::drawTidalIconDiscoveryWithFrame),
            "M (0.76, 0.50073), C (0.7356, 0.38432; 0.76, 0.45569; 0.75187, 0.41688), "
            "C (0.67137, 0.30316; 0.71933, 0.35176; 0.69793, 0.32471), "
            "C (0.58167, 0.25542; 0.64482, 0.28162; 0.61492, 0.26571), "
            "C (0.48156, 0.24; 0.54842, 0.24514; 0.51505, 0.24), L (0.3, 0.24), L (0.3, 0.76), "
            "L (0.47797, 0.76), C (0.58023, 0.74605; 0.51242, 0.76; 0.54651, 0.75535), "
            "C (0.67066, 0.70088; 0.61396, 0.73674; 0.6441, 0.72169), "
            "C (0.73524, 0.62045; 0.69721, 0.68007; 0.71874, 0.65326), "
            "C (0.76, 0.50073; 0.75175, 0.58765; 0.76, 0.54774), Z, "
            "M (0.39401, 0.67554), L (0.39401, 0.3252), L (0.46864, 0.3252), "
            "C (0.54543, 0.33658; 0.49639, 0.3252; 0.52199, 0.32899), "
            "C (0.60607, 0.37037; 0.56887, 0.34417; 0.58908, 0.35543), "
            "C (0.64554, 0.42545; 0.62305, 0.3853; 0.63621, 0.40366), "
            "C (0.65953, 0.50073; 0.65487, 0.44724; 0.65953, 0.47234), "
            "C (0.64554, 0.57602; 0.65953, 0.52913; 0.65487, 0.55423), "
            "C (0.60643, 0.63073; 0.63621, 0.59781; 0.62317, 0.61605), "
            "C (0.54651, 0.66415; 0.58968, 0.64542; 0.56971, 0.65656), "
            "C (0.4708, 0.67554; 0.5233, 0.67174; 0.49807, 0.67554), L (0.39401, 0.67554), Z");
}

TEST(BrowseIconRising, StrokesInMadeBlackAndFillsInNamedBlack) {
  for (const auto draw : {Kit::drawTidalIconRisingWithFrame, Kit::drawTidalIconDiscoveryWithFrame}) {
    const Lines lines = recordingOf([&] { draw({0, 0, 50, 50}); });
    ASSERT_EQ(lines.size(), 4u);
    EXPECT_EQ(lines[0], R"({"op":"setStrokeColor","color":[0,0,0,1]})");
    EXPECT_THAT(lines[1], HasSubstr(R"({"op":"stroke",)"));
    EXPECT_THAT(lines[2], EndsWith(namedBlack));
    EXPECT_THAT(lines[3], HasSubstr(R"({"op":"fill",)"));
  }
}

TEST(BrowseIconRising, KeepsItsLineWidthInAFrameOfAHundredPoints) {
  const Lines lines = recordingOf([] { Kit::drawTidalIconRising({0, 0, 100, 100}); });
  EXPECT_THAT(lines.at(1), HasSubstr(R"(["M",51,97])"));
  EXPECT_THAT(lines.at(1), HasSubstr(R"("lineWidth":3,"cap":"butt","join":"miter")"));
}

TEST(BrowseIconPlaylist, SheetAndFoldAreThoseOfTheDesign) {
  const std::string listing = listingOfFill(Kit::drawTidalIconPlaylistWithFrame);
  EXPECT_THAT(listing,
              testing::StartsWith("M (0.59961, 0.94), L (0.2, 0.94), L (0.2, 0.06), L (0.8, 0.06), L (0.8, 0.71968), "
                                  "L (0.59961, 0.94), Z, "
                                  "M (0.72969, 0.71968), L (0.59961, 0.71968), L (0.59961, 0.86269), L (0.72969, 0.71968), Z"
                                  ", M"));
}

// Outlines that are drawn to fit: kind, segments and reach of each subpath, and where there is paint.

enum class Role { Outline, Hole };

struct Part {
  const char* what;
  Role role;
  double left, right, bottom, top;  // on the canvas, in tenths of a point
  int lines;
};

struct Icon {
  const char* name;
  void (*draw)(CGRect);
  double canvas;
  int lines, curves;
  std::vector<Part> parts;
  std::vector<CGPoint> paint, ground;
};

const Icon drawnIcons[] = {
    {.name = "Genres",
     .draw = Kit::drawTidalIconGenresWithFrame,
     .canvas = 50,
     .lines = 2,
     .curves = 110,
     .parts = {{"hole of the label", Role::Hole, 22.2, 27.8, 19.4, 25, 0},
               {"label", Role::Outline, 19.5, 30.5, 16.7, 27.7, 0},
               {"outline", Role::Outline, 3, 47, 0, 50, 2},
               {"crescent", Role::Hole, 10.7, 39.3, 38.4, 47.2, 0},
               {"rim", Role::Hole, 5.7, 44.3, 2.7, 41, 0}},
     .paint = {{25, 26.5}, {25, 1.3}, {25, 48.5}, {25, 42.4}, {4.3, 22}, {45.7, 22}},
     .ground = {{25, 22.2}, {25, 10}, {25, 35}, {25, 45.5}, {10, 22}, {1, 45}, {49, 49}}},
    {.name = "Search",
     .draw = Kit::drawTidalIconSearchWithFrame,
     .canvas = 50,
     .lines = 6,
     .curves = 40,
     .parts = {{"glass and handle", Role::Outline, 2.8, 47, 3.3, 47, 3},
               {"slot", Role::Hole, 6.3, 20.1, 6.7, 20.4, 3},
               {"opening", Role::Hole, 16.6, 44.6, 16.9, 44.6, 0}},
     .paint = {{30.6, 45.8}, {45.8, 30.7}, {6, 6}, {19.8, 20}, {10, 13}},
     .ground = {{30.6, 30.7}, {13, 13.2}, {40, 40}, {40, 10}, {3, 40}}},
    {.name = "Playlist",
     .draw = Kit::drawTidalIconPlaylistWithFrame,
     .canvas = 50,
     .lines = 17,
     .curves = 38,
     .parts = {{"sheet", Role::Outline, 10, 40, 3, 47, 5},
               {"fold", Role::Hole, 29.98, 36.485, 35.984, 43.134, 3},
               {"inner sheet", Role::Hole, 12.5, 37.5, 5.8, 44.2, 6},
               {"note", Role::Outline, 20.6, 30.1, 11.2, 29.5, 3},
               {"head of the note", Role::Hole, 23.1, 27.6, 14, 16.8, 0}},
     .paint = {{11, 25}, {39, 20}, {25, 4}, {28.7, 40}, {34, 34.5}, {28.8, 25}, {21.6, 15}},
     .ground = {{31.5, 38}, {20, 30}, {35, 20}, {25.3, 15.4}, {38, 45}, {5, 25}}},
    {.name = "Album",
     .draw = Kit::drawTidalIconAlbumWithFrame,
     .canvas = 50,
     .lines = 0,
     .curves = 96,
     .parts = {{"hole of the wide ring", Role::Hole, 5, 45, 5, 45, 0},
               {"wide ring", Role::Outline, 2.5, 47.5, 2.5, 47.5, 0},
               {"hole of the small ring", Role::Hole, 21.8, 28.2, 21.8, 28.2, 0},
               {"small ring", Role::Outline, 19.4, 30.6, 19.4, 30.6, 0},
               {"hole of the middle ring", Role::Hole, 17.5, 32.5, 17.5, 32.5, 0},
               {"middle ring", Role::Outline, 15, 35, 15, 35, 0}},
     .paint = {{25, 46}, {25, 34}, {25, 29.5}, {4, 25}, {16, 25}, {20.5, 25}},
     .ground = {{25, 40}, {25, 31.5}, {25, 25}, {1, 1}}},
    {.name = "Music",
     .draw = Kit::drawTidalMusicIconWithFrame,
     .canvas = 100,
     .lines = 10,
     .curves = 84,
     .parts = {{"notes", Role::Outline, 6, 94, 6, 94, 6},
               {"left head", Role::Hole, 11.9, 29.8, 11.1, 21.5, 0},
               {"right head", Role::Hole, 70.2, 88.1, 21.5, 31.9, 0},
               {"between the beams", Role::Hole, 35.6, 88.1, 64.5, 87.2, 4}},
     .paint = {{32.7, 50}, {91, 50}, {60, 66}, {60, 85}, {9, 14}, {67, 24}},
     .ground = {{20.8, 16.3}, {79.2, 26.7}, {60, 75}, {60, 40}, {60, 20}, {10, 90}}},
};

constexpr double halfATenth = 0.05;

// What a failed expectation and a test's name say.
void PrintTo(const Icon& icon, std::ostream* out) { *out << icon.name; }

class DrawnBrowseIcon : public testing::TestWithParam<Icon> {
 protected:
  tessaluna::backend::Path drawn() const {
    return paintedBy([this] { GetParam().draw({0, 0, GetParam().canvas, GetParam().canvas}); }).filled.at(0);
  }
};

TEST_P(DrawnBrowseIcon, HasItsSubpathsInOrderWithTheirReachAndDirection) {
  const Icon& icon = GetParam();
  const auto subpaths = subpathsOf(drawn());
  ASSERT_EQ(subpaths.size(), icon.parts.size());
  int lines = 0, curves = 0;
  bool outlinesRunLeft = false;
  for (std::size_t i = 0; i < subpaths.size(); ++i)
    if (icon.parts[i].role == Role::Outline) outlinesRunLeft = subpaths[i].area > 0;
  for (std::size_t i = 0; i < subpaths.size(); ++i) {
    const Part& part = icon.parts[i];
    SCOPED_TRACE(part.what);
    EXPECT_TRUE(subpaths[i].isClosed);
    EXPECT_EQ(subpaths[i].lines, part.lines);
    EXPECT_EQ((subpaths[i].area > 0) == outlinesRunLeft, part.role == Role::Outline);
    const CGRect box = subpaths[i].path.bounds();
    EXPECT_NEAR(CGRectGetMinX(box), part.left, halfATenth);
    EXPECT_NEAR(CGRectGetMaxX(box), part.right, halfATenth);
    EXPECT_NEAR(CGRectGetMinY(box), part.bottom, halfATenth);
    EXPECT_NEAR(CGRectGetMaxY(box), part.top, halfATenth);
    lines += subpaths[i].lines;
    curves += subpaths[i].curves;
  }
  EXPECT_EQ(lines, icon.lines);
  EXPECT_EQ(curves, icon.curves);
}

TEST_P(DrawnBrowseIcon, HolesAreOpenAndRingsArePainted) {
  const tessaluna::backend::Path path = drawn();
  for (const CGPoint point : GetParam().paint) EXPECT_NE(windingAt(path, point), 0) << testing::PrintToString(point);
  for (const CGPoint point : GetParam().ground) EXPECT_EQ(windingAt(path, point), 0) << testing::PrintToString(point);
}

TEST_P(DrawnBrowseIcon, IsPaintedByOneFill) {
  const Icon& icon = GetParam();
  const Lines lines = recordingOf([&] { icon.draw({0, 0, icon.canvas, icon.canvas}); });
  ASSERT_EQ(lines.size(), 2u);
  EXPECT_THAT(lines[0], HasSubstr(R"({"op":"setFillColor",)"));
  EXPECT_THAT(lines[1], HasSubstr(R"({"op":"fill",)"));
}

INSTANTIATE_TEST_SUITE_P(All, DrawnBrowseIcon, testing::ValuesIn(drawnIcons),
                         [](const auto& info) { return std::string(info.param.name); });

TEST(BrowseIconAlbum, IsSixCirclesOfSixteenCurvesInWhite) {
  const auto painted = paintedBy([] { Kit::drawTidalIconAlbum(); });
  EXPECT_THAT(painted.lines.at(0), HasSubstr(R"("named":"whiteColor"})"));
  for (const auto& circle : subpathsOf(painted.filled.at(0))) EXPECT_EQ(circle.curves, 16);
}

TEST(BrowseIconAlbum, OnAWhiteGroundItShowsNothing) {
  const auto nothing = harness::pixelsOnWhite({50, 50}, [] {});
  EXPECT_TRUE(harness::arePixelsEqual(harness::pixelsOnWhite({50, 50}, [] { Kit::drawTidalIconAlbum(); }), nothing));
}

TEST(BrowseIconGenres, StartsInTheMiddleOfAnyFrame) {
  const auto first = [](CGRect frame) {
    return paintedBy([&] { Kit::drawTidalIconGenres(frame); }).filled.at(0).points()[0];
  };
  EXPECT_EQ(first({0, 0, 50, 50}), (CGPoint{25, 25}));
  EXPECT_EQ(first({10, 20, 80, 30}), (CGPoint{50, 35}));
}

TEST(BrowseIconSearch, StaysAtFiftyPointsInTheUpperLeftCorner) {
  const CGRect small = paintedBy([] { Kit::drawTidalIconSearch(); }).filled.at(0).bounds();
  const CGRect large = paintedBy([] { Kit::drawTidalIconSearch({100, 200, 100, 80}); }).filled.at(0).bounds();
  EXPECT_NEAR(large.size.width, small.size.width, 1e-9);
  EXPECT_NEAR(large.size.height, small.size.height, 1e-9);
  EXPECT_NEAR(CGRectGetMinX(large), 100 + CGRectGetMinX(small), 1e-9);
  EXPECT_NEAR(CGRectGetMaxY(large), 280 - (50 - CGRectGetMaxY(small)), 1e-9);
}

TEST(BrowseIcons, BlackIsMadeInSomeAndNamedInOthers) {
  const auto colorOf = [](void (*draw)(CGRect)) { return recordingOf([&] { draw({0, 0, 50, 50}); }).at(0); };
  for (const auto draw :
       {Kit::drawTidalIconNewWithFrame, Kit::drawTidalIconGenresWithFrame, Kit::drawTidalIconMyMusicWithFrame})
    EXPECT_THAT(colorOf(draw), EndsWith(madeBlack));
  for (const auto draw :
       {Kit::drawTidalIconSearchWithFrame, Kit::drawTidalIconPlaylistWithFrame, Kit::drawTidalMusicIconWithFrame})
    EXPECT_THAT(colorOf(draw), EndsWith(namedBlack));
}

TEST(BrowseIcons, WithoutArgumentsPaintInTheFrameThatTheyWereDesignedIn) {
  const struct {
    void (*byDefault)();
    void (*draw)(CGRect);
    double canvas;
  } icons[] = {
      {[] { Kit::drawTidalIconNew(); }, Kit::drawTidalIconNewWithFrame, 50},
      {[] { Kit::drawTidalIconGenres(); }, Kit::drawTidalIconGenresWithFrame, 50},
      {[] { Kit::drawTidalIconMyMusic(); }, Kit::drawTidalIconMyMusicWithFrame, 50},
      {[] { Kit::drawTidalIconRising(); }, Kit::drawTidalIconRisingWithFrame, 50},
      {[] { Kit::drawTidalIconDiscovery(); }, Kit::drawTidalIconDiscoveryWithFrame, 50},
      {[] { Kit::drawTidalIconSearch(); }, Kit::drawTidalIconSearchWithFrame, 50},
      {[] { Kit::drawTidalIconPlaylist(); }, Kit::drawTidalIconPlaylistWithFrame, 50},
      {[] { Kit::drawTidalIconAlbum(); }, Kit::drawTidalIconAlbumWithFrame, 50},
      {[] { Kit::drawTidalMusicIcon(); }, Kit::drawTidalMusicIconWithFrame, 100},
  };
  for (const auto& icon : icons)
    EXPECT_EQ(recordingOf(icon.byDefault), recordingOf([&] { icon.draw({0, 0, icon.canvas, icon.canvas}); }));
}

}  // namespace
