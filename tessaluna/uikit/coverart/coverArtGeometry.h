// How large a cover is by its pixels, and where its panel lies. Plain arithmetic, without a window.
#pragma once

#include <vector>

#include "tessaluna/platform/foundation/Geometry.h"
#include "tessaluna/platform/graphics/Forward.h"

namespace TessalunaUIKit {

// The size of the widest representation in pixels, the first of several; zero without one that has pixels. Each representation
// is set to one point per pixel, and stays so. A width that is not finite, or too large for a whole number of 64 bits, stops
// the program.
tessaluna::platform::CGSize naturalSizeOf(
    const std::vector<tessaluna::platform::Ref<tessaluna::platform::NSImageRep>>& representations);

// A cover of the size with its upper left corner on that of the thumbnail, no wider than the screen to the right of it
// and no higher than the screen below its top, with its aspect ratio. Thumbnail and screen are in screen space. Nothing is rounded.
tessaluna::platform::CGRect frameOfEnlargedCover(tessaluna::platform::CGSize size, tessaluna::platform::CGRect thumbnail,
                                                 tessaluna::platform::CGRect screen);

}  // namespace TessalunaUIKit
