#include "tessaluna/platform/windows/FocusRing.h"

#include <cmath>

#include "tessaluna/platform/graphics/NSBezierPath.h"
#include "tessaluna/platform/graphics/NSColor.h"
#include "tessaluna/platform/graphics/NeutralAxis.h"
#include "tessaluna/platform/graphics/contrast.h"
#include "tessaluna/platform/views/FocusRingSurroundings.h"
#include "tessaluna/platform/views/NSText.h"
#include "tessaluna/platform/windows/DirtyRegion.h"
#include "tessaluna/platform/windows/NSWindow.h"

namespace tessaluna::platform {

namespace {

constexpr CGFloat ringWidth = 2;     // points
constexpr double leastContrast = 3;  // to the ground
constexpr CGFloat epsilon = 1e-6;    // of an edge that is a whole device pixel

}  // namespace

const NSView* FocusRing::view() const {
  const auto* first = dynamic_cast<const NSView*>(window_.firstResponder());
  // What is edited in the field editor is the field.
  const auto* text = dynamic_cast<const NSText*>(first);
  if (text && text->isFieldEditor()) return dynamic_cast<const NSView*>(text->delegate().get());
  return first;
}

bool FocusRing::maskDidChange(const NSView& changed) {
  if (view() != &changed) return false;
  if (cause_ != Cause::Program) cameByKey_ = cause_ == Cause::Key;
  return true;
}

CGFloat FocusRing::width() const {
  const CGFloat scale = window_.backingScaleFactor();
  return std::ceil(ringWidth * scale - epsilon) / scale;
}

CGRect FocusRing::wantedPlace() const {
  const NSView* shown = view();
  if (!cameByKey_ || !window_.isKeyWindow() || !shown || shown->isHiddenOrHasHiddenAncestor() ||
      shown->focusRingType() == NSFocusRingTypeNone)
    return {};
  const auto* surroundings = dynamic_cast<const FocusRingSurroundings*>(shown);
  const NSView* around = (surroundings ? surroundings->viewWithFocusRing() : *shown).superview();
  const CGRect room =
      around ? around->convertRectToView(around->visibleRect(), nullptr) : CGRect{{0, 0}, window_.frame().size};
  const CGRect mask = shown->convertRectToView(shown->focusRingMaskBounds(), nullptr);
  if (!NSIntersectsRect(mask, room)) return {};
  const CGRect ring = NSIntersectionRect(NSInsetRect(mask, -width(), -width()), room);
  return roundedOutward(ring, window_.backingScaleFactor());
}

void FocusRing::update() {
  const CGRect wanted = wantedPlace();
  if (wanted == place_) return;
  invalidate();
  place_ = wanted;
  invalidate();
}

// Its four sides alone: the view inside is not drawn again.
void FocusRing::invalidate() const {
  if (NSIsEmptyRect(place_)) return;
  const CGFloat side = width(), left = CGRectGetMinX(place_), low = CGRectGetMinY(place_);
  const CGSize size = place_.size;
  for (const CGRect& each :
       {CGRect{left, low, size.width, side}, CGRect{left, CGRectGetMaxY(place_) - side, size.width, side},
        CGRect{left, low + side, side, size.height - 2 * side},
        CGRect{CGRectGetMaxX(place_) - side, low + side, side, size.height - 2 * side}})
    window_.invalidateRect(each);
}

Ref<NSColor> FocusRing::color() const {
  backend::Color ground = NSColor::windowBackgroundColor()->components();
  const auto add = [&](const NSColor& above) {
    const backend::Color color = above.components();
    ground = painted(neutralsFollowPalette() ? NeutralAxis::ofPalette().mapped(color) : color, ground);
  };
  if (window_.backgroundColor()) add(*window_.backgroundColor());
  const auto* surroundings = dynamic_cast<const FocusRingSurroundings*>(view());
  if (const Ref<NSColor> own = surroundings ? surroundings->focusRingGround() : nullptr) add(*own);
  const auto contrast = [&](const Ref<NSColor>& color) { return contrastRatio(color->components(), ground); };
  const Ref<NSColor> highlight = NSColor::keyboardFocusIndicatorColor();
  if (contrast(highlight) >= leastContrast) return highlight;
  const Ref<NSColor> text = NSColor::controlTextColor(), selectedText = NSColor::alternateSelectedControlTextColor();
  return contrast(text) >= contrast(selectedText) ? text : selectedText;
}

void FocusRing::draw() const {
  if (NSIsEmptyRect(place_)) return;
  const auto ring = NSBezierPath::bezierPathWithRoundedRect(place_, width(), width());
  const CGRect inside = NSInsetRect(place_, width(), width());
  if (inside.size.width > 0 && inside.size.height > 0) ring->appendBezierPath(*NSBezierPath::bezierPathWithRect(inside));
  ring->setWindingRule(NSEvenOddWindingRule);
  color()->setFill();
  ring->fill();
}

}  // namespace tessaluna::platform
