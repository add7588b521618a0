#include "tessaluna/uikit/stylekit/image_factory.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <thread>

#include "tessaluna/uikit/stylekit/TessalunaStyleKit.h"
#include "tests/harness/pixelsOf.h"
#include "tests/harness/printing.h"
#include "tests/harness/recordingOf.h"

using namespace tessaluna::platform;
using harness::Lines;
using harness::recordingOf;
using Kit = TessalunaUIKit::TessalunaStyleKit;

TEST(image_factory, LeftArrowIsDrawnFromZeroWhateverItsRoutinesDefaultFrame) {
  const auto image = Kit::imageOfLeftArrow();
  EXPECT_EQ(image->size(), (CGSize{12, 12}));
  const Lines lines = recordingOf([&] { image->drawInRect({0, 0, 12, 12}); });
  EXPECT_EQ(harness::only("stroke", lines),
            (Lines{R"({"op":"stroke","path":[["M",12,12],["L",2.0000400000000003,6],["L",12,0]],"lineWidth":2,"cap":"butt",)"
                   R"("join":"miter","miterLimit":10,"dash":[],"phase":0})"}));
  EXPECT_EQ(harness::only("clipRect", lines), (Lines{R"({"op":"clipRect","rect":[0,0,12,12]})"}));
}

TEST(image_factory, HalfOfLeftArrowsStrokeIsCutOffAtTheImagesCorners) {
  const auto image = Kit::imageOfLeftArrow({24, 24}, true, false);
  const auto picture = harness::pixelsOf({40, 40}, [&] { image->drawInRect({8, 8, 24, 24}); });
  EXPECT_GT(harness::alphaOf(picture.pixel(31, 8)), 0);
  EXPECT_EQ(harness::alphaOf(picture.pixel(31, 7)), 0) << "above the image";
  EXPECT_EQ(harness::alphaOf(picture.pixel(32, 8)), 0) << "to the right of the image";
}

TEST(image_factory, RenderingAnImageTwicePaintsTheSamePixels) {
  const auto image = Kit::imageOfForwardArrow({50, 50}, true, true, false);
  const auto render = [&] { return harness::pixelsOf({50, 50, 2}, [&] { image->drawInRect({0, 0, 50, 50}); }); };
  const auto first = render();
  EXPECT_TRUE(harness::arePixelsEqual(first, render()));
  EXPECT_GT(harness::alphaOf(first.pixel(72, 50)), 0);
}

TEST(image_factory, AnImageIsUprightInAFlippedViewAndSoIsItsShadow) {
  // At 9 from the bottom, in a space of 50 points that may count them from the top.
  const auto pictureOf = [](const Ref<NSImage>& image, bool isFlipped) {
    return harness::pixelsOf({60, 50, 2}, [&] {
      const auto context = NSGraphicsContext::currentContext();
      if (isFlipped) context->CGContext().concat({1, 0, 0, -1, 0, 50});
      context->setFlipped(isFlipped);
      image->drawInRect({7, isFlipped ? 50.0 - 9 - 32 : 9.0, 40, 32});
    });
  };
  for (const auto& image : {Kit::imageOfFavoriteAlbumOverlay({40, 32}), Kit::imageOfPlayPauseAlbumOverlay({40, 32})}) {
    const auto picture = pictureOf(image, false);
    EXPECT_GT(harness::alphaOf(picture.pixel(54, 50)), 0);
    EXPECT_TRUE(harness::arePixelsEqual(picture, pictureOf(image, true)));
  }
}

TEST(image_factory, CloseCrossKeepsItsSizeInTheUpperLeftCornerOfALargeImage) {
  const auto image = Kit::imageOfCloseCross({100, 100});
  EXPECT_EQ(image->size(), (CGSize{100, 100}));
  const Lines strokes = harness::only("stroke", recordingOf([&] { image->drawInRect({0, 0, 100, 100}); }));
  ASSERT_EQ(strokes.size(), 2u);
  EXPECT_NE(strokes[0].find(R"([["M",1,99],["L",13,87]])"), std::string::npos);
  EXPECT_NE(strokes[1].find(R"([["M",13,99],["L",1,87]])"), std::string::npos);
}

TEST(image_factory, MoreAlbumOverlayWithoutArgumentsIs44By22AtRestWithTheMouseOverIt) {
  const auto image = Kit::imageOfMoreAlbumOverlay();
  EXPECT_EQ(image->size(), (CGSize{44, 22}));
  const Lines lines = recordingOf([&] { image->drawInRect({0, 0, 44, 22}); });
  const Lines glyph = recordingOf([] { Kit::drawMoreAlbumOverlay({0, 0, 44, 22}, /*isPressed=*/false, /*isOver=*/true); });
  ASSERT_EQ(glyph.size(), 12u);
  EXPECT_TRUE(std::search(lines.begin(), lines.end(), glyph.begin(), glyph.end()) != lines.end());
}

TEST(image_factory, AnImageIsANewOneAtEachCall) { EXPECT_NE(Kit::imageOfLeftArrow(), Kit::imageOfLeftArrow()); }

TEST(image_factory, FlagsPassIntoTheImage) {
  const auto strokeOf = [](const Ref<NSImage>& image) {
    return recordingOf([&] { image->drawInRect({{0, 0}, image->size()}); });
  };
  const Lines pressed = strokeOf(Kit::imageOfRightArrow({12, 12}, false, true));
  EXPECT_EQ(harness::only("setStrokeColor", pressed)[0], R"({"op":"setStrokeColor","color":[0.333,0.333,0.333,1]})");
  EXPECT_NE(harness::only("stroke", pressed)[0].find(R"("lineWidth":4)"), std::string::npos);
  const Lines white = strokeOf(Kit::imageOfBackwardArrow({50, 50}, true, false, true));
  EXPECT_EQ(harness::only("setStrokeColor", white)[0], R"({"op":"setStrokeColor","color":[1,1,1,1]})");
}

TEST(image_factory, MemberAndSelectorMakeTheSameImage) {
  const auto drawn = [](const Ref<NSImage>& image) {
    return recordingOf([&] { image->drawInRect({{0, 0}, image->size()}); });
  };
  EXPECT_EQ(drawn(Kit::imageOfLeftArrow({20, 30}, false, true)),
            drawn(Kit::imageOfLeftArrowWithImageSize({20, 30}, false, true)));
  EXPECT_EQ(drawn(Kit::imageOfCloseCross({20, 30})), drawn(Kit::imageOfCloseCrossWithImageSize({20, 30})));
}

TEST(image_factory, AnImageMayBeRenderedOnAnotherThread) {
  const auto image = Kit::imageOfCloseCross();
  const auto render = [&] { return recordingOf([&] { image->drawInRect({0, 0, 14, 14}); }); };
  Lines there;
  std::thread([&] { there = render(); }).join();
  EXPECT_EQ(there, render());
}
