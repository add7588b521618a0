#include "tessaluna/platform/windows/effectiveAppearance.h"

#include "tessaluna/platform/foundation/NSNotificationCenter.h"
#include "tessaluna/platform/views/NSView.h"
#include "tessaluna/platform/windows/NSApplication.h"
#include "tessaluna/platform/windows/NSWindow.h"

namespace tessaluna::platform {

namespace {

std::size_t changes = 0;

void markAll(NSView& view) {
  view.invalidateIntrinsicContentSize();
  view.setNeedsLayout(true);
  for (const Ref<NSView>& subview : view.subviews()) markAll(*subview);
}

}  // namespace

std::size_t effectiveAppearanceChanges() { return changes; }

void effectiveAppearanceDidChange() {
  ++changes;
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
