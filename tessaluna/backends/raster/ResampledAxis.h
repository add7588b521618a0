// Which source pixels make up a column or row of an image that is shown smaller or larger, and with what weights: the average
// of what lies under it where the image is shrunk, a blend of the two nearest where it is enlarged. The weights of each sum up
// to one, also at the image's edges.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "tessaluna/platform/foundation/languageVersion.h"

namespace tessaluna::backend::raster {

class ResampledAxis {
 public:
  // Source pixels from `sourceStart` on, `sourceLength` long, of which those within 0...pixels - 1 exist, land on places from
  // `start` to `end` (turned over if end is smaller). Needed are the places low...high - 1, of which each averages what lies
  // within `reach` places. Each weight is written as often as the caller works on channels at once.
  struct Style {
    double sourceStart, sourceLength;
    int pixels;
    double start, end;
    int low, high;
    double reach = 1;
    int copies = 4;
  };
  void begin(const Style& style);

  // The same for all places, and even: some weights are 0.
  int taps() const { return taps_; }
  // Of the place `low + index`. Taps past the last source pixel have no weight. There is a place more than was wanted.
  int first(int index) const { return firsts_[std::size_t(index)]; }
  const std::uint16_t* weights(int index) const {
    return weights_.data() + std::size_t(index) * std::size_t(taps_) * std::size_t(copies_);
  }

 private:
  struct Part {
    double low, high;  // of the source, in its pixels
  };
  void average(Part part, int pixels, int index);
  void blend(double middle, int pixels, int index);
  // Makes room for the taps of a place that begin at this source pixel or before it.
  int setFirst(int index, int wanted, int pixels);
  void setWeight(int index, int tap, int weight);

  int taps_ = 2, copies_ = 4;
  std::vector<int> firsts_;
  std::vector<std::uint16_t> weights_;
};

}  // namespace tessaluna::backend::raster
