// The look of a push button: a rounded box that darkens while it is pressed, or lightens on a dark palette. Its value is its
// state, as a number; its title is beside that.
#pragma once

#include <string>

#include "tessaluna/platform/accessibility/NSAccessibilityButton.h"
#include "tessaluna/platform/cells/NSCell.h"
#include "tessaluna/platform/foundation/EnumNames.h"

namespace tessaluna::platform {

enum class NSButtonType { MomentaryPushIn, Toggle };

template <>
struct EnumNames<NSButtonType> {
  static constexpr NamedValue all[] = {{"momentaryPushIn", std::int64_t(NSButtonType::MomentaryPushIn)},
                                       {"toggle", std::int64_t(NSButtonType::Toggle)}};
};

class NSButtonCell : public NSCell, public NSAccessibilityButton {
 public:
  static const ClassInfo staticClassInfo;
  const ClassInfo& classInfo() const override { return staticClassInfo; }

  NSButtonCell();
  explicit NSButtonCell(std::string title);
  // Keys besides the cell's: "title", "keyEquivalent", "keyEquivalentModifierMask", "buttonType", "allowsMixedState".
  explicit NSButtonCell(NSCoder& coder);
  Ref<NSCell> copy() const override { return make<NSButtonCell>(*this); }

  // Setting a value sets the state: on for a positive number, mixed for a negative one, off for 0.
  Ref<NSObject> objectValue() const override;
  void setObjectValue(Ref<NSObject> value) override;
  std::string title() const override { return title_; }
  void setTitle(std::string_view title) override { title_ = title; }
  Ref<NSAttributedString> attributedTitle() const;

  // The characters that press the button, and the modifiers that must be down with them; none if empty.
  const std::string& keyEquivalent() const { return keyEquivalent_; }
  void setKeyEquivalent(std::string characters) { keyEquivalent_ = std::move(characters); }
  std::uint32_t keyEquivalentModifierMask() const { return keyEquivalentModifierMask_; }
  void setKeyEquivalentModifierMask(std::uint32_t mask) { keyEquivalentModifierMask_ = mask; }
  NSButtonType buttonType() const { return buttonType_; }
  void setButtonType(NSButtonType type) { buttonType_ = type; }
  // Whether the mixed state is one of those that clicks lead to; off initially. It can be set in any case.
  bool allowsMixedState() const { return allowsMixedState_; }
  void setAllowsMixedState(bool allows) { allowsMixedState_ = allows; }
  // After on comes off, then mixed where that is allowed, then on.
  NSControlStateValue nextState() const;

  // The box is drawn for a bordered cell, which it is initially, and for a bezeled one.
  CGSize cellSize() const override;
  void drawWithFrame(CGRect frame, NSView& view) override;
  void drawInteriorWithFrame(CGRect frame, NSView& view) override;

  // One that toggles is a check box, whose value is its state. Pressing it is what a click does.
  std::string accessibilityRole() const override;
  std::string accessibilityTitle() const override { return title(); }
  AccessibilityValue accessibilityValue() const override;
  std::string accessibilityLabel() const override { return {}; }  // the title says what the button does
  bool accessibilityPerformPress() override;

 private:
  std::string title_, keyEquivalent_;
  std::uint32_t keyEquivalentModifierMask_ = 0;
  NSButtonType buttonType_ = NSButtonType::MomentaryPushIn;
  bool allowsMixedState_ = false;
};

}  // namespace tessaluna::platform
