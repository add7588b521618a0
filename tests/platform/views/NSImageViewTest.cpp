#include "tessaluna/platform/views/NSImageView.h"

#include <gtest/gtest.h>

#include "tests/harness/ProbeView.h"
#include "tests/harness/StillWorld.h"
#include "tests/harness/printing.h"

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
  user.click(*window, {20, 20});
  EXPECT_TRUE(behind->calls.empty());
}

}  // namespace
}  // namespace tessaluna::platform
