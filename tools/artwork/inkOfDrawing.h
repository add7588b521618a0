// What a drawing looks like, measured in a small painting of it.
#pragma once

#include <functional>
#include <optional>

#include "tessaluna/uikit/stylekit/Routines.h"

namespace artwork {

struct Ink {
  int width = 0, height = 0;  // of all that is painted, in pixels
  double lightness = 0;       // from 0, black, to 1, white: the mean weighted by coverage
};

// Measures what is painted into the frame, at a scale that makes `reference` 64 pixels long. Absent if nothing is painted.
std::optional<Ink> inkOfDrawing(tessaluna::platform::CGRect frame, tessaluna::platform::CGSize reference,
                                const std::function<void(tessaluna::platform::CGRect)>& draw);

// Whether the routine draws the same picture larger in a larger frame. The others keep a size, or some lengths, in points.
bool scalesWithItsFrame(const TessalunaUIKit::Routine& routine);

}  // namespace artwork
