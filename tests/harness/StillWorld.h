// The world made still: one virtual screen, a clock that only the test moves, and an application that goes when the test
// ends. What a test sets of the system's version is taken back.
#pragma once

#include <gtest/gtest.h>

#include "backends/headless/HeadlessBackend.h"
#include "backends/headless/VirtualUser.h"
#include "platform/foundation/SystemVersion.h"
#include "platform/views/NSView.h"
#include "platform/windows/NSApplication.h"
#include "platform/windows/NSWindow.h"

namespace harness {

class StillWorld : public testing::Test {
 protected:
  StillWorld() { platform::NSApplication::sharedApplication(); }
  ~StillWorld() override {
    // A view that remembers its events remembers its window with them: the two let go of each other here.
    if (platform::NSApp)
      for (const platform::Ref<platform::NSWindow>& window : platform::NSApp->windows())
        window->setContentView(nullptr);
    platform::NSApp.reset();
    platform::setOperatingSystemVersion(systemVersion_);
    platform::NSAppKitVersionNumber = kitVersion_;
  }

  // A titled window on the screen, painted, with the key status; content of 200 by 150 points.
  platform::Ref<platform::NSWindow> showWindow(platform::CGRect content = {100, 100, 200, 150}) {
    auto window = platform::make<platform::NSWindow>(content, platform::NSWindowStyleMaskTitled,
                                                     platform::NSBackingStoreBuffered, /*defer=*/true);
    window->makeKeyAndOrderFront(nullptr);
    desktop.settle();
    return window;
  }

  // The same with the view in it, its paints forgotten.
  platform::Ref<platform::NSWindow> showWindowWith(const platform::Ref<platform::NSView>& view) {
    auto window = showWindow();
    window->contentView()->addSubview(view);
    desktop.settle();
    nativeOf(*window).forgetPaints();
    return window;
  }

  static backend::headless::HeadlessWindow& nativeOf(const platform::NSWindow& window) {
    return backend::headless::HeadlessWindow::of(window);
  }

  backend::headless::HeadlessBackend desktop;
  backend::headless::VirtualUser user{desktop};

 private:
  const platform::NSOperatingSystemVersion systemVersion_ = platform::operatingSystemVersion();
  const double kitVersion_ = platform::NSAppKitVersionNumber;
};

}  // namespace harness
