// What a test asks of an outline that a routine painted: its listing, its subpaths one by one, and where it
// leaves paint.
#pragma once

#include <string>
#include <vector>

#include "tessaluna/backends/recording/RecordingCanvas.h"
#include "tessaluna/platform/backend/Path.h"
#include "tessaluna/platform/graphics/NSGraphicsContext.h"

namespace harness {

struct Subpath {
  tessaluna::backend::Path path;
  int lines = 0, curves = 0;
  bool isClosed = false;
  double area = 0;  // positive when it runs counterclockwise
};

// In their order.
std::vector<Subpath> subpathsOf(const tessaluna::backend::Path& path);

// How often the path runs round the point, counterclockwise positive. Zero is no paint under non-zero
// winding.
int windingAt(const tessaluna::backend::Path& path, tessaluna::platform::CGPoint point);

// "M (0.5, 1), L (0.25, 0), Z": of a routine called with the frame (0, 0, 1, 1) this is the listing that it
// was written with.
std::string listingOf(const tessaluna::backend::Path& path);
// The same in fractions of a frame, to five decimals.
std::string listingIn(tessaluna::platform::CGRect frame, const tessaluna::backend::Path& path);

// The paths of all fills, or of all strokes, of a drawing.
struct Painted {
  std::vector<tessaluna::backend::Path> filled, stroked;
  std::vector<std::string> lines;  // of the whole recording
};

// The names of a recording's operations, in their order.
std::vector<std::string> operationsOf(const std::vector<std::string>& lines);

class OutlineCanvas : public tessaluna::backend::recording::RecordingCanvas {
 public:
  Painted painted;
  void fillPath(const tessaluna::backend::Path& path, tessaluna::backend::FillRule rule) override {
    RecordingCanvas::fillPath(path, rule);
    painted.filled.push_back(path);
  }
  void strokePath(const tessaluna::backend::Path& path, const tessaluna::backend::StrokeStyle& style) override {
    RecordingCanvas::strokePath(path, style);
    painted.stroked.push_back(path);
  }
};

template <class Draw>
Painted paintedBy(Draw draw) {
  OutlineCanvas canvas;
  {
    const tessaluna::platform::CanvasScope scope(canvas);
    draw();
  }
  canvas.painted.lines = canvas.lines();
  return canvas.painted;
}

}  // namespace harness
