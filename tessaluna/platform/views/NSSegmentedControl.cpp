#include "tessaluna/platform/views/NSSegmentedControl.h"

#include "tessaluna/platform/events/NSEvent.h"
#include "tessaluna/platform/foundation/memberTables.h"
#include "tessaluna/platform/graphics/NSImage.h"
#include "tessaluna/platform/text/unicode.h"

namespace tessaluna::platform {

namespace {

constexpr Property segmentedControlProperties[] = {property<&NSSegmentedControl::setTrackingMode, "trackingMode">()};

}  // namespace

const ClassInfo NSSegmentedControl::staticClassInfo{
    .name = "NSSegmentedControl", .base = &NSControl::staticClassInfo, .properties = segmentedControlProperties};

template <class Change>
void NSSegmentedControl::changeCell(Change change) {
  NSSegmentedCell* cell = segmentedCell();
  if (!cell) return;
  change(*cell);
  cellDidChange();
}

std::size_t NSSegmentedControl::segmentCount() const { return segmentedCell() ? segmentedCell()->segmentCount() : 0; }

void NSSegmentedControl::setSegmentCount(std::size_t count) {
  changeCell([&](NSSegmentedCell& cell) { cell.setSegmentCount(count); });
}

void NSSegmentedControl::setTrackingMode(NSSegmentSwitchTracking mode) {
  changeCell([&](NSSegmentedCell& cell) { cell.setTrackingMode(mode); });
}

std::optional<std::string> NSSegmentedControl::labelForSegment(std::size_t segment) const {
  return segmentedCell() ? segmentedCell()->labelForSegment(segment) : std::nullopt;
}

void NSSegmentedControl::setLabelForSegment(std::optional<std::string> label, std::size_t segment) {
  changeCell([&](NSSegmentedCell& cell) { cell.setLabelForSegment(std::move(label), segment); });
}

void NSSegmentedControl::setImageForSegment(Ref<NSImage> image, std::size_t segment) {
  changeCell([&](NSSegmentedCell& cell) { cell.setImageForSegment(std::move(image), segment); });
}

void NSSegmentedControl::setWidthForSegment(CGFloat width, std::size_t segment) {
  changeCell([&](NSSegmentedCell& cell) { cell.setWidthForSegment(width, segment); });
}

void NSSegmentedControl::setEnabledForSegment(bool isEnabled, std::size_t segment) {
  changeCell([&](NSSegmentedCell& cell) { cell.setEnabledForSegment(isEnabled, segment); });
}

void NSSegmentedControl::setTagForSegment(std::int64_t tag, std::size_t segment) {
  changeCell([&](NSSegmentedCell& cell) { cell.setTagForSegment(tag, segment); });
}

std::optional<std::size_t> NSSegmentedControl::selectedSegment() const {
  return segmentedCell() ? segmentedCell()->selectedSegment() : std::nullopt;
}

void NSSegmentedControl::setSelectedSegment(std::optional<std::size_t> segment) {
  keySegment_.reset();
  changeCell([&](NSSegmentedCell& cell) { cell.setSelectedSegment(segment); });
}

bool NSSegmentedControl::isSelectedForSegment(std::size_t segment) const {
  return segmentedCell() && segmentedCell()->isSelectedForSegment(segment);
}

void NSSegmentedControl::setSelectedForSegment(bool isSelected, std::size_t segment) {
  keySegment_.reset();
  changeCell([&](NSSegmentedCell& cell) { cell.setSelectedForSegment(isSelected, segment); });
}

// From the one given on, itself included.
std::optional<std::size_t> NSSegmentedControl::enabledSegment(std::size_t from, int step) const {
  for (std::size_t i = from; i < segmentCount(); i += static_cast<std::size_t>(step))  // below 0 is beyond the end
    if (segmentedCell()->isEnabledForSegment(i)) return i;
  return std::nullopt;
}

std::optional<std::size_t> NSSegmentedControl::keySegment() const {
  const NSSegmentedCell* cell = segmentedCell();
  for (const auto segment : {keySegment_, cell ? cell->selectedSegment() : std::nullopt})
    if (segment && *segment < segmentCount() && cell->isEnabledForSegment(*segment)) return segment;
  return enabledSegment(0, 1);
}

bool NSSegmentedControl::performClickOnSegment(std::size_t segment) {
  if (!isEnabled() || segment >= segmentCount() || !segmentedCell()->isEnabledForSegment(segment)) return false;
  const Ref<NSObject> held = shared_from_this();
  keySegment_ = segment;
  segmentedCell()->clickSegment(segment);
  setNeedsDisplay(true);
  sendActionTo(action(), target());
  endMomentarySelection();
  return true;
}

void NSSegmentedControl::endMomentarySelection() {
  NSSegmentedCell* cell = segmentedCell();
  if (!cell || cell->trackingMode() != NSSegmentSwitchTrackingMomentary || !cell->selectedSegment()) return;
  cell->setSelectedSegment(std::nullopt);
  setNeedsDisplay(true);
}

void NSSegmentedControl::moveTo(std::optional<std::size_t> segment) {
  if (!segment || !segmentedCell()) return;
  const bool selects = segmentedCell()->trackingMode() == NSSegmentSwitchTrackingSelectOne;
  if (selects && selectedSegment() != segment) {
    performClickOnSegment(*segment);
    return;
  }
  keySegment_ = segment;
  setNeedsDisplay(true);
  NSAccessibilityPostNotification(cell(), NSAccessibilityFocusedUIElementChangedNotification);
}

void NSSegmentedControl::keyDown(const Ref<NSEvent>& event) {
  const auto key = keySegment();
  constexpr std::uint32_t shortcuts =
      NSEventModifierFlagControl | NSEventModifierFlagOption | NSEventModifierFlagCommand | NSEventModifierFlagShift;
  if (!isEnabled() || isPressed() || !key || (event->modifierFlags() & shortcuts)) return NSControl::keyDown(event);
  switch (firstScalar(event->characters())) {
    case NSLeftArrowFunctionKey: return moveTo(enabledSegment(*key - 1, -1));
    case NSRightArrowFunctionKey: return moveTo(enabledSegment(*key + 1, 1));
    case NSHomeFunctionKey: return moveTo(enabledSegment(0, 1));
    case NSEndFunctionKey: return moveTo(enabledSegment(segmentCount() - 1, -1));
    case U' ':
      if (!event->isARepeat()) performClickOnSegment(*key);
      return;
    default: return NSControl::keyDown(event);
  }
}

void NSSegmentedControl::mouseUp(const Ref<NSEvent>& event) {
  const Ref<NSObject> held = shared_from_this();
  isReleasing_ = true;
  NSControl::mouseUp(event);
  isReleasing_ = false;
  endMomentarySelection();
}

bool NSSegmentedControl::sendActionTo(std::string_view action, const Ref<NSObject>& target) {
  if (isReleasing_) {
    // A release beside the pressed segment clicked nothing.
    if (!segmentedCell() || !segmentedCell()->clickedSegment()) return false;
    keySegment_ = segmentedCell()->clickedSegment();
  }
  return NSControl::sendActionTo(action, target);
}

}  // namespace tessaluna::platform
