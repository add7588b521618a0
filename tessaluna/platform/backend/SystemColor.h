// The colors that the desktop decides. A backend says what they are at this moment; without one, or where it has no
// opinion, a plain light look is used.
#pragma once

#include "tessaluna/platform/backend/Canvas.h"

namespace tessaluna::backend {

enum class SystemColor {
  ControlText,
  DisabledControlText,
  PlaceholderText,
  AlternateSelectedControl,
  AlternateSelectedControlText,
  SelectedTextBackground,
  UnemphasizedSelectedTextBackground,
  Control,
  ControlBackground,
  WindowBackground,
  KeyboardFocusIndicator,
};

Color defaultSystemColor(SystemColor color);

}  // namespace tessaluna::backend
