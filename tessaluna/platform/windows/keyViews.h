// The views of a window that the Tab key may stop at, in the order of the tree.
#pragma once

#include <vector>

#include "tessaluna/platform/views/Forward.h"

namespace tessaluna::platform {

// The view itself and those below it.
std::vector<Ref<NSView>> keyViewsWithin(NSView& view);
// All of the view's window from the place of the view on, round the end: those after it first. None that is in the view.
std::vector<Ref<NSView>> keyViewsAfter(NSView& view);

}  // namespace tessaluna::platform
