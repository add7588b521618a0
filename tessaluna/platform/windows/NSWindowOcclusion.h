// A window that comes on screen or goes is announced by name through the default notification center; the notification's object
// is the window, whose isVisible() is new by then. Its child windows follow afterwards.
#pragma once

#include <string_view>

#include "tessaluna/platform/foundation/languageVersion.h"

namespace tessaluna::platform {

inline constexpr std::string_view NSWindowDidChangeOcclusionStateNotification =
    "NSWindowDidChangeOcclusionStateNotification";

}  // namespace tessaluna::platform
