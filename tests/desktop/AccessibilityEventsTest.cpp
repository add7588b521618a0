// What assistive clients are told of changes. Qt tells nobody on a platform without a bridge to them.
#include <QPushButton>
#include <QWidget>
#include <algorithm>
#include <utility>

#include "tessaluna/backends/qt/AccessibleElement.h"
#include "tessaluna/backends/qt/QtViewWidget.h"
#include "tests/desktop/QtDesktop.h"
#include "tests/harness/AccessiblePlayer.h"

using namespace tessaluna::platform;
using tessaluna::backend::qt::AccessibleElement;
using tessaluna::backend::qt::QtViewWidget;
using Reports = std::vector<std::string>;

namespace {

// What a client would hear, in words.
std::vector<std::string> reported;

std::string wordFor(QAccessibleEvent& event) {
  const auto as = [&](auto* kind) -> auto& { return static_cast<decltype(*kind)&>(event); };
  const auto state = event.accessibleInterface()->state();
  switch (event.type()) {
    case QAccessible::Focus: return "focus";
    case QAccessible::ObjectCreated: return "created";
    case QAccessible::ObjectDestroyed: return "destroyed";
    case QAccessible::ObjectShow: return "shown";
    case QAccessible::ObjectHide: return "hidden";
    case QAccessible::NameChanged: return "named";
    case QAccessible::SelectionAdd: return state.selected ? "selected" : "selected without the state";
    case QAccessible::SelectionRemove: return state.selected ? "deselected without the state" : "deselected";
    case QAccessible::ValueChanged:
      return "value " + as(static_cast<QAccessibleValueChangeEvent*>(nullptr)).value().toString().toStdString();
    case QAccessible::StateChanged: {
      const QAccessible::State changed = as(static_cast<QAccessibleStateChangeEvent*>(nullptr)).changedStates();
      if (changed.checked) return state.checked ? "checked" : "not checked";
      if (changed.disabled) return state.disabled ? "disabled" : "enabled";
      if (changed.active) return state.active ? "active" : "inactive";
      return "state";
    }
    case QAccessible::TextInserted: {
      auto& text = as(static_cast<QAccessibleTextInsertEvent*>(nullptr));
      return "inserted " + text.textInserted().toStdString() + " at " + std::to_string(text.changePosition());
    }
    case QAccessible::TextRemoved: {
      auto& text = as(static_cast<QAccessibleTextRemoveEvent*>(nullptr));
      return "removed " + text.textRemoved().toStdString() + " at " + std::to_string(text.changePosition());
    }
    case QAccessible::TextUpdated: {
      auto& text = as(static_cast<QAccessibleTextUpdateEvent*>(nullptr));
      return "replaced " + text.textRemoved().toStdString() + " by " + text.textInserted().toStdString() + " at " +
             std::to_string(text.changePosition());
    }
    case QAccessible::TextSelectionChanged: {
      auto& text = as(static_cast<QAccessibleTextSelectionEvent*>(nullptr));
      return "text selected from " + std::to_string(text.selectionStart()) + " to " + std::to_string(text.selectionEnd());
    }
    case QAccessible::TextCaretMoved:
      return "caret at " + std::to_string(as(static_cast<QAccessibleTextCursorEvent*>(nullptr)).cursorPosition());
    default: return "event " + std::to_string(event.type());
  }
}

void hear(QAccessibleEvent* event) {
  QAccessibleInterface* interface = event->accessibleInterface();
  if (interface && (dynamic_cast<AccessibleElement*>(interface) || event->type() == QAccessible::Focus))
    reported.push_back(interface->text(QAccessible::Name).toStdString() + ": " + wordFor(*event));
}

class AccessibilityEvents : public harness::QtDesktop, protected harness::AccessiblePlayer {
 protected:
  AccessibilityEvents() {
    setTarget(clicks);
    window->makeKeyAndOrderFront(nullptr);
    earlierHandler = QAccessible::installUpdateHandler(hear);
  }
  void SetUp() override {
    ASSERT_TRUE(eventually([] { return QAccessible::isActive(); }));
    ASSERT_TRUE(eventually([&] { return window->isKeyWindow(); }));
    of(field->cell());
    of(button->cell());
    settle();
    reported.clear();
  }
  ~AccessibilityEvents() override {
    settle();
    QAccessible::installUpdateHandler(earlierHandler);
  }

  static Reports whatIsReported() {
    settle();
    return std::exchange(reported, {});
  }

  Ref<harness::ClickCount> clicks = make<harness::ClickCount>();
  QAccessible::UpdateHandler earlierHandler;
};

using AccessibilityEventsPopUp = AccessibilityEvents;

TEST_F(AccessibilityEvents, FocusThatMovesIsTold) {
  window->makeFirstResponder(button.get());
  EXPECT_EQ(whatIsReported(), Reports{"Play: focus"});
  window->makeFirstResponder(nullptr);
  EXPECT_EQ(whatIsReported(), Reports{"Player: focus"});
}

TEST_F(AccessibilityEvents, AWindowThatComesAndGoesIsTold) {
  window->orderOut(nullptr);
  const Reports gone = whatIsReported();
  ASSERT_GE(gone.size(), 2u);
  EXPECT_EQ(Reports(gone.begin(), gone.begin() + 2), (Reports{"Player: hidden", "Player: destroyed"}));
  window->makeKeyAndOrderFront(nullptr);
  // On a busy machine Qt learns only now that the hidden window lost the keyboard, and soon after that it has it again. The focus
  // is reported each time.
  EXPECT_TRUE(eventually([] { return !reported.empty() && reported.back() == "Player: focus"; }));
  ASSERT_GE(reported.size(), 2u);
  EXPECT_EQ(Reports(reported.begin(), reported.begin() + 2), (Reports{"Player: created", "Player: shown"}));
}

TEST_F(AccessibilityEvents, AToggleTellsThatItIsChecked) {
  button->setButtonType(NSButtonType::Toggle);
  button->setState(NSControlStateValueOn);
  button->setState(NSControlStateValueOff);
  EXPECT_EQ(whatIsReported(), (Reports{"Play: checked", "Play: not checked"}));
}

TEST_F(AccessibilityEvents, AQuantityTellsItsValue) {
  const auto cell = make<harness::QuantityCell>();
  of(cell);
  cell->value = 7;
  NSAccessibilityPostNotification(cell, NSAccessibilityValueChangedNotification);
  EXPECT_EQ(whatIsReported(), Reports{": value 7"});
}

TEST_F(AccessibilityEvents, ATextTellsTheDifference) {
  field->setStringValue("quüxery");
  field->setStringValue("quoery");
  field->setStringValue("uoery");
  field->setStringValue("uoery");
  field->setStringValue("");
  field->setStringValue("aa");
  field->setStringValue("aaa");
  EXPECT_EQ(whatIsReported(), (Reports{": inserted üx at 2", ": replaced üx by o at 2", ": removed q at 0",
                                       ": removed uoery at 0", ": inserted aa at 0", ": inserted a at 2"}));
}

TEST_F(AccessibilityEvents, ATextTellsItsSelection) {
  const auto cell = make<harness::SelectingCell>();
  of(cell);
  cell->range = {1, 5};
  NSAccessibilityPostNotification(cell, NSAccessibilitySelectedTextChangedNotification);
  EXPECT_EQ(whatIsReported(), (Reports{": text selected from 1 to 6", ": caret at 6"}));
  cell->range = {4, 0};
  NSAccessibilityPostNotification(cell, NSAccessibilitySelectedTextChangedNotification);
  EXPECT_EQ(whatIsReported(), Reports{": caret at 4"});
}

TEST_F(AccessibilityEvents, AnEmbeddedViewTellsItsFocusAfterItsWidget) {
  QWidget top;
  Ref<NSButton> buttons[2];
  QtViewWidget* widgets[2];
  for (int i = 0; i < 2; ++i) {
    buttons[i] = make<NSButton>(CGRect{0, 0, 80, 24});
    buttons[i]->setTitle(i == 0 ? "Previous" : "Next");
    widgets[i] = new QtViewWidget(buttons[i], &top);
    widgets[i]->setGeometry(20, 30 + 40 * i, 80, 24);
    widgets[i]->setAccessibleName("widget");
  }
  top.show();
  top.activateWindow();
  ASSERT_TRUE(eventually([&] { return top.isActiveWindow(); }));
  settle();
  reported.clear();
  widgets[1]->setFocus(Qt::TabFocusReason);
  EXPECT_EQ(whatIsReported(), (Reports{": focus", "Next: focus"})) << "a widget with one element is nothing beside it";
}

TEST_F(AccessibilityEvents, WhereAFocusThatIsPassedOnEndsIsToldLast) {
  QWidget top;
  for (int i = 0; i < 2; ++i) {
    auto* takesNoKeys = new QtViewWidget(make<NSView>(CGRect{0, 0, 20, 20}), &top);
    takesNoKeys->setGeometry(20, 30 + 40 * i, 20, 20);
  }
  QPushButton end("End", &top);
  top.show();
  top.activateWindow();
  ASSERT_TRUE(eventually([&] { return top.isActiveWindow(); }));
  end.setFocus();
  settle();
  reported.clear();
  dynamic_cast<QWidget&>(*top.children().front()).setFocus(Qt::TabFocusReason);
  ASSERT_TRUE(end.hasFocus());
  EXPECT_TRUE(eventually([] { return !reported.empty() && reported.back() == "End: focus"; }));
  settle();
  EXPECT_EQ(std::count(reported.begin(), reported.end(), "End: focus"), 2) << "by Qt, and once more";
}

TEST_F(AccessibilityEvents, NamesAndEnabledControlsTellTheirChanges) {
  const auto label = NSTextField::labelWithString("one");
  window->contentView()->addSubview(label);
  of(label->cell());
  label->setStringValue("two");
  window->setTitle("Other");
  button->setEnabled(false);
  EXPECT_EQ(whatIsReported(), (Reports{"two: named", "Other: named", "Play: disabled"}));
}

TEST_F(AccessibilityEvents, WhatNoClientHasMetTellsNothing) {
  const auto label = NSTextField::labelWithString("one");
  window->contentView()->addSubview(label);
  label->setStringValue("two");
  EXPECT_EQ(whatIsReported(), Reports{});
  EXPECT_EQ(label->cell()->accessibilityCompanion(), nullptr);
}

TEST_F(AccessibilityEventsPopUp, ItsComingSelectionAndEndAreTold) {
  begin({"a", "b"});
  EXPECT_EQ(whatIsReported(), (Reports{": created", ": shown", "a, by a: selected"}));
  EXPECT_TRUE(window->isKeyWindow());
  controller->moveDown(nullptr);
  EXPECT_EQ(whatIsReported(), (Reports{"a, by a: deselected", "b, by b: selected"}));
  controller->setSelectedView(nullptr);
  EXPECT_EQ(whatIsReported(), Reports{"b, by b: deselected"});
  suggest({"c"});
  EXPECT_EQ(whatIsReported(), Reports{"c, by c: selected"});
  controller->cancelSuggestions();
  EXPECT_EQ(whatIsReported(), (Reports{": hidden", ": destroyed"}));
  controller->beginForTextField(field);
  EXPECT_EQ(whatIsReported(), (Reports{": created", ": shown", "c, by c: selected"}));
}

}  // namespace
