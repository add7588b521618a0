#include "tools/artwork/pngFile.h"

#include <png.h>

#include <bit>
#include <cstdint>
#include <cstring>

#include "tools/artwork/Failure.h"
#include "tools/artwork/OutputFile.h"

namespace artwork {

namespace {

// Premultiplied to plain, rounded to nearest; a transparent pixel keeps no color.
std::uint32_t unpremultiplied(std::uint32_t pixel) {
  const std::uint32_t alpha = pixel >> 24;
  if (alpha == 255) return pixel;
  if (alpha == 0) return 0;
  const auto channel = [&](int shift) {
    const std::uint32_t value = ((pixel >> shift & 255) * 255 + alpha / 2) / alpha;
    return (value > 255 ? 255 : value) << shift;
  };
  return alpha << 24 | channel(16) | channel(8) | channel(0);
}

}  // namespace

void writePng(const std::string& path, tessaluna::backend::raster::Bitmap& bitmap) {
  OutputFile file(path);
  for (int y = 0; y < bitmap.height(); ++y) {
    std::uint32_t* row = bitmap.row(y);
    for (int x = 0; x < bitmap.width(); ++x) row[x] = unpremultiplied(row[x]);
  }

  png_image image = {};
  image.version = PNG_IMAGE_VERSION;
  image.width = png_uint_32(bitmap.width());
  image.height = png_uint_32(bitmap.height());
  // A pixel is one word with alpha on top.
  image.format = std::endian::native == std::endian::little ? PNG_FORMAT_BGRA : PNG_FORMAT_ARGB;
  if (!png_image_write_to_stdio(&image, file.stream(), 0, bitmap.row(0), png_int_32(bitmap.stride()), nullptr))
    file.fail(image.message);
  file.commit();
}

}  // namespace artwork
