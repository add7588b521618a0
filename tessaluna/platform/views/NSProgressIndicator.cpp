#include "tessaluna/platform/views/NSProgressIndicator.h"

#include <algorithm>
#include <cmath>
#include <numbers>

#include "tessaluna/platform/backend/Backend.h"
#include "tessaluna/platform/foundation/memberTables.h"
#include "tessaluna/platform/graphics/CGContext.h"
#include "tessaluna/platform/graphics/NSBezierPath.h"
#include "tessaluna/platform/graphics/NSColor.h"
#include "tessaluna/platform/graphics/NSGraphicsContext.h"
#include "tessaluna/platform/time/durations.h"

namespace tessaluna::platform {

namespace {

constexpr CGFloat barThickness = 6, largestWheel = 32;
constexpr unsigned spokes = 12, stepsOfPass = 48;
constexpr CGFloat pieceOfBar = 0.3;  // that runs along an indeterminate one

constexpr Selector progressSelectors[] = {action<&NSProgressIndicator::startAnimation>("startAnimation:"),
                                          action<&NSProgressIndicator::stopAnimation>("stopAnimation:")};
constexpr Property progressProperties[] = {
    property<&NSProgressIndicator::setStyle, "style">(),
    property<&NSProgressIndicator::setControlTint, "controlTint">(),
    property<&NSProgressIndicator::setIndeterminate, "indeterminate">(),
    property<&NSProgressIndicator::setMinValue, "minValue">(),
    property<&NSProgressIndicator::setMaxValue, "maxValue">(),
    property<&NSProgressIndicator::setDoubleValue, "doubleValue">(),
    property<&NSProgressIndicator::setDisplayedWhenStopped, "displayedWhenStopped">()};

Ref<NSColor> colorOf(NSControlTint tint) {
  switch (tint) {
    case NSDefaultControlTint:
    case NSBlueControlTint: return NSColor::alternateSelectedControlColor();
    case NSGraphiteControlTint: return NSColor::grayColor();
    case NSClearControlTint: return NSColor::controlTextColor()->colorWithAlphaComponent(0.4);
  }
  unreachable();
}

}  // namespace

const ClassInfo NSProgressIndicator::staticClassInfo{.name = "NSProgressIndicator",
                                                     .base = &NSView::staticClassInfo,
                                                     .selectors = progressSelectors,
                                                     .properties = progressProperties};

NSProgressIndicator::NSProgressIndicator(NSCoder& coder) : NSView(coder) {
  style_ = coder.decodeEnumForKey<NSProgressIndicatorStyle>("style").value_or(style_);
  controlTint_ = coder.decodeEnumForKey<NSControlTint>("controlTint").value_or(controlTint_);
  isIndeterminate_ = coder.boolForKey("indeterminate").value_or(isIndeterminate_);
  minValue_ = coder.numberForKey("minValue").value_or(minValue_);
  maxValue_ = coder.numberForKey("maxValue").value_or(maxValue_);
  value_ = coder.decodeDoubleForKey("doubleValue");
  isDisplayedWhenStopped_ = coder.boolForKey("displayedWhenStopped").value_or(isDisplayedWhenStopped_);
}

template <class T>
void NSProgressIndicator::change(T& member, T value) {
  if (member == value) return;
  member = value;
  setNeedsDisplay(true);
}

void NSProgressIndicator::setStyle(NSProgressIndicatorStyle style) {
  change(style_, style);
  invalidateIntrinsicContentSize();
}
void NSProgressIndicator::setControlTint(NSControlTint tint) { change(controlTint_, tint); }
void NSProgressIndicator::setIndeterminate(bool isIndeterminate) { change(isIndeterminate_, isIndeterminate); }
void NSProgressIndicator::setDisplayedWhenStopped(bool isDisplayed) { change(isDisplayedWhenStopped_, isDisplayed); }
void NSProgressIndicator::setMinValue(double value) { change(minValue_, value); }
void NSProgressIndicator::setMaxValue(double value) { change(maxValue_, value); }

void NSProgressIndicator::setDoubleValue(double value) {
  if (value == value_) return;
  change(value_, value);
  NSAccessibilityPostNotification(refTo<NSObject>(*this), NSAccessibilityValueChangedNotification);
}

void NSProgressIndicator::startAnimation(NSObject*) { change(isAnimating_, true); }

void NSProgressIndicator::stopAnimation(NSObject*) {
  nextStep_ = nullptr;
  change(isAnimating_, false);
}

double NSProgressIndicator::share() const {
  const double range = maxValue_ - minValue_;
  return range > 0 && value_ > minValue_ ? std::min((value_ - minValue_) / range, 1.0) : 0;
}

CGSize NSProgressIndicator::intrinsicContentSize() const {
  if (style_ == NSProgressIndicatorStyleSpinning) return {largestWheel, largestWheel};
  return {NSView::intrinsicContentSize().width, barThickness};
}

void NSProgressIndicator::drawRect(CGRect) {
  if (!isAnimating_ && !isDisplayedWhenStopped_) return;
  if (style_ == NSProgressIndicatorStyleSpinning) drawSpokes();
  else drawBar();
  waitForNextStep();
}

// Only what is drawn asks for its next step, so that what nobody sees asks for none.
void NSProgressIndicator::waitForNextStep() {
  backend::Backend* backend = backend::Backend::current();
  if (!isAnimating_ || !isIndeterminate_ || !window() || !backend || nextStep_) return;
  const bool isWheel = style_ == NSProgressIndicatorStyleSpinning;
  const double turn = animationDuration(isWheel ? spinnerTurnDuration : progressBarPassDuration);
  if (turn == 0) return;
  nextStep_ = backend->timer(turn / (isWheel ? spokes : stepsOfPass), [this] {
    nextStep_ = nullptr;
    ++step_;
    setNeedsDisplay(true);
  });
}

void NSProgressIndicator::drawBar() const {
  const CGFloat thickness = std::min(barThickness, bounds().size.height);
  const CGRect bar{bounds().origin.x, bounds().origin.y + std::floor((bounds().size.height - thickness) * 0.5),
                   bounds().size.width, thickness};
  const auto outline = NSBezierPath::bezierPathWithRoundedRect(bar, thickness * 0.5, thickness * 0.5);
  NSColor::controlTextColor()->colorWithAlphaComponent(0.15)->setFill();
  outline->fill();
  CGRect filled = bar;
  if (isIndeterminate_) {
    if (!isAnimating_) return;
    // The piece comes in at one end and leaves at the other. One that does not move is in the middle.
    const bool moves = animationDuration(progressBarPassDuration) > 0;
    const double pass = moves ? (step_ % stepsOfPass) / double{stepsOfPass} : 0.5;
    filled.size.width = bar.size.width * pieceOfBar;
    filled.origin.x = bar.origin.x - filled.size.width + (bar.size.width + filled.size.width) * pass;
  } else {
    filled.size.width = bar.size.width * share();
  }
  if (filled.size.width <= 0) return;
  NSGraphicsContext::saveGraphicsState();
  outline->addClip();
  colorOf(controlTint_)->setFill();
  NSBezierPath::bezierPathWithRoundedRect(filled, thickness * 0.5, thickness * 0.5)->fill();
  NSGraphicsContext::restoreGraphicsState();
}

void NSProgressIndicator::drawSpokes() const {
  const CGFloat diameter = std::min({bounds().size.width, bounds().size.height, largestWheel});
  const CGPoint middle{CGRectGetMidX(bounds()), CGRectGetMidY(bounds())};
  const CGFloat width = diameter / 12, outer = diameter * 0.5 - width * 0.5, inner = diameter * 0.27;
  constexpr CGFloat faint = 0.15, strong = 0.7;
  const auto lit = static_cast<unsigned>(std::floor(share() * spokes));
  for (unsigned spoke = 0; spoke < spokes; ++spoke) {
    // Clockwise from the top. A wheel that turns has its darkest spoke at its position, followed by a tail.
    const unsigned behind = (step_ % spokes + spokes - spoke) % spokes;
    const CGFloat tail = 1 - static_cast<CGFloat>(behind) / spokes;
    const CGFloat strength = isIndeterminate_ ? faint + (strong - faint) * tail * tail : spoke < lit ? strong : faint;
    const double angle = std::numbers::pi * (0.5 - 2.0 * spoke / spokes);
    const CGPoint direction{std::cos(angle), std::sin(angle)};
    const auto line = NSBezierPath::bezierPath();
    line->moveToPoint({middle.x + direction.x * inner, middle.y + direction.y * inner});
    line->lineToPoint({middle.x + direction.x * outer, middle.y + direction.y * outer});
    line->setLineWidth(width);
    line->setLineCapStyle(NSRoundLineCapStyle);
    NSColor::controlTextColor()->colorWithAlphaComponent(strength)->setStroke();
    line->stroke();
  }
}

AccessibilityValue NSProgressIndicator::accessibilityValue() const {
  return isIndeterminate_ ? AccessibilityValue() : AccessibilityValue(minValue_ + share() * (maxValue_ - minValue_));
}

AccessibilityValue NSProgressIndicator::accessibilityAttributeValue(std::string_view attribute) const {
  if (!isIndeterminate_ && attribute == NSAccessibilityMinValueAttribute) return minValue_;
  if (!isIndeterminate_ && attribute == NSAccessibilityMaxValueAttribute) return maxValue_;
  return NSView::accessibilityAttributeValue(attribute);
}

}  // namespace tessaluna::platform
