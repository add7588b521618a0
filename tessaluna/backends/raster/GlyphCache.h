// The coverage of glyphs at the places on the pixel grid where they are drawn: on whole rows, and at quarters of a pixel
// across. The cache is bounded: when it is full it is emptied.
#pragma once

#include <cstdint>
#include <memory>
#include <unordered_map>

#include "tessaluna/backends/raster/Plane.h"
#include "tessaluna/platform/backend/TextEngine.h"

namespace tessaluna::backend::raster {

struct GlyphPlace {
  const Typeface* typeface;
  std::uint32_t glyph;
  int quarter;   // 0 to 3
  double scale;  // device pixels per point
  friend bool operator==(const GlyphPlace&, const GlyphPlace&) = default;
};

class GlyphCache {
 public:
  // The longest side of a mask, in pixels. Larger glyphs are filled as outlines, which is as good.
  static constexpr int maxMaskSide = 96;
  static constexpr std::size_t maxBytes = std::size_t{8} << 20;  // over ten thousand glyphs at the usual sizes of text

  // A mask's box is relative to the pixel that the glyph's origin lies in. Null for a glyph that is not in the cache.
  const Plane* find(const GlyphPlace& place) const;
  // Keeps the typeface too, so that no other typeface can take its address.
  const Plane& keep(const GlyphPlace& place, std::shared_ptr<const Typeface> typeface, Plane mask);

 private:
  struct Hash {
    std::size_t operator()(const GlyphPlace& place) const;
  };
  struct Kept {
    std::shared_ptr<const Typeface> typeface;
    Plane mask;
  };
  std::unordered_map<GlyphPlace, Kept, Hash> kept_;
  std::size_t bytes_ = 0;
};

}  // namespace tessaluna::backend::raster
