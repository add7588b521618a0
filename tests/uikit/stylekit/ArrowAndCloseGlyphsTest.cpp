#include "tessaluna/uikit/stylekit/ArrowAndCloseGlyphs.h"

#include <gmock/gmock.h>

#include "tessaluna/uikit/stylekit/TessalunaStyleKit.h"
#include "tests/harness/pixelsOf.h"
#include "tests/harness/recordingOf.h"

using namespace tessaluna::platform;
using harness::Lines;
using harness::recordingOf;
using testing::HasSubstr;
using Kit = TessalunaUIKit::TessalunaStyleKit;

namespace {

const std::string gray = R"({"op":"setStrokeColor","color":[0.333,0.333,0.333,1]})";
const std::string black = R"({"op":"setStrokeColor","color":[0,0,0,1]})";
const std::string white = R"({"op":"setStrokeColor","color":[1,1,1,1]})";
const std::string namedBlack = R"({"op":"setStrokeColor","color":[0,0,0,1],"named":"blackColor"})";

std::string stroke(const std::string& path, int lineWidth, const std::string& cap = "butt") {
  return R"({"op":"stroke","path":)" + path + R"(,"lineWidth":)" + std::to_string(lineWidth) + R"(,"cap":")" + cap +
         R"(","join":"miter","miterLimit":10,"dash":[],"phase":0})";
}

}  // namespace

TEST(ArrowAndCloseGlyphs, LeftArrowRunsFromCornerToCornerOfItsFrame) {
  EXPECT_EQ(recordingOf([] {
              Kit::drawLeftArrow({10, 20, 24, 24});
            }),
            (Lines{black, stroke(R"([["M",34,44],["L",14.00008,32],["L",34,20]])", 2)}));
}

TEST(ArrowAndCloseGlyphs, RightArrowIsTheMirrorOfTheLeftOne) {
  EXPECT_EQ(recordingOf([] {
              Kit::drawRightArrow({10, 20, 24, 24});
            }),
            (Lines{black, stroke(R"([["M",10,44],["L",29.99992,32],["L",10,20]])", 2)}));
}

TEST(ArrowAndCloseGlyphs, ADisabledAndPressedLeftArrowIsGrayAndThick) {
  EXPECT_EQ(recordingOf([] {
              Kit::drawLeftArrow({0, 0, 8, 8}, false, true);
            }),
            (Lines{gray, stroke(R"([["M",8,8],["L",1.33336,4],["L",8,0]])", 4)}));
}

TEST(ArrowAndCloseGlyphs, TheEndsOfLeftArrowsStrokeReachBeyondTheFrame) {
  const auto picture = harness::pixelsOf({40, 40}, [] { Kit::drawLeftArrow({8, 8, 24, 24}); });
  // The chevron's ends are the frame's right corners, at x = 32. Rows count from the top: y = 32 is row 8.
  EXPECT_GT(harness::alphaOf(picture.pixel(31, 7)), 0) << "above the frame";
  EXPECT_GT(harness::alphaOf(picture.pixel(31, 32)), 0) << "below the frame";
  EXPECT_GT(harness::alphaOf(picture.pixel(32, 8)), 0) << "to the right of the frame";
  EXPECT_EQ(harness::alphaOf(picture.pixel(34, 8)), 0);
  EXPECT_EQ(harness::alphaOf(picture.pixel(31, 5)), 0);
}

TEST(ArrowAndCloseGlyphs, ForwardArrowHasRoundEnds) {
  EXPECT_EQ(recordingOf([] {
              Kit::drawForwardArrow({0, 0, 64, 64});
            }),
            (Lines{black, stroke(R"([["M",18.56,59.52],["L",46.72,31.36],["L",19.84,3.2]])", 2, "round")}));
}

TEST(ArrowAndCloseGlyphs, BackwardArrowIsALittleToTheRightOfTheMirror) {
  EXPECT_EQ(recordingOf([] {
              Kit::drawBackwardArrow({0, 0, 64, 64}, true, true, true);
            }),
            (Lines{white, stroke(R"([["M",46.72,59.52],["L",18.56,31.36],["L",45.44,3.2]])", 4, "round")}));
}

TEST(ArrowAndCloseGlyphs, ADisabledForwardArrowIsGrayAlsoWhereItWouldBeWhite) {
  EXPECT_EQ(recordingOf([] { Kit::drawForwardArrow({0, 0, 50, 50}, false, false, true); })[0], gray);
  EXPECT_EQ(recordingOf([] { Kit::drawBackwardArrow({0, 0, 50, 50}, false, false, true); })[0], gray);
  EXPECT_EQ(recordingOf([] { Kit::drawForwardArrow({0, 0, 50, 50}, true, false, true); })[0], white);
}

TEST(ArrowAndCloseGlyphs, ALargerForwardArrowKeepsItsLineWidth) {
  for (const double side : {10.0, 50.0, 500.0})
    EXPECT_THAT(recordingOf([&] { Kit::drawForwardArrow({0, 0, side, side}); })[1], HasSubstr(R"("lineWidth":2,)"));
}

TEST(ArrowAndCloseGlyphs, CloseCrossIsTwoStrokesInBlack) {
  EXPECT_EQ(recordingOf([] { Kit::drawCloseCross(); }), (Lines{namedBlack, stroke(R"([["M",1,13],["L",13,1]])", 2),
                                                               namedBlack, stroke(R"([["M",13,13],["L",1,1]])", 2)}));
}

TEST(ArrowAndCloseGlyphs, CloseCrossKeepsItsSizeInTheUpperLeftCornerOfALargeFrame) {
  EXPECT_EQ(
      recordingOf([] {
        Kit::drawCloseCross({0, 0, 100, 100});
      }),
      (Lines{namedBlack, stroke(R"([["M",1,99],["L",13,87]])", 2), namedBlack, stroke(R"([["M",13,99],["L",1,87]])", 2)}));
}

TEST(ArrowAndCloseGlyphs, CloseButtonFollowsItsFrameInOneStroke) {
  EXPECT_EQ(recordingOf([] {
              Kit::drawCloseButton({0, 0, 32, 32});
            }),
            (Lines{namedBlack, stroke(R"([["M",2,30],["L",30,2],["M",30,30],["L",2,2]])", 2)}));
}

TEST(ArrowAndCloseGlyphs, APressedCloseButtonIsThick) {
  EXPECT_THAT(recordingOf([] { Kit::drawCloseButton({0, 0, 32, 32}, true); })[1], HasSubstr(R"("lineWidth":4,)"));
}

TEST(ArrowAndCloseGlyphs, WithoutAContextNothingHappens) {
  Kit::drawLeftArrow();
  Kit::drawRightArrow();
  Kit::drawForwardArrow();
  Kit::drawBackwardArrow();
  Kit::drawCloseCross();
  Kit::drawCloseButton();
  EXPECT_EQ(NSGraphicsContext::currentContext(), nullptr);
}

TEST(ArrowAndCloseGlyphs, MemberAndSelectorDrawTheSame) {
  EXPECT_EQ(recordingOf([] {
              Kit::drawLeftArrow({1, 2, 3, 4}, false, true);
            }),
            recordingOf([] {
              Kit::drawLeftArrowWithFrame({1, 2, 3, 4}, false, true);
            }));
  EXPECT_EQ(recordingOf([] {
              Kit::drawForwardArrow({1, 2, 3, 4}, true, false, true);
            }),
            recordingOf([] {
              Kit::drawForwardArrowWithFrame({1, 2, 3, 4}, true, false, true);
            }));
}

TEST(ArrowAndCloseGlyphs, AFrameOfNegativeSizeCountsAsTheAreaThatItCovers) {
  EXPECT_EQ(recordingOf([] {
              Kit::drawLeftArrow({34, 44, -24, -24});
            }),
            recordingOf([] {
              Kit::drawLeftArrow({10, 20, 24, 24});
            }));
  EXPECT_EQ(recordingOf([] {
              Kit::drawCloseCross({14, 14, -14, -14});
            }),
            recordingOf([] {
              Kit::drawCloseCross({0, 0, 14, 14});
            }));
}
