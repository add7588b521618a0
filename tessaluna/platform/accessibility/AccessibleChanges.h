// What assistive clients are notified of, as plain values: the notifications of elements say that something has changed, and
// the difference to what a client knew before says what.
#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "tessaluna/platform/accessibility/AccessibleDescription.h"
#include "tessaluna/platform/accessibility/AccessibleText.h"
#include "tessaluna/platform/accessibility/NSAccessibility.h"
#include "tessaluna/platform/backend/Timer.h"
#include "tessaluna/platform/foundation/NSNotificationCenter.h"

namespace tessaluna::platform {

struct AccessibleChange {
  enum class Kind { Created, Destroyed, Focused, Name, State, Quantity, Text, TextSelection, Rows };
  Kind kind;
  Ref<NSObject> element;
  AccessibleState state = AccessibleState::Disabled;  // of State, with what it is now
  bool isOn = false;
  double value = 0;             // of Quantity
  AccessibleTextChange text{};  // of Text
  NSRange selection{};          // of TextSelection
  std::size_t caret = 0;
};

// "row "Abba": selected", "text field "Search": removed "a" at 3".
std::string lineOf(const AccessibleChange& change);

// What clients know of an element. It is left with an element that a client has met, and ends with it. A backend may derive
// from it what it keeps of the element itself.
class AccessibleMemory : public NSAccessibility::Companion {
 public:
  explicit AccessibleMemory(const Ref<NSObject>& element);      // what the element is now is known
  static AccessibleMemory* of(const NSAccessibility& element);  // null for one that no client has met

  // What is new of the element itself, which is known from then on. The caret and what is selected in a text are looked at
  // only when the element says that they have changed: while a text changes they are not yet where they will be.
  enum class Look { WithoutTextSelection, WithTextSelection };
  std::vector<AccessibleChange> changesOf(const Ref<NSObject>& element, Look look);
  // The elements in this one that are not selected any more, and those that are now. One that was taken away is left out.
  std::vector<AccessibleChange> selectionChangesOf(const Ref<NSObject>& element);
  void forgetSelection() { selection_.clear(); }

 private:
  void addChangesOfText(const Ref<NSObject>& element, Look look, std::vector<AccessibleChange>& changes);

  std::string name_;
  AccessibleStates states_;
  std::optional<AccessibleQuantity> quantity_;
  AccessibleTextState text_;
  std::vector<WeakRef<NSObject>> selection_;
};

// Observes the elements and the key windows. Nothing is asked or reported while no client listens, and nothing of elements
// that no client has met but that they were created.
class AccessibleChanges {
 public:
  struct Listener {
    std::function<bool()> isListening;
    std::function<void(const AccessibleChange&)> changed;
  };
  explicit AccessibleChanges(Listener listener);
  ~AccessibleChanges();
  AccessibleChanges(const AccessibleChanges&) = delete;
  AccessibleChanges& operator=(const AccessibleChanges&) = delete;

  // Reported a little later, as are selections among elements: when rows are made, the selected one may not be in its place
  // yet, and a desktop that reports the focus of what the element is embedded in does so first.
  void focusMayHaveChanged();

 private:
  void notified(const NSNotification& notification);
  void selectionMayHaveChanged(const Ref<NSObject>& element);
  void reportLater();
  void reportNow();
  void report(const std::vector<AccessibleChange>& changes);

  Listener listener_;
  Ref<NSObject> notifications_, keyWindows_;   // tokens
  std::vector<WeakRef<NSObject>> selections_;  // elements whose selection is to be looked at
  bool isFocusToBeReported_ = false;
  backend::Timer timer_;
};

}  // namespace tessaluna::platform
