// Names of the foundation, for headers that only pass them on.
#pragma once

#include "tessaluna/platform/foundation/languageVersion.h"

namespace tessaluna::platform {

class NSBundle;
class NSCoder;
class NSNotification;
class NSNotificationCenter;
class NSObject;
struct ClassInfo;
struct Selector;

}  // namespace tessaluna::platform
