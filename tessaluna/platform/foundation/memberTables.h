// The entries of a class's tables of outlets and properties, made from its setters:
//   const Outlet outlets[] = {outlet<&MyRow::setTitleLabel>("titleLabel")};
//   const Property properties[] = {property<&MyRow::setBorderWidth, "borderWidth">()};
#pragma once

#include <algorithm>
#include <optional>
#include <string>
#include <utility>

#include "tessaluna/platform/foundation/NSObject.h"

namespace tessaluna::platform {

// The setter takes a Ref, by value or by reference.
template <auto Setter>
constexpr Outlet outlet(std::string_view name) {
  return {name, [](NSObject& owner, const Ref<NSObject>& object) {
            return []<class T, class Argument>(void (T::*setter)(Argument), NSObject& self, const Ref<NSObject>& value) {
              auto typed = std::dynamic_pointer_cast<typename std::remove_cvref_t<Argument>::element_type>(value);
              if (!typed) return false;
              (static_cast<T&>(self).*setter)(std::move(typed));
              return true;
            }(Setter, owner, object);
          }};
}

// A text that can be a template's argument.
template <std::size_t N>
struct PropertyName {
  constexpr PropertyName(const char (&text)[N]) { std::copy_n(text, N, characters); }
  constexpr std::string_view view() const { return {characters, N - 1}; }
  char characters[N];
};

// Absent for a fraction and for a number that the type does not hold.
template <class Integer>
std::optional<Integer> wholeNumber(const NSCoder& values, std::string_view name) {
  const std::int64_t number = values.decodeIntegerForKey(name);
  if (values.numberForKey(name) != static_cast<double>(number) || !std::in_range<Integer>(number)) return std::nullopt;
  return static_cast<Integer>(number);
}

// The value below the name as the type wants it; absent for one of another kind.
template <class Value>
std::optional<Value> propertyValue(const NSCoder& values, std::string_view name) {
  if constexpr (std::is_same_v<Value, bool>) return values.boolForKey(name);
  else if constexpr (std::is_floating_point_v<Value>) return values.numberForKey(name);
  else if constexpr (std::is_integral_v<Value>) return wholeNumber<Value>(values, name);
  else return values.decodeStringForKey(name);
}

// The setter takes a bool, a number or a text.
template <auto Setter, PropertyName Name>
constexpr Property property() {
  return {Name.view(), [](NSObject& owner, const NSCoder& values) {
            return []<class T, class Argument>(void (T::*setter)(Argument), NSObject& self, const NSCoder& coder) {
              auto value = propertyValue<std::remove_cvref_t<Argument>>(coder, Name.view());
              if (value) (static_cast<T&>(self).*setter)(std::move(*value));
              return value.has_value();
            }(Setter, owner, values);
          }};
}

}  // namespace tessaluna::platform
