#include "tessaluna/backends/raster/GlyphCache.h"

#include <functional>

namespace tessaluna::backend::raster {

std::size_t GlyphCache::Hash::operator()(const GlyphPlace& place) const {
  std::size_t hash = std::hash<const void*>()(place.typeface);
  hash = hash * 31 + place.glyph;
  hash = hash * 31 + static_cast<std::size_t>(place.quarter);
  return hash * 31 + std::hash<double>()(place.scale);
}

const Plane* GlyphCache::find(const GlyphPlace& place) const {
  const auto found = kept_.find(place);
  return found == kept_.end() ? nullptr : &found->second.mask;
}

const Plane& GlyphCache::keep(const GlyphPlace& place, std::shared_ptr<const Typeface> typeface, Plane mask) {
  const std::size_t size = sizeof(Kept) + mask.bytes();
  if (bytes_ + size > maxBytes) {
    kept_.clear();
    bytes_ = 0;
  }
  bytes_ += size;
  return kept_.insert_or_assign(place, Kept{std::move(typeface), std::move(mask)}).first->second.mask;
}

}  // namespace tessaluna::backend::raster
