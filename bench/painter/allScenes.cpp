#include <algorithm>
#include <cmath>

#include "bench/outlines/Exactness.h"
#include "bench/painter/Scene.h"

namespace bench {

namespace {

using namespace tessaluna::backend;
using Pixel = ExactPixels::Pixel;

constexpr double pi = 3.14159265358979323846;

ExactPixels everyPixel(int width, int height, const std::function<Pixel(int, int)>& pixelAt) {
  ExactPixels exact{width, height, {}};
  exact.pixels.reserve(std::size_t(width) * std::size_t(height));
  for (int y = 0; y < height; ++y) {
    for (int x = 0; x < width; ++x) exact.pixels.push_back(pixelAt(x, y));
  }
  return exact;
}

Pixel times(const Pixel& p, double f) { return {p.red * f, p.green * f, p.blue * f, p.alpha * f}; }
Pixel plus(const Pixel& a, const Pixel& b) { return {a.red + b.red, a.green + b.green, a.blue + b.blue, a.alpha + b.alpha}; }

Pixel opaque(const Color& c) { return {c.red * 255, c.green * 255, c.blue * 255, 255}; }

// Plain outlines

ExactPixels exactOutlines(const Drawing& drawing) {
  const ExactPicture exact = exactPictureOf(drawing);
  const Color& c = drawing.outlines.front().color;
  return everyPixel(drawing.width, drawing.height, [&](int x, int y) {
    return times(opaque(c), exact.alpha[std::size_t(y) * std::size_t(exact.width) + std::size_t(x)]);
  });
}

Scene outlineScene(std::string name, double wanted, Drawing drawing) {
  const auto shared = std::make_shared<const Drawing>(std::move(drawing));
  const auto ours = [shared](Sight sight) { return [shared, sight] { return makeOutlinesContestant(*shared, sight); }; };
  Scene scene{std::move(name), wanted, {}, [shared] { return exactOutlines(*shared); }};
  // The canvas does not remember upright rectangles, and moving them by a fraction of a pixel would change their edges.
  if (shared->outlines.front().path.shape().kind == PathShape::Kind::Rect) scene.entrants = {{"ours", ours(Sight::Again)}};
  else scene.entrants = {{"ours", ours(Sight::Cold)}, {"ours again", ours(Sight::Again), false}};
  scene.entrants.push_back({"QPainter", [shared] { return makeQtContestant(*shared); }});
  scene.entrants.push_back({"cairo", [shared] { return makeCairoContestant(*shared); }});
  scene.entrants.push_back({"AGG", [shared] { return makeAggContestant(*shared); }});
  return scene;
}

Path polyline(const std::vector<CGPoint>& points) {
  Path path;
  path.moveTo(points.front());
  for (std::size_t i = 1; i < points.size(); ++i) path.lineTo(points[i]);
  return path;
}

Path uprightBars(double size) {
  Path path;
  for (const double left : {0.15, 0.6}) {
    const double right = left + 0.25;
    path.append(polyline(
        {{left * size, 0.1 * size}, {right * size, 0.1 * size}, {right * size, 0.9 * size}, {left * size, 0.9 * size}}));
    path.close();
  }
  return path;
}

Path heart(double size) {
  const auto at = [size](double x, double y) { return CGPoint{x * size, y * size}; };
  Path path;
  path.moveTo(at(0.5, 0.95));
  path.curveTo(at(0.02, 0.33), at(0.2, 0.72), at(0.02, 0.55));
  path.curveTo(at(0.5, 0.25), at(0.02, 0.02), at(0.4, 0.0));
  path.curveTo(at(0.98, 0.33), at(0.6, 0.0), at(0.98, 0.02));
  path.curveTo(at(0.5, 0.95), at(0.98, 0.55), at(0.8, 0.72));
  path.close();
  return path;
}

Path graph(int points, int width, int height) {
  std::vector<CGPoint> all;
  for (int i = 0; i < points; ++i) {
    const double x = double(i) / (points - 1);
    all.push_back({4 + x * (width - 8), height * (0.5 + 0.3 * std::sin(x * 19) + 0.15 * std::sin(x * 331 + 1))});
  }
  return polyline(all);
}

// All mood icons, four per row; each is one outline.
Drawing moodIcons(double scale) {
  constexpr int inRow = 4;
  Drawing all;
  int index = 0;
  for (const TessalunaUIKit::Routine& routine : TessalunaUIKit::routines()) {
    if (!routine.name.starts_with("Mood")) continue;
    Drawing icon = drawingOf(routine, scale);
    const int x = index % inRow * icon.width, y = index / inRow * icon.height;
    ++index;
    for (Outline& outline : icon.outlines) {
      outline.path.transform(CGAffineTransform::translation(x, y));
      all.outlines.push_back(std::move(outline));
    }
    all.width = std::max(all.width, x + icon.width);
    all.height = std::max(all.height, y + icon.height);
  }
  return all;
}

void addOutlines(std::vector<Scene>& scenes) {
  const Color blue{0.2, 0.4, 0.8, 1}, glass{0.2, 0.4, 0.8, 0.4};
  const CGRect window{{0, 0}, {1200, 800}};
  const auto filled = [](int width, int height, Path path, const Color& color) {
    return Drawing{.width = width, .height = height, .outlines = {{.path = std::move(path), .color = color}}};
  };
  scenes.push_back(outlineScene("rectangle 1200 x 800, opaque", 1, filled(1200, 800, Path::rect(window), blue)));
  scenes.push_back(outlineScene("rectangle 1200 x 800, translucent", 1, filled(1200, 800, Path::rect(window), glass)));
  scenes.push_back(outlineScene("rounded rectangle 300 x 200", 0.8,
                                filled(320, 220, Path::roundedRect({{10, 10}, {300, 200}}, {12, 12}), blue)));
  scenes.push_back(outlineScene("two upright bars at 128", 0.8, filled(128, 128, uprightBars(128), blue)));
  for (const int size : {15, 50, 200, 800}) {
    scenes.push_back(outlineScene("heart at " + std::to_string(size), 0.45, filled(size, size, heart(size), blue)));
  }
  scenes.push_back(outlineScene("a dozen mood icons at 50", 0.62, moodIcons(0.25)));
  scenes.push_back(outlineScene("a dozen mood icons at 200", 0.57, moodIcons(1)));
  scenes.push_back(
      outlineScene("a word in letters, 167 wide", 0.62, drawingOf(*TessalunaUIKit::findRoutine("TidalLogoWide"), 0.2)));
  scenes.push_back(
      outlineScene("a word in letters, 835 wide", 0.57, drawingOf(*TessalunaUIKit::findRoutine("TidalLogoWide"), 1)));
  for (const int points : {1000, 4000}) {
    Drawing drawing = filled(1000, 300, graph(points, 1000, 300), blue);
    drawing.outlines.front().pen = Pen{.width = 3, .join = LineJoin::Round};
    scenes.push_back(outlineScene("line of " + std::to_string(points) + " points, width 3", 1.5, std::move(drawing)));
  }
}

// Gradients

ExactPixels exactGradient(const GradientWork& work) {
  const double dx = work.end.x - work.start.x, dy = work.end.y - work.start.y;
  const Pixel from = opaque(work.stops.front().color), to = opaque(work.stops.back().color);
  return everyPixel(work.width, work.height, [&](int x, int y) {
    const double along = ((x + 0.5 - work.start.x) * dx + (y + 0.5 - work.start.y) * dy) / (dx * dx + dy * dy);
    const double share = std::clamp(along, 0.0, 1.0);
    return plus(times(from, 1 - share), times(to, share));
  });
}

Scene gradientScene(std::string name, GradientWork work) {
  const auto shared = std::make_shared<const GradientWork>(std::move(work));
  return {std::move(name),
          1,
          {{"ours", [shared] { return makeOurs(*shared); }},
           {"QPainter", [shared] { return makeQt(*shared); }},
           {"cairo", [shared] { return makeCairo(*shared); }}},
          [shared] { return exactGradient(*shared); }};
}

// Images

// Soft waves with a hard-edged disc and a fine pattern in it, as covers have soft and hard parts.
ImagePixels cover(int side) {
  ImagePixels image{.width = side, .height = side, .argb = {}, .isOpaque = true};
  for (int y = 0; y < side; ++y) {
    for (int x = 0; x < side; ++x) {
      const double u = (x + 0.5) / side, v = (y + 0.5) / side;
      const bool isInDisc = std::hypot(u - 0.6, v - 0.45) < 0.22, isInPattern = u < 0.25 && v > 0.7;
      const auto channel = [&](double phase) {
        const double wave = 0.5 + 0.3 * std::sin(7 * u + phase) + 0.2 * std::cos(5 * v - 2 * phase);
        if (isInDisc) return 1 - 0.8 * wave;
        return isInPattern && (x + y) % 3 == 0 ? 0.3 * wave : wave;
      };
      const auto byte = [&](double value) { return std::uint32_t(std::lround(std::clamp(value, 0.0, 1.0) * 255)); };
      image.argb.push_back(255u << 24 | byte(channel(0)) << 16 | byte(channel(1)) << 8 | byte(channel(2)));
    }
  }
  return image;
}

Pixel pixelOf(std::uint32_t p) { return {double(p >> 16 & 255), double(p >> 8 & 255), double(p & 255), double(p >> 24)}; }

// The source pixels that a device pixel shows along one direction, and their shares: of the average if the image is shrunk,
// of a blend of two if it is enlarged.
struct Share {
  int index;
  double share;
};
std::vector<Share> sharesOf(double from, double to, int count) {
  const auto clamped = [count](int i) { return std::clamp(i, 0, count - 1); };
  if (to - from <= 1) {
    const double middle = (from + to) / 2 - 0.5, below = std::floor(middle);
    return {{clamped(int(below)), 1 - (middle - below)}, {clamped(int(below) + 1), middle - below}};
  }
  std::vector<Share> shares;
  for (int i = int(std::floor(from)); i < int(std::ceil(to)); ++i) {
    shares.push_back({clamped(i), (std::min(to, i + 1.0) - std::max(from, double(i))) / (to - from)});
  }
  return shares;
}

Pixel sampled(const ImagePixels& image, const std::vector<Share>& across, const std::vector<Share>& down) {
  Pixel sum;
  for (const Share& row : down) {
    for (const Share& column : across) {
      const std::size_t index = std::size_t(row.index) * std::size_t(image.width) + std::size_t(column.index);
      sum = plus(sum, times(pixelOf(image.argb[index]), row.share * column.share));
    }
  }
  return sum;
}

// How much of the device pixel lies in the turned place, estimated from many points.
double coverageOf(const ImageWork& work, int x, int y, const std::function<CGPoint(double, double)>& toImage) {
  constexpr int points = 16;
  int inside = 0;
  for (int i = 0; i < points * points; ++i) {
    const CGPoint p = toImage(x + (i % points + 0.5) / points, y + (i / points + 0.5) / points);
    if (p.x >= 0 && p.y >= 0 && p.x < work.image.width && p.y < work.image.height) ++inside;
  }
  return double(inside) / (points * points);
}

ExactPixels exactImage(const ImageWork& work) {
  const double perPixel = work.image.width / work.place.size.width, angle = work.degrees * pi / 180;
  const double middleX = CGRectGetMidX(work.place), middleY = CGRectGetMidY(work.place);
  const std::function<CGPoint(double, double)> toImage = [&](double x, double y) {
    const double dx = x - middleX, dy = y - middleY;
    return CGPoint{work.image.width / 2.0 + (dx * std::cos(angle) + dy * std::sin(angle)) * perPixel,
                   work.image.height / 2.0 + (dy * std::cos(angle) - dx * std::sin(angle)) * perPixel};
  };
  return everyPixel(work.width, work.height, [&](int x, int y) {
    const double covered = coverageOf(work, x, y, toImage);
    if (covered == 0) return Pixel{};
    const CGPoint p = toImage(x + 0.5, y + 0.5);
    const double half = perPixel / 2;
    return times(sampled(work.image, sharesOf(p.x - half, p.x + half, work.image.width),
                         sharesOf(p.y - half, p.y + half, work.image.height)),
                 covered);
  });
}

Scene imageScene(std::string name, double wanted, ImageWork work) {
  const auto shared = std::make_shared<const ImageWork>(std::move(work));
  return {std::move(name),
          wanted,
          {{"ours", [shared] { return makeOurs(*shared); }},
           {"QPainter", [shared] { return makeQt(*shared); }},
           {"cairo", [shared] { return makeCairo(*shared, Filter::Good); }},
           {"cairo best", [shared] { return makeCairo(*shared, Filter::Best); }}},
          [shared] { return exactImage(*shared); }};
}

// Shadows

ExactPixels exactShadow(const ShadowWork& work) {
  const auto drawn = [&](double below) {
    CGRect rect = work.rect;
    rect.origin.y += below;
    Path path = Path::roundedRect(rect, {work.radius, work.radius});
    return exactPictureOf({.width = work.width, .height = work.height, .outlines = {{.path = path, .color = {}}}}).alpha;
  };
  const double deviation = work.blur / 2;
  const int reach = int(std::ceil(deviation * 6));
  std::vector<double> weights;
  double sum = 0;
  for (int i = -reach; i <= reach; ++i) sum += weights.emplace_back(std::exp(-0.5 * i * i / (deviation * deviation)));
  std::vector<double> shadow = drawn(work.below), between(shadow.size());
  const int width = work.width, height = work.height;
  const auto blur = [&](const std::vector<double>& from, std::vector<double>& to, int dx, int dy) {
    for (int y = 0; y < height; ++y) {
      for (int x = 0; x < width; ++x) {
        double value = 0;
        for (int i = -reach; i <= reach; ++i) {
          const int column = x + i * dx, row = y + i * dy;
          if (column < 0 || row < 0 || column >= width || row >= height) continue;
          value += weights[std::size_t(i + reach)] / sum * from[std::size_t(row * width + column)];
        }
        to[std::size_t(y * width + x)] = value;
      }
    }
  };
  blur(shadow, between, 1, 0);
  blur(between, shadow, 0, 1);
  const std::vector<double> shape = drawn(0);
  return everyPixel(width, height, [&](int x, int y) {
    const std::size_t i = std::size_t(y * width + x);
    return plus(times({0, 0, 0, 255}, shadow[i] * (1 - shape[i])), times(opaque({0.2, 0.4, 0.8, 1}), shape[i]));
  });
}

Scene shadowScene(double blur) {
  const auto shared = std::make_shared<const ShadowWork>(
      ShadowWork{.width = 460, .height = 360, .rect = {{80, 78}, {300, 200}}, .radius = 12, .blur = blur, .below = 3});
  return {"rounded rectangle with a shadow, blur " + std::to_string(int(blur)),
          0.25,
          {{"ours", [shared] { return makeOurs(*shared); }}, {"cairo", [shared] { return makeCairo(*shared); }}},
          [shared] { return exactShadow(*shared); }};
}

Scene innerShadowScene(std::string_view name) {
  const TessalunaUIKit::Routine& routine = *TessalunaUIKit::findRoutine(name);
  const auto drawing = std::make_shared<const Drawing>(drawingOf(routine, 4));
  return {std::string(name) + " with its inner shadow, four times",
          6,
          {{"ours",
            [&routine, drawing] {
              return makeRoutineContestant({routine, 4, *drawing}, Sight::Cold);
            }},
           {"its outlines", [drawing] { return makeOutlinesContestant(*drawing, Sight::Cold); }}},
          {}};
}

}  // namespace

std::vector<Scene> allScenes() {
  std::vector<Scene> scenes;
  scenes.push_back(imageScene("image 256 at whole pixels", 1, {300, 300, cover(256), {{17, 23}, {256, 256}}}));
  scenes.push_back(imageScene("image 256 to 400", 1.2, {420, 420, cover(256), {{10, 10}, {400, 400}}}));
  scenes.push_back(imageScene("image 256 to 100", 1.2, {120, 120, cover(256), {{10, 10}, {100, 100}}}));
  // This is the size of a cover in a row of a list.
  scenes.push_back(imageScene("image 256 to 40", 1.2, {60, 60, cover(256), {{10, 10}, {40, 40}}}));
  scenes.push_back(imageScene("image 256 to 300, turned", 1.2, {420, 420, cover(256), {{60, 60}, {300, 300}}, 30}));
  scenes.push_back(imageScene("image 256 to 32, turned", 1.2, {50, 50, cover(256), {{9, 9}, {32, 32}}, 30}));
  const std::vector<GradientStop> stops{{0, {0.9, 0.2, 0.1, 1}}, {1, {0.1, 0.3, 0.7, 1}}};
  scenes.push_back(gradientScene("gradient 1200 x 800, downward", {1200, 800, stops, {0, 0}, {0, 800}}));
  scenes.push_back(gradientScene("gradient 1200 x 800, diagonal", {1200, 800, stops, {100, 0}, {1100, 800}}));
  addOutlines(scenes);
  for (const double blur : {6.0, 24.0}) scenes.push_back(shadowScene(blur));
  for (const std::string_view name : {"Play", "Pause", "Stop"}) scenes.push_back(innerShadowScene(name));
  return scenes;
}

}  // namespace bench
