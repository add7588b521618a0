#include "tessaluna/uikit/links/LinkLineAdditions.h"

#include <algorithm>
#include <utility>

#include "tessaluna/platform/graphics/NSColor.h"
#include "tessaluna/platform/graphics/NSRect.h"
#include "tessaluna/platform/windows/NSWindow.h"
#include "tessaluna/uikit/links/MultipleLinksTextField.h"
#include "tessaluna/uikit/links/linkMenu.h"

namespace TessalunaUIKit {

using namespace tessaluna::platform;

bool LinkLineAdditions::isCut() const { return field_.suffixPosition_.has_value(); }

CGRect LinkLineAdditions::ellipsisBounds() const {
  const CGRect box = field_.bounds();
  const CGFloat x = *field_.suffixPosition_;
  return {x, box.origin.y, std::max(0.0, CGRectGetMaxX(box) - x), box.size.height};
}

CGRect LinkLineAdditions::boundsOfLink(std::size_t index) const {
  const JoinedLinks::Span place = field_.links_.places()->at(index);
  const CGRect box = field_.bounds();
  const auto left = static_cast<CGFloat>(place.lower);
  CGFloat right = static_cast<CGFloat>(place.upper);
  if (isCut()) {
    if (left >= *field_.suffixPosition_) return ellipsisBounds();
    right = std::min(right, *field_.suffixPosition_);
  }
  return {left, box.origin.y, right - left, box.size.height};
}

// The menu.

bool LinkLineAdditions::openMenuForPressAt(CGPoint point) {
  if (!showsMenuAtEllipsis || numberOfLinks() == 0 || !isCut() || !NSPointInRect(point, ellipsisBounds())) return false;
  openMenu();
  return true;
}

void LinkLineAdditions::openMenu() {
  const std::vector<std::string> strings = *field_.stringValues();
  popUpLinkMenu(strings, ellipsisBounds().origin, field_,
                [field = WeakRef<MultipleLinksTextField>(refTo(field_)), strings](std::size_t index) {
                  const Ref<MultipleLinksTextField> held = field.lock();
                  // What was chosen from a list that has gone since is not a link any more.
                  if (held && held->linksEnabled() && held->stringValues() == strings) held->additions_->pressLink(index);
                });
}

// The keyboard.

void LinkLineAdditions::setTakesKeyboard(bool takes) {
  if (takes == takesKeyboard()) return;
  if (takes) {
    keyboard_ = make<LinkKeyboard>(field_.bounds(), *this);
    keyboard_->setAutoresizingMask(NSViewWidthSizable | NSViewHeightSizable);
    field_.addSubview(keyboard_);
  } else {
    keyboard_->removeFromSuperview();
    keyboard_ = nullptr;
  }
}

std::vector<LinkLineAdditions::Stop> LinkLineAdditions::stops() const {
  std::vector<Stop> stops;
  for (std::size_t i = 0; i < numberOfLinks(); ++i) {
    const bool isCutOff = isCut() && static_cast<CGFloat>(field_.links_.places()->at(i).lower) >= *field_.suffixPosition_;
    if (isCutOff && showsMenuAtEllipsis) break;
    if (!textOfLink(i).empty()) stops.push_back({i, boundsOfLink(i)});
  }
  if (isCut() && showsMenuAtEllipsis && numberOfLinks() > 0) stops.push_back({std::nullopt, ellipsisBounds()});
  return stops;
}

std::vector<CGRect> LinkLineAdditions::keyboardStops() const {
  std::vector<CGRect> bounds;
  for (const Stop& stop : stops()) bounds.push_back(stop.bounds);
  return bounds;
}

void LinkLineAdditions::pressKeyboardStop(std::size_t stop) {
  const std::optional<std::size_t> link = stops().at(stop).link;
  if (link) pressLink(*link);
  else openMenu();
}

void LinkLineAdditions::keyboardStopDidChange() {
  NSAccessibilityPostNotification(refTo<NSObject>(field_), NSAccessibilityFocusedUIElementChangedNotification);
}

Ref<NSColor> LinkLineAdditions::groundOfStops() const {
  return field_.isInSelectedRow() ? NSColor::alternateSelectedControlColor() : nullptr;
}

void LinkLineAdditions::linksDidChange() {
  accessible_.linksDidChange();
  if (keyboard_) keyboard_->stopsDidChange();
}

// The tool tip.

void LinkLineAdditions::setShowsToolTipWhileCut(bool shows) {
  // The tool tip of the last cut goes; one of the program stays.
  if (std::exchange(showsToolTipWhileCut_, shows) && !shows) field_.setToolTip({});
}

void LinkLineAdditions::didCut() {
  if (showsToolTipWhileCut_) field_.setToolTip(isCut() ? field_.accessibilityLabel() : std::string());
}

// Assistive clients.

AccessibilityElements LinkLineAdditions::elements() { return accessible_.elements(field_, *this); }

std::size_t LinkLineAdditions::numberOfLinks() const {
  return field_.linksEnabled_ && field_.links_.hasLinks() ? field_.links_.places()->size() : 0;
}

std::string LinkLineAdditions::textOfLink(std::size_t index) const { return field_.stringValues_->at(index); }

CGRect LinkLineAdditions::frameOfLink(std::size_t index) const {
  const NSWindow* window = field_.window();
  return window ? window->convertRectToScreen(field_.convertRectToView(boundsOfLink(index), nullptr)) : CGRect{};
}

bool LinkLineAdditions::isLinkFocused(std::size_t index) const {
  const std::optional<std::size_t> stop = keyboard_ ? keyboard_->currentStop() : std::nullopt;
  return stop && stops()[*stop].link == index;
}

void LinkLineAdditions::pressLink(std::size_t index) {
  const Ref<NSView> held = refTo<NSView>(field_);
  if (const Ref<LinkTextFieldActionTarget> target = field_.target_) target->linkClicked(index, field_);
}

Ref<NSObject> LinkLineAdditions::parentOfLinks() const { return refTo<NSObject>(field_); }

}  // namespace TessalunaUIKit
