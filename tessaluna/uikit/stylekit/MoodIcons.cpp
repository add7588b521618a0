#include "tessaluna/uikit/stylekit/MoodIcons.h"

#include "tessaluna/uikit/stylekit/Recipes.h"
#include "tessaluna/uikit/stylekit/listings/MoodListings.h"
#include "tessaluna/uikit/stylekit/listings/MoodMoreListings.h"

namespace TessalunaUIKit {

using namespace tessaluna::platform;
using recipes::color;

namespace {

void drawMood(CGRect frame, ListingView outline, bool isWhite) {
  const auto black = color(0, 0, 0, 1);
  const auto white = color(1, 1, 1, 1);
  const auto& ink = isWhite ? white : black;
  const auto path = pathInFrame(frame, outline);
  ink->setFill();
  path->fill();
}

}  // namespace

void MoodIcons::drawMoodRelaxWithFrame(CGRect frame, bool isWhite) { drawMood(frame, listings::moodRelax, isWhite); }

void MoodIcons::drawMoodPartyWithFrame(CGRect frame, bool isWhite) { drawMood(frame, listings::moodParty, isWhite); }

void MoodIcons::drawMoodWorkoutWithFrame(CGRect frame, bool isWhite) { drawMood(frame, listings::moodWorkout, isWhite); }

void MoodIcons::drawMoodLoveWithFrame(CGRect frame, bool isWhite) { drawMood(frame, listings::moodLove, isWhite); }

void MoodIcons::drawMoodFocusWithFrame(CGRect frame, bool isWhite) { drawMood(frame, listings::moodFocus, isWhite); }

void MoodIcons::drawMoodDinnerWithFrame(CGRect frame, bool isWhite) { drawMood(frame, listings::moodDinner, isWhite); }

void MoodIcons::drawMoodCelebritiesWithFrame(CGRect frame, bool isWhite) {
  drawMood(frame, listings::moodCelebrities, isWhite);
}

void MoodIcons::drawMoodMediaWithFrame(CGRect frame, bool isWhite) { drawMood(frame, listings::moodMedia, isWhite); }

void MoodIcons::drawMoodSeasonalWithFrame(CGRect frame, bool isWhite) { drawMood(frame, listings::moodSeasonal, isWhite); }

void MoodIcons::drawMoodHistoryWithFrame(CGRect frame, bool isWhite) { drawMood(frame, listings::moodHistory, isWhite); }

void MoodIcons::drawMoodChartsWithFrame(CGRect frame, bool isWhite) { drawMood(frame, listings::moodCharts, isWhite); }

void MoodIcons::drawMoodEventsWithFrame(CGRect frame, bool isWhite) { drawMood(frame, listings::moodEvents, isWhite); }

}  // namespace TessalunaUIKit
