// Fonts and colors of the desktop, and the direction of its language, that change while the program runs.
#pragma once

#include <cstddef>
#include <string_view>

#include "tessaluna/platform/foundation/languageVersion.h"

namespace tessaluna::platform {

// Posted for every change, of fonts too, without an object. What keeps something that was made with fonts or colors observes
// it and makes that again.
inline constexpr std::string_view NSSystemColorsDidChangeNotification = "NSSystemColorsDidChangeNotification";

// Called by the backend, once for each change, when its fonts, colors and direction are the new ones. After the notification all views of
// all windows measure their contents again, are laid out and redrawn.
void effectiveAppearanceDidChange();

// How often that was called. A view that comes into a window measures and lays out its contents again if that was called while it
// was in none.
std::size_t effectiveAppearanceChanges();

}  // namespace tessaluna::platform
