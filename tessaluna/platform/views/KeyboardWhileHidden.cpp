#include "tessaluna/platform/views/KeyboardWhileHidden.h"

#include "tessaluna/platform/views/NSView.h"

namespace tessaluna::platform {

bool isKeyboardKeptIn(const NSView& hidden) {
  for (const NSView* above = &hidden; above; above = above->superview()) {
    const auto* keeper = dynamic_cast<const KeyboardWhileHidden*>(above);
    if (keeper && keeper->keepsKeyboardWhileHidden(hidden)) return true;
  }
  return false;
}

bool isHiddenFromKeyboard(const NSView& view) {
  for (const NSView* above = &view; above; above = above->superview())
    if (above->isHidden() && !isKeyboardKeptIn(*above)) return true;
  return false;
}

}  // namespace tessaluna::platform
