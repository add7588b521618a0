#include <cstring>

#include "tessaluna/platform/backend/imageDecoder.h"
#include "tessaluna/platform/graphics/NSBezierPath.h"
#include "tessaluna/platform/graphics/NSGraphicsContext.h"
#include "tessaluna/platform/graphics/NSImage.h"
#include "tessaluna/platform/graphics/NSImageRep.h"
#include "tests/harness/StillWorld.h"
#include "tests/harness/printing.h"
#include "tests/harness/recordingOf.h"

using namespace tessaluna::platform;
using harness::Lines;
using harness::only;
using harness::recordingOf;

namespace {

class NSImageBytesTest : public harness::StillWorld {
 protected:
  static Ref<NSImage> decoded(const std::string& bytes) { return NSImage::initWithData(std::as_bytes(std::span(bytes))); }

  // Two pixels beside each other, red and blue.
  static std::string redAndBlue() { return std::string("P6 2 1 255\n") + std::string("\xFF\0\0\0\0\xFF", 6); }
};

const Lines wholePicture{R"({"op":"image","pixels":[2,1],"from":[0,0,2,1],"rect":[0,0,2,1]})"};

}  // namespace

TEST_F(NSImageBytesTest, HoldsThePixelsThatTheBytesDescribe) {
  const auto image = decoded(redAndBlue());
  ASSERT_NE(image, nullptr);
  EXPECT_EQ(image->size(), (CGSize{2, 1}));
  ASSERT_EQ(image->representations().size(), 1u);
  EXPECT_EQ(image->representations()[0]->pixelsWide(), 2);
  EXPECT_EQ(image->representations()[0]->pixelsHigh(), 1);
  EXPECT_EQ(image->representations()[0]->pixels()->argb, (std::vector<std::uint32_t>{0xFFFF0000, 0xFF0000FF}));
}

TEST_F(NSImageBytesTest, AlphaIsPremultiplied) {
  const auto image = decoded(std::string("P7\nWIDTH 1\nHEIGHT 1\nDEPTH 4\nMAXVAL 255\nTUPLTYPE RGB_ALPHA\nENDHDR\n") +
                             std::string("\xFF\x80\0\x80", 4));
  ASSERT_NE(image, nullptr);
  EXPECT_EQ(image->representations()[0]->pixels()->argb, std::vector<std::uint32_t>{0x80804000});
}

TEST_F(NSImageBytesTest, WhatIsNotAPictureIsAbsent) {
  for (const char* bytes :
       {"", "P", "P5 1 1 255\nx", "P6 0 1 255\n", "P6 -1 1 255\nxxx", "P6 1 1 65535\nxxxxxx", "P7\nDEPTH",
        "P7\nCOLOR 3\nENDHDR\n", "\x89PNG\r\n", "P6 1 1", "P6 99999999999999999999 1 255\nxxx"})
    EXPECT_EQ(decoded(bytes), nullptr) << bytes;
}

TEST_F(NSImageBytesTest, EveryCutOffPictureIsAbsent) {
  const std::string whole = redAndBlue();
  for (std::size_t length = 0; length < whole.size(); ++length)
    EXPECT_EQ(decoded(whole.substr(0, length)), nullptr) << length;
  EXPECT_NE(decoded(whole), nullptr);
}

TEST_F(NSImageBytesTest, AGiganticClaimIsAbsentAtOnce) {
  EXPECT_EQ(decoded("P6 999999999 999999999 255\nxxx"), nullptr);
  EXPECT_EQ(decoded("P6 999999999 1 255\nxxx"), nullptr);
}

TEST_F(NSImageBytesTest, APictureOfManyPixelsIsDecodedWhenItIsDrawn) {
  const auto image = decoded("P6 1100 1000 255\n" + std::string(1100 * 1000 * 3, 'x'));
  ASSERT_NE(image, nullptr);
  EXPECT_EQ(image->size(), (CGSize{1100, 1000}));
  ASSERT_EQ(image->representations().size(), 1u);
  const NSImageRep& representation = *image->representations()[0];
  EXPECT_EQ(representation.pixelsWide(), 1100);
  EXPECT_EQ(representation.pixelsHigh(), 1000);
  EXPECT_NE(representation.encoded(), nullptr);
  EXPECT_EQ(recordingOf([&] {
              image->drawInRect({0, 0, 11, 10});
            }),
            Lines{R"({"op":"image","pixels":[1100,1000],"from":[0,0,1100,1000],"rect":[0,0,11,10]})"});
  EXPECT_EQ(representation.encoded(), nullptr) << "the bytes are not kept any longer";
  EXPECT_EQ(decoded("P6 1024 1024 255\n" + std::string(1024 * 1024 * 3, 'x'))->representations()[0]->encoded(), nullptr)
      << "a million of pixels are not many";
}

TEST_F(NSImageBytesTest, ADamagedPictureOfManyPixelsDrawsNothing) {
  // This desktop decodes no such pictures, of which only the header is one.
  const std::string bytes =
      std::string("\x89PNG\r\n\x1A\n\0\0\0\rIHDR\0\0\x10\0\0\0\x10\0........", 32) + "IEND\xAE\x42\x60\x82";
  const auto image = decoded(bytes);
  ASSERT_NE(image, nullptr);
  EXPECT_EQ(image->representations()[0]->pixelsWide(), 4096);
  EXPECT_EQ(recordingOf([&] { image->drawInRect({0, 0, 2, 1}); }), Lines{});
}

TEST_F(NSImageBytesTest, IsDrawnAsOnePicture) {
  EXPECT_EQ(recordingOf([] { decoded(redAndBlue())->drawInRect({0, 0, 2, 1}); }), wholePicture);
}

TEST_F(NSImageBytesTest, ALaterSizeChangesPointsAndNotPixels) {
  const auto image = decoded(redAndBlue());
  image->setSize({20, 10});
  EXPECT_EQ(image->representations()[0]->pixelsWide(), 2);
  EXPECT_EQ(recordingOf([&] { image->drawInRect({0, 0, 2, 1}); }), wholePicture);
}

TEST_F(NSImageBytesTest, APartFillsTheRectangleAndIsCutToIt) {
  const Lines lines = recordingOf([] { decoded(redAndBlue())->drawInRect({10, 10, 4, 4}, {.fromRect = {1, 0, 1, 1}}); });
  EXPECT_EQ(only("clipRect", lines), Lines{R"({"op":"clipRect","rect":[10,10,4,4]})"});
  EXPECT_EQ(only("image", lines), Lines{R"({"op":"image","pixels":[2,1],"from":[0,0,2,1],"rect":[6,10,8,4]})"});
}

TEST_F(NSImageBytesTest, AFractionIsTheAlphaOfOnePicture) {
  const Lines lines = recordingOf([] { decoded(redAndBlue())->drawInRect({0, 0, 2, 1}, {.fraction = 0.25}); });
  EXPECT_EQ(only("setAlpha", lines), Lines{R"({"op":"setAlpha","alpha":0.25})"});
  EXPECT_EQ(only("setBlendMode", lines), Lines{R"({"op":"setBlendMode","mode":"normal"})"});
  EXPECT_EQ(only("beginTransparencyLayer", lines).size(), 1u);
  EXPECT_EQ(only("save", lines).size(), only("restore", lines).size());
}

TEST_F(NSImageBytesTest, AnOperationIsThatOfOnePicture) {
  const Lines lines = recordingOf([] {
    decoded(redAndBlue())->drawInRect({0, 0, 2, 1}, {.operation = NSCompositingOperationSourceIn});
  });
  EXPECT_EQ(only("setBlendMode", lines), Lines{R"({"op":"setBlendMode","mode":"sourceIn"})"});
  EXPECT_EQ(only("endTransparencyLayer", lines).size(), 1u);
}

TEST_F(NSImageBytesTest, IsUprightInAFlippedViewUnlessToldOtherwise) {
  const auto drawnFlipped = [](const NSImage::Drawing& drawing) {
    tessaluna::backend::recording::RecordingCanvas canvas;
    CGContext context(canvas);
    const CurrentContextScope current(NSGraphicsContext::graphicsContextWithCGContext(context, true));
    decoded(redAndBlue())->drawInRect({10, 20, 2, 6}, drawing);
    return only("concat", canvas.lines());
  };
  EXPECT_EQ(drawnFlipped({}), Lines{R"({"op":"concat","transform":[1,0,0,-1,0,46]})"});
  EXPECT_EQ(drawnFlipped({.respectFlipped = false}), Lines{});
}

TEST_F(NSImageBytesTest, TheRepresentationWithTheMostPixelsIsDrawn) {
  const auto image = decoded(redAndBlue());
  image->addRepresentation(decoded(std::string("P6 3 1 255\n") + std::string(9, 'x'))->representations()[0]);
  EXPECT_EQ(only("image", recordingOf([&] {
                   image->drawInRect({0, 0, 2, 1});
                 })),
            Lines{R"({"op":"image","pixels":[3,1],"from":[0,0,3,1],"rect":[0,0,2,1]})"});
}

TEST_F(NSImageBytesTest, AnImageIsFoundByTheNameThatItWasGiven) {
  const auto image = decoded(redAndBlue());
  EXPECT_EQ(NSImage::imageNamed("cover"), nullptr);
  NSImage::setImageNamed("cover", image);
  EXPECT_EQ(NSImage::imageNamed("cover"), image);
  NSImage::setImageNamed("cover", nullptr);
  EXPECT_EQ(NSImage::imageNamed("cover"), nullptr);
}

TEST(NSImageWithoutABackend, IsDecodedByTheLibraryThatDoesItThere) {
  ASSERT_EQ(tessaluna::backend::Backend::current(), nullptr);
  tessaluna::backend::setImageDecoderWithoutBackend([](std::span<const std::byte> bytes) {
    auto pixels = std::make_shared<tessaluna::backend::ImagePixels>();
    pixels->width = static_cast<int>(bytes.size());
    pixels->height = 1;
    pixels->argb.resize(bytes.size());
    return bytes.empty() ? nullptr : std::shared_ptr<const tessaluna::backend::ImagePixels>(pixels);
  });
  const std::byte three[3] = {};
  const auto image = NSImage::initWithData(three);
  ASSERT_TRUE(image);
  EXPECT_EQ(image->size(), (CGSize{3, 1}));
  EXPECT_FALSE(NSImage::initWithData({}));
  tessaluna::backend::setImageDecoderWithoutBackend(nullptr);
}

TEST(NSImageBytesDeathTest, DecodingWithoutABackendStopsTheProgram) {
  EXPECT_DEATH(NSImage::initWithData({}), "without a backend");
}
