// PNG files of pictures in memory.
#pragma once

#include <string>

#include "tessaluna/backends/raster/Bitmap.h"

namespace artwork {

// Eight bits a channel, with alpha, not premultiplied. The bitmap's pixels are changed on the way. Throws a Failure.
void writePng(const std::string& path, tessaluna::backend::raster::Bitmap& bitmap);

}  // namespace artwork
