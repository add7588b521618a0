#include "tessaluna/ready/tracks/trackPlaces.h"

#include <algorithm>
#include <cmath>

#include "tessaluna/platform/graphics/NSRect.h"

namespace tessaluna::ready {

using namespace platform;

namespace {

constexpr CGFloat margin = 12, gap = 12, lineHeight = 18, groundMargin = 5;
// A title in a header is four points from its column's edge; that of a label is two points from the label's.
constexpr CGFloat textIndent = 2, timeMargin = margin - textIndent;
constexpr CGFloat playWidth = margin + trackGlyphSize + gap + trackCoverSize + gap;
constexpr CGFloat controlsWidth = 2 * (trackGlyphSize + gap) + gap, timeWidth = 64;
// The widths from which a table has these.
constexpr CGFloat minWithArtists = 560, minWithTime = 320, minWithControls = 220, minWithCover = 160;
constexpr CGFloat shareOfTitle = 0.52;
// In a wide window what belongs together stays together: beyond this nothing is farther apart.
constexpr CGFloat maxTitle = 560, maxArtists = 480;

}  // namespace

TrackColumns trackColumnsForWidth(CGFloat width) {
  TrackColumns columns;
  columns.play = std::min(std::max(0.0, width), width < minWithCover ? margin + trackGlyphSize + gap : playWidth);
  columns.controls = width < minWithControls ? 0 : controlsWidth;
  columns.time = width < minWithTime ? 0 : timeWidth - timeMargin;
  columns.rest = width < minWithTime ? 0 : timeMargin;
  const CGFloat texts = std::max(0.0, width - columns.play - columns.controls - columns.time - columns.rest);
  if (width < minWithArtists) {
    columns.title = texts;
    return columns;
  }
  columns.title = std::min(maxTitle, std::floor(texts * shareOfTitle));
  columns.artists = std::min(maxArtists, texts - columns.title);
  columns.rest += texts - columns.title - columns.artists;
  return columns;
}

TrackRowPlaces trackRowPlaces(CGFloat width) {
  const TrackColumns columns = trackColumnsForWidth(width);
  // On whole points, so that glyphs and letters stay sharp.
  constexpr CGFloat glyphY = (trackRowHeight - trackGlyphSize) / 2, middleY = (trackRowHeight - lineHeight) / 2;
  TrackRowPlaces places;
  places.play = {margin, glyphY, trackGlyphSize, trackGlyphSize};
  if (columns.play >= playWidth)
    places.cover = {margin + trackGlyphSize + gap, (trackRowHeight - trackCoverSize) / 2, trackCoverSize, trackCoverSize};
  CGFloat x = columns.play;
  const bool hasTwoLines = columns.artists == 0;
  const CGFloat titleWidth = std::max(0.0, columns.title - gap - textIndent);
  places.title = {x + textIndent, hasTwoLines ? middleY - lineHeight / 2 : middleY, titleWidth, lineHeight};
  x += columns.title;
  if (hasTwoLines) places.artists = {columns.play + textIndent, middleY + lineHeight / 2, titleWidth, lineHeight};
  else places.artists = {x + textIndent, middleY, std::max(0.0, columns.artists - gap - textIndent), lineHeight};
  x += columns.artists;
  if (columns.controls > 0) {
    places.favorite = {x + gap / 2, glyphY, trackGlyphSize, trackGlyphSize};
    places.more = {x + gap / 2 + trackGlyphSize + gap, glyphY, trackGlyphSize, trackGlyphSize};
  }
  x += columns.controls;
  // Hours reach into the gap.
  if (columns.time > 0) places.time = {x - gap, middleY, timeWidth - margin + gap, lineHeight};
  return places;
}

CGRect groundOfTrackControl(CGRect control) { return NSInsetRect(control, -groundMargin, -groundMargin); }

}  // namespace tessaluna::ready
