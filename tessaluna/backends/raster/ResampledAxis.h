// Which source pixels make up a column or row of an image that is shrunk or enlarged, and with what weights: the average of
// the source pixels under it if the image is shrunk, a blend of the two nearest if it is enlarged. The weights of each
// column or row add up to one, also at the image's edges.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "tessaluna/platform/foundation/languageVersion.h"

namespace tessaluna::backend::raster {

class ResampledAxis {
 public:
  // The source pixels from `sourceStart` on, `sourceLength` long, are mapped to the places from `start` to `end` (reversed
  // if end is smaller). Only the source pixels 0...pixels - 1 exist. Needed are the places low...high - 1, each of which
  // averages a part `reach` places long. Each weight is written `copies` times, once per channel that the caller processes
  // at once.
  struct Style {
    double sourceStart, sourceLength;
    int pixels;
    double start, end;
    int low, high;
    double reach = 1;
    int copies = 4;
  };
  void begin(const Style& style);

  // The number of weights, the same for all places. It is an even number, so some weights are 0.
  int taps() const { return taps_; }
  // The first tap of the place `low + index`. Taps after the last source pixel have no weight. There is one place more than
  // requested.
  int first(int index) const { return firsts_[std::size_t(index)]; }
  const std::uint16_t* weights(int index) const {
    return weights_.data() + std::size_t(index) * std::size_t(taps_) * std::size_t(copies_);
  }

 private:
  struct Part {
    double low, high;  // in source pixels
  };
  void average(Part part, int pixels, int index);
  void blend(double middle, int pixels, int index);
  // Sets and returns the first tap of a place: this source pixel, or an earlier one if the taps would not fit.
  int setFirst(int index, int wanted, int pixels);
  void setWeight(int index, int tap, int weight);

  int taps_ = 2, copies_ = 4;
  std::vector<int> firsts_;
  std::vector<std::uint16_t> weights_;
};

}  // namespace tessaluna::backend::raster
