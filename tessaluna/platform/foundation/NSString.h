// A text as an object, where a value has to be one: a cell's value, say. Everywhere else a text is a std::string.
#pragma once

#include <cstdint>
#include <string>

#include "tessaluna/platform/foundation/NSObject.h"

namespace tessaluna::platform {

class NSString : public NSObject {
 public:
  static const ClassInfo staticClassInfo;
  const ClassInfo& classInfo() const override { return staticClassInfo; }

  explicit NSString(std::string_view utf8) : text_(utf8) {}
  const std::string& UTF8String() const { return text_; }

  // The number that the text begins with, after white space; what follows it is ignored. 0 for a text that begins with none.
  // A number out of range is infinite, and as a whole number the nearest in range.
  double doubleValue() const;
  float floatValue() const { return static_cast<float>(doubleValue()); }
  std::int64_t integerValue() const;

  bool isEqual(const NSObject* other) const override;

 private:
  std::string text_;
};

}  // namespace tessaluna::platform
