#include "tessaluna/platform/views/NSLevelIndicator.h"

#include "tessaluna/platform/events/NSEvent.h"
#include "tessaluna/platform/foundation/memberTables.h"
#include "tessaluna/platform/text/unicode.h"

namespace tessaluna::platform {

namespace {

constexpr Property levelIndicatorProperties[] = {
    property<&NSLevelIndicator::setLevelIndicatorStyle, "levelIndicatorStyle">(),
    property<&NSLevelIndicator::setMinValue, "minValue">(),
    property<&NSLevelIndicator::setMaxValue, "maxValue">(),
    property<&NSLevelIndicator::setWarningValue, "warningValue">(),
    property<&NSLevelIndicator::setCriticalValue, "criticalValue">(),
    property<&NSLevelIndicator::setEditable, "editable">(),
    property<&NSLevelIndicator::setNumberOfTickMarks, "numberOfTickMarks">(),
    property<&NSLevelIndicator::setNumberOfMajorTickMarks, "numberOfMajorTickMarks">(),
    property<&NSLevelIndicator::setTickMarkPosition, "tickMarkPosition">()};

}  // namespace

const ClassInfo NSLevelIndicator::staticClassInfo{
    .name = "NSLevelIndicator", .base = &NSControl::staticClassInfo, .properties = levelIndicatorProperties};

template <class Cell, class Argument>
void NSLevelIndicator::change(void (Cell::*setter)(Argument), Argument value) {
  if (!levelCell()) return;
  (levelCell()->*setter)(value);
  cellDidChange();
}

void NSLevelIndicator::setLevelIndicatorStyle(NSLevelIndicatorStyle style) {
  change(&NSLevelIndicatorCell::setLevelIndicatorStyle, style);
}
void NSLevelIndicator::setMinValue(double value) { change(&NSLevelIndicatorCell::setMinValue, value); }
void NSLevelIndicator::setMaxValue(double value) { change(&NSLevelIndicatorCell::setMaxValue, value); }
void NSLevelIndicator::setWarningValue(double value) { change(&NSLevelIndicatorCell::setWarningValue, value); }
void NSLevelIndicator::setCriticalValue(double value) { change(&NSLevelIndicatorCell::setCriticalValue, value); }
void NSLevelIndicator::setNumberOfTickMarks(std::size_t count) {
  change(&NSLevelIndicatorCell::setNumberOfTickMarks, count);
}
void NSLevelIndicator::setNumberOfMajorTickMarks(std::size_t count) {
  change(&NSLevelIndicatorCell::setNumberOfMajorTickMarks, count);
}
void NSLevelIndicator::setTickMarkPosition(NSTickMarkPosition position) {
  change(&NSLevelIndicatorCell::setTickMarkPosition, position);
}
void NSLevelIndicator::setEditable(bool isEditable) { change(&NSLevelIndicatorCell::setEditable, isEditable); }

void NSLevelIndicator::mouseDown(const Ref<NSEvent>& event) {
  if (isEditable()) NSControl::mouseDown(event);
  else NSView::mouseDown(event);
}

void NSLevelIndicator::keyDown(const Ref<NSEvent>& event) {
  if (!acceptsFirstResponder() || isPressed()) return NSControl::keyDown(event);
  const NSLevelIndicatorCell& cell = *levelCell();
  double value = 0;
  switch (firstScalar(event->characters())) {
    case NSLeftArrowFunctionKey:
    case NSDownArrowFunctionKey: value = cell.valueAfterSteps(-1); break;
    case NSRightArrowFunctionKey:
    case NSUpArrowFunctionKey: value = cell.valueAfterSteps(1); break;
    case NSHomeFunctionKey: value = cell.minValue(); break;
    case NSEndFunctionKey: value = cell.maxValue(); break;
    default: return NSControl::keyDown(event);
  }
  if (value == doubleValue()) return;
  const Ref<NSObject> held = shared_from_this();
  setDoubleValue(value);
  sendActionTo(action(), target());
}

}  // namespace tessaluna::platform
