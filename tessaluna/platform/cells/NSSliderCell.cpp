#include "tessaluna/platform/cells/NSSliderCell.h"

#include <algorithm>
#include <cmath>

#include "tessaluna/platform/events/NSTextInputClient.h"
#include "tessaluna/platform/foundation/NSNumber.h"
#include "tessaluna/platform/foundation/memberTables.h"
#include "tessaluna/platform/graphics/NSBezierPath.h"
#include "tessaluna/platform/graphics/NSColor.h"
#include "tessaluna/platform/graphics/NSRect.h"
#include "tessaluna/platform/views/NSControl.h"

namespace tessaluna::platform {

namespace {

// Even numbers, so that the middles of all parts fall on the same point.
constexpr CGFloat barThickness = 4, barMargin = 2, knobDiameter = 16;
constexpr CGFloat tickMarkGap = 2, tickMarkLength = 5, tickMarkWidth = 1;
constexpr CGSize shortestSlider{96, 20};
constexpr double stepsOfRange = 20;

constexpr Property sliderCellProperties[] = {
    property<&NSSliderCell::setVertical, "vertical">(),
    property<&NSSliderCell::setAllowsTickMarkValuesOnly, "allowsTickMarkValuesOnly">()};

}  // namespace

const ClassInfo NSSliderCell::staticClassInfo{
    .name = "NSSliderCell", .base = &RangeCell::staticClassInfo, .properties = sliderCellProperties};

NSSliderCell::NSSliderCell() : RangeCell(1) {
  NSSliderCell::setObjectValue(make<NSNumber>(0.0));
  setContinuous(true);
}

NSSliderCell::NSSliderCell(NSCoder& coder) : RangeCell(1, coder) {
  NSSliderCell::setObjectValue(make<NSNumber>(coder.decodeDoubleForKey("doubleValue")));
  isVertical_ = coder.boolForKey("vertical");
  allowsTickMarkValuesOnly_ = coder.decodeBoolForKey("allowsTickMarkValuesOnly");
  setContinuous(true);
}

// The value.

void NSSliderCell::setObjectValue(Ref<NSObject> value) {
  const double number = doubleOf(value.get());
  // NaN is the minimum.
  const double inside = number > minValue() ? std::max(minValue(), std::min(number, maxValue())) : minValue();
  NSCell::setObjectValue(make<NSNumber>(inside));
}

void NSSliderCell::setMinValue(double value) {
  RangeCell::setMinValue(value);
  setDoubleValue(doubleValue());
}

void NSSliderCell::setMaxValue(double value) {
  RangeCell::setMaxValue(value);
  setDoubleValue(doubleValue());
}

double NSSliderCell::allowedValue(double value) const {
  const double inside = std::max(minValue(), std::min(value, maxValue()));
  return allowsTickMarkValuesOnly_ ? closestTickMarkValueToValue(inside) : inside;
}

double NSSliderCell::valueAfterSteps(double steps) const {
  const bool goesAlongTickMarks = allowsTickMarkValuesOnly_ && numberOfTickMarks() > 1;
  const double count = goesAlongTickMarks ? static_cast<double>(numberOfTickMarks() - 1) : stepsOfRange;
  return allowedValue(doubleValue() + steps * (maxValue() - minValue()) / count);
}

// Where things are.

bool NSSliderCell::isVertical() const {
  const CGSize size = trackRect().size;
  return isVertical_.value_or(size.height > size.width);
}

bool NSSliderCell::isMirrored() const {
  return !isVertical() && controlView() &&
         controlView()->userInterfaceLayoutDirection() == NSUserInterfaceLayoutDirectionRightToLeft;
}

// Whether coordinates grow from the maximum to the minimum.
bool NSSliderCell::runsBackward(bool flipped) const { return isVertical() ? flipped : isMirrored(); }

CGFloat NSSliderCell::tickMarkRoom() const { return numberOfTickMarks() > 0 ? tickMarkGap + tickMarkLength : 0; }

// The line that bar and knob lie on.
CGFloat NSSliderCell::middleAcross(bool flipped) const {
  const CGRect track = trackRect();
  const CGFloat start = isVertical() ? track.origin.x : track.origin.y;
  const CGFloat extent = isVertical() ? track.size.width : track.size.height;
  // The marks are at the far side: at the right, or below where y points down.
  const bool isFar = (tickMarkPosition() == NSTickMarkPositionBelow) == (isVertical() || flipped);
  return start + std::floor((extent - knobDiameter - tickMarkRoom()) * 0.5) + knobDiameter * 0.5 +
         (isFar ? 0 : tickMarkRoom());
}

// With its middle there along the bar, and on the bar's line.
CGRect NSSliderCell::rectAlong(CGFloat middle, CGSize size, bool flipped) const {
  const CGFloat along = middle - size.width * 0.5, across = middleAcross(flipped) - size.height * 0.5;
  return isVertical() ? CGRect{across, along, size.height, size.width} : CGRect{along, across, size.width, size.height};
}

CGFloat NSSliderCell::middleOfKnobAt(double value, bool flipped) const {
  const CGRect track = trackRect();
  const double range = maxValue() - minValue();
  const double share = range > 0 ? (value - minValue()) / range : 0;
  const CGFloat start = isVertical() ? track.origin.y : track.origin.x;
  const CGFloat way = (isVertical() ? track.size.height : track.size.width) - knobDiameter;
  return start + knobDiameter * 0.5 + way * (runsBackward(flipped) ? 1 - share : share);
}

CGRect NSSliderCell::knobRectFlipped(bool flipped) const {
  return rectAlong(middleOfKnobAt(doubleValue(), flipped), {knobDiameter, knobDiameter}, flipped);
}

CGRect NSSliderCell::barRectFlipped(bool flipped) const {
  const CGRect track = trackRect();
  return isVertical() ? rectAlong(CGRectGetMidY(track), {track.size.height - 2 * barMargin, barThickness}, flipped)
                      : rectAlong(CGRectGetMidX(track), {track.size.width - 2 * barMargin, barThickness}, flipped);
}

CGFloat NSSliderCell::knobThickness() const {
  const CGSize knob = knobRectFlipped(isInFlippedView()).size;
  return isVertical() ? knob.height : knob.width;
}

double NSSliderCell::valueAtPoint(CGPoint point) const {
  const CGRect track = trackRect();
  const CGFloat knob = knobThickness();
  const CGFloat along = isVertical() ? point.y - track.origin.y : point.x - track.origin.x;
  const CGFloat way = (isVertical() ? track.size.height : track.size.width) - knob;
  if (!(way > 0)) return minValue();
  const double share = std::clamp((along - knob * 0.5) / way, 0.0, 1.0);
  const double shareOfRange = runsBackward(isInFlippedView()) ? 1 - share : share;
  return shareOfRange == 1 ? maxValue() : minValue() + (maxValue() - minValue()) * shareOfRange;
}

CGRect NSSliderCell::rectOfTickMarkAtIndex(std::size_t index) const {
  const bool flipped = isInFlippedView();
  const CGFloat middle = std::floor(middleOfKnobAt(tickMarkValueAtIndex(index), flipped));
  const bool isFar = (tickMarkPosition() == NSTickMarkPositionBelow) == (isVertical() || flipped);
  const CGFloat distance = knobDiameter * 0.5 + tickMarkGap + (isFar ? 0 : tickMarkLength);
  const CGFloat across = middleAcross(flipped) + (isFar ? distance : -distance);
  return isVertical() ? CGRect{across, middle, tickMarkLength, tickMarkWidth}
                      : CGRect{middle, across, tickMarkWidth, tickMarkLength};
}

std::size_t NSSliderCell::indexOfTickMarkAtPoint(CGPoint point) const {
  if (numberOfTickMarks() == 0) return NSNotFound;
  // A mark is cut to a whole point: it may begin before its value's place.
  const std::size_t near = closestTickMark(valueAtPoint(point));
  for (std::size_t index = near - std::min<std::size_t>(near, 1); index < numberOfTickMarks() && index <= near + 1; ++index)
    if (NSPointInRect(point, rectOfTickMarkAtIndex(index))) return index;
  return NSNotFound;
}

std::size_t NSSliderCell::closestTickMark(double value) const {
  const double range = maxValue() - minValue(), last = static_cast<double>(numberOfTickMarks() - 1);
  const double place = range > 0 ? std::round((value - minValue()) / range * last) : 0;
  if (!(place > 0)) return 0;  // also for NaN
  return place < last ? static_cast<std::size_t>(place) : numberOfTickMarks() - 1;
}

double NSSliderCell::closestTickMarkValueToValue(double value) const {
  return numberOfTickMarks() == 0 ? value : tickMarkValueAtIndex(closestTickMark(value));
}

// What it looks like.

CGSize NSSliderCell::cellSize() const {
  const CGFloat across = shortestSlider.height + tickMarkRoom();
  return isVertical() ? CGSize{across, shortestSlider.width} : CGSize{shortestSlider.width, across};
}

void NSSliderCell::drawInteriorWithFrame(CGRect, NSView& view) {
  drawBarInside(barRectFlipped(view.isFlipped()), view.isFlipped());
  drawTickMarks();
  drawKnob(knobRectFlipped(view.isFlipped()));
}

void NSSliderCell::drawKnob() { drawKnob(knobRectFlipped(isInFlippedView())); }

void NSSliderCell::drawBarInside(CGRect rect, bool flipped) {
  const CGFloat strength = isEnabled() ? 1 : 0.4;
  const auto fillBar = [](CGRect part) {
    NSBezierPath::bezierPathWithRoundedRect(part, barThickness * 0.5, barThickness * 0.5)->fill();
  };
  NSColor::controlTextColor()->colorWithAlphaComponent(0.2 * strength)->setFill();
  fillBar(rect);
  // Marks are a scale: no part of it is the value more than another.
  if (numberOfTickMarks() > 0) return;
  const CGRect knob = knobRectFlipped(flipped);
  CGRect before = rect;
  if (isVertical()) {
    before.size.height = CGRectGetMidY(knob) - rect.origin.y;
    if (flipped) before = {rect.origin.x, CGRectGetMidY(knob), rect.size.width, rect.size.height - before.size.height};
  } else {
    before.size.width = CGRectGetMidX(knob) - rect.origin.x;
    if (isMirrored()) before = {CGRectGetMidX(knob), rect.origin.y, rect.size.width - before.size.width, rect.size.height};
  }
  NSColor::alternateSelectedControlColor()->colorWithAlphaComponent(strength)->setFill();
  fillBar(before);
}

void NSSliderCell::drawKnob(CGRect knobRect) {
  // Half a point inside, so that the outline of one point falls on whole points.
  const auto knob = NSBezierPath::bezierPathWithOvalInRect(NSInsetRect(knobRect, 0.5, 0.5));
  NSColor::controlColor()->blendedColorWithFraction(isHighlighted() ? 0.2 : 0, NSColor::blackColor())->setFill();
  knob->fill();
  NSColor::controlTextColor()->colorWithAlphaComponent(isEnabled() ? 0.35 : 0.15)->setStroke();
  knob->stroke();
}

// How it follows the mouse.

bool NSSliderCell::startTrackingAt(CGPoint start, NSView& view) {
  const CGRect knob = knobRectFlipped(view.isFlipped());
  const bool isOnKnob = NSPointInRect(start, knob);
  const CGFloat middle = isVertical() ? CGRectGetMidY(knob) : CGRectGetMidX(knob);
  grabOffset_ = isOnKnob ? (isVertical() ? start.y : start.x) - middle : 0;
  if (isOnKnob) return true;
  changeValue(allowedValue(valueAtPoint(start)));
  // A mask with the press has the control send it.
  if (isContinuous() && !sendsActionOn(NSEventType::LeftMouseDown)) sendAction();
  return true;
}

bool NSSliderCell::continueTracking(CGPoint, CGPoint current, NSView&) {
  (isVertical() ? current.y : current.x) -= grabOffset_;
  changeValue(allowedValue(valueAtPoint(current)));
  return true;
}

AccessibilityValue NSSliderCell::accessibilityAttributeValue(std::string_view attribute) const {
  if (attribute == NSAccessibilityOrientationAttribute)
    return isVertical() ? NSAccessibilityVerticalOrientationValue : NSAccessibilityHorizontalOrientationValue;
  return RangeCell::accessibilityAttributeValue(attribute);
}

}  // namespace tessaluna::platform
