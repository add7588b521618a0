// Pictures in the formats that Qt reads.
#pragma once

#include <cstddef>
#include <memory>
#include <span>

#include "platform/backend/ImagePixels.h"

namespace backend::qt {

// Null for bytes that are no picture, are cut off, or claim more pixels than are decoded.
std::shared_ptr<const ImagePixels> imageFromBytes(std::span<const std::byte> bytes);

}  // namespace backend::qt
