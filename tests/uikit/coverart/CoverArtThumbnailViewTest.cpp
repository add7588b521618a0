#include "tessaluna/uikit/coverart/CoverArtThumbnailView.h"

#include <cmath>
#include <functional>
#include <utility>

#include "tessaluna/platform/foundation/NSCoder.h"
#include "tessaluna/platform/foundation/NSNotificationCenter.h"
#include "tessaluna/platform/graphics/NSColor.h"
#include "tests/harness/allocations.h"
#include "tests/harness/recordingOf.h"
#include "tests/uikit/coverart/CoverArtWorld.h"

namespace TessalunaUIKit {
namespace {

using namespace tessaluna::platform;

struct CoverArtThumbnailViewTest : harness::CoverArtWorld {
  CoverArtThumbnailViewTest() {
    token_ = NSNotificationCenter::defaultCenter().addObserverForName(
        NSWindowWillCloseNotification, nullptr, nullptr, [this](const Ref<NSNotification>& notification) {
          const auto panel = std::dynamic_pointer_cast<CoverArtPanel>(notification->object());
          if (!panel) return;
          ++closings;
          wasChildAtClosing = wasChildAtClosing || panel->parentWindow();
          if (onClosing) std::exchange(onClosing, nullptr)();
        });
  }
  ~CoverArtThumbnailViewTest() override { NSNotificationCenter::defaultCenter().removeObserver(token_); }

  int closings = 0;  // how often a panel was closed, open or not
  bool wasChildAtClosing = false;
  std::function<void()> onClosing;  // once

 private:
  Ref<NSObject> token_;
};

TEST_F(CoverArtThumbnailViewTest, StartsUnenlargedWithAPointPerPixel) {
  EXPECT_FALSE(thumbnail->scaleToScreenResolution());
  EXPECT_EQ(panel(), nullptr);
  NSCoder coder(R"({"frame": [1, 2, 3, 4], "scaleToScreenResolution": true})");
  const auto archived = make<CoverArtThumbnailView>(coder);
  EXPECT_FALSE(archived->scaleToScreenResolution());
  EXPECT_EQ(archived->frame(), (CGRect{1, 2, 3, 4}));
  EXPECT_EQ(archived->image(), nullptr);
}

TEST_F(CoverArtThumbnailViewTest, AClickOpensAPanelWithTheImage) {
  enlarge(300, 100);
  ASSERT_NE(panel(), nullptr);
  EXPECT_EQ(panel()->frame(), (CGRect{120, 54, 300, 100}));
  EXPECT_EQ(panel()->styleMask(), 0x100u);
  EXPECT_EQ(panel()->delegate(), thumbnail);
  EXPECT_EQ(panel()->parentWindow(), window.get());
  EXPECT_TRUE(panel()->isKeyWindow());
  ASSERT_NE(shown(), nullptr);
  EXPECT_EQ(shown()->frame(), (CGRect{0, 0, 300, 100}));
  EXPECT_EQ(shown()->image(), thumbnail->image());
  EXPECT_EQ(shown()->imageScaling(), NSImageScaleProportionallyUpOrDown);
  EXPECT_EQ(shown()->imageFrameStyle(), NSImageFrameNone);
}

TEST_F(CoverArtThumbnailViewTest, TheBaseClassGetsTheClickFirst) {
  const auto behind = make<harness::ProbeView>(CGRect{0, 0, 200, 150});
  window->contentView()->addSubview(behind);
  behind->addSubview(thumbnail);
  thumbnail->setImage(imageOf(10, 10));
  std::size_t panelsThen = 99;
  behind->onCall = [&](const std::string& what) {
    if (what == "mouseUp") panelsThen = panels().size();
  };
  mouseUp();
  EXPECT_EQ(panelsThen, 0u);
  EXPECT_EQ(panels().size(), 1u);
}

TEST_F(CoverArtThumbnailViewTest, AThumbnailThatIsReleasedByWhoeverGetsTheClickLeavesNoPanel) {
  const auto behind = make<harness::ProbeView>(CGRect{0, 0, 200, 150});
  window->contentView()->addSubview(behind);
  behind->addSubview(thumbnail);
  thumbnail->setImage(imageOf(10, 10));
  const WeakRef<CoverArtThumbnailView> weak = thumbnail;
  behind->onCall = [&](const std::string& what) {
    if (what != "mouseUp") return;
    thumbnail->removeFromSuperview();
    thumbnail.reset();
  };
  mouseUp();
  EXPECT_TRUE(weak.expired());
  EXPECT_EQ(panel(), nullptr);
  desktop.advance(0.01);
}

TEST_F(CoverArtThumbnailViewTest, WithoutAnImageAClickOpensNothing) {
  mouseUp();
  EXPECT_EQ(panel(), nullptr);
  EXPECT_EQ(desktop.windows().size(), 1u);
}

TEST_F(CoverArtThumbnailViewTest, TheFrameFollowsScreenScaleAndRoom) {
  const struct {
    const char* name;
    CGRect content;  // of the window; the thumbnail is at (20, 30) in it, 64 points wide and high
    bool toScreenResolution;
    int wide, high;
    CGRect expected;
  } cases[] = {
      {"the plain screen", {100, 700, 200, 150}, false, 300, 300, {120, 494, 300, 300}},
      {"a device pixel is a point there", {100, 700, 200, 150}, true, 300, 300, {120, 494, 300, 300}},
      {"the visible width of the plain screen", {1200, 700, 200, 150}, false, 440, 44, {1220, 772, 220, 22}},
      {"the fine screen by points", {1500, 600, 200, 150}, false, 400, 300, {1520, 394, 400, 300}},
      {"the fine screen by device pixels", {1500, 600, 200, 150}, true, 1000, 1000, {1520, 194, 500, 500}},
      {"too wide for the fine screen", {2400, 600, 200, 150}, true, 1200, 300, {2420, 619, 300, 75}},
      {"down to the visible frame's foot", {1500, 200, 200, 150}, false, 1000, 1000, {1520, 40, 254, 254}},
  };
  for (const auto& each : cases) {
    SCOPED_TRACE(each.name);
    window->setFrame(each.content, false);
    thumbnail->setScaleToScreenResolution(each.toScreenResolution);
    enlarge(each.wide, each.high);
    ASSERT_NE(panel(), nullptr);
    EXPECT_EQ(panel()->frame(), each.expected);
    thumbnail->closeEnlargedView();
    desktop.advance(0.01);
  }
}

TEST_F(CoverArtThumbnailViewTest, TheFrameFollowsBoundsThatStartElsewhere) {
  thumbnail->setBoundsOrigin({7, -3});
  enlarge(20, 10);
  EXPECT_EQ(panel()->frame(), (CGRect{120, 144, 20, 10}));
}

TEST_F(CoverArtThumbnailViewTest, TheWidestRepresentationCountsAndAllAreSetToTheirPixels) {
  const auto image = imageOf(100, 50);
  image->addRepresentation(make<NSImageRep>(CGSize{1, 1}, 200, 80));
  image->addRepresentation(make<NSImageRep>(CGSize{1, 1}, 200, 90));
  thumbnail->setImage(image);
  EXPECT_EQ(image->representations()[0]->size(), (CGSize{8, 8})) << "nothing is measured before";
  mouseUp();
  EXPECT_EQ(panel()->frame().size, (CGSize{200, 80}));
  for (const Ref<NSImageRep>& each : image->representations())
    EXPECT_EQ(each->size(), (CGSize{double(each->pixelsWide()), double(each->pixelsHigh())}));
}

TEST_F(CoverArtThumbnailViewTest, WithoutPixelsThePanelHasNoSize) {
  const auto image = NSImage::imageWithSize({50, 50}, false, [](CGRect) { return true; });
  for (const Ref<NSImage>& each : {image, imageOf(0, 0)}) {
    thumbnail->setImage(each);
    mouseUp();
    ASSERT_NE(panel(), nullptr);
    EXPECT_EQ(panel()->frame(), (CGRect{120, 154, 0, 0}));
    EXPECT_FALSE(nativeOf(*panel()).isVisible());
    mouseUp();
    EXPECT_EQ(panel(), nullptr);
    desktop.advance(0.01);
  }
}

TEST_F(CoverArtThumbnailViewTest, WithoutAWindowThePanelHasAFixedFrameAndNoParent) {
  thumbnail->removeFromSuperview();
  for (const int size : {10, 5000}) {
    enlarge(size, size);
    ASSERT_NE(panel(), nullptr);
    EXPECT_EQ(panel()->frame(), (CGRect{0, 0, 1400, 900}));
    EXPECT_EQ(panel()->parentWindow(), nullptr);
    thumbnail->closeEnlargedView();
    EXPECT_EQ(panel(), nullptr);
    desktop.advance(0.01);
  }
}

TEST_F(CoverArtThumbnailViewTest, InAWindowThatNoScreenShowsTheRoomIsThatOf1400Points) {
  window->setFrame({100, 5000, 200, 150}, false);
  ASSERT_EQ(window->screen(), nullptr);
  enlarge(2560, 256);
  EXPECT_EQ(panel()->frame(), (CGRect{120, 5094 - 128, 1280, 128}));
  thumbnail->closeEnlargedView();
  desktop.advance(0.001);
  enlarge(100, 10188);
  EXPECT_EQ(panel()->frame(), (CGRect{120, 0, 50, 5094})) << "down to where screens begin";
}

TEST_F(CoverArtThumbnailViewTest, AWindowThatNoScreenShowsKeepsItsDevicePixels) {
  desktop.setScreens({{{0, 0, 1440, 900}, {0, 0, 1440, 900}, 2}});
  desktop.setScreens({});
  ASSERT_EQ(window->screen(), nullptr);
  ASSERT_EQ(window->backingScaleFactor(), 2);
  thumbnail->setScaleToScreenResolution(true);
  enlarge(300, 100);
  EXPECT_EQ(panel()->frame().size, (CGSize{150, 50}));
}

TEST_F(CoverArtThumbnailViewTest, ThePanelIsAChildOfAWindowThatIsHiddenToo) {
  window->orderOut(nullptr);
  enlarge(300, 100);
  ASSERT_NE(panel(), nullptr);
  EXPECT_EQ(panel()->parentWindow(), window.get());
  EXPECT_TRUE(panel()->isKeyWindow());
}

TEST_F(CoverArtThumbnailViewTest, TheNextClickClosesThePanel) {
  enlarge(300, 100);
  const Ref<CoverArtPanel> opened = panel();
  mouseUp();
  EXPECT_FALSE(opened->isVisible());
  EXPECT_EQ(opened->parentWindow(), nullptr);
  EXPECT_FALSE(wasChildAtClosing) << "it leaves its window first";
  EXPECT_TRUE(window->childWindows().empty());
  desktop.advance(0.001);
  EXPECT_EQ(opened.use_count(), 1) << "nobody else keeps it";
  mouseUp();
  EXPECT_NE(panel(), nullptr);
}

TEST_F(CoverArtThumbnailViewTest, WhateverTakesTheKeyStatusClosesThePanel) {
  const auto other = make<NSWindow>(CGRect{900, 500, 50, 50}, NSWindowStyleMaskTitled, NSBackingStoreBuffered, true);
  const std::function<void()> ways[] = {[&] { other->makeKeyAndOrderFront(nullptr); },
                                        [&] { panel()->windowClient().nativeKeyStatusChanged(false); },
                                        [&] {
                                          user.click(*window, {150, 10});
                                        },
                                        [&] { panel()->orderOut(nullptr); }};
  for (const auto& way : ways) {
    enlarge(300, 100);
    ASSERT_TRUE(panel()->isKeyWindow());
    way();
    EXPECT_EQ(panel(), nullptr);
    desktop.advance(0.001);
  }
}

TEST_F(CoverArtThumbnailViewTest, AClickOrAKeyInThePanelDoesNothing) {
  enlarge(300, 100);
  user.click(*panel(), {100, 50});
  user.pressKey("\x1B");
  desktop.advance(1);
  EXPECT_NE(panel(), nullptr);
}

TEST_F(CoverArtThumbnailViewTest, ForAMillisecondAClickClosesAgainInsteadOfOpening) {
  enlarge(300, 100);
  mouseUp();
  const int closed = closings;
  desktop.advance(0.0009);
  mouseUp();
  EXPECT_EQ(closings, closed + 1);
  EXPECT_EQ(panel(), nullptr);
  // The first blocks fall due, and the next click opens.
  desktop.advance(0.0001);
  mouseUp();
  EXPECT_NE(panel(), nullptr);
  EXPECT_EQ(closings, closed + 1);
}

// Intentional: a block does not ask which panel it forgets.
TEST_F(CoverArtThumbnailViewTest, TheBlockOfASecondClosingForgetsAPanelThatWasOpenedMeanwhile) {
  enlarge(300, 100);
  mouseUp();
  desktop.advance(0.0009);
  mouseUp();  // its block falls due at 0.0019
  desktop.advance(0.0001);
  mouseUp();
  const Ref<CoverArtPanel> opened = panel();
  desktop.advance(0.001);
  mouseUp();
  // The click opens another one, which the forgotten one closes as it loses the key status to it.
  EXPECT_EQ(panels(), std::vector<Ref<CoverArtPanel>>{opened});
}

TEST_F(CoverArtThumbnailViewTest, ClosingAKeyPanelComesBackOnceThroughItsKeyStatus) {
  enlarge(300, 100);
  ASSERT_TRUE(panel()->isKeyWindow());
  thumbnail->closeEnlargedView();
  EXPECT_EQ(closings, 2);
  desktop.advance(0.001);  // both blocks
  thumbnail->closeEnlargedView();
  EXPECT_EQ(closings, 2) << "none is open";
  enlarge(300, 100);
  nativeOf(*window).requestKey();
  EXPECT_EQ(closings, 3) << "it has no status to lose any more";
}

TEST_F(CoverArtThumbnailViewTest, ClosingAPanelWithoutKeyStatusClosesOnce) {
  enlarge(0, 0);
  ASSERT_FALSE(panel()->isKeyWindow());
  thumbnail->closeEnlargedView();
  EXPECT_EQ(closings, 1);
}

TEST_F(CoverArtThumbnailViewTest, ANewImageMovesTheOpenPanelToItsFrameWithAnAnimation) {
  enlarge(300, 100);
  const Ref<CoverArtPanel> opened = panel();
  const Ref<NSImageView> earlier = shown();
  const auto image = imageOf(100, 50);
  thumbnail->setImage(image);
  EXPECT_EQ(panel(), opened);
  EXPECT_NE(shown(), earlier);
  EXPECT_EQ(shown()->image(), image);
  EXPECT_EQ(shown()->imageScaling(), NSImageScaleProportionallyUpOrDown);
  EXPECT_EQ(opened->frame(), (CGRect{120, 54, 300, 100})) << "on its way, but not moved yet";
  desktop.advance(0.1);
  EXPECT_LT(opened->frame().size.width, 300);
  EXPECT_GT(opened->frame().size.width, 100);
  EXPECT_NEAR(CGRectGetMaxY(opened->frame()), 154, 1e-9) << "the upper left corner stays";
  desktop.advance(0.2);
  EXPECT_EQ(opened->frame(), (CGRect{120, 104, 100, 50}));
  EXPECT_EQ(shown()->frame(), (CGRect{0, 0, 100, 50}));
  EXPECT_EQ(panel(), opened);
  EXPECT_TRUE(opened->isKeyWindow());
}

TEST_F(CoverArtThumbnailViewTest, WhereLessMotionIsWantedThePanelMovesAtOnce) {
  desktop.setPrefersReducedMotion(true);
  enlarge(300, 100);
  thumbnail->setImage(imageOf(100, 50));
  EXPECT_EQ(panel()->frame(), (CGRect{120, 104, 100, 50}));
}

TEST_F(CoverArtThumbnailViewTest, AnAbsentImageLeavesAnEmptySquareOfTheWindowsColor) {
  enlarge(300, 100);
  panel()->setBackgroundColor(NSColor::redColor());
  thumbnail->setImage(nullptr);
  EXPECT_EQ(panel()->contentView(), nullptr);
  EXPECT_EQ(panel()->backgroundColor(), NSColor::windowBackgroundColor());
  EXPECT_EQ(panel()->frame(), (CGRect{120, 54, 300, 100})) << "on its way, but not moved yet";
  desktop.advance(0.3);
  ASSERT_NE(panel(), nullptr);
  EXPECT_EQ(panel()->frame(), (CGRect{120, 90, 64, 64}));
  const harness::Lines& last = nativeOf(*panel()).paints().back().lines;
  EXPECT_EQ(harness::only("image", last), harness::Lines{});
  EXPECT_EQ(harness::only("setFillColor", last),
            harness::Lines{R"({"op":"setFillColor","color":[0.93,0.93,0.93,1],"named":"windowBackgroundColor"})"});
  mouseUp();
  EXPECT_EQ(panel(), nullptr) << "a click closes it";
}

TEST_F(CoverArtThumbnailViewTest, TheEmptySquareIsSmallerOnAFineScreen) {
  window->setFrame({1500, 600, 200, 150}, false);
  thumbnail->setScaleToScreenResolution(true);
  enlarge(300, 100);
  thumbnail->setImage(nullptr);
  desktop.advance(0.3);
  EXPECT_EQ(panel()->frame(), (CGRect{1520, 662, 32, 32}));
}

TEST_F(CoverArtThumbnailViewTest, AnotherImageComesIntoTheEmptySquare) {
  enlarge(300, 100);
  thumbnail->setImage(nullptr);
  desktop.advance(0.3);
  thumbnail->setImage(imageOf(200, 60));
  desktop.advance(0.3);
  ASSERT_NE(shown(), nullptr);
  EXPECT_EQ(panel()->frame(), (CGRect{120, 94, 200, 60}));
}

TEST_F(CoverArtThumbnailViewTest, AnImageThatIsSetWhileThePanelClosesOpensNothing) {
  enlarge(300, 100);
  const Ref<CoverArtPanel> closing = panel();
  thumbnail->closeEnlargedView();
  thumbnail->setImage(imageOf(50, 50));
  EXPECT_FALSE(closing->isVisible());
  EXPECT_EQ(closing->frame().size, (CGSize{50, 50})) << "the panel is still there";
  desktop.advance(0.001);
  thumbnail->setImage(imageOf(60, 60));
  EXPECT_EQ(closing->frame().size, (CGSize{50, 50}));
}

TEST_F(CoverArtThumbnailViewTest, AResolutionThatIsSetCountsForTheNextFrame) {
  window->setFrame({1500, 600, 200, 150}, false);
  enlarge(300, 100);
  thumbnail->setScaleToScreenResolution(true);
  EXPECT_EQ(panel()->frame().size, (CGSize{300, 100}));
  thumbnail->setImage(thumbnail->image());
  desktop.advance(0.3);
  EXPECT_EQ(panel()->frame().size, (CGSize{150, 50}));
}

TEST_F(CoverArtThumbnailViewTest, ThePanelMovesWithItsWindow) {
  enlarge(300, 100);
  window->setFrame({150, 80, 200, 150}, false);
  EXPECT_EQ(panel()->frame(), (CGRect{170, 74, 300, 100}));
}

TEST_F(CoverArtThumbnailViewTest, APanelWhoseWindowMovesWhileItIsResizedGetsItsWholeSize) {
  enlarge(300, 100);
  thumbnail->setImage(imageOf(100, 50));
  desktop.advance(0.1);
  nativeOf(*window).moveByUser({150, 80, 200, 150});
  EXPECT_EQ(panel()->frame(), (CGRect{170, 124, 100, 50}));
  desktop.advance(0.3);
  EXPECT_EQ(panel()->frame(), (CGRect{170, 124, 100, 50}));
}

// Nothing times less than nothing, divided by nothing.
TEST_F(CoverArtThumbnailViewTest, AnImageWithoutPixelsWhereThereIsNoRoomShowsNothing) {
  window->setFrame({100, -400, 200, 150}, false);
  enlarge(0, 0);
  ASSERT_NE(panel(), nullptr);
  EXPECT_TRUE(std::isnan(panel()->frame().size.width));
  EXPECT_FALSE(nativeOf(*panel()).isVisible());
  EXPECT_EQ(nativeOf(*panel()).frame(), CGRect{});
  window->setFrame({100, 60, 200, 150}, false);
  thumbnail->setImage(imageOf(30, 20));
  desktop.advance(0.3);
  EXPECT_EQ(panel()->frame(), (CGRect{120, 134, 30, 20}));
  EXPECT_TRUE(nativeOf(*panel()).isVisible());
}

TEST_F(CoverArtThumbnailViewTest, APressThatIsTakenFromItIsNotAClick) {
  thumbnail->setImage(imageOf(300, 100));
  user.press(*window, {40, 50});
  thumbnail->removeFromSuperview();
  user.release();
  EXPECT_EQ(panel(), nullptr);
  window->contentView()->addSubview(thumbnail);
  window->setMovableByWindowBackground(true);
  user.press(*window, {40, 50});
  user.dragTo({60, 80});
  user.release();
  EXPECT_EQ(panel(), nullptr) << "the window was dragged";
}

TEST_F(CoverArtThumbnailViewTest, AReleaseBesideItIsAClick) {
  thumbnail->setImage(imageOf(300, 100));
  user.press(*window, {40, 50});
  user.dragTo({190, 140});
  user.release();
  EXPECT_NE(panel(), nullptr);
}

TEST_F(CoverArtThumbnailViewTest, AThumbnailThatGoesClosesItsPanel) {
  enlarge(300, 100);
  const Ref<CoverArtPanel> opened = panel();
  thumbnail->removeFromSuperview();
  EXPECT_TRUE(opened->isVisible()) << "out of its window it may come back";
  thumbnail.reset();
  EXPECT_FALSE(opened->isVisible());
  EXPECT_TRUE(window->childWindows().empty());
  desktop.advance(0.01);
}

TEST_F(CoverArtThumbnailViewTest, AThumbnailThatGoesWhileItsPanelMovesOrClosesHarmsNobody) {
  enlarge(300, 100);
  thumbnail->setImage(imageOf(30, 30));
  desktop.advance(0.05);
  thumbnail->removeFromSuperview();
  thumbnail.reset();
  desktop.advance(1);
  EXPECT_EQ(panel(), nullptr);

  thumbnail = make<CoverArtThumbnailView>(CGRect{20, 30, 64, 64});
  window->contentView()->addSubview(thumbnail);
  enlarge(300, 100);
  thumbnail->closeEnlargedView();
  thumbnail->removeFromSuperview();
  const WeakRef<CoverArtThumbnailView> weak = thumbnail;
  thumbnail.reset();
  EXPECT_TRUE(weak.expired()) << "the delayed block does not keep it";
  desktop.advance(1);
}

TEST_F(CoverArtThumbnailViewTest, OneThatTheHostReleasesAsItsPanelClosesHarmsNobody) {
  enlarge(300, 100);
  const WeakRef<CoverArtThumbnailView> weak = thumbnail;
  onClosing = [&] {
    thumbnail->removeFromSuperview();
    thumbnail.reset();
  };
  thumbnail->closeEnlargedView();
  EXPECT_TRUE(weak.expired());
  EXPECT_EQ(panel(), nullptr);
  desktop.advance(0.01);
}

TEST_F(CoverArtThumbnailViewTest, OneThatTheHostClosesAsItTakesTheKeyStatusStaysClosed) {
  const auto token = NSNotificationCenter::defaultCenter().addObserverForName(
      NSWindowDidResignKeyNotification, window, nullptr,
      [&](const Ref<NSNotification>&) { thumbnail->closeEnlargedView(); });
  enlarge(300, 100);
  NSNotificationCenter::defaultCenter().removeObserver(token);
  EXPECT_EQ(panel(), nullptr);
  EXPECT_TRUE(window->childWindows().empty());
  EXPECT_EQ(NSApp->keyWindow(), nullptr);
  desktop.advance(0.001);
  mouseUp();
  EXPECT_NE(panel(), nullptr);
}

TEST_F(CoverArtThumbnailViewTest, OneThatLosesTheKeyStatusAsItTakesItCloses) {
  const auto token = NSNotificationCenter::defaultCenter().addObserverForName(
      NSWindowDidBecomeKeyNotification, nullptr, nullptr, [&](const Ref<NSNotification>& notification) {
        if (std::dynamic_pointer_cast<CoverArtPanel>(notification->object())) window->makeKeyAndOrderFront(nullptr);
      });
  enlarge(300, 100);
  NSNotificationCenter::defaultCenter().removeObserver(token);
  EXPECT_EQ(panel(), nullptr);
  EXPECT_TRUE(window->isKeyWindow());
}

TEST_F(CoverArtThumbnailViewTest, AWindowThatClosesTakesThePanelWithIt) {
  enlarge(300, 100);
  const WeakRef<CoverArtPanel> opened = panel();
  window->close();
  EXPECT_EQ(panel(), nullptr);
  desktop.advance(0.01);
  EXPECT_TRUE(opened.expired());
}

TEST_F(CoverArtThumbnailViewTest, AThousandPanelsLeaveNothingBehind) {
  // Opened, changed and closed, also while it moves.
  const auto cycle = [&](int i) {
    enlarge(300, 100);
    thumbnail->setImage(i % 2 ? imageOf(40, 40) : nullptr);
    if (i % 3) desktop.advance(0.1);
    thumbnail->closeEnlargedView();
    desktop.advance(1);
    thumbnail->setImage(nullptr);
    desktop.settle();
    nativeOf(*window).forgetPaints();
    ASSERT_EQ(desktop.windows().size(), 1u) << i;
  };
  for (int i = 0; i < 60; ++i) cycle(i);
  const long before = harness::allocationsAlive;
  for (int i = 60; i < 1060; ++i) cycle(i);
  EXPECT_LE(harness::allocationsAlive, before + 10);
}

}  // namespace
}  // namespace TessalunaUIKit
