// The bytes of a picture file, which may be decoded on any thread.
#pragma once

#include <cstddef>
#include <memory>
#include <span>
#include <vector>

#include "tessaluna/platform/backend/ImagePixels.h"

namespace tessaluna::platform {

class EncodedPicture {
 public:
  explicit EncodedPicture(std::span<const std::byte> bytes) : bytes_(bytes.begin(), bytes.end()) {}

  // By the current backend, or else by the library that decodes without one; with neither the program stops. Null for bytes
  // that hold no picture, are damaged, or claim too many pixels.
  static std::shared_ptr<const backend::ImagePixels> decode(std::span<const std::byte> bytes);
  std::shared_ptr<const backend::ImagePixels> decode() const { return decode(bytes_); }

 private:
  std::vector<std::byte> bytes_;
};

}  // namespace tessaluna::platform
