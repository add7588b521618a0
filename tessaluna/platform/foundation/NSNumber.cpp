#include "tessaluna/platform/foundation/NSNumber.h"

#include <charconv>
#include <cmath>
#include <limits>
#include <utility>

#include "tessaluna/platform/foundation/numberText.h"

namespace tessaluna::platform {

const ClassInfo NSNumber::staticClassInfo{.name = "NSNumber", .base = &NSObject::staticClassInfo};

namespace {

// 0.1f is "0.1" and not "0.10000000149011612", which it is as a double.
std::string singleText(float number) {
  if (number == 0) return "0";
  char text[32];
  return std::string(text, std::to_chars(text, text + sizeof text, number).ptr);
}

}  // namespace

NSNumber::Value NSNumber::valueOf(std::uint64_t value) {
  if (std::in_range<std::int64_t>(value)) return static_cast<std::int64_t>(value);
  return static_cast<double>(value);
}

double NSNumber::doubleValue() const {
  return std::visit([](auto value) { return static_cast<double>(value); }, value_);
}

std::int64_t NSNumber::integerValue() const {
  if (const auto* integer = std::get_if<std::int64_t>(&value_)) return *integer;
  const double number = doubleValue();
  using Limits = std::numeric_limits<std::int64_t>;
  if (std::isnan(number)) return 0;
  // 2 to the power of 63, which both limits round to.
  constexpr double end = 9223372036854775808.0;
  if (number >= end) return Limits::max();
  if (number <= -end) return Limits::min();
  return static_cast<std::int64_t>(number);
}

std::string NSNumber::stringValue() const {
  if (const auto* integer = std::get_if<std::int64_t>(&value_)) return std::to_string(*integer);
  const auto* single = std::get_if<float>(&value_);
  return single ? singleText(*single) : numberText(std::get<double>(value_));
}

bool NSNumber::isEqual(const NSObject* other) const {
  const auto* number = dynamic_cast<const NSNumber*>(other);
  if (!number) return false;
  return value_.index() == number->value_.index() ? value_ == number->value_ : doubleValue() == number->doubleValue();
}

}  // namespace tessaluna::platform
