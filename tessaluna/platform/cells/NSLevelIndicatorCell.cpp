#include "tessaluna/platform/cells/NSLevelIndicatorCell.h"

#include <algorithm>
#include <cmath>

#include "tessaluna/platform/foundation/NSCoder.h"
#include "tessaluna/platform/foundation/memberTables.h"
#include "tessaluna/platform/graphics/NSBezierPath.h"
#include "tessaluna/platform/graphics/NSColor.h"
#include "tessaluna/platform/graphics/NSRect.h"
#include "tessaluna/platform/views/NSView.h"

namespace tessaluna::platform {

namespace {

constexpr Property levelIndicatorCellProperties[] = {
    property<&NSLevelIndicatorCell::setLevelIndicatorStyle, "levelIndicatorStyle">(),
    property<&NSLevelIndicatorCell::setWarningValue, "warningValue">(),
    property<&NSLevelIndicatorCell::setCriticalValue, "criticalValue">(),
    property<&NSLevelIndicatorCell::setEditable, "editable">(),
    property<&NSLevelIndicatorCell::setNumberOfMajorTickMarks, "numberOfMajorTickMarks">()};

constexpr CGFloat starSize = 14, barHeight = 12, barWidth = 90, partGap = 1;
constexpr CGFloat tickMarkGap = 1, tickMarkLength = 3, majorTickMarkLength = 5, tickMarkWidth = 1;
constexpr CGFloat tickMarkRoom = tickMarkGap + majorTickMarkLength;
constexpr double maxOfParts = 5, maxOfBar = 100;

bool isInParts(NSLevelIndicatorStyle style) { return style >= NSLevelIndicatorStyleDiscreteCapacity; }
double maxOf(NSLevelIndicatorStyle style) { return isInParts(style) ? maxOfParts : maxOfBar; }

NSLevelIndicatorStyle styleIn(const NSCoder& coder) {
  return coder.decodeEnumForKey<NSLevelIndicatorStyle>("levelIndicatorStyle").value_or(NSLevelIndicatorStyleRating);
}

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
    .name = "NSLevelIndicatorCell", .base = &RangeCell::staticClassInfo, .properties = levelIndicatorCellProperties};

NSLevelIndicatorCell::NSLevelIndicatorCell(NSLevelIndicatorStyle style) : RangeCell(maxOf(style)), style_(style) {}

NSLevelIndicatorCell::NSLevelIndicatorCell(NSCoder& coder)
    : RangeCell(maxOf(styleIn(coder)), coder), style_(styleIn(coder)) {
  if (const auto value = coder.numberForKey("doubleValue")) setDoubleValue(*value);
  warningValue_ = coder.decodeDoubleForKey("warningValue");
  criticalValue_ = coder.decodeDoubleForKey("criticalValue");
  isEditable_ = coder.decodeBoolForKey("editable");
  majorTickMarks_ = static_cast<std::size_t>(std::max<std::int64_t>(coder.decodeIntegerForKey("numberOfMajorTickMarks"), 0));
}

std::size_t NSLevelIndicatorCell::numberOfParts() const {
  constexpr double most = 200;
  const double steps = std::floor(maxValue() - minValue() + 0.5);
  return isInParts(style_) && steps > 0 ? static_cast<std::size_t>(std::min(steps, most)) : 0;
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
  return value > minValue() ? std::min(value, std::max(minValue(), maxValue())) : minValue();
}

double NSLevelIndicatorCell::filledShare() const {
  const double range = maxValue() - minValue(), filled = cutToRange(doubleValue()) - minValue();
  if (!(range > 0) || !std::isfinite(range)) return 0;
  if (const auto parts = static_cast<double>(numberOfParts()); parts > 0)
    return std::floor(filled / range * parts + 0.5) / parts;
  return filled / range;
}

double NSLevelIndicatorCell::valueAtPoint(CGPoint point, CGRect bounds) const {
  const CGFloat way = point.x - bounds.origin.x;
  const std::size_t parts = numberOfParts();
  if (parts == 0) return cutToRange(minValue() + way / bounds.size.width * (maxValue() - minValue()));
  std::size_t reached = 0;
  while (reached < parts && point.x >= rectOfPart(reached, bounds).origin.x) ++reached;
  return cutToRange(minValue() + static_cast<double>(reached) / static_cast<double>(parts) * (maxValue() - minValue()));
}

double NSLevelIndicatorCell::valueAfterSteps(double steps) const {
  constexpr double stepsOfABar = 20;
  const std::size_t parts = numberOfParts();
  const double step = (maxValue() - minValue()) / (parts > 0 ? static_cast<double>(parts) : stepsOfABar);
  return cutToRange(cutToRange(doubleValue()) + steps * step);
}

bool NSLevelIndicatorCell::isMajorTickMark(std::size_t index) const {
  if (majorTickMarks_ < 2 || numberOfTickMarks() < 2) return index < majorTickMarks_;
  const auto majors = static_cast<double>(majorTickMarks_ - 1), marks = static_cast<double>(numberOfTickMarks() - 1);
  // The mark nearest to a major one's place.
  const double nearest = std::round(static_cast<double>(index) * majors / marks);
  return std::round(nearest * marks / majors) == static_cast<double>(index);
}

CGRect NSLevelIndicatorCell::withoutTickMarks(CGRect bounds, bool flipped) const {
  if (!hasTickMarks()) return bounds;
  const bool isBelow = tickMarkPosition() == NSTickMarkPositionBelow;
  bounds.size.height = std::max(0.0, bounds.size.height - tickMarkRoom);
  if (isBelow != flipped) bounds.origin.y += tickMarkRoom;
  return bounds;
}

CGRect NSLevelIndicatorCell::rectOfTickMarkAtIndex(std::size_t index) const {
  const double range = maxValue() - minValue(), value = tickMarkValueAtIndex(index) - minValue();
  const CGRect bar = withoutTickMarks(trackRect(), isInFlippedView());
  const CGFloat x = bar.origin.x + std::floor((bar.size.width - tickMarkWidth) * (range > 0 ? value / range : 0));
  const CGFloat length = isMajorTickMark(index) ? majorTickMarkLength : tickMarkLength;
  const bool isAfter = (tickMarkPosition() == NSTickMarkPositionBelow) == isInFlippedView();
  const CGFloat y = isAfter ? CGRectGetMaxY(bar) + tickMarkGap : bar.origin.y - tickMarkGap - length;
  return {x, y, tickMarkWidth, length};
}

CGSize NSLevelIndicatorCell::cellSize() const {
  if (style_ == NSLevelIndicatorStyleRating) return {starSize * static_cast<CGFloat>(numberOfParts()), starSize};
  return {barWidth, barHeight + (hasTickMarks() ? tickMarkRoom : 0)};
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

void NSLevelIndicatorCell::drawInteriorWithFrame(CGRect bounds, NSView& view) {
  if (hasTickMarks()) drawTickMarks();
  const CGRect frame = withoutTickMarks(bounds, view.isFlipped());
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
      constexpr CGFloat pitch = 2, maxLines = 10000;  // more than any screen has room for
      const CGFloat end = std::min(frame.size.width * share, maxLines * pitch);
      for (CGFloat x = 0; x + 1 <= end; x += pitch)
        fill({frame.origin.x + x, frame.origin.y, 1, frame.size.height}, lineColor);
      return;
    }
  }
}

bool NSLevelIndicatorCell::startTrackingAt(CGPoint start, NSView& view) {
  if (!isEditable_) return false;
  changeValue(valueAtPoint(start, view.bounds()));
  return true;
}

bool NSLevelIndicatorCell::continueTracking(CGPoint, CGPoint current, NSView& view) {
  changeValue(valueAtPoint(current, view.bounds()));
  return true;
}

}  // namespace tessaluna::platform
