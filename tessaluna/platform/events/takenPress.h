// How a press ends for a view that it is taken from, as one that leaves its window, and where the desktop kept the release: an
// exit and a release come, both at a place outside of everything. A view for which a release is a click wherever it happens asks
// whether it is this one.
#pragma once

#include "tessaluna/platform/events/NSEvent.h"

namespace tessaluna::platform {

inline constexpr CGPoint takenPressLocation{-1e6, -1e6};  // in the window

inline bool endsTakenPress(const NSEvent& event) { return event.locationInWindow() == takenPressLocation; }

}  // namespace tessaluna::platform
