// A contestant draws a picture into a bitmap of its own, again and again over its earlier drawings. The function that makes
// it prepares everything that can be prepared, so that draw() costs what each further drawing costs.
#pragma once

#include <cstdint>
#include <memory>
#include <string_view>

#include "bench/outlines/Drawing.h"

namespace bench {

struct Subject {
  const TessalunaUIKit::Routine& routine;
  double scale;
  const Drawing& drawing;
};

class Contestant {
 public:
  virtual ~Contestant() = default;
  virtual void draw() = 0;
  // A row of the bitmap: premultiplied 8-bit ARGB, one word per pixel.
  virtual const std::uint32_t* row(int y) const = 0;
};

// The library's canvas remembers shapes that it has drawn. If cold, each drawing is moved by a different fraction of a
// pixel, so that none of its shapes has been drawn before. If again, all of them have been drawn before, except in the first
// two drawings.
enum class Sight { Cold, Again };

// The library: calls the routine itself, with the colors and paths that it makes.
std::unique_ptr<Contestant> makeRoutineContestant(const Subject& subject, Sight sight);
// The library's canvas, which receives only the outlines, prepared as for the peers.
std::unique_ptr<Contestant> makeOutlinesContestant(const Drawing& drawing, Sight sight);

// The peers. They receive native paths in device pixels, made in advance, and no transform.
std::unique_ptr<Contestant> makeQtContestant(const Drawing& drawing);
std::unique_ptr<Contestant> makeCairoContestant(const Drawing& drawing);
std::unique_ptr<Contestant> makeAggContestant(const Drawing& drawing);

}  // namespace bench
