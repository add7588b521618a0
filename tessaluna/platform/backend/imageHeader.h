// What a picture file says of itself, read without decoding it: PNG, JPEG, BMP, GIF, and the binary netpbm formats P6 and P7.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string_view>

#include "tessaluna/platform/foundation/languageVersion.h"

namespace tessaluna::backend {

struct ImageHeader {
  std::int64_t width = 0, height = 0;  // in pixels, of the picture as it is shown: turned as a camera's note says
  bool isWhole = true;                 // false where the file shows that its end is missing
};

// Absent for other formats, for sizes of zero, and where the file ends before it says so.
std::optional<ImageHeader> imageHeader(std::span<const std::byte> bytes);

struct NetpbmHeader {
  std::int64_t width = 0, height = 0, maximum = 0, depth = 3;
};

// Taken off the front of the text, which are the pixels then.
std::optional<NetpbmHeader> takeNetpbmHeader(std::string_view& text);

}  // namespace tessaluna::backend
