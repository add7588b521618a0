// The gallery's splash: an icon, a spinner and three lines of text, from an interface file in memory.
#pragma once

#include "tessaluna/uikit/startup/AppSplashController.h"

namespace gallery {

// With a title already, and not shown yet.
tessaluna::platform::Ref<TessalunaUIKit::AppSplashController> makeSplash();

}  // namespace gallery
