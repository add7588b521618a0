#include "tessaluna/backends/qt/screenSpace.h"

#include "tests/backends/qt/QtTest.h"

namespace tessaluna::backend::qt {

using namespace tessaluna::platform;

namespace {

class QtBackendTest : public QtTest {};

}  // namespace

TEST_F(QtBackendTest, PrimaryScreenHasItsOriginAtItsLowerLeft) {
  const std::vector<Screen> screens = desktop.screens();
  ASSERT_FALSE(screens.empty());
  const QScreen* primary = QGuiApplication::primaryScreen();
  EXPECT_EQ(screens[0].frame.origin, (CGPoint{0, 0}));
  EXPECT_EQ(screens[0].frame.size.height, primary->geometry().height());
  EXPECT_EQ(screens[0].scale, primary->devicePixelRatio());
}

TEST_F(QtBackendTest, PlacesGoToQtAndBack) {
  const double height = QGuiApplication::primaryScreen()->geometry().height();
  EXPECT_EQ(pointOnScreen({10, 20}), (CGPoint{10, height - 20}));
  EXPECT_EQ(qtPointOf({10, height - 20}), QPoint(10, 20));
  EXPECT_EQ(rectOnScreen(QRect(5, 10, 30, 40)), (CGRect{5, height - 50, 30, 40}));
  EXPECT_EQ(qtRectOf({5, height - 50, 30, 40}), QRect(5, 10, 30, 40));
  EXPECT_EQ(qtRectOf({5.5, height - 50.5, 30, 40}), QRect(5, 10, 31, 41));
  EXPECT_EQ(qtRectOf({0, 0, 0, 0}).size(), QSize(1, 1));
}

TEST_F(QtBackendTest, BlocksRunInTheOrderOfTheirTimes) {
  std::string order;
  desktop.callAfter(0.03, [&] { order += 'c'; });
  desktop.callAfter(0, [&] { order += 'a'; });
  desktop.callAfter(0, [&] { order += 'b'; });
  EXPECT_EQ(order, "");
  const double start = desktop.now();
  EXPECT_TRUE(QTest::qWaitFor([&] { return order.size() == 3; }, 5000));
  EXPECT_EQ(order, "abc");
  EXPECT_GE(desktop.now() - start, 0.03);
}

TEST_F(QtBackendTest, TellsTheApplicationWhetherItIsActive) {
  QWidget window;
  window.show();
  window.activateWindow();
  settle();
  EXPECT_TRUE(application->isActive());
  emit qApp->applicationStateChanged(Qt::ApplicationInactive);
  EXPECT_FALSE(application->isActive());
  emit qApp->applicationStateChanged(Qt::ApplicationActive);
  EXPECT_TRUE(application->isActive());
}

TEST_F(QtBackendTest, SystemColorsAreThePalettes) {
  QPalette palette;
  palette.setColor(QPalette::Active, QPalette::WindowText, QColor(10, 20, 30, 40));
  palette.setColor(QPalette::Disabled, QPalette::WindowText, QColor(50, 60, 70));
  QApplication::setPalette(palette);
  const Color text = desktop.systemColor(SystemColor::ControlText);
  EXPECT_NEAR(text.red, 10.0 / 255, 1e-4);
  EXPECT_NEAR(text.alpha, 40.0 / 255, 1e-4);
  EXPECT_NEAR(desktop.systemColor(SystemColor::DisabledControlText).blue, 70.0 / 255, 1e-4);
  QApplication::setPalette(QPalette());
}

}  // namespace tessaluna::backend::qt
