// What an assistive client is shown of one element: the answers to all that it asks, worked out from the element's
// attributes and from its place. A backend translates them into the words of its desktop and decides nothing.
//
// Each part can be asked for alone. All of them are worked out at each call, and describe the element as it is
// then.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "tessaluna/platform/accessibility/AccessibilityValue.h"
#include "tessaluna/platform/accessibility/AccessibleStates.h"

namespace tessaluna::platform {

class NSView;

// The value of a slider and the like. An absent bound is unknown.
struct AccessibleQuantity {
  double value = 0;
  std::optional<double> minimum, maximum;
  bool isSettable = false;
  friend bool operator==(const AccessibleQuantity&, const AccessibleQuantity&) = default;
};

struct AccessibleDescription {
  std::string role;  // one of names.h
  std::string name;
  std::string help;  // a sentence beyond the name; what a field says while it is empty
  std::string text;  // a value that is a text
  std::optional<AccessibleQuantity> quantity;
  AccessibleStates states;
  std::vector<std::string> actions;
  CGRect frame;  // screen space
};

AccessibleDescription describe(const Ref<NSObject>& element);

// An item of a list, whose role may be any, is a row.
std::string accessibleRoleOf(const Ref<NSObject>& element);
// Its label, else its title; of a text, a link or a pop-up button what it says; of an item of a list the texts in it.
std::string accessibleNameOf(const Ref<NSObject>& element);
std::string accessibleHelpOf(const Ref<NSObject>& element);  // empty too where it only repeats the name
// A value that is a text; empty for any other.
std::string accessibleValueTextOf(const Ref<NSObject>& element);
// Absent where the value is a text, a state such as that of a check box, or nothing.
std::optional<AccessibleQuantity> accessibleQuantityOf(const Ref<NSObject>& element);
AccessibleStates accessibleStatesOf(const Ref<NSObject>& element);
CGRect accessibleFrameOf(const Ref<NSObject>& element);

// The action of an element that takes the keyboard. Beside those of names.h.
inline constexpr std::string_view accessibleFocusAction = "AXFocus";
// A disabled element offers no action and refuses all.
std::vector<std::string> accessibleActionsOf(const Ref<NSObject>& element);
// False if the element does not offer it now.
bool performAccessibleAction(const Ref<NSObject>& element, std::string_view action);

// Whether its value is a text that the keyboard moves in, read-only or not.
bool isAccessibleTextInput(const Ref<NSObject>& element);
// The view that the element is, that its cell is in, or that it is painted in; of a window its content. Null if none.
Ref<NSView> viewOfAccessible(const Ref<NSObject>& element);
// The part of the frame that shows now, in screen space; empty if none does.
CGRect visibleFrameOfAccessible(const Ref<NSObject>& element);

}  // namespace tessaluna::platform
