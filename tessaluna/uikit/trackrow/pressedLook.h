// Whether a glyph button is drawn as pressed.
#pragma once

#include "tessaluna/platform/foundation/SystemVersion.h"
#include "tessaluna/platform/views/NSButton.h"

namespace TessalunaUIKit {

// Before 10.10 a button did not report its highlight; its cell's last press was used. Intentional: without a cell that counts
// as pressed, because an absent value is not zero.
inline bool looksPressed(const tessaluna::platform::NSButton& button) {
  if (tessaluna::platform::isOperatingSystemAtLeastVersion({10, 10, 0})) return button.isHighlighted();
  return !button.cell() || button.cell()->mouseDownFlags() != 0;
}

}  // namespace TessalunaUIKit
