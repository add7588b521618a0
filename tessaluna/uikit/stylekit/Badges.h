// The marks of formats and services. All letters are outlines, so no font is needed. A routine scales with
// its frame, each axis by itself: a frame of another proportion than the default distorts the mark.
#pragma once

#include "tessaluna/platform/foundation/Geometry.h"

namespace TessalunaUIKit {

struct Badges {
  using CGRect = tessaluna::platform::CGRect;

  // A seal, three letters and a dot at the right, which is blue when enabled and green when not. Nothing else
  // is dimmed or hidden.
  static void drawMqaLogo(CGRect buttonFrame = {0, 0, 65, 18}, bool enabled = true) {
    drawMqaLogoWithButtonFrame(buttonFrame, enabled);
  }
  static void drawMqaLogoWithButtonFrame(CGRect buttonFrame, bool enabled);

  // A wide mark on a square canvas: it fills the upper part on its own dark ground, passes the frame's top by
  // a fraction of a point, and leaves the lower part unpainted.
  static void drawHighResAudioLogo(CGRect frame = {0, 0, 200, 200}) { drawHighResAudioLogoWithFrame(frame); }
  static void drawHighResAudioLogoWithFrame(CGRect frame);

  // The mark at the left of the word, and a line of small capitals under both.
  static void drawTidalLogoWide(CGRect frame = {0, 0, 835, 332}) { drawTidalLogoWideWithFrame(frame); }
  static void drawTidalLogoWideWithFrame(CGRect frame);

  // The mark above the word.
  static void drawTidalLogoTall(CGRect frame = {0, 0, 586, 354}) { drawTidalLogoTallWithFrame(frame); }
  static void drawTidalLogoTallWithFrame(CGRect frame);

  // The mark alone.
  static void drawTidalLogoSmall(CGRect frame = {0, 0, 150, 150}) { drawTidalLogoSmallWithFrame(frame); }
  static void drawTidalLogoSmallWithFrame(CGRect frame);
};

}  // namespace TessalunaUIKit
