// What a picture shows and how large it gets: shared by the commands that write files.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "tessaluna/backends/raster/Bitmap.h"
#include "tessaluna/platform/backend/Canvas.h"

namespace artwork {

struct Picture {
  tessaluna::platform::CGRect area;                     // what of the drawing's space is seen, in points
  double scale = 1;                                     // pixels a point
  std::optional<tessaluna::backend::Color> background;  // absent: transparent
};

// The texts of --scale and --background. Both throw a UsageFailure for what they cannot read.
double parseScale(std::string_view text);
std::optional<tessaluna::backend::Color> parseBackground(std::string_view text);

// Of the picture's size in pixels, rounded up. Throws a Failure where that is too large.
tessaluna::backend::raster::Bitmap makeBitmap(const Picture& picture);

// Nothing where there is no background.
void fillBackground(tessaluna::backend::Canvas& canvas, const Picture& picture);

}  // namespace artwork
