#include "gallery/search/LibrarySearch.h"

#include <algorithm>

#include "tessaluna/platform/foundation/stopProgram.h"
#include "tessaluna/platform/graphics/NSBezierPath.h"
#include "tessaluna/platform/graphics/NSColor.h"
#include "tessaluna/platform/graphics/NSRect.h"
#include "tessaluna/uikit/stylekit/image_factory.h"

namespace gallery {

using namespace tessaluna::platform;
using TessalunaUIKit::ImageFactory;

namespace {

constexpr std::size_t maxRows = 50;

struct Look {
  const char* section;
  CGFloat red, green, blue;
  Ref<NSImage> glyph;
};

Look lookOf(LibraryItem::Kind kind) {
  switch (kind) {
    case LibraryItem::Kind::Artist: return {"Artists", 0.82, 0.42, 0.36, ImageFactory::imageOfMoodCelebrities()};
    case LibraryItem::Kind::Album: return {"Albums", 0.33, 0.45, 0.76, ImageFactory::imageOfIconAlbum()};
    case LibraryItem::Kind::Track: return {"Tracks", 0.27, 0.58, 0.49, ImageFactory::imageOfTidalMusicIcon()};
  }
  unreachable();
}

// A glyph on a tile of its kind's color.
Ref<NSImage> pictureOf(const Look& look) {
  return NSImage::imageWithSize({28, 28}, false, [look](CGRect frame) {
    NSColor::colorWithCalibratedRed(look.red, look.green, look.blue, 1)->setFill();
    NSBezierPath::bezierPathWithRoundedRect(frame, 5, 5)->fill();
    look.glyph->drawInRect(NSInsetRect(frame, 4, 4));
    return true;
  });
}

}  // namespace

std::vector<tessaluna::ready::SearchRow> LibrarySearch::rowsFor(std::string_view typed) const {
  std::vector<std::size_t> matches = index_.bestMatches(typed, maxRows);
  std::ranges::stable_sort(matches, {}, [&](std::size_t index) { return items_[index].kind; });
  std::vector<tessaluna::ready::SearchRow> rows;
  for (const std::size_t index : matches) {
    const LibraryItem& item = items_[index];
    const Look look = lookOf(item.kind);
    rows.push_back({.title = item.label,
                    .detail = item.detail,
                    .section = look.section,
                    .id = static_cast<std::int64_t>(index),
                    .image = pictureOf(look)});
  }
  return rows;
}

}  // namespace gallery
