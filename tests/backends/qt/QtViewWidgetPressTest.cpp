// Presses on embedded views, and what may happen to a view during one.
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QMouseEvent>
#include <QScreen>

#include "tessaluna/backends/qt/screenSpace.h"
#include "tessaluna/platform/events/NSEvent.h"
#include "tessaluna/uikit/trackrow/CloseButton.h"
#include "tessaluna/uikit/trackrow/PlaybackStatusIcon.h"
#include "tessaluna/uikit/trackrow/PrevNextButton.h"
#include "tests/backends/qt/EmbeddedViews.h"

namespace tessaluna::backend::qt {

using namespace tessaluna::platform;
using namespace TessalunaUIKit;

namespace {

using QtViewWidgetPress = EmbeddedViews;

template <class Button>
class EmbeddedButtonTest : public EmbeddedViews {};
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

TEST_F(QtViewWidgetPress, PressOnAViewWithoutActionIsHarmless) {
  const auto icon = make<PlaybackStatusIcon>(CGRect{0, 0, 32, 32});
  const QtViewWidget* widget = embed(icon);
  show();
  press(inTop(*widget, {10, 10}));
  move({-20, -20});
  release(inTop(*widget, {10, 10}));
  EXPECT_EQ(icon->window()->firstResponder(), icon->window());
}

TEST_F(QtViewWidgetPress, RemovedWhilePressedIsHarmless) {
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

TEST_F(QtViewWidgetPress, HiddenWhilePressedEndsThePress) {
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

TEST_F(QtViewWidgetPress, AWindowThatShrinksDoesNotEndAPressAtItsLowerEdge) {
  const auto button = makeButton<PrevNextButton>();
  QtViewWidget* widget = embed(button);
  top.layout()->setAlignment(widget, Qt::AlignBottom);
  top.resize(200, 400);
  show();
  press(inTop(*widget, {10, 10}));
  top.resize(200, 100);
  settle();
  EXPECT_TRUE(button->isHighlighted());
  release(inTop(*widget, {10, 10}));
  EXPECT_EQ(clicks->count, 1);
}

TEST_F(QtViewWidgetPress, TopLevelHiddenWhilePressedEndsThePress) {
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

TEST_F(QtViewWidgetPress, TakenToAnotherTopLevelWhilePressedEndsThePress) {
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

TEST_F(QtViewWidgetPress, ViewDeletesItsWidgetWhileItIsPressed) {
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
  EXPECT_EQ(view->mouse.size(), 2u) << "the press, and its end outside of everything";
  press(inTop(*neighbourWidget, {5, 5}));
  release(inTop(*neighbourWidget, {5, 5}));
  EXPECT_EQ(neighbour->mouse.size(), 2u);
}

TEST_F(QtViewWidgetPress, ActionMayDeleteTheWidgetAndItsTopLevel) {
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

TEST_F(QtViewWidgetPress, QuickClicksCountAndSlowOnesDoNot) {
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

TEST_F(QtViewWidgetPress, PressOnAForeignWidgetIsAnEventWithoutAWindow) {
  auto* edit = new QLineEdit;
  top.layout()->addWidget(edit);
  const auto view = make<Witness>(CGRect{0, 0, 50, 50});
  const QtViewWidget* widget = embed(view);
  show();
  std::vector<Ref<NSEvent>> seen;
  const auto token =
      NSEvent::addLocalMonitorForEventsMatchingMask(maskOf(NSEventType::LeftMouseDown), [&](const Ref<NSEvent>& event) {
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

TEST_F(QtViewWidgetPress, EachPressOnAForeignWidgetCountsOnce) {
  auto* label = new QLabel("handed to its parent");
  top.layout()->addWidget(label);
  embed(make<Witness>(CGRect{0, 0, 50, 50}));
  show();
  int seen = 0;
  const auto token =
      NSEvent::addLocalMonitorForEventsMatchingMask(maskOf(NSEventType::LeftMouseDown), [&](const Ref<NSEvent>& event) {
        ++seen;
        return event;
      });
  QTest::mouseClick(top.windowHandle(), Qt::LeftButton, {}, inTop(*label, {3, 3}));
  EXPECT_EQ(seen, 1);
  QMouseEvent second(QEvent::MouseButtonDblClick, QPointF(3, 3), label->mapToGlobal(QPointF(3, 3)), Qt::LeftButton,
                     Qt::LeftButton, Qt::NoModifier);
  QCoreApplication::sendEvent(label, &second);
  EXPECT_EQ(seen, 2);
  NSEvent::removeMonitor(token);
}

TEST_F(QtViewWidgetPress, OnAViewThatTakesNoKeysLeavesTheKeyboardWhereItIs) {
  auto* edit = new QLineEdit;
  top.layout()->addWidget(edit);
  const QtViewWidget* widget = embed(make<NSView>(CGRect{0, 0, 50, 50}));
  show();
  edit->setFocus();
  press(inTop(*widget, {5, 5}));
  release(inTop(*widget, {5, 5}));
  EXPECT_TRUE(edit->hasFocus());
}

TEST_F(QtViewWidgetPress, WithTheRightButtonAsksForNoContextMenuOfTheParent) {
  top.setContextMenuPolicy(Qt::CustomContextMenu);
  int asked = 0;
  QObject::connect(&top, &QWidget::customContextMenuRequested, [&] { ++asked; });
  const QtViewWidget* widget = embed(make<Witness>(CGRect{0, 0, 50, 50}));
  show();
  QTest::mouseClick(top.windowHandle(), Qt::RightButton, {}, {1, 1});
  ASSERT_EQ(asked, 1) << "beside the view";
  QTest::mouseClick(top.windowHandle(), Qt::RightButton, {}, inTop(*widget, {5, 5}));
  EXPECT_EQ(asked, 1);
}

TEST_F(QtViewWidgetPress, ButtonsOnAForeignWidgetAreToldApart) {
  auto* edit = new QLineEdit;
  edit->setContextMenuPolicy(Qt::NoContextMenu);
  top.layout()->addWidget(edit);
  embed(make<Witness>(CGRect{0, 0, 50, 50}));
  show();
  std::vector<std::pair<NSEventType, int>> seen;
  const auto token = NSEvent::addLocalMonitorForEventsMatchingMask(
      maskOf(NSEventType::LeftMouseDown) | maskOf(NSEventType::RightMouseDown) | maskOf(NSEventType::OtherMouseDown),
      [&](const Ref<NSEvent>& event) {
        seen.emplace_back(event->type(), event->buttonNumber());
        return event;
      });
  for (const Qt::MouseButton button : {Qt::LeftButton, Qt::RightButton, Qt::MiddleButton, Qt::BackButton})
    QTest::mouseClick(top.windowHandle(), button, {}, inTop(*edit, {3, 3}));
  NSEvent::removeMonitor(token);
  using enum NSEventType;
  const std::vector<std::pair<NSEventType, int>> expected{
      {LeftMouseDown, 0}, {RightMouseDown, 1}, {OtherMouseDown, 2}, {OtherMouseDown, 3}};
  EXPECT_EQ(seen, expected);
}

}  // namespace tessaluna::backend::qt
