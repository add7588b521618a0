#include "tessaluna/platform/views/NSText.h"

namespace tessaluna::platform {

const ClassInfo NSText::staticClassInfo{.name = "NSText", .base = &NSView::staticClassInfo};

}  // namespace tessaluna::platform
