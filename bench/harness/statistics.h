// Statistics of repeated measurements.
#pragma once

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <vector>

namespace bench {

// The value below which this share of the values lies, interpolated between two of them. The list must not be empty.
inline double quantile(std::vector<double> values, double share) {
  std::sort(values.begin(), values.end());
  const double place = share * double(values.size() - 1);
  const std::size_t below = std::size_t(place), above = std::min(below + 1, values.size() - 1);
  return values[below] + (values[above] - values[below]) * (place - double(below));
}

inline double median(const std::vector<double>& values) { return quantile(values, 0.5); }

inline double geometricMean(const std::vector<double>& values) {
  double sum = 0;
  for (const double value : values) sum += std::log(value);
  return std::exp(sum / double(values.size()));
}

}  // namespace bench
