// The lengths of time that the platform itself decides on, in seconds, and what the desktop's wish for less motion makes of
// the length of an animation.
#pragma once

#include "tessaluna/platform/foundation/languageVersion.h"

namespace tessaluna::platform {

inline constexpr double defaultAnimationDuration = 0.25;
inline constexpr double windowResizeDuration = 0.2;
inline constexpr double keyboardClickDuration = 0.1;  // for which a click from the keyboard shows as pressed
inline constexpr double caretBlinkHalfPeriod = 0.5;
inline constexpr double scrollerRepeatDelay = 0.5;      // after which a press beside a scroller's knob repeats, page by page
inline constexpr double scrollerRepeatPeriod = 0.05;    // from one of these pages to the next
inline constexpr double textScrollPeriod = 0.05;        // from one step to the next while a drag rests beyond a text's edge
inline constexpr double spinnerTurnDuration = 1;        // of a progress indicator that turns
inline constexpr double progressBarPassDuration = 1.6;  // of the piece that runs along an indeterminate bar
inline constexpr double typeSelectInterval = 1;         // between letters that are one word, typed in a list
inline constexpr double framePeriodWithoutWindow = 1.0 / 60;

// How long an animation of that length takes: no time where the user wants less motion, without a backend, and for a length
// that is negative or NaN. Every animation asks here.
double animationDuration(double seconds);

}  // namespace tessaluna::platform
