#include "tessaluna/uikit/links/LinkKeyboard.h"

#include <algorithm>

#include "tessaluna/platform/events/NSEvent.h"
#include "tessaluna/platform/events/keyBindings.h"
#include "tessaluna/platform/windows/NSWindow.h"

namespace TessalunaUIKit {

using namespace tessaluna::platform;

const ClassInfo LinkKeyboard::staticClassInfo{.name = "TessalunaUIKit.LinkKeyboard", .base = &NSView::staticClassInfo};

// There may be fewer stops than when the last one was reached.
std::optional<std::size_t> LinkKeyboard::currentStop() const {
  const std::size_t count = hasKeys_ ? line_.keyboardStops().size() : 0;
  return count > 0 ? std::optional(std::min(stop_, count - 1)) : std::nullopt;
}

void LinkKeyboard::stopsDidChange() {
  if (!hasKeys_) return;
  if (!currentStop()) window()->makeFirstResponder(nullptr);
  else noteFocusRingMaskChanged();
}

bool LinkKeyboard::becomeFirstResponder() {
  hasKeys_ = true;
  stop_ = 0;
  // The window speaks for elements only, which this view is not.
  line_.keyboardStopDidChange();
  return true;
}

bool LinkKeyboard::resignFirstResponder() {
  hasKeys_ = false;
  return true;
}

void LinkKeyboard::moveTo(std::size_t stop) {
  if (stop_ == stop) return;
  stop_ = stop;
  noteFocusRingMaskChanged();
  line_.keyboardStopDidChange();
}

void LinkKeyboard::keyDown(const Ref<NSEvent>& event) {
  const std::optional<std::size_t> now = currentStop();
  const std::string_view command = commandForKey(*event);
  if (!now) return NSView::keyDown(event);
  const std::size_t last = line_.keyboardStops().size() - 1;
  if (command == "moveLeft:") return moveTo(*now > 0 ? *now - 1 : 0);
  if (command == "moveRight:") return moveTo(std::min(*now + 1, last));
  if (command == "moveToBeginningOfLine:") return moveTo(0);
  if (command == "moveToEndOfLine:") return moveTo(last);
  if (command != "insertNewline:") return NSView::keyDown(event);
  // A key that is held presses once.
  if (!event->isARepeat()) line_.pressKeyboardStop(*now);
}

CGRect LinkKeyboard::focusRingMaskBounds() const {
  const std::optional<std::size_t> stop = currentStop();
  return stop ? convertRectFromView(line_.keyboardStops()[*stop], superview()) : CGRect{};
}

}  // namespace TessalunaUIKit
