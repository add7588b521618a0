#include "tessaluna/platform/views/NSSlider.h"

#include <cmath>

#include "tessaluna/platform/events/NSEvent.h"
#include "tessaluna/platform/foundation/memberTables.h"
#include "tessaluna/platform/text/unicode.h"

namespace tessaluna::platform {

namespace {

constexpr double stepsOfPage = 4;
constexpr CGFloat pointsOfStep = 48;  // a notch of most wheels
constexpr std::uint32_t modifiersThatCount =
    NSEventModifierFlagShift | NSEventModifierFlagControl | NSEventModifierFlagOption | NSEventModifierFlagCommand;

constexpr Property sliderProperties[] = {property<&NSSlider::setMinValue, "minValue">(),
                                         property<&NSSlider::setMaxValue, "maxValue">(),
                                         property<&NSSlider::setVertical, "vertical">(),
                                         property<&NSSlider::setNumberOfTickMarks, "numberOfTickMarks">(),
                                         property<&NSSlider::setTickMarkPosition, "tickMarkPosition">(),
                                         property<&NSSlider::setAllowsTickMarkValuesOnly, "allowsTickMarkValuesOnly">()};

}  // namespace

const ClassInfo NSSlider::staticClassInfo{
    .name = "NSSlider", .base = &NSControl::staticClassInfo, .properties = sliderProperties};

const NSSliderCell& NSSlider::sliderCell() const {
  static const Ref<NSSliderCell> fresh = make<NSSliderCell>();
  const NSSliderCell* own = ownSliderCell();
  return own ? *own : *fresh;
}

template <class Change>
void NSSlider::changeSliderCell(Change change) {
  NSSliderCell* own = ownSliderCell();
  if (!own) return;
  const double earlier = own->doubleValue();
  change(*own);
  cellDidChange();
  if (own->doubleValue() != earlier) NSAccessibilityPostNotification(cell(), NSAccessibilityValueChangedNotification);
}

void NSSlider::setMinValue(double value) {
  changeSliderCell([&](NSSliderCell& own) { own.setMinValue(value); });
}
void NSSlider::setMaxValue(double value) {
  changeSliderCell([&](NSSliderCell& own) { own.setMaxValue(value); });
}
bool NSSlider::isVertical() const { return sliderCell().isVertical(); }
void NSSlider::setVertical(bool isVertical) {
  changeSliderCell([&](NSSliderCell& own) { own.setVertical(isVertical); });
}
void NSSlider::setNumberOfTickMarks(std::size_t count) {
  changeSliderCell([&](NSSliderCell& own) { own.setNumberOfTickMarks(count); });
}
void NSSlider::setTickMarkPosition(NSTickMarkPosition position) {
  changeSliderCell([&](NSSliderCell& own) { own.setTickMarkPosition(position); });
}
void NSSlider::setAllowsTickMarkValuesOnly(bool only) {
  changeSliderCell([&](NSSliderCell& own) { own.setAllowsTickMarkValuesOnly(only); });
}

void NSSlider::setObjectValue(Ref<NSObject> value) {
  if (!cell()) return;
  const double earlier = doubleValue();
  cell()->setObjectValue(std::move(value));
  if (doubleValue() == earlier) return;
  setNeedsDisplay(true);
  NSAccessibilityPostNotification(cell(), NSAccessibilityValueChangedNotification);
}

CGSize NSSlider::intrinsicContentSize() const {
  const CGSize none = NSView::intrinsicContentSize();
  const CGSize size = sliderCell().cellSize();
  return isVertical() ? CGSize{size.width, none.height} : CGSize{none.width, size.height};
}

std::optional<double> NSSlider::valueForKey(const NSEvent& event) const {
  const NSSliderCell& slider = sliderCell();
  if (event.modifierFlags() & modifiersThatCount) return std::nullopt;
  const double ahead = slider.isMirrored() ? -1 : 1;
  switch (firstScalar(event.charactersIgnoringModifiers())) {
    case NSRightArrowFunctionKey: return slider.valueAfterSteps(ahead);
    case NSLeftArrowFunctionKey: return slider.valueAfterSteps(-ahead);
    case NSUpArrowFunctionKey: return slider.valueAfterSteps(1);
    case NSDownArrowFunctionKey: return slider.valueAfterSteps(-1);
    case NSPageUpFunctionKey: return slider.valueAfterSteps(stepsOfPage);
    case NSPageDownFunctionKey: return slider.valueAfterSteps(-stepsOfPage);
    case NSHomeFunctionKey: return slider.minValue();
    case NSEndFunctionKey: return slider.maxValue();
    default: return std::nullopt;
  }
}

void NSSlider::keyDown(const Ref<NSEvent>& event) {
  const Ref<NSObject> held = shared_from_this();
  const std::optional<double> value = ownSliderCell() && isEnabled() ? valueForKey(*event) : std::nullopt;
  if (!value) return NSControl::keyDown(event);
  // While the mouse holds the knob the keys wait.
  if (!isPressed()) ownSliderCell()->userChoseValue(*value);
}

void NSSlider::scrollWheel(const Ref<NSEvent>& event) {
  const Ref<NSObject> held = shared_from_this();
  NSSliderCell* own = ownSliderCell();
  if (!own || !isEnabled()) return NSControl::scrollWheel(event);
  if (isPressed()) return;
  // What scrolls the content to the left shows what is at the right.
  const CGFloat across = own->isMirrored() ? event->scrollingDeltaX() : -event->scrollingDeltaX();
  const CGFloat points = std::abs(across) > std::abs(event->scrollingDeltaY()) ? across : event->scrollingDeltaY();
  if (!own->allowsTickMarkValuesOnly()) return own->userChoseValue(own->valueAfterSteps(points / pointsOfStep));
  // From one mark to the next in whole steps; a turn back begins a new one.
  scrolled_ = scrolled_ * points < 0 ? points : scrolled_ + points;
  const double steps = std::trunc(scrolled_ / pointsOfStep);
  scrolled_ -= steps * pointsOfStep;
  own->userChoseValue(own->valueAfterSteps(steps));
}

}  // namespace tessaluna::platform
