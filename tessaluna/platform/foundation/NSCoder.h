// A keyed archive that an object is made from: the members of one JSON object, read by name. It comes from a JSON text or
// is built in code. A key that is missing, or holds a value of another kind, reads as zero, false or absent; whoever needs
// the value calls fail, and make then gives no object.
//
// Rectangles are arrays [x, y, width, height], sizes and points arrays of two, all in points.
//
// A coder remembers what it was asked, so that whoever made it can report unknown keys.
#pragma once

#include <cstdint>
#include <initializer_list>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "tessaluna/platform/foundation/EnumNames.h"
#include "tessaluna/platform/foundation/Geometry.h"

namespace tessaluna::platform {

class NSCoder {
 public:
  // Empty, to be filled with encode.
  NSCoder();
  // From the text of one JSON object. A text that is none gives a coder that has failed and says why, for one that is not
  // JSON with line and column, both counted from 1.
  explicit NSCoder(std::string_view json);
  ~NSCoder();
  NSCoder(NSCoder&&) noexcept;
  NSCoder& operator=(NSCoder&&) noexcept;

  // The same values, without a failure, and asked nothing yet; a write to one is not seen by the other. A copy that does not
  // remember what it is asked reads faster, and so do the coders of its inner objects; it knows of no unknown keys and misfits.
  enum class Questions { Remembered, Forgotten };
  NSCoder copy(Questions questions = Questions::Remembered) const;

  bool containsValueForKey(std::string_view key) const;
  bool decodeBoolForKey(std::string_view key) const;
  std::int64_t decodeIntegerForKey(std::string_view key) const;  // of a fraction or a number out of range: 0
  double decodeDoubleForKey(std::string_view key) const;
  std::optional<std::string> decodeStringForKey(std::string_view key) const;
  CGPoint decodePointForKey(std::string_view key) const;
  CGSize decodeSizeForKey(std::string_view key) const;
  CGRect decodeRectForKey(std::string_view key) const;
  std::optional<std::int64_t> decodeNamedValueForKey(std::string_view key, std::span<const NamedValue> names) const;
  template <class Enum>
  std::optional<Enum> decodeEnumForKey(std::string_view key) const {
    const std::optional<std::int64_t> value = decodeNamedValueForKey(key, EnumNames<Enum>::all);
    return value ? std::optional(static_cast<Enum>(*value)) : std::nullopt;
  }
  // The object below the key as a coder of its own; absent if there is none.
  std::optional<NSCoder> decodeCoderForKey(std::string_view key) const;
  // The objects of the array below the key; absent if there is no array, or one with anything else in it.
  std::optional<std::vector<NSCoder>> decodeCodersForKey(std::string_view key) const;
  // Absent unless there is an array of numbers and nothing else.
  std::optional<std::vector<double>> decodeNumbersForKey(std::string_view key) const;
  // Absent unless there is an array of strings and nothing else.
  std::optional<std::vector<std::string>> decodeStringsForKey(std::string_view key) const;
  // These distinguish a value of another kind from false and zero.
  std::optional<bool> boolForKey(std::string_view key) const;
  std::optional<double> numberForKey(std::string_view key) const;
  std::vector<std::string> allKeys() const;

  // For a class that knows a key and reads nothing from it.
  void overlookKeys(std::initializer_list<std::string_view> keys);
  // Of this object, the first key that was neither asked for nor overlooked, and the first whose value was of no kind that it
  // was asked for; absent if there is none.
  std::optional<std::string> firstUnknownKey() const;
  std::optional<std::string> firstMisfitKey() const;

  // Return the coder, so that calls chain.
  NSCoder& encode(bool value, std::string_view key);
  NSCoder& encode(std::int64_t value, std::string_view key);
  NSCoder& encode(int value, std::string_view key) { return encode(std::int64_t{value}, key); }
  NSCoder& encode(double value, std::string_view key);
  NSCoder& encode(std::string_view value, std::string_view key);
  NSCoder& encode(const char* value, std::string_view key) { return encode(std::string_view(value), key); }
  NSCoder& encode(CGPoint value, std::string_view key);
  NSCoder& encode(CGSize value, std::string_view key);
  NSCoder& encode(CGRect value, std::string_view key);
  NSCoder& encode(const NSCoder& value, std::string_view key);

  // The first failure stays.
  void fail(std::string reason);
  bool failed() const { return failure_.has_value(); }
  const std::optional<std::string>& failure() const { return failure_; }

 private:
  struct Archive;
  explicit NSCoder(std::unique_ptr<Archive> archive);

  std::unique_ptr<Archive> archive_;
  std::optional<std::string> failure_;
};

}  // namespace tessaluna::platform
