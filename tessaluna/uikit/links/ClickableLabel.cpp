#include "tessaluna/uikit/links/ClickableLabel.h"

#include <utility>

#include "tessaluna/platform/events/NSCursor.h"
#include "tessaluna/platform/events/NSEvent.h"
#include "tessaluna/platform/events/takenPress.h"
#include "tessaluna/platform/foundation/NSString.h"
#include "tessaluna/platform/foundation/SystemVersion.h"
#include "tessaluna/platform/foundation/memberTables.h"
#include "tessaluna/platform/graphics/NSColor.h"
#include "tessaluna/platform/graphics/NSRect.h"
#include "tessaluna/platform/views/NSTextView.h"
#include "tessaluna/platform/windows/NSWindow.h"
#include "tessaluna/uikit/links/ClickableLabelCell.h"

namespace TessalunaUIKit {

using namespace tessaluna::platform;

namespace {

// Absent for a value that is neither a URL nor the text of one.
std::optional<URL> urlOf(const NSAttributeValue& link) {
  if (const auto* url = std::get_if<URL>(&link)) return *url;
  if (const auto* text = std::get_if<std::string>(&link)) return URL::URLWithString(*text);
  if (const auto* object = std::get_if<Ref<NSObject>>(&link))
    if (const auto* text = dynamic_cast<const NSString*>(object->get())) return URL::URLWithString(text->UTF8String());
  return std::nullopt;
}

// One for each line that the link is in, from the first to the last.
std::vector<CGRect> rectsOf(NSRange link, NSTextView& view) {
  if (!view.layoutManager()) return {};
  view.layoutSubtreeIfNeeded();
  const NSLayoutManager& manager = *view.layoutManager();
  const NSTextContainer& container = *view.textContainer();
  const NSRange glyphs = manager.glyphRangeForCharacterRange(link, nullptr);
  if (!isOperatingSystemAtLeastVersion({10, 11, 0})) return manager.rectArrayForGlyphRange(glyphs, glyphs, container);
  std::vector<CGRect> rects;
  manager.enumerateEnclosingRectsForGlyphRange(glyphs, glyphs, container,
                                               [&](CGRect rect, bool&) { rects.push_back(rect); });
  return rects;
}

constexpr Property properties[] = {property<&ClickableLabel::setTakesKeyboard, "takesKeyboard">()};

}  // namespace

const ClassInfo ClickableLabel::staticClassInfo{
    .name = "TessalunaUIKit.ClickableLabel", .base = &NSTextField::staticClassInfo, .properties = properties};

// It starts as any text field does.
Ref<NSCell> ClickableLabel::makeCell() {
  return make<ClickableLabelCell>(static_cast<const NSTextFieldCell&>(*NSTextField::makeCell()));
}

Ref<NSCell> ClickableLabel::makeCell(NSCoder& coder) { return make<ClickableLabelCell>(coder); }

// Attributed texts are set through here, plain ones too.
void ClickableLabel::setObjectValue(Ref<NSObject> value) {
  const bool isAttributed = dynamic_cast<const NSAttributedString*>(value.get()) != nullptr;
  // The text as it is now, which is the one that the links are found in.
  if (const auto* text = dynamic_cast<const NSMutableAttributedString*>(value.get())) value = text->mutableCopy();
  NSTextField::setObjectValue(std::move(value));
  if (isAttributed) refreshLinks();
  accessible_.linksDidChange();
  textOfLinks_ = nullptr;
  if (keyboard_) keyboard_->stopsDidChange();
}

void ClickableLabel::refreshLinks() {
  if (!textView_) textView_ = make<NSTextView>(bounds());
  fill(*textView_);
  resized_ = nullptr;
  if (window()) window()->invalidateCursorRectsForView(*this);
}

void ClickableLabel::fill(NSTextView& view) const {
  view.setFont(font());
  view.textStorage()->setAttributedString(*attributedStringValue());
}

NSTextView& ClickableLabel::shownText() const {
  if (textView_->frame().size.width == bounds().size.width) return *textView_;
  if (!resized_ || resized_->frame().size.width != bounds().size.width) {
    resized_ = make<NSTextView>(bounds());
    fill(*resized_);
  }
  return *resized_;
}

void ClickableLabel::resetCursorRects() {
  NSTextField::resetCursorRects();
  // Intentional: nowhere else does the text view follow the label's size.
  if (textView_) textView_->setFrame(bounds());
  const Ref<NSAttributedString> text = attributedStringValue();
  text->enumerateAttribute(NSLinkAttributeName, {0, text->length()},
                           [this](const std::optional<NSAttributeValue>& link, NSRange range) {
                             if (!link || !textView_) return;
                             for (const CGRect& rect : rectsOf(range, *textView_))
                               addCursorRect(rect, NSCursor::pointingHandCursor());
                           });
}

void ClickableLabel::mouseDown(const Ref<NSEvent>& event) {
  forgetPress();
  press_ = Press::Down;
  if (!textView_ || !textView_->textContainer()) return;
  // Intentional: here the caret place nearest to the point counts, and at the release the character under it.
  const std::size_t index =
      textView_->characterIndexForInsertionAtPoint(convertPointFromView(event->locationInWindow(), nullptr));
  const Ref<NSAttributedString> text = attributedStringValue();
  if (index >= text->length()) return;
  NSRange range;
  const std::optional<NSAttributeValue> link = text->attributeAtIndex(NSLinkAttributeName, index, &range);
  if (!link) return;
  clickedLink_ = urlOf(*link);
  if (clickedLink_) clickedLinkRange_ = range;
}

void ClickableLabel::mouseUp(const Ref<NSEvent>& event) {
  if (endsTakenPress(*event) || std::exchange(press_, Press::None) == Press::Hidden) return forgetPress();
  // The target may let the label, or itself, go.
  const Ref<NSView> held = refTo<NSView>(*this);
  const Ref<ClickableLabelTarget> target = actionTarget_;
  if (!clickedLink_) {
    if (target) target->labelClicked(*this);
    return;
  }
  const URL link = *clickedLink_;
  const NSRange range = clickedLinkRange_;
  forgetPress();
  if (!target || !textView_ || !textView_->layoutManager()) return;
  textView_->layoutSubtreeIfNeeded();
  const CGPoint point = convertPointFromView(event->locationInWindow(), nullptr);
  const std::size_t index = textView_->layoutManager()->characterIndexForPoint(point, *textView_->textContainer(), nullptr);
  if (index >= range.location && index - range.location < range.length) target->linkClicked(link);
}

void ClickableLabel::viewDidHide() {
  NSTextField::viewDidHide();
  if (press_ == Press::Down) press_ = Press::Hidden;
}

void ClickableLabel::forgetPress() {
  clickedLink_.reset();
  press_ = Press::None;
}

// The keyboard.

void ClickableLabel::setTakesKeyboard(bool takes) {
  if (takes == takesKeyboard()) return;
  if (takes) {
    keyboard_ = make<LinkKeyboard>(bounds(), static_cast<LinkKeyboard::Line&>(*this));
    keyboard_->setAutoresizingMask(NSViewWidthSizable | NSViewHeightSizable);
    addSubview(keyboard_);
  } else {
    keyboard_->removeFromSuperview();
    keyboard_ = nullptr;
  }
}

std::vector<CGRect> ClickableLabel::keyboardStops() const {
  std::vector<CGRect> stops;
  for (const Link& link : links()) {
    const std::vector<CGRect> rects = rectsOf(link.range, shownText());
    stops.push_back(rects.empty() ? CGRect{} : rects.front());
  }
  return stops;
}

void ClickableLabel::keyboardStopDidChange() {
  NSAccessibilityPostNotification(cell(), NSAccessibilityFocusedUIElementChangedNotification);
}

Ref<NSColor> ClickableLabel::groundOfStops() const {
  const auto* shown = dynamic_cast<const NSTextFieldCell*>(cell().get());
  if (!shown || !shown->drawsBackground()) return nullptr;
  return shown->backgroundColor() ? shown->backgroundColor() : NSColor::controlBackgroundColor();
}

// Assistive clients.

// Clients ask for each link by itself, so that a text is searched once.
const std::vector<ClickableLabel::Link>& ClickableLabel::links() const {
  const Ref<const NSAttributedString> text = textView_ ? attributedStringValue() : nullptr;
  if (std::exchange(textOfLinks_, text) == text) return links_;
  links_.clear();
  if (!text) return links_;
  text->enumerateAttribute(NSLinkAttributeName, {0, text->length()},
                           [this](const std::optional<NSAttributeValue>& link, NSRange range) {
                             const std::optional<URL> url = link ? urlOf(*link) : std::nullopt;
                             if (url) links_.push_back({range, *url});
                           });
  return links_;
}

AccessibilityElements ClickableLabel::accessibleLinks() { return accessible_.elements(*this, *this); }

std::string ClickableLabel::textOfLink(std::size_t index) const {
  return attributedStringValue()->attributedSubstring(links().at(index).range)->string();
}

CGRect ClickableLabel::frameOfLink(std::size_t index) const {
  if (!window()) return {};
  CGRect box;
  for (const CGRect& rect : rectsOf(links().at(index).range, shownText())) box = NSUnionRect(box, rect);
  return window()->convertRectToScreen(convertRectToView(box, nullptr));
}

void ClickableLabel::pressLink(std::size_t index) {
  const Ref<NSView> held = refTo<NSView>(*this);
  const URL link = links().at(index).url;
  if (const Ref<ClickableLabelTarget> target = actionTarget_) target->linkClicked(link);
}

}  // namespace TessalunaUIKit
