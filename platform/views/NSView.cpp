#include "platform/views/NSView.h"

#include "platform/windows/NSWindow.h"

namespace platform {

const ClassInfo NSView::staticClassInfo{.name = "NSView", .base = &NSResponder::staticClassInfo};

bool NSView::performKeyEquivalent(const Ref<NSEvent>& event) {
  const std::vector<Ref<NSView>> copy = subviews();
  for (const Ref<NSView>& view : copy)
    if (!view->isHidden() && view->performKeyEquivalent(event)) return true;
  return false;
}

void NSView::windowWillChange() { window()->viewWillLeave(*this); }

}  // namespace platform
