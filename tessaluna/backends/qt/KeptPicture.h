// The pixels of a window, as they were painted last. What is painted stays until it is painted over, so that an expose is a
// copy. The lower left corner of base space lies on a corner of the picture's lowest row, and so whole device pixels of base
// space are whole pixels here at any scale.
#pragma once

#include <QImage>
#include <QRegion>
#include <functional>
#include <optional>
#include <span>

#include "tessaluna/backends/raster/Bitmap.h"
#include "tessaluna/backends/raster/RasterCanvas.h"
#include "tessaluna/platform/backend/Canvas.h"

namespace tessaluna::backend::qt {

class KeptPicture {
 public:
  // Empties the picture if it is not of this size already; true if it did. A size that memory cannot hold leaves none.
  bool setSize(CGSize points, double scale);

  // The rectangles, in base space, are all that the painter changes. What it changed, in Qt's points from the upper left
  // corner, rounded outward.
  QRegion paint(std::span<const CGRect> dirty, const std::function<void(Canvas&)>& painter);

  // Pixels at the upper and the right edge that the size covers only in part become like those beside them: what shines
  // through them is black on a desktop without transparent windows. True if there are any.
  bool completeEdges();

  // At the device scale; null before a size was set.
  const QImage& image() const { return image_; }
  CGSize size() const { return size_; }
  double scale() const { return scale_; }

 private:
  CGSize size_;
  double scale_ = 0;
  QImage image_;
  std::optional<raster::Bitmap> bitmap_;  // over the image's pixels
  std::optional<raster::RasterCanvas> canvas_;
};

}  // namespace tessaluna::backend::qt
