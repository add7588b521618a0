#include <cmath>
#include <string>

#include "tools/artwork/Command.h"
#include "tools/artwork/Failure.h"
#include "tools/artwork/Figure.h"
#include "tools/artwork/Picture.h"
#include "tools/artwork/numbers.h"

namespace artwork {

namespace {

using tessaluna::platform::CGRect;

enum class Source { Routine, Image };

// Half of the widest stroke of the kit, so that no end of a line is cut off.
constexpr double margin = 2;

CGRect areaAround(CGRect frame) {
  const double left = std::floor(CGRectGetMinX(frame) - margin), right = std::ceil(CGRectGetMaxX(frame) + margin);
  const double bottom = std::floor(CGRectGetMinY(frame) - margin), top = std::ceil(CGRectGetMaxY(frame) + margin);
  return {left, bottom, right - left, top - bottom};
}

void render(const Arguments& arguments) {
  Figure figure = Figure::parse(arguments);
  const Source source = arguments.has("--image") ? Source::Image : Source::Routine;
  const std::string path = picturePath(arguments.value("-o"));
  if (source == Source::Image && !figure.routine().image)
    throw UsageFailure("--image: " + figure.routine().member() + " has no image routine");
  if (source == Source::Image && arguments.has("--frame")) throw UsageFailure("--image takes a --size and no --frame");

  Picture picture;
  if (const auto size = arguments.value("--size")) {
    if (arguments.has("--frame")) throw UsageFailure("--size and --frame exclude each other");
    figure.setFrame({{0, 0}, parseSize({"--size", *size})});
    picture.area = figure.frame();
  } else {
    // An image has a size but no place.
    if (source == Source::Image) figure.setFrame({{0, 0}, figure.frame().size});
    picture.area = areaAround(figure.frame());
  }
  if (const auto scale = arguments.value("--scale")) picture.scale = parseScale(*scale);
  if (const auto background = arguments.value("--background")) picture.background = parseBackground(*background);

  writePicture(path, picture, [&](tessaluna::backend::Canvas& canvas) {
    source == Source::Image ? figure.drawImage(canvas) : figure.draw(canvas);
  });
}

constexpr Option options[] = {
    {"-o"}, {"--frame"}, {"--size"}, {"--scale"}, {"--background"}, {"--image", Option::Value::None},
};

}  // namespace

const Command renderCommand = {
    .name = "render",
    .usage =
        "NAME -o FILE.png|FILE.svg [--frame X,Y,W,H | --size WxH] [--scale S]\n"
        "                         [--background none|light|dark|#rrggbb] [--FLAG true|false]... [--image]",
    .summary =
        "Paints a routine into a PNG or SVG file, as the ending of its name says: its frame with 2 points\n"
        "around it, with --size exactly (0, 0, W, H). --scale is pixels per point, 0.1 to 16. --image draws through\n"
        "the routine's image.",
    .options = options,
    .routineFlags = RoutineFlags::Accepted,
    .run = render,
};

}  // namespace artwork
