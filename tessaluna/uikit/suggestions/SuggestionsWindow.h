// The window of a completion pop-up: borderless, with a shadow, painted by the views in it. Assistive clients do not see
// it; its list hangs under the field's cell.
#pragma once

#include "tessaluna/platform/windows/NSWindow.h"
#include "tessaluna/uikit/suggestions/SuggestibleTextFieldCell.h"

namespace TessalunaUIKit {

class SuggestionsWindow : public tessaluna::platform::NSWindow {
 public:
  static const tessaluna::platform::ClassInfo staticClassInfo;
  const tessaluna::platform::ClassInfo& classInfo() const override { return staticClassInfo; }

  SuggestionsWindow(tessaluna::platform::CGRect contentRect, bool defer);
  // Intentional: borderless whatever the style mask says.
  SuggestionsWindow(tessaluna::platform::CGRect contentRect, std::uint32_t styleMask,
                    tessaluna::platform::NSBackingStoreType backing, bool defer);

  // The cell of the field that the pop-up belongs to while it is open; not kept alive.
  tessaluna::platform::Ref<SuggestibleTextFieldCell> parentElement() const { return parentElement_.lock(); }
  void setParentElement(const tessaluna::platform::Ref<SuggestibleTextFieldCell>& element) { parentElement_ = element; }

  bool isAccessibilityElement() const override { return false; }
  // The parent element, or what it is in if that is ignored; without one that of any window.
  tessaluna::platform::Ref<tessaluna::platform::NSObject> accessibilityParent() const override;

 private:
  tessaluna::platform::WeakRef<SuggestibleTextFieldCell> parentElement_;
};

}  // namespace TessalunaUIKit
