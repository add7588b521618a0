// A window beside the program's main ones: a cover at full size, an inspector. The desktop lists no panel among the windows
// of its task bar, and the Escape key closes one that its user can close.
#pragma once

#include "tessaluna/platform/windows/NSWindow.h"

namespace tessaluna::platform {

class NSPanel : public NSWindow {
 public:
  static const ClassInfo staticClassInfo;
  const ClassInfo& classInfo() const override { return staticClassInfo; }

  using NSWindow::NSWindow;

  void keyDown(const Ref<NSEvent>& event) override;
  // Closes the panel as its user would, if its style mask says that its user can. What a text in it makes of the Escape key, too.
  void cancelOperation(NSObject* sender);

 protected:
  bool isPanel() const override { return true; }

 private:
  static const Selector selectors_[];
};

}  // namespace tessaluna::platform
