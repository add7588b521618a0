#include "tessaluna/uikit/trackrow/PrevNextButton.h"

#include "tessaluna/platform/foundation/memberTables.h"
#include "tessaluna/uikit/stylekit/TessalunaStyleKit.h"
#include "tessaluna/uikit/trackrow/pressedLook.h"

namespace TessalunaUIKit {

using namespace tessaluna::platform;

namespace {

constexpr Property properties[] = {property<&PrevNextButton::setNext, "next">()};

}  // namespace

const ClassInfo PrevNextButton::staticClassInfo{
    .name = "TessalunaUIKit.PrevNextButton", .base = &NSButton::staticClassInfo, .properties = properties};

// The base class draws bezel and title: it is not called.
void PrevNextButton::drawRect(CGRect rect) {
  const bool enabled = isEnabled();
  const bool isPressed = looksPressed(*this);
  if (next_) TessalunaStyleKit::drawRightArrow(rect, enabled, isPressed);
  else TessalunaStyleKit::drawLeftArrow(rect, enabled, isPressed);
}

}  // namespace TessalunaUIKit
