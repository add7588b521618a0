#include "tessaluna/backends/raster/Pipeline.h"

namespace tessaluna::backend::raster {

namespace {

// The scale of a transform that keeps text upright and undistorted; 0 for any other transform.
double uprightScale(const CGAffineTransform& t) {
  const bool isUpright = t.b == 0 && t.c == 0 && t.a > 0 && std::abs(t.a + t.d) <= 1e-9 * t.a;
  return isUpright ? t.a : 0;
}

}  // namespace

void RasterCanvas::Pipeline::drawGlyphs(const GlyphRun& run, CGPoint origin) {
  const PixelRect& clip = state_.clip.box;
  if (clip.isEmpty() || !run.typeface) return;
  const double scale = uprightScale(state_.toDevice);
  // A shadow belongs to the whole run, and a turned or stretched glyph is drawn like any other shape.
  if (scale == 0 || castShadow() || state_.blendMode != BlendMode::Normal) return fillGlyphs(run, origin);

  const Source source{.color = premultiplied(state_.fillColor, state_.alpha)};
  std::optional<ColorPainter> plain;  // one for all glyphs, which are small
  if (paintsPlainly(source)) plain.emplace(*bitmap_, source.color);
  for (std::size_t i = 0; i < run.glyphs.size(); ++i) {
    const CGPoint place = state_.toDevice.apply({origin.x + run.positions[i].x, origin.y + run.positions[i].y});
    // Quarters of a pixel are counted in an int.
    if (!(std::abs(place.x) < 1e8 && std::abs(place.y) < 1e8)) continue;
    // The quarter that contains the place, not the nearest one, as other text on the desktop is placed. Sums of advances may
    // end just before a quarter.
    constexpr double epsilon = 1e-3;
    const int quarters = int(std::floor(place.x * 4 + epsilon)), column = quarters >> 2;
    const int row = int(std::floor(place.y + 0.5));
    const Plane* mask = maskOf({run.typeface.get(), run.glyphs[i], quarters & 3, scale}, run.typeface);
    if (!mask) {
      fillGlyphs({.typeface = run.typeface, .glyphs = {run.glyphs[i]}, .positions = {run.positions[i]}}, origin);
      continue;
    }
    const PixelOffset moved{column, row};
    const PixelRect inClip = mask->box().moved(moved).intersected(clip);
    if (inClip.isEmpty()) continue;
    const auto cover = [&](auto& painter, const PixelRect& painted) {
      const int left = painted.left - column - mask->box().left;
      for (int y = painted.top; y < painted.bottom; ++y)
        painter.varied(painted.left, y, painted.width(), mask->row(y - row) + left);
    };
    if (plain) cover(*plain, inClip);
    else paint(source, inClip, cover);
  }
}

// Null for a glyph that is too large for a mask or too far from its origin, or when memory is short.
const Plane* RasterCanvas::Pipeline::maskOf(const GlyphPlace& place, const std::shared_ptr<const Typeface>& typeface) {
  if (const Plane* kept = glyphs_.find(place)) return kept;
  const Path outline = typeface->outline(place.glyph);
  const CGAffineTransform toPixels{place.scale, 0, 0, -place.scale, place.quarter * 0.25, 0};
  constexpr int side = GlyphCache::maxMaskSide;
  polygons_.clear();
  constexpr PixelRect accurate{-side, -side, side, side};
  flatten(outline, toPixels, accurate);
  PixelRect box = polygons_.bounds().roundedOut();
  box.right += -box.width() & 3;  // painters process four pixels at once
  if (box.width() > side || box.height() > side || !accurate.contains(box)) return nullptr;
  Plane mask;
  if (!mask.beginEmpty(box) || !coverage_.sweep({.polygons = polygons_}, box, mask)) return nullptr;
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
