// Open chevrons and crosses: one or two strokes each, without fill. Each routine paints into the current graphics context
// and exists under two equal names, the one with default arguments and the one that spells its frame out.
#pragma once

#include "tessaluna/platform/foundation/Geometry.h"

namespace TessalunaUIKit {

struct ArrowAndCloseGlyphs {
  using CGRect = tessaluna::platform::CGRect;

  // A chevron from corner to corner of the frame, its point 1/6 of the width from the other edge. Gray when not enabled,
  // twice as thick when pressed.
  static void drawLeftArrow(CGRect frame = {1, 1, 12, 12}, bool enabled = true, bool isPressed = false) {
    drawLeftArrowWithFrame(frame, enabled, isPressed);
  }
  static void drawLeftArrowWithFrame(CGRect frame, bool enabled, bool isPressed);
  static void drawRightArrow(CGRect frame = {1, 1, 12, 12}, bool enabled = true, bool isPressed = false) {
    drawRightArrowWithFrame(frame, enabled, isPressed);
  }
  static void drawRightArrowWithFrame(CGRect frame, bool enabled, bool isPressed);

  // Large chevrons with round ends. Line widths stay 2 and 4 points at any frame. A disabled one is gray, white or not.
  static void drawForwardArrow(CGRect frame = {0, 0, 50, 50}, bool enabled = true, bool isPressed = false,
                               bool isWhite = false) {
    drawForwardArrowWithFrame(frame, enabled, isPressed, isWhite);
  }
  static void drawForwardArrowWithFrame(CGRect frame, bool enabled, bool isPressed, bool isWhite);
  static void drawBackwardArrow(CGRect frame = {0, 0, 50, 50}, bool enabled = true, bool isPressed = false,
                                bool isWhite = false) {
    drawBackwardArrowWithFrame(frame, enabled, isPressed, isWhite);
  }
  static void drawBackwardArrowWithFrame(CGRect frame, bool enabled, bool isPressed, bool isWhite);

  // A cross of 12 points that never scales: it hangs from the frame's upper left corner.
  static void drawCloseCross(CGRect frame = {0, 0, 14, 14}) { drawCloseCrossWithFrame(frame); }
  static void drawCloseCrossWithFrame(CGRect frame);

  // A cross that follows the frame; twice as thick when pressed.
  static void drawCloseButton(CGRect frame = {0, 0, 16, 16}, bool isPressed = false) {
    drawCloseButtonWithFrame(frame, isPressed);
  }
  static void drawCloseButtonWithFrame(CGRect frame, bool isPressed);
};

}  // namespace TessalunaUIKit
