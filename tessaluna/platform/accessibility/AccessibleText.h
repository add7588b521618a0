// The text of an element that is written in: its value, what is selected in it, where the caret is, and the difference
// between two texts, as assistive clients are notified of it. Offsets count UTF-16 units.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "tessaluna/platform/accessibility/AccessibilityValue.h"

namespace tessaluna::platform {

struct AccessibleTextState {
  std::u16string text;
  std::optional<NSRange> selection{};  // absent where the element does not report its selection, as while it is not edited
  std::optional<std::size_t> caret{};  // at one of the ends of the selection
  friend bool operator==(const AccessibleTextState&, const AccessibleTextState&) = default;
};

AccessibleTextState accessibleTextOf(const Ref<NSObject>& element);

// One stretch was taken out and another put in its place; either may be empty. Both are whole characters of Unicode.
struct AccessibleTextChange {
  std::size_t offset = 0;
  std::u16string removed, inserted;
  friend bool operator==(const AccessibleTextChange&, const AccessibleTextChange&) = default;
};

// The shortest change from one to the other; absent if they are equal.
std::optional<AccessibleTextChange> changeOfText(std::u16string_view before, std::u16string_view after);

// What clients do. Offsets are cut to the text, and the two ends of a range may come in either order.
void selectAccessibleText(const Ref<NSObject>& element, std::size_t start, std::size_t end);
// As if it were typed there.
void replaceAccessibleText(const Ref<NSObject>& element, std::size_t start, std::size_t end, std::u16string_view text);

// In screen space. Empty where the element does not say where its characters are.
CGRect frameOfAccessibleText(const Ref<NSObject>& element, NSRange range);
// The character whose box holds the point of the screen; absent if none does.
std::optional<std::size_t> accessibleTextOffsetAt(const Ref<NSObject>& element, CGPoint point);

}  // namespace tessaluna::platform
