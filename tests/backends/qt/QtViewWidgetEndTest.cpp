// Widgets and windows that end in the middle of an event of their own. What these tests look for, sanitizers see.
#include <QLineEdit>
#include <QPointer>

#include "tessaluna/platform/views/NSButton.h"
#include "tessaluna/platform/views/NSTextField.h"
#include "tests/backends/qt/EmbeddedViews.h"

namespace tessaluna::backend::qt {

using namespace tessaluna::platform;

namespace {

// Ends something at one moment of a field's editing.
class Ender : public NSObject, public NSTextFieldDelegate {
 public:
  void controlTextDidChange(const Ref<NSNotification>&) override { end(atChange); }
  void controlTextDidEndEditing(const Ref<NSNotification>&) override { end(atEnd); }

  std::function<void()> atChange, atEnd;

 private:
  static void end(std::function<void()>& moment) {
    if (const auto now = std::exchange(moment, {})) now();
  }
};

// A window on the heap, with one embedded view in it.
class QtViewWidgetEnd : public QtTest {
 protected:
  void embed(const Ref<NSView>& view) {
    new QHBoxLayout(host);
    widget = new QtViewWidget(view);
    host->layout()->addWidget(widget);
    show(*host, view);
  }

  static void show(QWidget& topLevel, const Ref<NSView>& view) {
    topLevel.show();
    topLevel.activateWindow();
    settle();
    view->window()->makeFirstResponder(view.get());
    ASSERT_TRUE(topLevel.focusWidget());
  }

  template <class Control>
  Ref<Control> makeControl() {
    const auto control = make<Control>(CGRect{0, 0, 120, 24});
    control->setTarget(clicks);
    control->setAction("clicked:");
    return control;
  }

  Ref<NSTextField> makeField() {
    const auto field = makeControl<NSTextField>();
    field->setDelegate(ender);
    return field;
  }

  std::function<void()> endHost() {
    return [this] { delete host; };
  }

  Ref<Clicks> clicks = make<Clicks>();
  Ref<Ender> ender = make<Ender>();
  QPointer<QWidget> host = new QWidget;
  QPointer<QtViewWidget> widget;
};

}  // namespace

TEST_F(QtViewWidgetEnd, SpaceOnAButtonMayDeleteTheTopLevel) {
  const auto button = makeControl<NSButton>();
  embed(button);
  clicks->then = endHost();
  QTest::keyClick(host->windowHandle(), Qt::Key_Space);
  settle();
  EXPECT_EQ(clicks->count, 1);
  EXPECT_FALSE(host);
}

TEST_F(QtViewWidgetEnd, ReturnInAFieldMayDeleteTheTopLevel) {
  embed(makeField());
  clicks->then = endHost();
  QTest::keyClick(host->windowHandle(), Qt::Key_Return);
  settle();
  EXPECT_EQ(clicks->count, 1);
  EXPECT_FALSE(host);
}

TEST_F(QtViewWidgetEnd, ChangeInAFieldMayDeleteTheTopLevel) {
  embed(makeField());
  ender->atChange = endHost();
  QTest::keyClick(host->windowHandle(), Qt::Key_A);
  settle();
  EXPECT_FALSE(host);
}

TEST_F(QtViewWidgetEnd, KeyThatIsSentToAWidgetMayDeleteIt) {
  embed(makeField());
  ender->atChange = [this] { delete widget; };
  QKeyEvent press(QEvent::KeyPress, Qt::Key_A, Qt::NoModifier, "a");
  QCoreApplication::sendEvent(widget, &press);
  settle();
  EXPECT_FALSE(widget);
  EXPECT_TRUE(host);
  delete host;
}

TEST_F(QtViewWidgetEnd, TabOutOfAFieldMayDeleteTheTopLevel) {
  embed(makeField());
  ender->atEnd = endHost();
  QTest::keyClick(host->windowHandle(), Qt::Key_Tab);
  settle();
  EXPECT_FALSE(host);
}

TEST_F(QtViewWidgetEnd, TabToAnotherWidgetMayDeleteTheTopLevel) {
  embed(makeField());
  host->layout()->addWidget(new QLineEdit);
  host->layout()->addWidget(new QtViewWidget(makeControl<NSButton>()));
  settle();
  ender->atEnd = endHost();
  QTest::keyClick(host->windowHandle(), Qt::Key_Tab);
  settle();
  EXPECT_FALSE(host);
}

TEST_F(QtViewWidgetEnd, TabOutOfAFieldMayDeleteAWidgetThatIsATopLevelItself) {
  delete host;
  const auto field = makeField();
  widget = new QtViewWidget(field);
  show(*widget, field);
  ender->atEnd = [this] { delete widget; };
  QTest::keyClick(widget->windowHandle(), Qt::Key_Tab);
  settle();
  EXPECT_FALSE(widget);
}

TEST_F(QtViewWidgetEnd, WidgetsOwnFocusLossMayDeleteIt) {
  embed(makeField());
  auto* other = new QWidget(host);
  other->setFocusPolicy(Qt::StrongFocus);
  other->show();
  ender->atEnd = [this] { delete widget; };
  other->setFocus();
  settle();
  EXPECT_FALSE(widget);
  EXPECT_TRUE(other->hasFocus());
  delete host;
}

TEST_F(QtViewWidgetEnd, ComposedTextMayDeleteTheTopLevel) {
  embed(makeField());
  ender->atChange = endHost();
  QInputMethodEvent event;
  event.setCommitString("a");
  QCoreApplication::sendEvent(widget, &event);
  settle();
  EXPECT_FALSE(host);
}

TEST_F(QtViewWidgetEnd, KeyInAWindowOfItsOwnMayEndIt) {
  delete host;
  auto window = make<NSWindow>(CGRect{50, 50, 200, 100}, NSWindowStyleMaskTitled, NSBackingStoreBuffered, true);
  const auto button = makeControl<NSButton>();
  window->contentView()->addSubview(button);
  window->makeKeyAndOrderFront(nullptr);
  settle();
  window->makeFirstResponder(button.get());
  QPointer<QWindow> native = &qWindowOf(*window);
  clicks->then = [&] {
    window->close();
    window = nullptr;
  };
  QTest::keyClick(native, Qt::Key_Space);
  settle();
  EXPECT_EQ(clicks->count, 1);
  EXPECT_FALSE(native);
}

}  // namespace tessaluna::backend::qt
