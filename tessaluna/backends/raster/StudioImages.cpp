#include "tessaluna/backends/raster/Studio.h"

namespace tessaluna::backend::raster {

namespace {

Float4 unpacked(std::uint32_t pixel) {
  constexpr float unit = 1.0f / 255;
  return Float4{float(pixel & 0xFF), float(pixel >> 8 & 0xFF), float(pixel >> 16 & 0xFF), float(pixel >> 24)} * splat(unit);
}

}  // namespace

void RasterCanvas::Studio::drawImage(const ImagePixels& image, CGRect source, CGRect destination) {
  const CGAffineTransform& t = state_.toDevice;
  const bool isUsableImage = image.width > 0 && image.height > 0 && source.size.width > 0 && source.size.height > 0;
  if (state_.clip.box.isEmpty() || !isUsableImage) return;
  // From source pixels, y down, to the device.
  const CGAffineTransform toPicture{
      destination.size.width / source.size.width,
      0,
      0,
      -destination.size.height / source.size.height,
      destination.origin.x - source.origin.x * destination.size.width / source.size.width,
      CGRectGetMaxY(destination) + source.origin.y * destination.size.height / source.size.height};
  const CGAffineTransform toDevice = toPicture.then(t);
  const CGPoint first = toDevice.apply(source.origin);
  const CGPoint last = toDevice.apply({CGRectGetMaxX(source), CGRectGetMaxY(source)});
  if (!isUsable(first) || !isUsable(last)) return;

  // The pixels go into a layer of their own, which is composited like any other.
  beginLayer();
  OpenLayer& layer = *layers_[openLayers_ - 1];
  const bool isUpright = toDevice.b == 0 && toDevice.c == 0;
  const CGRect covered = toDevice.applyToRect(source);
  const PixelRect box =
      DeviceRect{CGRectGetMinX(covered), CGRectGetMinY(covered), CGRectGetMaxX(covered), CGRectGetMaxY(covered)}
          .roundedOut()
          .intersected(layer.pixels.most());
  if (!box.isEmpty() && layer.pixels.include(box)) {
    if (isUpright) {
      across_.begin({source.origin.x, source.size.width, image.width, first.x, last.x, box.left, box.right});
      down_.begin({source.origin.y, source.size.height, image.height, first.y, last.y, box.top, box.bottom});
      resample(image, box, layer.pixels);
    } else if (const std::optional<CGAffineTransform> back = toDevice.inverted()) {
      sampleTurned(image, *back, source, box, layer.pixels);
    }
  }
  endLayer();
}

void RasterCanvas::Studio::resample(const ImagePixels& image, const PixelRect& box, Layer& pixels) {
  for (int y = box.top; y < box.bottom; ++y) {
    const Resampler::Taps& rows = down_.at(y - box.top);
    const float* rowWeights = down_.weightsOf(rows);
    Float4* out = pixels.pixel(box.left, y);
    for (int x = 0; x < box.width(); ++x) {
      const Resampler::Taps& columns = across_.at(x);
      const float* columnWeights = across_.weightsOf(columns);
      Float4 sum{};
      for (int j = 0; j < rows.count; ++j) {
        const std::uint32_t* row =
            image.argb.data() + std::size_t(rows.first + j) * std::size_t(image.width) + columns.first;
        Float4 rowSum{};
        for (int i = 0; i < columns.count; ++i) rowSum += unpacked(row[i]) * splat(columnWeights[i]);
        sum += rowSum * splat(rowWeights[j]);
      }
      out[x] = sum;
    }
  }
}

// A turned picture: the four source pixels around the middle of each device pixel.
void RasterCanvas::Studio::sampleTurned(const ImagePixels& image, const CGAffineTransform& back, CGRect source,
                                        const PixelRect& box, Layer& pixels) {
  const auto texel = [&](int x, int y) {
    const int column = std::clamp(x, 0, image.width - 1), row = std::clamp(y, 0, image.height - 1);
    return unpacked(image.argb[std::size_t(row) * std::size_t(image.width) + std::size_t(column)]);
  };
  for (int y = box.top; y < box.bottom; ++y) {
    Float4* out = pixels.pixel(box.left, y);
    for (int x = box.left; x < box.right; ++x, ++out) {
      const CGPoint p = back.apply({x + 0.5, y + 0.5});
      // Half a source pixel of slope at the edge stands in for coverage.
      const double edge = std::min({p.x - CGRectGetMinX(source), CGRectGetMaxX(source) - p.x, p.y - CGRectGetMinY(source),
                                    CGRectGetMaxY(source) - p.y});
      const float inside = float(std::clamp(edge + 0.5, 0.0, 1.0));
      if (inside == 0) {
        *out = Float4{};
        continue;
      }
      const double u = p.x - 0.5, v = p.y - 0.5;
      const int column = floorWithin(u, -1, image.width), row = floorWithin(v, -1, image.height);
      const float fx = float(std::clamp(u - column, 0.0, 1.0)), fy = float(std::clamp(v - row, 0.0, 1.0));
      const Float4 upper = texel(column, row) * splat(1 - fx) + texel(column + 1, row) * splat(fx);
      const Float4 lower = texel(column, row + 1) * splat(1 - fx) + texel(column + 1, row + 1) * splat(fx);
      *out = (upper * splat(1 - fy) + lower * splat(fy)) * splat(inside);
    }
  }
}

}  // namespace tessaluna::backend::raster
