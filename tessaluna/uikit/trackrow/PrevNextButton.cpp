#include "tessaluna/uikit/trackrow/PrevNextButton.h"

#include "tessaluna/uikit/stylekit/TessalunaStyleKit.h"
#include "tessaluna/uikit/trackrow/pressedLook.h"

namespace TessalunaUIKit {

using namespace tessaluna::platform;

const ClassInfo PrevNextButton::staticClassInfo{.name = "TessalunaUIKit.PrevNextButton", .base = &NSButton::staticClassInfo};

// The base class draws bezel and title: it is not called.
void PrevNextButton::drawRect(CGRect rect) {
  const bool enabled = isEnabled();
  const bool isPressed = looksPressed(*this);
  if (next_) TessalunaStyleKit::drawRightArrow(rect, enabled, isPressed);
  else TessalunaStyleKit::drawLeftArrow(rect, enabled, isPressed);
}

}  // namespace TessalunaUIKit
