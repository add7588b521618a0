// The entries of a class's tables of outlets and properties, made from its setters:
//   const Outlet outlets[] = {outlet<&MyRow::setTitleLabel>("titleLabel")};
//   const Property properties[] = {property<&MyRow::setBorderWidth, "borderWidth">()};
//   const InnerObjects innerObjects[] = {innerObject<&MyRow::setPicture>("picture")};
#pragma once

#include <algorithm>
#include <cmath>
#include <limits>
#include <optional>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

#include "tessaluna/platform/foundation/NSCoder.h"
#include "tessaluna/platform/foundation/NSObject.h"

namespace tessaluna::platform {

// The object as the class that has the setter, which need not be derived from NSObject itself.
template <class T>
T& memberOwner(NSObject& object) {
  if constexpr (std::is_base_of_v<NSObject, T>) return static_cast<T&>(object);
  else return dynamic_cast<T&>(object);
}

// The setter takes a Ref, by value or by reference.
template <auto Setter>
constexpr Outlet outlet(std::string_view name) {
  return {name, [](NSObject& owner, const Ref<NSObject>& object) {
            return []<class T, class Argument>(void (T::*setter)(Argument), NSObject& self, const Ref<NSObject>& value) {
              auto typed = std::dynamic_pointer_cast<typename std::remove_cvref_t<Argument>::element_type>(value);
              if (!typed) return false;
              (memberOwner<T>(self).*setter)(std::move(typed));
              return true;
            }(Setter, owner, object);
          }};
}

// The setter takes a Ref, by value or by reference.
template <auto Setter>
constexpr InnerObjects innerObject(std::string_view key, InnerObjects::Count count = InnerObjects::Count::One) {
  return {.key = key, .count = count, .put = outlet<Setter>(key).connect};
}

// A text that can be a template's argument.
template <std::size_t N>
struct PropertyName {
  constexpr PropertyName(const char (&text)[N]) { std::copy_n(text, N, characters); }
  constexpr std::string_view view() const { return {characters, N - 1}; }
  char characters[N];
};

// The value below the name as a T; absent for one of another kind. Other headers add overloads for their types.
template <class T>
requires(std::is_integral_v<T> && !std::is_same_v<T, bool>) std::optional<T> archivedValue(const NSCoder& values,
                                                                                           std::string_view name,
                                                                                           std::type_identity<T>) {
  const std::int64_t number = values.decodeIntegerForKey(name);
  // Absent for a fraction and for a number that the type does not hold.
  if (values.numberForKey(name) != static_cast<double>(number) || !std::in_range<T>(number)) return std::nullopt;
  return static_cast<T>(number);
}
template <class T>
requires std::is_enum_v<T> std::optional<T> archivedValue(const NSCoder& values, std::string_view name,
                                                          std::type_identity<T>) {
  return values.decodeEnumForKey<T>(name);
}
inline std::optional<bool> archivedValue(const NSCoder& values, std::string_view name, std::type_identity<bool>) {
  return values.boolForKey(name);
}
inline std::optional<double> archivedValue(const NSCoder& values, std::string_view name, std::type_identity<double>) {
  return values.numberForKey(name);
}
// Absent for a number that the type does not hold.
inline std::optional<float> archivedValue(const NSCoder& values, std::string_view name, std::type_identity<float>) {
  const std::optional<double> number = values.numberForKey(name);
  if (!number || !(std::abs(*number) <= std::numeric_limits<float>::max())) return std::nullopt;
  return static_cast<float>(*number);
}
inline std::optional<std::string> archivedValue(const NSCoder& values, std::string_view name,
                                                std::type_identity<std::string>) {
  return values.decodeStringForKey(name);
}
inline std::optional<std::string> archivedValue(const NSCoder& values, std::string_view name,
                                                std::type_identity<std::string_view>) {
  return values.decodeStringForKey(name);
}
inline std::optional<std::optional<std::vector<std::string>>> archivedValue(
    const NSCoder& values, std::string_view name, std::type_identity<std::optional<std::vector<std::string>>>) {
  const auto strings = values.decodeStringsForKey(name);
  return strings ? std::make_optional(strings) : std::nullopt;
}
template <class T>
requires(std::is_same_v<T, CGPoint> || std::is_same_v<T, CGSize> ||
         std::is_same_v<T, CGRect>) std::optional<T> archivedValue(const NSCoder& values, std::string_view name,
                                                                   std::type_identity<T>) {
  const auto numbers = values.decodeNumbersForKey(name);
  if (!numbers || numbers->size() != sizeof(T) / sizeof(CGFloat)) return std::nullopt;
  if constexpr (std::is_same_v<T, CGPoint>) return values.decodePointForKey(name);
  else if constexpr (std::is_same_v<T, CGSize>) return values.decodeSizeForKey(name);
  else return values.decodeRectForKey(name);
}

// The setter takes a bool, a number, a text, an optional list of texts, a point, a size, a rectangle, an enum with names, or
// what another header reads.
template <auto Setter, PropertyName Name>
constexpr Property property() {
  return {Name.view(), [](NSObject& owner, const NSCoder& values) {
            return []<class T, class Argument>(void (T::*setter)(Argument), NSObject& self, const NSCoder& coder) {
              auto value = archivedValue(coder, Name.view(), std::type_identity<std::remove_cvref_t<Argument>>());
              if (value) (memberOwner<T>(self).*setter)(std::move(*value));
              return value.has_value();
            }(Setter, owner, values);
          }};
}

}  // namespace tessaluna::platform
