// What a view adopts for itself, or for one below it, that is hidden for a while, or whose program decides where the keyboard
// goes then: whoever has the keyboard in it keeps it meanwhile, so that typing continues once it shows again. From any other
// view that is hidden the keyboard goes to the next one.
#pragma once

#include "tessaluna/platform/foundation/languageVersion.h"
#include "tessaluna/platform/views/Forward.h"

namespace tessaluna::platform {

class KeyboardWhileHidden {
 public:
  virtual ~KeyboardWhileHidden() = default;
  virtual bool keepsKeyboardWhileHidden(const NSView& hidden) const = 0;
};

// Whether a view above the hidden one, or itself, keeps the keyboard in it.
bool isKeyboardKeptIn(const NSView& hidden);

// Whether the view, or one above it, is hidden, and the keyboard cannot be there meanwhile.
bool isHiddenFromKeyboard(const NSView& view);

}  // namespace tessaluna::platform
