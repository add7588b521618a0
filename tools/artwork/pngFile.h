// PNG files of pictures in memory.
#pragma once

#include <string>

#include "tessaluna/backends/raster/Bitmap.h"

namespace artwork {

// Eight bits per channel, with alpha, not premultiplied. Changes the bitmap's pixels. Throws a Failure.
void writePng(const std::string& path, tessaluna::backend::raster::Bitmap& bitmap);

}  // namespace artwork
