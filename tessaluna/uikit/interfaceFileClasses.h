// The classes of the library that the host's interface files may name.
#pragma once

namespace TessalunaUIKit {

// Once, before the first interface file is used.
void registerInterfaceFileClasses();

}  // namespace TessalunaUIKit
