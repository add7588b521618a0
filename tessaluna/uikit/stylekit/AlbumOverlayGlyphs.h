// Glyphs that lie over an album cover: a play or pause disc, a loudspeaker disc, a heart and three dots. White at half strength at
// rest and opaque when pressed, with a black outline while the mouse is over them.
#pragma once

#include "tessaluna/platform/foundation/Geometry.h"

namespace TessalunaUIKit {

struct AlbumOverlayGlyphs {
  using CGRect = tessaluna::platform::CGRect;

  // A disc with a triangle, or with two bars when playing. Needs a current graphics context: without one the program stops.
  static void drawPlayPauseAlbumOverlay(CGRect frame = {0, 0, 76, 76}, bool isPressed = false, bool isOver = true,
                                        bool isPlaying = true) {
    drawPlayPauseAlbumOverlayWithFrame(frame, isPressed, isOver, isPlaying);
  }
  static void drawPlayPauseAlbumOverlayWithFrame(CGRect frame, bool isPressed, bool isOver, bool isPlaying);

  // A disc with a loudspeaker and three waves.
  static void drawPlayingAlbumOverlay(CGRect frame = {0, 0, 76, 76}, bool isPressed = false, bool isOver = true) {
    drawPlayingAlbumOverlayWithFrame(frame, isPressed, isOver);
  }
  static void drawPlayingAlbumOverlayWithFrame(CGRect frame, bool isPressed, bool isOver);

  // A heart: red when selected, and then lighter when pressed.
  static void drawFavoriteAlbumOverlay(CGRect frame = {0, 0, 38, 38}, bool isSelected = true, bool isPressed = false,
                                       bool isOver = true) {
    drawFavoriteAlbumOverlayWithFrame(frame, isSelected, isPressed, isOver);
  }
  static void drawFavoriteAlbumOverlayWithFrame(CGRect frame, bool isSelected, bool isPressed, bool isOver);

  static void drawMoreAlbumOverlay(CGRect frame = {0, 0, 44, 22}, bool isPressed = false, bool isOver = true) {
    drawMoreAlbumOverlayWithFrame(frame, isPressed, isOver);
  }
  static void drawMoreAlbumOverlayWithFrame(CGRect frame, bool isPressed, bool isOver);
};

}  // namespace TessalunaUIKit
