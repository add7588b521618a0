#include "tessaluna/backends/qt/AccessibilityBridge.h"

#include <QAccessible>
#include <QWidget>
#include <cmath>
#include <utility>

#include "tessaluna/backends/qt/AccessibleElement.h"
#include "tessaluna/backends/qt/QtViewWidget.h"
#include "tessaluna/backends/qt/screenSpace.h"
#include "tessaluna/platform/views/NSButton.h"
#include "tessaluna/platform/views/NSImageView.h"
#include "tessaluna/platform/views/NSScrollView.h"
#include "tessaluna/platform/views/NSTextField.h"
#include "tests/backends/qt/QtTest.h"
#include "tests/harness/AccessiblePlayer.h"

namespace tessaluna::backend::qt {

using namespace tessaluna::platform;
using namespace TessalunaUIKit;

namespace {

class AccessibilityBridgeTest : public QtTest, protected harness::AccessiblePlayer {
 protected:
  AccessibilityBridgeTest() {
    setTarget(clicks);
    window->makeKeyAndOrderFront(nullptr);
    settle();
  }

  using QtTest::qWindowOf;

  static std::vector<QAccessibleInterface*> childrenOf(QAccessibleInterface* parent) {
    std::vector<QAccessibleInterface*> result;
    for (int i = 0; i < parent->childCount(); ++i) result.push_back(parent->child(i));
    return result;
  }
  // How many there are below it, each of which must name the one above it and its place there.
  static int countAgreeing(QAccessibleInterface* parent) {
    int count = 0;
    for (QAccessibleInterface* child : childrenOf(parent)) {
      EXPECT_EQ(child->parent(), parent);
      EXPECT_EQ(parent->child(parent->indexOfChild(child)), child);
      count += 1 + countAgreeing(child);
    }
    return count;
  }

  Ref<Clicks> clicks = make<Clicks>();
};

// A painted part with a state of its own, in a view that has nothing else.
class Part : public NSObject, public NSAccessibility {
 public:
  explicit Part(NSView& view) : view_(view) {}
  bool isAccessibilityElement() const override { return true; }
  std::string accessibilityRole() const override { return std::string(NSAccessibilityLinkRole); }
  std::string accessibilityTitle() const override { return "Artist"; }
  CGRect accessibilityFrame() const override {
    return view_.window()->convertRectToScreen(view_.convertRectToView({5, 5, 20, 10}, nullptr));
  }
  Ref<NSObject> accessibilityParent() const override { return refTo<NSObject>(view_); }

 private:
  NSView& view_;
};

class PaintingView : public NSView {
 public:
  using NSView::NSView;
  void didInit() override {
    NSView::didInit();
    part = make<Part>(*this);
  }
  bool isAccessibilityElement() const override { return true; }
  std::string accessibilityRole() const override { return std::string(NSAccessibilityGroupRole); }
  Ref<Part> part;

 protected:
  std::optional<AccessibilityElements> accessibilityOwnChildren() const override { return AccessibilityElements{part}; }
};

TEST_F(AccessibilityBridgeTest, TheTreeIsThatOfThePlatform) {
  ASSERT_NE(root(), nullptr);
  EXPECT_EQ(root()->role(), QAccessible::Window);
  EXPECT_EQ(root()->text(QAccessible::Name), "Player");
  EXPECT_EQ(root()->parent(), QAccessible::queryAccessibleInterface(qApp));
  EXPECT_EQ(childrenOf(root()), (std::vector{of(field->cell()), of(button->cell())}));
  EXPECT_EQ(countAgreeing(root()), 2);
  EXPECT_EQ(countAgreeing(QAccessible::queryAccessibleInterface(qApp)), 3);
}

TEST_F(AccessibilityBridgeTest, AnElementHasOneInterfaceAsLongAsItLives) {
  const auto painting = make<PaintingView>(CGRect{0, 0, 40, 20});
  window->contentView()->addSubview(painting);
  EXPECT_EQ(of(field->cell()), of(field->cell()));
  EXPECT_EQ(of(painting->part), of(painting->part));
  EXPECT_NE(of(painting->part), of(painting));
  EXPECT_EQ(of(painting)->child(0), of(painting->part));
  EXPECT_EQ(countAgreeing(root()), 4);
  EXPECT_EQ(of(nullptr), nullptr);
}

TEST_F(AccessibilityBridgeTest, AnInterfaceGoesWithItsElement) {
  const QAccessible::Id id = QAccessible::uniqueId(of(button->cell()));
  EXPECT_EQ(QAccessible::accessibleInterface(id), of(button->cell()));
  button->removeFromSuperview();
  EXPECT_TRUE(of(button->cell())->isValid());
  QAccessibleInterface* interface = of(button->cell());
  button = nullptr;
  EXPECT_FALSE(interface->isValid());
  EXPECT_TRUE(interface->state().invalid);
  EXPECT_EQ(interface->parent(), nullptr);
  EXPECT_EQ(interface->childCount(), 0);
  EXPECT_EQ(interface->rect(), QRect());
  EXPECT_EQ(interface->text(QAccessible::Name), "");
  EXPECT_EQ(interface->actionInterface(), nullptr);
  settle();
  EXPECT_EQ(QAccessible::accessibleInterface(id), nullptr);
}

TEST_F(AccessibilityBridgeTest, AWindowsInterfaceGoesWithIt) {
  auto other = make<NSWindow>(CGRect{0, 0, 50, 50}, NSWindowStyleMaskTitled, NSBackingStoreBuffered, true);
  other->orderFront(nullptr);
  const QAccessible::Id id = QAccessible::uniqueId(of(other));
  ASSERT_NE(QAccessible::accessibleInterface(id), nullptr);
  other->close();
  other = nullptr;
  settle();
  EXPECT_EQ(QAccessible::accessibleInterface(id), nullptr);
}

TEST_F(AccessibilityBridgeTest, AHiddenWindowIsNotAmongTheApplicationsChildren) {
  QAccessibleInterface* application = QAccessible::queryAccessibleInterface(qApp);
  EXPECT_EQ(application->childCount(), 1);
  window->orderOut(nullptr);
  EXPECT_EQ(application->childCount(), 0);
  window->orderFront(nullptr);
  EXPECT_EQ(application->child(0), root());
}

TEST_F(AccessibilityBridgeTest, RolesAndNames) {
  const auto label = NSTextField::labelWithString("Title");
  const auto toggle = make<NSButton>(CGRect{0, 0, 20, 20});
  toggle->setButtonType(NSButtonType::Toggle);
  toggle->cell()->accessibilitySetOverrideValue("Shuffle", NSAccessibilityDescriptionAttribute);
  toggle->cell()->accessibilitySetOverrideValue("Plays in any order", NSAccessibilityHelpAttribute);
  const auto image = make<NSImageView>(CGRect{0, 0, 20, 20});
  const auto roleAndName = [](const Ref<NSObject>& element) {
    return std::pair(of(element)->role(), of(element)->text(QAccessible::Name).toStdString());
  };
  EXPECT_EQ(roleAndName(field->cell()), std::pair(QAccessible::EditableText, std::string()));
  EXPECT_EQ(roleAndName(button->cell()), std::pair(QAccessible::Button, std::string("Play")));
  EXPECT_EQ(roleAndName(label->cell()), std::pair(QAccessible::StaticText, std::string("Title")));
  EXPECT_EQ(roleAndName(toggle->cell()), std::pair(QAccessible::CheckBox, std::string("Shuffle")));
  EXPECT_EQ(roleAndName(image), std::pair(QAccessible::Graphic, std::string()));
  EXPECT_EQ(of(toggle->cell())->text(QAccessible::Description), "Plays in any order");
  EXPECT_EQ(of(field->cell())->text(QAccessible::Value), "query");
}

TEST_F(AccessibilityBridgeTest, PlacesAreQtsAndCountedFromTheTop) {
  const QRect content = qWindowOf(*window).geometry();
  // The field's lower edge is 60 points above the window's, and the window is 160 high.
  EXPECT_EQ(of(field->cell())->rect(), QRect(content.x() + 10, content.y() + 160 - 60 - 24, 200, 24));
  EXPECT_EQ(root()->rect(), content);
  const QPoint inField = of(field->cell())->rect().center();
  EXPECT_EQ(root()->childAt(inField.x(), inField.y()), of(field->cell()));
  EXPECT_EQ(root()->childAt(content.x() + 1, content.y() + 1), nullptr);
}

TEST_F(AccessibilityBridgeTest, StatesOfControls) {
  QAccessible::State state = of(field->cell())->state();
  EXPECT_TRUE(state.editable);
  EXPECT_FALSE(state.readOnly || state.disabled || state.invisible || state.offscreen || state.selectable || state.invalid);
  EXPECT_TRUE(of(NSTextField::labelWithString("a")->cell())->state().invisible) << "in no window";
  button->setEnabled(false);
  EXPECT_TRUE(of(button->cell())->state().disabled);
  button->setEnabled(true);
  button->setHighlighted(true);
  EXPECT_TRUE(of(button->cell())->state().pressed);
  field->setEditable(false);
  state = of(field->cell())->state();
  EXPECT_TRUE(state.readOnly);
  EXPECT_FALSE(state.editable);
  box->setFrame({0, 300, 300, 120});
  EXPECT_TRUE(of(button->cell())->state().offscreen);
  EXPECT_TRUE(root()->state().active);
  window->orderOut(nullptr);
  EXPECT_TRUE(of(button->cell())->state().invisible);
  EXPECT_FALSE(root()->state().active);
}

TEST_F(AccessibilityBridgeTest, AToggleIsChecked) {
  button->setButtonType(NSButtonType::Toggle);
  QAccessibleInterface* toggle = of(button->cell());
  EXPECT_TRUE(toggle->state().checkable);
  EXPECT_FALSE(toggle->state().checked);
  EXPECT_EQ(toggle->valueInterface(), nullptr);
  button->setState(NSControlStateValueOn);
  EXPECT_TRUE(toggle->state().checked);
  button->setState(NSControlStateValueMixed);
  EXPECT_TRUE(toggle->state().checkStateMixed);
}

TEST_F(AccessibilityBridgeTest, PressingAButtonClicksIt) {
  QAccessibleActionInterface* actions = of(button->cell())->actionInterface();
  ASSERT_NE(actions, nullptr);
  EXPECT_TRUE(actions->actionNames().contains(QAccessibleActionInterface::pressAction()));
  actions->doAction(QAccessibleActionInterface::pressAction());
  EXPECT_EQ(clicks->count, 1);
}

TEST_F(AccessibilityBridgeTest, AnActionMayThrowItsElementAway) {
  of(button->cell());
  clicks->then = [&] {
    button->removeFromSuperview();
    button = nullptr;
  };
  of(button->cell())->actionInterface()->doAction(QAccessibleActionInterface::pressAction());
  settle();
  EXPECT_EQ(clicks->count, 1);
  EXPECT_EQ(countAgreeing(root()), 1);
}

TEST_F(AccessibilityBridgeTest, FocusIsThatOfTheFirstResponder) {
  const auto witness = make<Witness>(CGRect{0, 0, 20, 20});
  window->contentView()->addSubview(witness);
  ASSERT_TRUE(window->makeFirstResponder(button.get()));
  EXPECT_TRUE(of(button->cell())->state().focused);
  EXPECT_TRUE(of(button->cell())->state().focusable);
  EXPECT_FALSE(root()->state().focused);
  EXPECT_EQ(root()->focusChild(), of(button->cell()));
  window->makeFirstResponder(nullptr);
  EXPECT_EQ(root()->focusChild(), nullptr);
  of(button->cell())->actionInterface()->doAction(QAccessibleActionInterface::setFocusAction());
  EXPECT_EQ(window->firstResponder(), button.get());
}

TEST_F(AccessibilityBridgeTest, AFieldsTextIsReadAndWritten) {
  QAccessibleInterface* interface = of(field->cell());
  QAccessibleTextInterface* text = interface->textInterface();
  QAccessibleEditableTextInterface* editable = interface->editableTextInterface();
  ASSERT_TRUE(text && editable);
  EXPECT_EQ(text->characterCount(), 5);
  EXPECT_EQ(text->text(1, 3), "ue");
  EXPECT_EQ(text->text(0, -1), "query");
  EXPECT_EQ(text->selectionCount(), 0) << "it does not tell one";
  EXPECT_EQ(text->cursorPosition(), -1);
  editable->insertText(2, "üx");
  EXPECT_EQ(field->stringValue(), "quüxery");
  editable->replaceText(2, 4, "o");
  editable->deleteText(0, 1);
  EXPECT_EQ(field->stringValue(), "uoery");
  field->setStringValue("uoery");
  field->setStringValue("");
  interface->setText(QAccessible::Value, "aa");
  EXPECT_EQ(field->stringValue(), "aa");
  interface->setText(QAccessible::Name, "b");
  EXPECT_EQ(field->stringValue(), "aa");
  int start = -1, end = -1;
  EXPECT_EQ(text->attributes(1, &start, &end), "");
  EXPECT_EQ(std::pair(start, end), std::pair(0, 2));
  EXPECT_EQ(of(button->cell())->textInterface(), nullptr);
  field->setEditable(false);
  EXPECT_EQ(interface->editableTextInterface(), nullptr);
  EXPECT_EQ(interface->textInterface(), nullptr) << "a static text has its name";
}

TEST_F(AccessibilityBridgeTest, ATextsSelectionIsReadAndSet) {
  const auto cell = make<harness::SelectingCell>();
  field->setCell(cell);
  QAccessibleTextInterface* text = of(cell)->textInterface();
  int start = 0, end = 0;
  text->selection(0, &start, &end);
  EXPECT_EQ(text->selectionCount(), 1);
  EXPECT_EQ(std::pair(start, end), std::pair(5, 10));
  EXPECT_EQ(text->cursorPosition(), 10);
  text->selection(1, &start, &end);
  EXPECT_EQ(std::pair(start, end), std::pair(0, 0)) << "there is one selection";
  text->setSelection(1, 0, 2);
  text->removeSelection(1);
  EXPECT_EQ(cell->range, (NSRange{5, 5}));
  text->setSelection(0, 4, 1);
  EXPECT_EQ(cell->range, (NSRange{1, 3}));
  text->removeSelection(0);
  EXPECT_EQ(cell->range, (NSRange{4, 0}));
  text->setCursorPosition(100);
  EXPECT_EQ(cell->range, (NSRange{10, 0}));
}

TEST_F(AccessibilityBridgeTest, AQuantityHasAValueBetweenBounds) {
  const auto cell = make<harness::QuantityCell>();
  const auto slider = make<NSControl>(CGRect{0, 0, 100, 20});
  slider->setCell(cell);
  window->contentView()->addSubview(slider);
  QAccessibleValueInterface* value = of(cell)->valueInterface();
  ASSERT_NE(value, nullptr);
  EXPECT_EQ(value->currentValue().toDouble(), 4);
  EXPECT_EQ(value->minimumValue().toDouble(), 0);
  EXPECT_EQ(value->maximumValue().toDouble(), 10);
  value->setCurrentValue(7);
  EXPECT_EQ(cell->value, 7);
  value->setCurrentValue(QVariant::fromValue(QSize(3, 4)));
  EXPECT_EQ(cell->value, 7);
}

TEST_F(AccessibilityBridgeTest, AWidgetOfSeveralElementsIsAGroupOfItsName) {
  QWidget top;
  const auto buttons = make<NSView>(CGRect{0, 0, 80, 24});
  for (const CGFloat x : {0, 40}) buttons->addSubview(make<NSButton>(CGRect{x, 0, 40, 24}));
  auto* widget = new QtViewWidget(buttons, &top);
  widget->setAccessibleName("transport");
  const QAccessibleInterface* group = QAccessible::queryAccessibleInterface(widget);
  EXPECT_EQ(group->text(QAccessible::Name), "transport");
  EXPECT_EQ(group->role(), QAccessible::Grouping);
  EXPECT_EQ(group->child(0)->text(QAccessible::Name), "");
}

TEST_F(AccessibilityBridgeTest, AViewHangsBelowTheWidgetThatItIsEmbeddedIn) {
  QWidget top;
  top.setGeometry(50, 60, 200, 100);
  const auto embedded = make<NSButton>(CGRect{0, 0, 80, 24});
  embedded->setTitle("Next");
  auto* widget = new QtViewWidget(embedded, &top);
  widget->setGeometry(20, 30, 80, 24);
  widget->setAccessibleName("transport");
  top.show();
  settle();
  QAccessibleInterface* outer = QAccessible::queryAccessibleInterface(widget);
  ASSERT_EQ(outer->childCount(), 1);
  EXPECT_EQ(outer->text(QAccessible::Name), "") << "one thing has one name";
  EXPECT_EQ(outer->role(), QAccessible::Client);
  EXPECT_EQ(outer->parent(), QAccessible::queryAccessibleInterface(&top));
  EXPECT_EQ(outer->child(0), of(embedded->cell()));
  EXPECT_EQ(countAgreeing(outer->parent()), 2);
  const QRect onScreen(widget->mapToGlobal(QPoint(0, 0)), QSize(80, 24)), told = outer->child(0)->rect();
  const double scale = top.devicePixelRatioF();
  if (scale == std::floor(scale)) {
    EXPECT_EQ(told, onScreen);
  } else {  // the view lies on whole device pixels
    EXPECT_TRUE(onScreen.adjusted(-1, -1, 1, 1).contains(told));
    EXPECT_TRUE(told.contains(onScreen.adjusted(1, 1, -1, -1)));
  }
  EXPECT_EQ(outer->childAt(outer->rect().center().x(), outer->rect().center().y()), outer->child(0));
  EXPECT_FALSE(outer->child(0)->state().offscreen);
  EXPECT_EQ(outer->child(0)->window(), top.windowHandle());

  top.activateWindow();
  settle();
  widget->setFocus(Qt::TabFocusReason);
  EXPECT_TRUE(outer->child(0)->state().focused);
  EXPECT_FALSE(outer->state().focused || outer->state().focusable);
  EXPECT_EQ(outer->focusChild(), outer->child(0));

  EXPECT_EQ(outer->child(0)->text(QAccessible::Name), "Next");
  embedded->setTitle("");
  EXPECT_EQ(outer->child(0)->text(QAccessible::Name), "transport") << "without a name it has that of its widget";

  const QAccessible::Id id = QAccessible::uniqueId(outer->child(0));
  delete widget;
  EXPECT_EQ(of(embedded->cell())->parent(), nullptr);
  EXPECT_EQ(QAccessible::accessibleInterface(id), of(embedded->cell()));
}

TEST_F(AccessibilityBridgeTest, AViewInAHiddenWidgetIsOffScreenUntilTheWidgetShows) {
  QWidget top;
  top.setGeometry(50, 60, 200, 100);
  auto* page = new QWidget(&top);
  page->setGeometry(0, 0, 200, 100);
  const auto embedded = make<NSButton>(CGRect{0, 0, 80, 24});
  (new QtViewWidget(embedded, page))->setGeometry(20, 30, 80, 24);
  top.show();
  settle();
  EXPECT_FALSE(of(embedded->cell())->state().offscreen);
  page->hide();
  settle();
  EXPECT_TRUE(of(embedded->cell())->state().offscreen);
  page->show();
  settle();
  EXPECT_FALSE(of(embedded->cell())->state().offscreen);
}

// The completion pop-up of the field.
using AccessibilityBridgePopUp = AccessibilityBridgeTest;

TEST_F(AccessibilityBridgePopUp, TheListHangsBelowTheFieldWhileItIsShown) {
  EXPECT_EQ(of(field->cell())->childCount(), 0);
  begin({"a", "b"});
  ASSERT_EQ(of(field->cell())->childCount(), 1);
  EXPECT_EQ(list()->role(), QAccessible::List);
  EXPECT_EQ(list()->childCount(), 2);
  EXPECT_EQ(list()->child(1)->role(), QAccessible::ListItem);
  EXPECT_EQ(list()->child(1)->text(QAccessible::Name), "b, by b");
  EXPECT_EQ(countAgreeing(root()), 2 + 1 + 2 + 4);
  EXPECT_EQ(list()->window(), &qWindowOf(*controller->window()));
  controller->cancelSuggestions();
  EXPECT_EQ(of(field->cell())->childCount(), 0);
}

TEST_F(AccessibilityBridgePopUp, ThePopUpsWindowIsNoChildOfTheApplication) {
  begin({"a"});
  settle();
  QAccessibleInterface* application = QAccessible::queryAccessibleInterface(qApp);
  EXPECT_EQ(application->childCount(), 1);
  EXPECT_EQ(qWindowOf(*controller->window()).accessibleRoot(), nullptr);
  EXPECT_EQ(QAccessible::queryAccessibleInterface(&qWindowOf(*controller->window())), nullptr);
}

TEST_F(AccessibilityBridgePopUp, TheSelectedRowIsAStateAndTheKeyboardStaysInTheField) {
  begin({"a", "b"});
  EXPECT_TRUE(list()->child(0)->state().selected);
  EXPECT_TRUE(list()->child(1)->state().selectable);
  EXPECT_FALSE(list()->child(1)->state().selected || list()->child(0)->state().focused);
  EXPECT_TRUE(window->isKeyWindow());
}

TEST_F(AccessibilityBridgePopUp, PressSelectsARowAndChooseEndsThePopUp) {
  begin({"a", "b"});
  QAccessibleActionInterface* actions = list()->child(1)->actionInterface();
  EXPECT_EQ(actions->actionNames(), (QStringList{QAccessibleActionInterface::pressAction(), "choose"}));
  actions->doAction(QAccessibleActionInterface::pressAction());
  EXPECT_TRUE(list()->child(1)->state().selected);
  EXPECT_FALSE(list()->child(0)->state().selected);
  EXPECT_EQ(clicks->count, 0);
  actions->doAction("choose");
  EXPECT_EQ(clicks->count, 1);
  EXPECT_FALSE(controller->window()->isVisible());
  EXPECT_EQ(of(field->cell())->childCount(), 0);
}

TEST_F(AccessibilityBridgePopUp, RowsThatAreThrownAwayLeaveNoInterfaceBehind) {
  begin({"a", "b"});
  std::vector<QAccessible::Id> ids;
  for (QAccessibleInterface* row : childrenOf(list())) ids.push_back(QAccessible::uniqueId(row));
  settle();
  suggest({"c"});
  settle();
  for (const QAccessible::Id id : ids) EXPECT_EQ(QAccessible::accessibleInterface(id), nullptr);
  EXPECT_EQ(list()->childCount(), 1);
}

TEST_F(AccessibilityBridgePopUp, ChoosingMayThrowAllRowsAway) {
  begin({"a", "b"});
  clicks->then = [&] { suggest({"c"}); };
  list()->child(1)->actionInterface()->doAction("choose");
  settle();
  EXPECT_EQ(clicks->count, 1);
  EXPECT_FALSE(controller->window()->isVisible());
}

}  // namespace

}  // namespace tessaluna::backend::qt
