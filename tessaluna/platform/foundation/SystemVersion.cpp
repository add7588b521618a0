#include "tessaluna/platform/foundation/SystemVersion.h"

namespace tessaluna::platform {

namespace {

NSOperatingSystemVersion currentVersion{10, 15, 0};

}  // namespace

NSOperatingSystemVersion operatingSystemVersion() { return currentVersion; }
void setOperatingSystemVersion(NSOperatingSystemVersion version) { currentVersion = version; }

double NSAppKitVersionNumber = 1894;

}  // namespace tessaluna::platform
