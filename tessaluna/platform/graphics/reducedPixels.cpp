#include "tessaluna/platform/graphics/reducedPixels.h"

#include <algorithm>
#include <cmath>

namespace tessaluna::platform {

namespace {

// The pixels that one pixel of the result covers along an axis: from `first` on, by their shares of the average.
struct Span {
  int first;
  std::vector<float> shares;
};

std::vector<Span> spansOf(int from, int to) {
  std::vector<Span> spans;
  const double step = static_cast<double>(from) / to;
  for (int i = 0; i < to; ++i) {
    const double start = i * step, end = std::min<double>((i + 1) * step, from);
    Span span{.first = std::min(static_cast<int>(start), from - 1), .shares = {}};
    for (int place = span.first; place < from && place < end; ++place)
      span.shares.push_back(static_cast<float>((std::min<double>(place + 1, end) - std::max<double>(place, start)) / step));
    spans.push_back(std::move(span));
  }
  return spans;
}

constexpr int channels = 4;

}  // namespace

backend::ImagePixels reducedPixels(const backend::ImagePixels& picture, int width, int height) {
  backend::ImagePixels result{.width = std::clamp(width, 1, picture.width),
                              .height = std::clamp(height, 1, picture.height),
                              .argb = {},
                              .isOpaque = picture.isOpaque};
  const std::vector<Span> columns = spansOf(picture.width, result.width), rows = spansOf(picture.height, result.height);
  result.argb.reserve(static_cast<std::size_t>(result.width) * static_cast<std::size_t>(result.height));
  // The rows that belong together are summed as they are, and the sum is reduced once.
  std::vector<float> sums(static_cast<std::size_t>(picture.width) * channels);
  for (const Span& row : rows) {
    std::fill(sums.begin(), sums.end(), 0.0F);
    for (std::size_t i = 0; i < row.shares.size(); ++i) {
      const float share = row.shares[i];
      const auto start = (static_cast<std::size_t>(row.first) + i) * static_cast<std::size_t>(picture.width);
      float* sum = sums.data();
      for (std::size_t x = 0; x < static_cast<std::size_t>(picture.width); ++x, sum += channels) {
        const std::uint32_t pixel = picture.argb[start + x];
        sum[0] += share * static_cast<float>(pixel >> 24);
        sum[1] += share * static_cast<float>(pixel >> 16 & 255);
        sum[2] += share * static_cast<float>(pixel >> 8 & 255);
        sum[3] += share * static_cast<float>(pixel & 255);
      }
    }
    for (const Span& column : columns) {
      float average[channels] = {};
      const float* sum = sums.data() + static_cast<std::size_t>(column.first) * channels;
      for (const float share : column.shares)
        for (float& each : average) each += share * *sum++;
      std::uint32_t pixel = 0;
      for (const float each : average)
        pixel = pixel << 8 | static_cast<std::uint32_t>(std::clamp(std::lround(each), 0L, 255L));
      result.argb.push_back(pixel);
    }
  }
  return result;
}

}  // namespace tessaluna::platform
