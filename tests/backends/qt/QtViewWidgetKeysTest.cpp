// Keys in embedded views, and where the Tab key leads among them and the widgets around.
#include <QDialog>
#include <QLineEdit>
#include <QPointer>
#include <QPushButton>
#include <QScrollArea>
#include <QScrollBar>
#include <QShortcut>

#include "tessaluna/platform/events/NSEvent.h"
#include "tessaluna/platform/graphics/NSRect.h"
#include "tessaluna/platform/views/NSScrollView.h"
#include "tessaluna/platform/views/NSTableColumn.h"
#include "tessaluna/platform/views/NSTableView.h"
#include "tessaluna/platform/views/NSTextField.h"
#include "tessaluna/uikit/containers/ViewWithBackground.h"
#include "tessaluna/uikit/trackrow/CloseButton.h"
#include "tessaluna/uikit/trackrow/PrevNextButton.h"
#include "tests/backends/qt/EmbeddedViews.h"

namespace tessaluna::backend::qt {

using namespace tessaluna::platform;
using namespace TessalunaUIKit;

namespace {

class QtViewWidgetKeys : public EmbeddedViews {
 protected:
  // With the view in it, which has the keyboard.
  static void show(QDialog& dialog, const Ref<NSView>& view) {
    auto* widget = new QtViewWidget(view, &dialog);
    dialog.show();
    dialog.activateWindow();
    settle();
    widget->setFocus();
  }
  using EmbeddedViews::show;
};

// Writes down the keys that come to it.
class Parent : public QWidget {
 public:
  bool event(QEvent* event) override {
    if (overridesShortcuts && event->type() == QEvent::ShortcutOverride) event->accept();
    return QWidget::event(event);
  }
  void keyPressEvent(QKeyEvent* event) override { keys.push_back(event->key()); }

  std::vector<int> keys;
  bool overridesShortcuts = false;
};

}  // namespace

TEST_F(QtViewWidgetKeys, TabGoesThroughSeveralViewsAndForeignWidgetsBothWays) {
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

TEST_F(QtViewWidgetKeys, WhereTheTabKeyGoesComesIntoSightInAScrollArea) {
  const auto box = make<NSView>(CGRect{0, 0, 60, 2000});
  const auto upper = make<Witness>(CGRect{0, 1960, 60, 40}), lower = make<Witness>(CGRect{0, 0, 60, 40});
  upper->takesKeys = lower->takesKeys = false;
  box->addSubview(upper);
  box->addSubview(lower);
  auto* area = new QScrollArea;
  area->setFocusPolicy(Qt::NoFocus);
  auto* widget = new QtViewWidget(box);
  widget->setFixedSize(60, 2000);
  area->setWidget(widget);
  auto* before = new QLineEdit;
  top.layout()->addWidget(before);
  top.layout()->addWidget(area);
  top.resize(300, 300);
  show();
  before->setFocus();
  const auto isInSight = [&](const Ref<NSView>& view) { return view->visibleRect() == view->bounds(); };
  QTest::keyClick(top.windowHandle(), Qt::Key_Tab);
  EXPECT_EQ(box->window()->firstResponder(), upper.get());
  EXPECT_TRUE(isInSight(upper));
  QTest::keyClick(top.windowHandle(), Qt::Key_Tab);
  EXPECT_EQ(box->window()->firstResponder(), lower.get());
  EXPECT_TRUE(isInSight(lower));
  QTest::keyClick(top.windowHandle(), Qt::Key_Backtab, Qt::ShiftModifier);
  EXPECT_TRUE(isInSight(upper));
  delete before;
  QTest::keyClick(top.windowHandle(), Qt::Key_Backtab, Qt::ShiftModifier);
  EXPECT_EQ(box->window()->firstResponder(), lower.get()) << "round again";
  EXPECT_TRUE(isInSight(lower));
}

TEST_F(QtViewWidgetKeys, AViewThatIsScrolledOutOfSightKeepsTheKeyboard) {
  const auto first = makeButton<CloseButton>(), second = makeButton<CloseButton>();
  auto* inside = new QtViewWidget(first);
  auto* content = new QWidget;
  content->setFixedSize(100, 2000);
  inside->setParent(content);
  inside->setGeometry(0, 0, 24, 24);
  auto* area = new QScrollArea;
  area->setWidget(content);
  top.layout()->addWidget(area);
  embed(second);
  top.resize(300, 300);
  show();
  inside->setFocus();
  ASSERT_EQ(first->window()->firstResponder(), first.get());
  area->verticalScrollBar()->setValue(500);
  settle();
  ASSERT_TRUE(NSIsEmptyRect(first->visibleRect()));
  EXPECT_EQ(first->window()->firstResponder(), first.get());
  EXPECT_TRUE(inside->hasFocus());
}

TEST_F(QtViewWidgetKeys, AViewLosesTheKeyboardThatQtTakesWhileAnotherWindowIsActive) {
  auto* edit = new QLineEdit;
  top.layout()->addWidget(edit);
  const auto view = make<Witness>(CGRect{0, 0, 50, 50});
  QtViewWidget* widget = embed(view);
  show();
  const std::function<void()> takings[] = {[&] { widget->hide(); }, [&] { edit->setFocus(); }};
  for (const auto& take : takings) {
    widget->show();
    widget->setFocus();
    ASSERT_EQ(view->window()->firstResponder(), view.get());
    QWidget other;
    other.show();
    other.activateWindow();
    settle();
    take();
    other.hide();
    show();
    EXPECT_TRUE(edit->hasFocus());
    EXPECT_EQ(view->window()->firstResponder(), view->window());
  }
}

TEST_F(QtViewWidgetKeys, AViewKeepsTheKeyboardWhileItsWindowRestsOrAMenuHasIt) {
  const auto view = make<Witness>(CGRect{0, 0, 50, 50});
  QtViewWidget* widget = embed(view);
  show();
  widget->setFocus();
  for (const auto reason : {Qt::ActiveWindowFocusReason, Qt::PopupFocusReason, Qt::MenuBarFocusReason}) {
    QFocusEvent out(QEvent::FocusOut, reason);
    QCoreApplication::sendEvent(widget, &out);
    EXPECT_EQ(view->window()->firstResponder(), view.get()) << reason;
  }
  top.hide();
  show();
  EXPECT_EQ(view->window()->firstResponder(), view.get()) << "hidden";
  QFocusEvent out(QEvent::FocusOut, Qt::MouseFocusReason);
  QCoreApplication::sendEvent(widget, &out);
  EXPECT_EQ(view->window()->firstResponder(), view->window());
}

TEST_F(QtViewWidgetKeys, OneOfSeveralViewsInAWidgetHasTheKeyboardAgainAfterAnotherWindowHadIt) {
  const auto box = make<NSView>(CGRect{0, 0, 60, 30});
  const auto left = make<Witness>(CGRect{0, 0, 30, 30}), right = make<Witness>(CGRect{30, 0, 30, 30});
  box->addSubview(left);
  box->addSubview(right);
  QtViewWidget* widget = embed(box);
  show();
  ASSERT_TRUE(box->window()->makeFirstResponder(right.get()));
  EXPECT_TRUE(widget->hasFocus());
  EXPECT_EQ(box->window()->firstResponder(), right.get());
  QWidget other;
  other.show();
  other.activateWindow();
  settle();
  ASSERT_FALSE(box->window()->isKeyWindow());
  EXPECT_EQ(box->window()->firstResponder(), right.get());
  other.hide();
  show();
  EXPECT_TRUE(widget->hasFocus());
  EXPECT_EQ(box->window()->firstResponder(), right.get());
}

TEST_F(QtViewWidgetKeys, AWidgetThatLosesTheFocusToAViewMayPassItToAnother) {
  class Edit : public QLineEdit {
   public:
    void focusOutEvent(QFocusEvent* event) override {
      QLineEdit::focusOutEvent(event);
      if (left) std::exchange(left, nullptr)();
    }
    std::function<void()> left;
  };
  auto* edit = new Edit;
  top.layout()->addWidget(edit);
  const auto first = make<Witness>(CGRect{0, 0, 50, 50}), second = make<Witness>(CGRect{0, 0, 50, 50});
  QtViewWidget* ofFirst = embed(first);
  QtViewWidget* ofSecond = embed(second);
  show();
  edit->setFocus();
  edit->left = [&] { second->window()->makeFirstResponder(second.get()); };
  press(inTop(*ofFirst, {5, 5}));
  release(inTop(*ofFirst, {5, 5}));
  EXPECT_EQ(first->window()->firstResponder(), second.get());
  EXPECT_TRUE(ofSecond->hasFocus());
}

TEST_F(QtViewWidgetKeys, QtIsToldWhereInTheWidgetTheKeyboardIs) {
  class Flipped : public NSView {
   public:
    using NSView::NSView;
    bool isFlipped() const override { return true; }
  };
  // Takes the keyboard and shows no ring for it.
  class Ringless : public Witness {
   public:
    using Witness::Witness;
    CGRect focusRingMaskBounds() const override { return {}; }
  };
  const auto box = make<NSView>(CGRect{0, 0, 60, 90});
  const auto flipped = make<Flipped>(CGRect{0, 0, 60, 90});
  const auto up = make<Witness>(CGRect{10, 20, 30, 40});
  const auto down = make<Ringless>(CGRect{10, 20, 30, 40});
  box->addSubview(up);
  flipped->addSubview(down);
  QtViewWidget* ofBox = embed(box);
  QtViewWidget* ofFlipped = embed(flipped);
  for (QtViewWidget* widget : {ofBox, ofFlipped}) widget->setFixedSize(60, 90);
  show();
  // Places in the widgets are rounded to whole points.
  const auto isAt = [](const QtViewWidget* widget, const QRect& place) {
    const QRect told = widget->inputMethodQuery(Qt::ImCursorRectangle).toRect();
    return told.adjusted(-1, -1, 1, 1).contains(place) && place.adjusted(-1, -1, 1, 1).contains(told);
  };
  const QRect ofUp(10, 30, 30, 40), ofDown(10, 20, 30, 40);
  ASSERT_TRUE(box->window()->makeFirstResponder(up.get()));
  EXPECT_TRUE(isAt(ofBox, ofUp));
  EXPECT_FALSE(isAt(ofFlipped, ofDown));
  EXPECT_FALSE(ofFlipped->inputMethodQuery(Qt::ImCursorRectangle).toRect().isEmpty()) << "Qt's own answer";
  EXPECT_EQ(ofBox->inputMethodQuery(Qt::ImHints), QWidget().inputMethodQuery(Qt::ImHints));
  ASSERT_TRUE(box->window()->makeFirstResponder(down.get()));
  EXPECT_TRUE(isAt(ofFlipped, ofDown));
  EXPECT_FALSE(isAt(ofBox, ofUp));
}

TEST_F(QtViewWidgetKeys, OfAScrolledTextQtIsToldOnlyWhatShows) {
  const auto scroll = make<NSScrollView>(CGRect{0, 0, 60, 90});
  const auto document = make<Witness>(CGRect{0, 0, 60, 500});
  scroll->setDocumentView(document);
  QtViewWidget* widget = embed(scroll);
  widget->setFixedSize(60, 90);
  show();
  ASSERT_TRUE(scroll->window()->makeFirstResponder(document.get()));
  EXPECT_NEAR(widget->inputMethodQuery(Qt::ImCursorRectangle).toRect().height(), 90, 1);
}

TEST_F(QtViewWidgetKeys, AViewInAScrollAreaKeepsTheKeyboardWhenAPressOnItActivatesItsWindow) {
  const auto view = make<Witness>(CGRect{0, 0, 50, 50});
  auto* widget = new QtViewWidget(view);
  auto* area = new QScrollArea;
  area->setWidget(widget);
  widget->resize(50, 50);
  top.layout()->addWidget(area);
  show();
  widget->setFocus();
  QWidget other;
  other.show();
  other.activateWindow();
  settle();
  press(inTop(*widget, {5, 5}));
  release(inTop(*widget, {5, 5}));
  other.hide();
  show();
  EXPECT_TRUE(widget->hasFocus());
  EXPECT_EQ(view->window()->firstResponder(), view.get());
}

TEST_F(QtViewWidgetKeys, AFieldAtTheLowerEdgeIsEditedWhileItsWindowShrinks) {
  const auto field = make<NSTextField>(CGRect{0, 0, 100, 24});
  top.layout()->setAlignment(embed(field), Qt::AlignBottom);
  top.resize(200, 400);
  show();
  field->selectText(nullptr);
  QTest::keyClick(top.windowHandle(), Qt::Key_A);
  top.resize(200, 100);
  settle();
  ASSERT_FALSE(NSIsEmptyRect(field->visibleRect()));
  ASSERT_TRUE(field->currentEditor());
  QTest::keyClick(top.windowHandle(), Qt::Key_B);
  EXPECT_EQ(field->stringValue(), "ab");
}

TEST_F(QtViewWidgetKeys, TabAmongViewsThatTakeNoKeysComesToAnEnd) {
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

TEST_F(QtViewWidgetKeys, TabGoesRoundWhereNothingElseTakesIt) {
  const auto button = makeButton<CloseButton>();
  embed(button);
  show();
  button->window()->makeFirstResponder(button.get());
  QTest::keyClick(top.windowHandle(), Qt::Key_Tab);
  EXPECT_EQ(button->window()->firstResponder(), button.get());
}

TEST_F(QtViewWidgetKeys, FieldThatRefusesToEndItsEditingKeepsTheFocusAtATab) {
  class Refuser : public NSObject, public NSTextFieldDelegate {
   public:
    bool controlTextShouldEndEditing(NSControl&, NSText&) override { return false; }
  };
  const auto refuser = make<Refuser>();
  const auto field = make<NSTextField>(CGRect{0, 0, 100, 24});
  field->setDelegate(refuser);
  const QtViewWidget* widget = embed(field);
  auto* edit = new QLineEdit;
  top.layout()->addWidget(edit);
  show();
  field->selectText(nullptr);
  QTest::keyClick(top.windowHandle(), Qt::Key_Tab);
  EXPECT_TRUE(widget->hasFocus());
  EXPECT_FALSE(edit->hasFocus());
  EXPECT_NE(field->currentEditor(), nullptr);
}

TEST_F(QtViewWidgetKeys, TakenKeyOverridesAShortcut) {
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

TEST_F(QtViewWidgetKeys, KeyThatNobodyTakesBeginsAndEndsAShortcutOfTwoKeys) {
  const auto view = make<Witness>(CGRect{0, 0, 50, 50});
  embed(view);
  QShortcut shortcut(QKeySequence(Qt::Key_G, Qt::Key_I), &top);
  int fired = 0;
  QObject::connect(&shortcut, &QShortcut::activated, &top, [&] { ++fired; });
  show();
  view->window()->makeFirstResponder(view.get());
  QTest::keyClick(top.windowHandle(), 'g');
  QTest::keyClick(top.windowHandle(), 'i');
  EXPECT_EQ(fired, 0);
  EXPECT_EQ(view->keys, (std::vector<std::string>{"g", "i"}));
  view->takesKeys = false;
  QTest::keyClick(top.windowHandle(), 'g');
  QTest::keyClick(top.windowHandle(), 'i');
  EXPECT_EQ(fired, 1);
}

TEST_F(QtViewWidgetKeys, ShortcutThatAParentOverridesDoesNotFire) {
  auto* parent = new Parent;
  parent->overridesShortcuts = true;
  top.layout()->addWidget(parent);
  const auto view = make<Witness>(CGRect{0, 0, 50, 50});
  view->takesKeys = false;
  new QtViewWidget(view, parent);
  QShortcut shortcut(QKeySequence(Qt::Key_K), &top);
  int fired = 0;
  QObject::connect(&shortcut, &QShortcut::activated, &top, [&] { ++fired; });
  show();
  view->window()->makeFirstResponder(view.get());
  QTest::keyClick(top.windowHandle(), 'k');
  EXPECT_EQ(fired, 0);
  EXPECT_EQ(parent->keys, std::vector<int>{Qt::Key_K});
}

TEST_F(QtViewWidgetKeys, ShortcutForAKeyThatNobodyTakesMayDeleteTheTopLevel) {
  QPointer<QWidget> other = new QWidget;
  const auto view = make<Witness>(CGRect{0, 0, 50, 50});
  view->takesKeys = false;
  new QtViewWidget(view, other);
  auto* shortcut = new QShortcut(QKeySequence(Qt::Key_W), other);
  QObject::connect(shortcut, &QShortcut::activated, qApp, [&] { delete other; });
  other->show();
  other->activateWindow();
  settle();
  view->window()->makeFirstResponder(view.get());
  QTest::keyClick(other->windowHandle(), 'w');
  settle();
  EXPECT_FALSE(other);
}

TEST_F(QtViewWidgetKeys, TakenKeyHasNoSecondEffectOnWhereTheFocusWent) {
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

TEST_F(QtViewWidgetKeys, KeyThatNobodyTakesGoesOnToTheParentWidget) {
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

TEST_F(QtViewWidgetKeys, ReturnInAFieldPressesTheDefaultButtonOfADialogUnlessTheFieldHasAnAction) {
  QDialog dialog;
  auto* button = new QPushButton(&dialog);
  button->setDefault(true);
  int pressed = 0;
  QObject::connect(button, &QPushButton::clicked, [&] { ++pressed; });
  const auto field = make<NSTextField>(CGRect{0, 0, 100, 24});
  show(dialog, field);
  QTest::keyClick(dialog.windowHandle(), 'a');
  QTest::keyClick(dialog.windowHandle(), Qt::Key_Return);
  EXPECT_EQ(pressed, 1);
  EXPECT_EQ(field->cell()->stringValue(), "a");
  EXPECT_TRUE(field->currentEditor());
  field->setTarget(clicks);
  field->setAction("clicked:");
  QTest::keyClick(dialog.windowHandle(), Qt::Key_Return);
  EXPECT_EQ(clicks->count, 1);
  EXPECT_EQ(pressed, 1);
  field->setAction("unknown:");
  ActionSender::setUnansweredActionHandler([](const std::string&) {});
  QTest::keyClick(dialog.windowHandle(), Qt::Key_Return);
  ActionSender::setUnansweredActionHandler(nullptr);
  EXPECT_EQ(pressed, 2) << "nobody performs it";
}

TEST_F(QtViewWidgetKeys, ReturnThatEndsAnEditingInATableIsNotADialogs) {
  class Texts : public NSTableViewDataSource, public NSTableViewCellSource {
   public:
    std::size_t numberOfRowsInTableView(NSTableView&) override { return 1; }
    Ref<NSObject> tableViewObjectValue(NSTableView&, NSTableColumn&, std::size_t) override { return nullptr; }
  };
  QDialog dialog;
  Parent parent;
  parent.setParent(&dialog);
  const auto texts = std::make_shared<Texts>();
  const auto table = make<NSTableView>(CGRect{0, 0, 100, 60});
  const auto column = make<NSTableColumn>("text");
  column->setDataCell(make<NSTextFieldCell>());
  column->setEditable(true);
  table->addTableColumn(column);
  table->setDataSource(texts);
  table->reloadData();
  auto* widget = new QtViewWidget(table, &parent);
  widget->setFixedSize(100, 60);
  dialog.show();
  dialog.activateWindow();
  settle();
  table->editColumn(0, 0);
  ASSERT_NE(table->window()->firstResponder(), table.get());
  QTest::keyClick(dialog.windowHandle(), Qt::Key_Return);
  EXPECT_EQ(table->window()->firstResponder(), table.get());
  EXPECT_TRUE(parent.keys.empty());
}

TEST_F(QtViewWidgetKeys, EscapeInAFieldRejectsADialog) {
  QDialog dialog;
  const auto field = make<NSTextField>(CGRect{0, 0, 100, 24});
  show(dialog, field);
  ASSERT_TRUE(field->currentEditor());
  QTest::keyClick(dialog.windowHandle(), Qt::Key_Escape);
  EXPECT_FALSE(dialog.isVisible());
}

TEST_F(QtViewWidgetKeys, TheHostChoosesWhichKeyIsCommand) {
  const auto ground = make<ViewWithBackground>(CGRect{0, 0, 200, 40});
  const auto field = make<NSTextField>(CGRect{5, 5, 150, 24});
  ground->addSubview(field);
  field->setStringValue("one two");
  embed(ground);
  show();
  field->selectText(nullptr);
  const auto caretAfter = [&](Qt::KeyboardModifier modifier, Qt::Key arrow) {
    field->currentEditor()->setSelectedRange({5, 0});
    QTest::keyClick(top.windowHandle(), arrow, modifier);
    return field->currentEditor()->selectedRange().location;
  };
  EXPECT_EQ(caretAfter(Qt::MetaModifier, Qt::Key_Left), 0u);
  EXPECT_EQ(caretAfter(Qt::MetaModifier, Qt::Key_Right), 7u);
  EXPECT_EQ(caretAfter(Qt::ControlModifier, Qt::Key_Left), 4u) << "by words";
  QtBackend::current().setCommandKey(CommandKey::Control);
  EXPECT_EQ(caretAfter(Qt::ControlModifier, Qt::Key_Left), 0u);
  EXPECT_EQ(caretAfter(Qt::ControlModifier, Qt::Key_Right), 7u);
  EXPECT_EQ(caretAfter(Qt::MetaModifier, Qt::Key_Left), 4u);
  QtBackend::current().setCommandKey(CommandKey::Meta);
}

}  // namespace tessaluna::backend::qt
