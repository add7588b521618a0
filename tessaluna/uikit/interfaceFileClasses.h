// The classes of the library that the host's interface files may name.
#pragma once

#include "tessaluna/platform/foundation/languageVersion.h"

namespace TessalunaUIKit {

// Once, before the first interface file is used.
void registerInterfaceFileClasses();

}  // namespace TessalunaUIKit
