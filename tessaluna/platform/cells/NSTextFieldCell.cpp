#include "tessaluna/platform/cells/NSTextFieldCell.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "tessaluna/platform/accessibility/textPlaces.h"
#include "tessaluna/platform/events/NSEvent.h"
#include "tessaluna/platform/foundation/NSCoder.h"
#include "tessaluna/platform/foundation/memberTables.h"
#include "tessaluna/platform/graphics/NSColor.h"
#include "tessaluna/platform/graphics/NSRect.h"
#include "tessaluna/platform/interface_files/archivedLooks.h"
#include "tessaluna/platform/text/NSFont.h"
#include "tessaluna/platform/text/NSParagraphStyle.h"
#include "tessaluna/platform/text/TextLayout.h"
#include "tessaluna/platform/text/unicode.h"
#include "tessaluna/platform/views/NSClipView.h"
#include "tessaluna/platform/views/NSTextField.h"
#include "tessaluna/platform/windows/NSWindow.h"

namespace tessaluna::platform {

namespace {

constexpr Property textFieldCellProperties[] = {property<&NSTextFieldCell::setTextColor, "textColor">(),
                                                property<&NSTextFieldCell::setDrawsBackground, "drawsBackground">(),
                                                property<&NSTextFieldCell::setBackgroundColor, "backgroundColor">(),
                                                property<&NSTextFieldCell::setEditable, "editable">(),
                                                property<&NSTextFieldCell::setSelectable, "selectable">(),
                                                property<&NSTextFieldCell::setStandsAsIfEditable, "standsAsIfEditable">(),
                                                property<&NSTextFieldCell::setPlaceholderString, "placeholderString">()};

// Between the text and the cell's edge: beside every text, more beside one to write in, and around one in a frame.
constexpr CGFloat labelSideMargin = 2, editableSideMargin = 4, bezelMargin = 3, lineMargin = 1;

}  // namespace

const ClassInfo NSTextFieldCell::staticClassInfo{
    .name = "NSTextFieldCell", .base = &NSCell::staticClassInfo, .properties = textFieldCellProperties};

NSTextFieldCell::NSTextFieldCell(NSCoder& coder) : NSCell(coder) {
  setBezeled(coder.decodeBoolForKey("bezeled"));
  isEditable_ = coder.decodeBoolForKey("editable");
  isSelectable_ = coder.decodeBoolForKey("selectable");
  drawsBackground_ = coder.decodeBoolForKey("drawsBackground");
  placeholder_ = coder.decodeStringForKey("placeholder").value_or("");
}

void NSTextFieldCell::setSelectable(bool isSelectable) {
  isSelectable_ = isSelectable;
  if (!isSelectable) isEditable_ = false;
}

Ref<NSColor> NSTextFieldCell::plainTextColor() const {
  // A color of one's own stays on any ground.
  return textColor_ && isEnabled() ? textColor_ : NSCell::plainTextColor();
}

Ref<NSColor> NSTextFieldCell::placeholderColor() const { return NSColor::placeholderTextColor(); }

std::string NSTextFieldCell::accessibilityRole() const {
  return std::string(isEditable_ ? NSAccessibilityTextFieldRole : NSAccessibilityStaticTextRole);
}

AccessibilityValue NSTextFieldCell::accessibilityValue() const {
  const Ref<NSText> editor = this->editor();
  return editor ? editor->string() : stringValue();
}

namespace {

// What is answered by whoever edits the text.
bool isOfEditedText(std::string_view attribute) {
  return attribute == NSAccessibilitySelectedTextRangeAttribute || attribute == NSAccessibilitySelectedTextAttribute ||
         attribute == accessibilityInsertionPointAttribute || attribute == NSAccessibilityInsertionPointLineNumberAttribute;
}

}  // namespace

AccessibilityValue NSTextFieldCell::accessibilityAttributeValue(std::string_view attribute) const {
  if (attribute == NSAccessibilityPlaceholderValueAttribute && !placeholder_.empty()) return placeholder_;
  const Ref<NSText> editor = this->editor();
  if (attribute == NSAccessibilityNumberOfCharactersAttribute)
    return static_cast<double>(utf16FromUtf8(editor ? editor->string() : stringValue()).size());
  if (editor && isOfEditedText(attribute)) return editor->accessibilityAttributeValue(attribute);
  return NSCell::accessibilityAttributeValue(attribute);
}

AccessibilityValue NSTextFieldCell::accessibilityAttributeValueForParameter(std::string_view attribute,
                                                                            const AccessibilityValue& parameter) const {
  if (const Ref<NSText> editor = this->editor())
    return editor->accessibilityAttributeValueForParameter(attribute, parameter);
  if (!controlView()) return {};
  const CGRect box = drawnTextRectForBounds(controlView()->bounds());
  const Ref<NSAttributedString> text = attributedStringValue();
  const TextLayout layout(*text, {.width = box.size.width});
  // From the box's upper edge on.
  const auto inView = [&](CGRect rect) {
    const CGFloat y = controlView()->isFlipped() ? box.origin.y + rect.origin.y : CGRectGetMaxY(box) - CGRectGetMaxY(rect);
    return CGRect{{box.origin.x + rect.origin.x, y}, rect.size};
  };
  return textPlaceValue(attribute, parameter, *controlView(),
                        {.length = text->length(),
                         .rectsOf =
                             [&](NSRange range) {
                               std::vector<CGRect> rects = layout.rectsOf(range);
                               std::transform(rects.begin(), rects.end(), rects.begin(), inView);
                               return rects;
                             },
                         .caretAt = [&](std::size_t index) { return inView(layout.caretRectAt(index)); },
                         .nearestCharacterTo =
                             [&](CGPoint point) {
                               const CGPoint inBox = inView({}).origin;
                               const CGFloat y = controlView()->isFlipped() ? point.y - inBox.y : inBox.y - point.y;
                               return layout.characterAt({point.x - inBox.x, y});
                             }});
}

bool NSTextFieldCell::accessibilityIsAttributeSettable(std::string_view attribute) const {
  if (attribute == NSAccessibilitySelectedTextRangeAttribute) return editor() != nullptr;
  if (attribute == NSAccessibilityValueAttribute) return isEditable_ && isEnabled();
  return NSCell::accessibilityIsAttributeSettable(attribute);
}

void NSTextFieldCell::accessibilitySetValue(const AccessibilityValue& value, std::string_view forAttribute) {
  if (forAttribute == NSAccessibilitySelectedTextRangeAttribute) {
    if (const Ref<NSText> editor = this->editor()) editor->accessibilitySetValue(value, forAttribute);
    return;
  }
  if (forAttribute != NSAccessibilityValueAttribute) return NSCell::accessibilitySetValue(value, forAttribute);
  const auto* text = value.as<std::string>();
  if (!text || !accessibilityIsAttributeSettable(forAttribute)) return;
  // As if it were typed, so that the delegate is asked and notified.
  const Ref<NSObject> held = shared_from_this();
  auto* field = dynamic_cast<NSTextField*>(controlView());
  if (field && !editor()) field->accessibilitySetValue(true, NSAccessibilityFocusedAttribute);
  if (const Ref<NSText> editor = this->editor()) return editor->accessibilitySetValue(value, forAttribute);
  if (auto* control = dynamic_cast<NSControl*>(controlView())) control->setStringValue(*text);
  else setStringValue(*text);
}

CGFloat NSTextFieldCell::borderMargin() const { return isBezeled() ? bezelMargin : isBordered() ? lineMargin : 0; }

CGFloat NSTextFieldCell::sideMargin() const {
  return isEditable_ || standsAsIfEditable_ ? editableSideMargin : labelSideMargin;
}

// What is edited is one line.
CGFloat NSTextFieldCell::heightOfText(CGFloat width) const {
  if (isEditable_ || lineBreakMode() > NSLineBreakByCharWrapping)
    return NSAttributedString("x", plainAttributes()).size().height;
  constexpr CGFloat unlimited = std::numeric_limits<CGFloat>::max();
  return attributedStringValue()
      ->boundingRectWithSize({width, unlimited}, NSStringDrawingUsesLineFragmentOrigin)
      .size.height;
}

CGSize NSTextFieldCell::cellSize() const {
  const CGSize text = NSCell::cellSize();
  const CGFloat margin = borderMargin();
  return {text.width + 2 * (sideMargin() + margin), text.height + 2 * margin};
}

CGRect NSTextFieldCell::drawingRectForBounds(CGRect bounds) const {
  const CGFloat margin = borderMargin();
  const CGRect inside = NSInsetRect(bounds, sideMargin() + margin, margin);
  if (!isEditable_ && !standsAsIfEditable_) return inside;
  const CGFloat spare = std::floor((inside.size.height - heightOfText(inside.size.width)) / 2);
  return NSInsetRect(inside, 0, std::max(spare, 0.0));
}

void NSTextFieldCell::placeEditor(CGRect frame, NSView& view, const Ref<NSText>& editor,
                                  const Ref<NSTextDelegate>& delegate) {
  const CGRect box = drawingRectForBounds(frame);
  const auto clip = make<NSClipView>(box);
  clip->setAutoresizingMask(NSViewWidthSizable | NSViewHeightSizable);
  view.addSubview(clip);
  editor->setFrame({{0, 0}, box.size});
  editor->setAutoresizingMask(NSViewWidthSizable | NSViewHeightSizable);
  clip->setDocumentView(editor);
  editor_.value = editor;
  const Ref<NSText> ready = setUpFieldEditorAttributes(editor);
  ready->setString(stringValue());
  ready->setDelegate(delegate);
  view.setNeedsDisplay(true);
}

void NSTextFieldCell::selectWithFrame(CGRect frame, NSView& view, const Ref<NSText>& editor,
                                      const Ref<NSTextDelegate>& delegate, std::size_t start, std::size_t length) {
  placeEditor(frame, view, editor, delegate);
  if (view.window()) view.window()->makeFirstResponder(editor.get());
  editor->setSelectedRange({start, length});
}

void NSTextFieldCell::editWithFrame(CGRect frame, NSView& view, const Ref<NSText>& editor,
                                    const Ref<NSTextDelegate>& delegate, const Ref<NSEvent>& event) {
  placeEditor(frame, view, editor, delegate);
  if (view.window()) view.window()->makeFirstResponder(editor.get());
  if (event && event->type() == NSEventType::LeftMouseDown) editor->mouseDown(event);
}

Ref<NSText> NSTextFieldCell::setUpFieldEditorAttributes(const Ref<NSText>& editor) {
  const NSAttributes attributes = attributesOfText();
  editor->setFont(attributeObject<NSFont>(attributes, NSFontAttributeName));
  editor->setTextColor(attributeObject<NSColor>(attributes, NSForegroundColorAttributeName));
  editor->setInsertionPointColor(nullptr);
  editor->setSelectedTextBackgroundColor(nullptr);
  const auto style = attributeObject<NSParagraphStyle>(attributes, NSParagraphStyleAttributeName);
  editor->setAlignment(style ? style->alignment() : alignment());
  editor->setEditable(isEditable() && isEnabled());
  editor->setSelectable(isSelectable() && isEnabled());
  return editor;
}

void NSTextFieldCell::endEditing(const Ref<NSText>& editor) {
  editor_.value.reset();
  editor->setDelegate(nullptr);
  const auto clip = editor->superview() ? refTo(*editor->superview()) : nullptr;
  if (clip) clip->removeFromSuperview();
  editor->removeFromSuperview();
  if (controlView()) controlView()->setNeedsDisplay(true);
}

// One that is still here after its window has gone edits nothing.
Ref<NSText> NSTextFieldCell::editor() const {
  Ref<NSText> editor = editor_.value.lock();
  return editor && editor->delegate() ? editor : nullptr;
}

// Those of the text's first character.
NSAttributes NSTextFieldCell::attributesOfText() const {
  const auto text = attributedStringValue();
  return text->length() > 0 ? text->attributesAtIndex(0) : plainAttributes();
}

void NSTextFieldCell::drawWithFrame(CGRect frame, NSView& view) {
  if (drawsBackground_ || isBezeled()) {
    (backgroundColor_ ? backgroundColor_ : NSColor::controlBackgroundColor())->setFill();
    NSRectFillUsingOperation(frame, NSCompositingOperationSourceOver);
  }
  NSCell::drawWithFrame(frame, view);
}

void NSTextFieldCell::drawInteriorWithFrame(CGRect frame, NSView&) {
  const CGRect box = drawingRectForBounds(frame);
  const Ref<NSText> editor = this->editor();
  const auto text = attributedStringValue();
  if (editor ? !editor->string().empty() : text->length() > 0) {
    if (!editor) text->drawInRect(box);
  } else if (!placeholder_.empty() && box.size.width > 0) {  // where an editor has no room, none redraws it
    NSAttributes attributes = plainAttributes();
    attributes[NSForegroundColorAttributeName] = placeholderColor();
    // What is edited scrolls; a placeholder that is too long would only end within a letter.
    if (lineBreakMode() == NSLineBreakByClipping)
      attributes[NSParagraphStyleAttributeName] = make<NSParagraphStyle>(alignment(), NSLineBreakByTruncatingTail);
    NSAttributedString(std::string_view(placeholder_), attributes).drawInRect(box);
  }
}

}  // namespace tessaluna::platform
