#include "tessaluna/platform/backend/imageDecoder.h"

namespace tessaluna::backend {

namespace {

// Set by libraries while the program starts, in any order.
constinit ImageDecoder current = nullptr;

}  // namespace

void setImageDecoderWithoutBackend(ImageDecoder decoder) { current = decoder; }
ImageDecoder imageDecoderWithoutBackend() { return current; }

}  // namespace tessaluna::backend
