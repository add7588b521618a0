// What an attribute of an element holds: nothing, a plain value, another element or several.
#pragma once

#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include "tessaluna/platform/foundation/Geometry.h"
#include "tessaluna/platform/foundation/NSObject.h"

namespace tessaluna::platform {

using AccessibilityElements = std::vector<Ref<NSObject>>;

class AccessibilityValue {
 public:
  AccessibilityValue() = default;  // absent
  AccessibilityValue(bool value) : value_(value) {}
  AccessibilityValue(double value) : value_(value) {}
  AccessibilityValue(std::string_view value) : value_(std::string(value)) {}
  AccessibilityValue(const std::string& value) : value_(value) {}
  AccessibilityValue(const char* value) : value_(std::string(value)) {}
  AccessibilityValue(CGPoint value) : value_(value) {}
  AccessibilityValue(CGSize value) : value_(value) {}
  AccessibilityValue(CGRect value) : value_(value) {}
  AccessibilityValue(NSRange value) : value_(value) {}
  AccessibilityValue(AccessibilityElements value) : value_(std::move(value)) {}
  template <class T>
  AccessibilityValue(Ref<T> value) : AccessibilityValue() {
    if (value) value_ = Ref<NSObject>(std::move(value));
  }

  bool isAbsent() const { return std::holds_alternative<std::monostate>(value_); }
  // Absent for a value of another kind: bool, double, std::string, CGPoint, CGSize, CGRect, NSRange,
  // Ref<NSObject>, AccessibilityElements.
  template <class T>
  const T* as() const {
    return std::get_if<T>(&value_);
  }
  friend bool operator==(const AccessibilityValue&, const AccessibilityValue&) = default;

 private:
  std::variant<std::monostate, bool, double, std::string, CGPoint, CGSize, CGRect, NSRange, Ref<NSObject>,
               AccessibilityElements>
      value_;
};

}  // namespace tessaluna::platform
