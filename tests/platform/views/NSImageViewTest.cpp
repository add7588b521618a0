#include "tessaluna/platform/views/NSImageView.h"

#include <gtest/gtest.h>

#include "tessaluna/platform/foundation/NSCoder.h"
#include "tessaluna/platform/graphics/NSImageRep.h"
#include "tests/harness/ProbeView.h"
#include "tests/harness/StillWorld.h"
#include "tests/harness/printing.h"
#include "tests/harness/recordingOf.h"

namespace tessaluna::platform {
namespace {

struct NSImageViewTest : harness::StillWorld {
  Ref<NSImageView> view = make<NSImageView>(CGRect{10, 10, 100, 50});
};

TEST_F(NSImageViewTest, PlacesItsImageByItsScaling) {
  const struct {
    NSImageScaling scaling;
    CGSize size;
    CGRect expected;
  } cases[] = {
      {NSImageScaleProportionallyDown, {20, 10}, {40, 20, 20, 10}},
      {NSImageScaleProportionallyDown, {200, 50}, {0, 12.5, 100, 25}},
      {NSImageScaleAxesIndependently, {20, 10}, {0, 0, 100, 50}},
      {NSImageScaleNone, {200, 10}, {-50, 20, 200, 10}},
      {NSImageScaleProportionallyUpOrDown, {20, 20}, {25, 0, 50, 50}},
      {NSImageScaleProportionallyUpOrDown, {0, 0}, {50, 25, 0, 0}},
  };
  for (const auto& c : cases) {
    view->setImageScaling(c.scaling);
    EXPECT_EQ(view->imageRectForSize(c.size), c.expected) << c.scaling;
  }
  view->setImageFrameStyle(NSImageFramePhoto);
  view->setImageScaling(NSImageScaleAxesIndependently);
  EXPECT_EQ(view->imageRectForSize({5, 5}), (CGRect{1, 1, 98, 48}));
}

TEST_F(NSImageViewTest, HasYUpAndTheSizeOfItsImage) {
  EXPECT_FALSE(view->isFlipped());
  EXPECT_EQ(view->intrinsicContentSize(), (CGSize{-1, -1}));
  view->setImage(make<NSImage>(CGSize{7, 8}));
  EXPECT_EQ(view->intrinsicContentSize(), (CGSize{7, 8}));
}

TEST_F(NSImageViewTest, ANewImageIsDrawn) {
  const auto window = showWindowWith(view);
  int draws = 0;
  view->setImage(NSImage::imageWithSize({10, 10}, false, [&](CGRect) { return ++draws > 0; }));
  desktop.settle();
  EXPECT_EQ(draws, 1);
  EXPECT_EQ(nativeOf(*window).paints().size(), 1u);
}

TEST_F(NSImageViewTest, AnotherLookIsDrawnAgain) {
  const auto image = make<NSImage>(CGSize{7, 8});
  const auto window = showWindowWith(view);
  const auto redraws = [&](const auto& change) {
    desktop.settle();
    change();
    return view->needsDisplay();
  };
  EXPECT_TRUE(redraws([&] { view->setImageScaling(NSImageScaleNone); }));
  EXPECT_TRUE(redraws([&] { view->setImageFrameStyle(NSImageFramePhoto); }));
  EXPECT_TRUE(redraws([&] { view->setPreparesImages(true); }));
  EXPECT_TRUE(redraws([&] { view->setImage(image); }));
  // What the image draws may have changed.
  EXPECT_TRUE(redraws([&] { view->setImage(image); }));
}

TEST_F(NSImageViewTest, AnotherImageGetsTheRoomThatItNeeds) {
  const auto window = showWindowWith(view);
  window->layoutIfNeeded();
  ASSERT_FALSE(window->contentView()->needsLayout());
  view->setImage(make<NSImage>(CGSize{7, 8}));
  EXPECT_TRUE(window->contentView()->needsLayout());
}

TEST_F(NSImageViewTest, AFrameIsOneLineAroundTheImage) {
  const auto strokes = [&] { return harness::only("stroke", harness::recordingOf([&] { view->drawRect({}); })).size(); };
  EXPECT_EQ(strokes(), 0u);
  view->setImageFrameStyle(NSImageFramePhoto);
  EXPECT_EQ(strokes(), 1u);
}

TEST_F(NSImageViewTest, AnImageWithoutAHeightKeepsItsWidth) {
  view->setImageScaling(NSImageScaleProportionallyUpOrDown);
  EXPECT_EQ(view->imageRectForSize({20, 0}), (CGRect{40, 25, 20, 0}));
  EXPECT_EQ(view->imageRectForSize({0, 20}), (CGRect{50, 15, 0, 20}));
}

TEST_F(NSImageViewTest, IsDecodedWithItsLook) {
  NSCoder coder(R"({"frame": [0, 0, 100, 50], "imageScaling": "none", "imageFrameStyle": "photo", "editable": true})");
  const auto decoded = make<NSImageView>(coder);
  EXPECT_EQ(decoded->imageScaling(), NSImageScaleNone);
  EXPECT_EQ(decoded->imageFrameStyle(), NSImageFramePhoto);
  EXPECT_TRUE(decoded->isEditable());
}

TEST_F(NSImageViewTest, PassesMouseEventsOnUnlessItIsEditable) {
  const auto behind = make<harness::ProbeView>(CGRect{0, 0, 200, 150});
  const auto window = showWindowWith(behind);
  behind->addSubview(view);
  user.press(*window, {20, 20});
  user.dragTo({21, 21});
  user.release();
  const std::vector<std::string> passed{"mouseDown", "mouseDragged", "mouseUp"};
  std::vector<std::string> mouse;
  for (const std::string& call : behind->calls)
    if (call.starts_with("mouse")) mouse.push_back(call);
  EXPECT_EQ(mouse, passed);
  view->setEditable(true);
  behind->calls.clear();
  user.press(*window, {20, 20});
  user.dragTo({21, 21});
  user.release();
  EXPECT_TRUE(behind->calls.empty());
}

// An image that is one gray, of many pixels.
Ref<NSImage> largeImage(char gray, int width = 1600, int height = 800) {
  const std::string bytes = "P6 " + std::to_string(width) + " " + std::to_string(height) + " 255\n" +
                            std::string(static_cast<std::size_t>(width) * static_cast<std::size_t>(height) * 3, gray);
  return NSImage::initWithData(std::as_bytes(std::span(bytes)));
}

struct NSImageViewPreparingTest : NSImageViewTest {
  Ref<NSWindow> window = showWindowWith(view);
  NSImageViewPreparingTest() { view->setPreparesImages(true); }

  // Draws now what was asked for, without letting other threads work.
  harness::Lines drawn() {
    nativeOf(*window).forgetPaints();
    view->setNeedsDisplay(true);
    window->displayIfNeeded();
    return harness::only("image", nativeOf(*window).paints().back().lines);
  }
};

TEST_F(NSImageViewPreparingTest, AnImageOfManyPixelsComesReducedToWhatShowsOfIt) {
  const auto image = largeImage('x');
  view->setImage(image);
  EXPECT_EQ(drawn(), harness::Lines{}) << "not there yet";
  desktop.settle();
  EXPECT_EQ(drawn(), harness::Lines{R"({"op":"image","pixels":[100,50],"from":[0,0,100,50],"rect":[0,0,100,50]})"});
  EXPECT_NE(image->representations()[0]->encoded(), nullptr) << "the image keeps no pixels";
  desktop.setScale(2);
  EXPECT_EQ(drawn(), harness::Lines{R"({"op":"image","pixels":[100,50],"from":[0,0,100,50],"rect":[0,0,100,50]})"})
      << "until there are more";
  desktop.settle();
  EXPECT_EQ(drawn(), harness::Lines{R"({"op":"image","pixels":[200,100],"from":[0,0,200,100],"rect":[0,0,100,50]})"});
}

TEST_F(NSImageViewPreparingTest, TheEarlierPictureStaysUntilTheNextIsThere) {
  view->setImage(make<NSImage>(CGSize{10, 10}));
  view->setImage(largeImage('x'));
  drawn();
  desktop.settle();
  const auto first = view->pictureToDraw();
  view->setImage(largeImage('y', 800, 1600));
  EXPECT_EQ(view->pictureToDraw(), first);
  drawn();
  desktop.settle();
  EXPECT_NE(view->pictureToDraw(), first);
  EXPECT_EQ(drawn(), harness::Lines{R"({"op":"image","pixels":[25,50],"from":[0,0,25,50],"rect":[37.5,0,25,50]})"});
  const auto small = NSImage::imageWithSize({10, 10}, false, [](CGRect) { return true; });
  view->setImage(small);
  EXPECT_EQ(view->pictureToDraw(), small) << "one without many pixels is drawn at once";
  view->setImage(nullptr);
  EXPECT_EQ(view->pictureToDraw(), nullptr);
}

TEST_F(NSImageViewPreparingTest, ADamagedImageLeavesNothing) {
  view->setImage(largeImage('x'));
  drawn();
  desktop.settle();
  const std::string bytes =
      std::string("\x89PNG\r\n\x1A\n\0\0\0\rIHDR\0\0\x10\0\0\0\x10\0........", 32) + "IEND\xAE\x42\x60\x82";
  view->setImage(NSImage::initWithData(std::as_bytes(std::span(bytes))));
  EXPECT_EQ(drawn().size(), 1u) << "what was there before";
  desktop.settle();
  EXPECT_EQ(drawn(), harness::Lines{});
}

TEST_F(NSImageViewPreparingTest, TwoViewsOfAnImageShareWhatIsLargeEnoughForBoth) {
  const auto image = largeImage('x');
  const auto larger = make<NSImageView>(CGRect{0, 0, 200, 100});
  larger->setPreparesImages(true);
  larger->setImage(image);
  larger->prepareImageForSize({200, 100});
  view->setImage(image);
  drawn();
  desktop.settle();
  EXPECT_NE(view->pictureToDraw(), nullptr);
  EXPECT_EQ(view->pictureToDraw(), larger->pictureToDraw());
}

TEST_F(NSImageViewPreparingTest, AViewThatGoesMeanwhileHarmsNobody) {
  auto other = make<NSImageView>(CGRect{0, 0, 20, 10});
  other->setPreparesImages(true);
  other->setImage(largeImage('x'));
  other->prepareImageForSize({20, 10});
  other.reset();
  desktop.settle();
  view->setImage(largeImage('x'));
  drawn();
  view->setImage(nullptr);
  desktop.settle();
  EXPECT_EQ(drawn(), harness::Lines{});
}

TEST_F(NSImageViewPreparingTest, WithoutTheWishAnImageIsDecodedAsItIsDrawn) {
  view->setPreparesImages(false);
  const auto image = largeImage('x');
  view->setImage(image);
  EXPECT_EQ(drawn(), harness::Lines{R"({"op":"image","pixels":[1600,800],"from":[0,0,1600,800],"rect":[0,0,100,50]})"});
  view->setPreparesImages(true);
  EXPECT_EQ(view->pictureToDraw(), image) << "nothing is left to prepare";
}

}  // namespace
}  // namespace tessaluna::platform
