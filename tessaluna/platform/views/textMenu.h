// The menu of a text that is edited: Undo, Cut, Copy, Paste, Select All.
#pragma once

#include "tessaluna/platform/foundation/Geometry.h"
#include "tessaluna/platform/views/Forward.h"

namespace tessaluna::platform {

// Opens with its upper left corner at a point of the view. What is chosen is done as the command of that name.
void popUpTextMenu(NSTextView& view, CGPoint corner);

}  // namespace tessaluna::platform
