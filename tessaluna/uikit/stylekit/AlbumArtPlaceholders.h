// What is shown in place of a cover: a pale square, a disc on gray, a ring of dots while the cover is on its
// way, and a small disc. Each routine paints into the current graphics context and exists under two equal
// names.
#pragma once

#include "tessaluna/platform/foundation/Geometry.h"

namespace TessalunaUIKit {

struct AlbumArtPlaceholders {
  using CGRect = tessaluna::platform::CGRect;

  // A pale square with a dashed line. Radii, line width and dashes are points and do not follow the frame.
  static void drawEmptyAlbumImage(CGRect frame = {5, 3, 200, 200}) { drawEmptyAlbumImageWithFrame(frame); }
  static void drawEmptyAlbumImageWithFrame(CGRect frame);

  // A black disc in outline on a gray square, which is the frame rounded to whole points.
  static void drawMissingAlbumArt(CGRect frame = {0, 0, 200, 200}) { drawMissingAlbumArtWithFrame(frame); }
  static void drawMissingAlbumArtWithFrame(CGRect frame);

  // Eight gray dots that grow clockwise. A still picture: nothing here turns it.
  static void drawLoadingAlbumArt(CGRect frame = {0, 0, 200, 200}) { drawLoadingAlbumArtWithFrame(frame); }
  static void drawLoadingAlbumArtWithFrame(CGRect frame);

  // A white disc in outline, for dark grounds.
  static void drawIconAlbum(CGRect frame = {0, 0, 50, 50}) { drawIconAlbumWithFrame(frame); }
  static void drawIconAlbumWithFrame(CGRect frame);
};

}  // namespace TessalunaUIKit
