#include "tessaluna/platform/cells/NSLevelIndicatorCell.h"

#include <algorithm>
#include <cmath>

#include "tessaluna/platform/foundation/NSCoder.h"
#include "tessaluna/platform/foundation/memberTables.h"
#include "tessaluna/platform/graphics/NSBezierPath.h"
#include "tessaluna/platform/graphics/NSColor.h"
#include "tessaluna/platform/graphics/NSRect.h"
#include "tessaluna/platform/views/NSControl.h"

namespace tessaluna::platform {

namespace {

constexpr Property levelIndicatorCellProperties[] = {
    property<&NSLevelIndicatorCell::setLevelIndicatorStyle, "levelIndicatorStyle">(),
    property<&NSLevelIndicatorCell::setMinValue, "minValue">(),
    property<&NSLevelIndicatorCell::setMaxValue, "maxValue">(),
    property<&NSLevelIndicatorCell::setWarningValue, "warningValue">(),
    property<&NSLevelIndicatorCell::setCriticalValue, "criticalValue">(),
    property<&NSLevelIndicatorCell::setEditable, "editable">()};

constexpr CGFloat starSize = 14, barHeight = 12, barWidth = 90, partGap = 1;

// A star with its points on the circle around (0, 0) with radius 1, the first one at the top, and the corners between them.
constexpr CGPoint starCorners[] = {{0, -1},
                                   {0.22451398828979269, -0.30901699437494742},
                                   {0.95105651629515353, -0.30901699437494742},
                                   {0.36327126400268045, 0.11803398874989485},
                                   {0.58778525229247314, 0.80901699437494745},
                                   {0, 0.38196601125010515},
                                   {-0.58778525229247314, 0.80901699437494745},
                                   {-0.36327126400268045, 0.11803398874989485},
                                   {-0.95105651629515353, -0.30901699437494742},
                                   {-0.22451398828979269, -0.30901699437494742}};

Ref<NSBezierPath> starIn(CGRect box) {
  // A little lower than the middle, as a star reaches further up than down.
  const CGFloat radius = box.size.width * 0.45, x = CGRectGetMidX(box), y = CGRectGetMidY(box) + radius * 0.0955;
  const auto path = NSBezierPath::bezierPath();
  for (const CGPoint& corner : starCorners) {
    const CGPoint point{x + corner.x * radius, y + corner.y * radius};
    if (&corner == starCorners) path->moveToPoint(point);
    else path->lineToPoint(point);
  }
  path->closePath();
  return path;
}

Ref<NSBezierPath> dotIn(CGRect box) {
  const CGFloat radius = box.size.width * 0.1;
  return NSBezierPath::bezierPathWithOvalInRect(
      {CGRectGetMidX(box) - radius, CGRectGetMidY(box) - radius, 2 * radius, 2 * radius});
}

}  // namespace

const ClassInfo NSLevelIndicatorCell::staticClassInfo{
    .name = "NSLevelIndicatorCell", .base = &NSCell::staticClassInfo, .properties = levelIndicatorCellProperties};

NSLevelIndicatorCell::NSLevelIndicatorCell(NSLevelIndicatorStyle style) : style_(style), maxValue_(hasParts() ? 5 : 100) {}

NSLevelIndicatorCell::NSLevelIndicatorCell(NSCoder& coder) : NSCell(coder) {
  style_ = coder.decodeEnumForKey<NSLevelIndicatorStyle>("levelIndicatorStyle").value_or(style_);
  minValue_ = coder.decodeDoubleForKey("minValue");
  maxValue_ = coder.numberForKey("maxValue").value_or(hasParts() ? 5 : 100);
  if (const auto value = coder.numberForKey("doubleValue")) setDoubleValue(*value);
  warningValue_ = coder.decodeDoubleForKey("warningValue");
  criticalValue_ = coder.decodeDoubleForKey("criticalValue");
  isEditable_ = coder.decodeBoolForKey("editable");
}

bool NSLevelIndicatorCell::hasParts() const { return style_ >= NSLevelIndicatorStyleDiscreteCapacity; }

std::size_t NSLevelIndicatorCell::numberOfParts() const {
  constexpr double most = 200;
  const double steps = std::floor(maxValue_ - minValue_ + 0.5);
  return hasParts() && steps > 0 ? static_cast<std::size_t>(std::min(steps, most)) : 0;
}

CGRect NSLevelIndicatorCell::rectOfPart(std::size_t part, CGRect bounds) const {
  const auto parts = static_cast<CGFloat>(numberOfParts()), index = static_cast<CGFloat>(part);
  if (style_ == NSLevelIndicatorStyleRating) {
    const CGFloat side = std::min({bounds.size.height, bounds.size.width / parts, starSize});
    return {bounds.origin.x + index * side, bounds.origin.y + (bounds.size.height - side) / 2, side, side};
  }
  // Whole points, so that all gaps look alike.
  const CGFloat start = std::floor(bounds.size.width * index / parts + 0.5);
  const CGFloat end = std::floor(bounds.size.width * (index + 1) / parts + 0.5);
  return {bounds.origin.x + start, bounds.origin.y, end - start - partGap, bounds.size.height};
}

// Written so that a value that is NaN is the minimum.
double NSLevelIndicatorCell::cutToRange(double value) const {
  return value > minValue_ ? std::min(value, std::max(minValue_, maxValue_)) : minValue_;
}

double NSLevelIndicatorCell::filledShare() const {
  const double range = maxValue_ - minValue_, filled = cutToRange(doubleValue()) - minValue_;
  if (!(range > 0)) return 0;
  if (const auto parts = static_cast<double>(numberOfParts()); parts > 0)
    return std::floor(filled / range * parts + 0.5) / parts;
  return filled / range;
}

double NSLevelIndicatorCell::valueAtPoint(CGPoint point, CGRect bounds) const {
  const CGFloat way = point.x - bounds.origin.x;
  const std::size_t parts = numberOfParts();
  if (parts == 0) return cutToRange(minValue_ + way / bounds.size.width * (maxValue_ - minValue_));
  std::size_t reached = 0;
  while (reached < parts && point.x >= rectOfPart(reached, bounds).origin.x) ++reached;
  return cutToRange(minValue_ + static_cast<double>(reached) / static_cast<double>(parts) * (maxValue_ - minValue_));
}

double NSLevelIndicatorCell::valueAfterSteps(int steps) const {
  constexpr double stepsOfABar = 20;
  const std::size_t parts = numberOfParts();
  const double step = (maxValue_ - minValue_) / (parts > 0 ? static_cast<double>(parts) : stepsOfABar);
  return cutToRange(cutToRange(doubleValue()) + steps * step);
}

CGSize NSLevelIndicatorCell::cellSize() const {
  if (style_ == NSLevelIndicatorStyleRating) return {starSize * static_cast<CGFloat>(numberOfParts()), starSize};
  return {barWidth, barHeight};
}

Ref<NSColor> NSLevelIndicatorCell::levelColor() const {
  const double value = doubleValue();
  const auto reaches = [&](double limit) {
    return criticalValue_ > warningValue_ ? value >= limit : criticalValue_ < warningValue_ && value <= limit;
  };
  const CGFloat alpha = isEnabled() ? 1 : 0.4;
  if (reaches(criticalValue_)) return NSColor::colorWithCalibratedRed(0.85, 0.22, 0.18, alpha);
  if (reaches(warningValue_)) return NSColor::colorWithCalibratedRed(0.95, 0.75, 0.1, alpha);
  return NSColor::colorWithCalibratedRed(0.3, 0.68, 0.28, alpha);
}

void NSLevelIndicatorCell::drawRating(CGRect frame) const {
  const std::size_t parts = numberOfParts();
  const auto stars = static_cast<std::size_t>(filledShare() * static_cast<double>(parts) + 0.5);
  const Ref<NSColor> color = plainTextColor();
  color->setFill();
  for (std::size_t i = 0; i < stars; ++i) starIn(rectOfPart(i, frame))->fill();
  if (!isHighlighted() && !isEditable_) return;
  color->colorWithAlphaComponent(color->alphaComponent() * 0.5)->setFill();
  for (std::size_t i = stars; i < parts; ++i) dotIn(rectOfPart(i, frame))->fill();
}

void NSLevelIndicatorCell::drawInteriorWithFrame(CGRect frame, NSView&) {
  const Ref<NSColor> text = plainTextColor();
  const auto faint = text->colorWithAlphaComponent(text->alphaComponent() * 0.15);
  const double share = filledShare();
  const auto fill = [](CGRect rect, const Ref<NSColor>& color) {
    color->setFill();
    NSRectFillUsingOperation(rect, NSCompositingOperationSourceOver);
  };
  switch (style_) {
    case NSLevelIndicatorStyleRating: return drawRating(frame);
    case NSLevelIndicatorStyleContinuousCapacity: {
      const CGFloat width = frame.size.width * share;
      fill(frame, faint);
      if (width > 0) fill({frame.origin.x, frame.origin.y, width, frame.size.height}, levelColor());
      return;
    }
    case NSLevelIndicatorStyleDiscreteCapacity: {
      const std::size_t parts = numberOfParts();
      for (std::size_t i = 0; i < parts; ++i) {
        const bool isFilled = static_cast<double>(i) + 0.5 < share * static_cast<double>(parts);
        fill(rectOfPart(i, frame), isFilled ? levelColor() : faint);
      }
      return;
    }
    case NSLevelIndicatorStyleRelevancy: {
      const auto lineColor = text->colorWithAlphaComponent(text->alphaComponent() * 0.6);
      for (CGFloat x = 0; x + 1 <= frame.size.width * share; x += 2)
        fill({frame.origin.x + x, frame.origin.y, 1, frame.size.height}, lineColor);
      return;
    }
  }
}

void NSLevelIndicatorCell::take(double value) {
  if (auto* control = dynamic_cast<NSControl*>(controlView())) control->setDoubleValue(value);
  else setDoubleValue(value);
}

// By another way than the mouse, which has the control send the action.
void NSLevelIndicatorCell::userChose(double value) {
  if (!isEditable_ || !isEnabled()) return;
  const Ref<NSObject> held = shared_from_this();
  take(cutToRange(value));
  if (auto* control = dynamic_cast<NSControl*>(controlView())) control->sendActionTo(control->action(), control->target());
}

bool NSLevelIndicatorCell::startTrackingAt(CGPoint start, NSView& view) {
  if (!isEditable_) return false;
  take(valueAtPoint(start, view.bounds()));
  return true;
}

bool NSLevelIndicatorCell::continueTracking(CGPoint, CGPoint current, NSView& view) {
  take(valueAtPoint(current, view.bounds()));
  return true;
}

AccessibilityValue NSLevelIndicatorCell::accessibilityAttributeValue(std::string_view attribute) const {
  if (attribute == NSAccessibilityMinValueAttribute) return minValue_;
  if (attribute == NSAccessibilityMaxValueAttribute) return maxValue_;
  return NSCell::accessibilityAttributeValue(attribute);
}

bool NSLevelIndicatorCell::accessibilityIsAttributeSettable(std::string_view attribute) const {
  if (attribute == NSAccessibilityValueAttribute) return isEditable_ && isEnabled();
  return NSCell::accessibilityIsAttributeSettable(attribute);
}

void NSLevelIndicatorCell::accessibilitySetValue(const AccessibilityValue& value, std::string_view forAttribute) {
  if (forAttribute != NSAccessibilityValueAttribute) return NSCell::accessibilitySetValue(value, forAttribute);
  if (const double* number = value.as<double>()) userChose(*number);
}

std::vector<std::string> NSLevelIndicatorCell::accessibilityActionNames() const {
  if (!isEditable_) return {};
  return {std::string(NSAccessibilityIncrementAction), std::string(NSAccessibilityDecrementAction)};
}

void NSLevelIndicatorCell::accessibilityPerformAction(std::string_view action) {
  if (action == NSAccessibilityIncrementAction) userChose(valueAfterSteps(1));
  if (action == NSAccessibilityDecrementAction) userChose(valueAfterSteps(-1));
}

}  // namespace tessaluna::platform
