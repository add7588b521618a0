// The desktop's colors, from Qt's palette as it is now.
#pragma once

#include "platform/backend/SystemColor.h"

namespace backend::qt {

Color systemColorOf(SystemColor color);

}  // namespace backend::qt
