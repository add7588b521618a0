#include "uikit/stylekit/TessalunaStyleKit.h"

namespace TessalunaUIKit {

const platform::ClassInfo TessalunaStyleKit::staticClassInfo{.name = "TessalunaUIKit.TessalunaStyleKit",
                                                             .base = &platform::NSObject::staticClassInfo};

}  // namespace TessalunaUIKit
