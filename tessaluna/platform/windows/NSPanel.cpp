#include "tessaluna/platform/windows/NSPanel.h"

#include "tessaluna/platform/events/keyBindings.h"

namespace tessaluna::platform {

const Selector NSPanel::selectors_[] = {action<&NSPanel::cancelOperation>("cancelOperation:")};
const ClassInfo NSPanel::staticClassInfo{
    .name = "NSPanel", .base = &NSWindow::staticClassInfo, .selectors = NSPanel::selectors_};

void NSPanel::keyDown(const Ref<NSEvent>& event) {
  const bool closes = (styleMask() & NSWindowStyleMaskClosable) && commandForKey(*event) == "cancelOperation:";
  if (closes) cancelOperation(this);
  else NSWindow::keyDown(event);
}

void NSPanel::cancelOperation(NSObject* sender) { performClose(sender); }

}  // namespace tessaluna::platform
