#include "tessaluna/platform/cells/NSCell.h"

#include "tessaluna/platform/foundation/NSCoder.h"
#include "tessaluna/platform/foundation/NSString.h"
#include "tessaluna/platform/foundation/memberTables.h"
#include "tessaluna/platform/graphics/NSBezierPath.h"
#include "tessaluna/platform/graphics/NSColor.h"
#include "tessaluna/platform/graphics/NSImage.h"
#include "tessaluna/platform/interface_files/archivedLooks.h"
#include "tessaluna/platform/text/NSFont.h"
#include "tessaluna/platform/views/NSView.h"

namespace tessaluna::platform {

namespace {

constexpr Property cellProperties[] = {property<&NSCell::setEnabled, "enabled">(),
                                       property<&NSCell::setHighlighted, "highlighted">(),
                                       property<&NSCell::setState, "state">(),
                                       property<&NSCell::setTag, "tag">(),
                                       property<&NSCell::setStringValue, "stringValue">(),
                                       property<&NSCell::setIntegerValue, "integerValue">(),
                                       property<&NSCell::setDoubleValue, "doubleValue">(),
                                       property<&NSCell::setFloatValue, "floatValue">(),
                                       property<&NSCell::setTitle, "title">(),
                                       property<&NSCell::setFont, "font">(),
                                       property<&NSCell::setAlignment, "alignment">(),
                                       property<&NSCell::setLineBreakMode, "lineBreakMode">(),
                                       property<&NSCell::setBackgroundStyle, "backgroundStyle">(),
                                       property<&NSCell::setImage, "image">(),
                                       property<&NSCell::setBordered, "bordered">(),
                                       property<&NSCell::setBezeled, "bezeled">(),
                                       property<&NSCell::setContinuous, "continuous">()};

constexpr CGFloat disabledOnSelection = 0.6;  // of the text's alpha

}  // namespace

const ClassInfo NSCell::staticClassInfo{.name = "NSCell", .base = &NSObject::staticClassInfo, .properties = cellProperties};

NSCell::NSCell(NSCoder& coder) : NSObject(coder) {
  setEnabled(!coder.containsValueForKey("enabled") || coder.decodeBoolForKey("enabled"));
  setHighlighted(coder.decodeBoolForKey("highlighted"));
  setState(coder.decodeEnumForKey<NSControlStateValue>("state").value_or(state()));
  setTag(coder.decodeIntegerForKey("tag"));
  // The class's own way of keeping its value is not there yet.
  NSCell::setObjectValue(make<NSString>(coder.decodeStringForKey("stringValue").value_or("")));
  const double size = coder.decodeDoubleForKey("fontSize");
  const bool isBold = coder.decodeBoolForKey("isBold");
  if (size > 0) setFont(isBold ? NSFont::boldSystemFontOfSize(size) : NSFont::systemFontOfSize(size));
  setAlignment(coder.decodeEnumForKey<NSTextAlignment>("alignment").value_or(alignment()));
  setLineBreakMode(coder.decodeEnumForKey<NSLineBreakMode>("lineBreakMode").value_or(lineBreakMode()));
}

NSCell::NSCell(std::string text) { copied_.value = make<NSString>(text); }
NSCell::NSCell(Ref<NSImage> image) { copied_.image = std::move(image); }
NSCell::NSCell(const NSCell& other) : NSObject(), NSAccessibility(), CellValue(), copied_(other.copied_) {}
NSCell::~NSCell() = default;

bool NSCell::isEnabled() const { return copied_.isEnabled && (!controlView_ || controlView_->areControlsEnabled()); }

Ref<NSAttributedString> NSCell::attributedStringValue() const {
  const Ref<NSObject> value = objectValue();
  if (auto attributed = std::dynamic_pointer_cast<NSAttributedString>(value)) return attributed;
  return make<NSAttributedString>(std::string_view(stringValue()), plainAttributes());
}

void NSCell::setAttributedStringValue(Ref<NSAttributedString> text) { setObjectValue(std::move(text)); }

Ref<NSColor> NSCell::plainTextColor() const {
  if (backgroundStyle() == NSBackgroundStyleLight)
    return isEnabled() ? NSColor::controlTextColor() : NSColor::disabledControlTextColor();
  // The disabled color is made for the window's ground, and may be close to that of a selection.
  const Ref<NSColor> onSelection = NSColor::alternateSelectedControlTextColor();
  return isEnabled() ? onSelection : onSelection->colorWithAlphaComponent(disabledOnSelection);
}

NSAttributes NSCell::plainAttributes() const {
  return {{NSFontAttributeName, font() ? font() : NSFont::systemFontOfSize(NSFont::systemFontSize())},
          {NSForegroundColorAttributeName, plainTextColor()},
          {NSParagraphStyleAttributeName, make<NSParagraphStyle>(alignment(), lineBreakMode())}};
}

CGSize NSCell::cellSize() const {
  const Ref<NSAttributedString> text = attributedStringValue();
  if (text->length() > 0) return text->size();
  // Without a character to carry the font: as high as the first line will be.
  return {0, NSAttributedString("x", plainAttributes()).size().height};
}

void NSCell::drawWithFrame(CGRect frame, NSView& view) {
  if (copied_.border != Border::None) {
    const CGFloat strength = copied_.border == Border::Bezel ? 0.3 : 1;
    NSColor::controlTextColor()->colorWithAlphaComponent(strength)->setStroke();
    NSBezierPath::bezierPathWithRect(NSInsetRect(frame, 0.5, 0.5))->stroke();
  }
  drawInteriorWithFrame(frame, view);
}

void NSCell::setContinuous(bool isContinuous) {
  const NSEventMask others = copied_.actionMask & ~NSEventMaskLeftMouseDragged;
  sendActionOn(isContinuous ? others | NSEventMaskLeftMouseDragged : others);
}

bool NSCell::startTrackingAt(CGPoint, NSView&) { return true; }
bool NSCell::continueTracking(CGPoint, CGPoint, NSView&) { return true; }
void NSCell::stopTracking(CGPoint, CGPoint, NSView&, bool) {}

std::string NSCell::accessibilityHelp() const { return controlView_ ? controlView_->toolTip() : std::string(); }

bool NSCell::isAccessibilityFocused() const { return controlView_ && controlView_->isAccessibilityFocused(); }

CGRect NSCell::accessibilityFrame() const { return controlView_ ? controlView_->accessibilityFrame() : CGRect{}; }

Ref<NSObject> NSCell::accessibilityParent() const {
  return controlView_ ? NSAccessibilityUnignoredAncestor(refTo<NSObject>(*controlView_)) : nullptr;
}

std::optional<AccessibilityElements> NSCell::accessibilityOwnChildren() const {
  return controlView_ ? std::optional(AccessibilityElements()) : std::nullopt;
}

bool NSCell::accessibilityIsAttributeSettable(std::string_view attribute) const {
  return controlView_ && controlView_->accessibilityIsAttributeSettable(attribute);
}

void NSCell::accessibilitySetValue(const AccessibilityValue& value, std::string_view forAttribute) {
  if (controlView_) controlView_->accessibilitySetValue(value, forAttribute);
}

}  // namespace tessaluna::platform
