// SVG files of what a canvas was told.
#pragma once

#include <string>

#include "tessaluna/backends/svg/SvgCanvas.h"

namespace artwork {

// Throws a Failure, and writes no file, where SVG cannot say some of it.
void writeSvg(const std::string& path, const tessaluna::backend::svg::SvgCanvas& canvas);

}  // namespace artwork
