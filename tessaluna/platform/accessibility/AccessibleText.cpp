#include "tessaluna/platform/accessibility/AccessibleText.h"

#include <algorithm>

#include "tessaluna/platform/accessibility/attributes.h"
#include "tessaluna/platform/text/unicode.h"
#include "tessaluna/platform/text/wholeScalars.h"

namespace tessaluna::platform {

AccessibleTextState accessibleTextOf(const Ref<NSObject>& element) {
  const NSAccessibility* asked = accessibilityOf(element);
  if (!asked) return {};
  AccessibleTextState state{
      .text = utf16FromUtf8(textAttributeOf(*asked, NSAccessibilityValueAttribute)),
      .selection = attributeOf<NSRange>(*asked, NSAccessibilitySelectedTextRangeAttribute),
  };
  if (state.selection) {
    const auto caret = attributeOf<double>(*asked, accessibilityInsertionPointAttribute);
    state.caret = caret ? static_cast<std::size_t>(*caret) : state.selection->location + state.selection->length;
  }
  return state;
}

std::optional<AccessibleTextChange> changeOfText(std::u16string_view before, std::u16string_view after) {
  if (before == after) return std::nullopt;
  const std::size_t shorter = std::min(before.size(), after.size());
  std::size_t start = 0, tail = 0;
  while (start < shorter && before[start] == after[start]) ++start;
  if (dividesScalar(before, start) || dividesScalar(after, start)) --start;
  while (tail < shorter - start && before[before.size() - 1 - tail] == after[after.size() - 1 - tail]) ++tail;
  if (dividesScalar(before, before.size() - tail) || dividesScalar(after, after.size() - tail)) --tail;
  return AccessibleTextChange{.offset = start,
                              .removed = std::u16string(before.substr(start, before.size() - start - tail)),
                              .inserted = std::u16string(after.substr(start, after.size() - start - tail))};
}

void selectAccessibleText(const Ref<NSObject>& element, std::size_t start, std::size_t end) {
  NSAccessibility* asked = accessibilityOf(element);
  if (!asked) return;
  const std::size_t length = accessibleTextOf(element).text.size();
  const auto [first, last] = std::minmax({std::min(start, length), std::min(end, length)});
  asked->accessibilitySetValue(NSRange{first, last - first}, NSAccessibilitySelectedTextRangeAttribute);
}

void replaceAccessibleText(const Ref<NSObject>& element, std::size_t start, std::size_t end, std::u16string_view text) {
  NSAccessibility* asked = accessibilityOf(element);
  if (!asked) return;
  const std::u16string before = accessibleTextOf(element).text;
  std::u16string whole = before;
  const auto [first, last] = std::minmax({std::min(start, whole.size()), std::min(end, whole.size())});
  const NSRange range = wholeScalars(whole, {first, last - first});
  whole.replace(range.location, range.length, text);
  asked->accessibilitySetValue(utf8FromUtf16(whole), NSAccessibilityValueAttribute);
  // Setting all of it leaves the caret at its end. A field may have changed what was inserted, such as the end of a line.
  const std::u16string now = accessibleTextOf(element).text;
  const std::u16string_view tail = std::u16string_view(whole).substr(range.location + text.size());
  const bool wasTaken = now == whole || now != before;
  if (wasTaken && now.ends_with(tail)) selectAccessibleText(element, now.size() - tail.size(), now.size() - tail.size());
}

CGRect frameOfAccessibleText(const Ref<NSObject>& element, NSRange range) {
  const NSAccessibility* asked = accessibilityOf(element);
  if (!asked) return {};
  const AccessibilityValue frame =
      asked->accessibilityAttributeValueForParameter(NSAccessibilityBoundsForRangeParameterizedAttribute, range);
  return frame.as<CGRect>() ? *frame.as<CGRect>() : CGRect{};
}

std::optional<std::size_t> accessibleTextOffsetAt(const Ref<NSObject>& element, CGPoint point) {
  const NSAccessibility* asked = accessibilityOf(element);
  if (!asked) return std::nullopt;
  const AccessibilityValue range =
      asked->accessibilityAttributeValueForParameter(NSAccessibilityRangeForPositionParameterizedAttribute, point);
  return range.as<NSRange>() ? std::optional(range.as<NSRange>()->location) : std::nullopt;
}

}  // namespace tessaluna::platform
