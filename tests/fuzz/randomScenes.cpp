// Compares random drawings with an exact reference that is computed differently: polygons, curves, tiny shapes, thin bars,
// doubled and overlapping subpaths, strokes of all kinds, dashes, turned pens and images.
//
//   random_scenes [COUNT] [FIRST] [KIND]
//
// Draws COUNT scenes from the number FIRST on, of one kind or of all kinds in turn. A scene depends only on its number.
// Fails if a pixel is off by more than 8 of 255, or if more than a thousandth of the edge pixels are off by more than 3.
// Prints the worst scenes and what they draw.
#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <numbers>
#include <random>
#include <string>
#include <vector>

#include "tessaluna/backends/raster/Bitmap.h"
#include "tessaluna/backends/raster/RasterCanvas.h"
#include "tests/backends/raster/Region.h"

namespace {

using namespace tessaluna::backend;
using raster::Bitmap;
using raster::RasterCanvas;
using raster::test::Coverage;
using raster::test::Region;

constexpr double side = 30;  // of a scene, in points
constexpr double allowed = 8, allowedOnMost = 3, shareOfMost = 0.999;

struct Pen {
  StrokeStyle style;
  std::vector<double> dash;
};

struct Scene {
  double scale = 1;
  Path path;
  FillRule rule = FillRule::NonZero;
  bool isStroked = false, isImage = false;
  Pen pen;
  CGAffineTransform transform;
};

class Maker {
 public:
  explicit Maker(unsigned number) : random_(number) {}
  Scene make(const std::string& kind);

 private:
  double between(double low, double high) { return std::uniform_real_distribution<double>(low, high)(random_); }
  // All orders of magnitude are equally likely.
  double size(double low, double high) { return std::exp(between(std::log(low), std::log(high))); }
  int below(int count) { return std::uniform_int_distribution<int>(0, count - 1)(random_); }
  // Half of the scenes are on a grid, where edges meet the borders of pixels.
  CGPoint place() {
    const CGPoint p{between(3, side - 3), between(3, side - 3)};
    return onGrid_ ? CGPoint{std::round(p.x), std::round(p.y)} : p;
  }
  void addSegment(Path& path, bool mayBend) {
    if (mayBend && below(3) > 0) {
      const CGPoint to = place(), control = place();
      path.curveTo(to, control, place());
    } else {
      path.lineTo(place());
    }
  }
  Path figure(bool mayBend, int segments) {
    Path path;
    path.moveTo(place());
    for (int i = 0; i < segments; ++i) addSegment(path, mayBend);
    if (below(2) == 0) path.close();
    return path;
  }
  Path tinyShapes() {
    Path path;
    for (int i = 20 + below(40); i > 0; --i) {
      const CGPoint at = place();
      const double width = size(0.1, 2.5), height = size(0.1, 2.5);
      if (below(2) == 0) {
        path.append(below(2) == 0 ? Path::rect({at, {width, height}}) : Path::oval({at, {width, height}}));
        continue;
      }
      path.moveTo(at);
      for (int corner = 2 + below(3); corner > 0; --corner)
        path.lineTo({at.x + between(-width, width), at.y + between(-height, height)});
      path.close();
    }
    return path;
  }
  Path thinBars() {
    Path path;
    for (int i = 2 + below(10); i > 0; --i) {
      const CGPoint at{between(2, 8), between(2, 26)};
      const CGSize bar{between(10, 20), size(0.05, 1.2)};
      Path one = Path::rect({at, bar});
      if (below(2) == 0) one.transform({0, 1, 1, 0, 0, 0});
      if (below(3) == 0) one.transform(turned());
      path.append(one);
    }
    return path;
  }
  // A turn about the middle of the scene.
  CGAffineTransform turned() {
    const double angle = between(0, 2 * std::numbers::pi), c = std::cos(angle), s = std::sin(angle), middle = side / 2;
    return CGAffineTransform::translation(-middle, -middle)
        .then({c, s, -s, c, 0, 0})
        .then(CGAffineTransform::translation(middle, middle));
  }
  void setPen(Scene& scene) {
    scene.isStroked = true;
    scene.pen.style = {
        .width = size(0.3, 6), .cap = LineCap(below(3)), .join = LineJoin(below(3)), .miterLimit = below(2) == 0 ? 10 : 3.0};
  }

  std::mt19937 random_;
  bool onGrid_ = false;
};

const std::string kinds[] = {"polygon", "curves",   "tiny",   "bars",       "doubled", "lines",
                             "bends",   "crossing", "dashes", "turned pen", "image"};

Scene Maker::make(const std::string& kind) {
  Scene scene;
  constexpr double scales[] = {1, 1.25, 1.5, 2, 3};
  scene.scale = scales[below(5)];
  onGrid_ = below(2) == 0;
  scene.rule = below(3) == 0 ? FillRule::EvenOdd : FillRule::NonZero;
  if (kind == "polygon") scene.path = figure(false, 2 + below(7));
  if (kind == "curves") scene.path = figure(true, 1 + below(5));
  if (kind == "tiny") scene.path = tinyShapes();
  if (kind == "bars") scene.path = thinBars();
  if (kind == "doubled") {
    scene.path = figure(true, 2 + below(4));
    const Path once = scene.path;
    for (int i = 1 + below(2); i > 0; --i) scene.path.append(once);
    if (below(2) == 0) scene.path.append(figure(true, 2));
  }
  if (kind == "lines" || kind == "bends" || kind == "dashes" || kind == "turned pen") {
    scene.path = figure(kind != "lines", 1 + below(4));
    setPen(scene);
  }
  if (kind == "crossing") {
    for (int i = 2 + below(3); i > 0; --i) scene.path.append(figure(true, 1 + below(3)));
    setPen(scene);
  }
  if (kind == "dashes") {
    for (int i = 1 + below(3); i > 0; --i) scene.pen.dash.push_back(size(0.4, 8));
    if (scene.pen.dash.size() == 3) scene.pen.dash.push_back(1);
    if (scene.pen.dash.size() == 1) scene.pen.dash.push_back(scene.pen.dash[0]);
    scene.pen.style.dashPhase = below(2) == 0 ? 0 : between(0, 10);
  }
  if (kind == "turned pen") {
    const CGAffineTransform stretch{size(0.3, 1.2), between(-0.5, 0.5), between(-0.5, 0.5), size(0.3, 1.2), 0, 0};
    scene.transform = stretch.then(CGAffineTransform::translation(between(0, 8), between(0, 8)));
  }
  if (kind == "image") {
    scene.isImage = true;
    scene.path = Path::rect({{between(4, 10), between(4, 10)}, {size(1, 18), size(1, 18)}});
    scene.transform = turned();
  }
  return scene;
}

// How far the worst pixel is off, the number of edge pixels, and how many of these are off by more than most of them may be.
struct Result {
  unsigned number = 0;
  double worst = 0;
  int x = 0, y = 0;
  long edges = 0, offEdges = 0;
};

void draw(RasterCanvas& canvas, const Scene& scene) {
  canvas.concat(scene.transform);
  if (scene.isImage) {
    constexpr int pixels = 5;
    const ImagePixels image{
        .width = pixels, .height = pixels, .argb = std::vector<std::uint32_t>(pixels * pixels, 0xff000000)};
    return canvas.drawImage(image, {{0, 0}, {pixels, pixels}}, scene.path.shape().rect);
  }
  if (!scene.isStroked) return canvas.fillPath(scene.path, scene.rule);
  StrokeStyle style = scene.pen.style;
  style.dash = scene.pen.dash;
  canvas.strokePath(scene.path, style);
}

Result compare(const Scene& scene, RasterCanvas& canvas) {
  const int pixels = int(std::ceil(side * scene.scale));
  auto bitmap = Bitmap::make(pixels, pixels);
  canvas.begin(*bitmap, {.scale = scene.scale});
  draw(canvas, scene);
  const CGAffineTransform toDevice = scene.transform.then({scene.scale, 0, 0, -scene.scale, 0, double(pixels)});
  StrokeStyle style = scene.pen.style;
  style.dash = scene.pen.dash;
  const Coverage exact(
      scene.isStroked ? Region::stroked(scene.path, style, toDevice) : Region::filled(scene.path, scene.rule, toDevice),
      pixels, pixels);
  Result result;
  for (int y = 0; y < pixels; ++y) {
    for (int x = 0; x < pixels; ++x) {
      const double wanted = exact.at(x, y) * 255, off = std::abs(wanted - (bitmap->pixel(x, y) >> 24));
      if (wanted > 0.01 && wanted < 254.99) ++result.edges;
      if (off > allowedOnMost) ++result.offEdges;
      if (off > result.worst) result = {result.number, off, x, y, result.edges, result.offEdges};
    }
  }
  return result;
}

void print(const Scene& scene, const Result& result, const std::string& kind) {
  std::printf("  scene %u, %s, scale %g: pixel %d, %d is off by %.0f\n    ", result.number, kind.c_str(), scene.scale,
              result.x, result.y, result.worst);
  const CGPoint* p = scene.path.points().data();
  for (const PathVerb verb : scene.path.verbs()) {
    constexpr char letters[] = {'M', 'L', 'C', 'Z'};
    std::printf("%c ", letters[int(verb)]);
    for (int i = 0; i < pointCount(verb); ++i, ++p) std::printf("%.9g,%.9g ", p->x, p->y);
  }
  const CGAffineTransform& t = scene.transform;
  if (scene.isStroked) {
    std::printf("\n    width %.9g, cap %d, join %d, miter limit %g", scene.pen.style.width, int(scene.pen.style.cap),
                int(scene.pen.style.join), scene.pen.style.miterLimit);
    for (const double length : scene.pen.dash) std::printf(", dash %.9g", length);
    std::printf(", phase %.9g", scene.pen.style.dashPhase);
  } else {
    std::printf("\n    %s", scene.isImage ? "image" : scene.rule == FillRule::EvenOdd ? "even-odd" : "non-zero");
  }
  std::printf(", transform %.9g %.9g %.9g %.9g %.9g %.9g\n", t.a, t.b, t.c, t.d, t.tx, t.ty);
}

}  // namespace

int main(int argc, char** argv) {
  const unsigned count = argc > 1 ? unsigned(std::atol(argv[1])) : 1000, first = argc > 2 ? unsigned(std::atol(argv[2])) : 1;
  const std::string only = argc > 3 ? argv[3] : "";
  constexpr std::size_t shown = 3;  // how many of the worst scenes of each kind
  auto none = Bitmap::make(1, 1);
  RasterCanvas canvas(*none);
  bool isRight = true;
  long edges = 0, offEdges = 0;
  for (std::size_t i = 0; i < std::size(kinds); ++i) {
    if (!only.empty() && kinds[i] != only) continue;
    std::vector<Result> results;
    long edgesOfKind = 0, offOfKind = 0;
    for (unsigned number = first; number < first + count; ++number) {
      if (only.empty() && number % std::size(kinds) != i) continue;
      Result result = compare(Maker(number).make(kinds[i]), canvas);
      result.number = number;
      edgesOfKind += result.edges;
      offOfKind += result.offEdges;
      results.push_back(result);
    }
    const auto isBad = [](const Result& result) { return result.worst > allowed; };
    const long bad = std::count_if(results.begin(), results.end(), isBad);
    std::sort(results.begin(), results.end(), [](const Result& a, const Result& b) { return a.worst > b.worst; });
    std::printf("%-10s %6zu scenes, %ld off by more than %g; worst %.1f; %.3f %% of edge pixels by more than %g\n",
                kinds[i].c_str(), results.size(), bad, allowed, results.empty() ? 0 : results[0].worst,
                100.0 * double(offOfKind) / double(std::max(edgesOfKind, 1L)), allowedOnMost);
    for (std::size_t j = 0; j < std::min(shown, results.size()) && isBad(results[j]); ++j)
      print(Maker(results[j].number).make(kinds[i]), results[j], kinds[i]);
    std::fflush(stdout);
    if (bad > 0) isRight = false;
    edges += edgesOfKind;
    offEdges += offOfKind;
  }
  if (double(offEdges) > (1 - shareOfMost) * double(edges)) isRight = false;
  return isRight ? 0 : 1;
}
