// What paints. The drawing classes of the platform layer keep no pixels: they call a canvas, in few primitives that
// everything else is derived from. A canvas paints pixels, writes SVG, or only records its calls.
//
// Base space: one unit is one point, the origin at the lower left, y up; a device scale changes pixels only. Colors are
// not premultiplied, in sRGB, and go to the pixels as they are.
#pragma once

#include <optional>
#include <span>
#include <string_view>

#include "tessaluna/platform/backend/ImagePixels.h"
#include "tessaluna/platform/backend/Path.h"
#include "tessaluna/platform/backend/TextEngine.h"

namespace tessaluna::backend {

struct Color {
  double red = 0, green = 0, blue = 0, alpha = 1;
  std::string_view name = {};  // of a named color, for recordings; its text lives forever. Empty for a made one
  bool isSystem = false;  // from the desktop's palette, by itself or changed: what follows the palette leaves it as it is

  friend bool operator==(const Color& a, const Color& b) {
    return a.red == b.red && a.green == b.green && a.blue == b.blue && a.alpha == b.alpha;
  }
};

enum class LineCap : std::uint8_t { Butt = 0, Round = 1, Square = 2 };
enum class LineJoin : std::uint8_t { Miter = 0, Round = 1, Bevel = 2 };

struct StrokeStyle {
  double width = 1;
  LineCap cap = LineCap::Butt;
  LineJoin join = LineJoin::Miter;
  double miterLimit = 10;             // beyond it a miter join becomes a bevel
  std::span<const double> dash = {};  // lengths in points, on and off in turn; empty for a solid line
  double dashPhase = 0;
};

// Drawn under what is painted, with the same blend mode and before it. It comes from the whole shape before clipping,
// also of a shape that lies wholly outside the clip. Offset and blur are in base space and do not follow the current
// transform; the blur is a Gaussian with a standard deviation of blur / 2.
struct Shadow {
  CGSize offset;
  double blur = 0;
  std::optional<Color> color;  // absent: no shadow
};

// The Porter-Duff operators; the values are those of CGBlendMode. R is the result, S the source with its coverage,
// D the destination. An operator that changes D where S is empty (SourceIn, SourceOut, DestinationIn, DestinationAtop)
// works on all pixels inside the clip, not only under the shape. Clear and Copy stay within the shape: by coverage c,
// R = c op(S, D) + (1 - c) D.
enum class BlendMode : std::uint8_t {
  Normal = 0,            // R = S + D (1 - Sa)
  Clear = 16,            // R = 0
  Copy = 17,             // R = S
  SourceIn = 18,         // R = S Da
  SourceOut = 19,        // R = S (1 - Da)
  SourceAtop = 20,       // R = S Da + D (1 - Sa)
  DestinationOver = 21,  // R = S (1 - Da) + D
  DestinationIn = 22,    // R = D Sa
  DestinationOut = 23,   // R = D (1 - Sa)
  DestinationAtop = 24,  // R = S (1 - Da) + D Sa
  Xor = 25,              // R = S (1 - Da) + D (1 - Sa)
  PlusLighter = 27,      // R = min(1, S + D)
};

struct GradientStop {
  double location = 0;  // 0 at the start of the axis, 1 at its end, not decreasing from stop to stop
  Color color;
};

// Along the axis from start to end, in the current space; before the first and after the last stop their colors continue.
struct LinearGradient {
  std::span<const GradientStop> stops;
  CGPoint start, end;
  double angle = 0;  // in degrees, as it was asked for; what it means is in start and end
};

class Canvas {
 public:
  virtual ~Canvas() = default;

  // Save and restore cover clip, transform, colors, shadow, blend mode and alpha. A restore without a save does nothing.
  virtual void saveState() = 0;
  virtual void restoreState() = 0;

  // Space and clip. Clips are antialiased by coverage and only ever shrink.
  virtual void concat(const CGAffineTransform& transform) = 0;
  virtual void clipRect(CGRect rect) = 0;
  virtual void clipPath(const Path& path, FillRule rule) = 0;

  // How the following operations paint. At the start: opaque black, no shadow, alpha 1, normal.
  virtual void setFillColor(const Color& color) = 0;
  virtual void setStrokeColor(const Color& color) = 0;
  virtual void setShadow(const Shadow& shadow) = 0;
  virtual void setAlpha(double alpha) = 0;
  virtual void setBlendMode(BlendMode mode) = 0;

  // A layer starts empty, with alpha 1, normal blending and no shadow. When it ends it is composited as one picture with
  // the alpha, blend mode and shadow that were in force when it began: first its shadow, then itself. Those come back, and
  // with them the rest of the state; an end without a begin does nothing.
  virtual void beginTransparencyLayer() = 0;
  virtual void endTransparencyLayer() = 0;

  virtual void fillPath(const Path& path, FillRule rule) = 0;
  virtual void strokePath(const Path& path, const StrokeStyle& style) = 0;
  virtual void fillGradient(const Path& path, FillRule rule, const LinearGradient& gradient) = 0;
  // In the fill color, the run's positions counted from the origin. Stands upright in a space with y up.
  virtual void drawGlyphs(const GlyphRun& run, CGPoint origin) = 0;
  // The source rectangle, in pixels from the upper left corner, scaled into the destination with its first row at the
  // destination's greatest y. What is shrunk is averaged, what is enlarged is interpolated.
  virtual void drawImage(const ImagePixels& image, CGRect source, CGRect destination) = 0;
};

}  // namespace tessaluna::backend
