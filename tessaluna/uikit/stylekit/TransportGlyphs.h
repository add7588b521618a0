// The glyphs of a transport bar, designed for a square of 32 points. Play, pause, stop, previous and next fill their frame
// edge to edge with the kit's gradient, an inner shadow and a hairline outline, so that half of the outline falls outside.
// Those five and shuffle need a current graphics context: without one the program stops.
#pragma once

#include "tessaluna/platform/foundation/Geometry.h"

namespace TessalunaUIKit {

struct TransportGlyphs {
  using CGRect = tessaluna::platform::CGRect;

  static void drawPlay(CGRect buttonFrame = {0, 0, 32, 32}) { drawPlayWithButtonFrame(buttonFrame); }
  static void drawPlayWithButtonFrame(CGRect buttonFrame);

  // Two bars with outer edges at fixed distances from the frame: upright at 32 points, sheared at any other size.
  static void drawPause(CGRect buttonFrame = {0, 0, 32, 32}) { drawPauseWithButtonFrame(buttonFrame); }
  static void drawPauseWithButtonFrame(CGRect buttonFrame);

  static void drawStop(CGRect buttonFrame = {0, 0, 32, 32}) { drawStopWithButtonFrame(buttonFrame); }
  static void drawStopWithButtonFrame(CGRect buttonFrame);

  static void drawPrevious(CGRect buttonFrame = {0, 0, 32, 32}) { drawPreviousWithButtonFrame(buttonFrame); }
  static void drawPreviousWithButtonFrame(CGRect buttonFrame);

  static void drawNext(CGRect buttonFrame = {0, 0, 32, 32}) { drawNextWithButtonFrame(buttonFrame); }
  static void drawNextWithButtonFrame(CGRect buttonFrame);

  // Paints nothing.
  static void drawRepeat(CGRect buttonFrame = {0, 0, 32, 32}) { drawRepeatWithButtonFrame(buttonFrame); }
  static void drawRepeatWithButtonFrame(CGRect buttonFrame);

  // Two crossing arrows, blue when selected, else gray. Pressing shows a soft inner edge.
  static void drawShuffle(CGRect buttonFrame = {0, 0, 32, 32}, bool isSelected = true, bool isPressed = false) {
    drawShuffleWithButtonFrame(buttonFrame, isSelected, isPressed);
  }
  static void drawShuffleWithButtonFrame(CGRect buttonFrame, bool isSelected, bool isPressed);

  // A red plus, a blue minus and a gray turning arrow between them.
  static void drawInvertPolarity(CGRect buttonFrame = {0, 0, 32, 32}) { drawInvertPolarityWithButtonFrame(buttonFrame); }
  static void drawInvertPolarityWithButtonFrame(CGRect buttonFrame);
};

}  // namespace TessalunaUIKit
