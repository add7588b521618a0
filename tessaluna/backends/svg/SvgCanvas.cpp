#include "tessaluna/backends/svg/SvgCanvas.h"

#include <algorithm>
#include <cmath>

#include "tessaluna/platform/foundation/numberText.h"
#include "tessaluna/platform/foundation/stopProgram.h"

namespace tessaluna::backend::svg {

namespace {

using platform::numberText;

double clamp01(double value) { return value > 0 ? std::min(value, 1.0) : 0; }  // NaN is 0

// A hundred-thousandth of a point is beyond all display; it keeps the rounding errors of conversions out of the file.
std::string number(double value) { return numberText(std::round(value * 1e5) / 1e5); }

std::string attribute(std::string_view name, const std::string& value) {
  return ' ' + std::string(name) + "=\"" + value + "\"";
}

std::string reference(char kind, int id) { return std::string("url(#") + kind + std::to_string(id) + ")"; }

std::string pointText(const CGAffineTransform& transform, CGPoint point) {
  const CGPoint p = transform.apply(point);
  return number(p.x) + " " + number(p.y);
}

std::string pathData(const Path& path, const CGAffineTransform& transform) {
  std::string data;
  const CGPoint* p = path.points().data();
  for (const PathVerb verb : path.verbs()) {
    switch (verb) {
      case PathVerb::Move: data += 'M' + pointText(transform, p[0]); break;
      case PathVerb::Line: data += 'L' + pointText(transform, p[0]); break;
      case PathVerb::Curve:
        data += 'C' + pointText(transform, p[0]) + ' ' + pointText(transform, p[1]) + ' ' + pointText(transform, p[2]);
        break;
      case PathVerb::Close: data += "Z"; break;
    }
    p += pointCount(verb);
  }
  return data;
}

std::string colorText(const Color& color) {
  std::string text = "#";
  for (const double component : {color.red, color.green, color.blue}) {
    constexpr char digits[] = "0123456789abcdef";
    const int value = static_cast<int>(std::lround(clamp01(component) * 255));
    text += digits[value / 16];
    text += digits[value % 16];
  }
  return text;
}

std::string paintAttributes(std::string_view kind, const Color& color) {
  std::string text = attribute(kind, colorText(color));
  if (color.alpha != 1) text += attribute(std::string(kind) + "-opacity", number(clamp01(color.alpha)));
  return text;
}

std::string ruleAttribute(std::string_view name, FillRule rule) {
  return rule == FillRule::EvenOdd ? attribute(name, "evenodd") : "";
}

bool isFinite(CGPoint point) { return std::isfinite(point.x) && std::isfinite(point.y); }

bool isFinite(const Path& path, const CGAffineTransform& transform) {
  return std::all_of(path.points().begin(), path.points().end(),
                     [&](CGPoint point) { return isFinite(transform.apply(point)); });
}

std::string matrixText(const CGAffineTransform& t) {
  std::string text = "matrix(";
  for (const double value : {t.a, t.b, t.c, t.d, t.tx, t.ty}) text += numberText(value) + " ";
  text.back() = ')';
  return text;
}

const char* nameOf(BlendMode mode) {
  switch (mode) {
    case BlendMode::Normal: return "normal";
    case BlendMode::Clear: return "clear";
    case BlendMode::Copy: return "copy";
    case BlendMode::SourceIn: return "source in";
    case BlendMode::SourceOut: return "source out";
    case BlendMode::SourceAtop: return "source atop";
    case BlendMode::DestinationOver: return "destination over";
    case BlendMode::DestinationIn: return "destination in";
    case BlendMode::DestinationOut: return "destination out";
    case BlendMode::DestinationAtop: return "destination atop";
    case BlendMode::Xor: return "xor";
    case BlendMode::PlusLighter: return "plus lighter";
  }
  platform::unreachable();
}

// A pattern that makes no sense is a solid line.
bool isUsable(std::span<const double> dash) {
  double total = 0;
  for (const double length : dash) {
    if (!(length >= 0)) return false;
    total += length;
  }
  return total > 0 && std::isfinite(total);
}

// Whether circles stay circles.
bool keepsShape(const CGAffineTransform& t) {
  const double across = std::hypot(t.a, t.b), along = std::hypot(t.c, t.d);
  return std::abs(across - along) < 1e-9 * across && std::abs(t.a * t.c + t.b * t.d) < 1e-9 * across * along;
}

}  // namespace

SvgCanvas::SvgCanvas(CGRect area, double scale) : area_(area), scale_(scale) {
  state_.transform = {1, 0, 0, -1, -area.origin.x, CGRectGetMaxY(area)};
  layers_.emplace_back();
}

std::string SvgCanvas::document() const {
  if (layers_.size() > 1) {
    SvgCanvas closed = *this;
    while (closed.layers_.size() > 1) closed.endTransparencyLayer();
    return closed.document();
  }
  const std::string width = number(area_.size.width), height = number(area_.size.height);
  std::string text = "<svg xmlns=\"http://www.w3.org/2000/svg\"" + attribute("width", number(area_.size.width * scale_)) +
                     attribute("height", number(area_.size.height * scale_)) +
                     attribute("viewBox", "0 0 " + width + " " + height) + ">\n";
  if (!definitions_.empty()) text += "<defs>\n" + definitions_ + "</defs>\n";
  return text + layers_.front().body + "</svg>\n";
}

void SvgCanvas::fail(std::string what) {
  if (!error_) error_ = "SVG cannot say " + std::move(what);
}

void SvgCanvas::saveState() { saved_.push_back(state_); }

void SvgCanvas::restoreState() {
  if (saved_.size() <= layers_.back().savedCount) return;
  state_ = saved_.back();
  saved_.pop_back();
}

void SvgCanvas::concat(const CGAffineTransform& transform) { state_.transform = transform.then(state_.transform); }

void SvgCanvas::clipRect(CGRect rect) { clipPath(Path::rect(rect), FillRule::NonZero); }

void SvgCanvas::clipPath(const Path& path, FillRule rule) {
  if (!isFinite(path, state_.transform)) return fail("a point that is not finite");
  const int id = ++lastId_;
  definitions_ += "<clipPath" + attribute("id", 'c' + std::to_string(id)) + "><path" +
                  attribute("d", pathData(path, state_.transform)) + ruleAttribute("clip-rule", rule) + "/></clipPath>\n";
  state_.clips.push_back(id);
}

// A filter that puts the shadow under what it is applied to, or with `keepsOutside` leaves of that only what the shadow does
// not cover. Its area is the whole picture and then some, for what lies beside the picture throws a shadow, too.
int SvgCanvas::addShadowFilter(const Shadow& shadow, bool keepsOutside) {
  const int id = ++lastId_;
  const double blur = shadow.blur > 0 ? shadow.blur : 0;
  const double reach = 3 * blur + std::abs(shadow.offset.width) + std::abs(shadow.offset.height) + 1;
  definitions_ += "<filter" + attribute("id", 'f' + std::to_string(id)) + attribute("filterUnits", "userSpaceOnUse") +
                  attribute("x", number(-reach)) + attribute("y", number(-reach)) +
                  attribute("width", number(area_.size.width + 2 * reach)) +
                  attribute("height", number(area_.size.height + 2 * reach)) +
                  attribute("color-interpolation-filters", "sRGB") + ">";
  // The last step of the shadow's shape carries its name.
  const bool isBlurred = blur > 0;
  definitions_ += "<feOffset in=\"SourceAlpha\"" + attribute("dx", number(shadow.offset.width)) +
                  attribute("dy", number(-shadow.offset.height)) + (isBlurred ? "" : attribute("result", "shape")) + "/>";
  if (isBlurred)
    definitions_ += "<feGaussianBlur" + attribute("stdDeviation", number(blur / 2)) + attribute("result", "shape") + "/>";
  definitions_ += "<feFlood" + attribute("flood-color", colorText(*shadow.color)) +
                  attribute("flood-opacity", number(clamp01(shadow.color->alpha))) +
                  "/><feComposite in2=\"shape\" operator=\"in\" result=\"shadow\"/>";
  definitions_ += keepsOutside ? "<feComposite in=\"SourceGraphic\" in2=\"shadow\" operator=\"out\"/>"
                               : "<feMerge><feMergeNode in=\"shadow\"/><feMergeNode in=\"SourceGraphic\"/></feMerge>";
  definitions_ += "</filter>\n";
  return id;
}

std::optional<SvgCanvas::Composite> SvgCanvas::compositeFor(const State& state, bool coversOpaquely) {
  const bool isFirst = layers_.back().isEmpty;
  const Shadow& shadow = state.shadow;
  const bool hasShadow = shadow.color && shadow.color->alpha > 0 && !std::isinf(shadow.blur) &&
                         std::isfinite(shadow.offset.width) && std::isfinite(shadow.offset.height);
  bool keepsOutside = false;
  switch (state.mode) {
    case BlendMode::Normal: break;
    case BlendMode::SourceOut:
      if (!isFirst) {
        fail("\"source out\" over something that is already in its layer");
        return std::nullopt;
      }
      // Into an empty layer the shadow goes as it is, and then the shape itself leaves only where the shadow is not.
      keepsOutside = true;
      break;
    case BlendMode::Copy:
      if (!isFirst && !coversOpaquely) {
        fail("\"copy\" of something translucent over something that is already there");
        return std::nullopt;
      }
      break;
    default: fail(std::string("the blend mode \"") + nameOf(state.mode) + "\""); return std::nullopt;
  }
  Composite result;
  const auto open = [&](const std::string& attributes) {
    result.open += "<g" + attributes + ">";
    result.close = "</g>" + result.close;
  };
  // A group for each: not every program cuts a clip path by another one.
  for (const int clip : state.clips) open(attribute("clip-path", reference('c', clip)));
  // The alpha is in the shape that throws the shadow: each of the two is drawn with it.
  if (hasShadow) open(attribute("filter", reference('f', addShadowFilter(shadow, keepsOutside))));
  if (state.alpha != 1) open(attribute("opacity", number(clamp01(state.alpha))));
  return result;
}

void SvgCanvas::paint(const std::string& element, bool coversOpaquely) {
  const std::optional<Composite> composite = compositeFor(state_, coversOpaquely);
  if (!composite) return;
  layers_.back().body += composite->open + element + composite->close + "\n";
  layers_.back().isEmpty = false;
}

void SvgCanvas::beginTransparencyLayer() {
  Layer layer;
  layer.outside = state_;
  layer.savedCount = saved_.size();
  layers_.push_back(std::move(layer));
  state_.alpha = 1;
  state_.mode = BlendMode::Normal;
  state_.shadow = {};
  state_.clips.clear();  // they cut the layer as a whole, when it ends
}

void SvgCanvas::endTransparencyLayer() {
  if (layers_.size() == 1) return;
  const Layer layer = std::move(layers_.back());
  layers_.pop_back();
  saved_.resize(layer.savedCount);
  state_ = layer.outside;
  const std::optional<Composite> composite = compositeFor(state_, false);
  if (!composite || layer.body.empty()) return;
  // As one picture: what lies over each other in it does not add up under its alpha.
  layers_.back().body += composite->open + "<g>\n" + layer.body + "</g>" + composite->close + "\n";
  layers_.back().isEmpty = false;
}

void SvgCanvas::fillPath(const Path& path, FillRule rule) {
  if (!isFinite(path, state_.transform)) return fail("a point that is not finite");
  fillInOneColor(path, rule, state_.fill);
}

void SvgCanvas::fillInOneColor(const Path& path, FillRule rule, const Color& color) {
  paint("<path" + attribute("d", pathData(path, state_.transform)) + paintAttributes("fill", color) +
            ruleAttribute("fill-rule", rule) + "/>",
        color.alpha >= 1 && state_.alpha >= 1);
}

void SvgCanvas::strokePath(const Path& path, const StrokeStyle& style) {
  if (!isFinite(path, state_.transform)) return fail("a point that is not finite");
  if (!(style.width >= 0)) return;
  if (!std::isfinite(style.width)) return fail("a line of infinite width");
  // A width of 0 means the thinnest visible line: one pixel, whatever the space.
  const bool isThinnest = style.width == 0;
  // Where the space is not stretched the line can be written in the file's own.
  const bool isPlain = isThinnest || keepsShape(state_.transform);
  const double scale = isPlain ? std::hypot(state_.transform.a, state_.transform.b) : 1;
  std::string element = "<path" + attribute("d", pathData(path, isPlain ? state_.transform : CGAffineTransform{})) +
                        attribute("fill", "none") + paintAttributes("stroke", state_.stroke);
  if (!isPlain) {
    element += attribute("transform", matrixText(state_.transform));
  }
  element += attribute("stroke-width", number(isThinnest ? 1 / scale_ : style.width * scale));
  if (style.cap != LineCap::Butt) element += attribute("stroke-linecap", style.cap == LineCap::Round ? "round" : "square");
  // A limit below 1 lets no corner have a miter, and SVG has none such.
  const bool hasMiter = style.join == LineJoin::Miter && style.miterLimit >= 1;
  if (hasMiter) element += attribute("stroke-miterlimit", number(std::min(style.miterLimit, 1000.0)));
  else element += attribute("stroke-linejoin", style.join == LineJoin::Round ? "round" : "bevel");
  if (isUsable(style.dash)) {
    std::string dash;
    for (const double length : style.dash) {
      if (!dash.empty()) dash += ' ';
      dash += number(length * scale);
    }
    element += attribute("stroke-dasharray", dash);
    if (style.dashPhase != 0 && std::isfinite(style.dashPhase))
      element += attribute("stroke-dashoffset", number(style.dashPhase * scale));
  }
  paint(element + "/>", false);
}

void SvgCanvas::fillGradient(const Path& path, FillRule rule, const LinearGradient& gradient) {
  if (!isFinite(path, state_.transform)) return fail("a point that is not finite");
  if (!isFinite(gradient.start) || !isFinite(gradient.end)) return fail("a point that is not finite");
  const auto isUsableStop = [](const GradientStop& stop) { return std::isfinite(stop.location); };
  const auto lastStop = std::find_if(gradient.stops.rbegin(), gradient.stops.rend(), isUsableStop);
  if (lastStop == gradient.stops.rend()) return;
  // On an axis without length every place lies after its end. Not every program paints that.
  if (gradient.start == gradient.end) return fillInOneColor(path, rule, lastStop->color);
  const int id = ++lastId_;
  // A stretched space leans the lines of one color against their axis, which only the space itself can express.
  const bool isPlain = keepsShape(state_.transform);
  const CGAffineTransform space = isPlain ? state_.transform : CGAffineTransform{};
  const CGPoint start = space.apply(gradient.start), end = space.apply(gradient.end);
  definitions_ +=
      "<linearGradient" + attribute("id", 'g' + std::to_string(id)) + attribute("gradientUnits", "userSpaceOnUse") +
      (isPlain ? "" : attribute("gradientTransform", matrixText(state_.transform))) + attribute("x1", number(start.x)) +
      attribute("y1", number(start.y)) + attribute("x2", number(end.x)) + attribute("y2", number(end.y)) + ">";
  for (const GradientStop& stop : gradient.stops) {
    if (!isUsableStop(stop)) continue;
    definitions_ += "<stop" + attribute("offset", number(stop.location)) + attribute("stop-color", colorText(stop.color));
    if (stop.color.alpha != 1) definitions_ += attribute("stop-opacity", number(clamp01(stop.color.alpha)));
    definitions_ += "/>";
  }
  definitions_ += "</linearGradient>\n";
  paint("<path" + attribute("d", pathData(path, state_.transform)) + attribute("fill", reference('g', id)) +
            ruleAttribute("fill-rule", rule) + "/>",
        false);
}

void SvgCanvas::drawGlyphs(const GlyphRun& run, CGPoint origin) {
  std::string data;
  for (std::size_t i = 0; i < run.glyphs.size(); ++i) {
    const CGPoint place{origin.x + run.positions[i].x, origin.y + run.positions[i].y};
    if (!isFinite(state_.transform.apply(place))) return fail("a point that is not finite");
    data += pathData(run.typeface->outline(run.glyphs[i]),
                     CGAffineTransform::translation(place.x, place.y).then(state_.transform));
  }
  if (!data.empty()) paint("<path" + attribute("d", data) + paintAttributes("fill", state_.fill) + "/>", false);
}

void SvgCanvas::drawImage(const ImagePixels&, CGRect, CGRect) { fail("an image of pixels"); }

}  // namespace tessaluna::backend::svg
