// The one way to stop the program on purpose: a report on standard error, then std::abort. A host may be asked first
// (stopHandler.h).
#pragma once

#include <string_view>

#include "tessaluna/platform/foundation/languageVersion.h"

namespace tessaluna::platform {

[[noreturn]] void stopProgram(std::string_view report);

// Stops with "<class>: use of unimplemented initializer <initializer>", for an initializer that a class does not support.
[[noreturn]] void stopUnimplementedInitializer(std::string_view className, std::string_view initializer);

// What cannot happen. Alive in release builds, so that an impossible state is a clear end and not a wild one.
[[noreturn]] void unreachable();

}  // namespace tessaluna::platform
