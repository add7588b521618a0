// The world made still: one virtual screen, a clock that only the test moves, and an application that ends with the test.
// A system version that a test sets is restored.
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
  // A view that keeps its events keeps its window with them: the two release each other here, while everything that the views
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

  // A titled key window on the screen, painted; its content is 200 by 150 points by default.
  tessaluna::platform::Ref<tessaluna::platform::NSWindow> showWindow(tessaluna::platform::CGRect content = {100, 100, 200,
                                                                                                            150}) {
    auto window = tessaluna::platform::make<tessaluna::platform::NSWindow>(
        content, tessaluna::platform::NSWindowStyleMaskTitled, tessaluna::platform::NSBackingStoreBuffered, /*defer=*/true);
    window->makeKeyAndOrderFront(nullptr);
    desktop.settle();
    return window;
  }

  // The same with the view in it, and its paints forgotten.
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
