// The names of an enum's values, by which interface files and other archives can say them.
#pragma once

#include <cstdint>
#include <string_view>

#include "tessaluna/platform/foundation/languageVersion.h"

namespace tessaluna::platform {

// A value that is written as a name or as its number.
struct NamedValue {
  std::string_view name;
  std::int64_t value;
};

// The names of an enum's values, as an array `all` of NamedValue; specialized by the header of each enum that can be read.
template <class Enum>
struct EnumNames;

}  // namespace tessaluna::platform
