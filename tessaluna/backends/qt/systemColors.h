// The desktop's colors, from Qt's palette as it is now.
#pragma once

#include "tessaluna/platform/backend/SystemColor.h"

namespace tessaluna::backend::qt {

Color systemColorOf(SystemColor color);

}  // namespace tessaluna::backend::qt
