// What the viewer of covers can do beside what it does by itself.
#include "tessaluna/platform/accessibility/AccessibleDescription.h"
#include "tessaluna/platform/accessibility/accessibleTree.h"
#include "tessaluna/platform/foundation/NSBundle.h"
#include "tessaluna/platform/foundation/NSCoder.h"
#include "tests/harness/recordingOf.h"
#include "tests/uikit/coverart/CoverArtWorld.h"

namespace TessalunaUIKit {
namespace {

using namespace tessaluna::platform;

struct CoverArtAdditionsTest : harness::CoverArtWorld {
  CoverArtAdditionsTest() { thumbnail->setClosesByClickAndEscape(true); }

  void click() {
    user.click(*window, {40, 50});
    desktop.advance(0.5);
  }
};

TEST_F(CoverArtAdditionsTest, AreOffAtTheStart) {
  const auto other = make<CoverArtThumbnailView>(CGRect{});
  EXPECT_FALSE(other->closesByClickAndEscape());
  EXPECT_FALSE(other->preparesImages());
}

TEST_F(CoverArtAdditionsTest, ThePanelPreparesItsImageOnlyIfTheThumbnailDoes) {
  enlarge(300, 100);
  EXPECT_FALSE(shown()->preparesImages());
}

TEST_F(CoverArtAdditionsTest, AnotherActionThanAPressOpensNothing) {
  thumbnail->setImage(imageOf(300, 100));
  thumbnail->accessibilityPerformAction(NSAccessibilityShowMenuAction);
  EXPECT_EQ(panel(), nullptr);
}

TEST_F(CoverArtAdditionsTest, AClickInThePanelClosesIt) {
  enlarge(300, 100);
  user.press(*panel(), {100, 50});
  EXPECT_NE(panel(), nullptr);
  user.release();
  EXPECT_EQ(panel(), nullptr);
  desktop.advance(0.001);
  mouseUp();
  EXPECT_NE(panel(), nullptr);
}

TEST_F(CoverArtAdditionsTest, ADragOfThePanelMovesItAndIsNotAClick) {
  enlarge(300, 100);
  user.press(*panel(), {100, 50});
  user.dragTo({140, 70});
  user.release();
  ASSERT_NE(panel(), nullptr);
  EXPECT_NE(panel()->frame().origin, (CGPoint{120, 54}));
}

TEST_F(CoverArtAdditionsTest, TheEscapeKeyClosesThePanelAndOtherKeysDoNot) {
  enlarge(300, 100);
  user.pressKey("x");
  user.pressKey("\r");
  EXPECT_NE(panel(), nullptr);
  user.pressKey("\x1B");
  EXPECT_EQ(panel(), nullptr);
  desktop.advance(0.001);
}

TEST_F(CoverArtAdditionsTest, AClickSoonAfterTheEscapeKeyOpensThePanelAgain) {
  enlarge(300, 100);
  user.pressKey("\x1B");
  desktop.advance(0.01);
  user.click(*window, {40, 50});
  EXPECT_NE(panel(), nullptr);
}

TEST_F(CoverArtAdditionsTest, BothCloseTheEmptySquareAsWell) {
  for (int i = 0; i < 2; ++i) {
    enlarge(300, 100);
    thumbnail->setImage(nullptr);
    desktop.advance(0.3);
    ASSERT_EQ(panel()->frame().size, (CGSize{64, 64}));
    if (i == 0) user.pressKey("\x1B");
    else user.click(*panel(), {30, 30});
    EXPECT_EQ(panel(), nullptr);
    desktop.advance(0.001);
  }
}

// A cover smaller than its thumbnail leaves that to be pressed, which takes the key status from the panel.
TEST_F(CoverArtAdditionsTest, APressOnTheThumbnailThatClosesThePanelOpensNoOtherAsItEnds) {
  thumbnail->setImage(imageOf(10, 10));
  click();
  ASSERT_NE(panel(), nullptr);
  user.press(*window, {40, 50});
  EXPECT_EQ(panel(), nullptr);
  desktop.advance(0.08);
  user.release();
  EXPECT_EQ(panel(), nullptr);
  desktop.advance(0.2);
  click();
  EXPECT_NE(panel(), nullptr) << "the next click opens it";
}

TEST_F(CoverArtAdditionsTest, WithoutTheAdditionItOpensAgain) {
  thumbnail->setClosesByClickAndEscape(false);
  thumbnail->setImage(imageOf(10, 10));
  click();
  user.press(*window, {40, 50});
  desktop.advance(0.08);
  user.release();
  EXPECT_NE(panel(), nullptr);
}

TEST_F(CoverArtAdditionsTest, AssistiveClientsPressTheImage) {
  thumbnail->setClosesByClickAndEscape(false);
  EXPECT_EQ(thumbnail->accessibilityRole(), NSAccessibilityImageRole);
  EXPECT_EQ(thumbnail->accessibilityActionNames(), std::vector<std::string>{}) << "there is nothing to enlarge";
  thumbnail->setImage(imageOf(300, 100));
  EXPECT_EQ(thumbnail->accessibilityActionNames(), std::vector<std::string>{std::string(NSAccessibilityPressAction)});
  thumbnail->accessibilityPerformAction(NSAccessibilityPressAction);
  ASSERT_NE(panel(), nullptr);
  EXPECT_EQ(shown()->accessibilityRole(), NSAccessibilityImageRole);
  thumbnail->setImage(nullptr);
  EXPECT_EQ(thumbnail->accessibilityActionNames(), std::vector<std::string>{std::string(NSAccessibilityPressAction)})
      << "there is a panel to close";
  thumbnail->accessibilityPerformAction(NSAccessibilityPressAction);
  EXPECT_EQ(panel(), nullptr);
}

TEST_F(CoverArtAdditionsTest, OneThatTheHostReleasesAsItsPanelTakesTheKeyStatusLivesUntilAClientsPressIsOver) {
  thumbnail->setImage(imageOf(300, 100));
  const WeakRef<CoverArtThumbnailView> weak = thumbnail;
  bool livesInside = false;
  const Ref<NSObject> token = NSNotificationCenter::defaultCenter().addObserverForName(
      NSWindowDidBecomeKeyNotification, nullptr, nullptr, [&](const Ref<NSNotification>&) {
        if (!thumbnail) return;
        thumbnail->removeFromSuperview();
        thumbnail.reset();
        livesInside = !weak.expired();
      });
  thumbnail->accessibilityPerformAction(NSAccessibilityPressAction);
  NSNotificationCenter::defaultCenter().removeObserver(token);
  EXPECT_TRUE(livesInside);
  EXPECT_TRUE(weak.expired());
  EXPECT_EQ(panel(), nullptr);
}

TEST_F(CoverArtAdditionsTest, ToAssistiveClientsPanelAndImageAreCalledAsTheThumbnailIs) {
  const auto names = [&] { return accessibleTreeLines(panel()); };
  enlarge(300, 100);
  EXPECT_EQ(names(), (std::vector<std::string>{R"(window "Enlarged cover" [active])", R"(  image "Enlarged cover" [])"}));
  thumbnail->accessibilitySetOverrideValue("Cover of Slow orbit", NSAccessibilityDescriptionAttribute);
  thumbnail->setImage(imageOf(100, 300));
  EXPECT_EQ(names(),
            (std::vector<std::string>{R"(window "Cover of Slow orbit" [active])", R"(  image "Cover of Slow orbit" [])"}));
}

TEST_F(CoverArtAdditionsTest, ANamelessCoverIsCalledSoInTheUsersLanguage) {
  NSBundle::mainBundle()->setStringTable({{"Enlarged cover", "Pochette agrandie"}});
  enlarge(300, 100);
  EXPECT_EQ(accessibleNameOf(panel()), "Pochette agrandie");
  NSBundle::mainBundle()->setStringTable({});
}

struct CoverArtPreparingTest : harness::CoverArtWorld {
  CoverArtPreparingTest() { thumbnail->setPreparesImages(true); }

  static Ref<NSImage> largeImage(int width, int height) {
    const std::string bytes = "P6 " + std::to_string(width) + " " + std::to_string(height) + " 255\n" +
                              std::string(static_cast<std::size_t>(width) * static_cast<std::size_t>(height) * 3, 'x');
    return NSImage::initWithData(std::as_bytes(std::span(bytes)));
  }
  static int pixelsShown() {
    const auto picture = shown()->pictureToDraw();
    return picture ? picture->representations()[0]->pixelsWide() : 0;
  }
};

TEST_F(CoverArtPreparingTest, ThePanelShowsTheThumbnailsPictureUntilItsOwnIsThere) {
  const auto image = largeImage(2000, 1000);
  thumbnail->setImage(image);
  desktop.settle();
  desktop.settle();
  mouseUp();
  EXPECT_EQ(panel()->frame().size, (CGSize{308, 154})) << "the size is known before";
  EXPECT_EQ(pixelsShown(), 64);
  desktop.settle();
  EXPECT_EQ(pixelsShown(), 308);
  EXPECT_NE(image->representations()[0]->encoded(), nullptr);
}

TEST_F(CoverArtPreparingTest, AnImageThatIsSetWhileItIsEnlargedTakesThePlaceOfTheOtherWhenItIsThere) {
  thumbnail->setImage(largeImage(2000, 1000));
  mouseUp();
  desktop.settle();
  ASSERT_EQ(pixelsShown(), 308);
  thumbnail->setImage(largeImage(1000, 2000));
  EXPECT_EQ(pixelsShown(), 308);
  desktop.advance(0.3);
  EXPECT_EQ(pixelsShown(), 77);
  EXPECT_EQ(thumbnail->pictureToDraw(), shown()->pictureToDraw()) << "decoded once for both";
}

TEST_F(CoverArtPreparingTest, AClosedPanelKeepsNoPicture) {
  thumbnail->setImage(largeImage(2000, 1000));
  desktop.settle();
  desktop.settle();
  mouseUp();
  desktop.settle();
  const WeakRef<NSImage> picture = shown()->pictureToDraw();
  mouseUp();
  desktop.advance(0.001);
  EXPECT_TRUE(picture.expired());
}

TEST_F(CoverArtPreparingTest, AThumbnailThatGoesMeanwhileHarmsNobody) {
  thumbnail->setImage(largeImage(2000, 1000));
  mouseUp();
  thumbnail->removeFromSuperview();
  thumbnail.reset();
  desktop.advance(1);
  EXPECT_EQ(panel(), nullptr);
}

}  // namespace
}  // namespace TessalunaUIKit
