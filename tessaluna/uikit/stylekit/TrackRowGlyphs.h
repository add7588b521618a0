// The three glyphs of a track list's row, designed for a square of 15 points. The play and pause face and the dots are white at
// half strength at rest and opaque when pressed, with a black outline while the mouse is over them.
#pragma once

#include "tessaluna/platform/foundation/Geometry.h"

namespace TessalunaUIKit {

struct TrackRowGlyphs {
  using CGRect = tessaluna::platform::CGRect;

  // A disc with a triangle, or with two bars when playing. Needs a current graphics context: without one the program stops.
  static void drawTrackRowPlayPause(CGRect frame = {0, 0, 15, 15}, bool isPressed = false, bool isOver = true,
                                    bool isPlaying = true) {
    drawTrackRowPlayPauseWithFrame(frame, isPressed, isOver, isPlaying);
  }
  static void drawTrackRowPlayPauseWithFrame(CGRect frame, bool isPressed, bool isOver, bool isPlaying);

  // A loudspeaker with three waves, for the track that is playing.
  static void drawTrackRowPlaying(CGRect frame = {0, 0, 15, 15}) { drawTrackRowPlayingWithFrame(frame); }
  static void drawTrackRowPlayingWithFrame(CGRect frame);

  static void drawTrackMore(CGRect frame = {0, 0, 15, 15}, bool isPressed = false, bool isOver = true) {
    drawTrackMoreWithFrame(frame, isPressed, isOver);
  }
  static void drawTrackMoreWithFrame(CGRect frame, bool isPressed, bool isOver);
};

}  // namespace TessalunaUIKit
