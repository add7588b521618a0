// Somebody who draws a picture into a bitmap of its own, again and again over what is there. All that can be
// made beforehand is made by its maker, so that draw() is what each further drawing costs.
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
  // A row of the bitmap: premultiplied 8-bit ARGB, one word a pixel.
  virtual const std::uint32_t* row(int y) const = 0;
};

// The library's canvas remembers shapes that it has drawn. Cold, each drawing is moved by another fraction of a pixel, so that
// none of its shapes has been drawn before; again, all of them have, but in the first two drawings.
enum class Sight { Cold, Again };

// The library: the routine itself is called, with the colors and paths that it makes.
std::unique_ptr<Contestant> makeRoutineContestant(const Subject& subject, Sight sight);
// The library's canvas told nothing but the outlines, prepared as the peers have them.
std::unique_ptr<Contestant> makeOutlinesContestant(const Drawing& drawing, Sight sight);

// The peers. They get native paths in device pixels, made beforehand, and no transform.
std::unique_ptr<Contestant> makeQtContestant(const Drawing& drawing);
std::unique_ptr<Contestant> makeCairoContestant(const Drawing& drawing);
std::unique_ptr<Contestant> makeAggContestant(const Drawing& drawing);

}  // namespace bench
