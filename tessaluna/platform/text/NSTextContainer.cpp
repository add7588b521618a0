#include "tessaluna/platform/text/NSTextContainer.h"

namespace tessaluna::platform {

const ClassInfo NSTextContainer::staticClassInfo{.name = "NSTextContainer", .base = &NSObject::staticClassInfo};

}  // namespace tessaluna::platform
