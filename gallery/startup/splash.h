// The gallery's splash: an icon, a spinner and three lines of text, from an interface file in memory.
#pragma once

#include "tessaluna/uikit/startup/AppSplashController.h"

namespace gallery {

// It has its title, and is not shown yet.
tessaluna::platform::Ref<TessalunaUIKit::AppSplashController> makeSplash();

}  // namespace gallery
