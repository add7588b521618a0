// A number as an object, where a value has to be one: a cell's value, say. It keeps whole numbers exactly.
#pragma once

#include <concepts>
#include <cstdint>
#include <string>
#include <variant>

#include "tessaluna/platform/foundation/NSObject.h"

namespace tessaluna::platform {

class NSNumber : public NSObject {
 public:
  static const ClassInfo staticClassInfo;
  const ClassInfo& classInfo() const override { return staticClassInfo; }

  explicit NSNumber(double value) : value_(value) {}
  explicit NSNumber(float value) : value_(value) {}  // its text is the shortest that reads back as this float
  explicit NSNumber(int value) : value_(std::int64_t{value}) {}
  explicit NSNumber(std::signed_integral auto value) : value_(std::int64_t{value}) {}
  // Beyond the whole numbers that are kept, the nearest double.
  explicit NSNumber(std::unsigned_integral auto value) : value_(valueOf(value)) {}

  double doubleValue() const;
  float floatValue() const { return static_cast<float>(doubleValue()); }
  // A fraction is cut off; a number out of range is the nearest in it, and NaN is 0.
  std::int64_t integerValue() const;
  bool boolValue() const { return doubleValue() != 0; }
  std::string stringValue() const;

  // By value: 2 and 2.0 are equal.
  bool isEqual(const NSObject* other) const override;

 private:
  using Value = std::variant<double, std::int64_t, float>;
  static Value valueOf(std::uint64_t value);

  Value value_;
};

}  // namespace tessaluna::platform
