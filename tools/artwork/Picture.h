// What a picture shows and how large it is; the commands that write files share it.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "tessaluna/backends/raster/Bitmap.h"
#include "tessaluna/platform/backend/Canvas.h"

namespace artwork {

struct Picture {
  tessaluna::platform::CGRect area;                     // the visible part of the drawing's space, in points
  double scale = 1;                                     // pixels per point
  std::optional<tessaluna::backend::Color> background;  // absent: transparent
};

// The texts of --scale and --background. Both throw a UsageFailure for what they cannot read.
double parseScale(std::string_view text);
std::optional<tessaluna::backend::Color> parseBackground(std::string_view text);

// Has the picture's size in pixels, rounded up. Throws a Failure if that is too large.
tessaluna::backend::raster::Bitmap makeBitmap(const Picture& picture);

// Does nothing without a background.
void fillBackground(tessaluna::backend::Canvas& canvas, const Picture& picture);

}  // namespace artwork
