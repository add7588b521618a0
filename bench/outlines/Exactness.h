// How far a picture is from the exact one, in which every pixel has the share of a color that its outline covers.
#pragma once

#include <vector>

#include "bench/outlines/Contestant.h"

namespace bench {

// The exact picture's opacity, from 0 to 1, row by row from the top.
struct ExactPicture {
  int width = 0, height = 0;
  std::vector<double> alpha = {};
};

// Drawn by the library's canvas, enlarged so that what its own edges are off by does not count, outline by outline.
ExactPicture exactPictureOf(const Drawing& drawing);

// The largest difference of a pixel's opacity, of 255, when the contestant has drawn once.
double largestDifference(const Contestant& contestant, const ExactPicture& exact);

}  // namespace bench
