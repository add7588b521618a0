// Decoded pixels: premultiplied, eight bits for each of alpha, red, green and blue in one word from the highest byte down,
// rows from the top without gaps.
#pragma once

#include <cstdint>
#include <memory>
#include <span>
#include <vector>

#include "tessaluna/platform/foundation/languageVersion.h"

namespace tessaluna::backend {

struct ImagePixels {
  int width = 0, height = 0;
  std::vector<std::uint32_t> argb;
  bool isOpaque = false;  // if whoever made them knows that no pixel lets anything through
};

// A picture may claim any size; one with more pixels than this is not decoded, whatever memory there is.
inline constexpr std::int64_t maxImagePixels = std::int64_t{64} << 20;

}  // namespace tessaluna::backend
