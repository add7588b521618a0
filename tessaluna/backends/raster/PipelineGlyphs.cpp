#include "tessaluna/backends/raster/Pipeline.h"

namespace tessaluna::backend::raster {

namespace {

// The scale of a transform that keeps text upright and undistorted; 0 for any other transform.
double uprightScale(const CGAffineTransform& t) {
  const bool isUpright = t.b == 0 && t.c == 0 && t.a > 0 && std::abs(t.a + t.d) <= 1e-9 * t.a;
  return isUpright ? t.a : 0;
}

// The pixel's channels times factor / 255, rounded to the nearest.
std::uint32_t scaled(std::uint32_t pixel, std::uint32_t factor) {
  constexpr std::uint32_t everyOther = 0x00ff00ff, half = 0x00800080;
  std::uint32_t even = (pixel & everyOther) * factor + half, odd = (pixel >> 8 & everyOther) * factor + half;
  even = (even + (even >> 8 & everyOther)) >> 8 & everyOther;
  odd = (odd + (odd >> 8 & everyOther)) & ~everyOther;
  return even | odd;
}

// Blends one color over 8-bit pixels without floats, which is enough for most text.
void blendGlyph(const GlyphMask& mask, PixelOffset moved, const PixelRect& painted, std::uint32_t color, Bitmap& bitmap) {
  const bool isOpaque = color >> 24 == 255;
  for (int y = painted.top; y < painted.bottom; ++y) {
    const std::uint8_t* coverage = mask.row(y - moved.y) + (painted.left - moved.x - mask.box.left);
    std::uint32_t* pixels = bitmap.row(y) + painted.left;
    for (int i = 0; i < painted.width(); ++i) {
      if (coverage[i] == 0) continue;
      if (coverage[i] == 255 && isOpaque) {
        pixels[i] = color;
        continue;
      }
      const std::uint32_t source = scaled(color, coverage[i]);
      pixels[i] = source + scaled(pixels[i], 255 - (source >> 24));
    }
  }
}

}  // namespace

void RasterCanvas::Pipeline::drawGlyphs(const GlyphRun& run, CGPoint origin) {
  const PixelRect& clip = state_.clip.box;
  if (clip.isEmpty() || !run.typeface) return;
  const double scale = uprightScale(state_.toDevice);
  // A shadow belongs to the whole run, and a turned or stretched glyph is drawn like any other shape.
  if (scale == 0 || castShadow() || state_.blendMode != BlendMode::Normal) return fillGlyphs(run, origin);

  const Source source{.color = premultiplied(state_.fillColor, state_.alpha)};
  const bool isPlain = paintsPlainly(source);
  std::uint32_t pixel = 0;
  storeRow(&source.color, &pixel, 1);
  for (std::size_t i = 0; i < run.glyphs.size(); ++i) {
    const CGPoint place = state_.toDevice.apply({origin.x + run.positions[i].x, origin.y + run.positions[i].y});
    // Quarters of a pixel are counted in an int.
    if (!(std::abs(place.x) < 1e8 && std::abs(place.y) < 1e8)) continue;
    // The quarter that contains the place, not the nearest one, as other text on the desktop is placed. Sums of advances may
    // end just before a quarter.
    constexpr double epsilon = 1e-3;
    const int quarters = int(std::floor(place.x * 4 + epsilon)), column = quarters >> 2;
    const int row = int(std::floor(place.y + 0.5));
    const GlyphMask* mask = maskOf({run.typeface.get(), run.glyphs[i], quarters & 3, scale}, run.typeface);
    if (!mask) {
      fillGlyphs({.typeface = run.typeface, .glyphs = {run.glyphs[i]}, .positions = {run.positions[i]}}, origin);
      continue;
    }
    const PixelOffset moved{column, row};
    const PixelRect inClip = mask->box.moved(moved).intersected(clip);
    if (inClip.isEmpty()) continue;
    if (isPlain) {
      blendGlyph(*mask, moved, inClip, pixel, *bitmap_);
      continue;
    }
    paint(source, inClip, [&](auto& painter, const PixelRect& painted) {
      for (int y = painted.top; y < painted.bottom; ++y) {
        const std::uint8_t* coverage = mask->row(y - row) + (painted.left - column - mask->box.left);
        float windings[GlyphCache::maxMaskSide];
        std::transform(coverage, coverage + painted.width(), windings,
                       [](std::uint8_t value) { return float(value) * (1.0f / 255); });
        painter.varied(painted.left, y, painted.width(), windings);
      }
    });
  }
}

// Null for a glyph that is too large for a mask or too far from its origin, or when memory is short.
const GlyphMask* RasterCanvas::Pipeline::maskOf(const GlyphPlace& place, const std::shared_ptr<const Typeface>& typeface) {
  if (const GlyphMask* kept = glyphs_.find(place)) return kept;
  const Path outline = typeface->outline(place.glyph);
  const CGAffineTransform toPixels{place.scale, 0, 0, -place.scale, place.quarter * 0.25, 0};
  constexpr int side = GlyphCache::maxMaskSide;
  polygons_.clear();
  constexpr PixelRect accurate{-side, -side, side, side};
  flatten(outline, toPixels, accurate);
  GlyphMask mask;
  mask.box = polygons_.bounds().roundedOut();
  if (!mask.box.isEmpty()) {
    if (mask.box.width() > side || mask.box.height() > side || !accurate.contains(mask.box)) return nullptr;
    Plane covered;
    if (!covered.beginEmpty(mask.box) || !coverage_.sweep({.polygons = polygons_}, mask.box, covered)) return nullptr;
    const float* const values = covered.row(mask.box.top);
    mask.coverage.resize(mask.box.area());
    std::transform(values, values + mask.coverage.size(), mask.coverage.begin(),
                   [](float value) { return std::uint8_t(value * 255 + 0.5f); });
  }
  return &glyphs_.keep(place, typeface, std::move(mask));
}

void RasterCanvas::Pipeline::fillGlyphs(const GlyphRun& run, CGPoint origin) {
  const std::optional<CastShadow> shadow = castShadow();
  const PixelRect needed = neededBox(shadow);
  polygons_.clear();
  for (std::size_t i = 0; i < run.glyphs.size(); ++i) {
    const CGPoint place{origin.x + run.positions[i].x, origin.y + run.positions[i].y};
    flatten(run.typeface->outline(run.glyphs[i]), CGAffineTransform::translation(place.x, place.y).then(state_.toDevice),
            needed);
  }
  paintPolygons({.polygons = polygons_}, {.color = premultiplied(state_.fillColor, state_.alpha)}, shadow);
}

}  // namespace tessaluna::backend::raster
