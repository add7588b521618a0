// The window of a completion pop-up: borderless, with a shadow, painted by what stands in it. Assistive clients do not see
// it; its list hangs under the field's cell.
#pragma once

#include "platform/windows/NSWindow.h"
#include "uikit/suggestions/SuggestibleTextFieldCell.h"

namespace TessalunaUIKit {

class SuggestionsWindow : public platform::NSWindow {
 public:
  static const platform::ClassInfo staticClassInfo;
  const platform::ClassInfo& classInfo() const override { return staticClassInfo; }

  SuggestionsWindow(platform::CGRect contentRect, bool defer);
  // Wanted: borderless whatever the style mask says.
  SuggestionsWindow(platform::CGRect contentRect, std::uint32_t styleMask, platform::NSBackingStoreType backing,
                    bool defer);

  // The cell of the field that the pop-up belongs to while it is open; not kept alive.
  platform::Ref<SuggestibleTextFieldCell> parentElement() const { return parentElement_.lock(); }
  void setParentElement(const platform::Ref<SuggestibleTextFieldCell>& element) { parentElement_ = element; }

  bool isAccessibilityElement() const override { return false; }
  platform::Ref<platform::NSObject> accessibilityParent() const override;

 private:
  platform::WeakRef<SuggestibleTextFieldCell> parentElement_;
};

}  // namespace TessalunaUIKit
