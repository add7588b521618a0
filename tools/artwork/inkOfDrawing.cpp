#include "tools/artwork/inkOfDrawing.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <memory>

#include "tessaluna/backends/raster/Bitmap.h"
#include "tessaluna/backends/raster/RasterCanvas.h"
#include "tessaluna/platform/graphics/NSGraphicsContext.h"

namespace artwork {

using tessaluna::backend::raster::Bitmap;
using tessaluna::platform::CGRect;
using tessaluna::platform::CGSize;

std::optional<Ink> inkOfDrawing(CGRect frame, CGSize reference, const std::function<void(CGRect)>& draw) {
  const double scale = 64 / std::max(reference.width, reference.height);
  auto bitmap = Bitmap::make(int(std::ceil(frame.size.width * scale)), int(std::ceil(frame.size.height * scale)));
  if (!bitmap) return std::nullopt;
  {
    tessaluna::backend::raster::RasterCanvas canvas(*bitmap, {.scale = scale, .origin = frame.origin});
    const tessaluna::platform::CanvasScope scope(canvas);
    draw(frame);
  }
  int left = bitmap->width(), right = -1, top = bitmap->height(), bottom = -1;
  double coverage = 0, light = 0;
  for (int y = 0; y < bitmap->height(); ++y) {
    for (int x = 0; x < bitmap->width(); ++x) {
      const std::uint32_t pixel = bitmap->pixel(x, y);
      if (pixel >> 24 == 0) continue;
      left = std::min(left, x), right = std::max(right, x), top = std::min(top, y), bottom = std::max(bottom, y);
      coverage += pixel >> 24;
      light += 0.2126 * (pixel >> 16 & 255) + 0.7152 * (pixel >> 8 & 255) + 0.0722 * (pixel & 255);
    }
  }
  if (right < 0) return std::nullopt;
  return Ink{.width = right - left + 1, .height = bottom - top + 1, .lightness = light / coverage};
}

bool scalesWithItsFrame(const TessalunaUIKit::Routine& routine) {
  const auto flags = std::make_unique<bool[]>(routine.flags.size());
  for (std::size_t i = 0; i < routine.flags.size(); ++i) flags[i] = routine.flags[i].isOnByDefault;
  const auto inkAt = [&](double times) {
    const CGSize size{times * routine.defaultFrame.size.width, times * routine.defaultFrame.size.height};
    const auto draw = [&](CGRect frame) { routine.draw(frame, {flags.get(), routine.flags.size()}); };
    return inkOfDrawing({{0, 0}, size}, size, draw);
  };
  const auto once = inkAt(1), twice = inkAt(2);
  // Lines that keep their width, and edges on whole points, make less of a difference.
  constexpr int tolerance = 10;  // of 64 pixels
  return !once || !twice ||
         (std::abs(once->width - twice->width) <= tolerance && std::abs(once->height - twice->height) <= tolerance);
}

}  // namespace artwork
