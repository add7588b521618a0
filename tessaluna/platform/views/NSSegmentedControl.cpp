#include "tessaluna/platform/views/NSSegmentedControl.h"

#include "tessaluna/platform/cells/selectedSegmentProperty.h"
#include "tessaluna/platform/events/NSEvent.h"
#include "tessaluna/platform/foundation/AtEndOfScope.h"
#include "tessaluna/platform/foundation/memberTables.h"
#include "tessaluna/platform/graphics/NSImage.h"
#include "tessaluna/platform/menus/NSMenu.h"
#include "tessaluna/platform/text/unicode.h"
#include "tessaluna/platform/windows/NSWindow.h"

namespace tessaluna::platform {

namespace {

constexpr Property segmentedControlProperties[] = {
    property<&NSSegmentedControl::setTrackingMode, "trackingMode">(), selectedSegmentProperty<NSSegmentedControl>(),
    property<&NSSegmentedControl::setPutsOverflowIntoMenu, "putsOverflowIntoMenu">()};

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

void NSSegmentedControl::setPutsOverflowIntoMenu(bool puts) {
  changeCell([&](NSSegmentedCell& cell) { cell.setPutsOverflowIntoMenu(puts); });
}

bool NSSegmentedControl::openOverflowMenu() {
  NSSegmentedCell* cell = segmentedCell();
  const auto part = cell && isEnabled() ? cell->overflowRectForBounds(bounds()) : std::nullopt;
  if (!part) return false;
  const auto menu = make<NSMenu>();
  menu->setAutoenablesItems(false);
  for (std::size_t i = cell->shownSegmentCount(bounds()); i < cell->segmentCount(); ++i) {
    const auto item = menu->addItemWithTitle(cell->labelForSegment(i).value_or(""), "");
    item->setImage(cell->imageForSegment(i));
    item->setEnabled(cell->isEnabledForSegment(i));
    item->setState(cell->isSelectedForSegment(i) ? NSControlStateValueOn : NSControlStateValueOff);
    item->setTag(static_cast<std::int64_t>(i));
  }
  const WeakRef<NSSegmentedControl> self = refTo(*this);
  overflowMenu_ = menu;
  const bool isOpen = menu->popUpMenuPositioningItemOverRect(nullptr, *part, *this, [self](const Ref<NSMenuItem>& chosen) {
    const auto control = self.lock();
    if (!control) return;
    control->overflowMenu_ = nullptr;
    // It may have been hidden or taken away meanwhile.
    if (chosen && control->window() && !control->isHiddenOrHasHiddenAncestor())
      control->performClickOnSegment(static_cast<std::size_t>(chosen->tag()));
  });
  if (!isOpen) overflowMenu_ = nullptr;
  return isOpen;
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
  setKeySegment(segment, keySegment());
  segmentedCell()->clickSegment(segment);
  setNeedsDisplay(true);
  const AtEndOfScope endOfClick([this] { endMomentarySelection(); });
  sendActionTo(action(), target());
  return true;
}

void NSSegmentedControl::endMomentarySelection() {
  NSSegmentedCell* cell = segmentedCell();
  if (!cell || cell->trackingMode() != NSSegmentSwitchTrackingMomentary || !cell->selectedSegment()) return;
  cell->setSelectedSegment(std::nullopt);
  setNeedsDisplay(true);
}

// A click has selected the segment by now, and the segment that had the keys before it is to be given.
void NSSegmentedControl::setKeySegment(std::optional<std::size_t> segment, std::optional<std::size_t> earlier) {
  keySegment_ = segment;
  noteFocusRingMaskChanged();
  if (segment != earlier && cell() && window() && window()->firstResponder() == this)
    NSAccessibilityPostNotification(cell(), NSAccessibilityFocusedUIElementChangedNotification);
}

CGRect NSSegmentedControl::focusRingMaskBounds() const {
  const NSSegmentedCell* cell = segmentedCell();
  const auto key = keySegment();
  if (!cell || !key || cell->trackingMode() == NSSegmentSwitchTrackingSelectOne) return bounds();
  const auto overflow = cell->overflowRectForBounds(bounds());
  return overflow && *key >= cell->shownSegmentCount(bounds()) ? *overflow : cell->segmentRectsForBounds(bounds())[*key];
}

void NSSegmentedControl::mouseDown(const Ref<NSEvent>& event) {
  const NSSegmentedCell* cell = segmentedCell();
  const auto overflow = cell ? cell->overflowRectForBounds(bounds()) : std::nullopt;
  if (overflow && NSPointInRect(convertPointFromView(event->locationInWindow(), nullptr), *overflow)) openOverflowMenu();
  else NSControl::mouseDown(event);
}

void NSSegmentedControl::moveTo(std::optional<std::size_t> segment) {
  if (!segment || !segmentedCell()) return;
  const bool selects = segmentedCell()->trackingMode() == NSSegmentSwitchTrackingSelectOne;
  if (selects && selectedSegment() != segment) {
    performClickOnSegment(*segment);
    return;
  }
  setKeySegment(segment, keySegment());
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
  keySegmentAtRelease_ = keySegment();
  const AtEndOfScope endOfRelease([this] {
    isReleasing_ = false;
    endMomentarySelection();
  });
  NSControl::mouseUp(event);
}

bool NSSegmentedControl::sendActionTo(std::string_view action, const Ref<NSObject>& target) {
  if (isReleasing_) {
    // A release beside the pressed segment clicked nothing.
    if (!segmentedCell() || !segmentedCell()->clickedSegment()) return false;
    setKeySegment(segmentedCell()->clickedSegment(), keySegmentAtRelease_);
  }
  return NSControl::sendActionTo(action, target);
}

}  // namespace tessaluna::platform
