// A routine's picture as plain shapes that any painting library supports, recorded while the routine draws.
#pragma once

#include <optional>
#include <vector>

#include "tessaluna/platform/backend/Canvas.h"
#include "tessaluna/uikit/stylekit/Routines.h"

namespace bench {

struct Pen {
  double width = 1;  // in device pixels, like the lengths of dashes
  tessaluna::backend::LineCap cap{};
  tessaluna::backend::LineJoin join{};
  double miterLimit = 10;
  std::vector<double> dash = {};
  double dashPhase = 0;
};

struct Outline {
  tessaluna::backend::Path path = {};  // in device pixels, y down
  tessaluna::backend::Color color;
  tessaluna::backend::FillRule rule{};
  std::optional<Pen> pen = {};  // strokes the outline; absent if the outline is filled
};

struct Drawing {
  int width = 0, height = 0;  // in device pixels
  std::vector<Outline> outlines = {};
  // True if the routine also paints gradients or inner shadows. Its outlines are then less than its picture: a gradient is
  // replaced by its first color, and an inner shadow is left out.
  bool hasRecipe = false;
};

// The routine with its default flags, in its default frame, at a device scale.
Drawing drawingOf(const TessalunaUIKit::Routine& routine, double scale);

// Calls the routine with its default flags and frame, for the current context.
void drawRoutine(const TessalunaUIKit::Routine& routine);

}  // namespace bench
