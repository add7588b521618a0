#include "tessaluna/platform/cells/RangeCell.h"

#include <algorithm>

#include "tessaluna/platform/foundation/NSCoder.h"
#include "tessaluna/platform/foundation/memberTables.h"
#include "tessaluna/platform/foundation/stopProgram.h"
#include "tessaluna/platform/graphics/NSColor.h"
#include "tessaluna/platform/graphics/NSRect.h"
#include "tessaluna/platform/views/NSControl.h"

namespace tessaluna::platform {

namespace {

constexpr Property rangeCellProperties[] = {property<&RangeCell::setMinValue, "minValue">(),
                                            property<&RangeCell::setMaxValue, "maxValue">(),
                                            property<&RangeCell::setNumberOfTickMarks, "numberOfTickMarks">(),
                                            property<&RangeCell::setTickMarkPosition, "tickMarkPosition">()};

}  // namespace

const ClassInfo RangeCell::staticClassInfo{
    .name = "RangeCell", .base = &NSCell::staticClassInfo, .properties = rangeCellProperties};

RangeCell::RangeCell(double maxValue, NSCoder& coder)
    : NSCell(coder),
      minValue_(coder.decodeDoubleForKey("minValue")),
      maxValue_(coder.numberForKey("maxValue").value_or(maxValue)),
      tickMarks_(static_cast<std::size_t>(std::max<std::int64_t>(coder.decodeIntegerForKey("numberOfTickMarks"), 0))),
      tickMarkPosition_(coder.decodeEnumForKey<NSTickMarkPosition>("tickMarkPosition").value_or(NSTickMarkPositionBelow)) {}

double RangeCell::tickMarkValueAtIndex(std::size_t index) const {
  if (index >= tickMarks_) stopProgram(className() + ": there is no tick mark " + std::to_string(index));
  if (index == 0) return minValue_;
  if (index == tickMarks_ - 1) return maxValue_;
  return minValue_ + (maxValue_ - minValue_) * static_cast<double>(index) / static_cast<double>(tickMarks_ - 1);
}

void RangeCell::drawTickMarks() {
  if (tickMarks_ == 0) return;
  // Marks that touch each other would be no marks.
  const CGSize size = trackRect().size;
  if (static_cast<double>(tickMarks_) > std::max(size.width, size.height) * 0.5) return;
  NSColor::controlTextColor()->colorWithAlphaComponent(isEnabled() ? 0.5 : 0.2)->setFill();
  for (std::size_t index = 0; index < tickMarks_; ++index)
    NSRectFillUsingOperation(rectOfTickMarkAtIndex(index), NSCompositingOperationSourceOver);
}

bool RangeCell::isInFlippedView() const { return controlView() && controlView()->isFlipped(); }

CGRect RangeCell::trackRect() const {
  const auto* control = dynamic_cast<const NSControl*>(controlView());
  return control && control->cell().get() == this ? control->bounds() : drawnFrame_;
}

void RangeCell::drawWithFrame(CGRect frame, NSView& view) {
  drawnFrame_ = frame;
  NSCell::drawWithFrame(frame, view);
}

void RangeCell::changeValue(double value) {
  auto* control = dynamic_cast<NSControl*>(controlView());
  if (control && control->cell().get() == this) control->setDoubleValue(value);
  else setDoubleValue(value);
}

void RangeCell::sendAction() {
  if (auto* control = dynamic_cast<NSControl*>(controlView())) control->sendActionTo(control->action(), control->target());
}

void RangeCell::userChoseValue(double value) {
  const double allowed = allowedValue(value);
  if (allowed == doubleValue()) return;
  const Ref<NSObject> held = shared_from_this();
  changeValue(allowed);
  sendAction();
}

AccessibilityValue RangeCell::accessibilityAttributeValue(std::string_view attribute) const {
  if (attribute == NSAccessibilityMinValueAttribute) return minValue_;
  if (attribute == NSAccessibilityMaxValueAttribute) return maxValue_;
  return NSCell::accessibilityAttributeValue(attribute);
}

bool RangeCell::accessibilityIsAttributeSettable(std::string_view attribute) const {
  if (attribute == NSAccessibilityValueAttribute) return isUserChangeable() && isEnabled();
  return NSCell::accessibilityIsAttributeSettable(attribute);
}

void RangeCell::accessibilitySetValue(const AccessibilityValue& value, std::string_view forAttribute) {
  if (forAttribute != NSAccessibilityValueAttribute) return NSCell::accessibilitySetValue(value, forAttribute);
  const double* number = value.as<double>();
  if (number && accessibilityIsAttributeSettable(forAttribute)) userChoseValue(*number);
}

std::vector<std::string> RangeCell::accessibilityActionNames() const {
  if (!isUserChangeable()) return {};
  return {std::string(NSAccessibilityIncrementAction), std::string(NSAccessibilityDecrementAction)};
}

void RangeCell::accessibilityPerformAction(std::string_view action) {
  if (!isUserChangeable() || !isEnabled()) return;
  if (action == NSAccessibilityIncrementAction) userChoseValue(valueAfterSteps(1));
  if (action == NSAccessibilityDecrementAction) userChoseValue(valueAfterSteps(-1));
}

}  // namespace tessaluna::platform
