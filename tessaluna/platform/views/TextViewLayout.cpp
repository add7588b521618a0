#include "tessaluna/platform/views/TextViewLayout.h"

#include <algorithm>

#include "tessaluna/platform/foundation/NSNotificationCenter.h"
#include "tessaluna/platform/graphics/NSColor.h"
#include "tessaluna/platform/text/NSFont.h"
#include "tessaluna/platform/views/NSClipView.h"
#include "tessaluna/platform/windows/effectiveAppearance.h"

namespace tessaluna::platform {

namespace {

constexpr CGFloat caretWidth = 1;

}  // namespace

TextViewLayout::TextViewLayout(CGRect frame)
    : NSText(frame),
      storage_(make<NSTextStorage>()),
      container_(make<NSTextContainer>(frame.size)),
      layoutManager_(make<NSLayoutManager>(storage_, container_)),
      typingAttributes_{{NSFontAttributeName, NSFont::systemFontOfSize(NSFont::systemFontSize())},
                        {NSForegroundColorAttributeName, NSColor::controlTextColor()},
                        {NSParagraphStyleAttributeName, NSParagraphStyle::defaultParagraphStyle()}} {
  layoutManager_->setAttributesOfNothing(typingAttributes_);
}

void TextViewLayout::didInit() {
  NSText::didInit();
  storage_->setDelegate(Ref<NSTextStorageDelegate>(shared_from_this(), this));
  appearanceObserver_ = NSNotificationCenter::defaultCenter().addObserverForName(
      NSSystemColorsDidChangeNotification, nullptr, nullptr,
      [this](const Ref<NSNotification>&) { layoutManager_->invalidateLayout(); });
}

TextViewLayout::~TextViewLayout() {
  if (appearanceObserver_) NSNotificationCenter::defaultCenter().removeObserver(appearanceObserver_);
}

void TextViewLayout::setTextContainerInset(CGSize inset) {
  inset_ = inset;
  setNeedsLayout(true);
  setNeedsDisplay(true);
}

std::string TextViewLayout::string() const { return storage_->string(); }

void TextViewLayout::setWholeText(std::u16string text) {
  storage_->setAttributedString(NSAttributedString(std::move(text), typingAttributes_));
}

Ref<NSFont> TextViewLayout::font() const { return attributeObject<NSFont>(typingAttributes_, NSFontAttributeName); }

void TextViewLayout::setTypingAttribute(NSAttributedStringKey key, NSAttributeValue value) {
  typingAttributes_[key] = value;
  layoutManager_->setAttributesOfNothing(typingAttributes_);
  storage_->addAttribute(key, std::move(value), {0, length()});
  setNeedsLayout(true);
  setNeedsDisplay(true);
}

void TextViewLayout::setFont(Ref<NSFont> font) {
  setTypingAttribute(NSFontAttributeName, font ? font : NSFont::systemFontOfSize(NSFont::systemFontSize()));
}

void TextViewLayout::setTextColor(Ref<NSColor> color) {
  setTypingAttribute(NSForegroundColorAttributeName, color ? color : NSColor::controlTextColor());
}

void TextViewLayout::setAlignment(NSTextAlignment alignment) {
  setTypingAttribute(NSParagraphStyleAttributeName, make<NSParagraphStyle>(alignment, NSLineBreakByWordWrapping));
}

CaretPlace TextViewLayout::caretPlaceAtPoint(CGPoint point) const {
  layOutTree();
  const CGPoint origin = textOrigin();
  return layoutManager_->caretPlaceForPoint({point.x - origin.x, point.y - origin.y});
}

CGRect TextViewLayout::caretRectForPlace(CaretPlace place) const {
  layOutTree();
  CGRect caret = NSOffsetRect(layoutManager_->caretRectForPlace(place), textOrigin().x, textOrigin().y);
  // After a text that ends at the right edge it would be cut off.
  caret.origin.x = std::min(caret.origin.x, std::max(0.0, frame().size.width - caretWidth));
  return caret;
}

std::vector<CGRect> TextViewLayout::rectsForRange(NSRange range) const {
  layOutTree();
  std::vector<CGRect> rects = layoutManager_->rectArrayForGlyphRange(range, range, *container_);
  for (CGRect& rect : rects) rect = NSOffsetRect(rect, textOrigin().x, textOrigin().y);
  return rects;
}

void TextViewLayout::setHorizontallyResizable(bool isResizable) {
  isHorizontallyResizable_ = isResizable;
  setNeedsLayout(true);
}

void TextViewLayout::setVerticallyResizable(bool isResizable) {
  isVerticallyResizable_ = isResizable;
  setNeedsLayout(true);
}

CGSize TextViewLayout::sizeOfText() const {
  const CGSize lines = layoutManager_->usedRectForTextContainer(*container_).size;
  return {lines.width + 2 * inset_.width + caretWidth, lines.height + 2 * inset_.height};
}

void TextViewLayout::fitWidth() {
  const NSView* around = superview();
  const CGFloat width = std::max(sizeOfText().width, around ? around->bounds().size.width : 0);
  if (width != frame().size.width) setFrameSize({width, frame().size.height});
}

void TextViewLayout::fitHeight() {
  const auto* clipView = dynamic_cast<const NSClipView*>(superview());
  if (clipView && !isHorizontallyResizable_ && clipView->bounds().size.width != frame().size.width) {
    setFrameSize({clipView->bounds().size.width, frame().size.height});
    fitContainer();
  }
  const CGFloat height = std::max(sizeOfText().height, clipView ? clipView->bounds().size.height : 0);
  if (height != frame().size.height) setFrameSize({frame().size.width, height});
}

void TextViewLayout::sizeToFit() {
  if (isHorizontallyResizable_) fitWidth();
  if (isVerticallyResizable_) fitHeight();
}

void TextViewLayout::prepareContentInRect(CGRect) {
  if (isVerticallyResizable_) setNeedsLayout(true);
}

void TextViewLayout::layout() {
  NSText::layout();
  fitContainer();
  sizeToFit();
}

void TextViewLayout::fitContainer() {
  if (!container_->widthTracksTextView()) return;
  container_->setSize({frame().size.width - 2 * inset_.width, container_->size().height});
}

NSRange TextViewLayout::characterRangeIn(CGRect rect) const {
  return layoutManager_->glyphRangeForBoundingRect(NSOffsetRect(rect, -textOrigin().x, -textOrigin().y), *container_);
}

void TextViewLayout::drawText(NSRange range) const { layoutManager_->drawGlyphsForGlyphRange(range, textOrigin()); }

void TextViewLayout::textStorageDidProcessEditing(NSTextStorage&, NSRange, std::ptrdiff_t) {
  setNeedsLayout(true);
  setNeedsDisplay(true);
}

}  // namespace tessaluna::platform
