// The colors of an image as the device shows it: copied where its pixels match the device's, averaged where it is shrunk,
// blended from the nearest pixels where it is enlarged. A turned image that is shrunk is averaged upright first.
//
// Sums have 16 bits and are exact to a hundredth of a step; the average of more than some hundred pixels in one direction is
// exact to half a step.
#pragma once

#include <vector>

#include "tessaluna/backends/raster/PixelRect.h"
#include "tessaluna/backends/raster/ResampledAxis.h"
#include "tessaluna/backends/raster/RowSource.h"
#include "tessaluna/platform/backend/Canvas.h"

namespace tessaluna::backend::raster {

class ImageSampler final : public RowSource {
 public:
  // `source` is the part of the image, in its pixels, y down, that the transform maps to the device; `box` contains the
  // device pixels that will be requested. The image must not change meanwhile. False when memory is short or the transform
  // flattens the plane.
  bool begin(const ImagePixels& image, CGRect source, const CGAffineTransform& toDevice, const PixelRect& box);

  bool isOpaque() const override { return isOpaque_; }
  void writePixels(int x, int y, int count, std::uint32_t* pixels) override;
  void writeRows(const PixelRect& box, std::uint32_t* pixels, std::size_t stride) override;
  void writeInks(int x, int y, int count, InkRow& row) override;

 private:
  enum class Way { Copied, Upright, Turned };
  // Pixels row by row.
  struct Texels {
    const std::uint32_t* pixels = nullptr;
    int width = 0, height = 0;
    const std::uint32_t* row(int y) const { return pixels + std::size_t(y) * std::size_t(width); }
  };
  // Four neighbours in a row, two in each half: blue, green, red and alpha with eight bits after the point.
  struct FourTexels {
    Short8 left, right;
  };
  // The source rows under a row of the box. All rows between the first one and the last one have the same weight.
  struct RowsToAverage {
    const std::uint32_t* first = nullptr;
    int count = 0;
    Short8 weightOfFirst{}, weightOfLast{};
    Short8 between{};  // the weight of the sum of those rows, times 2^shift
    int shift = 0;
  };

  bool beginCopied(CGRect source, const CGAffineTransform& toDevice);
  bool beginUpright(CGRect source, const DeviceRect& place, const PixelRect& box, CGSize reach);
  bool beginTurned(CGRect source, const CGAffineTransform& toDevice, const PixelRect& box);
  bool findOpaque(CGRect source);
  const std::uint64_t* resampledRow(int sourceRow);
  RowsToAverage rowsUnder(int y) const;
  const std::uint64_t* averagedRow(int y);
  template <int fours>
  void averageDown(const RowsToAverage& rows, int x);
  template <class Texel>
  void resampleAcross(const Texel* line, std::uint64_t* out) const;
  template <int pairs, class Texel>
  void resampleAcrossBy(const Texel* line, std::uint64_t* out) const;
  // These call write(index, four) for a run.
  template <class Write>
  void forEachFourUpright(int x, int y, int count, Write write);
  template <class Write>
  void forEachFourTurned(int x, int y, int count, Write write) const;
  template <class Write>
  void forEachFourTexels(int x, int y, int count, Write write);

  Way way_ = Way::Copied;
  bool isOpaque_ = false;
  Texels texels_;
  int left_ = 0, top_ = 0;  // of the image if it is copied, else of the box

  ResampledAxis across_, down_;
  int columns_ = 0;  // of the box
  // True if rows are averaged. That is done before columns, since there are more source pixels than pixels. Otherwise each
  // source row is resampled once.
  bool averagesRows_ = false;
  WorkBuffer<std::uint64_t> rows_;      // two source rows, or the last averaged row
  int rowsMadeFrom_[2] = {};            // source rows; rows of the box if rows are averaged
  WorkBuffer<std::uint32_t> line_;      // for an image too narrow for the taps
  WorkBuffer<std::uint64_t> averages_;  // of the columns of source rows
  WorkBuffer<std::uint32_t> averaged_;  // the averages of an image that will be turned
  CGAffineTransform toTexels_;          // from the device
};

}  // namespace tessaluna::backend::raster
