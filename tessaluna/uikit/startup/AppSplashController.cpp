#include "tessaluna/uikit/startup/AppSplashController.h"

#include "tessaluna/platform/foundation/memberTables.h"
#include "tessaluna/platform/windows/NSScreen.h"

namespace TessalunaUIKit {

using namespace tessaluna::platform;

const Outlet AppSplashController::outlets_[] = {
    outlet<&AppSplashController::setProgressIndicator>("progressIndicator"),
    outlet<&AppSplashController::setAppIconView>("appIconView"), outlet<&AppSplashController::setTitleLabel>("titleLabel"),
    outlet<&AppSplashController::setInformativeTextLabel>("informativeTextLabel"),
    outlet<&AppSplashController::setCurrentStepTextLabel>("currentStepTextLabel")};

const ClassInfo AppSplashController::staticClassInfo{.name = "TessalunaUIKit.AppSplashController",
                                                     .base = &NSWindowController::staticClassInfo,
                                                     .outlets = AppSplashController::outlets_};

void AppSplashController::windowDidLoad() {
  NSWindowController::windowDidLoad();
  appIconView_->setImage(NSImage::imageNamed("AppIcon.icns"));
  progressIndicator_->startAnimation(nullptr);
  const Ref<NSWindow> splash = window();
  if (!splash) return;
  Ref<NSScreen> screen = splash->screen();
  if (!screen) screen = NSScreen::mainScreen();
  if (!screen) stopProgram(className() + ": there is no screen for the window");
  const CGSize whole = screen->frame().size, size = splash->frame().size;
  // Intentional: the screen's origin is not added, so the window comes to the primary screen's side of the desktop.
  splash->setFrame({{whole.width * 0.5 - size.width * 0.5, whole.height * 0.5 - size.height * 0.5}, size}, /*display=*/true);
}

}  // namespace TessalunaUIKit
