#include "tessaluna/backends/headless/HeadlessBackend.h"

#include <gtest/gtest.h>

#include "tests/harness/printing.h"

using namespace tessaluna::backend;
using namespace tessaluna::backend::headless;

namespace {

// Writes down what the desktop tells a window.
class ClientLog : public WindowClient {
 public:
  std::vector<std::string> log;
  std::function<void()> onDisplay = [] {};
  void nativeDisplay() override {
    log.push_back("display");
    onDisplay();
  }
  void nativeFrameChanged(CGRect) override { log.push_back("frame"); }
  void nativeScaleChanged() override { log.push_back("scale"); }
  void nativeKeyStatusChanged(bool isKey) override { log.push_back(isKey ? "key" : "not key"); }
  void nativeCloseRequested() override { log.push_back("close"); }
  tessaluna::platform::WindowInput& input() override { std::abort(); }  // no user is there
  std::shared_ptr<tessaluna::platform::NSWindow> eventWindow() override { return nullptr; }
};

using Log = std::vector<std::string>;

class HeadlessBackendTest : public testing::Test {
 protected:
  std::unique_ptr<HeadlessWindow> makeWindow(CGRect content = {10, 20, 40, 30}, bool canBecomeKey = true) {
    std::unique_ptr<NativeWindow> window =
        desktop.makeWindow(client, {.kind = WindowKind::Titled, .content = content, .canBecomeKey = canBecomeKey});
    return std::unique_ptr<HeadlessWindow>(static_cast<HeadlessWindow*>(window.release()));
  }
  HeadlessBackend desktop;
  ClientLog client;
};

constexpr CGRect usual{0, 0, 1440, 900};

}  // namespace

TEST_F(HeadlessBackendTest, IsTheCurrentBackendWhileItLives) { EXPECT_EQ(Backend::current(), &desktop); }

TEST(HeadlessBackend, TheCurrentBackendIsAbsentOnceItHasGone) {
  { const HeadlessBackend desktop; }
  EXPECT_EQ(Backend::current(), nullptr);
}

TEST(HeadlessBackendDeathTest, ASecondBackendBesideALivingOneStopsTheProgram) {
  const HeadlessBackend desktop;
  EXPECT_DEATH(HeadlessBackend(), "second backend");
}

TEST_F(HeadlessBackendTest, HasOneUsualScreenAtScale1) {
  ASSERT_EQ(desktop.screens().size(), 1u);
  EXPECT_EQ(desktop.screens()[0].frame, usual);
  EXPECT_EQ(desktop.screens()[0].visibleFrame, usual);
  EXPECT_EQ(desktop.screens()[0].scale, 1);
}

TEST_F(HeadlessBackendTest, AWindowRemembersItsCalls) {
  const auto window = makeWindow(), parent = makeWindow();
  window->setTitle("Player");
  window->setCursor(CursorShape::PointingHand);
  window->setParent(parent.get());
  window->setFrame({1, 2, 3, 4});
  window->show();
  EXPECT_EQ(window->title(), "Player");
  EXPECT_EQ(window->cursor(), CursorShape::PointingHand);
  EXPECT_EQ(window->parent(), parent.get());
  EXPECT_EQ(window->frame(), (CGRect{1, 2, 3, 4}));
  EXPECT_TRUE(window->isVisible());
  window->hide();
  EXPECT_FALSE(window->isVisible());
}

TEST_F(HeadlessBackendTest, ADisplayComesOnceAndOnlyWithTheNextSettle) {
  const auto window = makeWindow();
  window->scheduleDisplay();
  window->scheduleDisplay();
  EXPECT_TRUE(client.log.empty());
  desktop.settle();
  EXPECT_EQ(client.log, Log{"display"});
  desktop.settle();
  EXPECT_EQ(client.log.size(), 1u);
}

TEST_F(HeadlessBackendTest, ADisplayAskedForWhileDisplayingComesWithTheNextSettle) {
  const auto window = makeWindow();
  client.onDisplay = [&] { window->scheduleDisplay(); };
  window->scheduleDisplay();
  desktop.settle();
  EXPECT_EQ(client.log.size(), 1u);
  desktop.settle();
  EXPECT_EQ(client.log.size(), 2u);
}

TEST_F(HeadlessBackendTest, EachMomentOfAnAdvanceIsDisplayed) {
  const auto window = makeWindow();
  for (const double time : {0.1, 0.2, 0.2}) desktop.callAfter(time, [&] { window->scheduleDisplay(); });
  desktop.advance(0.15);
  EXPECT_EQ(client.log.size(), 1u);
  desktop.advance(1);
  EXPECT_EQ(client.log.size(), 2u);
}

TEST_F(HeadlessBackendTest, AWindowThatHasGoneIsNotDisplayed) {
  auto window = makeWindow();
  window->scheduleDisplay();
  window.reset();
  desktop.settle();
  EXPECT_TRUE(client.log.empty());
}

TEST_F(HeadlessBackendTest, WindowsAreFromBackToFront) {
  const auto a = makeWindow(), b = makeWindow(), c = makeWindow();
  a->raise();
  EXPECT_EQ(desktop.windows(), (std::vector{b.get(), c.get(), a.get()}));
}

TEST_F(HeadlessBackendTest, AChildIsRaisedWithItsParentAndStaysAboveIt) {
  const auto parent = makeWindow(), child = makeWindow(), other = makeWindow();
  child->setParent(parent.get());
  parent->raise();
  EXPECT_EQ(desktop.windows(), (std::vector{other.get(), parent.get(), child.get()}));
}

TEST_F(HeadlessBackendTest, AChildIsFreedWhenItsParentGoes) {
  auto parent = makeWindow();
  const auto child = makeWindow();
  child->setParent(parent.get());
  parent.reset();
  EXPECT_EQ(child->parent(), nullptr);
}

TEST_F(HeadlessBackendTest, KeyStatusGoesFromOneWindowToTheOther) {
  ClientLog otherClient;
  const auto window = makeWindow();
  const auto other = desktop.makeWindow(otherClient, {.content = {0, 0, 9, 9}});
  window->show();
  other->show();
  window->requestKey();
  EXPECT_EQ(desktop.keyWindow(), window.get());
  other->requestKey();
  EXPECT_EQ(client.log, (Log{"key", "not key"}));
  EXPECT_EQ(otherClient.log, Log{"key"});
}

TEST_F(HeadlessBackendTest, AWindowThatCannotOrIsHiddenNeverGetsKeyStatus) {
  const auto cannot = makeWindow(usual, false), hidden = makeWindow();
  cannot->show();
  cannot->requestKey();
  hidden->requestKey();
  EXPECT_EQ(desktop.keyWindow(), nullptr);
  EXPECT_TRUE(client.log.empty());
}

TEST_F(HeadlessBackendTest, AHiddenWindowLosesKeyStatus) {
  const auto window = makeWindow();
  window->show();
  window->requestKey();
  window->hide();
  EXPECT_EQ(desktop.keyWindow(), nullptr);
  EXPECT_EQ(client.log, (Log{"key", "not key"}));
}

TEST_F(HeadlessBackendTest, AWindowHasTheScaleOfTheScreenThatShowsMostOfIt) {
  desktop.setScreens({{.frame = {0, 0, 100, 100}, .visibleFrame = {0, 0, 100, 100}, .scale = 1},
                      {.frame = {100, 0, 100, 100}, .visibleFrame = {100, 0, 100, 100}, .scale = 2}});
  const auto window = makeWindow({60, 10, 70, 70});
  EXPECT_EQ(window->scale(), 1);
  window->setFrame({70, 10, 70, 70});
  EXPECT_EQ(window->scale(), 2);
  EXPECT_EQ(window->screen()->frame, (CGRect{100, 0, 100, 100}));
  EXPECT_EQ(client.log, Log{"scale"});
}

TEST_F(HeadlessBackendTest, OffAllScreensAWindowHasNoScreenAndKeepsItsScale) {
  desktop.setScale(1.5);
  const auto window = makeWindow();
  window->setFrame({5000, 5000, 10, 10});
  EXPECT_FALSE(window->screen().has_value());
  EXPECT_EQ(window->scale(), 1.5);
  EXPECT_TRUE(client.log.empty());
}

TEST_F(HeadlessBackendTest, ANewScaleIsReportedImmediately) {
  const auto window = makeWindow();
  desktop.setScale(1.25);
  EXPECT_EQ(client.log, Log{"scale"});
  EXPECT_EQ(window->scale(), 1.25);
}

TEST_F(HeadlessBackendTest, TheUserMovesAndCloses) {
  const auto window = makeWindow();
  window->moveByUser({1, 2, 3, 4});
  window->closeByUser();
  EXPECT_EQ(window->frame(), (CGRect{1, 2, 3, 4}));
  EXPECT_EQ(client.log, (Log{"frame", "close"}));
}

TEST_F(HeadlessBackendTest, APaintIsRememberedWithItsRectanglesAndLines) {
  const auto window = makeWindow();
  const CGRect dirty[] = {{0, 0, 10, 10}, {20, 0, 5, 5}};
  window->paint(dirty, [](Canvas& canvas) { canvas.clipRect({1, 2, 3, 4}); });
  ASSERT_EQ(window->paints().size(), 1u);
  EXPECT_EQ(window->paints()[0].dirty, std::vector<CGRect>(std::begin(dirty), std::end(dirty)));
  EXPECT_EQ(window->paints()[0].lines, Log{R"({"op":"clipRect","rect":[1,2,3,4]})"});
  EXPECT_EQ(window->picture(), nullptr);
  window->forgetPaints();
  EXPECT_TRUE(window->paints().empty());
}

TEST_F(HeadlessBackendTest, APictureIsKeptFromOnePaintToTheNext) {
  desktop.setPictures(Pictures::Painted);
  const auto window = makeWindow();
  const auto fill = [&](CGRect rect, Color color) {
    window->paint({&rect, 1}, [&](Canvas& canvas) {
      canvas.setFillColor(color);
      canvas.fillPath(Path::rect(rect), FillRule::NonZero);
    });
  };
  fill({0, 0, 20, 30}, {1, 0, 0, 1});
  fill({20, 0, 10, 10}, {0, 0, 1, 1});
  ASSERT_NE(window->picture(), nullptr);
  EXPECT_EQ(window->picture()->width(), 40);
  EXPECT_EQ(window->picture()->height(), 30);
  EXPECT_EQ(window->picture()->pixel(5, 5), 0xFFFF0000);
  EXPECT_EQ(window->picture()->pixel(25, 25), 0xFF0000FF);  // rows count from the top
  EXPECT_EQ(window->picture()->pixel(25, 5), 0u);
  EXPECT_EQ(window->paints().size(), 2u);
}

TEST_F(HeadlessBackendTest, APictureIsAsLargeAsTheContentInWholeDevicePixels) {
  desktop.setPictures(Pictures::Painted);
  desktop.setScale(1.25);
  const auto window = makeWindow({0, 0, 101, 40});
  EXPECT_EQ(window->picture()->width(), 127);
  EXPECT_EQ(window->picture()->height(), 50);
  window->setFrame({0, 0, 8, 8});
  EXPECT_EQ(window->picture()->width(), 10);
  desktop.setScale(2);
  EXPECT_EQ(window->picture()->width(), 16);
}

TEST_F(HeadlessBackendTest, SystemColorsAreTheUsualOnesUnlessSet) {
  EXPECT_EQ(desktop.systemColor(SystemColor::ControlText), defaultSystemColor(SystemColor::ControlText));
  desktop.setSystemColor(SystemColor::ControlText, {1, 0, 1, 1});
  EXPECT_EQ(desktop.systemColor(SystemColor::ControlText), (Color{1, 0, 1, 1}));
  EXPECT_EQ(desktop.systemColor(SystemColor::Control), defaultSystemColor(SystemColor::Control));
}

TEST_F(HeadlessBackendTest, ThePointerIsWhereItWasPut) {
  desktop.setMouseLocation({12, 34});
  EXPECT_EQ(desktop.mouseLocation(), (CGPoint{12, 34}));
}
