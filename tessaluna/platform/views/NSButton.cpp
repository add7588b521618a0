#include "tessaluna/platform/views/NSButton.h"

#include "tessaluna/platform/backend/Backend.h"
#include "tessaluna/platform/events/NSEvent.h"
#include "tessaluna/platform/events/keyEquivalents.h"
#include "tessaluna/platform/foundation/memberTables.h"
#include "tessaluna/platform/time/durations.h"

namespace tessaluna::platform {

namespace {

constexpr Selector buttonSelectors[] = {action<&NSButton::performClick>("performClick:")};
constexpr Property buttonProperties[] = {property<&NSButton::setTitle, "title">(),
                                         property<&NSButton::setKeyEquivalent, "keyEquivalent">(),
                                         property<&NSButton::setKeyEquivalentModifierMask, "keyEquivalentModifierMask">(),
                                         property<&NSButton::setButtonType, "buttonType">(),
                                         property<&NSButton::setAllowsMixedState, "allowsMixedState">(),
                                         property<&NSButton::setState, "state">()};

}  // namespace

const ClassInfo NSButton::staticClassInfo{
    .name = "NSButton", .base = &NSControl::staticClassInfo, .selectors = buttonSelectors, .properties = buttonProperties};

NSButtonCell* NSButton::buttonCell() const { return dynamic_cast<NSButtonCell*>(cell().get()); }

void NSButton::setTitle(std::string_view title) {
  if (!cell()) return;
  cell()->setTitle(title);
  cellDidChange();
  NSAccessibilityPostNotification(cell(), NSAccessibilityTitleChangedNotification);
}

void NSButton::setKeyEquivalent(std::string characters) {
  if (buttonCell()) buttonCell()->setKeyEquivalent(std::move(characters));
}

void NSButton::setKeyEquivalentModifierMask(std::uint32_t mask) {
  if (buttonCell()) buttonCell()->setKeyEquivalentModifierMask(mask);
}

void NSButton::setButtonType(NSButtonType type) {
  if (buttonCell()) buttonCell()->setButtonType(type);
}

void NSButton::setAllowsMixedState(bool allows) {
  if (buttonCell()) buttonCell()->setAllowsMixedState(allows);
}

void NSButton::setState(NSControlStateValue state) {
  if (!cell()) return;
  cell()->setState(state);
  setNeedsDisplay(true);
  NSAccessibilityPostNotification(cell(), NSAccessibilityValueChangedNotification);
}

void NSButton::setNextState() {
  if (buttonCell()) setState(buttonCell()->nextState());
}

void NSButton::wasClicked() {
  if (buttonCell() && buttonCell()->buttonType() == NSButtonType::Toggle) setNextState();
}

void NSButton::performClick(NSObject*) {
  if (!isEnabled()) return;
  const Ref<NSButton> held = refTo(*this);
  if (backend::Backend* backend = backend::Backend::current()) {
    setHighlighted(true);
    endOfKeyboardClick_ = backend->timer(keyboardClickDuration, [this, clicked = cell()] {
      if (clicked == cell() && isTracking()) return;
      clicked->setHighlighted(false);
      setNeedsDisplay(true);
    });
  }
  wasClicked();
  sendActionTo(action(), target());
}

// A key that is held clicks once, and while the mouse holds the button the click is the mouse's.
void NSButton::clickByKey(const NSEvent& event) {
  if (!event.isARepeat() && !isPressed()) performClick(this);
}

void NSButton::keyDown(const Ref<NSEvent>& event) {
  if (isKeyEquivalent(*event, " ", 0)) clickByKey(*event);
  else NSControl::keyDown(event);
}

bool NSButton::performKeyEquivalent(const Ref<NSEvent>& event) {
  const NSButtonCell* cell = buttonCell();
  const bool isMine =
      cell && isEnabled() && isKeyEquivalent(*event, cell->keyEquivalent(), cell->keyEquivalentModifierMask());
  if (!isMine) return NSControl::performKeyEquivalent(event);
  clickByKey(*event);
  return true;
}

}  // namespace tessaluna::platform
