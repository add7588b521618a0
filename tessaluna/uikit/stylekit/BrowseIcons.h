// The icons of a browser for a streaming service, designed for a square of 50 points, the music icon for one
// of 100. Each is one shape in one color without a state: black, but for the album, which is white and meant
// for dark grounds.
#pragma once

#include "tessaluna/platform/foundation/Geometry.h"

namespace TessalunaUIKit {

struct BrowseIcons {
  using CGRect = tessaluna::platform::CGRect;

  // A house with a door; its roof touches the frame's top.
  static void drawTidalIconNew(CGRect frame = {0, 0, 50, 50}) { drawTidalIconNewWithFrame(frame); }
  static void drawTidalIconNewWithFrame(CGRect frame);

  // A record in front of another.
  static void drawTidalIconGenres(CGRect frame = {0, 0, 50, 50}) { drawTidalIconGenresWithFrame(frame); }
  static void drawTidalIconGenresWithFrame(CGRect frame);

  // A star that never scales: it hangs from the frame's upper left corner and leaves a frame below 50 points.
  static void drawTidalIconMyMusic(CGRect frame = {0, 0, 50, 50}) { drawTidalIconMyMusicWithFrame(frame); }
  static void drawTidalIconMyMusicWithFrame(CGRect frame);

  // A hexagon around the letter R or D. The hexagon's line is 3 points wide at any frame.
  static void drawTidalIconRising(CGRect frame = {0, 0, 50, 50}) { drawTidalIconRisingWithFrame(frame); }
  static void drawTidalIconRisingWithFrame(CGRect frame);
  static void drawTidalIconDiscovery(CGRect frame = {0, 0, 50, 50}) { drawTidalIconDiscoveryWithFrame(frame); }
  static void drawTidalIconDiscoveryWithFrame(CGRect frame);

  // A magnifying glass that never scales, as the star.
  static void drawTidalIconSearch(CGRect frame = {0, 0, 50, 50}) { drawTidalIconSearchWithFrame(frame); }
  static void drawTidalIconSearchWithFrame(CGRect frame);

  // A sheet with a folded corner and a note on it.
  static void drawTidalIconPlaylist(CGRect frame = {0, 0, 50, 50}) { drawTidalIconPlaylistWithFrame(frame); }
  static void drawTidalIconPlaylistWithFrame(CGRect frame);

  // Three rings about one middle, in white.
  static void drawTidalIconAlbum(CGRect frame = {0, 0, 50, 50}) { drawTidalIconAlbumWithFrame(frame); }
  static void drawTidalIconAlbumWithFrame(CGRect frame);

  // Two beamed notes.
  static void drawTidalMusicIcon(CGRect frame = {0, 0, 100, 100}) { drawTidalMusicIconWithFrame(frame); }
  static void drawTidalMusicIconWithFrame(CGRect frame);
};

}  // namespace TessalunaUIKit
