// The window of an enlarged cover. It has no title bar and takes the key status all the same, so that it closes when it loses it.
#pragma once

#include "tessaluna/platform/windows/NSPanel.h"

namespace TessalunaUIKit {

class CoverArtPanel : public tessaluna::platform::NSPanel {
 public:
  static const tessaluna::platform::ClassInfo staticClassInfo;
  const tessaluna::platform::ClassInfo& classInfo() const override { return staticClassInfo; }

  using NSPanel::NSPanel;

  bool canBecomeKeyWindow() const override { return true; }
};

}  // namespace TessalunaUIKit
