#include "tessaluna/uikit/coverart/CoverArtPanel.h"

namespace TessalunaUIKit {

using namespace tessaluna::platform;

const ClassInfo CoverArtPanel::staticClassInfo{.name = "TessalunaUIKit.CoverArtPanel", .base = &NSPanel::staticClassInfo};

}  // namespace TessalunaUIKit
