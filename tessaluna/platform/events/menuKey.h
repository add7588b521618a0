// The keys that open the menu of what has the keyboard.
#pragma once

#include "tessaluna/platform/events/NSEvent.h"

namespace tessaluna::platform {

inline constexpr char32_t NSMenuFunctionKey = 0xF735;

// The menu key, or F10 with Shift and no other modifier.
bool isMenuKey(const NSEvent& keyDown);

}  // namespace tessaluna::platform
