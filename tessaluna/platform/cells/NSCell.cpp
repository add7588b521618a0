#include "tessaluna/platform/cells/NSCell.h"

#include <algorithm>

#include "tessaluna/platform/graphics/NSColor.h"
#include "tessaluna/platform/graphics/NSImage.h"
#include "tessaluna/platform/text/NSFont.h"
#include "tessaluna/platform/views/NSView.h"

namespace tessaluna::platform {

const ClassInfo NSCell::staticClassInfo{.name = "NSCell", .base = &NSObject::staticClassInfo};

NSCell::NSCell(NSCoder& coder) : NSObject(coder) {
  isEnabled_ = !coder.containsValueForKey("enabled") || coder.decodeBoolForKey("enabled");
  isHighlighted_ = coder.decodeBoolForKey("highlighted");
  state_ = static_cast<NSControlStateValue>(std::clamp<std::int64_t>(coder.decodeIntegerForKey("state"), -1, 1));
  tag_ = coder.decodeIntegerForKey("tag");
  stringValue_ = coder.decodeStringForKey("stringValue").value_or("");
  if (const double size = coder.decodeDoubleForKey("fontSize"); size > 0)
    font_ = coder.decodeBoolForKey("isBold") ? NSFont::boldSystemFontOfSize(size) : NSFont::systemFontOfSize(size);
  if (coder.containsValueForKey("alignment"))
    alignment_ = static_cast<NSTextAlignment>(std::clamp<std::int64_t>(coder.decodeIntegerForKey("alignment"), 0, 4));
  lineBreakMode_ = static_cast<NSLineBreakMode>(std::clamp<std::int64_t>(coder.decodeIntegerForKey("lineBreakMode"), 0, 5));
}

NSCell::NSCell(std::string text) : stringValue_(std::move(text)) {}
NSCell::NSCell(Ref<NSImage> image) : image_(std::move(image)) {}
NSCell::~NSCell() = default;

std::string NSCell::stringValue() const { return attributed_ ? attributed_->string() : stringValue_; }

void NSCell::setStringValue(std::string_view text) {
  attributed_ = nullptr;
  stringValue_ = text;
}

Ref<NSAttributedString> NSCell::attributedStringValue() const {
  if (attributed_) return attributed_;
  return make<NSAttributedString>(std::string_view(stringValue_), plainAttributes());
}

void NSCell::setAttributedStringValue(Ref<NSAttributedString> text) {
  attributed_ = std::move(text);
  stringValue_.clear();
}

Ref<NSColor> NSCell::plainTextColor() const {
  if (!isEnabled_) return NSColor::disabledControlTextColor();
  return backgroundStyle_ == NSBackgroundStyleDark ? NSColor::alternateSelectedControlTextColor()
                                                   : NSColor::controlTextColor();
}

NSAttributes NSCell::plainAttributes() const {
  return {{NSFontAttributeName, font_ ? font_ : NSFont::systemFontOfSize(NSFont::systemFontSize())},
          {NSForegroundColorAttributeName, plainTextColor()},
          {NSParagraphStyleAttributeName, make<NSParagraphStyle>(alignment_, lineBreakMode_)}};
}

CGSize NSCell::cellSize() const { return attributedStringValue()->size(); }

bool NSCell::startTrackingAt(CGPoint, NSView&) { return true; }
bool NSCell::continueTracking(CGPoint, CGPoint, NSView&) { return true; }
void NSCell::stopTracking(CGPoint, CGPoint, NSView&, bool) {}

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
