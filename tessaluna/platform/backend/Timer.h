// What Backend::timer gives. For those who only keep one.
#pragma once

#include <memory>

#include "tessaluna/platform/foundation/languageVersion.h"

namespace tessaluna::backend {

// A call that has not come yet. The end of the last copy cancels it and frees the block; a call under way ends normally.
using Timer = std::shared_ptr<void>;

}  // namespace tessaluna::backend
