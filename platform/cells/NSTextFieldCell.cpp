#include "platform/cells/NSTextFieldCell.h"

#include "platform/graphics/NSBezierPath.h"
#include "platform/graphics/NSColor.h"
#include "platform/graphics/NSRect.h"
#include "platform/views/NSControl.h"

namespace platform {

const ClassInfo NSTextFieldCell::staticClassInfo{.name = "NSTextFieldCell", .base = &NSCell::staticClassInfo};

namespace {

// Between the text and the cell's edge: beside every text, and around one in a frame.
constexpr CGFloat sideMargin = 2, bezelMargin = 3;

}  // namespace

NSTextFieldCell::NSTextFieldCell(NSCoder& coder) : NSCell(coder) {
  isBezeled_ = coder.decodeBoolForKey("bezeled");
  isEditable_ = coder.decodeBoolForKey("editable");
  isSelectable_ = coder.decodeBoolForKey("selectable");
  drawsBackground_ = coder.decodeBoolForKey("drawsBackground");
  placeholder_ = coder.decodeStringForKey("placeholder").value_or("");
}

Ref<NSColor> NSTextFieldCell::plainTextColor() const {
  // A color of one's own stays on any ground.
  return textColor_ && isEnabled() ? textColor_ : NSCell::plainTextColor();
}

std::string NSTextFieldCell::accessibilityRole() const {
  return std::string(isEditable_ ? NSAccessibilityTextFieldRole : NSAccessibilityStaticTextRole);
}

bool NSTextFieldCell::accessibilityIsAttributeSettable(std::string_view attribute) const {
  if (attribute == NSAccessibilityValueAttribute) return isEditable_ && isEnabled();
  return NSCell::accessibilityIsAttributeSettable(attribute);
}

void NSTextFieldCell::accessibilitySetValue(const AccessibilityValue& value, std::string_view forAttribute) {
  if (forAttribute != NSAccessibilityValueAttribute) return NSCell::accessibilitySetValue(value, forAttribute);
  const auto* text = value.as<std::string>();
  if (!text || !accessibilityIsAttributeSettable(forAttribute)) return;
  if (auto* control = dynamic_cast<NSControl*>(controlView())) control->setStringValue(*text);
  else setStringValue(*text);
}

CGSize NSTextFieldCell::cellSize() const {
  const CGSize text = NSCell::cellSize();
  const CGFloat margin = isBezeled_ ? bezelMargin : 0;
  return {text.width + 2 * (sideMargin + margin), text.height + 2 * margin};
}

CGRect NSTextFieldCell::titleRectForBounds(CGRect bounds) const {
  const CGFloat margin = isBezeled_ ? bezelMargin : 0;
  return NSInsetRect(bounds, sideMargin + margin, margin);
}

void NSTextFieldCell::drawWithFrame(CGRect frame, NSView& view) {
  if (drawsBackground_ || isBezeled_) {
    (backgroundColor_ ? backgroundColor_ : NSColor::controlBackgroundColor())->setFill();
    NSRectFillUsingOperation(frame, NSCompositingOperationSourceOver);
  }
  if (isBezeled_) {
    const auto edge = NSBezierPath::bezierPathWithRect(NSInsetRect(frame, 0.5, 0.5));
    NSColor::controlTextColor()->colorWithAlphaComponent(0.3)->setStroke();
    edge->stroke();
  }
  drawInteriorWithFrame(frame, view);
}

void NSTextFieldCell::drawInteriorWithFrame(CGRect frame, NSView&) {
  const CGRect box = titleRectForBounds(frame);
  const auto text = attributedStringValue();
  if (text->length() > 0) {
    text->drawInRect(box);
  } else if (!placeholder_.empty()) {
    NSAttributes attributes = plainAttributes();
    attributes[NSForegroundColorAttributeName] = NSColor::disabledControlTextColor();
    NSAttributedString(std::string_view(placeholder_), attributes).drawInRect(box);
  }
}

}  // namespace platform
