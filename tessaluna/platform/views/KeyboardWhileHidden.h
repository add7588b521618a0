// What a view adopts for itself, or for one below it, that is hidden only as long as it is out of sight: whoever has the
// keyboard in it keeps it meanwhile, so that typing continues once it is back. From any other view that is hidden the keyboard
// goes to the next one.
#pragma once

#include "tessaluna/platform/foundation/languageVersion.h"
#include "tessaluna/platform/views/Forward.h"

namespace tessaluna::platform {

class KeyboardWhileHidden {
 public:
  virtual ~KeyboardWhileHidden() = default;
  virtual bool keepsKeyboardWhileHidden(const NSView& hidden) const = 0;
};

}  // namespace tessaluna::platform
