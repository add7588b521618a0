#include <charconv>
#include <cmath>
#include <optional>
#include <string>

#include "backends/raster/Bitmap.h"
#include "backends/raster/RasterCanvas.h"
#include "platform/foundation/numberText.h"
#include "tools/artwork/Command.h"
#include "tools/artwork/Failure.h"
#include "tools/artwork/Figure.h"
#include "tools/artwork/nearestNames.h"
#include "tools/artwork/numbers.h"
#include "tools/artwork/pngFile.h"

namespace artwork {

namespace {

using backend::raster::Bitmap;
using platform::CGRect;

struct Picture {
  CGRect area;  // what of the drawing's space is seen, in points
  double scale = 1;
  std::optional<backend::Color> background;  // absent: transparent
};

// Half of the widest stroke of the kit, so that no end of a line is cut off.
constexpr double margin = 2;

CGRect areaAround(CGRect frame) {
  const double left = std::floor(CGRectGetMinX(frame) - margin), right = std::ceil(CGRectGetMaxX(frame) + margin);
  const double bottom = std::floor(CGRectGetMinY(frame) - margin), top = std::ceil(CGRectGetMaxY(frame) + margin);
  return {left, bottom, right - left, top - bottom};
}

double parseScale(std::string_view text) {
  const double scale = parseNumber({"--scale", text});
  if (scale < 0.1 || scale > 16) throw UsageFailure("--scale: " + inQuotes(text) + " is not between 0.1 and 16");
  return scale;
}

std::optional<backend::Color> parseBackground(std::string_view text) {
  if (text == "none") return std::nullopt;
  if (text == "light") return backend::Color{1, 1, 1, 1};
  if (text == "dark") return backend::Color{0.125, 0.125, 0.125, 1};
  unsigned rgb = 0;
  const char* const end = text.data() + text.size();
  const bool isColor = text.size() == 7 && text[0] == '#' && std::from_chars(text.data() + 1, end, rgb, 16).ptr == end;
  if (!isColor) throw UsageFailure("--background: " + inQuotes(text) + " is none of none, light, dark and #rrggbb");
  return backend::Color{(rgb >> 16) / 255.0, (rgb >> 8 & 255) / 255.0, (rgb & 255) / 255.0, 1};
}

Bitmap makeBitmap(const Picture& picture) {
  // A product such as 100 * 1.1 lies a little above the whole number that is meant.
  const auto pixels = [&](double points) { return std::ceil(points * picture.scale - 1e-6); };
  const double width = pixels(picture.area.size.width), height = pixels(picture.area.size.height);
  std::optional<Bitmap> bitmap;
  if (width <= Bitmap::maximumSide && height <= Bitmap::maximumSide) bitmap = Bitmap::make(int(width), int(height));
  if (!bitmap)
    throw Failure("a picture of " + platform::numberText(width) + " by " + platform::numberText(height) +
                  " pixels is too large");
  return std::move(*bitmap);
}

void render(const Arguments& arguments) {
  Figure figure = Figure::parse(arguments);
  const bool isImage = arguments.has("--image");
  const auto path = arguments.value("-o");
  if (!path) throw UsageFailure("-o FILE.png is missing");
  if (isImage && !figure.routine().image)
    throw UsageFailure("--image: " + figure.routine().member() + " has no image routine");
  if (isImage && arguments.has("--frame")) throw UsageFailure("--image takes a --size and no --frame");

  Picture picture;
  if (const auto size = arguments.value("--size")) {
    if (arguments.has("--frame")) throw UsageFailure("--size and --frame exclude each other");
    figure.setFrame({{0, 0}, parseSize({"--size", *size})});
    picture.area = figure.frame();
  } else {
    // An image has a size and no place.
    if (isImage) figure.setFrame({{0, 0}, figure.frame().size});
    picture.area = areaAround(figure.frame());
  }
  if (const auto scale = arguments.value("--scale")) picture.scale = parseScale(*scale);
  if (const auto background = arguments.value("--background")) picture.background = parseBackground(*background);

  Bitmap bitmap = makeBitmap(picture);
  {
    backend::raster::RasterCanvas canvas(bitmap, {.scale = picture.scale, .origin = picture.area.origin});
    if (picture.background) {
      canvas.saveState();
      canvas.setFillColor(*picture.background);
      // A little more than seen: a fraction of a point at the edge is a whole pixel.
      canvas.fillPath(backend::Path::rect(NSInsetRect(picture.area, -16, -16)), backend::FillRule::NonZero);
      canvas.restoreState();
    }
    isImage ? figure.drawImage(canvas) : figure.draw(canvas);
  }
  writePng(std::string(*path), bitmap);
}

constexpr Option options[] = {
    {"-o"}, {"--frame"}, {"--size"}, {"--scale"}, {"--background"}, {"--image", Option::Value::None},
};

}  // namespace

const Command renderCommand = {
    .name = "render",
    .usage =
        "NAME -o FILE.png [--frame X,Y,W,H | --size WxH] [--scale S]\n"
        "                         [--background none|light|dark|#rrggbb] [--FLAG true|false]... [--image]",
    .summary =
        "Paints a routine into a PNG file: its frame with 2 points around it, with --size exactly (0, 0, W, H).\n"
        "--scale is pixels a point, 0.1 to 16. --image draws through the routine's image.",
    .options = options,
    .routineFlags = RoutineFlags::Accepted,
    .run = render,
};

}  // namespace artwork
