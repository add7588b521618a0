// What a view adopts that is hidden only as long as it is out of sight: whoever has the keyboard in it keeps it meanwhile, so that
// typing goes on once it is back. From any other view that is hidden the keyboard goes to the next one.
#pragma once

#include "tessaluna/platform/foundation/languageVersion.h"

namespace tessaluna::platform {

class KeyboardWhileHidden {
 public:
  virtual ~KeyboardWhileHidden() = default;
};

}  // namespace tessaluna::platform
