#include "platform/views/NSText.h"

namespace platform {

const ClassInfo NSText::staticClassInfo{.name = "NSText", .base = &NSView::staticClassInfo};

}  // namespace platform
