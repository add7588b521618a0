// A picture with fewer pixels, each the average of those that it covers.
#pragma once

#include "tessaluna/platform/backend/ImagePixels.h"

namespace tessaluna::platform {

// No wider and no higher than the picture is, and at least one pixel each way. Used on any thread.
backend::ImagePixels reducedPixels(const backend::ImagePixels& picture, int width, int height);

}  // namespace tessaluna::platform
