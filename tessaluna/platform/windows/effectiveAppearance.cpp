#include "tessaluna/platform/windows/effectiveAppearance.h"

#include "tessaluna/platform/foundation/NSNotificationCenter.h"
#include "tessaluna/platform/views/NSView.h"
#include "tessaluna/platform/windows/NSApplication.h"
#include "tessaluna/platform/windows/NSWindow.h"

namespace tessaluna::platform {

namespace {

void markAll(NSView& view) {
  view.invalidateIntrinsicContentSize();
  view.setNeedsLayout(true);
  for (const Ref<NSView>& subview : view.subviews()) markAll(*subview);
}

}  // namespace

void effectiveAppearanceDidChange() {
  NSNotificationCenter::defaultCenter().postNotification(
      make<NSNotification>(std::string(NSSystemColorsDidChangeNotification), nullptr));
  if (!NSApp) return;
  for (const Ref<NSWindow>& window : NSApp->windows()) {
    const Ref<NSView> content = window->contentView();
    if (!content) continue;
    markAll(*content);
    content->setNeedsDisplay(true);
  }
}

}  // namespace tessaluna::platform
