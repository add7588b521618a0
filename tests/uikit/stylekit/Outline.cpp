#include "tests/uikit/stylekit/Outline.h"

#include <cmath>
#include <string_view>

#include "tessaluna/platform/foundation/numberText.h"

namespace harness {

using namespace tessaluna::platform;
using tessaluna::backend::PathVerb;

namespace {

constexpr int stepsOfCurve = 64;

// Calls visit(from, to) for each straight piece of the flattened outline, closing lines included.
template <class Visit>
void forEachPiece(const tessaluna::backend::Path& path, Visit visit) {
  CGPoint start, here;
  const CGPoint* point = path.points().data();
  const auto goTo = [&](CGPoint to) {
    visit(here, to);
    here = to;
  };
  for (const PathVerb verb : path.verbs()) {
    switch (verb) {
      case PathVerb::Move: start = here = point[0]; break;
      case PathVerb::Line: goTo(point[0]); break;
      case PathVerb::Curve: {
        const CGPoint a = here, b = point[0], c = point[1], d = point[2];
        for (int i = 1; i <= stepsOfCurve; ++i) {
          const double t = double(i) / stepsOfCurve, u = 1 - t;
          const double wa = u * u * u, wb = 3 * u * u * t, wc = 3 * u * t * t, wd = t * t * t;
          goTo({wa * a.x + wb * b.x + wc * c.x + wd * d.x, wa * a.y + wb * b.y + wc * c.y + wd * d.y});
        }
        break;
      }
      case PathVerb::Close: goTo(start); break;
    }
    point += pointCount(verb);
  }
}

}  // namespace

std::vector<Subpath> subpathsOf(const tessaluna::backend::Path& path) {
  std::vector<Subpath> result;
  const CGPoint* point = path.points().data();
  for (const PathVerb verb : path.verbs()) {
    if (verb == PathVerb::Move) result.emplace_back();
    Subpath& subpath = result.back();
    switch (verb) {
      case PathVerb::Move: subpath.path.moveTo(point[0]); break;
      case PathVerb::Line:
        subpath.path.lineTo(point[0]);
        ++subpath.lines;
        break;
      case PathVerb::Curve:
        subpath.path.curveTo(point[2], point[0], point[1]);
        ++subpath.curves;
        break;
      case PathVerb::Close:
        subpath.path.close();
        subpath.isClosed = true;
        break;
    }
    point += pointCount(verb);
  }
  for (Subpath& subpath : result)
    forEachPiece(subpath.path, [&](CGPoint a, CGPoint b) { subpath.area += (a.x * b.y - a.y * b.x) / 2; });
  return result;
}

int windingAt(const tessaluna::backend::Path& path, CGPoint point) {
  int winding = 0;
  forEachPiece(path, [&](CGPoint a, CGPoint b) {
    const double side = (b.x - a.x) * (point.y - a.y) - (b.y - a.y) * (point.x - a.x);
    if (a.y <= point.y && b.y > point.y && side > 0) ++winding;
    if (b.y <= point.y && a.y > point.y && side < 0) --winding;
  });
  return winding;
}

std::string listingOf(const tessaluna::backend::Path& path) {
  std::string text;
  const auto pair = [](CGPoint p) { return numberText(p.x) + ", " + numberText(p.y); };
  const CGPoint* point = path.points().data();
  for (const PathVerb verb : path.verbs()) {
    if (!text.empty()) text += ", ";
    switch (verb) {
      case PathVerb::Move: text += "M (" + pair(point[0]) + ")"; break;
      case PathVerb::Line: text += "L (" + pair(point[0]) + ")"; break;
      case PathVerb::Curve: text += "C (" + pair(point[2]) + "; " + pair(point[0]) + "; " + pair(point[1]) + ")"; break;
      case PathVerb::Close: text += "Z"; break;
    }
    point += pointCount(verb);
  }
  return text;
}

std::string listingIn(CGRect frame, const tessaluna::backend::Path& path) {
  tessaluna::backend::Path inUnits = path;
  inUnits.transform({.a = 1 / frame.size.width,
                     .d = 1 / frame.size.height,
                     .tx = -frame.origin.x / frame.size.width,
                     .ty = -frame.origin.y / frame.size.height});
  tessaluna::backend::Path rounded;
  const auto at = [](CGPoint p) { return CGPoint{std::round(p.x * 1e5) / 1e5, std::round(p.y * 1e5) / 1e5}; };
  const CGPoint* point = inUnits.points().data();
  for (const PathVerb verb : inUnits.verbs()) {
    switch (verb) {
      case PathVerb::Move: rounded.moveTo(at(point[0])); break;
      case PathVerb::Line: rounded.lineTo(at(point[0])); break;
      case PathVerb::Curve: rounded.curveTo(at(point[2]), at(point[0]), at(point[1])); break;
      case PathVerb::Close: rounded.close(); break;
    }
    point += pointCount(verb);
  }
  return listingOf(rounded);
}

std::vector<std::string> operationsOf(const std::vector<std::string>& lines) {
  constexpr std::string_view start = "{\"op\":\"";
  std::vector<std::string> names;
  for (const std::string& line : lines)
    names.push_back(line.substr(start.size(), line.find('"', start.size()) - start.size()));
  return names;
}

}  // namespace harness
