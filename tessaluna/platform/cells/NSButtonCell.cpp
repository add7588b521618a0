#include "tessaluna/platform/cells/NSButtonCell.h"

#include "tessaluna/platform/cells/buttonBox.h"
#include "tessaluna/platform/foundation/NSCoder.h"
#include "tessaluna/platform/foundation/NSNumber.h"
#include "tessaluna/platform/foundation/memberTables.h"
#include "tessaluna/platform/views/NSButton.h"

namespace tessaluna::platform {

namespace {

// Between the title and the box, on each side.
constexpr CGFloat titleMarginX = 10, titleMarginY = 4;

constexpr Property buttonCellProperties[] = {
    property<&NSButtonCell::setKeyEquivalent, "keyEquivalent">(),
    property<&NSButtonCell::setKeyEquivalentModifierMask, "keyEquivalentModifierMask">(),
    property<&NSButtonCell::setButtonType, "buttonType">(),
    property<&NSButtonCell::setAllowsMixedState, "allowsMixedState">()};

}  // namespace

const ClassInfo NSButtonCell::staticClassInfo{
    .name = "NSButtonCell", .base = &NSCell::staticClassInfo, .properties = buttonCellProperties};

NSButtonCell::NSButtonCell() : NSButtonCell(std::string()) {}

NSButtonCell::NSButtonCell(std::string title) : title_(std::move(title)) {
  setAlignment(NSTextAlignmentCenter);
  setBordered(true);
}

NSButtonCell::NSButtonCell(NSCoder& coder) : NSCell(coder) {
  setAlignment(NSTextAlignmentCenter);
  setBordered(true);
  if (const auto title = coder.decodeStringForKey("title")) setTitle(*title);
  keyEquivalent_ = coder.decodeStringForKey("keyEquivalent").value_or("");
  keyEquivalentModifierMask_ = static_cast<std::uint32_t>(coder.decodeIntegerForKey("keyEquivalentModifierMask"));
  buttonType_ = coder.decodeEnumForKey<NSButtonType>("buttonType").value_or(buttonType_);
  allowsMixedState_ = coder.decodeBoolForKey("allowsMixedState");
}

NSControlStateValue NSButtonCell::nextState() const {
  if (state() == NSControlStateValueOn) return NSControlStateValueOff;
  const bool isMixedNext = state() == NSControlStateValueOff && allowsMixedState_;
  return isMixedNext ? NSControlStateValueMixed : NSControlStateValueOn;
}

Ref<NSObject> NSButtonCell::objectValue() const { return make<NSNumber>(static_cast<int>(state())); }

void NSButtonCell::setObjectValue(Ref<NSObject> value) {
  const double number = doubleOf(value.get());
  setState(number > 0 ? NSControlStateValueOn : number < 0 ? NSControlStateValueMixed : NSControlStateValueOff);
}

Ref<NSAttributedString> NSButtonCell::attributedTitle() const {
  return make<NSAttributedString>(std::string_view(title_), plainAttributes());
}

void NSButtonCell::drawWithFrame(CGRect frame, NSView& view) {
  if (!isBordered() && !isBezeled()) return drawInteriorWithFrame(frame, view);
  drawButtonBox(frame, {.isDown = isHighlighted() || state() == NSControlStateValueOn, .isEnabled = isEnabled()});
  drawInteriorWithFrame(frame, view);
}

std::string NSButtonCell::accessibilityRole() const {
  return std::string(buttonType_ == NSButtonType::Toggle ? NSAccessibilityCheckBoxRole : NSAccessibilityButtonRole);
}

AccessibilityValue NSButtonCell::accessibilityValue() const {
  return buttonType_ == NSButtonType::Toggle ? AccessibilityValue(static_cast<double>(state())) : AccessibilityValue();
}

bool NSButtonCell::accessibilityPerformPress() {
  auto* button = dynamic_cast<NSButton*>(controlView());
  if (!button || !isEnabled()) return false;
  button->performClick(nullptr);
  return true;
}

CGSize NSButtonCell::cellSize() const {
  const CGSize text = attributedTitle()->size();
  return {text.width + 2 * titleMarginX, text.height + 2 * titleMarginY};
}

void NSButtonCell::drawInteriorWithFrame(CGRect frame, NSView&) {
  const auto title = attributedTitle();
  if (title->length() == 0) return;
  const CGFloat height = title->size().height;
  title->drawInRect({frame.origin.x, frame.origin.y + (frame.size.height - height) * 0.5, frame.size.width, height});
}

}  // namespace tessaluna::platform
