// Ranges of a text as other programs give them, such as assistive clients, which may begin or end in the middle of a scalar
// that takes two UTF-16 units.
#pragma once

#include <string_view>

#include "tessaluna/platform/foundation/Geometry.h"
#include "tessaluna/platform/text/unicode.h"

namespace tessaluna::platform {

inline bool dividesScalar(std::u16string_view text, std::size_t offset) {
  return offset > 0 && offset < text.size() && unitsOf(scalarAt(text, offset - 1)) == 2;
}

// The range with the scalars that it divides; an empty one is moved before the scalar. It is in the text.
inline NSRange wholeScalars(std::u16string_view text, NSRange range) {
  const std::size_t start = dividesScalar(text, range.location) ? range.location - 1 : range.location;
  if (range.length == 0) return {start, 0};
  const std::size_t end = range.location + range.length;
  return {start, (dividesScalar(text, end) ? end + 1 : end) - start};
}

}  // namespace tessaluna::platform
