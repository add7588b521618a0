// SVG files of what a canvas recorded.
#pragma once

#include <string>

#include "tessaluna/backends/svg/SvgCanvas.h"

namespace artwork {

// Throws a Failure, and writes no file, if SVG cannot express some of it.
void writeSvg(const std::string& path, const tessaluna::backend::svg::SvgCanvas& canvas);

}  // namespace artwork
