#include "tessaluna/platform/graphics/EncodedPicture.h"

#include "tessaluna/platform/backend/Backend.h"
#include "tessaluna/platform/backend/imageDecoder.h"
#include "tessaluna/platform/foundation/stopProgram.h"

namespace tessaluna::platform {

std::shared_ptr<const backend::ImagePixels> EncodedPicture::decode(std::span<const std::byte> bytes) {
  if (const backend::Backend* backend = backend::Backend::current()) return backend->decodeImage(bytes);
  const backend::ImageDecoder decoder = backend::imageDecoderWithoutBackend();
  if (!decoder) stopProgram("NSImage: an image was decoded without a backend");
  return decoder(bytes);
}

}  // namespace tessaluna::platform
