// The window that the views of a top-level widget have in common.
#include "tessaluna/backends/qt/screenSpace.h"
#include "tessaluna/platform/foundation/NSNotificationCenter.h"
#include "tessaluna/platform/windows/NSScreen.h"
#include "tests/backends/qt/EmbeddedViews.h"

namespace tessaluna::backend::qt {

using namespace tessaluna::platform;

namespace {

using QtViewWidgetWindow = EmbeddedViews;

}  // namespace

TEST_F(QtViewWidgetWindow, IsVisibleAndKeyAsTheTopLevelIs) {
  show();
  const auto view = make<Witness>(CGRect{0, 0, 50, 50});
  embed(view);
  settle();
  const Ref<NSWindow> window = refTo(*view->window());
  EXPECT_TRUE(window->isVisible());
  EXPECT_TRUE(window->isKeyWindow());
  EXPECT_FALSE(window->isOpaque());
  top.hide();
  EXPECT_FALSE(window->isVisible());
}

TEST_F(QtViewWidgetWindow, ClosesWithTheTopLevel) {
  auto* first = new QWidget;
  const auto view = make<Witness>(CGRect{0, 0, 50, 50});
  auto* widget = new QtViewWidget(view, first);
  first->show();
  settle();
  const Ref<NSWindow> window = refTo(*view->window());
  int closed = 0;
  const auto token = NSNotificationCenter::defaultCenter().addObserverForName(NSWindowWillCloseNotification, window, nullptr,
                                                                              [&](const Ref<NSNotification>&) { ++closed; });
  widget->setParent(&top);
  delete first;
  NSNotificationCenter::defaultCenter().removeObserver(token);
  EXPECT_EQ(closed, 1);
  EXPECT_EQ(view->window(), nullptr);
  widget->show();
  show();
  EXPECT_NE(view->window(), nullptr);
}

TEST_F(QtViewWidgetWindow, IsWhereTheTopLevelIs) {
  const auto view = make<Witness>(CGRect{0, 0, 50, 50});
  embed(view);
  show();
  const Ref<NSWindow> window = refTo(*view->window());
  const auto differenceOfCorners = [&] {
    const CGRect place = rectOnScreen(top.geometry());
    return CGPoint{window->frame().origin.x - place.origin.x, CGRectGetMaxY(window->frame()) - CGRectGetMaxY(place)};
  };
  top.move(top.pos() + QPoint(30, 20));
  settle();
  EXPECT_EQ(differenceOfCorners(), CGPoint());
  EXPECT_TRUE(window->screen()->isEqual(NSScreen::screens()[0].get()));
  top.setGeometry(QGuiApplication::screens()[1]->geometry().adjusted(20, 20, -20, -20));
  settle();
  EXPECT_TRUE(window->screen()->isEqual(NSScreen::screens()[1].get()));
  window->setFrame({40, 60, 200, 100}, true);
  settle();
  EXPECT_EQ(top.geometry(), qtRectOf({40, 60, 200, 100}));
  EXPECT_EQ(differenceOfCorners(), CGPoint());
}

TEST_F(QtViewWidgetWindow, MayAskForTheKeyboard) {
  const auto view = make<Witness>(CGRect{0, 0, 50, 50});
  embed(view);
  show();
  QWidget other;
  other.show();
  other.activateWindow();
  settle();
  ASSERT_FALSE(view->window()->isKeyWindow());
  view->window()->makeKeyAndOrderFront(nullptr);
  settle();
  EXPECT_TRUE(top.isActiveWindow());
  EXPECT_TRUE(view->window()->isKeyWindow());
}

TEST_F(QtViewWidgetWindow, MayBeAChildOfAnotherWindowOfTheProgram) {
  const auto view = make<Witness>(CGRect{0, 0, 50, 50});
  embed(view);
  show();
  const auto parent = make<NSWindow>(CGRect{0, 0, 50, 50}, NSWindowStyleMaskTitled, NSBackingStoreBuffered, true);
  parent->orderFront(nullptr);
  parent->addChildWindow(refTo(*view->window()), NSWindowAbove);
  EXPECT_EQ(top.windowHandle()->transientParent(), &qWindowOf(*parent));
  parent->removeChildWindow(*view->window());
  EXPECT_EQ(top.windowHandle()->transientParent(), nullptr);
  parent->close();
}

TEST_F(QtViewWidgetWindow, StaysWhereItIsWhenThePrimaryScreenGetsAnotherHeight) {
  const auto view = make<Witness>(CGRect{0, 0, 50, 50});
  embed(view);
  show();
  const HeightOfPrimaryScreen other(1200);
  const QRect place = top.geometry();
  const int height = QGuiApplication::primaryScreen()->geometry().height();
  EXPECT_EQ(view->window()->frame().origin.x, place.x());
  EXPECT_NEAR(CGRectGetMaxY(view->window()->frame()), height - place.y(), 1e-9);
}

}  // namespace tessaluna::backend::qt
