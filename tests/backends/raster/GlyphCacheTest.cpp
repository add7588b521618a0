#include "tessaluna/backends/raster/GlyphCache.h"

#include <gtest/gtest.h>

namespace tessaluna::backend::raster {
namespace {

TEST(GlyphCacheTest, TheMemoryOfItsMasksIsBounded) {
  constexpr GlyphPlace first{};
  GlyphCache cache;
  std::size_t bytes = 0;
  for (GlyphPlace place = first; place == first || cache.find(first); ++place.glyph) {
    ASSERT_LE(bytes, GlyphCache::maxBytes);
    Plane mask;
    ASSERT_TRUE(mask.begin({0, 0, GlyphCache::maxMaskSide, GlyphCache::maxMaskSide}));
    bytes += mask.bytes();
    cache.keep(place, nullptr, std::move(mask));
  }
  EXPECT_GT(bytes, GlyphCache::maxBytes * 9 / 10);
}

}  // namespace
}  // namespace tessaluna::backend::raster
