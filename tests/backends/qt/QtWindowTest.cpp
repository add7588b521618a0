#include "tessaluna/backends/qt/QtWindow.h"

#include <QExposeEvent>
#include <QPointer>
#include <QScreen>
#include <QTimer>

#include "tessaluna/backends/qt/screenSpace.h"
#include "tessaluna/platform/events/NSEvent.h"
#include "tessaluna/platform/graphics/NSColor.h"
#include "tessaluna/platform/graphics/NSRect.h"
#include "tessaluna/platform/views/NSTextField.h"
#include "tessaluna/platform/windows/NSPanel.h"
#include "tessaluna/uikit/trackrow/PrevNextButton.h"
#include "tests/backends/qt/QtTest.h"

namespace tessaluna::backend::qt {

using namespace tessaluna::platform;
using TessalunaUIKit::PrevNextButton;

namespace {

class QtWindowTest : public QtTest {
 protected:
  static Ref<NSWindow> makeWindow(std::uint32_t style = NSWindowStyleMaskTitled) {
    const auto window = make<NSWindow>(CGRect{100, 200, 120, 80}, style, NSBackingStoreBuffered, true);
    window->makeKeyAndOrderFront(nullptr);
    settle();
    return window;
  }

  Ref<PrevNextButton> addButton(NSWindow& window) {
    const auto button = make<PrevNextButton>(CGRect{10, 20, 24, 24});
    button->setTarget(clicks);
    button->setAction("clicked:");
    window.contentView()->addSubview(button);
    settle();
    return button;
  }

  // Takes one step after the other in the program's event loop, and returns how many there were before that ended.
  static std::size_t runProgram(const std::vector<std::function<void()>>& steps) {
    std::size_t taken = 0, turns = 0;
    QTimer timer;
    QObject::connect(&timer, &QTimer::timeout, [&] {
      if (++turns % 4 != 0) return;  // a loop that is to end may take another turn
      if (taken == steps.size()) QCoreApplication::exit();
      else steps[taken++]();
    });
    timer.start(0);
    QApplication::exec();
    return taken;
  }

  // The content is 80 points high, and Qt counts y from its top.
  static constexpr QPoint onButton{20, 50}, offButton{100, 10};
  Ref<Clicks> clicks = make<Clicks>();
};

using QtWindowDeathTest = QtWindowTest;

}  // namespace

TEST_F(QtWindowTest, ClickOnAButtonSendsItsAction) {
  const auto window = makeWindow();
  const auto button = addButton(*window);
  QTest::mousePress(&qWindowOf(*window), Qt::LeftButton, {}, onButton);
  EXPECT_TRUE(button->isHighlighted());
  EXPECT_EQ(clicks->count, 0);
  QTest::mouseRelease(&qWindowOf(*window), Qt::LeftButton, {}, onButton);
  EXPECT_FALSE(button->isHighlighted());
  EXPECT_EQ(clicks->count, 1);
}

TEST_F(QtWindowTest, DragOutAndReleaseSendsNothing) {
  const auto window = makeWindow();
  const auto button = addButton(*window);
  QTest::mousePress(&qWindowOf(*window), Qt::LeftButton, {}, onButton);
  QTest::mouseMove(&qWindowOf(*window), offButton);
  settle();
  EXPECT_FALSE(button->isHighlighted());
  QTest::mouseRelease(&qWindowOf(*window), Qt::LeftButton, {}, offButton);
  EXPECT_EQ(clicks->count, 0);
}

TEST_F(QtWindowTest, DragOutAndBackAndReleaseSendsTheAction) {
  const auto window = makeWindow();
  const auto button = addButton(*window);
  QTest::mousePress(&qWindowOf(*window), Qt::LeftButton, {}, onButton);
  QTest::mouseMove(&qWindowOf(*window), offButton);
  QTest::mouseMove(&qWindowOf(*window), onButton);
  settle();
  EXPECT_TRUE(button->isHighlighted());
  QTest::mouseRelease(&qWindowOf(*window), Qt::LeftButton, {}, onButton);
  EXPECT_EQ(clicks->count, 1);
}

TEST_F(QtWindowTest, ActionMayThrowTheWindowAway) {
  auto window = makeWindow();
  const auto button = addButton(*window);
  const WeakRef<NSWindow> weak = window;
  QWindow* const native = &qWindowOf(*window);
  clicks->then = [&] {
    window->close();
    window = nullptr;
  };
  QTest::mousePress(native, Qt::LeftButton, {}, onButton);
  QTest::mouseRelease(native, Qt::LeftButton, {}, onButton);
  EXPECT_EQ(clicks->count, 1);
  settle();
  EXPECT_TRUE(weak.expired());
}

TEST_F(QtWindowTest, KeyReachesTheFirstResponder) {
  const auto window = makeWindow();
  const auto witness = make<Witness>(CGRect{0, 0, 120, 80});
  window->contentView()->addSubview(witness);
  ASSERT_TRUE(window->makeFirstResponder(witness.get()));
  QTest::keyClick(&qWindowOf(*window), 'a');
  QTest::keyClick(&qWindowOf(*window), Qt::Key_Up);
  const std::vector<std::string> expected{"a", "\uF700"};
  EXPECT_EQ(witness->keys, expected);
}

TEST_F(QtWindowTest, TabGoesRoundTheKeyViews) {
  const auto window = makeWindow();
  const auto first = make<Witness>(CGRect{0, 0, 20, 20}), second = make<Witness>(CGRect{20, 0, 20, 20});
  first->takesKeys = second->takesKeys = false;
  window->contentView()->addSubview(first);
  window->contentView()->addSubview(second);
  std::vector<const NSResponder*> visited;
  for (int i = 0; i < 3; ++i) {
    QTest::keyClick(&qWindowOf(*window), Qt::Key_Tab);
    visited.push_back(window->firstResponder());
  }
  QTest::keyClick(&qWindowOf(*window), Qt::Key_Backtab, Qt::ShiftModifier);
  visited.push_back(window->firstResponder());
  const std::vector<const NSResponder*> expected{first.get(), second.get(), first.get(), second.get()};
  EXPECT_EQ(visited, expected);
}

TEST_F(QtWindowTest, ExposeDrawsNothing) {
  const auto window = makeWindow();
  const auto witness = make<Witness>(CGRect{0, 0, 120, 80});
  window->contentView()->addSubview(witness);
  settle();
  ASSERT_EQ(witness->draws.size(), 1u);
  QExposeEvent expose(QRegion(0, 0, 120, 80));
  QCoreApplication::sendEvent(&qWindowOf(*window), &expose);
  settle();
  EXPECT_EQ(witness->draws.size(), 1u);
}

TEST_F(QtWindowTest, RedrawsThatAreAskedForTogetherComeTogether) {
  const auto window = makeWindow();
  const auto witness = make<Witness>(CGRect{0, 0, 120, 80});
  window->contentView()->addSubview(witness);
  settle();
  for (int i = 0; i < 10; ++i) witness->setNeedsDisplay(true);
  EXPECT_EQ(witness->draws.size(), 1u);
  settle();
  ASSERT_EQ(witness->draws.size(), 2u);
  EXPECT_EQ(witness->draws.back(), witness->bounds());
}

TEST_F(QtWindowTest, PaletteAndFontOfTheProgramRedraw) {
  const auto window = makeWindow();
  const auto witness = make<Witness>(CGRect{0, 0, 120, 80});
  window->contentView()->addSubview(witness);
  settle();
  std::size_t drawn = witness->draws.size();
  QPalette palette;
  palette.setColor(QPalette::Base, QColor(1, 2, 3));
  QApplication::setPalette(palette);
  settle();
  EXPECT_GT(witness->draws.size(), drawn);
  QApplication::setPalette(QPalette());
  settle();
  drawn = witness->draws.size();
  const QFont before = QApplication::font();
  QFont larger = before;
  larger.setPointSize(before.pointSize() + 5);
  QApplication::setFont(larger);
  settle();
  EXPECT_GT(witness->draws.size(), drawn);
  QApplication::setFont(before);
}

TEST_F(QtWindowTest, PlaceIsCountedFromTheLowerLeftOfThePrimaryScreen) {
  const auto window = makeWindow(NSWindowStyleMaskBorderless);
  const QScreen* screen = QGuiApplication::primaryScreen();
  const QRect place = qWindowOf(*window).geometry();
  EXPECT_EQ(place.size(), QSize(120, 80));
  EXPECT_EQ(place.x(), 100);
  EXPECT_EQ(place.y() + place.height(), screen->geometry().height() - 200);
}

TEST_F(QtWindowTest, MoveByTheDesktopIsTold) {
  const auto window = makeWindow(NSWindowStyleMaskBorderless);
  QWindow& native = qWindowOf(*window);
  native.setGeometry(native.x() + 5, native.y() - 7, 140, 90);
  settle();
  EXPECT_EQ(window->frame(), (CGRect{105, 197, 140, 90}));
  EXPECT_EQ(window->contentView()->frame(), (CGRect{0, 0, 140, 90}));
}

TEST_F(QtWindowTest, WindowsThatShowStayWhereTheyAreWhenThePrimaryScreenGetsAnotherHeight) {
  const auto parent = makeWindow(), hidden = makeWindow();
  const auto child = make<NSWindow>(CGRect{120, 150, 40, 50}, NSWindowStyleMaskBorderless, NSBackingStoreBuffered, true);
  parent->addChildWindow(child, NSWindowAbove);
  hidden->orderOut(nullptr);
  settle();
  const QRect place = qWindowOf(*parent).geometry(), placeOfChild = qWindowOf(*child).geometry();
  const int before = QGuiApplication::primaryScreen()->geometry().height();
  const HeightOfPrimaryScreen other(1200);
  const int grown = QGuiApplication::primaryScreen()->geometry().height() - before;
  ASSERT_GT(grown, 0);
  EXPECT_EQ(parent->frame(), (CGRect{100, 200.0 + grown, 120, 80}));
  EXPECT_EQ(child->frame(), (CGRect{120, 150.0 + grown, 40, 50}));
  EXPECT_EQ(qWindowOf(*parent).geometry(), place);
  EXPECT_EQ(qWindowOf(*child).geometry(), placeOfChild);
  // The place of one that is hidden is only in screen space.
  EXPECT_EQ(hidden->frame(), (CGRect{100, 200, 120, 80}));
  EXPECT_EQ(qWindowOf(*hidden).geometry(), place.translated(0, grown));
}

TEST_F(QtWindowTest, StaysWhereItIsWhenAnotherScreenBecomesThePrimaryOne) {
  const auto window = makeWindow();
  const QRect place = qWindowOf(*window).geometry();
  const SecondScreenAsPrimary other;
  const QRect primary = QGuiApplication::primaryScreen()->geometry();
  ASSERT_GT(primary.x(), 0);
  EXPECT_EQ(window->frame().origin, (CGPoint{100.0 - primary.x(), primary.y() + primary.height() - place.y() - 80.0}));
  EXPECT_EQ(qWindowOf(*window).geometry(), place);
}

TEST_F(QtWindowTest, PlaceBetweenPointsStaysWhatItIs) {
  const auto window =
      make<NSWindow>(CGRect{100.5, 200.25, 120.5, 80}, NSWindowStyleMaskBorderless, NSBackingStoreBuffered, true);
  window->orderFront(nullptr);
  settle();
  EXPECT_EQ(window->frame(), (CGRect{100.5, 200.25, 120.5, 80}));
  EXPECT_EQ(qWindowOf(*window).geometry().size(), QSize(121, 81));
  window->setFrame({90.25, 200.5, 30, 40.5}, false);
  settle();
  EXPECT_EQ(window->frame(), (CGRect{90.25, 200.5, 30, 40.5}));
}

TEST_F(QtWindowTest, BorderlessWindowIsAPopUpWithoutFocus) {
  const auto parent = makeWindow();
  const auto popUp = makeWindow(NSWindowStyleMaskBorderless);
  popUp->nativeWindow()->setParent(parent->nativeWindow());
  const QWindow& native = qWindowOf(*popUp);
  EXPECT_EQ(native.type(), Qt::ToolTip);
  EXPECT_TRUE(native.flags() & Qt::WindowDoesNotAcceptFocus);
  EXPECT_EQ(native.transientParent(), &qWindowOf(*parent));
  EXPECT_FALSE(popUp->isKeyWindow());
}

TEST_F(QtWindowTest, ItsStyleIsWhatItsTitleBarOffers) {
  constexpr std::uint32_t bits[] = {NSWindowStyleMaskClosable, NSWindowStyleMaskMiniaturizable, NSWindowStyleMaskResizable};
  constexpr Qt::WindowType hints[] = {Qt::WindowCloseButtonHint, Qt::WindowMinimizeButtonHint, Qt::WindowMaximizeButtonHint};
  for (std::uint32_t on = 0; on < 8; ++on) {
    std::uint32_t style = NSWindowStyleMaskTitled;
    for (int i = 0; i < 3; ++i)
      if (on & (1u << i)) style |= bits[i];
    const auto window = makeWindow(style);
    const QWindow& native = qWindowOf(*window);
    for (int i = 0; i < 3; ++i) EXPECT_EQ(native.flags().testFlag(hints[i]), (on & (1u << i)) != 0) << on << " " << i;
    EXPECT_EQ(native.maximumSize() == native.minimumSize(), !(on & 4)) << on;
    window->close();
  }
}

TEST_F(QtWindowTest, WhatKindOfWindowItIsIsKnownFromItsBeginning) {
  const auto window = makeWindow();
  EXPECT_EQ(qWindowOf(*window).type(), Qt::Window);
  EXPECT_FALSE(qWindowOf(*window).flags() & (Qt::NoDropShadowWindowHint | Qt::WindowDoesNotAcceptFocus));
  const auto panel = make<NSPanel>(CGRect{100, 200, 120, 80}, NSWindowStyleMaskTitled, NSBackingStoreBuffered, true);
  panel->setHasShadow(false);
  panel->orderFront(nullptr);
  EXPECT_EQ(qWindowOf(*panel).type(), Qt::Tool);
  EXPECT_TRUE(qWindowOf(*panel).flags() & Qt::NoDropShadowWindowHint);
}

TEST_F(QtWindowTest, TheProgramResizesAWindowThatTheUserCannot) {
  const auto window = makeWindow();
  window->setFrame({100, 200, 300, 50}, true);
  settle();
  EXPECT_EQ(qWindowOf(*window).size(), QSize(300, 50));
  window->setFrame({100, 200, 30, 150}, true);
  settle();
  EXPECT_EQ(qWindowOf(*window).size(), QSize(30, 150));
  EXPECT_EQ(window->frame(), (CGRect{100, 200, 30, 150}));
}

TEST_F(QtWindowTest, OpacityAndShadowCanChangeWhileItShows) {
  const auto window = makeWindow();
  const auto child = make<NSWindow>(CGRect{20, 30, 40, 50}, NSWindowStyleMaskBorderless, NSBackingStoreBuffered, true);
  window->addChildWindow(child, NSWindowAbove);
  window->setTitle("Player");
  const auto count = QGuiApplication::allWindows().size();
  window->setOpaque(false);
  settle();
  EXPECT_EQ(qWindowOf(*window).requestedFormat().alphaBufferSize(), 8);
  EXPECT_TRUE(qWindowOf(*window).isVisible());
  EXPECT_EQ(qWindowOf(*window).title(), "Player");
  EXPECT_EQ(qWindowOf(*child).transientParent(), &qWindowOf(*window));
  EXPECT_EQ(QGuiApplication::allWindows().size(), count);
  EXPECT_TRUE(window->isVisible() && window->isKeyWindow());
  window->setOpaque(true);
  settle();
  EXPECT_LE(qWindowOf(*window).requestedFormat().alphaBufferSize(), 0);
  window->setHasShadow(false);
  EXPECT_TRUE(qWindowOf(*window).flags() & Qt::NoDropShadowWindowHint);
  window->setHasShadow(true);
  EXPECT_FALSE(qWindowOf(*window).flags() & Qt::NoDropShadowWindowHint);
  child->close();
}

TEST_F(QtWindowTest, WhatHangsOnItStaysWithItWhenItsOpacityChanges) {
  const auto grandParent = makeWindow(), other = makeWindow(), parent = makeWindow();
  const auto text = make<NSTextField>(CGRect{0, 0, 120, 80});
  parent->contentView()->addSubview(text);
  grandParent->addChildWindow(parent, NSWindowAbove);
  QWindow ofTheProgram;
  ofTheProgram.setTransientParent(&qWindowOf(*parent));
  settle();
  QTest::mouseMove(&qWindowOf(*parent), {10, 10});
  QTest::mouseMove(&qWindowOf(*parent), {60, 40});
  settle();
  ASSERT_EQ(qWindowOf(*parent).cursor().shape(), Qt::IBeamCursor);
  qWindowOf(*parent).setWindowStates(Qt::WindowMaximized);
  int frames = 0;
  parent->nativeWindow()->callAtNextFrame([&] { ++frames; });
  parent->setOpaque(false);
  const QWindow& native = qWindowOf(*parent);
  EXPECT_EQ(native.cursor().shape(), Qt::IBeamCursor);
  EXPECT_EQ(native.windowStates(), Qt::WindowMaximized);
  EXPECT_EQ(native.transientParent(), &qWindowOf(*grandParent));
  EXPECT_EQ(ofTheProgram.transientParent(), &native);
  EXPECT_EQ(qWindowOf(*other).transientParent(), nullptr);
  EXPECT_TRUE(QTest::qWaitFor([&] { return frames == 1; }));
}

TEST_F(QtWindowTest, AHiddenWindowStaysHiddenWhenItsOpacityChanges) {
  const auto window = makeWindow();
  window->orderOut(nullptr);
  window->setOpaque(false);
  settle();
  EXPECT_FALSE(qWindowOf(*window).isVisible());
}

TEST_F(QtWindowTest, ComesToTheFrontAsLargeAsTheUserHasMadeIt) {
  const auto window = makeWindow();
  QWindow& native = qWindowOf(*window);
  native.setWindowStates(Qt::WindowMaximized);
  window->makeKeyAndOrderFront(nullptr);
  EXPECT_EQ(native.windowStates(), Qt::WindowMaximized);
  native.setWindowStates(Qt::WindowMaximized | Qt::WindowMinimized);
  window->makeKeyAndOrderFront(nullptr);
  EXPECT_EQ(native.windowStates(), Qt::WindowMaximized);
}

TEST_F(QtWindowTest, OneOfNoSizeIsHarmless) {
  const auto window = make<NSWindow>(CGRect{100, 200, 0, 0}, NSWindowStyleMaskTitled, NSBackingStoreBuffered, true);
  window->contentView()->addSubview(make<Witness>(CGRect{0, 0, 10, 10}));
  window->makeKeyAndOrderFront(nullptr);
  settle();
  EXPECT_TRUE(qWindowOf(*window).isVisible());
  window->contentView()->setNeedsDisplay(true);
  settle();
  window->setFrame({100, 200, 50, 0}, true);
  settle();
  window->setFrame({100, 200, 50, 60}, true);
  settle();
  EXPECT_EQ(qWindowOf(*window).size(), QSize(50, 60));
}

TEST_F(QtWindowTest, WhatIsRedrawnIsSeen) {
  const auto window = makeWindow();
  const auto seen = [&] {
    QWindow& native = qWindowOf(*window);
    return native.screen()->grabWindow(native.winId()).toImage().pixelColor(10, 10);
  };
  window->setBackgroundColor(NSColor::redColor());
  EXPECT_TRUE(QTest::qWaitFor([&] { return seen() == QColor(Qt::red); }));
  window->setBackgroundColor(NSColor::blueColor());
  EXPECT_TRUE(QTest::qWaitFor([&] { return seen() == QColor(Qt::blue); }));
}

TEST_F(QtWindowTest, TranslucentPixelsDoNotAddUpWhenTheyAreShownAgain) {
  const auto window = makeWindow();
  QWindow& native = qWindowOf(*window);
  const auto seen = [&] { return native.screen()->grabWindow(native.winId()).toImage().pixelColor(10, 10); };
  const QColor before = seen();
  window->setBackgroundColor(NSColor::colorWithDeviceRed(1, 0, 0, 0.5));
  ASSERT_TRUE(QTest::qWaitFor([&] { return seen() != before; }));
  const QColor once = seen();
  QPaintEvent again(QRect(QPoint(0, 0), native.size()));
  QCoreApplication::sendEvent(&native, &again);
  EXPECT_EQ(seen(), once);
}

TEST_F(QtWindowTest, AtRestNoTimerRuns) {
  const auto window = makeWindow();
  window->contentView()->setNeedsDisplay(true);
  settle();
  TimerCount timers;
  qApp->installEventFilter(&timers);
  settle();
  EXPECT_EQ(timers.count, 0);
}

TEST_F(QtWindowTest, PopUpIsPaintedBeforeAnybodySeesIt) {
  const auto parent = makeWindow();
  const auto popUp = make<NSWindow>(CGRect{20, 30, 40, 50}, NSWindowStyleMaskBorderless, NSBackingStoreBuffered, true);
  popUp->setBackgroundColor(NSColor::redColor());
  const auto isRed = [&] {
    QWindow& native = qWindowOf(*popUp);
    const QImage seen = native.screen()->grabWindow(native.winId()).toImage();
    // At other scales the offscreen platform gives as many pixels as the window has points.
    return seen.size() == native.size() && seen.pixelColor(1, 1) == QColor(Qt::red) &&
           seen.pixelColor(seen.width() - 2, seen.height() - 2) == QColor(Qt::red);
  };
  // No event is handled in between.
  parent->addChildWindow(popUp, NSWindowAbove);
  EXPECT_TRUE(isRed());
  popUp->setFrame({20, 10, 60, 70}, true);
  EXPECT_TRUE(isRed());
  popUp->orderOut(nullptr);
  popUp->setFrame({20, 10, 80, 30}, false);
  popUp->orderFront(nullptr);
  EXPECT_TRUE(isRed());
}

TEST_F(QtWindowTest, PopUpAtAPlaceBetweenPointsFillsItsWindow) {
  class Red : public NSView {
   public:
    using NSView::NSView;
    void drawRect(CGRect rect) override {
      NSColor::redColor()->setFill();
      NSRectFill(rect);
    }
  };
  const auto parent = makeWindow();
  for (const double x : {150.0, 150.7})
    for (const double y : {300.0, 300.4})
      for (const CGSize size : {CGSize{60, 40}, CGSize{60.4, 40.5}, CGSize{61, 41}}) {
        const auto popUp = make<NSWindow>(CGRect{{x, y}, size}, NSWindowStyleMaskBorderless, NSBackingStoreBuffered, true);
        popUp->setOpaque(false);
        popUp->setBackgroundColor(NSColor::clearColor());
        popUp->setContentView(make<Red>(CGRect{}));
        parent->addChildWindow(popUp, NSWindowAbove);
        QWindow& native = qWindowOf(*popUp);
        const QImage seen = native.screen()->grabWindow(native.winId()).toImage();
        int others = 0;
        for (int row = 0; row < seen.height(); ++row)
          for (int column = 0; column < seen.width(); ++column) others += seen.pixelColor(column, row) != QColor(Qt::red);
        EXPECT_EQ(others, 0) << x << " " << y << " " << size.width << " of " << seen.width() << " x " << seen.height();
        popUp->close();
      }
}

TEST_F(QtWindowTest, ClosedByTheUserItHides) {
  const auto window = makeWindow();
  QWindow& native = qWindowOf(*window);
  ASSERT_TRUE(native.isVisible());
  native.close();
  settle();
  EXPECT_FALSE(window->isVisible());
}

TEST_F(QtWindowTest, ItsDelegateMayRefuseTheUsersClose) {
  class Refusing : public NSObject, public NSWindowDelegate {
    bool windowShouldClose(NSWindow&) override { return false; }
  };
  const auto delegate = make<Refusing>();
  const auto window = makeWindow();
  window->setDelegate(delegate);
  QWindow& native = qWindowOf(*window);
  EXPECT_FALSE(native.close());
  settle();
  EXPECT_TRUE(native.isVisible());
  EXPECT_TRUE(window->isVisible());
  window->close();
  EXPECT_FALSE(native.isVisible());
}

TEST_F(QtWindowTest, ItsDelegateIsNotAskedWhenTheProgramClosesIt) {
  class Asked : public NSObject, public NSWindowDelegate {
   public:
    bool windowShouldClose(NSWindow&) override {
      ++count;
      return true;
    }
    int count = 0;
  };
  const auto delegate = make<Asked>();
  const auto window = makeWindow();
  window->setDelegate(delegate);
  window->close();
  EXPECT_EQ(delegate->count, 0);
  window->makeKeyAndOrderFront(nullptr);
  settle();
  qWindowOf(*window).close();
  EXPECT_EQ(delegate->count, 1);
  EXPECT_FALSE(window->isVisible());
}

TEST_F(QtWindowTest, ClosedByTheProgramItHidesEvenWhereAFilterRefuses) {
  class Refusing : public QObject {
   public:
    bool eventFilter(QObject*, QEvent* event) override {
      if (event->type() != QEvent::Close) return false;
      event->ignore();
      return true;
    }
  };
  const auto window = makeWindow();
  Refusing filter;
  QWindow& native = qWindowOf(*window);
  native.installEventFilter(&filter);
  window->close();
  EXPECT_FALSE(native.isVisible());
}

TEST_F(QtWindowTest, ProgramEndsWithTheLastWindowThatCloses) {
  const auto closedByUser = makeWindow(), hidden = makeWindow(), closedByProgram = makeWindow();
  EXPECT_EQ(runProgram({[&] { qWindowOf(*closedByUser).close(); }, [&] { hidden->orderOut(nullptr); },
                        [&] { closedByProgram->close(); }, [] { FAIL() << "the program has not ended"; }}),
            3u);
}

TEST_F(QtWindowTest, ProgramEndsWhenTheUserClosesItsLastWindow) {
  const auto window = makeWindow();
  EXPECT_EQ(runProgram({[&] { qWindowOf(*window).close(); }, [] { FAIL() << "the program has not ended"; }}), 1u);
}

TEST_F(QtWindowTest, ProgramDoesNotEndWhenItHidesItsLastWindow) {
  const auto window = makeWindow();
  EXPECT_EQ(runProgram({[&] { window->orderOut(nullptr); }, [] {}}), 2u);
}

TEST_F(QtWindowTest, ClosedWindowCanBeShownAgainInItsPlace) {
  const auto window = makeWindow();
  const auto button = addButton(*window);
  window->close();
  settle();
  window->makeKeyAndOrderFront(nullptr);
  settle();
  EXPECT_TRUE(qWindowOf(*window).isVisible());
  EXPECT_EQ(window->frame(), (CGRect{100, 200, 120, 80}));
  QTest::mouseClick(&qWindowOf(*window), Qt::LeftButton, {}, onButton);
  EXPECT_EQ(clicks->count, 1);
}

TEST_F(QtWindowTest, HiddenAndShownAtOnceItHasTheKeyboardAgain) {
  const auto window = makeWindow();
  ASSERT_TRUE(window->isKeyWindow());
  window->orderOut(nullptr);
  EXPECT_FALSE(window->isKeyWindow());
  window->makeKeyAndOrderFront(nullptr);
  EXPECT_TRUE(QTest::qWaitFor([&] { return window->isKeyWindow(); }));
}

TEST_F(QtWindowTest, LostReleaseEndsThePressWithoutAClick) {
  const auto window = makeWindow();
  const auto button = addButton(*window);
  QWindow& native = qWindowOf(*window);
  const auto send = [&](QEvent::Type type, QPoint place, Qt::MouseButton button, Qt::MouseButtons buttons) {
    QMouseEvent event(type, place, native.mapToGlobal(place), button, buttons, {});
    QCoreApplication::sendEvent(&native, &event);
  };
  send(QEvent::MouseButtonPress, onButton, Qt::LeftButton, Qt::LeftButton);
  ASSERT_TRUE(button->isHighlighted());
  send(QEvent::MouseMove, onButton, Qt::NoButton, Qt::NoButton);
  EXPECT_FALSE(button->isHighlighted());
  EXPECT_EQ(clicks->count, 0);
  send(QEvent::MouseButtonPress, onButton, Qt::LeftButton, Qt::LeftButton);
  send(QEvent::MouseButtonRelease, onButton, Qt::LeftButton, Qt::NoButton);
  EXPECT_EQ(clicks->count, 1);
}

// As a dialog that the action opens.
TEST_F(QtWindowTest, ActionMayThrowTheWindowAwayAndHandleEventsItself) {
  auto window = makeWindow();
  const auto button = addButton(*window);
  const QPointer<QWindow> native = &qWindowOf(*window);
  clicks->then = [&] {
    window->close();
    window = nullptr;
    ASSERT_TRUE(native);
    const QRect all(QPoint(0, 0), native->size());
    QPaintEvent paint(all);
    QCoreApplication::sendEvent(native, &paint);
    QCloseEvent close;
    QCoreApplication::sendEvent(native, &close);
    EXPECT_EQ(native->accessibleRoot(), nullptr);
    settle();
  };
  QTest::mouseClick(native, Qt::LeftButton, {}, onButton);
  EXPECT_EQ(clicks->count, 1);
  settle();
  EXPECT_FALSE(native);
}

TEST_F(QtWindowTest, TakesItsNativeWindowWithIt) {
  auto window = makeWindow();
  const QPointer<QWindow> native = &qWindowOf(*window);
  window->close();
  window = nullptr;
  EXPECT_FALSE(native);  // at once: the program may be about to end
}

TEST_F(QtWindowTest, LeavesNothingBehind) {
  auto window = makeWindow();
  const auto witness = make<Witness>(CGRect{0, 0, 120, 80});
  window->contentView()->addSubview(witness);
  settle();
  const WeakRef<NSWindow> weak = window;
  const auto before = QGuiApplication::allWindows().size();
  window->close();
  window = nullptr;
  settle();
  EXPECT_TRUE(weak.expired());
  EXPECT_EQ(QGuiApplication::allWindows().size(), before - 1);
}

TEST_F(QtWindowDeathTest, SecondBackendStopsTheProgram) { EXPECT_DEATH(QtBackend(), "second backend"); }

TEST_F(QtWindowTest, AFrameBlockIsCalledOnceAndWhatItChangesIsPaintedWithThatFrame) {
  const auto window = makeWindow();
  const auto witness = make<Witness>(CGRect{0, 0, 20, 20});
  window->contentView()->addSubview(witness);
  settle();
  witness->draws.clear();
  int calls = 0;
  std::size_t drawsAtNextFrame = 0;
  window->nativeWindow()->callAtNextFrame([&] {
    ++calls;
    witness->setNeedsDisplay(true);
    window->nativeWindow()->callAtNextFrame([&] { drawsAtNextFrame = witness->draws.size(); });
  });
  EXPECT_EQ(calls, 0);
  EXPECT_TRUE(QTest::qWaitFor([&] { return drawsAtNextFrame > 0; }, 5000));
  EXPECT_EQ(drawsAtNextFrame, 1u);
  EXPECT_EQ(calls, 1);
}

TEST_F(QtWindowTest, AFrameHasWhatItsBlocksChange) {
  const auto window = makeWindow();
  const auto witness = make<Witness>(CGRect{0, 0, 20, 20});
  window->contentView()->addSubview(witness);
  settle();
  QEvent frame(QEvent::UpdateRequest);
  QCoreApplication::sendEvent(&qWindowOf(*window), &frame);
  witness->draws.clear();
  window->nativeWindow()->callAtNextFrame([&] { witness->setNeedsDisplay(true); });
  QCoreApplication::sendEvent(&qWindowOf(*window), &frame);
  EXPECT_EQ(witness->draws.size(), 1u);
}

TEST_F(QtWindowTest, AWindowThatNeverShowedKeepsItsFrameBlocksUntilItShows) {
  const auto window = make<NSWindow>(CGRect{100, 200, 120, 80}, NSWindowStyleMaskTitled, NSBackingStoreBuffered, false);
  int calls = 0;
  window->nativeWindow()->callAtNextFrame([&] { ++calls; });
  window->orderFront(nullptr);
  EXPECT_TRUE(QTest::qWaitFor([&] { return calls == 1; }, 5000));
}

TEST_F(QtWindowTest, AHiddenWindowKeepsItsFrameBlocksUntilItShows) {
  const auto window = makeWindow();
  window->orderOut(nullptr);
  int calls = 0;
  window->nativeWindow()->callAtNextFrame([&] { ++calls; });
  window->orderFront(nullptr);
  EXPECT_TRUE(QTest::qWaitFor([&] { return calls == 1; }, 5000));
}

TEST_F(QtWindowTest, AFrameBlockMayReleaseItsWindow) {
  auto window = makeWindow();
  bool wasCalled = false, wasOtherCalled = false;
  window->nativeWindow()->callAtNextFrame([&] {
    wasCalled = true;
    window->close();
    window = nullptr;
  });
  window->nativeWindow()->callAtNextFrame([&] { wasOtherCalled = true; });
  EXPECT_TRUE(QTest::qWaitFor([&] { return wasCalled; }, 5000));
  settle();
  EXPECT_FALSE(wasOtherCalled);
}

TEST_F(QtWindowTest, AnAnimatedFrameArrives) {
  const auto window = makeWindow();
  std::vector<CGFloat> widths;
  NSNotificationCenter& center = NSNotificationCenter::defaultCenter();
  const Ref<NSObject> token =
      center.addObserverForName(NSWindowDidResizeNotification, window, nullptr,
                                [&](const Ref<NSNotification>&) { widths.push_back(window->frame().size.width); });
  window->setFrame({100, 200, 220, 80}, true, true);
  EXPECT_TRUE(QTest::qWaitFor([&] { return window->frame().size.width == 220; }, 5000));
  EXPECT_GT(widths.size(), 3u);
  EXPECT_EQ(qWindowOf(*window).width(), 220);
  center.removeObserver(token);
}

}  // namespace tessaluna::backend::qt
