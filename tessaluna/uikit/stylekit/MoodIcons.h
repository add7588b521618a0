// Line icons for the moods and themes of a music browser, designed for a square of 200 points with lines 5
// points wide. Each is one shape in one color, black or white, over the existing ground: none paints a
// ground of its own, and each axis scales by itself.
#pragma once

#include "tessaluna/platform/foundation/Geometry.h"

namespace TessalunaUIKit {

struct MoodIcons {
  using CGRect = tessaluna::platform::CGRect;

  // clang-format off
  // An armchair.
  static void drawMoodRelax(CGRect frame = {0, 0, 200, 200}, bool isWhite = false) { drawMoodRelaxWithFrame(frame, isWhite); }
  static void drawMoodRelaxWithFrame(CGRect frame, bool isWhite);
  // A cocktail glass.
  static void drawMoodParty(CGRect frame = {0, 0, 200, 200}, bool isWhite = false) { drawMoodPartyWithFrame(frame, isWhite); }
  static void drawMoodPartyWithFrame(CGRect frame, bool isWhite);
  // A running shoe.
  static void drawMoodWorkout(CGRect frame = {0, 0, 200, 200}, bool isWhite = false) { drawMoodWorkoutWithFrame(frame, isWhite); }
  static void drawMoodWorkoutWithFrame(CGRect frame, bool isWhite);
  // A heart.
  static void drawMoodLove(CGRect frame = {0, 0, 200, 200}, bool isWhite = false) { drawMoodLoveWithFrame(frame, isWhite); }
  static void drawMoodLoveWithFrame(CGRect frame, bool isWhite);
  // A light bulb.
  static void drawMoodFocus(CGRect frame = {0, 0, 200, 200}, bool isWhite = false) { drawMoodFocusWithFrame(frame, isWhite); }
  static void drawMoodFocusWithFrame(CGRect frame, bool isWhite);
  // A plate between a fork and a knife.
  static void drawMoodDinner(CGRect frame = {0, 0, 200, 200}, bool isWhite = false) { drawMoodDinnerWithFrame(frame, isWhite); }
  static void drawMoodDinnerWithFrame(CGRect frame, bool isWhite);
  // A head with headphones.
  static void drawMoodCelebrities(CGRect frame = {0, 0, 200, 200}, bool isWhite = false) { drawMoodCelebritiesWithFrame(frame, isWhite); }
  static void drawMoodCelebritiesWithFrame(CGRect frame, bool isWhite);
  // A box with a screen and controls.
  static void drawMoodMedia(CGRect frame = {0, 0, 200, 200}, bool isWhite = false) { drawMoodMediaWithFrame(frame, isWhite); }
  static void drawMoodMediaWithFrame(CGRect frame, bool isWhite);
  // The sun.
  static void drawMoodSeasonal(CGRect frame = {0, 0, 200, 200}, bool isWhite = false) { drawMoodSeasonalWithFrame(frame, isWhite); }
  static void drawMoodSeasonalWithFrame(CGRect frame, bool isWhite);
  // A record player.
  static void drawMoodHistory(CGRect frame = {0, 0, 200, 200}, bool isWhite = false) { drawMoodHistoryWithFrame(frame, isWhite); }
  static void drawMoodHistoryWithFrame(CGRect frame, bool isWhite);
  // A cup with two handles.
  static void drawMoodCharts(CGRect frame = {0, 0, 200, 200}, bool isWhite = false) { drawMoodChartsWithFrame(frame, isWhite); }
  static void drawMoodChartsWithFrame(CGRect frame, bool isWhite);
  // A stage curtain.
  static void drawMoodEvents(CGRect frame = {0, 0, 200, 200}, bool isWhite = false) { drawMoodEventsWithFrame(frame, isWhite); }
  static void drawMoodEventsWithFrame(CGRect frame, bool isWhite);
  // clang-format on
};

}  // namespace TessalunaUIKit
