#include "tessaluna/backends/qt/QtViewWidget.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPointer>
#include <QScreen>
#include <QScrollArea>
#include <QScrollBar>
#include <cmath>
#include <QtTest/qtestspontaneevent.h>

#include "tessaluna/backends/qt/EmbeddingHosts.h"
#include "tessaluna/backends/qt/KeptPicture.h"
#include "tessaluna/backends/qt/screenSpace.h"
#include "tessaluna/platform/events/NSCursor.h"
#include "tessaluna/platform/events/NSEvent.h"
#include "tessaluna/platform/events/NSTrackingArea.h"
#include "tessaluna/platform/graphics/CGContext.h"
#include "tessaluna/platform/graphics/NSColor.h"
#include "tessaluna/platform/graphics/NSGraphicsContext.h"
#include "tessaluna/platform/graphics/NSRect.h"
#include "tessaluna/platform/layout/NSLayoutConstraint.h"
#include "tessaluna/platform/text/NSFont.h"
#include "tessaluna/platform/time/NSAnimationContext.h"
#include "tessaluna/platform/views/NSTextField.h"
#include "tessaluna/platform/views/NSViewAnimator.h"
#include "tessaluna/platform/windows/NSWindowDelegate.h"
#include "tessaluna/uikit/suggestions/SuggestionsWindowController.h"
#include "tests/backends/qt/EmbeddedViews.h"

namespace tessaluna::backend::qt {

using namespace tessaluna::platform;

namespace {

class QtViewWidgetTest : public EmbeddedViews {
 protected:
  // The view, higher than the window, in a scroll area of Qt's.
  QScrollArea* showScrolling(const Ref<NSView>& view) {
    auto* area = new QScrollArea;
    auto* widget = new QtViewWidget(view);
    widget->setFixedSize(widget->sizeHint());
    area->setWidget(widget);
    top.layout()->addWidget(area);
    top.resize(200, 300);
    show();
    return area;
  }
  void turnWheelOver(const QWidget& widget, QPoint point) {
    const QPointF place = inTop(widget, point);
    QWheelEvent event(place, top.mapToGlobal(place), QPoint(), QPoint(0, -120), Qt::NoButton, Qt::NoModifier,
                      Qt::NoScrollPhase, false);
    QSpontaneKeyEvent::setSpontaneous(&event);  // Qt hands only the user's wheel on from widget to widget
    qApp->notify(top.windowHandle(), &event);
    settle();
  }

  // What is shown of the top-level widget, in which only the witness draws, is what the engine makes of the same.
  void expectDevicePixelsOf(const Witness& view) {
    QPalette white;
    white.setColor(QPalette::Window, Qt::white);
    top.setPalette(white);
    const QImage shown = top.grab().toImage().convertToFormat(QImage::Format_ARGB32_Premultiplied);
    const double scale = top.devicePixelRatioF();
    ASSERT_EQ(shown.devicePixelRatio(), scale);

    KeptPicture expected;
    expected.setSize(view.window()->frame().size, scale);
    const CGRect everything{{0, 0}, view.window()->frame().size};
    expected.paint(std::span(&everything, 1), [&](Canvas& canvas) {
      CGContext context(canvas);
      const auto graphics = NSGraphicsContext::graphicsContextWithCGContext(context, false);
      const CurrentContextScope current(graphics);
      NSColor::whiteColor()->setFill();
      NSRectFill(everything);
      view.window()->contentView()->displayRectInContext(everything, *graphics);
    });
    // Of a last row or column that the widget fills only in part, there may be none.
    ASSERT_LE(expected.image().width() - shown.width(), 1);
    ASSERT_LE(expected.image().height() - shown.height(), 1);
    int different = 0, red = 0;
    for (int y = 0; y < shown.height(); ++y) {
      for (int x = 0; x < shown.width(); ++x) {
        const QColor a = shown.pixelColor(x, y), b = expected.image().pixelColor(x, y);
        const int away =
            std::max({std::abs(a.red() - b.red()), std::abs(a.green() - b.green()), std::abs(a.blue() - b.blue())});
        different += away > 1;
        red += a == QColor(Qt::red);
      }
    }
    EXPECT_EQ(different, 0);
    EXPECT_GT(red, 0.7 * view.bounds().size.width * view.bounds().size.height * scale * scale);
  }
};

}  // namespace

TEST_F(QtViewWidgetTest, SizeHintIsTheIntrinsicSizeOrTheFrame) {
  class Sized : public NSView {
   public:
    Sized() : NSView(CGRect{0, 0, 90, 40}) {}
    CGSize intrinsicContentSize() const override { return {size, noIntrinsicMetric}; }
    CGFloat size = 33.5;
  };
  const auto view = make<Sized>();
  const QtViewWidget* widget = embed(view);
  EXPECT_EQ(widget->sizeHint(), QSize(34, 40));
  EXPECT_EQ(widget->minimumSizeHint(), QSize(34, 0));
  show();
  const int width = top.sizeHint().width();
  view->size = 83.5;
  view->invalidateIntrinsicContentSize();
  settle();
  EXPECT_EQ(top.sizeHint().width(), width + 50);
}

TEST_F(QtViewWidgetTest, FieldKeepsItsHeightAndTakesTheWidthThatThereIs) {
  const auto field = make<NSTextField>(CGRect{0, 0, 120, 24});
  QtViewWidget* widget = embed(field);
  EXPECT_EQ(widget->sizeHint().width(), 120);
  const int height = widget->sizeHint().height();
  top.layout()->addWidget(new QLabel("beside it"));
  top.resize(500, 300);
  show();
  EXPECT_EQ(widget->height(), height);
  EXPECT_GT(widget->width(), 300);
  EXPECT_EQ(widget->sizeHint().width(), 120) << "what it came with stays what it wants";
}

TEST_F(QtViewWidgetTest, SizePolicyIsTheViewsUntilTheProgramSetsOne) {
  const auto label = NSTextField::labelWithString("a label");
  QtViewWidget* widget = embed(label);
  EXPECT_EQ(widget->sizePolicy(), QSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed));
  EXPECT_EQ(embed(make<NSView>(CGRect{0, 0, 20, 20}))->sizePolicy(),
            QSizePolicy(QSizePolicy::Preferred, QSizePolicy::Preferred));
  show();
  label->setEditable(true);
  EXPECT_EQ(widget->sizePolicy(), QSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed));
  const QSizePolicy own(QSizePolicy::Ignored, QSizePolicy::Ignored);
  widget->setSizePolicy(own);
  label->setEditable(false);
  EXPECT_EQ(widget->sizePolicy(), own);
}

TEST_F(QtViewWidgetTest, IsFoundAsAChild) {
  QtViewWidget* widget = embed(make<NSView>(CGRect{0, 0, 20, 20}));
  top.layout()->addWidget(new QWidget);
  EXPECT_EQ(top.findChildren<QtViewWidget*>(), QList<QtViewWidget*>{widget});
  EXPECT_STREQ(widget->metaObject()->className(), "tessaluna::backend::qt::QtViewWidget");
}

TEST_F(QtViewWidgetTest, PopUpOfABareFieldOpensBelowIt) {
  const auto field = make<NSTextField>(CGRect{0, 0, 120, 24});
  const QtViewWidget* widget = embed(field);
  top.resize(300, 200);
  show();
  const auto popUp = make<TessalunaUIKit::SuggestionsWindowController>();
  popUp->beginForTextField(field);
  const CGRect frame = popUp->window()->frame();
  const CGPoint lowerCorner = pointOnScreen(top.geometry().topLeft() + inTop(*widget, {0, widget->height()}));
  EXPECT_NEAR(frame.origin.x, lowerCorner.x, 1);
  EXPECT_NEAR(CGRectGetMaxY(frame), lowerCorner.y - 2, 1);
  popUp->cancelSuggestions();
}

TEST_F(QtViewWidgetTest, ViewsOfOneTopLevelShareOneWindow) {
  const auto first = make<Witness>(CGRect{0, 0, 50, 50}), second = make<Witness>(CGRect{0, 0, 50, 50});
  const auto elsewhere = make<Witness>(CGRect{0, 0, 50, 50});
  embed(first);
  embed(second);
  show();
  QtViewWidget other(elsewhere);
  other.show();
  settle();
  ASSERT_NE(first->window(), nullptr);
  EXPECT_EQ(first->window(), second->window());
  EXPECT_NE(first->window(), elsewhere->window());
  const CGSize content = first->window()->contentView()->frame().size;
  EXPECT_EQ(content.width, top.width());
  EXPECT_GE(content.height, top.height());  // up to a whole device pixel
  EXPECT_LT(content.height, top.height() + 1);
}

TEST_F(QtViewWidgetTest, ViewLiesWhereItsWidgetLies) {
  const auto view = make<Witness>(CGRect{0, 0, 50, 50});
  const QtViewWidget* widget = embed(view);
  show();
  top.move(40, 60);
  top.resize(300, 200);
  settle();
  const CGRect onScreen = view->window()->convertRectToScreen(view->convertRectToView(view->bounds(), nullptr));
  const CGRect expected = rectOnScreen(QRect(widget->mapToGlobal(QPoint(0, 0)), widget->size()));
  const double scale = top.devicePixelRatioF();
  // It begins and ends with the nearest whole device pixels.
  const double away = scale == std::floor(scale) ? 0 : 0.5 / scale + 1e-9;
  EXPECT_NEAR(CGRectGetMinX(onScreen), CGRectGetMinX(expected), away);
  EXPECT_NEAR(CGRectGetMaxX(onScreen), CGRectGetMaxX(expected), away);
  EXPECT_NEAR(CGRectGetMinY(onScreen), CGRectGetMinY(expected), away);
  EXPECT_NEAR(CGRectGetMaxY(onScreen), CGRectGetMaxY(expected), away);
  const CGRect inWindow = view->convertRectToView(view->bounds(), nullptr);
  for (const double edge :
       {CGRectGetMinX(inWindow), CGRectGetMaxX(inWindow), CGRectGetMinY(inWindow), CGRectGetMaxY(inWindow)})
    EXPECT_NEAR(edge * scale, std::round(edge * scale), 1e-6);
}

TEST_F(QtViewWidgetTest, ViewMadeForConstraintsLiesWhereItsWidgetLiesToo) {
  const auto view = make<Witness>(CGRect{0, 0, 50, 50}), inner = make<Witness>(CGRect{0, 0, 10, 10});
  for (const auto& each : {view, inner}) each->setTranslatesAutoresizingMaskIntoConstraints(false);
  view->addSubview(inner);
  for (const NSLayoutAttribute edge :
       {NSLayoutAttributeLeading, NSLayoutAttributeTrailing, NSLayoutAttributeTop, NSLayoutAttributeBottom})
    NSLayoutConstraint::constraintWithItem(inner, edge, NSLayoutRelationEqual, view, edge, 1, 0)->setActive(true);
  const QtViewWidget* widget = embed(view);
  show();
  top.resize(300, 200);
  settle();
  EXPECT_GT(widget->width(), 50);
  EXPECT_NEAR(view->frame().size.width, widget->width(), 1);
  EXPECT_NEAR(inner->frame().origin.x, 0, 1e-9);
  EXPECT_NEAR(inner->frame().origin.y, 0, 1e-9);
  EXPECT_NEAR(inner->frame().size.width, view->bounds().size.width, 1e-9);
  EXPECT_NEAR(inner->frame().size.height, view->bounds().size.height, 1e-9);
}

TEST_F(QtViewWidgetTest, InAViewsSuperviewYCountsUp) {
  const auto view = make<NSView>(CGRect{0, 0, 40, 20});
  const auto* widget = embed(view);
  show();
  ASSERT_TRUE(view->superview());
  EXPECT_FALSE(view->superview()->isFlipped());
  // What hangs below a frame's origin, as a pop-up does, hangs below the widget.
  const CGPoint origin = view->superview()->convertPointToView(view->frame().origin, nullptr);
  const QPoint lowerLeft = inTop(*widget, QPoint(0, widget->height()));
  const double scale = view->window()->backingScaleFactor();
  EXPECT_NEAR(origin.y, view->window()->frame().size.height - lowerLeft.y(), 1 / scale);
}

TEST_F(QtViewWidgetTest, ADragOnAViewNeverMovesTheWindow) {
  const auto view = make<NSView>(CGRect{0, 0, 40, 20});
  const auto* widget = embed(view);
  show();
  view->window()->setMovableByWindowBackground(true);
  const CGRect place = view->window()->frame();
  press(inTop(*widget, {5, 5}));
  move(inTop(*widget, {25, 15}));
  release(inTop(*widget, {25, 15}));
  EXPECT_EQ(view->window()->frame(), place);
}

TEST_F(QtViewWidgetTest, PressMovesTheFocusIntoTheView) {
  auto* edit = new QLineEdit;
  top.layout()->addWidget(edit);
  const auto view = make<Witness>(CGRect{0, 0, 50, 50});
  const QtViewWidget* widget = embed(view);
  show();
  edit->setFocus();
  press(inTop(*widget, {5, 5}));
  release(inTop(*widget, {5, 5}));
  EXPECT_TRUE(widget->hasFocus());
  EXPECT_EQ(view->window()->firstResponder(), view.get());
  edit->setFocus();
  EXPECT_EQ(view->window()->firstResponder(), view->window());
}

TEST_F(QtViewWidgetTest, FocusFollowsTheFirstResponder) {
  const auto first = make<Witness>(CGRect{0, 0, 50, 50}), second = make<Witness>(CGRect{0, 0, 50, 50});
  const QtViewWidget* firstWidget = embed(first);
  const QtViewWidget* secondWidget = embed(second);
  show();
  first->window()->makeFirstResponder(second.get());
  EXPECT_TRUE(secondWidget->hasFocus());
  first->window()->makeFirstResponder(first.get());
  EXPECT_TRUE(firstWidget->hasFocus());
  QTest::keyClick(top.windowHandle(), 'x');
  EXPECT_EQ(first->keys, std::vector<std::string>{"x"});
  EXPECT_TRUE(second->keys.empty());
}

TEST_F(QtViewWidgetTest, ScrolledViewIsCutToWhatShows) {
  const auto view = make<Witness>(CGRect{0, 0, 50, 2000});
  QScrollArea* area = showScrolling(view);
  area->verticalScrollBar()->setValue(500);
  settle();
  const double shown = area->viewport()->height();
  const CGRect visible = view->visibleRect(), expected{0, 2000 - 500 - shown, 50, shown};
  const double scale = top.devicePixelRatioF(), away = scale == std::floor(scale) ? 0 : 0.5 / scale + 1e-9;
  EXPECT_NEAR(visible.origin.x, expected.origin.x, away);
  EXPECT_NEAR(visible.origin.y, expected.origin.y, away);
  EXPECT_NEAR(CGRectGetMaxX(visible), CGRectGetMaxX(expected), away);
  EXPECT_NEAR(CGRectGetMaxY(visible), CGRectGetMaxY(expected), away);
  const QPoint place = inTop(*area->viewport(), {20, 10});
  press(place);
  release(place);
  ASSERT_FALSE(view->mouse.empty());
  if (away == 0) {
    EXPECT_EQ(view->mouse.front(), "down 1 (20, 1490)");
  }
}

TEST_F(QtViewWidgetTest, ExposeDrawsNothing) {
  const auto view = make<Witness>(CGRect{0, 0, 50, 50});
  QtViewWidget* widget = embed(view);
  show();
  const std::size_t drawn = view->draws.size();
  ASSERT_GT(drawn, 0u);
  widget->repaint();
  top.repaint();
  settle();
  EXPECT_EQ(view->draws.size(), drawn);
  view->setNeedsDisplay(true);
  settle();
  ASSERT_EQ(view->draws.size(), drawn + 1);
  EXPECT_EQ(view->draws.back(), view->bounds());
}

TEST_F(QtViewWidgetTest, PaletteAndFontChangesRedraw) {
  const auto view = make<Witness>(CGRect{0, 0, 50, 50});
  embed(view);
  show();
  std::size_t drawn = view->draws.size();
  QPalette dark = QApplication::palette();
  dark.setColor(QPalette::Window, Qt::black);
  QApplication::setPalette(dark);
  settle();
  EXPECT_GT(view->draws.size(), drawn);
  EXPECT_EQ(desktop.systemColor(SystemColor::WindowBackground), (Color{0, 0, 0, 1}));
  QApplication::setPalette(QPalette());

  settle();
  drawn = view->draws.size();
  QFont larger = top.font();
  larger.setPointSize(30);
  top.setFont(larger);
  settle();
  EXPECT_GT(view->draws.size(), drawn);
}

TEST_F(QtViewWidgetTest, SystemColorsFollowThePaletteOfTheProgram) {
  class Ground : public NSView {
   public:
    using NSView::NSView;
    void drawRect(CGRect rect) override {
      NSColor::controlBackgroundColor()->setFill();
      NSRectFill(rect);
    }
  };
  const QtViewWidget* widget = embed(make<Ground>(CGRect{0, 0, 50, 50}));
  show();
  const auto shown = [&] {
    settle();
    const QImage picture = top.grab().toImage();
    return picture.pixelColor(inTop(*widget, widget->rect().center()) * picture.devicePixelRatio());
  };
  for (const QColor& color : {QColor(1, 2, 3), QColor(250, 120, 40)}) {
    QPalette palette;
    palette.setColor(QPalette::Base, color);
    QApplication::setPalette(palette);
    EXPECT_EQ(shown(), color);
  }
  QApplication::setPalette(QPalette());
}

TEST_F(QtViewWidgetTest, FontOfTheProgramReachesLabelsAndTheirSizes) {
  const auto label = NSTextField::labelWithString("Wide or narrow");
  label->setFont(NSFont::systemFontOfSize(13));
  QtViewWidget* widget = embed(label);
  show();
  const QFont before = QApplication::font();
  const int width = widget->sizeHint().width();
  QFont wide = before;
  wide.setStretch(200);
  wide.setFamily("monospace");
  QApplication::setFont(wide);
  settle();
  EXPECT_NE(widget->sizeHint().width(), width);
  EXPECT_EQ(widget->width(), widget->sizeHint().width()) << "the layout has asked again";
  QApplication::setFont(before);
  settle();
  EXPECT_EQ(widget->sizeHint().width(), width);
}

TEST_F(QtViewWidgetTest, ScrollThatNoViewTakesScrollsTheHost) {
  const auto view = make<Witness>(CGRect{0, 0, 50, 2000});
  QScrollArea* area = showScrolling(view);
  const auto turnWheel = [&] { turnWheelOver(*area->viewport(), {20, 10}); };
  turnWheel();
  ASSERT_EQ(view->scrolls.size(), 1u);
  EXPECT_LT(view->scrolls[0].height, 0);
  EXPECT_EQ(area->verticalScrollBar()->value(), 0) << "the view has taken it";
  view->takesScrolls = false;
  turnWheel();
  EXPECT_EQ(view->scrolls.size(), 2u);
  const int once = area->verticalScrollBar()->value();
  EXPECT_GT(once, 0);
  turnWheel();
  EXPECT_EQ(area->verticalScrollBar()->value(), 2 * once);
}

TEST_F(QtViewWidgetTest, WhatTheWheelOfAnAreaAroundScrollsUnderThePointerIsEntered) {
  class Watched : public NSView {
   public:
    using NSView::NSView;
    void updateTrackingAreas() override {
      NSView::updateTrackingAreas();
      if (!trackingAreas().empty()) return;
      addTrackingArea(make<NSTrackingArea>(
          NSZeroRect, NSTrackingInVisibleRect | NSTrackingActiveAlways | NSTrackingMouseEnteredAndExited,
          refTo<NSResponder>(*this)));
    }
    void mouseEntered(const Ref<NSEvent>&) override { isEntered = true; }
    void mouseExited(const Ref<NSEvent>&) override { isEntered = false; }
    bool isEntered = false;
  };
  constexpr CGFloat height = 2000, half = height / 2;
  const auto view = make<NSView>(CGRect{0, 0, 50, height});
  const auto upper = make<Watched>(CGRect{0, half, 50, half}), lower = make<Watched>(CGRect{0, 0, 50, half});
  view->addSubview(upper);
  view->addSubview(lower);
  QScrollArea* area = showScrolling(view);
  const auto scrollTo = [&](int y) {
    area->verticalScrollBar()->setValue(y);
    settle();
  };
  scrollTo(int(half) - 20);
  for (const int x : {30, 20}) move(inTop(*area->viewport(), {x, 10}));
  ASSERT_TRUE(upper->isEntered);
  scrollTo(int(half) + 20);
  QTest::qWait(50);
  EXPECT_TRUE(upper->isEntered) << "the program scrolls";
  scrollTo(int(half) - 20);
  area->verticalScrollBar()->setSingleStep(20);
  turnWheelOver(*area->viewport(), {20, 10});
  ASSERT_GT(area->verticalScrollBar()->value(), int(half));
  EXPECT_TRUE(QTest::qWaitFor([&] { return lower->isEntered; }));
  EXPECT_FALSE(upper->isEntered);
}

TEST_F(QtViewWidgetTest, AScrollIsAsFarAsTheDeviceSaysOrTheProgramsNumberOfLines) {
  const auto view = make<Witness>(CGRect{0, 0, 50, 50});
  QtViewWidget* widget = embed(view);
  show();
  const auto scroll = [&](QPoint pixels) {
    QWheelEvent wheel({5, 5}, widget->mapToGlobal(QPointF(5, 5)), pixels, {0, 120}, {}, {}, Qt::NoScrollPhase, false);
    QCoreApplication::sendEvent(widget, &wheel);
    return view->scrolls.back();
  };
  EXPECT_EQ(std::abs(scroll({7, -5}).width), 7);
  const int usual = QApplication::wheelScrollLines();
  const double lines = scroll({}).height;
  EXPECT_NE(lines, 0);
  QApplication::setWheelScrollLines(2 * usual);
  EXPECT_EQ(scroll({}).height, 2 * lines);
  QApplication::setWheelScrollLines(usual);
}

TEST_F(QtViewWidgetTest, AViewStaysInItsWindowWhileItsWidgetIsHidden) {
  const auto view = make<Witness>(CGRect{0, 0, 50, 50});
  QtViewWidget* widget = embed(view);
  show();
  const NSView* clip = view->superview();
  widget->hide();
  widget->show();
  EXPECT_EQ(view->superview(), clip);
}

TEST_F(QtViewWidgetTest, AViewThatTheProgramHasTakenOutStaysWhereItIs) {
  const auto view = make<Witness>(CGRect{0, 0, 50, 50});
  const QtViewWidget* widget = embed(view);
  show();
  const auto box = make<NSView>(CGRect{0, 0, 60, 60});
  box->addSubview(view);
  delete widget;
  EXPECT_EQ(view->superview(), box.get());
}

TEST_F(QtViewWidgetTest, AViewThatTheProgramHasTakenOutKeepsItsFrameWhenTheWidgetMoves) {
  const auto view = make<Witness>(CGRect{0, 0, 50, 50});
  QtViewWidget* widget = embed(view);
  show();
  const auto box = make<NSView>(CGRect{0, 0, 60, 60});
  box->addSubview(view);
  view->setFrame({1, 2, 3, 4});
  widget->resize(30, 30);
  EXPECT_EQ(view->frame(), (CGRect{1, 2, 3, 4}));
}

TEST_F(QtViewWidgetTest, AWidgetThatIsDeletedLeavesNothingInTheWindow) {
  const auto view = make<Witness>(CGRect{0, 0, 50, 50});
  const QtViewWidget* widget = embed(view);
  embed(make<Witness>(CGRect{0, 0, 50, 50}));
  show();
  const Ref<NSView> content = view->window()->contentView();
  ASSERT_EQ(content->subviews().size(), 2u);
  delete widget;
  EXPECT_EQ(content->subviews().size(), 1u);
  EXPECT_EQ(view->superview(), nullptr);
}

TEST_F(QtViewWidgetTest, WhatIsRedrawnIsSeen) {
  class Colored : public NSView {
   public:
    using NSView::NSView;
    void drawRect(CGRect rect) override {
      color->setFill();
      NSRectFill(rect);
    }
    Ref<NSColor> color = NSColor::redColor();
  };
  const auto view = make<Colored>(CGRect{0, 0, 50, 50});
  const QtViewWidget* widget = embed(view);
  show();
  const auto seen = [&] {
    const QImage all = top.screen()->grabWindow(top.winId()).toImage();
    const QPoint place = widget->mapTo(&top, QPoint(20, 20));
    return all.pixelColor(place * all.width() / top.width());
  };
  EXPECT_TRUE(QTest::qWaitFor([&] { return seen() == QColor(Qt::red); }));
  view->color = NSColor::blueColor();
  view->setNeedsDisplay(true);
  EXPECT_TRUE(QTest::qWaitFor([&] { return seen() == QColor(Qt::blue); }));
}

TEST_F(QtViewWidgetTest, AtRestNoTimerRuns) {
  const auto view = make<Witness>(CGRect{0, 0, 50, 50});
  QtViewWidget* widget = embed(view);
  show();
  turnWheelOver(*widget, {5, 5});
  view->setNeedsDisplay(true);
  settle();
  TimerCount timers;
  qApp->installEventFilter(&timers);
  settle();
  EXPECT_EQ(timers.count, 0);
}

TEST_F(QtViewWidgetTest, AViewThatResizesWithItsSuperviewKeepsItsSizeWhenMoreOfItShows) {
  class Resized : public NSView {
   public:
    using NSView::NSView;
    void resizeSubviewsWithOldSize(CGSize) override { ++resizes; }
    int resizes = 0;
  };
  const auto view = make<Resized>(CGRect{0, 0, 50, 2000});
  view->setAutoresizingMask(NSViewWidthSizable | NSViewHeightSizable);
  view->addSubview(make<NSView>(CGRect{}));
  showScrolling(view);
  view->resizes = 0;
  top.resize(top.width(), top.height() + 40);
  settle();
  EXPECT_EQ(view->resizes, 0);
}

TEST_F(QtViewWidgetTest, AWidgetThatWasTakenBelowAnotherTopLevelLeavesTheOthersToRedraw) {
  const auto view = make<Witness>(CGRect{0, 0, 50, 50}), taken = make<Witness>(CGRect{0, 0, 50, 50});
  embed(view);
  QtViewWidget* widget = embed(taken);
  show();
  QWidget other;
  widget->setParent(&other);
  view->draws.clear();
  view->setNeedsDisplay(true);
  settle();
  EXPECT_EQ(view->draws.size(), 1u);
}

TEST_F(QtViewWidgetTest, APictureThatIsTakenIsUpToDate) {
  const auto view = make<Witness>(CGRect{0, 0, 50, 50});
  embed(view);
  show();
  view->draws.clear();
  view->setNeedsDisplay(true);
  top.grab();
  EXPECT_EQ(view->draws.size(), 1u);
}

TEST_F(QtViewWidgetTest, OnlyTheWidgetUnderThePointerHasItsCursor) {
  class Linked : public NSView {
   public:
    using NSView::NSView;
    void resetCursorRects() override { addCursorRect({25, 0, 25, 50}, NSCursor::pointingHandCursor()); }
  };
  const QtViewWidget* first = embed(make<Linked>(CGRect{0, 0, 50, 50}));
  const QtViewWidget* second = embed(make<Linked>(CGRect{0, 0, 50, 50}));
  show();
  move(inTop(*second, {10, 20}));
  EXPECT_EQ(second->cursor().shape(), Qt::ArrowCursor);
  move(inTop(*second, {40, 20}));
  EXPECT_EQ(second->cursor().shape(), Qt::PointingHandCursor);
  EXPECT_EQ(first->cursor().shape(), Qt::ArrowCursor);
}

TEST_F(QtViewWidgetTest, GoesToTheWindowOfItsNewTopLevel) {
  const auto view = make<Witness>(CGRect{0, 0, 50, 50});
  QtViewWidget* widget = embed(view);
  show();
  const NSWindow* first = view->window();
  QWidget other;
  new QHBoxLayout(&other);
  other.layout()->addWidget(widget);
  other.show();
  settle();
  ASSERT_NE(view->window(), nullptr);
  EXPECT_NE(view->window(), first);
  EXPECT_GT(view->draws.size(), 1u);
  EXPECT_EQ(other.grab().toImage().pixelColor(inTop(*widget, widget->rect().center()) * other.devicePixelRatioF()),
            QColor(Qt::red));
}

TEST_F(QtViewWidgetTest, MayBecomeAWindowThatHasAParentAndReturn) {
  const auto view = make<Witness>(CGRect{0, 0, 50, 50});
  QtViewWidget* widget = embed(view);
  show();
  const NSWindow* first = view->window();
  widget->setWindowFlag(Qt::Window);
  widget->show();
  widget->resize(70, 60);
  settle();
  EXPECT_NE(view->window(), first);
  EXPECT_NEAR(view->frame().size.width, 70, 1);
  EXPECT_NEAR(view->frame().size.height, 60, 1);
  widget->setWindowFlag(Qt::Window, false);
  widget->show();
  settle();
  EXPECT_EQ(view->window(), first);
}

TEST_F(QtViewWidgetTest, ShowsAtDevicePixelsWhatTheViewDraws) {
  top.layout()->setContentsMargins(7, 5, 3, 9);  // no whole pixels at scale 1.5
  const auto view = make<Witness>(CGRect{0, 0, 33, 31});
  embed(view)->setFixedSize(33, 31);
  show();
  expectDevicePixelsOf(*view);
}

TEST_F(QtViewWidgetTest, ScaleOfAnotherScreenIsTakenUp) {
  ASSERT_GE(QGuiApplication::screens().size(), 2);
  const QScreen* finer = QGuiApplication::screens().back();
  top.layout()->setContentsMargins(7, 5, 3, 9);
  const auto view = make<Witness>(CGRect{0, 0, 33, 31});
  embed(view)->setFixedSize(33, 31);
  top.move(20, 20);
  show();
  const double scale = view->window()->backingScaleFactor();
  view->draws.clear();

  top.move(finer->geometry().topLeft() + QPoint(20, 20));
  settle();
  EXPECT_EQ(view->window()->backingScaleFactor(), 2 * scale);
  const CGRect place = view->convertRectToView(view->bounds(), nullptr);
  EXPECT_EQ(place.origin.x * 2 * scale, std::round(place.origin.x * 2 * scale));
  ASSERT_FALSE(view->draws.empty());
  EXPECT_EQ(view->draws.back(), view->bounds());
  expectDevicePixelsOf(*view);

  top.move(20, 20);
  settle();
  EXPECT_EQ(view->window()->backingScaleFactor(), scale);
  expectDevicePixelsOf(*view);
}

TEST_F(QtViewWidgetTest, LeavesNothingBehind) {
  auto view = make<Witness>(CGRect{0, 0, 50, 50});
  WeakRef<NSWindow> weakWindow;
  const WeakRef<NSView> weakView = view;
  {
    QWidget window;
    new QHBoxLayout(&window);
    window.layout()->addWidget(new QtViewWidget(view));
    window.show();
    settle();
    weakWindow = std::static_pointer_cast<NSWindow>(view->window()->shared_from_this());
    EXPECT_NE(desktop.hosts().hostIfAny(window), nullptr);
    view = nullptr;
  }
  settle();
  EXPECT_TRUE(weakView.expired());
  EXPECT_TRUE(weakWindow.expired());
}

TEST_F(QtViewWidgetTest, AnAnimationOfAnEmbeddedViewStepsAndArrives) {
  const auto view = make<NSView>(CGRect{0, 0, 100, 100});
  const auto witness = make<Witness>(CGRect{0, 0, 20, 20});
  view->addSubview(witness);
  embed(view);
  show();
  witness->draws.clear();
  bool isDone = false;
  NSAnimationContext::runAnimationGroup(
      [&](NSAnimationContext&) {
        witness->animator()->setFrame({0, 0, 80, 20});
      },
      [&] { isDone = true; });
  EXPECT_TRUE(QTest::qWaitFor([&] { return isDone; }, 5000));
  EXPECT_EQ(witness->frame(), (CGRect{0, 0, 80, 20}));
  EXPECT_GT(witness->draws.size(), 3u);
}

using QtViewWidgetDeathTest = QtViewWidgetTest;

TEST_F(QtViewWidgetDeathTest, NullViewStopsTheProgram) { EXPECT_DEATH(QtViewWidget(nullptr), "made without a view"); }

}  // namespace tessaluna::backend::qt
