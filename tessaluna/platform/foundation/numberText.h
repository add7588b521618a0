// The one way in which the project prints a number: the shortest text that reads back as the same double. "-0" is "0".
#pragma once

#include <string>

#include "tessaluna/platform/foundation/languageVersion.h"

namespace tessaluna::platform {

std::string numberText(double number);

}  // namespace tessaluna::platform
