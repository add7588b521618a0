// The header of a section that folds (DisclosureView). Its button shows only while the pointer is over the header.
#pragma once

#include "tessaluna/platform/views/KeyboardWhileHidden.h"
#include "tessaluna/platform/views/NSButton.h"
#include "tessaluna/uikit/containers/ViewWithBackground.h"

namespace TessalunaUIKit {

class DisclosureView;

class DisclosureHeaderView : public ViewWithBackground, public tessaluna::platform::KeyboardWhileHidden {
 public:
  static const tessaluna::platform::ClassInfo staticClassInfo;
  const tessaluna::platform::ClassInfo& classInfo() const override { return staticClassInfo; }

  using ViewWithBackground::ViewWithBackground;  // outlets: "disclosureButton", "parentDisclosure"

  // Both are null initially and kept alive. Without a section the pointer never shows the button.
  const tessaluna::platform::Ref<tessaluna::platform::NSButton>& disclosureButton() const { return disclosureButton_; }
  void setDisclosureButton(tessaluna::platform::Ref<tessaluna::platform::NSButton> button);
  const tessaluna::platform::Ref<DisclosureView>& parentDisclosure() const { return parentDisclosure_; }
  void setParentDisclosure(tessaluna::platform::Ref<DisclosureView> view) { parentDisclosure_ = std::move(view); }

  // The pointer is followed in the bounds as they were at the first call, also after the header was resized.
  void updateTrackingAreas() override;
  // Nothing changes while the section does; such entries and exits, and those of other areas, are passed to the base class.
  void mouseEntered(const tessaluna::platform::Ref<tessaluna::platform::NSEvent>& event) override;
  void mouseExited(const tessaluna::platform::Ref<tessaluna::platform::NSEvent>& event) override;
  // A pointer that leaves the header takes the keyboard from nobody: a button that has it keeps it, and its keys press it.
  bool keepsKeyboardWhileHidden(const tessaluna::platform::NSView& hidden) const override {
    return &hidden == disclosureButton_.get();
  }

  // An addition, off initially: the header takes the keyboard, and Space and Return press its button, whether that shows or
  // not; to assistive clients the header is a disclosure triangle, which the same press works, and its button and texts are left
  // out.
  bool isOperable() const { return isOperable_; }
  void setIsOperable(bool isOperable);
  bool acceptsFirstResponder() const override { return isOperable_ || ViewWithBackground::acceptsFirstResponder(); }
  void keyDown(const tessaluna::platform::Ref<tessaluna::platform::NSEvent>& event) override;

  bool isAccessibilityElement() const override { return isOperable_ || ViewWithBackground::isAccessibilityElement(); }
  std::string accessibilityRole() const override;
  std::string accessibilityTitle() const override;  // the texts in it
  tessaluna::platform::AccessibilityValue accessibilityAttributeValue(std::string_view attribute) const override;
  std::vector<std::string> accessibilityActionNames() const override;
  void accessibilityPerformAction(std::string_view action) override;

 protected:
  std::optional<tessaluna::platform::AccessibilityElements> accessibilityOwnChildren() const override;

 private:
  bool takes(const tessaluna::platform::NSEvent& event) const;
  void press();

  tessaluna::platform::Ref<tessaluna::platform::NSButton> disclosureButton_;
  tessaluna::platform::Ref<DisclosureView> parentDisclosure_;
  tessaluna::platform::Ref<tessaluna::platform::NSTrackingArea> trackingArea_;
  bool isOperable_ = false;
};

}  // namespace TessalunaUIKit
