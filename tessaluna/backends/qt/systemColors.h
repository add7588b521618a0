// The desktop's colors, from Qt's palette as it is now.
#pragma once

#include <QColor>

#include "tessaluna/platform/backend/SystemColor.h"

namespace tessaluna::backend::qt {

Color colorOf(const QColor& color);
Color systemColorOf(SystemColor color);

}  // namespace tessaluna::backend::qt
