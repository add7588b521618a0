// The world made still: one virtual screen, a clock that only the test moves, and an application that goes when the test
// ends. What a test sets of the system's version is taken back.
#pragma once

#include <gtest/gtest.h>

#include "tessaluna/backends/headless/HeadlessBackend.h"
#include "tessaluna/backends/headless/VirtualUser.h"
#include "tessaluna/platform/foundation/SystemVersion.h"
#include "tessaluna/platform/views/NSView.h"
#include "tessaluna/platform/windows/NSApplication.h"
#include "tessaluna/platform/windows/NSWindow.h"

namespace harness {

class StillWorld : public testing::Test {
 protected:
  StillWorld() { tessaluna::platform::NSApplication::sharedApplication(); }
  // A view that remembers its events remembers its window with them: the two let go of each other here, while what the views
  // may still write to exists.
  void TearDown() override {
    if (!tessaluna::platform::NSApp) return;
    for (const tessaluna::platform::Ref<tessaluna::platform::NSWindow>& window : tessaluna::platform::NSApp->windows())
      window->setContentView(nullptr);
  }
  ~StillWorld() override {
    tessaluna::platform::NSApp.reset();
    tessaluna::platform::setOperatingSystemVersion(systemVersion_);
    tessaluna::platform::NSAppKitVersionNumber = kitVersion_;
  }

  // A titled window on the screen, painted, with the key status; content of 200 by 150 points.
  tessaluna::platform::Ref<tessaluna::platform::NSWindow> showWindow(tessaluna::platform::CGRect content = {100, 100, 200,
                                                                                                            150}) {
    auto window = tessaluna::platform::make<tessaluna::platform::NSWindow>(
        content, tessaluna::platform::NSWindowStyleMaskTitled, tessaluna::platform::NSBackingStoreBuffered, /*defer=*/true);
    window->makeKeyAndOrderFront(nullptr);
    desktop.settle();
    return window;
  }

  // The same with the view in it, its paints forgotten.
  tessaluna::platform::Ref<tessaluna::platform::NSWindow> showWindowWith(
      const tessaluna::platform::Ref<tessaluna::platform::NSView>& view) {
    auto window = showWindow();
    window->contentView()->addSubview(view);
    desktop.settle();
    nativeOf(*window).forgetPaints();
    return window;
  }

  static tessaluna::backend::headless::HeadlessWindow& nativeOf(const tessaluna::platform::NSWindow& window) {
    return tessaluna::backend::headless::HeadlessWindow::of(window);
  }

  tessaluna::backend::headless::HeadlessBackend desktop;
  tessaluna::backend::headless::VirtualUser user{desktop};

 private:
  const tessaluna::platform::NSOperatingSystemVersion systemVersion_ = tessaluna::platform::operatingSystemVersion();
  const double kitVersion_ = tessaluna::platform::NSAppKitVersionNumber;
};

}  // namespace harness
