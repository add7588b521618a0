// Cells that give assistive clients the answers that a test sets.
#pragma once

#include <string>

#include "tessaluna/platform/cells/NSTextFieldCell.h"

namespace harness {

// A cell with a value between bounds, such as a slider's.
class QuantityCell : public tessaluna::platform::NSCell {
 public:
  bool isAccessibilityElement() const override { return true; }
  std::string accessibilityRole() const override { return std::string(tessaluna::platform::NSAccessibilitySliderRole); }
  tessaluna::platform::AccessibilityValue accessibilityValue() const override { return value; }
  tessaluna::platform::AccessibilityValue accessibilityAttributeValue(std::string_view attribute) const override {
    if (attribute == tessaluna::platform::NSAccessibilityMinValueAttribute) return 0.0;
    if (attribute == tessaluna::platform::NSAccessibilityMaxValueAttribute) return 10.0;
    return tessaluna::platform::NSCell::accessibilityAttributeValue(attribute);
  }
  void accessibilitySetValue(const tessaluna::platform::AccessibilityValue& wanted, std::string_view attribute) override {
    if (attribute == tessaluna::platform::NSAccessibilityValueAttribute && wanted.as<double>()) value = *wanted.as<double>();
  }
  double value = 4;
};

// A text with a selection, such as a field has while it is edited.
class SelectingCell : public tessaluna::platform::NSTextFieldCell {
 public:
  SelectingCell() : tessaluna::platform::NSTextFieldCell("some words") { setEditable(true); }
  tessaluna::platform::AccessibilityValue accessibilityAttributeValue(std::string_view attribute) const override {
    if (attribute == tessaluna::platform::NSAccessibilitySelectedTextRangeAttribute) return range;
    return tessaluna::platform::NSTextFieldCell::accessibilityAttributeValue(attribute);
  }
  void accessibilitySetValue(const tessaluna::platform::AccessibilityValue& value, std::string_view attribute) override {
    if (attribute != tessaluna::platform::NSAccessibilitySelectedTextRangeAttribute)
      return tessaluna::platform::NSTextFieldCell::accessibilitySetValue(value, attribute);
    range = *value.as<tessaluna::platform::NSRange>();
  }
  tessaluna::platform::NSRange range{5, 5};
};

}  // namespace harness
