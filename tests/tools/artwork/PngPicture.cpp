#include "tests/tools/artwork/PngPicture.h"

#include <png.h>

#include <algorithm>

namespace artwork {

bool PngPicture::isEmpty() const {
  return std::ranges::all_of(pixels, [](const Pixel& pixel) { return pixel.alpha == 0; });
}

std::optional<PngPicture> readPng(const std::filesystem::path& path) {
  png_image image = {};
  image.version = PNG_IMAGE_VERSION;
  if (!png_image_begin_read_from_file(&image, path.c_str())) return std::nullopt;
  image.format = PNG_FORMAT_RGBA;
  PngPicture picture{.width = int(image.width), .height = int(image.height), .pixels = {}};
  picture.pixels.resize(std::size_t(image.width) * image.height);
  if (!png_image_finish_read(&image, nullptr, picture.pixels.data(), 0, nullptr)) return std::nullopt;
  return picture;
}

}  // namespace artwork
