// What a view adopts that takes the keyboard from a key but not always from a press.
#pragma once

#include "tessaluna/platform/foundation/languageVersion.h"

namespace tessaluna::platform {

class KeyboardAtPress {
 public:
  virtual ~KeyboardAtPress() = default;
  // Asked at each press on the view. False leaves the keyboard where it is.
  virtual bool takesKeyboardAtPress() const = 0;
};

}  // namespace tessaluna::platform
