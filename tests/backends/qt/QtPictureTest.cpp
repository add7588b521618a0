// What a widget with an embedded view shows, and when it is drawn.
#include <QImage>
#include <QWidget>

#include "backends/qt/QtViewWidget.h"
#include "platform/graphics/NSColor.h"
#include "platform/graphics/NSRect.h"
#include "platform/views/NSView.h"
#include "tests/backends/qt/QtDesktop.h"

using namespace platform;

namespace {

class RedView : public NSView {
 public:
  using NSView::NSView;
  int drawCount = 0;
  void drawRect(CGRect rect) override {
    ++drawCount;
    NSColor::redColor()->setFill();
    NSRectFill(rect);
  }
};

class QtPicture : public harness::QtDesktop {
 protected:
  QtPicture() {
    top_.setFixedSize(100, 80);
    widget_ = new backend::qt::QtViewWidget(view_, &top_);
    widget_->setGeometry(20, 10, 40, 30);
    top_.show();
    EXPECT_TRUE(eventually([&] { return view_->drawCount > 0; }));
    settle();
  }

  const Ref<RedView> view_ = make<RedView>(CGRect{0, 0, 40, 30});
  QWidget top_;
  backend::qt::QtViewWidget* widget_ = nullptr;
};

TEST_F(QtPicture, TheViewFillsItsWidgetAndNothingElse) {
  const QImage picture = top_.grab().toImage();
  EXPECT_EQ(picture.pixelColor(20, 10), QColor(Qt::red));
  EXPECT_EQ(picture.pixelColor(59, 39), QColor(Qt::red));
  EXPECT_NE(picture.pixelColor(19, 10), QColor(Qt::red));
  EXPECT_NE(picture.pixelColor(60, 39), QColor(Qt::red));
}

TEST_F(QtPicture, AnExposeCopiesAndDrawsNothing) {
  const int before = view_->drawCount;
  widget_->repaint();
  top_.repaint();
  settle();
  EXPECT_EQ(view_->drawCount, before);
}

TEST_F(QtPicture, AskingTwiceForARedrawDrawsOnce) {
  const int before = view_->drawCount;
  view_->setNeedsDisplay(true);
  view_->setNeedsDisplay(true);
  settle();
  EXPECT_EQ(view_->drawCount, before + 1);
}

TEST_F(QtPicture, AMovedWidgetTakesItsViewAlong) {
  widget_->move(50, 40);
  settle();
  const QImage picture = top_.grab().toImage();
  EXPECT_EQ(picture.pixelColor(55, 45), QColor(Qt::red));
  EXPECT_NE(picture.pixelColor(25, 15), QColor(Qt::red));
}

}  // namespace
