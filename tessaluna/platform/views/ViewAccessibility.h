// The sixth part of a view: what it is to assistive clients. A plain view is ignored, and its children take its place.
// Hidden views are left out, and those that a view leaves out.
#pragma once

#include "tessaluna/platform/accessibility/NSAccessibility.h"
#include "tessaluna/platform/views/ViewTracking.h"

namespace tessaluna::platform {

class ViewAccessibility : public ViewTracking, public NSAccessibility {
 public:
  using ViewTracking::ViewTracking;

  CGRect accessibilityFrame() const override;
  std::string accessibilityHelp() const override { return toolTip(); }
  bool isAccessibilityFocused() const override;  // the view, or one in it, is its window's first responder
  Ref<NSObject> accessibilityParent() const override;
  // The focus can be given to a view that takes it.
  bool accessibilityIsAttributeSettable(std::string_view attribute) const override;
  void accessibilitySetValue(const AccessibilityValue& value, std::string_view forAttribute) override;

 protected:
  std::optional<AccessibilityElements> accessibilityOwnChildren() const override;
};

}  // namespace tessaluna::platform
