#include "backends/qt/QtViewWidget.h"

#include <QHBoxLayout>
#include <QLineEdit>
#include <QScreen>
#include <QScrollArea>
#include <QScrollBar>
#include <QShortcut>
#include <QVBoxLayout>
#include <QtTest/qtestspontaneevent.h>
#include <cmath>

#include "backends/qt/EmbeddingHosts.h"
#include "backends/qt/KeptPicture.h"
#include "backends/qt/screenSpace.h"
#include "platform/events/NSEvent.h"
#include "platform/graphics/CGContext.h"
#include "platform/graphics/NSColor.h"
#include "platform/graphics/NSGraphicsContext.h"
#include "platform/graphics/NSRect.h"
#include "platform/text/NSFont.h"
#include "platform/views/NSTextField.h"
#include "uikit/trackrow/CloseButton.h"
#include "uikit/trackrow/PlaybackStatusIcon.h"
#include "uikit/trackrow/PrevNextButton.h"
#include "tests/backends/qt/QtTest.h"

namespace backend::qt {

using namespace platform;
using namespace TessalunaUIKit;

namespace {

class QtViewWidgetTest : public QtTest {
 protected:
  QtViewWidgetTest() { new QHBoxLayout(&top); }

  void show() {
    top.show();
    top.activateWindow();
    settle();
  }

  QtViewWidget* embed(const Ref<NSView>& view) {
    auto* widget = new QtViewWidget(view);
    top.layout()->addWidget(widget);
    return widget;
  }

  template <class Button>
  Ref<Button> makeButton() {
    const auto button = make<Button>(CGRect{0, 0, 24, 24});
    button->setTarget(clicks);
    button->setAction("clicked:");
    return button;
  }

  // A point of a widget, as its top-level window counts.
  static QPoint inTop(const QWidget& widget, QPoint point) { return widget.mapTo(widget.window(), point); }
  void press(QPoint point) { QTest::mousePress(top.windowHandle(), Qt::LeftButton, {}, point); }
  void move(QPoint point) {
    QTest::mouseMove(top.windowHandle(), point);
    settle();
  }
  void release(QPoint point) { QTest::mouseRelease(top.windowHandle(), Qt::LeftButton, {}, point); }

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

  Ref<Clicks> clicks = make<Clicks>();
  QWidget top;
};

template <class Button>
class EmbeddedButtonTest : public QtViewWidgetTest {};
using Buttons = testing::Types<PrevNextButton, CloseButton>;
TYPED_TEST_SUITE(EmbeddedButtonTest, Buttons);

}  // namespace

TYPED_TEST(EmbeddedButtonTest, ClickSendsTheAction) {
  const auto button = this->template makeButton<TypeParam>();
  const QtViewWidget* widget = this->embed(button);
  this->show();
  const QPoint on = this->inTop(*widget, {10, 10});
  this->press(on);
  EXPECT_TRUE(button->isHighlighted());
  this->release(on);
  EXPECT_FALSE(button->isHighlighted());
  EXPECT_EQ(this->clicks->count, 1);
}

TYPED_TEST(EmbeddedButtonTest, DragOutAndReleaseSendsNothing) {
  const auto button = this->template makeButton<TypeParam>();
  const QtViewWidget* widget = this->embed(button);
  this->show();
  this->press(this->inTop(*widget, {10, 10}));
  this->move({-20, -20});
  EXPECT_FALSE(button->isHighlighted());
  this->release({-20, -20});
  EXPECT_EQ(this->clicks->count, 0);
}

TYPED_TEST(EmbeddedButtonTest, DragOutAndBackAndReleaseSendsTheAction) {
  const auto button = this->template makeButton<TypeParam>();
  const QtViewWidget* widget = this->embed(button);
  this->show();
  const QPoint on = this->inTop(*widget, {10, 10});
  this->press(on);
  this->move({-20, -20});
  this->move(on);
  EXPECT_TRUE(button->isHighlighted());
  this->release(on);
  EXPECT_EQ(this->clicks->count, 1);
}

TYPED_TEST(EmbeddedButtonTest, SpacePressesItWhileItHasTheFocus) {
  const auto button = this->template makeButton<TypeParam>();
  QtViewWidget* widget = this->embed(button);
  this->show();
  widget->setFocus();
  ASSERT_EQ(button->window()->firstResponder(), button.get());
  QTest::keyClick(this->top.windowHandle(), Qt::Key_Space);
  EXPECT_EQ(this->clicks->count, 1);
}

TEST_F(QtViewWidgetTest, PressOnAViewWithoutActionIsHarmless) {
  const auto icon = make<PlaybackStatusIcon>(CGRect{0, 0, 32, 32});
  const QtViewWidget* widget = embed(icon);
  show();
  press(inTop(*widget, {10, 10}));
  move({-20, -20});
  release(inTop(*widget, {10, 10}));
  EXPECT_EQ(icon->window()->firstResponder(), icon->window());
}

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
  for (const double edge : {CGRectGetMinX(inWindow), CGRectGetMaxX(inWindow), CGRectGetMinY(inWindow), CGRectGetMaxY(inWindow)})
    EXPECT_NEAR(edge * scale, std::round(edge * scale), 1e-6);
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

TEST_F(QtViewWidgetTest, TabGoesInAlongTheViewsAndOut) {
  auto* before = new QLineEdit;
  top.layout()->addWidget(before);
  const auto box = make<NSView>(CGRect{0, 0, 60, 30});
  const auto left = make<Witness>(CGRect{0, 0, 30, 30}), right = make<Witness>(CGRect{30, 0, 30, 30});
  left->takesKeys = right->takesKeys = false;
  box->addSubview(left);
  box->addSubview(right);
  embed(box);
  auto* after = new QLineEdit;
  top.layout()->addWidget(after);
  show();
  before->setFocus();

  const auto place = [&]() -> std::string {
    if (before->hasFocus()) return "before";
    if (after->hasFocus()) return "after";
    if (box->window()->firstResponder() == left.get()) return "left";
    if (box->window()->firstResponder() == right.get()) return "right";
    return "nowhere";
  };
  std::vector<std::string> places;
  for (int i = 0; i < 3; ++i) {
    QTest::keyClick(top.windowHandle(), Qt::Key_Tab);
    places.push_back(place());
  }
  for (int i = 0; i < 3; ++i) {
    QTest::keyClick(top.windowHandle(), Qt::Key_Backtab, Qt::ShiftModifier);
    places.push_back(place());
  }
  const std::vector<std::string> expected{"left", "right", "after", "right", "left", "before"};
  EXPECT_EQ(places, expected);
}

TEST_F(QtViewWidgetTest, TabGoesThroughSeveralViewsAndForeignWidgetsBothWays) {
  auto* first = new QLineEdit;
  top.layout()->addWidget(first);
  const auto button = makeButton<PrevNextButton>();
  embed(button);
  embed(make<NSView>(CGRect{0, 0, 20, 20}));  // takes no keys
  const auto box = make<NSView>(CGRect{0, 0, 60, 30});
  const auto left = make<Witness>(CGRect{0, 0, 30, 30}), right = make<Witness>(CGRect{30, 0, 30, 30});
  left->takesKeys = right->takesKeys = false;
  box->addSubview(left);
  box->addSubview(right);
  embed(box);
  auto* middle = new QLineEdit;
  top.layout()->addWidget(middle);
  const auto last = makeButton<CloseButton>();
  embed(last);
  show();
  first->setFocus();

  const auto place = [&]() -> std::string {
    if (first->hasFocus()) return "first";
    if (middle->hasFocus()) return "middle";
    const NSResponder* responder = button->window()->firstResponder();
    if (responder == button.get()) return "button";
    if (responder == left.get()) return "left";
    if (responder == right.get()) return "right";
    if (responder == last.get()) return "last";
    return "nowhere";
  };
  const std::vector<std::string> chain{"first", "button", "left", "right", "middle", "last"};
  std::vector<std::string> forward, backward;
  for (std::size_t i = 0; i < chain.size(); ++i) {
    forward.push_back(place());
    QTest::keyClick(top.windowHandle(), Qt::Key_Tab);
  }
  EXPECT_EQ(forward, chain);
  EXPECT_EQ(place(), "first") << "round again";
  for (std::size_t i = 0; i < chain.size(); ++i) {
    QTest::keyClick(top.windowHandle(), Qt::Key_Backtab, Qt::ShiftModifier);
    backward.insert(backward.begin(), place());
  }
  EXPECT_EQ(backward, chain);
}

TEST_F(QtViewWidgetTest, TabAmongViewsThatTakeNoKeysComesToAnEnd) {
  embed(make<NSView>(CGRect{0, 0, 20, 20}));
  embed(make<NSView>(CGRect{0, 0, 20, 20}));
  show();
  for (int i = 0; i < 3; ++i) QTest::keyClick(top.windowHandle(), Qt::Key_Tab);
  auto* edit = new QLineEdit;
  top.layout()->addWidget(edit);
  settle();
  QTest::keyClick(top.windowHandle(), Qt::Key_Tab);
  EXPECT_TRUE(edit->hasFocus());
}

TEST_F(QtViewWidgetTest, TabGoesRoundWhereNothingElseTakesIt) {
  const auto button = makeButton<CloseButton>();
  embed(button);
  show();
  button->window()->makeFirstResponder(button.get());
  QTest::keyClick(top.windowHandle(), Qt::Key_Tab);
  EXPECT_EQ(button->window()->firstResponder(), button.get());
}

TEST_F(QtViewWidgetTest, TakenKeyOverridesAShortcut) {
  const auto view = make<Witness>(CGRect{0, 0, 50, 50});
  embed(view);
  QShortcut shortcut(QKeySequence(Qt::Key_K), &top);
  int fired = 0;
  QObject::connect(&shortcut, &QShortcut::activated, &top, [&] { ++fired; });
  show();
  view->window()->makeFirstResponder(view.get());
  QTest::keyClick(top.windowHandle(), 'k');
  EXPECT_EQ(fired, 0);
  EXPECT_EQ(view->keys, std::vector<std::string>{"k"});
  view->takesKeys = false;
  QTest::keyClick(top.windowHandle(), 'k');
  EXPECT_EQ(fired, 1);
  EXPECT_EQ(view->keys.size(), 2u);  // asked once more, and no more than once
}

TEST_F(QtViewWidgetTest, TakenKeyHasNoSecondEffectOnWhereTheFocusWent) {
  auto* edit = new QLineEdit;
  top.layout()->addWidget(edit);
  class Mover : public Witness {
   public:
    using Witness::Witness;
    void keyDown(const Ref<NSEvent>& event) override {
      Witness::keyDown(event);
      target->setFocus();
    }
    QLineEdit* target = nullptr;
  };
  const auto view = make<Mover>(CGRect{0, 0, 50, 50});
  view->target = edit;
  embed(view);
  show();
  view->window()->makeFirstResponder(view.get());
  QTest::keyClick(top.windowHandle(), 'q');
  EXPECT_TRUE(edit->hasFocus());
  EXPECT_EQ(edit->text(), "");
  QTest::keyClick(top.windowHandle(), 'q');
  EXPECT_EQ(edit->text(), "q");
}

TEST_F(QtViewWidgetTest, KeyThatNobodyTakesGoesOnToTheParentWidget) {
  class Parent : public QWidget {
   public:
    void keyPressEvent(QKeyEvent* event) override { keys.push_back(event->key()); }
    std::vector<int> keys;
  };
  Parent parent;
  const auto view = make<Witness>(CGRect{0, 0, 50, 50});
  auto* widget = new QtViewWidget(view, &parent);
  parent.show();
  parent.activateWindow();
  settle();
  widget->setFocus();
  QTest::keyClick(parent.windowHandle(), Qt::Key_Escape);
  EXPECT_TRUE(parent.keys.empty());
  view->takesKeys = false;
  QTest::keyClick(parent.windowHandle(), Qt::Key_Escape);
  EXPECT_EQ(parent.keys, std::vector<int>{Qt::Key_Escape});
}

TEST_F(QtViewWidgetTest, ScrolledViewIsCutToWhatShows) {
  auto* area = new QScrollArea;
  const auto view = make<Witness>(CGRect{0, 0, 50, 2000});
  auto* widget = new QtViewWidget(view);
  widget->setFixedSize(50, 2000);
  area->setWidget(widget);
  top.layout()->addWidget(area);
  top.resize(200, 300);
  show();
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

TEST_F(QtViewWidgetTest, RemovedWhilePressedIsHarmless) {
  const auto doomed = makeButton<PrevNextButton>();
  const auto staying = makeButton<PrevNextButton>();
  QtViewWidget* doomedWidget = embed(doomed);
  const QtViewWidget* stayingWidget = embed(staying);
  show();
  const QPoint on = inTop(*doomedWidget, {10, 10});
  press(on);
  ASSERT_TRUE(doomed->isHighlighted());
  delete doomedWidget;
  EXPECT_FALSE(doomed->isHighlighted());
  EXPECT_EQ(doomed->window(), nullptr);
  settle();
  release(on);
  EXPECT_EQ(clicks->count, 0);
  const QPoint onStaying = inTop(*stayingWidget, {10, 10});
  press(onStaying);
  release(onStaying);
  EXPECT_EQ(clicks->count, 1);
}

TEST_F(QtViewWidgetTest, HiddenWhilePressedEndsThePress) {
  const auto button = makeButton<PrevNextButton>();
  QtViewWidget* widget = embed(button);
  top.resize(100, 100);
  show();
  const QPoint on = inTop(*widget, {10, 10});
  press(on);
  ASSERT_TRUE(button->isHighlighted());
  widget->hide();
  EXPECT_FALSE(button->isHighlighted());
  widget->show();
  settle();
  EXPECT_FALSE(button->isHighlighted());
  move(on + QPoint(1, 1));
  EXPECT_FALSE(button->isHighlighted());
  release(on);
  EXPECT_EQ(clicks->count, 0);
  press(on);
  release(on);
  EXPECT_EQ(clicks->count, 1);
}

TEST_F(QtViewWidgetTest, TopLevelHiddenWhilePressedEndsThePress) {
  const auto button = makeButton<PrevNextButton>();
  const QtViewWidget* widget = embed(button);
  show();
  press(inTop(*widget, {10, 10}));
  ASSERT_TRUE(button->isHighlighted());
  top.hide();
  EXPECT_FALSE(button->isHighlighted());
  show();
  release(inTop(*widget, {10, 10}));
  EXPECT_EQ(clicks->count, 0);
}

TEST_F(QtViewWidgetTest, TakenToAnotherTopLevelWhilePressedEndsThePress) {
  const auto button = makeButton<PrevNextButton>();
  QtViewWidget* widget = embed(button);
  show();
  const QPoint on = inTop(*widget, {10, 10});
  press(on);
  ASSERT_TRUE(button->isHighlighted());
  QWidget other;
  new QHBoxLayout(&other);
  other.layout()->addWidget(widget);
  other.show();
  settle();
  EXPECT_FALSE(button->isHighlighted());
  release(on);
  EXPECT_EQ(clicks->count, 0);
  QTest::mousePress(other.windowHandle(), Qt::LeftButton, {}, inTop(*widget, {10, 10}));
  QTest::mouseRelease(other.windowHandle(), Qt::LeftButton, {}, inTop(*widget, {10, 10}));
  EXPECT_EQ(clicks->count, 1);
}

TEST_F(QtViewWidgetTest, ViewDeletesItsWidgetWhileItIsPressed) {
  class Suicidal : public Witness {
   public:
    using Witness::Witness;
    void mouseDown(const Ref<NSEvent>& event) override {
      Witness::mouseDown(event);
      delete widget;
    }
    QPointer<QtViewWidget> widget;
  };
  const auto view = make<Suicidal>(CGRect{0, 0, 50, 50});
  const auto neighbour = make<Witness>(CGRect{0, 0, 50, 50});
  view->widget = embed(view);
  QtViewWidget* neighbourWidget = embed(neighbour);
  show();
  const QPoint on = inTop(*view->widget, {5, 5});
  press(on);
  EXPECT_EQ(view->widget, nullptr);
  EXPECT_EQ(view->window(), nullptr);
  move(on + QPoint(2, 2));
  release(on);
  settle();
  EXPECT_EQ(view->mouse.size(), 1u);
  press(inTop(*neighbourWidget, {5, 5}));
  release(inTop(*neighbourWidget, {5, 5}));
  EXPECT_EQ(neighbour->mouse.size(), 2u);
}

TEST_F(QtViewWidgetTest, ActionMayDeleteTheWidgetAndItsTopLevel) {
  auto* window = new QWidget;
  const auto button = makeButton<PrevNextButton>();
  auto* widget = new QtViewWidget(button, window);
  widget->setFixedSize(24, 24);
  window->show();
  settle();
  clicks->then = [&] { window->deleteLater(); };
  QTest::mousePress(window->windowHandle(), Qt::LeftButton, {}, {10, 10});
  QTest::mouseRelease(window->windowHandle(), Qt::LeftButton, {}, {10, 10});
  settle();
  EXPECT_EQ(clicks->count, 1);
  EXPECT_EQ(button->window(), nullptr);
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
  const auto label = make<NSTextField>(CGRect{0, 0, 50, 20});
  label->setStringValue("Wide or narrow");
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
  auto* area = new QScrollArea;
  const auto view = make<Witness>(CGRect{0, 0, 50, 2000});
  auto* widget = new QtViewWidget(view);
  widget->setFixedSize(50, 2000);
  area->setWidget(widget);
  top.layout()->addWidget(area);
  top.resize(200, 300);
  show();
  const auto turnWheel = [&] {
    const QPointF place = inTop(*area->viewport(), {20, 10});
    QWheelEvent event(place, top.mapToGlobal(place), QPoint(), QPoint(0, -120), Qt::NoButton, Qt::NoModifier,
                      Qt::NoScrollPhase, false);
    QSpontaneKeyEvent::setSpontaneous(&event);  // Qt hands only the user's wheel on from widget to widget
    qApp->notify(top.windowHandle(), &event);
    settle();
  };
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

TEST_F(QtViewWidgetTest, QuickClicksCountAndSlowOnesDoNot) {
  const auto view = make<Witness>(CGRect{0, 0, 50, 50});
  const QtViewWidget* widget = embed(view);
  show();
  const QPoint on = inTop(*widget, {5, 5});
  const auto counts = [&] {
    std::string result;
    for (const std::string& entry : view->mouse) result += entry.substr(0, entry.find(" (")) + "; ";
    view->mouse.clear();
    return result;
  };
  QTest::mouseDClick(top.windowHandle(), Qt::LeftButton, {}, on);
  EXPECT_EQ(counts(), "down 1; up 1; down 2; up 2; ");
  // After a double click QTest's clock goes on by more than the desktop's interval, as it does after each release.
  press(on);
  release(on);
  press(on);
  release(on);
  EXPECT_EQ(counts(), "down 1; up 1; down 1; up 1; ");
  // Far apart is not twice the same.
  QTest::mouseDClick(top.windowHandle(), Qt::LeftButton, {}, on);
  view->mouse.clear();
  press(on + QPoint(30, 0));
  release(on + QPoint(30, 0));
  EXPECT_EQ(counts(), "down 1; up 1; ");
}

TEST_F(QtViewWidgetTest, PressOnAForeignWidgetIsAnEventWithoutAWindow) {
  auto* edit = new QLineEdit;
  top.layout()->addWidget(edit);
  const auto view = make<Witness>(CGRect{0, 0, 50, 50});
  const QtViewWidget* widget = embed(view);
  show();
  std::vector<Ref<NSEvent>> seen;
  const auto token = NSEvent::addLocalMonitorForEventsMatchingMask(
      maskOf(NSEventType::LeftMouseDown), [&](const Ref<NSEvent>& event) {
        seen.push_back(event);
        return event;
      });
  press(inTop(*edit, {3, 3}));
  release(inTop(*edit, {3, 3}));
  ASSERT_EQ(seen.size(), 1u);
  EXPECT_EQ(seen[0]->window(), nullptr);
  EXPECT_EQ(seen[0]->locationInWindow(), pointOnScreen(edit->mapToGlobal(QPointF(3, 3))));
  press({1, 1});  // on the top-level widget itself, which hands it to nobody
  release({1, 1});
  EXPECT_EQ(seen.size(), 2u);
  press(inTop(*widget, {3, 3}));
  release(inTop(*widget, {3, 3}));
  ASSERT_EQ(seen.size(), 3u);
  EXPECT_EQ(seen[2]->window().get(), view->window());
  NSEvent::removeMonitor(token);
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

}  // namespace backend::qt
