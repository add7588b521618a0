// What the rows of a completion pop-up stand in, the first one at the top. To assistive clients it is a vertical list whose
// selection can be read, and set by those who try although they are told that it cannot.
#pragma once

#include "platform/views/NSView.h"

namespace TessalunaUIKit {

class SuggestionsContentView : public platform::NSView {
 public:
  static const platform::ClassInfo staticClassInfo;
  const platform::ClassInfo& classInfo() const override { return staticClassInfo; }

  explicit SuggestionsContentView(platform::CGRect frame) : NSView(frame) {}
  explicit SuggestionsContentView(platform::NSCoder& coder) : NSView(coder) {}

  void drawRect(platform::CGRect dirtyRect) override;
  bool isFlipped() const override { return true; }

  bool isAccessibilityElement() const override { return true; }
  bool accessibilityIsIgnored() const override { return false; }
  // The program stops if children that are no list are asked for the selected ones.
  platform::AccessibilityValue accessibilityAttributeValue(std::string_view attribute) const override;
  bool accessibilityIsAttributeSettable(std::string_view attribute) const override;
  // As selected children one row, which becomes the selected one; anything else clears the selection. The controller's
  // target is not told.
  void accessibilitySetValue(const platform::AccessibilityValue& value, std::string_view forAttribute) override;
};

}  // namespace TessalunaUIKit
