// How the controls of a host are named in the user's language.
#pragma once

#include <string>

#include "tessaluna/platform/accessibility/names.h"
#include "tessaluna/platform/views/NSControl.h"

namespace tessaluna::ready {

// What assistive clients call the control, and its tool tip.
inline void setNameAndToolTip(platform::NSControl& control, const std::string& name) {
  control.cell()->accessibilitySetOverrideValue(name, platform::NSAccessibilityDescriptionAttribute);
  control.setToolTip(name);
}

}  // namespace tessaluna::ready
