// Which key does what in a text: one table, from keys to the selectors of commands.
#pragma once

#include <string_view>

#include "tessaluna/platform/events/NSEvent.h"

namespace tessaluna::platform {

// The command of a key down; empty for a key that has none. Shift, Control, Option and Command count, and of letters not
// whether they are capitals.
std::string_view commandForKey(const NSEvent& event);

// What a key down types where it has no command; empty if it types nothing. A letter with Control or Command is a shortcut;
// so is one with Option, unless Option made it another character.
std::string_view textOfKey(const NSEvent& event);

}  // namespace tessaluna::platform
