// The views of a window that the Tab key may stop at, in the order of the tree.
#pragma once

#include <optional>
#include <vector>

#include "tessaluna/platform/views/Forward.h"

namespace tessaluna::platform {

// The view itself and those below it.
std::vector<Ref<NSView>> keyViewsWithin(NSView& view);
// All of the view's window from the place of the view on, round the end: those after it first. None that is in the view.
std::vector<Ref<NSView>> keyViewsAfter(NSView& view);
// How many of the first are before the place of another view, which need not be one of them, nor be shown. Absent for a view
// that is not below it.
std::optional<std::size_t> placeAmongKeyViewsWithin(NSView& view, const NSView& other);

}  // namespace tessaluna::platform
