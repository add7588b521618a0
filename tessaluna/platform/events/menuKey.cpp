#include "tessaluna/platform/events/menuKey.h"

#include "tessaluna/platform/text/unicode.h"

namespace tessaluna::platform {

bool isMenuKey(const NSEvent& keyDown) {
  constexpr std::uint32_t all =
      NSEventModifierFlagShift | NSEventModifierFlagControl | NSEventModifierFlagOption | NSEventModifierFlagCommand;
  constexpr char32_t f10 = NSF1FunctionKey + 9;
  const std::uint32_t modifiers = keyDown.modifierFlags() & all;
  switch (firstScalar(keyDown.charactersIgnoringModifiers())) {
    case NSMenuFunctionKey: return modifiers == 0;
    case f10: return modifiers == NSEventModifierFlagShift;
    default: return false;
  }
}

}  // namespace tessaluna::platform
