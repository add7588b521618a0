// Who decodes pictures in a program that has no backend, as it shows glyphs and covers but no views.
#pragma once

#include <cstddef>
#include <memory>
#include <span>

#include "tessaluna/platform/backend/ImagePixels.h"

namespace tessaluna::backend {

// Null for bytes that hold no picture, are cut off, or claim too many pixels.
using ImageDecoder = std::shared_ptr<const ImagePixels> (*)(std::span<const std::byte> bytes);

// Null initially. A backend, once made, decodes itself.
void setImageDecoderWithoutBackend(ImageDecoder decoder);
ImageDecoder imageDecoderWithoutBackend();

}  // namespace tessaluna::backend
