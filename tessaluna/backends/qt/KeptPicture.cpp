#include "tessaluna/backends/qt/KeptPicture.h"

#include <algorithm>
#include <cmath>

namespace tessaluna::backend::qt {

namespace {

// A side that is a whole number of pixels but for the rounding of a product takes no extra pixel.
int pixelsOf(double points, double scale) { return static_cast<int>(std::ceil(points * scale - 1e-6)); }
int wholePixelsOf(double points, double scale) { return static_cast<int>(std::floor(points * scale + 1e-6)); }

}  // namespace

bool KeptPicture::setSize(CGSize points, double scale) {
  if (points == size_ && scale == scale_) return false;
  size_ = points;
  scale_ = scale;
  canvas_.reset();
  bitmap_.reset();
  image_ = QImage();
  const int width = pixelsOf(points.width, scale), height = pixelsOf(points.height, scale);
  if (width <= 0 || height <= 0 || width > raster::Bitmap::maximumSide || height > raster::Bitmap::maximumSide) return true;

  image_ = QImage(width, height, QImage::Format_ARGB32_Premultiplied);
  if (image_.isNull()) return true;
  image_.fill(Qt::transparent);
  image_.setDevicePixelRatio(scale);
  // The pixels are written behind Qt's back: nobody may keep a copy that shares them beyond a paint event.
  bitmap_ = raster::Bitmap::borrow(reinterpret_cast<std::uint32_t*>(image_.bits()), width, height,
                                   static_cast<std::size_t>(image_.bytesPerLine()));
  return true;
}

bool KeptPicture::completeEdges() {
  if (!bitmap_) return false;
  const int width = image_.width(), height = image_.height();
  const int wholeWidth = wholePixelsOf(size_.width, scale_), partRows = height - wholePixelsOf(size_.height, scale_);
  if (wholeWidth == width && partRows == 0) return false;
  if (wholeWidth == 0 || partRows == height) return false;
  auto* const pixels = reinterpret_cast<std::uint32_t*>(const_cast<uchar*>(image_.constBits()));
  const auto row = [&](int y) { return pixels + static_cast<std::size_t>(y) * (image_.bytesPerLine() / 4); };
  for (int y = partRows; y < height; ++y) std::fill(row(y) + wholeWidth, row(y) + width, row(y)[wholeWidth - 1]);
  for (int y = 0; y < partRows; ++y) std::copy(row(partRows), row(partRows) + width, row(y));
  return true;
}

QRegion KeptPicture::paint(std::span<const CGRect> dirty, const std::function<void(Canvas&)>& painter) {
  if (!bitmap_) return {};
  const raster::View view{.scale = scale_};
  if (canvas_) canvas_->begin(*bitmap_, view);
  else canvas_.emplace(*bitmap_, view);
  painter(*canvas_);

  QRegion changed;
  const double top = image_.height() / scale_;
  for (const CGRect& rect : dirty) {
    const int left = static_cast<int>(std::floor(CGRectGetMinX(rect)));
    const int right = static_cast<int>(std::ceil(CGRectGetMaxX(rect)));
    const int upper = static_cast<int>(std::floor(top - CGRectGetMaxY(rect)));
    const int lower = static_cast<int>(std::ceil(top - CGRectGetMinY(rect)));
    changed += QRect(left, upper, right - left, lower - upper);
  }
  return changed;
}

}  // namespace tessaluna::backend::qt
