#include <QClipboard>
#include <QMimeData>
#include <QProxyStyle>
#include <QThread>
#include <atomic>
#include <cmath>

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
  const double start = desktop.now();
  desktop.callAfter(0.03, [&] { order += 'c'; });
  desktop.callAfter(0, [&] { order += 'a'; });
  desktop.callAfter(0, [&] { order += 'b'; });
  EXPECT_EQ(order, "");
  EXPECT_TRUE(QTest::qWaitFor([&] { return order.size() == 3; }, 5000));
  EXPECT_EQ(order, "abc");
  EXPECT_GE(desktop.now() - start, 0.03);
}

TEST_F(QtBackendTest, ATimerThatEndsIsCancelled) {
  std::string order;
  Timer cancelled = desktop.timer(0.01, [&] { order += 'x'; });
  const Timer kept = desktop.timer(0.02, [&] { order += 'a'; });
  cancelled = nullptr;
  EXPECT_TRUE(QTest::qWaitFor([&] { return !order.empty(); }, 5000));
  EXPECT_EQ(order, "a");
}

TEST_F(QtBackendTest, WorkElsewhereIsDoneOnAnotherThreadAndAnsweredOnThisOne) {
  QThread *worker = nullptr, *answerer = nullptr, *freer = nullptr;
  {
    const std::shared_ptr<void> held(nullptr, [&](void*) { freer = QThread::currentThread(); });
    desktop.callElsewhere([&worker, held] { worker = QThread::currentThread(); },
                          [&] { answerer = QThread::currentThread(); });
  }
  EXPECT_EQ(answerer, nullptr);
  EXPECT_TRUE(QTest::qWaitFor([&] { return freer != nullptr; }, 5000));
  EXPECT_NE(worker, nullptr);
  EXPECT_NE(worker, QThread::currentThread());
  EXPECT_EQ(answerer, QThread::currentThread());
  EXPECT_EQ(freer, QThread::currentThread());
}

TEST_F(QtBackendTest, ABlockRunsWhateverItsDelayIs) {
  int calls = 0;
  for (const double seconds : {-1.0, 0.0, std::nan("")}) desktop.callAfter(seconds, [&] { ++calls; });
  EXPECT_TRUE(QTest::qWaitFor([&] { return calls == 3; }));
}

TEST_F(QtBackendTest, TheClipboardHasTheTextThatWasCopied) {
  desktop.setClipboardText("caf\u00E9");
  EXPECT_EQ(QGuiApplication::clipboard()->text(), QString("caf\u00E9"));
  EXPECT_EQ(desktop.clipboardText(), "caf\u00E9");
  auto* picture = new QMimeData;
  picture->setImageData(QImage(2, 2, QImage::Format_RGB32));
  QGuiApplication::clipboard()->setMimeData(picture);
  EXPECT_EQ(desktop.clipboardText(), "");
}

TEST(QtBackendEndDeathTest, WithoutOneTheProgramStops) { EXPECT_DEATH(QtBackend::current(), "there is none"); }

TEST(QtBackendEndTest, AWindowThatOutlivesItTakesNoInput) {
  auto desktop = std::make_unique<QtBackend>();
  const auto application = NSApplication::sharedApplication();
  const auto window = make<NSWindow>(CGRect{100, 200, 120, 80}, NSWindowStyleMaskTitled, NSBackingStoreBuffered, true);
  const auto view = make<Witness>(CGRect{0, 0, 120, 80});
  window->setContentView(view);
  window->makeKeyAndOrderFront(nullptr);
  QCoreApplication::processEvents();
  QWindow& native = *dynamic_cast<QtNativeWindow&>(*window->nativeWindow()).qWindow();
  desktop.reset();
  QTest::mouseClick(&native, Qt::LeftButton, {}, {10, 10});
  QTest::keyClick(&native, 'a');
  native.close();
  EXPECT_TRUE(view->mouse.empty());
  EXPECT_TRUE(view->keys.empty());
  NSApp = nullptr;
}

TEST(QtBackendEndTest, ABackendThatGoesWaitsForWorkThatHasBegunAndForgetsItsAnswer) {
  std::atomic<bool> hasBegun = false, isDone = false;
  bool wasAnswered = false;
  {
    QtBackend desktop;
    desktop.callElsewhere(
        [&] {
          hasBegun = true;
          QThread::msleep(20);
          isDone = true;
        },
        [&] { wasAnswered = true; });
    while (!hasBegun) QThread::yieldCurrentThread();
  }
  EXPECT_TRUE(isDone);
  QCoreApplication::processEvents();
  EXPECT_FALSE(wasAnswered);
}

TEST_F(QtBackendTest, AStyleThatAnimatesNothingAsksForLessMotion) {
  class StillStyle : public QProxyStyle {
   public:
    int styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget, QStyleHintReturn* data) const override {
      return hint == SH_Widget_Animation_Duration ? duration : QProxyStyle::styleHint(hint, option, widget, data);
    }
    int duration = 0;
  };
  auto* style = new StillStyle;
  const QString earlier = QApplication::style()->name();
  QApplication::setStyle(style);
  EXPECT_TRUE(desktop.prefersReducedMotion());
  style->duration = 200;
  EXPECT_FALSE(desktop.prefersReducedMotion());
  QApplication::setStyle(earlier);
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

TEST_F(QtBackendTest, TheLayoutDirectionIsThatOfTheProgram) {
  EXPECT_EQ(application->userInterfaceLayoutDirection(), NSUserInterfaceLayoutDirectionLeftToRight);
  const auto view = make<Witness>(CGRect{0, 0, 50, 50});
  const auto window = make<NSWindow>(CGRect{0, 0, 50, 50}, NSWindowStyleMaskTitled, NSBackingStoreBuffered, true);
  window->setContentView(view);
  window->orderFront(nullptr);
  settle();
  view->draws.clear();
  QGuiApplication::setLayoutDirection(Qt::RightToLeft);
  EXPECT_EQ(application->userInterfaceLayoutDirection(), NSUserInterfaceLayoutDirectionRightToLeft);
  settle();
  EXPECT_EQ(view->draws.size(), 1u);
  QGuiApplication::setLayoutDirection(Qt::LayoutDirectionAuto);
  window->close();
}

TEST_F(QtBackendTest, SystemColorsAreThePalettes) {
  QPalette palette;
  palette.setColor(QPalette::Active, QPalette::WindowText, QColor(10, 20, 30, 40));
  palette.setColor(QPalette::Disabled, QPalette::WindowText, QColor(50, 60, 70));
  palette.setColor(QPalette::Active, QPalette::PlaceholderText, QColor(80, 90, 100, 128));
  QApplication::setPalette(palette);
  const Color text = desktop.systemColor(SystemColor::ControlText);
  EXPECT_NEAR(text.red, 10.0 / 255, 1e-4);
  EXPECT_NEAR(text.alpha, 40.0 / 255, 1e-4);
  EXPECT_NEAR(desktop.systemColor(SystemColor::DisabledControlText).blue, 70.0 / 255, 1e-4);
  EXPECT_NEAR(desktop.systemColor(SystemColor::PlaceholderText).green, 90.0 / 255, 1e-4);
  palette.setColor(QPalette::Active, QPalette::Base, QColor(100, 100, 100));
  palette.setColor(QPalette::Active, QPalette::Highlight, QColor(100, 100, 200));
  palette.setColor(QPalette::Active, QPalette::Text, QColor(0, 0, 0));
  QApplication::setPalette(palette);
  EXPECT_NEAR(desktop.systemColor(SystemColor::SelectedTextBackground).blue, 135.0 / 255, 1e-4);
  EXPECT_NEAR(desktop.systemColor(SystemColor::UnemphasizedSelectedTextBackground).blue, 85.0 / 255, 1e-4);
  QApplication::setPalette(QPalette());
}

}  // namespace tessaluna::backend::qt
