// Three line glyphs: an open book, five head-and-shoulders figures, and a letter i in a circle. Pressing doubles the width of
// their lines and changes nothing else; line widths are points and do not scale, nor does the circle's distance from the edge.
#pragma once

#include "tessaluna/platform/foundation/Geometry.h"

namespace TessalunaUIKit {

struct InfoButtons {
  using CGRect = tessaluna::platform::CGRect;

  static void drawBookButton(CGRect frame = {0, 0, 16, 16}, bool isPressed = false) {
    drawBookButtonWithFrame(frame, isPressed);
  }
  static void drawBookButtonWithFrame(CGRect frame, bool isPressed);

  static void drawSimilarArtists(CGRect frame = {0, 0, 15, 15}, bool isPressed = false) {
    drawSimilarArtistsWithFrame(frame, isPressed);
  }
  static void drawSimilarArtistsWithFrame(CGRect frame, bool isPressed);

  static void drawCreditsButton(CGRect frame = {0, 0, 20, 20}, bool isPressed = false) {
    drawCreditsButtonWithFrame(frame, isPressed);
  }
  static void drawCreditsButtonWithFrame(CGRect frame, bool isPressed);
};

}  // namespace TessalunaUIKit
