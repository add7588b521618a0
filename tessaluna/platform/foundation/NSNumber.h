// A number as an object, where a value has to be one: a cell's value, say. It keeps whole numbers exactly.
#pragma once

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
  explicit NSNumber(std::int64_t value) : value_(value) {}
  explicit NSNumber(int value) : value_(std::int64_t{value}) {}
  explicit NSNumber(bool value) : value_(std::int64_t{value}) {}

  double doubleValue() const;
  float floatValue() const { return static_cast<float>(doubleValue()); }
  // A fraction is cut off; a number out of range is the nearest in it, and NaN is 0.
  std::int64_t integerValue() const;
  bool boolValue() const { return doubleValue() != 0; }
  std::string stringValue() const;

  // By value: 2 and 2.0 are equal.
  bool isEqual(const NSObject* other) const override;

 private:
  std::variant<double, std::int64_t, float> value_;
};

}  // namespace tessaluna::platform
