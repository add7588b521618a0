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

// The library's canvas draws it outline by outline, so enlarged that the errors of its own edges do not matter.
ExactPicture exactPictureOf(const Drawing& drawing);

// The largest difference of a pixel's opacity, of 255, after the contestant has drawn once.
double largestDifference(const Contestant& contestant, const ExactPicture& exact);

}  // namespace bench
