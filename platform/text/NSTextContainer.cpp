#include "platform/text/NSTextContainer.h"

namespace platform {

const ClassInfo NSTextContainer::staticClassInfo{.name = "NSTextContainer", .base = &NSObject::staticClassInfo};

}  // namespace platform
