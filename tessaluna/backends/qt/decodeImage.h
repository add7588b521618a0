// Pictures in the formats that Qt's plugins read.
#pragma once

#include <cstddef>
#include <memory>
#include <span>

#include "tessaluna/platform/backend/ImagePixels.h"

namespace tessaluna::backend::qt {

// Colors of other spaces that a file names become sRGB. Absent for bytes that hold no picture, are cut off, or claim more pixels than are decoded.
std::shared_ptr<const ImagePixels> decodeImage(std::span<const std::byte> bytes);

}  // namespace tessaluna::backend::qt
