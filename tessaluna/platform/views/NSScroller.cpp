#include "tessaluna/platform/views/NSScroller.h"

#include <utility>

#include <algorithm>

#include "tessaluna/platform/events/NSEvent.h"
#include "tessaluna/platform/graphics/NSBezierPath.h"
#include "tessaluna/platform/graphics/NSColor.h"

namespace tessaluna::platform {

const ClassInfo NSScroller::staticClassInfo{.name = "NSScroller", .base = &NSControl::staticClassInfo};

namespace {

constexpr CGFloat shortestKnob = 24, knobMargin = 3;

}  // namespace

void NSScroller::setDoubleValue(CGFloat value) {
  const CGFloat inside = std::clamp(value, 0.0, 1.0);
  if (inside == value_) return;
  value_ = inside;
  setNeedsDisplay(true);
}

void NSScroller::setKnobProportion(CGFloat proportion) {
  const CGFloat inside = std::clamp(proportion, 0.0, 1.0);
  if (inside == knobProportion_) return;
  knobProportion_ = inside;
  setNeedsDisplay(true);
}

CGFloat NSScroller::knobLength() const {
  return std::min(slotLength(), std::max(shortestKnob, slotLength() * knobProportion_));
}

CGRect NSScroller::knobRect() const {
  const CGFloat start = (slotLength() - knobLength()) * value_;
  const CGRect slot = bounds();
  return isVertical() ? CGRect{slot.origin.x, slot.origin.y + start, slot.size.width, knobLength()}
                      : CGRect{slot.origin.x + start, slot.origin.y, knobLength(), slot.size.height};
}

void NSScroller::drawRect(CGRect) {
  if (knobProportion_ >= 1) return;
  const CGRect knob = NSInsetRect(knobRect(), knobMargin, knobMargin);
  const CGFloat radius = std::min(knob.size.width, knob.size.height) * 0.5;
  NSColor::controlTextColor()->colorWithAlphaComponent(isDragging_ ? 0.55 : 0.3)->setFill();
  NSBezierPath::bezierPathWithRoundedRect(knob, radius, radius)->fill();
}

CGFloat NSScroller::alongSlot(const Ref<NSEvent>& event) const {
  const CGPoint point = convertPointFromView(event->locationInWindow(), nullptr);
  return isVertical() ? point.y - bounds().origin.y : point.x - bounds().origin.x;
}

void NSScroller::mouseDown(const Ref<NSEvent>& event) {
  const CGFloat place = alongSlot(event);
  const CGFloat start = (slotLength() - knobLength()) * value_;
  if (place < start || place >= start + knobLength()) {
    hitPart_ = place < start ? Part::PageBefore : Part::PageAfter;
    sendActionTo(action(), target());
    return;
  }
  hitPart_ = Part::Knob;
  isDragging_ = true;
  grabOffset_ = place - start;
  setNeedsDisplay(true);
}

void NSScroller::mouseDragged(const Ref<NSEvent>& event) {
  const CGFloat way = slotLength() - knobLength();
  if (!isDragging_ || way <= 0) return;
  setDoubleValue((alongSlot(event) - grabOffset_) / way);
  sendActionTo(action(), target());
}

void NSScroller::mouseUp(const Ref<NSEvent>&) { letGoOfKnob(); }

void NSScroller::viewDidHide() {
  letGoOfKnob();
  NSControl::viewDidHide();
}

void NSScroller::windowWillChange() {
  letGoOfKnob();
  NSControl::windowWillChange();
}

void NSScroller::letGoOfKnob() {
  if (std::exchange(isDragging_, false)) setNeedsDisplay(true);
}

}  // namespace tessaluna::platform
