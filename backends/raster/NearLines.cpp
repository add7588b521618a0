#include "backends/raster/NearLines.h"

#include <algorithm>
#include <cmath>

#include "backends/raster/WorkBuffer.h"

namespace backend::raster {

namespace {

double distanceToChord(CGPoint p, CGPoint a, CGPoint b) {
  const double dx = b.x - a.x, dy = b.y - a.y, squares = dx * dx + dy * dy;
  const double t = squares > 0 ? std::clamp(((p.x - a.x) * dx + (p.y - a.y) * dy) / squares, 0.0, 1.0) : 0;
  const double x = p.x - a.x - t * dx, y = p.y - a.y - t * dy;
  return std::sqrt(x * x + y * y);
}

bool cross(CGPoint a, CGPoint b, CGPoint c, CGPoint d) {
  const auto side = [](CGPoint p, CGPoint q, CGPoint r) {
    return (q.x - p.x) * (r.y - p.y) - (q.y - p.y) * (r.x - p.x);
  };
  return (side(a, b, c) > 0) != (side(a, b, d) > 0) && (side(c, d, a) > 0) != (side(c, d, b) > 0);
}

}  // namespace

void NearLines::clear() {
  clearForReuse(points_);
  clearForReuse(lines_);
}

void NearLines::moveTo(CGPoint p) {
  const double along = points_.empty() ? 0 : points_.back().along;
  points_.push_back({p, along, lines_.size()});
  lines_.push_back({along, along});
}

void NearLines::lineTo(CGPoint p, double length) {
  Line& line = lines_.back();
  line.end += length;
  points_.push_back({p, line.end, lines_.size() - 1});
}

void NearLines::makeRuns() {
  clearForReuse(runs_);
  const auto quarter = [this](std::size_t i) {
    const CGPoint a = points_[i].at, b = points_[i + 1].at;
    return (b.x < a.x ? 1 : 0) | (b.y < a.y ? 2 : 0);
  };
  for (std::size_t i = 0; i + 1 < points_.size();) {
    if (points_[i + 1].line != points_[i].line) {
      ++i;
      continue;
    }
    std::size_t end = i + 1;
    while (end + 1 < points_.size() && points_[end + 1].line == points_[i].line && quarter(end) == quarter(i))
      ++end;
    const CGPoint a = points_[i].at, b = points_[end].at;
    runs_.push_back({i, end, std::min(a.x, b.x), std::max(a.x, b.x), std::min(a.y, b.y), std::max(a.y, b.y)});
    i = end;
  }
}

bool NearLines::find(double distance) {
  makeRuns();
  std::sort(runs_.begin(), runs_.end(), [](const Run& a, const Run& b) { return a.left < b.left; });
  testsLeft_ = 4000 + 40 * long(points_.size());
  for (std::size_t i = 0; i < runs_.size(); ++i) {
    const Run& a = runs_[i];
    for (std::size_t j = i + 1; j < runs_.size() && runs_[j].left < a.right + distance; ++j) {
      const Run& b = runs_[j];
      if (--testsLeft_ < 0) return true;
      if (b.top < a.bottom + distance && b.bottom > a.top - distance && areNear(a, b, distance)) return true;
    }
  }
  return false;
}

bool NearLines::areNear(const Run& a, const Run& b, double distance) {
  for (std::size_t i = a.first; i < a.last; ++i) {
    const CGPoint from = points_[i].at, to = points_[i + 1].at;
    if (std::max(from.x, to.x) < b.left - distance || std::min(from.x, to.x) > b.right + distance ||
        std::max(from.y, to.y) < b.top - distance || std::min(from.y, to.y) > b.bottom + distance) {
      continue;
    }
    for (std::size_t j = b.first; j < b.last; ++j) {
      if (--testsLeft_ < 0) return true;
      if (areChordsNear(i, j, distance)) return true;
    }
  }
  return false;
}

bool NearLines::areChordsNear(std::size_t i, std::size_t j, double distance) const {
  const CGPoint a = points_[i].at, b = points_[i + 1].at, c = points_[j].at, d = points_[j + 1].at;
  if (std::max(a.x, b.x) < std::min(c.x, d.x) - distance ||
      std::max(c.x, d.x) < std::min(a.x, b.x) - distance ||
      std::max(a.y, b.y) < std::min(c.y, d.y) - distance ||
      std::max(c.y, d.y) < std::min(a.y, b.y) - distance) {
    return false;
  }
  // Ends that meet, as those of neighbours and of a closed line do, are near by nature. So is what the line
  // leads to in a few pens' widths.
  if (a == d || b == c || a == c || b == d) return false;
  if (points_[i].line == points_[j].line) {
    const std::size_t first = std::min(i, j), second = std::max(i, j);
    const double between = points_[second].along - points_[first + 1].along;
    if (between < 4 * distance) return false;
    // The other way round, through the start.
    const Line& line = lines_[points_[i].line];
    const double around = (line.end - points_[second + 1].along) + (points_[first].along - line.start);
    if (line.isClosed && around < 4 * distance) return false;
  }
  return cross(a, b, c, d) ||
         std::min(std::min(distanceToChord(a, c, d), distanceToChord(b, c, d)),
                  std::min(distanceToChord(c, a, b), distanceToChord(d, a, b))) < distance;
}

}  // namespace backend::raster
