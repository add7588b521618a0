#include "tessaluna/backends/recording/RecordingCanvas.h"

#include <cmath>
#include <initializer_list>

#include "tessaluna/platform/foundation/numberText.h"
#include "tessaluna/platform/foundation/stopProgram.h"

namespace tessaluna::backend::recording {

namespace {

// A number that is not finite has no other text in JSON.
std::string numberText(double number) { return std::isfinite(number) ? platform::numberText(number) : "null"; }

std::string numbers(std::span<const double> values) {
  std::string text = "[";
  for (const double value : values) {
    if (text.size() > 1) text += ',';
    text += numberText(value);
  }
  return text + "]";
}

std::string numbers(std::initializer_list<double> values) { return numbers(std::span(values.begin(), values.size())); }

std::string rectText(CGRect r) { return numbers({r.origin.x, r.origin.y, r.size.width, r.size.height}); }

std::string colorText(const Color& color) { return numbers({color.red, color.green, color.blue, color.alpha}); }

std::string pointText(CGPoint point) { return numberText(point.x) + "," + numberText(point.y); }

std::string pathText(const Path& path) {
  std::string text = "[";
  const CGPoint* point = path.points().data();
  for (const PathVerb verb : path.verbs()) {
    if (text.size() > 1) text += ',';
    switch (verb) {
      case PathVerb::Move: text += "[\"M\"," + pointText(point[0]) + "]"; break;
      case PathVerb::Line: text += "[\"L\"," + pointText(point[0]) + "]"; break;
      case PathVerb::Curve:
        text += "[\"C\"," + pointText(point[2]) + "," + pointText(point[0]) + "," + pointText(point[1]) + "]";
        break;
      case PathVerb::Close: text += "[\"Z\"]"; break;
    }
    point += pointCount(verb);
  }
  return text + "]";
}

std::string shapeText(const PathShape& shape) {
  const CGRect& r = shape.rect;
  const std::string box = pointText(r.origin) + "," + numberText(r.size.width) + "," + numberText(r.size.height);
  switch (shape.kind) {
    case PathShape::Kind::None: return "";
    case PathShape::Kind::Rect: return ",\"shape\":[\"rect\"," + box + "]";
    case PathShape::Kind::Oval: return ",\"shape\":[\"oval\"," + box + "]";
    case PathShape::Kind::RoundedRect:
      return ",\"shape\":[\"roundedRect\"," + box + "," + numberText(shape.radii.width) + "," +
             numberText(shape.radii.height) + "]";
  }
  platform::unreachable();
}

// The fields of a path: the path, then how it is filled where that is not the usual way, then the call that made it.
std::string pathFields(const Path& path, FillRule rule = FillRule::NonZero) {
  return ",\"path\":" + pathText(path) + (rule == FillRule::EvenOdd ? ",\"rule\":\"evenOdd\"" : "") +
         shapeText(path.shape());
}

const char* capText(LineCap cap) {
  switch (cap) {
    case LineCap::Butt: return "butt";
    case LineCap::Round: return "round";
    case LineCap::Square: return "square";
  }
  platform::unreachable();
}

const char* joinText(LineJoin join) {
  switch (join) {
    case LineJoin::Miter: return "miter";
    case LineJoin::Round: return "round";
    case LineJoin::Bevel: return "bevel";
  }
  platform::unreachable();
}

const char* blendModeText(BlendMode mode) {
  switch (mode) {
    case BlendMode::Normal: return "normal";
    case BlendMode::Clear: return "clear";
    case BlendMode::Copy: return "copy";
    case BlendMode::SourceIn: return "sourceIn";
    case BlendMode::SourceOut: return "sourceOut";
    case BlendMode::SourceAtop: return "sourceAtop";
    case BlendMode::DestinationOver: return "destinationOver";
    case BlendMode::DestinationIn: return "destinationIn";
    case BlendMode::DestinationOut: return "destinationOut";
    case BlendMode::DestinationAtop: return "destinationAtop";
    case BlendMode::Xor: return "xor";
    case BlendMode::PlusLighter: return "plusLighter";
  }
  platform::unreachable();
}

std::string operation(std::string_view name, const std::string& fields = "") {
  return "{\"op\":\"" + std::string(name) + "\"" + fields + "}";
}

std::string colorFields(const Color& color) {
  std::string fields = ",\"color\":" + colorText(color);
  if (!color.name.empty()) fields += ",\"named\":\"" + std::string(color.name) + "\"";
  return fields;
}

}  // namespace

void RecordingCanvas::saveState() { lines_.push_back(operation("save")); }
void RecordingCanvas::restoreState() { lines_.push_back(operation("restore")); }

void RecordingCanvas::concat(const CGAffineTransform& t) {
  lines_.push_back(operation("concat", ",\"transform\":" + numbers({t.a, t.b, t.c, t.d, t.tx, t.ty})));
}

void RecordingCanvas::clipRect(CGRect r) { lines_.push_back(operation("clipRect", ",\"rect\":" + rectText(r))); }

void RecordingCanvas::clipPath(const Path& path, FillRule rule) {
  lines_.push_back(operation("clipPath", pathFields(path, rule)));
}

void RecordingCanvas::setFillColor(const Color& color) { lines_.push_back(operation("setFillColor", colorFields(color))); }

void RecordingCanvas::setStrokeColor(const Color& color) {
  lines_.push_back(operation("setStrokeColor", colorFields(color)));
}

void RecordingCanvas::setShadow(const Shadow& shadow) {
  lines_.push_back(operation("setShadow", ",\"offset\":" + numbers({shadow.offset.width, shadow.offset.height}) +
                                              ",\"blur\":" + numberText(shadow.blur) +
                                              ",\"color\":" + (shadow.color ? colorText(*shadow.color) : "null")));
}

void RecordingCanvas::setAlpha(double alpha) { lines_.push_back(operation("setAlpha", ",\"alpha\":" + numberText(alpha))); }

void RecordingCanvas::setBlendMode(BlendMode mode) {
  lines_.push_back(operation("setBlendMode", ",\"mode\":\"" + std::string(blendModeText(mode)) + "\""));
}

void RecordingCanvas::beginTransparencyLayer() { lines_.push_back(operation("beginTransparencyLayer")); }
void RecordingCanvas::endTransparencyLayer() { lines_.push_back(operation("endTransparencyLayer")); }

void RecordingCanvas::fillPath(const Path& path, FillRule rule) {
  lines_.push_back(operation("fill", pathFields(path, rule)));
}

void RecordingCanvas::strokePath(const Path& path, const StrokeStyle& style) {
  lines_.push_back(operation(
      "stroke", pathFields(path) + ",\"lineWidth\":" + numberText(style.width) + ",\"cap\":\"" + capText(style.cap) +
                    "\",\"join\":\"" + joinText(style.join) + "\",\"miterLimit\":" + numberText(style.miterLimit) +
                    ",\"dash\":" + numbers(style.dash) + ",\"phase\":" + numberText(style.dashPhase)));
}

void RecordingCanvas::fillGradient(const Path& path, FillRule rule, const LinearGradient& gradient) {
  std::string stops;
  for (const GradientStop& stop : gradient.stops) {
    if (!stops.empty()) stops += ',';
    stops += '[' + numberText(stop.location) + ',' + colorText(stop.color) + ']';
  }
  lines_.push_back(
      operation("gradient", pathFields(path, rule) + ",\"stops\":[" + stops + "],\"angle\":" + numberText(gradient.angle)));
}

void RecordingCanvas::drawImage(const ImagePixels& image, CGRect source, CGRect destination) {
  lines_.push_back(operation("image", ",\"pixels\":" + numbers({double(image.width), double(image.height)}) +
                                          ",\"from\":" + rectText(source) + ",\"rect\":" + rectText(destination)));
}

void RecordingCanvas::drawGlyphs(const GlyphRun& run, CGPoint origin) {
  std::string glyphs;
  for (std::size_t i = 0; i < run.glyphs.size(); ++i) {
    if (i > 0) glyphs += ',';
    const CGPoint place{origin.x + run.positions[i].x, origin.y + run.positions[i].y};
    glyphs += '[' + numberText(run.glyphs[i]) + ',' + pointText(place) + ']';
  }
  lines_.push_back(operation("glyphs", ",\"glyphs\":[" + glyphs + "]"));
}

}  // namespace tessaluna::backend::recording
