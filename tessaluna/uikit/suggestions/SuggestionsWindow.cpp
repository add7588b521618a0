#include "tessaluna/uikit/suggestions/SuggestionsWindow.h"

#include "tessaluna/platform/graphics/NSColor.h"

namespace TessalunaUIKit {

using namespace tessaluna::platform;

const ClassInfo SuggestionsWindow::staticClassInfo{.name = "TessalunaUIKit.SuggestionsWindow",
                                                   .base = &NSWindow::staticClassInfo};

SuggestionsWindow::SuggestionsWindow(CGRect contentRect, bool defer)
    : SuggestionsWindow(contentRect, NSWindowStyleMaskBorderless, NSBackingStoreBuffered, defer) {}

SuggestionsWindow::SuggestionsWindow(CGRect contentRect, std::uint32_t, NSBackingStoreType backing, bool defer)
    : NSWindow(contentRect, NSWindowStyleMaskBorderless, backing, defer) {
  setHasShadow(true);
  setBackgroundColor(NSColor::clearColor());
  setOpaque(false);
}

Ref<NSObject> SuggestionsWindow::accessibilityParent() const {
  if (const Ref<SuggestibleTextFieldCell> element = parentElement()) return NSAccessibilityUnignoredAncestor(element);
  return NSWindow::accessibilityParent();
}

}  // namespace TessalunaUIKit
