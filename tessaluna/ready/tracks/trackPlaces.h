// Where everything in a track table is, worked out from its width alone: the columns, and the parts of a row.
#pragma once

#include <array>

#include "tessaluna/platform/foundation/Geometry.h"

namespace tessaluna::ready {

inline constexpr platform::CGFloat trackRowHeight = 52, trackCoverSize = 40, trackGlyphSize = 16;

// The widths of the columns from left to right, which add up to the table's; zero for one that is hidden. Where artists have no
// column of their own they are below the title.
struct TrackColumns {
  platform::CGFloat play = 0, title = 0, artists = 0, controls = 0, time = 0, rest = 0;
  std::array<platform::CGFloat, 6> all() const { return {play, title, artists, controls, time, rest}; }
};
TrackColumns trackColumnsForWidth(platform::CGFloat width);

// In the row, y down. A part that is hidden has no width.
struct TrackRowPlaces {
  platform::CGRect play, cover, title, artists, favorite, more, time;
};
TrackRowPlaces trackRowPlaces(platform::CGFloat width);

// The shape that is painted under a control while the row shows its controls.
platform::CGRect groundOfTrackControl(platform::CGRect control);

}  // namespace tessaluna::ready
