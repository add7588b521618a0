// The version of the system and of its kit that the platform layer reports. The library asks for both at a few points,
// each an older behaviour that it keeps; tests set them.
#pragma once

#include <compare>

#include "tessaluna/platform/foundation/languageVersion.h"

namespace tessaluna::platform {

struct NSOperatingSystemVersion {
  int majorVersion = 0;
  int minorVersion = 0;
  int patchVersion = 0;
  friend auto operator<=>(const NSOperatingSystemVersion&, const NSOperatingSystemVersion&) = default;
};

// 10.15.0, unless set.
NSOperatingSystemVersion operatingSystemVersion();
void setOperatingSystemVersion(NSOperatingSystemVersion version);
inline bool isOperatingSystemAtLeastVersion(NSOperatingSystemVersion version) { return operatingSystemVersion() >= version; }

// The kit's version number; above 1187 unless set.
extern double NSAppKitVersionNumber;

}  // namespace tessaluna::platform
