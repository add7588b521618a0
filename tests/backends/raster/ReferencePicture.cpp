#include "tests/backends/raster/ReferencePicture.h"

#include <cmath>
#include <sstream>

#include <gtest/gtest.h>

namespace tessaluna::backend::raster::test {

namespace {

constexpr double inside = 1.0, onEdges = 3.0;  // of 255
// Stored values are whole numbers; a true value between two of them may also be this far from either.
constexpr double slack = 1e-3;

Channels operator*(Channels c, double f) { return {c.red * f, c.green * f, c.blue * f, c.alpha * f}; }
Channels operator+(Channels a, Channels b) { return {a.red + b.red, a.green + b.green, a.blue + b.blue, a.alpha + b.alpha}; }
Channels premultiplied(const Color& c, double alpha) { return Channels{c.red, c.green, c.blue, 1} * (c.alpha * alpha); }

// R = S f + D g for the operators' factors.
Channels composed(BlendMode mode, Channels s, Channels d) {
  switch (mode) {
    case BlendMode::Normal: return s + d * (1 - s.alpha);
    case BlendMode::Clear: return {};
    case BlendMode::Copy: return s;
    case BlendMode::SourceIn: return s * d.alpha;
    case BlendMode::SourceOut: return s * (1 - d.alpha);
    case BlendMode::SourceAtop: return s * d.alpha + d * (1 - s.alpha);
    case BlendMode::DestinationOver: return s * (1 - d.alpha) + d;
    case BlendMode::DestinationIn: return d * s.alpha;
    case BlendMode::DestinationOut: return d * (1 - s.alpha);
    case BlendMode::DestinationAtop: return s * (1 - d.alpha) + d * s.alpha;
    case BlendMode::Xor: return s * (1 - d.alpha) + d * (1 - s.alpha);
    case BlendMode::PlusLighter: {
      const Channels sum = s + d;
      return {std::min(1.0, sum.red), std::min(1.0, sum.green), std::min(1.0, sum.blue), std::min(1.0, sum.alpha)};
    }
  }
  return {};
}

std::string text(const double (&c)[4]) {
  std::ostringstream out;
  out << std::fixed;
  out.precision(2);
  out << "(r " << c[0] << ", g " << c[1] << ", b " << c[2] << ", a " << c[3] << ")";
  return out.str();
}

}  // namespace

ReferencePicture::ReferencePicture(double points, double scale)
    : side(int(std::lround(points * scale))),
      scale(scale),
      pixels_(std::size_t(side) * std::size_t(side)),
      isEdge_(pixels_.size()) {}

CGAffineTransform ReferencePicture::toDevice() const { return {scale, 0, 0, -scale, 0, double(side)}; }

Coverage ReferencePicture::fill(const Path& path, FillRule rule) const { return fill(path, rule, {}); }

Coverage ReferencePicture::fill(const Path& path, FillRule rule, const CGAffineTransform& transform) const {
  return Coverage(Region::filled(path, rule, transform.then(toDevice())), side, side);
}

Coverage ReferencePicture::stroke(const Path& path, const StrokeStyle& style, const CGAffineTransform& transform) const {
  return Coverage(Region::stroked(path, style, transform.then(toDevice())), side, side);
}

Coverage ReferencePicture::shadow(const std::function<Region(const CGAffineTransform&)>& region,
                                  const Shadow& shadow) const {
  // The margin is so wide that nothing beyond it is visible in the picture.
  const double deviation = shadow.blur * scale / 2;
  const int margin = int(std::ceil(deviation * 6));
  const CGAffineTransform moved = CGAffineTransform::translation(shadow.offset.width, shadow.offset.height)
                                      .then(toDevice())
                                      .then(CGAffineTransform::translation(margin, margin));
  const Coverage all(region(moved), side + 2 * margin, side + 2 * margin);
  return all.blurred(deviation).cropped(margin, margin, side, side);
}

Coverage ReferencePicture::everywhere() const {
  Coverage all(side, side);
  all.values.assign(all.values.size(), 1.0);
  return all;
}

void ReferencePicture::paintPixel(int x, int y, Channels source, double coverage, const PaintStyle& style) {
  Channels& d = at(x, y);
  const double clip = style.clip ? style.clip->at(x, y) : 1;
  const auto isPartial = [](double v) { return v > 1e-4 && v < 1 - 1e-4; };
  if (isPartial(coverage) || isPartial(clip)) isEdge_[std::size_t(y) * std::size_t(side) + std::size_t(x)] = 1;
  if (style.mode == BlendMode::PlusLighter) {
    // Only for this operator does it matter that a clip applies to the source and not to the result.
    d = composed(style.mode, source * coverage * clip, d);
    return;
  }
  const bool isLocal = style.mode == BlendMode::Clear || style.mode == BlendMode::Copy;
  const Channels r =
      isLocal ? composed(style.mode, source, d) * coverage + d * (1 - coverage) : composed(style.mode, source * coverage, d);
  d = r * clip + d * (1 - clip);
}

void ReferencePicture::paint(const Color& color, const Coverage& coverage, const PaintStyle& style) {
  paint([&](CGPoint) { return color; }, coverage, style);
}

void ReferencePicture::paint(const std::function<Color(CGPoint)>& colorAt, const Coverage& coverage,
                             const PaintStyle& style) {
  const CGAffineTransform toBase = *toDevice().inverted();
  for (int y = 0; y < side; ++y) {
    for (int x = 0; x < side; ++x) {
      const Channels source = premultiplied(colorAt(toBase.apply({x + 0.5, y + 0.5})), style.alpha);
      paintPixel(x, y, source, coverage.at(x, y), style);
    }
  }
}

void ReferencePicture::paint(const ReferencePicture& layer, const PaintStyle& style) {
  for (int y = 0; y < side; ++y) {
    for (int x = 0; x < side; ++x) {
      const std::size_t index = std::size_t(y) * std::size_t(side) + std::size_t(x);
      paintPixel(x, y, layer.pixels_[index] * style.alpha, 1, style);
      if (layer.isEdge_[index]) isEdge_[index] = 1;
    }
  }
}

std::string ReferencePicture::difference(const Bitmap& bitmap) const {
  if (bitmap.width() != side || bitmap.height() != side) return "the bitmap has another size";
  double worst = 0;
  std::string report;
  int wrong = 0;
  for (int y = 0; y < side; ++y) {
    for (int x = 0; x < side; ++x) {
      const std::size_t index = std::size_t(y) * std::size_t(side) + std::size_t(x);
      const std::uint32_t p = bitmap.pixel(x, y);
      const Channels& c = pixels_[index];
      const double is[4] = {double(p >> 16 & 255), double(p >> 8 & 255), double(p & 255), double(p >> 24)};
      const double wanted[4] = {c.red * 255, c.green * 255, c.blue * 255, c.alpha * 255};
      const double allowed = isEdge_[index] ? onEdges : inside;
      double off = 0;
      for (int i = 0; i < 4; ++i) off = std::max(off, std::abs(is[i] - wanted[i]));
      if (off > allowed + slack) ++wrong;
      if (off / allowed > worst) {
        worst = off / allowed;
        std::ostringstream out;
        out << "column " << x << ", row " << y << (isEdge_[index] ? ", on an edge," : ", inside,") << " is " << text(is)
            << " and should be " << text(wanted) << ", off by " << off << " where " << allowed << " is allowed";
        report = out.str();
      }
    }
  }
  if (wrong == 0) return {};
  return report + "; " + std::to_string(wrong) + " of " + std::to_string(side * side) + " pixels are wrong";
}

void expectRight(const Drawing& drawing) {
  for (const double scale : {1.0, 1.25, 1.5, 2.0, 3.0}) {
    ReferencePicture reference(drawing.points, scale);
    drawing.expect(reference);
    std::optional<Bitmap> bitmap = Bitmap::make(reference.side, reference.side);
    ASSERT_TRUE(bitmap);
    RasterCanvas canvas(*bitmap, {.scale = scale});
    drawing.draw(canvas);
    EXPECT_EQ(reference.difference(*bitmap), "") << "at scale " << scale;
  }
}

}  // namespace tessaluna::backend::raster::test
