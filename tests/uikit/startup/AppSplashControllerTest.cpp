#include "tessaluna/uikit/startup/AppSplashController.h"

#include <gtest/gtest.h>

#include "tessaluna/platform/interface_files/NSNib.h"
#include "tessaluna/platform/windows/NSScreen.h"
#include "tessaluna/uikit/interfaceFileClasses.h"
#include "tests/harness/StillWorld.h"
#include "tests/harness/printing.h"

using namespace tessaluna::platform;
using TessalunaUIKit::AppSplashController;

namespace {

// A controller over a host's interface file: a borderless window of 400 by 300.
class AppSplashControllerTest : public harness::StillWorld {
 protected:
  AppSplashControllerTest() {
    TessalunaUIKit::registerInterfaceFileClasses();
    NSNib::registerDocument("Splash", document(allOutlets));
  }
  ~AppSplashControllerTest() override { NSImage::setImageNamed("AppIcon.icns", nullptr); }

  static std::string document(const std::string& outlets, const std::string& place = "[100, 100, 400, 300]") {
    return R"({"owner": {)" + outlets + R"(}, "objects": [
      {"id": "window", "class": "NSWindow", "contentRect": )" +
           place + R"(, "styleMask": 0, "contentView": {"class": "NSView", "subviews": [
        {"id": "icon", "class": "NSImageView", "frame": [20, 20, 64, 64]},
        {"id": "spinner", "class": "NSProgressIndicator", "frame": [350, 20, 32, 32], "style": "spinning"},
        {"id": "title", "class": "NSTextField", "frame": [100, 80, 200, 20]},
        {"id": "info", "class": "NSTextField", "frame": [100, 50, 200, 20]},
        {"id": "step", "class": "NSTextField", "frame": [100, 20, 200, 20]}]}}]})";
  }
  inline static const std::string allOutlets =
      R"("window": "window", "progressIndicator": "spinner", "appIconView": "icon", "titleLabel": "title",
         "informativeTextLabel": "info", "currentStepTextLabel": "step")";

  // In the order of the document: icon, spinner, title, information, step.
  template <class View>
  Ref<View> part(std::size_t index) {
    return std::dynamic_pointer_cast<View>(controller->window()->contentView()->subviews()[index]);
  }
  std::string textOf(std::size_t index) { return part<NSTextField>(index)->stringValue(); }

  Ref<AppSplashController> controller = make<AppSplashController>("Splash");
};

using AppSplashControllerDeathTest = AppSplashControllerTest;

}  // namespace

TEST_F(AppSplashControllerTest, AWindowOf400By300OnAScreenOf1440By900ComesTo520And300) {
  EXPECT_EQ(controller->window()->frame(), (CGRect{520, 300, 400, 300}));
}

TEST_F(AppSplashControllerTest, OnASecondScreenTheWindowComesToThePrimaryOnesSide) {
  const CGRect second{1440, 0, 1440, 900};
  desktop.setScreens(
      {{.frame = {0, 0, 1440, 900}, .visibleFrame = {0, 0, 1440, 900}}, {.frame = second, .visibleFrame = second}});
  NSNib::registerDocument("Splash", document(allOutlets, "[1500, 100, 400, 300]"));
  EXPECT_EQ(controller->window()->frame(), (CGRect{520, 300, 400, 300}));
}

TEST_F(AppSplashControllerTest, ThePlaceGoesByTheSizeOfTheWindowsOwnScreen) {
  const CGRect second{1440, 0, 1000, 800};
  desktop.setScreens(
      {{.frame = {0, 0, 1440, 900}, .visibleFrame = {0, 0, 1440, 900}}, {.frame = second, .visibleFrame = second}});
  NSNib::registerDocument("Splash", document(allOutlets, "[1500, 100, 400, 300]"));
  EXPECT_EQ(controller->window()->frame(), (CGRect{300, 250, 400, 300}));
}

TEST_F(AppSplashControllerTest, PanelsAndDocksDoNotCount) {
  desktop.setScreens({{.frame = {0, 0, 1440, 900}, .visibleFrame = {0, 60, 1440, 810}}});
  EXPECT_EQ(controller->window()->frame(), (CGRect{520, 300, 400, 300}));
}

TEST_F(AppSplashControllerTest, AWindowOnNoScreenGoesByTheMainScreen) {
  NSNib::registerDocument("Splash", document(allOutlets, "[9000, 9000, 400, 300]"));
  EXPECT_EQ(controller->window()->frame(), (CGRect{520, 300, 400, 300}));
}

TEST_F(AppSplashControllerTest, TheMainScreenIsThatOfTheKeyWindow) {
  desktop.setScreens({{.frame = {0, 0, 1440, 900}, .visibleFrame = {0, 0, 1440, 900}},
                      {.frame = {1440, 0, 1000, 800}, .visibleFrame = {1440, 0, 1000, 800}}});
  const auto key = showWindow({1500, 100, 200, 150});
  NSNib::registerDocument("Splash", document(allOutlets, "[9000, 9000, 400, 300]"));
  EXPECT_EQ(controller->window()->frame(), (CGRect{300, 250, 400, 300}));
}

TEST_F(AppSplashControllerTest, LoadingShowsTheHostsIconAndStartsTheSpinner) {
  const auto icon = make<NSImage>(CGSize{64, 64});
  NSImage::setImageNamed("AppIcon.icns", icon);
  EXPECT_EQ(controller->progressIndicator(), nullptr);
  EXPECT_EQ(part<NSImageView>(0)->image(), icon);
  EXPECT_EQ(controller->progressIndicator(), part<NSProgressIndicator>(1));
  EXPECT_TRUE(controller->progressIndicator()->isAnimating());
}

TEST_F(AppSplashControllerTest, StyleSizeAndValueOfTheIndicatorAreThoseOfTheInterfaceFile) {
  NSNib::registerDocument("Bar", R"({"owner": {"appIconView": "icon", "progressIndicator": "bar"}, "objects": [
      {"id": "icon", "class": "NSImageView"},
      {"id": "bar", "class": "NSProgressIndicator", "frame": [1, 2, 30, 8], "style": "bar", "indeterminate": false,
       "doubleValue": 30}]})");
  controller = make<AppSplashController>("Bar");
  controller->window();
  const NSProgressIndicator& bar = *controller->progressIndicator();
  EXPECT_TRUE(bar.isAnimating());
  EXPECT_EQ(bar.style(), NSProgressIndicatorStyleBar);
  EXPECT_EQ(bar.frame(), (CGRect{1, 2, 30, 8}));
  EXPECT_FALSE(bar.isIndeterminate());
  EXPECT_EQ(bar.doubleValue(), 30);
}

TEST_F(AppSplashControllerTest, WithoutAnIconTheViewGetsNone) {
  // Also where it has another image.
  part<NSImageView>(0)->setImage(make<NSImage>(CGSize{64, 64}));
  controller->windowDidLoad();
  EXPECT_EQ(part<NSImageView>(0)->image(), nullptr);
}

TEST_F(AppSplashControllerTest, TheThreeTextsGoToTheirLabels) {
  ASSERT_NE(controller->window(), nullptr);
  controller->setTitle("Player");
  controller->setInformativeText("Version 7");
  controller->setCurrentStepText("Opening the library");
  EXPECT_EQ(textOf(2), "Player");
  EXPECT_EQ(textOf(3), "Version 7");
  EXPECT_EQ(textOf(4), "Opening the library");
}

TEST_F(AppSplashControllerTest, AnEmptyTextClearsTheLabel) {
  ASSERT_NE(controller->window(), nullptr);
  controller->setTitle("Player");
  controller->setTitle("");
  EXPECT_EQ(textOf(2), "");
}

TEST_F(AppSplashControllerTest, TheSpinnerIsNotStoppedWhenTheWindowCloses) {
  controller->showWindow(nullptr);
  EXPECT_TRUE(controller->window()->isVisible());
  controller->close();
  EXPECT_TRUE(controller->progressIndicator()->isAnimating());
}

TEST_F(AppSplashControllerTest, WithoutAWindowLoadingLeavesItAtIconAndSpinner) {
  NSNib::registerDocument("Parts", R"({"owner": {"appIconView": "icon", "progressIndicator": "spinner"}, "objects": [
      {"id": "icon", "class": "NSImageView"}, {"id": "spinner", "class": "NSProgressIndicator"}]})");
  controller = make<AppSplashController>("Parts");
  EXPECT_EQ(controller->window(), nullptr);
  EXPECT_TRUE(controller->progressIndicator()->isAnimating());
}

TEST_F(AppSplashControllerTest, AWindowThatIsNotConnectedStaysWhereItIs) {
  NSNib::registerDocument("Splash", document(R"("progressIndicator": "spinner", "appIconView": "icon")"));
  EXPECT_EQ(controller->window(), nullptr);
  const NSWindow* window = controller->progressIndicator()->window();
  ASSERT_NE(window, nullptr);
  EXPECT_EQ(window->frame(), (CGRect{100, 100, 400, 300}));
}

TEST_F(AppSplashControllerTest, AWindowThatIsShownAlreadyIsDrawnAtItsNewPlaceAtOnce) {
  controller->showWindow(nullptr);
  desktop.settle();
  nativeOf(*controller->window()).forgetPaints();
  controller->window()->contentView()->setNeedsDisplay(true);
  controller->windowDidLoad();
  EXPECT_EQ(nativeOf(*controller->window()).paints().size(), 1u);
}

TEST_F(AppSplashControllerTest, AWindowLargerThanTheScreenIsCenteredAsAnyOther) {
  NSNib::registerDocument("Splash", document(allOutlets, "[0, 0, 1501, 1001]"));
  EXPECT_EQ(controller->window()->frame(), (CGRect{-30.5, -50.5, 1501, 1001}));
}

TEST_F(AppSplashControllerTest, IsMadeWithAWindowWithoutOneAndFromAnArchiveWithAllOutletsAbsent) {
  const auto window = showWindow();
  controller = make<AppSplashController>(window);
  EXPECT_EQ(controller->window(), window);
  EXPECT_EQ(window->frame(), (CGRect{100, 100, 200, 150}));
  EXPECT_EQ(controller->progressIndicator(), nullptr);
  EXPECT_EQ(make<AppSplashController>(Ref<NSWindow>())->window(), nullptr);
  NSCoder coder;
  EXPECT_EQ(make<AppSplashController>(coder)->className(), "TessalunaUIKit.AppSplashController");
}

TEST_F(AppSplashControllerDeathTest, ATextBeforeTheWindowIsLoadedStopsTheProgram) {
  EXPECT_DEATH(controller->setCurrentStepText("Opening"), "used while absent: currentStepTextLabel");
  EXPECT_DEATH(controller->setTitle("Opening"), "used while absent: titleLabel");
  EXPECT_DEATH(controller->setInformativeText("Opening"), "used while absent: informativeTextLabel");
}

TEST_F(AppSplashControllerDeathTest, AMissingConnectionOfIconOrSpinnerStopsTheProgramAsTheWindowIsLoaded) {
  NSNib::registerDocument("Splash", document(R"("window": "window", "progressIndicator": "spinner")"));
  EXPECT_DEATH(controller->window(), "used while absent: appIconView");
  NSNib::registerDocument("Splash", document(R"("window": "window", "appIconView": "icon")"));
  EXPECT_DEATH(controller->window(), "used while absent: progressIndicator");
  NSNib::registerDocument("Splash", document(R"("window": "window")"));
  EXPECT_DEATH(controller->window(), "used while absent: appIconView") << "the icon comes first";
}

TEST_F(AppSplashControllerDeathTest, AMissingLabelStopsTheProgramAtItsFirstText) {
  NSNib::registerDocument("Splash",
                          document(R"("window": "window", "progressIndicator": "spinner", "appIconView": "icon")"));
  ASSERT_NE(controller->window(), nullptr);
  EXPECT_DEATH(controller->setTitle(""), "used while absent: titleLabel");
}

TEST_F(AppSplashControllerDeathTest, WithoutAnyScreenLoadingStopsTheProgram) {
  EXPECT_DEATH(
      {
        desktop.setScreens({});
        controller->window();
      },
      "AppSplashController: there is no screen for the window");
}
