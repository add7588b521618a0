#include "tessaluna/uikit/stylekit/TessalunaStyleKit.h"

namespace TessalunaUIKit {

const tessaluna::platform::ClassInfo TessalunaStyleKit::staticClassInfo{
    .name = "TessalunaUIKit.TessalunaStyleKit", .base = &tessaluna::platform::NSObject::staticClassInfo};

}  // namespace TessalunaUIKit
