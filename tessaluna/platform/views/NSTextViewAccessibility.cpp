// What a text view is to assistive clients. A field editor answers here for the cell of its field.
#include "tessaluna/platform/accessibility/textPlaces.h"
#include "tessaluna/platform/text/unicode.h"
#include "tessaluna/platform/views/NSTextView.h"

namespace tessaluna::platform {

std::string NSTextView::accessibilityRole() const { return std::string(NSAccessibilityTextAreaRole); }

AccessibilityValue NSTextView::accessibilityAttributeValue(std::string_view attribute) const {
  const NSRange selected = selectedRange();
  if (attribute == NSAccessibilityNumberOfCharactersAttribute) return static_cast<double>(length());
  if (attribute == NSAccessibilitySelectedTextRangeAttribute) return selected;
  if (attribute == NSAccessibilitySelectedTextAttribute)
    return utf8FromUtf16(std::u16string_view(textStorage()->text()).substr(selected.location, selected.length));
  if (attribute == accessibilityInsertionPointAttribute) return static_cast<double>(selection().head);
  if (attribute == NSAccessibilityInsertionPointLineNumberAttribute) {
    const std::vector<TextLayout::Line>& lines = layoutManager()->layout().lines();
    return static_cast<double>(&layoutManager()->layout().lineOf(selection().place()) - lines.data());
  }
  return TextViewEditing::accessibilityAttributeValue(attribute);
}

AccessibilityValue NSTextView::accessibilityAttributeValueForParameter(std::string_view attribute,
                                                                       const AccessibilityValue& parameter) const {
  return textPlaceValue(attribute, parameter, *this,
                        {.length = length(),
                         .rectsOf = [this](NSRange range) { return rectsForRange(range); },
                         .caretAt = [this](std::size_t index) { return caretRectForIndex(index); },
                         .nearestCharacterTo =
                             [this](CGPoint point) {
                               const CGPoint origin = textOrigin();
                               return layoutManager()->characterIndexForPoint({point.x - origin.x, point.y - origin.y},
                                                                              *textContainer(), nullptr);
                             }});
}

bool NSTextView::accessibilityIsAttributeSettable(std::string_view attribute) const {
  if (attribute == NSAccessibilitySelectedTextRangeAttribute) return isSelectable();
  if (attribute == NSAccessibilityValueAttribute) return isEditable();
  return TextViewEditing::accessibilityIsAttributeSettable(attribute);
}

void NSTextView::accessibilitySetValue(const AccessibilityValue& value, std::string_view forAttribute) {
  if (!accessibilityIsAttributeSettable(forAttribute)) return;
  const auto* range = value.as<NSRange>();
  const auto* text = value.as<std::string>();
  if (forAttribute == NSAccessibilitySelectedTextRangeAttribute && range) {
    setSelectedRange(*range);
  } else if (forAttribute == NSAccessibilityValueAttribute && text) {
    // The text does not come from an input method, which must not continue composing what is replaced.
    unmarkText();
    insertText(*text, {0, length()});
  } else {
    TextViewEditing::accessibilitySetValue(value, forAttribute);
  }
}

}  // namespace tessaluna::platform
