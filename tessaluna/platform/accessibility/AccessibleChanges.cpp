#include "tessaluna/platform/accessibility/AccessibleChanges.h"

#include <algorithm>
#include <utility>

#include "tessaluna/platform/accessibility/AccessibleItems.h"
#include "tessaluna/platform/accessibility/accessibleTree.h"
#include "tessaluna/platform/accessibility/attributes.h"
#include "tessaluna/platform/backend/Backend.h"
#include "tessaluna/platform/foundation/numberText.h"
#include "tessaluna/platform/text/unicode.h"
#include "tessaluna/platform/windows/NSWindow.h"

namespace tessaluna::platform {

namespace {

// The states whose changes are reported. The others go with a change of another kind, or nobody waits for them.
constexpr AccessibleState reportedStates[] = {AccessibleState::Disabled, AccessibleState::Checked, AccessibleState::Mixed,
                                              AccessibleState::Expanded, AccessibleState::Selected};

using Kind = AccessibleChange::Kind;

std::string wordsOf(const AccessibleChange& change) {
  const auto quoted = [](const std::u16string& text) { return '"' + utf8FromUtf16(text) + '"'; };
  switch (change.kind) {
    case Kind::Created: return "created";
    case Kind::Destroyed: return "destroyed";
    case Kind::Focused: return "focused";
    case Kind::Name: return "named";
    case Kind::State: return (change.isOn ? "" : "not ") + std::string(wordFor(change.state));
    case Kind::Quantity: return "value " + numberText(change.value);
    case Kind::Rows: return "other rows";
    case Kind::Text: {
      std::string words;
      if (!change.text.removed.empty()) words += "removed " + quoted(change.text.removed) + " ";
      if (!change.text.inserted.empty()) words += "inserted " + quoted(change.text.inserted) + " ";
      return words + "at " + std::to_string(change.text.offset);
    }
    case Kind::TextSelection: {
      const std::size_t start = change.selection.location, end = start + change.selection.length;
      const std::string caret = "caret at " + std::to_string(change.caret);
      return start == end ? caret : caret + ", selected " + std::to_string(start) + " to " + std::to_string(end);
    }
  }
  unreachable();
}

}  // namespace

std::string lineOf(const AccessibleChange& change) {
  std::string line = accessibleLine(change.element);
  return line.substr(0, line.find('"')) + "\"" + accessibleNameOf(change.element) + "\": " + wordsOf(change);
}

// What is known.

namespace {

AccessibilityElements selectionIn(const Ref<NSObject>& element) {
  const NSAccessibility* asked = accessibilityOf(element);
  return asked ? attributeOf<AccessibilityElements>(*asked, NSAccessibilitySelectedChildrenAttribute)
                     .value_or(AccessibilityElements())
               : AccessibilityElements();
}

}  // namespace

AccessibleMemory::AccessibleMemory(const Ref<NSObject>& element)
    : name_(accessibleNameOf(element)), states_(accessibleStatesOf(element)), quantity_(accessibleQuantityOf(element)) {
  if (isAccessibleTextInput(element)) text_ = accessibleTextOf(element);
  for (const Ref<NSObject>& one : selectionIn(element)) selection_.push_back(one);
}

AccessibleMemory* AccessibleMemory::of(const NSAccessibility& element) {
  return dynamic_cast<AccessibleMemory*>(element.accessibilityCompanion());
}

std::vector<AccessibleChange> AccessibleMemory::changesOf(const Ref<NSObject>& element, Look look) {
  std::vector<AccessibleChange> changes;
  if (isAccessibleTextInput(element)) addChangesOfText(element, look, changes);
  std::string name = accessibleNameOf(element);
  if (name != name_) changes.push_back({.kind = Kind::Name, .element = element});
  name_ = std::move(name);
  const AccessibleStates states = accessibleStatesOf(element);
  for (const AccessibleState state : reportedStates)
    if (const bool isOn = states.contains(state); isOn != states_.contains(state))
      changes.push_back({.kind = Kind::State, .element = element, .state = state, .isOn = isOn});
  states_ = states;
  const std::optional<AccessibleQuantity> quantity = accessibleQuantityOf(element);
  if (quantity && quantity != quantity_)
    changes.push_back({.kind = Kind::Quantity, .element = element, .value = quantity->value});
  quantity_ = quantity;
  return changes;
}

void AccessibleMemory::addChangesOfText(const Ref<NSObject>& element, Look look, std::vector<AccessibleChange>& changes) {
  AccessibleTextState now = accessibleTextOf(element);
  if (std::optional<AccessibleTextChange> text = changeOfText(text_.text, now.text))
    changes.push_back({.kind = Kind::Text, .element = element, .text = *std::move(text)});
  text_.text = std::move(now.text);
  if (look == Look::WithoutTextSelection) return;
  if (now.selection && (now.selection != text_.selection || now.caret != text_.caret))
    changes.push_back({.kind = Kind::TextSelection, .element = element, .selection = *now.selection, .caret = *now.caret});
  text_.selection = now.selection;
  text_.caret = now.caret;
}

std::vector<AccessibleChange> AccessibleMemory::selectionChangesOf(const Ref<NSObject>& element) {
  std::vector<AccessibleChange> changes;
  const auto compare = [&](const Ref<NSObject>& one) {
    if (accessibleParentOf(one) != element) return;
    if (AccessibleMemory* memory = of(*accessibilityOf(one))) {
      for (AccessibleChange& change : memory->changesOf(one, Look::WithoutTextSelection))
        changes.push_back(std::move(change));
      return;
    }
    const bool isOn = accessibleStatesOf(one).contains(AccessibleState::Selected);
    changes.push_back({.kind = Kind::State, .element = one, .state = AccessibleState::Selected, .isOn = isOn});
  };
  const AccessibilityElements selection = selectionIn(element);
  const std::vector<WeakRef<NSObject>> earlier =
      std::exchange(selection_, std::vector<WeakRef<NSObject>>(selection.begin(), selection.end()));
  const auto wasSelected = [&](const Ref<NSObject>& one) {
    return std::any_of(earlier.begin(), earlier.end(), [&](const auto& known) { return known.lock() == one; });
  };
  for (const WeakRef<NSObject>& known : earlier)
    if (const Ref<NSObject> one = known.lock(); one && std::find(selection.begin(), selection.end(), one) == selection.end())
      compare(one);
  for (const Ref<NSObject>& one : selection)
    if (!wasSelected(one)) compare(one);
  return changes;
}

// What has changed.

AccessibleChanges::AccessibleChanges(Listener listener) : listener_(std::move(listener)) {
  notifications_ = accessibilityNotificationCenter().addObserverForName(
      "", nullptr, nullptr, [this](const Ref<NSNotification>& notification) { notified(*notification); });
  keyWindows_ = NSNotificationCenter::defaultCenter().addObserverForName(
      NSWindowDidBecomeKeyNotification, nullptr, nullptr, [this](const Ref<NSNotification>&) { focusMayHaveChanged(); });
}

AccessibleChanges::~AccessibleChanges() {
  accessibilityNotificationCenter().removeObserver(notifications_);
  NSNotificationCenter::defaultCenter().removeObserver(keyWindows_);
}

void AccessibleChanges::notified(const NSNotification& notification) {
  const Ref<NSObject> element = notification.object();
  const NSAccessibility* asked = accessibilityOf(element);
  if (!asked || !listener_.isListening()) return;
  const std::string& name = notification.name();
  if (name == NSAccessibilityFocusedUIElementChangedNotification) return focusMayHaveChanged();
  if (name == NSAccessibilityCreatedNotification) {
    report({{.kind = Kind::Created, .element = element}});
    // Who meets it by this gets the selection as well.
    if (AccessibleMemory* memory = AccessibleMemory::of(*asked)) memory->forgetSelection();
    return selectionMayHaveChanged(element);
  }
  AccessibleMemory* memory = AccessibleMemory::of(*asked);
  if (!memory) return;
  if (name == NSAccessibilityUIElementDestroyedNotification) {
    memory->forgetSelection();
    report({{.kind = Kind::Destroyed, .element = element}});
  } else if (name == NSAccessibilityRowCountChangedNotification) {
    report({{.kind = Kind::Rows, .element = element}});
  } else if (name == NSAccessibilitySelectedChildrenChangedNotification) {
    selectionMayHaveChanged(element);
  } else {
    const bool hasTextSelection = name == NSAccessibilitySelectedTextChangedNotification;
    report(memory->changesOf(element, hasTextSelection ? AccessibleMemory::Look::WithTextSelection
                                                       : AccessibleMemory::Look::WithoutTextSelection));
  }
}

void AccessibleChanges::focusMayHaveChanged() {
  if (!listener_.isListening()) return;
  isFocusToBeReported_ = true;
  reportLater();
}

void AccessibleChanges::selectionMayHaveChanged(const Ref<NSObject>& element) {
  selections_.push_back(element);
  reportLater();
}

void AccessibleChanges::reportLater() {
  if (backend::Backend* backend = backend::Backend::current()) timer_ = backend->timer(0, [this] { reportNow(); });
}

void AccessibleChanges::reportNow() {
  const Ref<NSObject> focused = std::exchange(isFocusToBeReported_, false) ? focusedElement() : nullptr;
  if (focused) report({{.kind = Kind::Focused, .element = focused}});
  for (const WeakRef<NSObject>& known : std::exchange(selections_, {})) {
    const Ref<NSObject> element = known.lock();
    AccessibleMemory* memory = element ? AccessibleMemory::of(*accessibilityOf(element)) : nullptr;
    if (memory) report(memory->selectionChangesOf(element));
  }
}

void AccessibleChanges::report(const std::vector<AccessibleChange>& changes) {
  for (const AccessibleChange& change : changes) listener_.changed(change);
}

}  // namespace tessaluna::platform
