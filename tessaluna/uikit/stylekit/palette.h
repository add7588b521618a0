// The three colors that the kit shows to a host. Each is made at its first read, by itself and once for the process, on
// whatever thread that is; no routine of the kit reads them.
#pragma once

#include "tessaluna/platform/graphics/Forward.h"

namespace TessalunaUIKit {

class Palette {
 public:
  static tessaluna::platform::Ref<tessaluna::platform::NSColor> qobuzColor();         // (0.196, 0.595, 0.713, 1)
  static tessaluna::platform::Ref<tessaluna::platform::NSColor> tessalunaBlue();      // (0.136, 0.507, 0.968, 1)
  static tessaluna::platform::Ref<tessaluna::platform::NSColor> highResAudioColor();  // (0.304, 0.304, 0.304, 1): a gray

 private:
  struct Cache;
};

}  // namespace TessalunaUIKit
