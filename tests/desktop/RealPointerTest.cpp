// The small controls under a real pointer: the X server's, which xdotool moves and presses.
#include <QWheelEvent>
#include <QWidget>

#include "tessaluna/backends/qt/QtViewWidget.h"
#include "tessaluna/platform/events/NSEvent.h"
#include "tessaluna/platform/windows/NSWindow.h"
#include "tessaluna/uikit/trackrow/CloseButton.h"
#include "tessaluna/uikit/trackrow/PlaybackStatusIcon.h"
#include "tessaluna/uikit/trackrow/PrevNextButton.h"
#include "tests/desktop/QtDesktop.h"

using namespace tessaluna::platform;
using namespace TessalunaUIKit;

namespace {

class RealPointer : public harness::QtDesktop {
 protected:
  RealPointer() {
    top_.setWindowFlags(Qt::FramelessWindowHint | Qt::X11BypassWindowManagerHint);
    top_.setGeometry(100, 100, 300, 200);
  }

  // Shows the view at a place of the window.
  void show(const Ref<NSView>& view, QPoint place) {
    auto* widget = new tessaluna::backend::qt::QtViewWidget(view, &top_);
    widget->setGeometry({place, QSize(40, 40)});
    top_.show();
    ASSERT_TRUE(eventually([&] { return view->window() != nullptr; }));
    settle();
  }

  template <class Button>
  Ref<Button> showButton(const Ref<harness::ClickCount>& clicks) {
    const auto button = make<Button>(CGRect{0, 0, 40, 40});
    button->setTarget(clicks);
    button->setAction("clicked:");
    show(button, {50, 60});
    return button;
  }

  static void movePointerTo(int x, int y) { xdotool({"mousemove", QString::number(100 + x), QString::number(100 + y)}); }

  template <class Button>
  void pressDragOutAndBackAndRelease() {
    const auto clicks = make<harness::ClickCount>();
    const auto button = showButton<Button>(clicks);
    movePointerTo(70, 80);
    EXPECT_FALSE(button->isHighlighted());
    xdotool({"mousedown", "1"});
    EXPECT_TRUE(eventually([&] { return button->isHighlighted(); })) << "pressed";
    movePointerTo(250, 180);
    EXPECT_TRUE(eventually([&] { return !button->isHighlighted(); })) << "dragged out";
    movePointerTo(75, 85);
    EXPECT_TRUE(eventually([&] { return button->isHighlighted(); })) << "dragged back";
    EXPECT_EQ(clicks->count, 0);
    xdotool({"mouseup", "1"});
    EXPECT_TRUE(eventually([&] { return clicks->count == 1; })) << "released";
    EXPECT_FALSE(button->isHighlighted());
  }

  QWidget top_;
};

TEST_F(RealPointer, PrevNextButtonFollowsPressDragOutBackAndRelease) { pressDragOutAndBackAndRelease<PrevNextButton>(); }

TEST_F(RealPointer, CloseButtonFollowsPressDragOutBackAndRelease) { pressDragOutAndBackAndRelease<CloseButton>(); }

TEST_F(RealPointer, ReleaseOutsideNotifiesNobody) {
  const auto clicks = make<harness::ClickCount>();
  const auto button = showButton<CloseButton>(clicks);
  movePointerTo(70, 80);
  xdotool({"mousedown", "1"});
  ASSERT_TRUE(eventually([&] { return button->isHighlighted(); }));
  movePointerTo(250, 180);
  xdotool({"mouseup", "1"});
  EXPECT_FALSE(button->isHighlighted());
  EXPECT_EQ(clicks->count, 0);
}

TEST_F(RealPointer, PressingThePlaybackStatusIconIsHarmless) {
  const auto icon = make<PlaybackStatusIcon>(CGRect{0, 0, 40, 40});
  show(icon, {50, 60});
  movePointerTo(70, 80);
  xdotool({"mousedown", "1"});
  movePointerTo(250, 180);
  movePointerTo(70, 80);
  xdotool({"mouseup", "1"});
  EXPECT_NE(icon->window(), nullptr);
}

TEST_F(RealPointer, AButtonDestroyedWhilePressedIsHarmless) {
  const auto clicks = make<harness::ClickCount>();
  auto button = showButton<CloseButton>(clicks);
  movePointerTo(70, 80);
  xdotool({"mousedown", "1"});
  ASSERT_TRUE(eventually([&] { return button->isHighlighted(); }));
  const WeakRef<CloseButton> weak = button;
  button = nullptr;
  delete top_.findChild<QWidget*>();
  EXPECT_TRUE(weak.expired());
  xdotool({"mouseup", "1"});
  EXPECT_EQ(clicks->count, 0);
}

// Accepts drags, and lets them move its window if that can be moved by its background.
class DraggedView : public NSView {
 public:
  using NSView::NSView;
  void mouseDown(const Ref<NSEvent>&) override {}
  void mouseDragged(const Ref<NSEvent>&) override { ++drags; }
  int drags = 0;
};

TEST_F(RealPointer, ADragOnAnEmbeddedViewNeverMovesTheProgramsWindow) {
  const auto view = make<DraggedView>(CGRect{0, 0, 40, 40});
  ASSERT_TRUE(view->mouseDownCanMoveWindow());
  show(view, {50, 60});
  view->window()->setMovableByWindowBackground(true);
  const QRect place = top_.geometry();
  movePointerTo(70, 80);
  xdotool({"mousedown", "1"});
  movePointerTo(120, 110);
  movePointerTo(170, 140);
  EXPECT_TRUE(eventually([&] { return view->drags >= 2; }));
  xdotool({"mouseup", "1"});
  EXPECT_EQ(top_.geometry(), place);
}

// Keeps how far it was scrolled.
class ScrolledView : public NSView {
 public:
  using NSView::NSView;
  void scrollWheel(const Ref<NSEvent>& event) override { way += event->scrollingDeltaY(); }
  double way = 0;
};

TEST_F(RealPointer, AScrollIsAsFarWhateverUnitsTheDriverCountsIn) {
  const auto view = make<ScrolledView>(CGRect{0, 0, 40, 40});
  show(view, {50, 60});
  auto* widget = top_.findChild<QWidget*>();
  const auto scroll = [&](int units) {
    view->way = 0;
    QWheelEvent wheel({5, 5}, widget->mapToGlobal(QPointF(5, 5)), {0, units}, {0, 120}, {}, {}, Qt::NoScrollPhase, false);
    QApplication::sendEvent(widget, &wheel);
    return view->way;
  };
  const double notch = scroll(0);
  EXPECT_GT(notch, 0);
  EXPECT_EQ(scroll(15), notch);
  EXPECT_EQ(scroll(120), notch);
}

}  // namespace
