#include "tools/artwork/Picture.h"

#include <charconv>
#include <cmath>

#include "tessaluna/backends/raster/RasterCanvas.h"
#include "tessaluna/backends/svg/SvgCanvas.h"
#include "tessaluna/platform/foundation/numberText.h"
#include "tools/artwork/Failure.h"
#include "tools/artwork/nearestNames.h"
#include "tools/artwork/numbers.h"
#include "tools/artwork/pngFile.h"
#include "tools/artwork/svgFile.h"

namespace artwork {

using tessaluna::backend::raster::Bitmap;

double parseScale(std::string_view text) {
  const double scale = parseNumber({"--scale", text});
  if (scale < 0.1 || scale > 16) throw UsageFailure("--scale: " + inQuotes(text) + " is not between 0.1 and 16");
  return scale;
}

std::optional<tessaluna::backend::Color> parseBackground(std::string_view text) {
  if (text == "none") return std::nullopt;
  if (text == "light") return tessaluna::backend::Color{1, 1, 1, 1};
  if (text == "dark") return tessaluna::backend::Color{0.125, 0.125, 0.125, 1};
  unsigned rgb = 0;
  const char* const end = text.data() + text.size();
  const bool isColor = text.size() == 7 && text[0] == '#' && std::from_chars(text.data() + 1, end, rgb, 16).ptr == end;
  if (!isColor) throw UsageFailure("--background: " + inQuotes(text) + " is none of none, light, dark and #rrggbb");
  return tessaluna::backend::Color{(rgb >> 16) / 255.0, (rgb >> 8 & 255) / 255.0, (rgb & 255) / 255.0, 1};
}

std::string picturePath(std::optional<std::string_view> text) {
  if (!text) throw UsageFailure("-o FILE.png or -o FILE.svg is missing");
  if (!text->ends_with(".svg") && !text->ends_with(".png"))
    throw UsageFailure("-o: " + inQuotes(*text) + " ends in neither .png nor .svg");
  return std::string(*text);
}

namespace {

Bitmap makeBitmap(const Picture& picture) {
  // A product such as 10 * 1.1 is slightly greater than the intended whole number.
  const auto pixels = [&](double points) { return std::ceil(points * picture.scale - 1e-6); };
  const double width = pixels(picture.area.size.width), height = pixels(picture.area.size.height);
  std::optional<Bitmap> bitmap;
  if (width <= Bitmap::maximumSide && height <= Bitmap::maximumSide) bitmap = Bitmap::make(int(width), int(height));
  if (!bitmap)
    throw Failure("a picture of " + tessaluna::platform::numberText(width) + " by " +
                  tessaluna::platform::numberText(height) + " pixels is too large");
  return std::move(*bitmap);
}

void fillBackground(tessaluna::backend::Canvas& canvas, const Picture& picture) {
  if (!picture.background) return;
  canvas.saveState();
  canvas.setFillColor(*picture.background);
  // A little more than is visible: a fraction of a point at the edge becomes a whole pixel.
  canvas.fillPath(tessaluna::backend::Path::rect(NSInsetRect(picture.area, -16, -16)),
                  tessaluna::backend::FillRule::NonZero);
  canvas.restoreState();
}

}  // namespace

void writePicture(const std::string& path, const Picture& picture,
                  const std::function<void(tessaluna::backend::Canvas&)>& draw) {
  const auto paint = [&](tessaluna::backend::Canvas& canvas) {
    fillBackground(canvas, picture);
    draw(canvas);
  };
  if (path.ends_with(".svg")) {
    tessaluna::backend::svg::SvgCanvas canvas(picture.area, picture.scale);
    paint(canvas);
    writeSvg(path, canvas);
    return;
  }
  Bitmap bitmap = makeBitmap(picture);
  {
    tessaluna::backend::raster::RasterCanvas canvas(bitmap, {.scale = picture.scale, .origin = picture.area.origin});
    paint(canvas);
  }
  writePng(path, bitmap);
}

}  // namespace artwork
