// Which source pixels make up a row or column of device pixels, and with what weights: the average of what lies under a
// device pixel where the picture is shrunk, a blend of the two nearest where it is enlarged. Weights at the picture's edges
// sum up to the part of the device pixel that it covers.
#pragma once

#include <vector>

namespace tessaluna::backend::raster {

class Resampler {
 public:
  struct Taps {
    int first = 0;  // source pixel
    int count = 0;
    std::size_t weights = 0;  // index of the first of them
  };

  // Source pixels from `sourceStart` on, `sourceLength` long and each within 0...pixels - 1, land on the device from `start`
  // to `end` (turned over if end is smaller). Taps for the device pixels low...high - 1.
  struct Axis {
    double sourceStart, sourceLength;
    int pixels;
    double start, end;
    int low, high;
  };
  void begin(const Axis& axis);

  const Taps& at(int index) const { return taps_[static_cast<std::size_t>(index)]; }  // 0 for the device pixel `low`
  const float* weightsOf(const Taps& taps) const { return weights_.data() + taps.weights; }

 private:
  std::vector<Taps> taps_;
  std::vector<float> weights_;
};

}  // namespace tessaluna::backend::raster
