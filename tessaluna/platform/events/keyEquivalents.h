// Keys that do something wherever the keyboard is: those of buttons and menu items.
#pragma once

#include <cstdint>
#include <string_view>

#include "tessaluna/platform/foundation/languageVersion.h"

namespace tessaluna::platform {

class NSEvent;

// Whether a key down types the characters with exactly these modifiers; of the flags only Shift, Control, Option and Command
// count. A capital letter asks for Shift. False for no characters.
bool isKeyEquivalent(const NSEvent& event, std::string_view characters, std::uint32_t modifiers);

}  // namespace tessaluna::platform
