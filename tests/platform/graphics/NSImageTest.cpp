#include "tessaluna/platform/graphics/NSImage.h"

#include <gtest/gtest.h>

#include <stdexcept>
#include <string_view>

#include "tessaluna/platform/graphics/NSBezierPath.h"
#include "tessaluna/platform/graphics/NSColor.h"
#include "tessaluna/platform/graphics/NSImageRep.h"
#include "tests/harness/countingNew.h"
#include "tests/harness/printing.h"
#include "tests/harness/recordingOf.h"

using namespace tessaluna::platform;
using harness::Lines;
using harness::recordingOf;

TEST(NSImage, MakingOneIsOneAllocation) {
  bool flags[8] = {};
  const CGSize size{12, 12};
  Ref<NSImage> image;
  const int before = harness::allocations;
  image = NSImage::imageWithSize(size, false, [size, flags](CGRect) { return size.width > 0 && !flags[0]; });
  EXPECT_EQ(harness::allocations - before, 1);
}

TEST(NSImage, MakingOneDrawsNothing) {
  int runs = 0;
  const Lines lines = recordingOf([&] {
    const auto image = NSImage::imageWithSize({12, 12}, false, [&runs](CGRect) { return ++runs > 0; });
    EXPECT_EQ(image->size(), (CGSize{12, 12}));
  });
  EXPECT_EQ(runs, 0);
  EXPECT_TRUE(lines.empty());
}

TEST(NSImage, TheHandlerRunsAtEachRendering) {
  int runs = 0;
  const auto image = NSImage::imageWithSize({12, 12}, false, [&runs](CGRect) { return ++runs > 0; });
  recordingOf([&] {
    image->drawInRect({0, 0, 12, 12});
    image->drawInRect({50, 0, 12, 12});
  });
  EXPECT_EQ(runs, 2);
}

TEST(NSImage, TheHandlersCapturesLiveAsLongAsTheImage) {
  auto token = std::make_shared<int>(1);
  const std::weak_ptr<int> weak = token;
  auto image = NSImage::imageWithSize({12, 12}, false, [token = std::move(token)](CGRect) { return *token == 1; });
  EXPECT_EQ(weak.use_count(), 1);
  image.reset();
  EXPECT_TRUE(weak.expired());
}

TEST(NSImage, IsRenderedScaledToTheRectangleAndClippedByIt) {
  const auto image = NSImage::imageWithSize({10, 20}, false, [](CGRect) {
    NSBezierPath::bezierPathWithRect({0, 0, 10, 20})->fill();
    return true;
  });
  EXPECT_EQ(recordingOf([&] {
              image->drawInRect({100, 200, 20, 60});
            }),
            (Lines{R"({"op":"save"})", R"({"op":"clipRect","rect":[100,200,20,60]})",
                   R"({"op":"concat","transform":[2,0,0,3,100,200]})",
                   R"({"op":"fill","path":[["M",0,0],["L",10,0],["L",10,20],["L",0,20],["Z"]],)"
                   R"("shape":["rect",0,0,10,20]})",
                   R"({"op":"restore"})"}));
}

TEST(NSImage, TheHandlerIsGivenTheImagesOwnRectangleWhateverTheDestination) {
  CGRect given;
  const auto image = NSImage::imageWithSize({10, 20}, false, [&given](CGRect rect) {
    given = rect;
    return true;
  });
  recordingOf([&] { image->drawInRect({100, 200, 20, 60}); });
  EXPECT_EQ(given, (CGRect{0, 0, 10, 20}));
}

TEST(NSImage, AFlippedImageHasItsFirstLineAtTheTop) {
  bool wasFlipped = false;
  const auto image = NSImage::imageWithSize({10, 20}, true, [&wasFlipped](CGRect) {
    wasFlipped = NSGraphicsContext::currentContext()->isFlipped();
    return true;
  });
  EXPECT_EQ(harness::only("concat", recordingOf([&] {
                            image->drawInRect({0, 0, 10, 20});
                          }))
                .back(),
            R"({"op":"concat","transform":[1,0,0,-1,0,20]})");
  EXPECT_TRUE(wasFlipped);
}

TEST(NSImage, UnderAnAlphaTheShapesOfAHandlerAreOnePicture) {
  const auto image = NSImage::imageWithSize({10, 10}, false, [](CGRect) {
    CGContext& context = NSGraphicsContext::currentContext()->CGContext();
    EXPECT_EQ(context.alpha(), 1);
    context.setAlpha(0.8);
    NSBezierPath::bezierPathWithRect({0, 0, 10, 10})->fill();
    return true;
  });
  const Lines lines = recordingOf([&] {
    CGContext& context = NSGraphicsContext::currentContext()->CGContext();
    context.setAlpha(0.5);
    image->drawInRect({0, 0, 10, 10});
    EXPECT_EQ(context.alpha(), 0.5);
    context.setAlpha(1);
    image->drawInRect({0, 0, 10, 10});
  });
  EXPECT_EQ(harness::only("beginTransparencyLayer", lines).size(), 1u);
  EXPECT_EQ(harness::only("endTransparencyLayer", lines).size(), 1u);
}

TEST(NSImage, AHandlerThatThrowsLeavesNoLayerBehind) {
  const auto image = NSImage::imageWithSize({10, 10}, false, [](CGRect) -> bool { throw std::runtime_error("refused"); });
  const Lines lines = recordingOf([&] {
    CGContext& context = NSGraphicsContext::currentContext()->CGContext();
    context.setAlpha(0.5);
    EXPECT_THROW(image->drawInRect({0, 0, 10, 10}), std::runtime_error);
    EXPECT_EQ(context.alpha(), 0.5);
    EXPECT_THROW(image->drawInRect({0, 0, 10, 10}, {.fraction = 0.25}), std::runtime_error);
    EXPECT_EQ(context.alpha(), 0.5);
  });
  const auto count = [&](std::string_view operation) { return harness::only(operation, lines).size(); };
  EXPECT_EQ(count("beginTransparencyLayer"), 2u);
  EXPECT_EQ(count("endTransparencyLayer"), 2u);
  EXPECT_EQ(count("save"), count("restore"));
}

TEST(NSImage, TheContextIsAsBeforeAfterARendering) {
  const auto image = NSImage::imageWithSize({10, 20}, true, [](CGRect) { return true; });
  recordingOf([&] {
    const auto before = NSGraphicsContext::currentContext();
    image->drawInRect({0, 0, 10, 20});
    EXPECT_EQ(NSGraphicsContext::currentContext(), before);
    EXPECT_FALSE(before->isFlipped());
  });
}

TEST(NSImage, ALaterSizeScalesWhatTheHandlerDraws) {
  const auto image = NSImage::imageWithSize({10, 20}, false, [](CGRect rect) { return rect.size.width == 10; });
  image->setSize({5, 5});
  EXPECT_EQ(image->size(), (CGSize{5, 5}));
  EXPECT_EQ(harness::only("concat", recordingOf([&] {
                            image->drawInRect({0, 0, 20, 20});
                          }))[0],
            R"({"op":"concat","transform":[2,0,0,1,0,0]})");
}

TEST(NSImage, AnEmptyImageOrDestinationRunsNoHandler) {
  int runs = 0;
  const auto handler = [&runs](CGRect) { return ++runs > 0; };
  EXPECT_TRUE(recordingOf([&] {
                NSImage::imageWithSize({0, 20}, false, handler)->drawInRect({0, 0, 10, 10});
                NSImage::imageWithSize({10, 20}, false, handler)->drawInRect({0, 0, 10, 0});
              }).empty());
  EXPECT_EQ(runs, 0);
}

TEST(NSImage, DrawingWithoutAContextDoesNothing) {
  int runs = 0;
  NSImage::imageWithSize({10, 20}, false, [&runs](CGRect) { return ++runs > 0; })->drawInRect({0, 0, 10, 20});
  EXPECT_EQ(runs, 0);
}

TEST(NSImage, OneThatWasMadeWithoutASizeDrawsItsRepresentationAtALaterSize) {
  const auto image = make<NSImage>(CGSize{});
  image->addRepresentation(make<NSImageRep>(
      std::make_shared<tessaluna::backend::ImagePixels>(tessaluna::backend::ImagePixels{1, 1, {0xFF000000}, true})));
  image->setSize({10, 10});
  EXPECT_EQ(harness::only("image", recordingOf([&] { image->drawInRect({0, 0, 10, 10}); })).size(), 1u);
}
