// An addition: the menu of all strings of a line of links, those that are cut off included.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "tessaluna/platform/foundation/Geometry.h"
#include "tessaluna/platform/views/Forward.h"

namespace TessalunaUIKit {

// Opens below a point of the view and calls `chosen` later, if something is chosen, with the index of the string. Strings
// without characters are left out.
void popUpLinkMenu(const std::vector<std::string>& strings, tessaluna::platform::CGPoint below,
                   tessaluna::platform::NSView& view, std::function<void(std::size_t index)> chosen);

}  // namespace TessalunaUIKit
