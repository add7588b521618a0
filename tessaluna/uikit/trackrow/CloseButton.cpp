#include "tessaluna/uikit/trackrow/CloseButton.h"

#include "tessaluna/uikit/stylekit/TessalunaStyleKit.h"
#include "tessaluna/uikit/trackrow/DisabledLook.h"
#include "tessaluna/uikit/trackrow/pressedLook.h"

namespace TessalunaUIKit {

using namespace tessaluna::platform;

const ClassInfo CloseButton::staticClassInfo{.name = "TessalunaUIKit.CloseButton", .base = &NSButton::staticClassInfo};

// The base class draws bezel and title: it is not called.
void CloseButton::drawRect(CGRect rect) {
  const DisabledLook look(*this);
  TessalunaStyleKit::drawCloseButton(rect, looksPressed(*this));
}

}  // namespace TessalunaUIKit
