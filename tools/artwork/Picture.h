// What a picture shows and how large it is; the commands that write files share it.
#pragma once

#include <functional>
#include <optional>
#include <string>
#include <string_view>

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

// The text of -o. Throws a UsageFailure unless it ends in .png or .svg.
std::string picturePath(std::optional<std::string_view> text);

// A PNG or SVG file, as its name ends, of the background and what is drawn over it. A PNG has the picture's size in pixels,
// rounded up. Throws a Failure, and writes no file, if that is too large, or if SVG cannot express some of it.
void writePicture(const std::string& path, const Picture& picture,
                  const std::function<void(tessaluna::backend::Canvas&)>& draw);

}  // namespace artwork
