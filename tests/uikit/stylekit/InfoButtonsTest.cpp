#include <gmock/gmock.h>

#include "tessaluna/uikit/stylekit/InfoButtons.h"
#include "tests/harness/recordingOf.h"
#include "tests/uikit/stylekit/Outline.h"

namespace {

using namespace tessaluna::platform;
using harness::Lines;
using harness::listingOf;
using harness::only;
using harness::operationsOf;
using harness::paintedBy;
using harness::recordingOf;
using harness::subpathsOf;
using testing::ElementsAre;
using testing::EndsWith;
using testing::HasSubstr;
using testing::Not;
using Kit = TessalunaUIKit::InfoButtons;

constexpr CGRect unitFrame{0, 0, 1, 1};
constexpr const char* black = R"(,"color":[0,0,0,1]})";

TEST(CreditsButton, FillsTheLetterAndStrokesTheCircle) {
  const auto painted = paintedBy([] { Kit::drawCreditsButton(unitFrame); });
  ASSERT_THAT(operationsOf(painted.lines), ElementsAre("setFillColor", "fill", "setStrokeColor", "stroke"));
  EXPECT_THAT(painted.lines[0], EndsWith(black));
  EXPECT_THAT(painted.lines[2], EndsWith(black));
  EXPECT_EQ(listingOf(painted.filled.at(0)),
            "M (0.47795, 0.65815), C (0.47151, 0.66463; 0.47405, 0.65815; 0.47151, 0.66075), "
            "L (0.47151, 0.7119), C (0.47795, 0.71838; 0.47151, 0.71578; 0.47407, 0.71838), "
            "L (0.52199, 0.71838), C (0.52847, 0.7119; 0.52587, 0.71838; 0.52847, 0.71578), "
            "L (0.52847, 0.66463), C (0.52199, 0.65815; 0.52847, 0.66075; 0.52586, 0.65815), "
            "L (0.47795, 0.65815), Z, "
            "M (0.47927, 0.27804), C (0.47281, 0.28451; 0.47539, 0.27804; 0.47281, 0.28063), "
            "L (0.47281, 0.58174), C (0.47927, 0.58822; 0.47281, 0.58562; 0.47541, 0.58822), "
            "L (0.52071, 0.58822), C (0.52719, 0.58174; 0.52461, 0.58822; 0.52719, 0.58562), "
            "L (0.52719, 0.28451), C (0.52071, 0.27804; 0.52719, 0.28061; 0.52459, 0.27804), "
            "L (0.47927, 0.27804), Z");
}

TEST(CreditsButton, InTwiceTheFrameDoublesTheLetterAndKeepsInsetAndLine) {
  const auto small = paintedBy([] { Kit::drawCreditsButton(); });
  const auto large = paintedBy([] { Kit::drawCreditsButton({0, 0, 40, 40}); });
  EXPECT_DOUBLE_EQ(large.filled.at(0).bounds().size.height, 2 * small.filled.at(0).bounds().size.height);
  EXPECT_THAT(small.lines.at(3), HasSubstr(R"("shape":["oval",1,1,18,18])"));
  EXPECT_THAT(large.lines.at(3), HasSubstr(R"("shape":["oval",1,1,38,38])"));
  EXPECT_THAT(large.lines.at(3), HasSubstr(R"("lineWidth":1,)"));
  EXPECT_THAT(recordingOf([] { Kit::drawCreditsButton({0, 0, 40, 40}, true); }).at(3), HasSubstr(R"("lineWidth":2,)"));
}

TEST(BookButton, IsThreeSubpathsStrokedOnce) {
  const auto painted = paintedBy([] { Kit::drawBookButton(unitFrame); });
  ASSERT_THAT(operationsOf(painted.lines), ElementsAre("setStrokeColor", "stroke"));
  EXPECT_THAT(painted.lines[0], EndsWith(black));
  EXPECT_EQ(listingOf(painted.stroked.at(0)),
            "M (0.5, 0.87222), L (0.5, 0.14815), C (0.91071, 0.23333; 0.5, 0.14815; 0.58826, 0.23333), "
            "L (0.91071, 1), C (0.5, 0.87222; 0.58647, 1; 0.5, 0.87222), Z, "
            "M (0.5, 0.87222), L (0.5, 0.14815), C (0.08929, 0.23333; 0.5, 0.14815; 0.41174, 0.23333), "
            "L (0.08929, 1), C (0.5, 0.87222; 0.41353, 1; 0.5, 0.87222), Z, "
            "M (0.10417, 0.86957), L (0.03846, 0.86957), C (0, 0.82935; 0.01723, 0.86957; 0, 0.85157), "
            "L (0, 0.10543), C (0.03846, 0.06522; 0, 0.08322; 0.01723, 0.06522), "
            "C (0.39583, 0.06522; 0.03846, 0.06522; 0.35554, 0.06522), "
            "C (0.5, 0; 0.39583, 0.06522; 0.43056, 0), C (0.60417, 0.06522; 0.56944, 0; 0.60417, 0.06522), "
            "C (0.96154, 0.06522; 0.64496, 0.06522; 0.96154, 0.06522), "
            "C (1, 0.10543; 0.98277, 0.06522; 1, 0.08322), L (1, 0.82935), "
            "C (0.96154, 0.86957; 1, 0.85157; 0.98277, 0.86957), L (0.89583, 0.86957)");
}

TEST(BookButton, CoverStaysOpenUnderTheTopOfTheSpine) {
  const auto subpaths = subpathsOf(paintedBy([] { Kit::drawBookButton(); }).stroked.at(0));
  ASSERT_EQ(subpaths.size(), 3u);
  EXPECT_TRUE(subpaths[0].isClosed);
  EXPECT_TRUE(subpaths[1].isClosed);
  EXPECT_FALSE(subpaths[2].isClosed);
  const auto points = subpaths[2].path.points();
  EXPECT_NEAR(points.back().x - points.front().x, 14 * (0.89583 - 0.10417), 1e-9);
}

TEST(BookButton, LiesInAFrameSnappedToWholePoints) {
  // 16 points: from 1 to 15. The pages' outer corners are the group's top, the spine's foot its bottom.
  const CGRect box = paintedBy([] { Kit::drawBookButton(); }).stroked.at(0).bounds();
  EXPECT_EQ(box, (CGRect{1, 1, 14, 14}));
  const CGRect moved = paintedBy([] { Kit::drawBookButton({5.5, 0, 20, 16}); }).stroked.at(0).bounds();
  EXPECT_EQ(moved, (CGRect{6.5, 1, 18, 14}));
}

TEST(InfoButtons, PressingThickensTheLinesAndChangesNothingElse) {
  const struct {
    void (*draw)(CGRect, bool);
    double canvas;
    const char *rest, *pressed;
  } buttons[] = {
      {Kit::drawBookButtonWithFrame, 16, R"("lineWidth":1,)", R"("lineWidth":2,)"},
      {Kit::drawSimilarArtistsWithFrame, 15, R"("lineWidth":0.5,)", R"("lineWidth":1,)"},
      {Kit::drawCreditsButtonWithFrame, 20, R"("lineWidth":1,)", R"("lineWidth":2,)"},
  };
  for (const auto& button : buttons) {
    const CGRect frame{0, 0, button.canvas, button.canvas};
    const Lines rest = recordingOf([&] { button.draw(frame, false); });
    Lines pressed = recordingOf([&] { button.draw(frame, true); });
    for (std::string& line : pressed) {
      const auto at = line.find(R"("lineWidth":)");
      if (at == std::string::npos) continue;
      ASSERT_EQ(line.substr(at).find(button.pressed), 0u);
      line.replace(at, std::string(button.pressed).size(), button.rest);
    }
    EXPECT_EQ(rest, pressed);
  }
}

TEST(InfoButtons, WithoutArgumentsAreAtRestInTheFrameThatTheyWereDesignedIn) {
  EXPECT_EQ(recordingOf([] { Kit::drawBookButton(); }), recordingOf([] { Kit::drawBookButton({0, 0, 16, 16}, false); }));
  EXPECT_EQ(recordingOf([] { Kit::drawSimilarArtists(); }), recordingOf([] {
              Kit::drawSimilarArtists({0, 0, 15, 15}, false);
            }));
  EXPECT_EQ(recordingOf([] { Kit::drawCreditsButton(); }), recordingOf([] {
              Kit::drawCreditsButton({0, 0, 20, 20}, false);
            }));
}

TEST(SimilarArtists, IsTenShapesEachWithItsOwnColorCall) {
  const Lines lines = recordingOf([] { Kit::drawSimilarArtists(); });
  ASSERT_EQ(lines.size(), 20u);
  for (std::size_t i = 0; i < lines.size(); i += 2) {
    EXPECT_EQ(lines[i], R"({"op":"setStrokeColor","color":[0,0,0,1]})");
    EXPECT_THAT(lines[i + 1], HasSubstr(R"({"op":"stroke",)"));
    EXPECT_THAT(lines[i + 1], HasSubstr(R"("lineWidth":0.5,)"));
  }
}

TEST(SimilarArtists, HeadsHavePlainLineEndsAndBodiesRoundOnes) {
  const Lines strokes = only("stroke", recordingOf([] { Kit::drawSimilarArtists(); }));
  ASSERT_EQ(strokes.size(), 10u);
  // The group is the 13 points from 1 on.
  const struct {
    int place;
    const char* oval;
  } heads[] = {{0, R"(["oval",4,11,3,3])"},
               {1, R"(["oval",6,5,3,4])"},
               {3, R"(["oval",10,7,3,3])"},
               {5, R"(["oval",2,7,3,3])"},
               {8, R"(["oval",7.8,11,3,3])"}};
  for (const auto& head : heads) {
    EXPECT_THAT(strokes[head.place], HasSubstr(head.oval));
    EXPECT_THAT(strokes[head.place], HasSubstr(R"("cap":"butt","join":"miter")"));
  }
  for (const int body : {2, 4, 6, 7, 9}) {
    EXPECT_THAT(strokes[body], Not(HasSubstr("oval")));
    EXPECT_THAT(strokes[body], HasSubstr(R"("cap":"round","join":"round")"));
  }
}

TEST(SimilarArtists, BodiesAreThoseOfTheDesign) {
  const auto strokes = paintedBy([] { Kit::drawSimilarArtists(unitFrame); }).stroked;
  EXPECT_EQ(listingOf(strokes.at(2)),
            "M (0.66667, 0.13636), C (0.5, 0.31818; 0.66667, 0.23636; 0.59167, 0.31818), "
            "C (0.33333, 0.13636; 0.40833, 0.31818; 0.33333, 0.23636), "
            "C (0.33333, 0.03409; 0.33333, 0.11591; 0.33333, 0.03409), "
            "C (0.5, 0; 0.33333, 0.03409; 0.375, 0), C (0.66667, 0.03409; 0.625, 0; 0.66667, 0.03409), "
            "C (0.66667, 0.13636; 0.66667, 0.03409; 0.66667, 0.11591), Z");
  EXPECT_EQ(listingOf(strokes.at(4)),
            "M (1, 0.27273), C (0.83333, 0.45455; 1, 0.37273; 0.925, 0.45455), "
            "C (0.66667, 0.27273; 0.74167, 0.45455; 0.66667, 0.37273), "
            "C (0.66667, 0.17045; 0.66667, 0.25227; 0.66667, 0.17045), "
            "C (0.83333, 0.13636; 0.66667, 0.17045; 0.70833, 0.13636), "
            "C (1, 0.17045; 0.95833, 0.13636; 1, 0.17045), C (1, 0.27273; 1, 0.17045; 1, 0.25227), Z");
  EXPECT_EQ(listingOf(strokes.at(6)),
            "M (0.33333, 0.27273), C (0.16667, 0.45455; 0.33333, 0.37273; 0.25833, 0.45455), "
            "C (0, 0.27273; 0.075, 0.45455; 0, 0.37273), C (0, 0.17045; 0, 0.25227; 0, 0.17045), "
            "C (0.16667, 0.13636; 0, 0.17045; 0.04167, 0.13636), "
            "C (0.33333, 0.17045; 0.29167, 0.13636; 0.33333, 0.17045), "
            "C (0.33333, 0.27273; 0.33333, 0.17045; 0.33333, 0.25227), Z");
  EXPECT_EQ(listingOf(strokes.at(7)),
            "M (0.47917, 0.59545), C (0.47917, 0.61364; 0.47917, 0.59545; 0.47917, 0.60682), "
            "C (0.33333, 0.77273; 0.47917, 0.70227; 0.41458, 0.77273), "
            "C (0.22083, 0.71364; 0.2875, 0.77273; 0.24792, 0.75)");
  EXPECT_EQ(listingOf(strokes.at(9)),
            "M (0.51667, 0.59545), C (0.51667, 0.61364; 0.51667, 0.59545; 0.51667, 0.60682), "
            "C (0.6625, 0.77273; 0.51667, 0.70227; 0.58125, 0.77273), "
            "C (0.775, 0.71364; 0.70833, 0.77273; 0.74792, 0.75)");
}

}  // namespace
