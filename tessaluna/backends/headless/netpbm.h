// The pictures of the headless desktop: a format that a test can write down. P6 is "P6 width height 255" and a blank, then
// red, green and blue of each pixel; P7 has a header of lines and may carry alpha, not premultiplied.
#pragma once

#include <cstddef>
#include <memory>
#include <span>

#include "tessaluna/platform/backend/ImagePixels.h"

namespace tessaluna::backend::headless {

// Absent for anything else, for data that is cut off, and for more pixels than maxImagePixels.
std::shared_ptr<const ImagePixels> decodeNetpbm(std::span<const std::byte> bytes);

}  // namespace tessaluna::backend::headless
