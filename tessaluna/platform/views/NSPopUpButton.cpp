#include "tessaluna/platform/views/NSPopUpButton.h"

#include "tessaluna/platform/events/NSEvent.h"
#include "tessaluna/platform/events/keyEquivalents.h"
#include "tessaluna/platform/foundation/memberTables.h"
#include "tessaluna/platform/text/unicode.h"

namespace tessaluna::platform {

namespace {

constexpr Property popUpButtonProperties[] = {property<&NSPopUpButton::setPullsDown, "pullsDown">()};

}  // namespace

const ClassInfo NSPopUpButton::staticClassInfo{
    .name = "NSPopUpButton", .base = &NSButton::staticClassInfo, .properties = popUpButtonProperties};

NSPopUpButton::NSPopUpButton(CGRect frame, bool pullsDown) : NSButton(frame), startsAsPullDown_(pullsDown) {}

template <class Change>
void NSPopUpButton::changeCell(Change change) {
  NSPopUpButtonCell* cell = popUpCell();
  if (!cell) return;
  const std::string before = cell->titleOfSelectedItem();
  change(*cell);
  cellDidChange();
  if (cell->titleOfSelectedItem() != before)
    NSAccessibilityPostNotification(this->cell(), NSAccessibilityValueChangedNotification);
}

void NSPopUpButton::setPullsDown(bool pullsDown) {
  changeCell([&](NSPopUpButtonCell& cell) { cell.setPullsDown(pullsDown); });
}

void NSPopUpButton::setMenu(Ref<NSMenu> menu) {
  changeCell([&](NSPopUpButtonCell& cell) { cell.setMenu(std::move(menu)); });
}

void NSPopUpButton::addItemWithTitle(const std::string& title) {
  changeCell([&](NSPopUpButtonCell& cell) { cell.addItemWithTitle(title); });
}

void NSPopUpButton::addItemsWithTitles(const std::vector<std::string>& titles) {
  changeCell([&](NSPopUpButtonCell& cell) { cell.addItemsWithTitles(titles); });
}

void NSPopUpButton::insertItemWithTitle(const std::string& title, std::size_t index) {
  changeCell([&](NSPopUpButtonCell& cell) { cell.insertItemWithTitle(title, index); });
}

void NSPopUpButton::removeItemAtIndex(std::size_t index) {
  changeCell([&](NSPopUpButtonCell& cell) { cell.removeItemAtIndex(index); });
}

void NSPopUpButton::removeAllItems() {
  changeCell([](NSPopUpButtonCell& cell) { cell.removeAllItems(); });
}

std::optional<std::size_t> NSPopUpButton::indexOfSelectedItem() const {
  return popUpCell() ? popUpCell()->indexOfSelectedItem() : std::nullopt;
}

void NSPopUpButton::selectItemAtIndex(std::optional<std::size_t> index) {
  changeCell([&](NSPopUpButtonCell& cell) { cell.selectItemAtIndex(index); });
}

void NSPopUpButton::selectItemWithTitle(std::string_view title) {
  changeCell([&](NSPopUpButtonCell& cell) { cell.selectItemWithTitle(title); });
}

bool NSPopUpButton::selectItemWithTag(std::int64_t tag) {
  bool isThere = false;
  changeCell([&](NSPopUpButtonCell& cell) { isThere = cell.selectItemWithTag(tag); });
  return isThere;
}

void NSPopUpButton::performClick(NSObject*) {
  if (popUpCell()) popUpCell()->performClickWithFrame(bounds(), *this);
}

void NSPopUpButton::mouseDown(const Ref<NSEvent>&) { performClick(this); }

void NSPopUpButton::keyDown(const Ref<NSEvent>& event) {
  constexpr std::uint32_t shortcuts =
      NSEventModifierFlagControl | NSEventModifierFlagOption | NSEventModifierFlagCommand | NSEventModifierFlagShift;
  const char32_t key = event->modifierFlags() & shortcuts ? 0 : firstScalar(event->characters());
  if (key != U' ' && key != NSUpArrowFunctionKey && key != NSDownArrowFunctionKey) return NSControl::keyDown(event);
  if (!event->isARepeat()) performClick(this);
}

bool NSPopUpButton::performKeyEquivalent(const Ref<NSEvent>& event) {
  NSPopUpButtonCell* cell = popUpCell();
  if (!cell || !isEnabled() || !isKeyEquivalent(*event, cell->keyEquivalent(), cell->keyEquivalentModifierMask()))
    return (cell && cell->performKeyEquivalent(*event)) || NSControl::performKeyEquivalent(event);
  if (!event->isARepeat()) performClick(this);
  return true;
}

void NSPopUpButton::closeMenu() {
  if (popUpCell()) popUpCell()->dismissPopUp();
}

void NSPopUpButton::setEnabled(bool isEnabled) {
  if (!isEnabled) closeMenu();
  NSButton::setEnabled(isEnabled);
}

void NSPopUpButton::viewDidHide() {
  closeMenu();
  NSButton::viewDidHide();
}

void NSPopUpButton::enablesControlsDidChange() {
  if (!isEnabled()) closeMenu();
  NSButton::enablesControlsDidChange();
}

void NSPopUpButton::windowWillChange() {
  closeMenu();
  NSButton::windowWillChange();
}

}  // namespace tessaluna::platform
