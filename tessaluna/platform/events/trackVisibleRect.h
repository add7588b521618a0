// How a view follows the pointer over whatever is visible of it.
#pragma once

#include <cstdint>

#include "tessaluna/platform/events/NSTrackingArea.h"

namespace tessaluna::platform {

// For updateTrackingAreas. `area` is a member of the view, null at first: the area is made once, since it follows the visible
// rectangle in any window, and added unless the view has it. It is active always; of the options the caller says only which
// events come.
void trackVisibleRect(NSView& view, Ref<NSTrackingArea>& area, std::uint32_t events);

}  // namespace tessaluna::platform
