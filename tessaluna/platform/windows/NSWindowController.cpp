#include "tessaluna/platform/windows/NSWindowController.h"

#include <utility>

#include "tessaluna/platform/foundation/memberTables.h"
#include "tessaluna/platform/interface_files/NSNib.h"

namespace tessaluna::platform {

const Outlet NSWindowController::outlets_[] = {outlet<&NSWindowController::setWindow>("window")};
const ClassInfo NSWindowController::staticClassInfo{
    .name = "NSWindowController", .base = &NSResponder::staticClassInfo, .outlets = NSWindowController::outlets_};

NSWindowController::NSWindowController(Ref<NSWindow> window) : window_(std::move(window)) {}
NSWindowController::NSWindowController(std::string windowNibName) : nibName_(std::move(windowNibName)) {}
NSWindowController::~NSWindowController() = default;

void NSWindowController::didInit() {
  NSResponder::didInit();
  if (window_) window_->setWindowController(refTo(*this));
}

void NSWindowController::setWindow(Ref<NSWindow> window) {
  if (window_ && window_->windowController().get() == this) window_->setWindowController(nullptr);
  window_ = std::move(window);
  if (window_) window_->setWindowController(refTo(*this));
}

const Ref<NSWindow>& NSWindowController::window() {
  if (!window_ && nibName_ && !std::exchange(hasLoaded_, true)) loadWindow(*nibName_);
  return window_;
}

void NSWindowController::loadWindow(const std::string& nibName) {
  const Ref<NSNib> nib = NSNib::nibNamed(nibName);
  if (!nib) stopProgram(className() + ": there is no interface file \"" + nibName + "\"");
  NSNib::Contents contents = nib->instantiateWithOwner(refTo(*this));
  if (contents.error) stopProgram(className() + ": interface file \"" + nibName + "\": " + *contents.error);
  topLevelObjects_ = std::move(contents.topLevelObjects);
  windowDidLoad();
}

void NSWindowController::showWindow(NSObject* sender) {
  if (const Ref<NSWindow> shown = window()) shown->makeKeyAndOrderFront(sender);
}

void NSWindowController::close() {
  if (const Ref<NSWindow> shown = window_) shown->close();
}

}  // namespace tessaluna::platform
