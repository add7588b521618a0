#include "tessaluna/uikit/links/MultipleLinksTextField.h"

#include <algorithm>
#include <limits>
#include <utility>

#include "tessaluna/platform/events/NSCursor.h"
#include "tessaluna/platform/events/NSEvent.h"
#include "tessaluna/platform/events/trackVisibleRect.h"
#include "tessaluna/platform/foundation/memberTables.h"
#include "tessaluna/platform/graphics/NSColor.h"
#include "tessaluna/platform/graphics/NSGraphicsContext.h"
#include "tessaluna/platform/graphics/NSRect.h"
#include "tessaluna/platform/interface_files/archivedLooks.h"
#include "tessaluna/platform/text/NSFont.h"
#include "tessaluna/platform/text/TextLayout.h"
#include "tessaluna/platform/text/unicode.h"
#include "tessaluna/platform/views/NSTableView.h"
#include "tessaluna/uikit/links/LinkLineAdditions.h"
#include "tessaluna/uikit/links/wholePoints.h"

namespace TessalunaUIKit {

using namespace tessaluna::platform;

namespace {

constexpr Property properties[] = {property<&MultipleLinksTextField::setLinksEnabled, "linksEnabled">(),
                                   property<&MultipleLinksTextField::setIsPressed, "isPressed">(),
                                   property<&MultipleLinksTextField::setFont, "font">(),
                                   property<&MultipleLinksTextField::setStringValues, "stringValues">(),
                                   property<&MultipleLinksTextField::setTextColor, "textColor">(),
                                   property<&MultipleLinksTextField::setLineBreakMode, "lineBreakMode">(),
                                   property<&MultipleLinksTextField::setShowsMenuAtEllipsis, "showsMenuAtEllipsis">(),
                                   property<&MultipleLinksTextField::setTakesKeyboard, "takesKeyboard">(),
                                   property<&MultipleLinksTextField::setShowsToolTipWhileCut, "showsToolTipWhileCut">()};

}  // namespace

const ClassInfo MultipleLinksTextField::staticClassInfo{
    .name = "TessalunaUIKit.MultipleLinksTextField", .base = &NSView::staticClassInfo, .properties = properties};

MultipleLinksTextField::MultipleLinksTextField(CGRect frame)
    : NSView(frame), additions_(std::make_unique<LinkLineAdditions>(*this)) {}

MultipleLinksTextField::MultipleLinksTextField(NSCoder& coder)
    : NSView(coder), additions_(std::make_unique<LinkLineAdditions>(*this)) {
  coder.overlookKeys({"linksEnabled", "isPressed", "stringValues", "font", "textColor", "lineBreakMode"});
}

MultipleLinksTextField::~MultipleLinksTextField() = default;

bool MultipleLinksTextField::showsMenuAtEllipsis() const { return additions_->showsMenuAtEllipsis; }
void MultipleLinksTextField::setShowsMenuAtEllipsis(bool shows) { additions_->showsMenuAtEllipsis = shows; }
bool MultipleLinksTextField::takesKeyboard() const { return additions_->takesKeyboard(); }
void MultipleLinksTextField::setTakesKeyboard(bool takes) { additions_->setTakesKeyboard(takes); }
bool MultipleLinksTextField::showsToolTipWhileCut() const { return additions_->showsToolTipWhileCut(); }
void MultipleLinksTextField::setShowsToolTipWhileCut(bool shows) { additions_->setShowsToolTipWhileCut(shows); }

void MultipleLinksTextField::setLinksEnabled(bool enabled) {
  if (std::exchange(linksEnabled_, enabled) != enabled) additions_->linksDidChange();
  updateTrackingAreas();
  if (cursorRectsActive_) addLinkCursorRects();
}

void MultipleLinksTextField::setStringValues(std::optional<std::vector<std::string>> values) {
  stringValues_ = std::move(values);
  links_.setStrings(stringValues_, textAttributes());
  if (cursorRectsActive_) addLinkCursorRects();
  additions_->linksDidChange();
  invalidateIntrinsicContentSize();
  setNeedsDisplay(true);
}

bool MultipleLinksTextField::isInSelectedRow() const {
  const NSView* above = superview();
  while (above && !dynamic_cast<const NSTableView*>(above)) above = above->superview();
  const auto* table = static_cast<const NSTableView*>(above);
  const std::optional<std::size_t> row = table ? table->rowForView(*this) : std::nullopt;
  return row && table->isRowSelected(*row);
}

NSAttributes MultipleLinksTextField::textAttributes() const {
  const auto style = make<NSMutableParagraphStyle>();
  style->setAlignment(NSTextAlignmentLeft);  // intentional: also where the layout is from right to left
  style->setLineBreakMode(lineBreakMode_);

  Ref<NSColor> color = textColor_ ? textColor_ : NSColor::controlTextColor();
  if (isInSelectedRow()) {
    const bool isDisabledColor = textColor_ && textColor_->isEqual(NSColor::disabledControlTextColor().get());
    color = isDisabledColor ? NSColor::colorWithDeviceWhite(0.81, 1) : NSColor::alternateSelectedControlTextColor();
  }
  return {{NSFontAttributeName, font_ ? font_ : NSFont::systemFontOfSize(NSFont::systemFontSize())},
          {NSForegroundColorAttributeName, color},
          {NSParagraphStyleAttributeName, style}};
}

void MultipleLinksTextField::underlineActiveElement(NSMutableAttributedString& text, std::size_t suffixLength) const {
  const auto& elements = links_.characters();
  if (!linksEnabled_ || !activeElement_ || !elements || *activeElement_ >= elements->size()) return;
  // Intentional: characters are taken for UTF-16 units here, so that the line drifts after combined characters.
  const JoinedLinks::Span element = (*elements)[*activeElement_];
  const std::int64_t end = std::min(element.upper, static_cast<std::int64_t>(text.length() - suffixLength));
  if (element.lower >= end) return;
  text.addAttribute(NSUnderlineStyleAttributeName, std::int64_t{isPressed_ ? NSUnderlineStyleThick : NSUnderlineStyleSingle},
                    {static_cast<std::size_t>(element.lower), static_cast<std::size_t>(end - element.lower)});
}

Ref<NSAttributedString> MultipleLinksTextField::truncatedString(CGFloat width) {
  return truncatedString(width, textAttributes());
}

Ref<NSAttributedString> MultipleLinksTextField::truncatedString(CGFloat width, const NSAttributes& attributes) {
  const JoinedLinks::Cut cut = links_.cutToWidth(width, attributes);
  suffixPosition_ = cut.suffixPosition;
  auto text = make<NSMutableAttributedString>(cut.text, attributes);
  underlineActiveElement(*text, cut.suffixLength());
  return text;
}

CGSize MultipleLinksTextField::intrinsicContentSize() const { return sizeWithAttributes(links_.text(), textAttributes()); }

void MultipleLinksTextField::drawRect(CGRect) {
  const CGRect box = bounds();
  const NSAttributes attributes = textAttributes();
  // Of the whole text, not of what is left of it.
  const CGFloat height = boundingRectWithSize(links_.text(), {box.size.width, std::numeric_limits<CGFloat>::infinity()},
                                              NSStringDrawingUsesLineFragmentOrigin, attributes)
                             .size.height;
  NSGraphicsContext::saveGraphicsState();
  NSRectClip(box);
  truncatedString(box.size.width, attributes)
      ->drawInRect({box.origin.x, (box.size.height - height) * 0.5 + box.origin.y, box.size.width, height});
  NSGraphicsContext::restoreGraphicsState();
  additions_->didCut();
}

void MultipleLinksTextField::viewDidHide() { isPressed_ = false; }

void MultipleLinksTextField::hitTestElements(const NSEvent& event) {
  const CGPoint point = convertPointFromView(event.locationInWindow(), nullptr);
  activeElement_.reset();
  if (!NSPointInRect(point, bounds()) || !links_.hasLinks()) return;
  if (suffixPosition_ && point.x >= *suffixPosition_) return;
  const std::int64_t x = wholePoints(point.x);
  const std::vector<JoinedLinks::Span>& places = *links_.places();
  const auto hit = std::ranges::find_if(places, [x](const auto& place) { return place.lower <= x && x < place.upper; });
  if (hit != places.end()) activeElement_ = static_cast<std::size_t>(hit - places.begin());
}

void MultipleLinksTextField::mouseEntered(const Ref<NSEvent>& event) {
  hitTestElements(*event);
  setNeedsDisplay(true);
}

void MultipleLinksTextField::mouseExited(const Ref<NSEvent>&) {
  activeElement_.reset();
  setNeedsDisplay(true);
}

void MultipleLinksTextField::mouseMoved(const Ref<NSEvent>& event) {
  if (!linksEnabled_) return;
  hitTestElements(*event);
  setNeedsDisplay(true);
}

void MultipleLinksTextField::mouseDown(const Ref<NSEvent>& event) {
  if (additions_->openMenuForPressAt(convertPointFromView(event->locationInWindow(), nullptr))) return;
  isPressed_ = true;
  setNeedsDisplay(true);
  if (!linksEnabled_) NSView::mouseDown(event);
}

void MultipleLinksTextField::mouseUp(const Ref<NSEvent>& event) {
  // The target may let the view, or itself, go.
  const Ref<NSView> held = refTo<NSView>(*this);
  const Ref<LinkTextFieldActionTarget> target = target_;
  const bool areLinks = linksEnabled_;
  // Intentional: the element under the pointer now counts, wherever the press began.
  if (isPressed_ && areLinks && activeElement_ && target) target->linkClicked(*activeElement_, *this);
  if (!areLinks) NSView::mouseUp(event);
  isPressed_ = false;
  setNeedsDisplay(true);
}

void MultipleLinksTextField::updateTrackingAreas() {
  NSView::updateTrackingAreas();
  if (linksEnabled_) trackVisibleRect(*this, trackingArea_, NSTrackingMouseEnteredAndExited | NSTrackingMouseMoved);
}

void MultipleLinksTextField::resetCursorRects() { addLinkCursorRects(); }

void MultipleLinksTextField::addLinkCursorRects() {
  if (links_.hasLinks() && linksEnabled_) {
    const auto height = static_cast<CGFloat>(wholePoints(bounds().size.height));
    for (const auto& [lower, upper] : *links_.places())
      addCursorRect({static_cast<CGFloat>(lower), 0, static_cast<CGFloat>(upper - lower), height},
                    NSCursor::pointingHandCursor());
  }
  cursorRectsActive_ = true;
}

std::string MultipleLinksTextField::accessibilityLabel() const { return utf8FromUtf16(links_.text()); }

bool MultipleLinksTextField::accessibilityPerformPress() {
  if (!linksEnabled_ || !links_.hasLinks()) return false;
  const Ref<NSView> held = refTo<NSView>(*this);
  // Intentional: the first string, whichever is hovered. Without a target the press still counts as done.
  if (const Ref<LinkTextFieldActionTarget> target = target_) target->linkClicked(0, *this);
  return true;
}

std::vector<std::string> MultipleLinksTextField::accessibilityActionNames() const {
  return linksEnabled_ && links_.hasLinks() ? NSView::accessibilityActionNames() : std::vector<std::string>();
}

std::optional<AccessibilityElements> MultipleLinksTextField::accessibilityOwnChildren() const {
  std::optional<AccessibilityElements> children = NSView::accessibilityOwnChildren();
  for (const Ref<NSObject>& link : additions_->elements()) children->push_back(link);
  return children;
}

}  // namespace TessalunaUIKit
