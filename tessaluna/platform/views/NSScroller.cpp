#include "tessaluna/platform/views/NSScroller.h"

#include <algorithm>

#include "tessaluna/platform/backend/Backend.h"
#include "tessaluna/platform/foundation/NSNumber.h"
#include "tessaluna/platform/foundation/memberTables.h"
#include "tessaluna/platform/graphics/NSBezierPath.h"
#include "tessaluna/platform/graphics/NSColor.h"
#include "tessaluna/platform/time/durations.h"

namespace tessaluna::platform {

namespace {

constexpr Property scrollerProperties[] = {property<&NSScroller::setKnobProportion, "knobProportion">()};

}  // namespace

const ClassInfo NSScroller::staticClassInfo{
    .name = "NSScroller", .base = &NSControl::staticClassInfo, .properties = scrollerProperties};

namespace {

constexpr CGFloat shortestKnob = 24, knobMargin = 3;

}  // namespace

// Takes hold of the knob, which then follows the mouse wherever it goes, or asks for a page.
class NSScroller::Tracker : public NSCell {
 public:
  using NSCell::NSCell;
  Ref<NSCell> copy() const override { return make<Tracker>(*this); }

  bool prefersTrackingUntilMouseUp() const override { return true; }

  bool startTrackingAt(CGPoint start, NSView& view) override {
    auto* scroller = dynamic_cast<NSScroller*>(&view);
    if (!scroller) return false;
    grabOffset_ = scroller->alongSlot(start) - scroller->knobWay() * doubleValue();
    scroller->hitPart_ = scroller->partAt(start);
    scroller->hand_ = start;
    sendActionOn(scroller->hitPart_ == Part::Knob ? NSEventMaskLeftMouseDragged : NSEventMaskLeftMouseDown);
    if (scroller->hitPart_ != Part::Knob) scroller->repeatAfter(scrollerRepeatDelay);
    return true;
  }

  bool continueTracking(CGPoint, CGPoint current, NSView& view) override {
    auto* scroller = dynamic_cast<NSScroller*>(&view);
    if (!scroller) return false;
    scroller->hand_ = current;
    if (scroller->hitPart_ == Part::Knob && scroller->knobWay() > 0)
      scroller->setDoubleValue((scroller->alongSlot(current) - grabOffset_) / scroller->knobWay());
    return true;
  }

  void stopTracking(CGPoint last, CGPoint stop, NSView& view, bool isMouseUp) override {
    if (auto* scroller = dynamic_cast<NSScroller*>(&view)) scroller->nextPage_ = nullptr;
    NSCell::stopTracking(last, stop, view, isMouseUp);
  }

 private:
  CGFloat grabOffset_ = 0;  // from the knob's start to the hand
};

Ref<NSCell> NSScroller::makeCell() { return make<Tracker>(); }
Ref<NSCell> NSScroller::makeCell(NSCoder& coder) { return make<Tracker>(coder); }

void NSScroller::setObjectValue(Ref<NSObject> value) {
  const double number = doubleOf(value.get());
  const double inside = number > 0 ? std::min(number, 1.0) : 0;  // NaN is 0
  if (inside != doubleValue()) NSControl::setObjectValue(make<NSNumber>(inside));
}

void NSScroller::setKnobProportion(CGFloat proportion) {
  const CGFloat inside = proportion > 0 ? std::min(proportion, 1.0) : 0;
  if (inside == knobProportion_) return;
  knobProportion_ = inside;
  setNeedsDisplay(true);
}

CGFloat NSScroller::knobLength() const {
  return std::min(slotLength(), std::max(shortestKnob, slotLength() * knobProportion_));
}

CGRect NSScroller::knobRect() const {
  const CGFloat start = knobWay() * doubleValue();
  const CGRect slot = bounds();
  return isVertical() ? CGRect{slot.origin.x, slot.origin.y + start, slot.size.width, knobLength()}
                      : CGRect{slot.origin.x + start, slot.origin.y, knobLength(), slot.size.height};
}

NSScroller::Part NSScroller::partAt(CGPoint point) const {
  const CGFloat fromKnob = alongSlot(point) - knobWay() * doubleValue();
  return fromKnob < 0 ? Part::PageBefore : fromKnob < knobLength() ? Part::Knob : Part::PageAfter;
}

void NSScroller::repeatAfter(double seconds) {
  if (backend::Backend* backend = backend::Backend::current()) nextPage_ = backend->timer(seconds, [this] { repeatPage(); });
}

// A hand that has left the slot, or that the knob has reached, waits: it may come to where there are pages again.
void NSScroller::repeatPage() {
  const Ref<NSObject> held = shared_from_this();
  repeatAfter(scrollerRepeatPeriod);
  if (NSPointInRect(hand_, bounds()) && partAt(hand_) == hitPart_) sendActionTo(action(), target());
}

void NSScroller::drawRect(CGRect) {
  if (knobProportion_ >= 1) return;
  const CGRect knob = NSInsetRect(knobRect(), knobMargin, knobMargin);
  const CGFloat radius = std::min(knob.size.width, knob.size.height) * 0.5;
  NSColor::controlTextColor()->colorWithAlphaComponent(isHighlighted() && hitPart_ == Part::Knob ? 0.7 : 0.5)->setFill();
  NSBezierPath::bezierPathWithRoundedRect(knob, radius, radius)->fill();
}

CGFloat NSScroller::alongSlot(CGPoint point) const {
  return isVertical() ? point.y - bounds().origin.y : point.x - bounds().origin.x;
}

}  // namespace tessaluna::platform
