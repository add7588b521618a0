// Widgets that are disabled, by themselves or with a widget above, and enabled again.
#include <QCursor>
#include <QLineEdit>

#include "tessaluna/platform/events/NSEvent.h"
#include "tessaluna/platform/events/NSTrackingArea.h"
#include "tessaluna/platform/views/NSButton.h"
#include "tessaluna/platform/views/NSTextField.h"
#include "tests/backends/qt/EmbeddedViews.h"

namespace tessaluna::backend::qt {

using namespace tessaluna::platform;

namespace {

// A box with two buttons, of which the right one is disabled by itself, and a field.
class QtViewWidgetEnabled : public EmbeddedViews {
 protected:
  QtViewWidgetEnabled() {
    left = makeButton<NSButton>();
    right = makeButton<NSButton>();
    right->setFrameOrigin({30, 0});
    right->setEnabled(false);
    field->setDelegate(nullptr);
    for (const Ref<NSView>& view : std::vector<Ref<NSView>>{left, right, field}) box->addSubview(view);
    widget = embed(box);
    widget->setFixedSize(widget->sizeHint());
    show();
  }

  QPoint middleOf(const NSView& view) const {
    const CGPoint middle = view.convertPointToView({CGRectGetMidX(view.bounds()), CGRectGetMidY(view.bounds())}, nullptr);
    return {static_cast<int>(middle.x), static_cast<int>(view.window()->frame().size.height - middle.y)};
  }
  void click(const NSView& view) {
    press(middleOf(view));
    release(middleOf(view));
    settle();
  }

  Ref<NSView> box = make<NSView>(CGRect{0, 0, 200, 60});
  Ref<NSButton> left, right;
  Ref<NSTextField> field = make<NSTextField>(CGRect{60, 0, 100, 24});
  QtViewWidget* widget = nullptr;
};

}  // namespace

TEST_F(QtViewWidgetEnabled, DisabledItsControlsTakeNoPressAndAreAfterwardsAsTheyWere) {
  click(*left);
  EXPECT_EQ(clicks->count, 1);
  widget->setEnabled(false);
  EXPECT_FALSE(left->isEnabled());
  EXPECT_FALSE(field->isEnabled());
  click(*left);
  click(*field);
  EXPECT_EQ(clicks->count, 1);
  EXPECT_EQ(field->currentEditor(), nullptr);
  widget->setEnabled(true);
  EXPECT_TRUE(left->isEnabled());
  EXPECT_FALSE(right->isEnabled());
  click(*left);
  EXPECT_EQ(clicks->count, 2);
  click(*field);
  EXPECT_NE(field->currentEditor(), nullptr);
}

TEST_F(QtViewWidgetEnabled, DisabledWithItsParentTakesNoKey) {
  auto* other = new QLineEdit(&top);
  other->show();
  left->window()->makeFirstResponder(left.get());
  QTest::keyClick(top.windowHandle(), Qt::Key_Space);
  EXPECT_EQ(clicks->count, 1);
  top.setEnabled(false);
  QTest::keyClick(top.windowHandle(), Qt::Key_Space);
  EXPECT_EQ(clicks->count, 1);
  QKeyEvent sent(QEvent::KeyPress, Qt::Key_Space, Qt::NoModifier, " ");
  QCoreApplication::sendEvent(widget, &sent);
  EXPECT_EQ(clicks->count, 1);
  top.setEnabled(true);
  left->window()->makeFirstResponder(left.get());
  QTest::keyClick(top.windowHandle(), Qt::Key_Space);
  EXPECT_EQ(clicks->count, 2);
}

TEST_F(QtViewWidgetEnabled, DisabledInTheMiddleOfAPressEndsItWithoutAnAction) {
  press(middleOf(*left));
  EXPECT_TRUE(left->isHighlighted());
  widget->setEnabled(false);
  EXPECT_FALSE(left->isHighlighted());
  release(middleOf(*left));
  widget->setEnabled(true);
  release(middleOf(*left));
  EXPECT_EQ(clicks->count, 0);
  click(*left);
  EXPECT_EQ(clicks->count, 1);
}

TEST_F(QtViewWidgetEnabled, DisabledItLeavesAPressOnAnotherWidgetAlone) {
  const auto pressed = makeButton<NSButton>();
  embed(pressed)->setFixedSize(24, 24);
  settle();
  click(*left);  // a press that has ended
  clicks->count = 0;
  press(middleOf(*pressed));
  widget->setEnabled(false);
  EXPECT_TRUE(pressed->isHighlighted());
  release(middleOf(*pressed));
  EXPECT_EQ(clicks->count, 1);
}

TEST_F(QtViewWidgetEnabled, DisabledItsViewsThatAreNotControlsTakeNoPress) {
  const auto view = make<Witness>(CGRect{0, 0, 30, 30});
  QtViewWidget* second = embed(view);
  second->setFixedSize(30, 30);
  second->setEnabled(false);
  settle();
  click(*view);
  EXPECT_TRUE(view->mouse.empty());
  second->setEnabled(true);
  click(*view);
  EXPECT_EQ(view->mouse.size(), 2u);
}

TEST_F(QtViewWidgetEnabled, DisabledInTheMiddleOfAPressEndsItForViewsThatAreNotControls) {
  const auto view = make<Witness>(CGRect{0, 0, 30, 30});
  QtViewWidget* second = embed(view);
  second->setFixedSize(30, 30);
  settle();
  press(middleOf(*view));
  ASSERT_EQ(view->mouse.size(), 1u);
  second->setEnabled(false);
  ASSERT_EQ(view->mouse.size(), 2u);
  EXPECT_EQ(view->mouse.back().substr(0, 2), "up");
  release(middleOf(*view));
}

TEST_F(QtViewWidgetEnabled, DisabledUnderThePointerItIsLeftAndEnabledItIsEntered) {
  class Watched : public NSView {
   public:
    using NSView::NSView;
    void mouseEntered(const Ref<NSEvent>&) override { isEntered = true; }
    void mouseExited(const Ref<NSEvent>&) override { isEntered = false; }
    bool isEntered = false;
  };
  const auto view = make<Watched>(CGRect{0, 0, 30, 30});
  view->addTrackingArea(make<NSTrackingArea>(view->bounds(), NSTrackingActiveAlways | NSTrackingMouseEnteredAndExited,
                                             refTo<NSResponder>(*view)));
  QtViewWidget* second = embed(view);
  second->setFixedSize(30, 30);
  settle();
  // Elsewhere the offscreen platform does not find what is under the pointer that it has moved.
  if (top.devicePixelRatioF() != 1) return;
  const auto movePointerTo = [&](QPoint point) {
    QCursor::setPos(top.mapToGlobal(point));
    settle();
  };
  movePointerTo(middleOf(*left));
  movePointerTo(middleOf(*view));
  ASSERT_TRUE(view->isEntered);
  second->setEnabled(false);
  EXPECT_FALSE(view->isEntered);
  second->setEnabled(true);
  EXPECT_TRUE(view->isEntered);
  movePointerTo(middleOf(*left));
  second->setEnabled(false);
  second->setEnabled(true);
  EXPECT_FALSE(view->isEntered);
}

TEST_F(QtViewWidgetEnabled, DisabledBelowATopLevelWhereItHasNotBeenShownItIsHarmless) {
  move(middleOf(*left));
  QWidget other;
  widget->setParent(&other);
  widget->setAttribute(Qt::WA_UnderMouse);  // as a pointer leaves it that was on the widget when that went
  widget->setEnabled(false);
  widget->setEnabled(true);
  widget->setAttribute(Qt::WA_UnderMouse, false);
  EXPECT_FALSE(widget->grab().isNull());
  QTest::keyClick(widget, Qt::Key_A);
  other.show();
  widget->show();
  settle();
  EXPECT_TRUE(left->isEnabled());
  widget->setParent(&top);
}

TEST_F(QtViewWidgetEnabled, DisabledWhileAFieldIsEditedEndsTheEditing) {
  click(*field);
  QTest::keyClick(top.windowHandle(), Qt::Key_A);
  ASSERT_NE(field->currentEditor(), nullptr);
  widget->setEnabled(false);
  EXPECT_EQ(field->currentEditor(), nullptr);
  EXPECT_EQ(field->stringValue(), "a");
  EXPECT_FALSE(widget->hasFocus());
}

TEST_F(QtViewWidgetEnabled, DisabledBeforeItIsShownItIsDisabled) {
  const auto late = makeButton<NSButton>();
  QtViewWidget* second = embed(late);
  second->setEnabled(false);
  settle();
  EXPECT_FALSE(late->isEnabled());
  second->setEnabled(true);
  EXPECT_TRUE(late->isEnabled());
  second->setEnabled(false);
  delete second;
  EXPECT_TRUE(late->isEnabled());
}

TEST_F(QtViewWidgetEnabled, DisabledItLooksDisabled) {
  const auto picture = [&] {
    settle();
    return widget->grab().toImage();
  };
  left->setTitle("x");
  const QImage usual = picture();
  widget->setEnabled(false);
  EXPECT_NE(picture(), usual);
  widget->setEnabled(true);
  EXPECT_EQ(picture(), usual);
}

}  // namespace tessaluna::backend::qt
