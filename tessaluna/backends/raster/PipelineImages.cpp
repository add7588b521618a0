#include "tessaluna/backends/raster/Pipeline.h"

namespace tessaluna::backend::raster {

// An image is drawn as a shape: its destination rectangle, filled with the image's colors.
void RasterCanvas::Pipeline::drawImage(const ImagePixels& image, CGRect source, CGRect destination) {
  const bool isUsableImage = image.width > 0 && image.height > 0 && source.size.width > 0 && source.size.height > 0;
  if (state_.clip.box.isEmpty() || !isUsableImage) return;
  if (castShadow()) {
    // The shadow is that of the image's visible pixels.
    beginLayer();
    drawImage(image, source, destination);
    return endLayer();
  }
  const double across = destination.size.width / source.size.width, down = destination.size.height / source.size.height;
  // Maps source pixels, y down, to the device.
  const CGAffineTransform toPicture{across,
                                    0,
                                    0,
                                    -down,
                                    destination.origin.x - source.origin.x * across,
                                    CGRectGetMaxY(destination) + source.origin.y * down};
  const CGAffineTransform toDevice = toPicture.then(state_.toDevice);
  const CGPoint first = toDevice.apply(source.origin);
  const CGPoint last = toDevice.apply({CGRectGetMaxX(source), CGRectGetMaxY(source)});
  if (!isUsable(first) || !isUsable(last)) return;

  const CGRect around = toDevice.applyToRect(source);
  const DeviceRect place{snapped(CGRectGetMinX(around)), snapped(CGRectGetMinY(around)), snapped(CGRectGetMaxX(around)),
                         snapped(CGRectGetMaxY(around))};
  const PixelRect box = place.roundedOut().intersected(state_.clip.box);
  const bool isShown = !box.isEmpty() && sampler_.begin(image, source, toDevice, box);
  const Source colors{.rows = &sampler_, .alpha = float(clamp01(state_.alpha))};
  if (isShown && toDevice.b == 0 && toDevice.c == 0) {
    return fillRect(place, colors);
  }
  polygons_.clear();
  if (isShown) flatten(Path::rect(source), toDevice, state_.clip.box);
  paintPolygons({.polygons = polygons_}, colors, std::nullopt);
}

}  // namespace tessaluna::backend::raster
