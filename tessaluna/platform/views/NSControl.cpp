#include "tessaluna/platform/views/NSControl.h"

#include "tessaluna/platform/events/NSEvent.h"
#include "tessaluna/platform/foundation/memberTables.h"
#include "tessaluna/platform/interface_files/classRegistry.h"
#include "tessaluna/platform/windows/NSApplication.h"
#include "tessaluna/platform/windows/NSWindow.h"

namespace tessaluna::platform {

const Outlet NSControl::outlets_[] = {outlet<&NSControl::setTarget>("target")};
const ClassInfo NSControl::staticClassInfo{
    .name = "NSControl", .base = &NSView::staticClassInfo, .outlets = NSControl::outlets_};

NSControl::NSControl(NSCoder& coder) : NSView(coder) {
  cellCoder_ = coder.decodeCoderForKey("cell");
  if (const auto className = cellCoder_ ? cellCoder_->decodeStringForKey("class") : std::nullopt) {
    const Ref<NSObject> object = makeObjectOfClass(*className, *cellCoder_);
    cell_ = std::dynamic_pointer_cast<NSCell>(object);
    if (!object) coder.fail("its cell: " + cellCoder_->failure().value_or("could not be made"));
    else if (!cell_) coder.fail("its cell: " + object->className() + " is no cell");
  }
  action_ = coder.decodeStringForKey("action").value_or("");
}

NSControl::~NSControl() {
  if (cell_) cell_->setControlView(nullptr);
}

void NSControl::didInit() {
  NSView::didInit();
  if (cell_) cell_->setControlView(this);
  else setCell(cellCoder_ ? makeCell(*cellCoder_) : makeCell());
  cellCoder_.reset();
}

void NSControl::setCell(Ref<NSCell> cell) {
  if (cell_) cell_->setControlView(nullptr);
  cell_ = std::move(cell);
  if (cell_) cell_->setControlView(this);
  setNeedsDisplay(true);
}

void NSControl::setEnabled(bool isEnabled) {
  if (!cell_) return;
  cell_->setEnabled(isEnabled);
  setNeedsDisplay(true);
  NSAccessibilityPostNotification(cell_, NSAccessibilityEnabledChangedNotification);
}

void NSControl::setHighlighted(bool isHighlighted) {
  if (!cell_ || cell_->isHighlighted() == isHighlighted) return;
  cell_->setHighlighted(isHighlighted);
  setNeedsDisplay(true);
}

void NSControl::setTag(std::int64_t tag) {
  if (cell_) cell_->setTag(tag);
}

template <class Change>
void NSControl::changeCell(Change change) {
  if (!cell_) return;
  change(*cell_);
  invalidateIntrinsicContentSize();
  setNeedsDisplay(true);
}

void NSControl::setStringValue(std::string_view text) {
  changeCell([&](NSCell& cell) { cell.setStringValue(text); });
  NSAccessibilityPostNotification(cell_, NSAccessibilityValueChangedNotification);
}

Ref<NSAttributedString> NSControl::attributedStringValue() const {
  return cell_ ? cell_->attributedStringValue() : make<NSAttributedString>();
}

void NSControl::setAttributedStringValue(Ref<NSAttributedString> text) {
  changeCell([&](NSCell& cell) { cell.setAttributedStringValue(std::move(text)); });
  NSAccessibilityPostNotification(cell_, NSAccessibilityValueChangedNotification);
}

void NSControl::setFont(Ref<NSFont> font) {
  changeCell([&](NSCell& cell) { cell.setFont(std::move(font)); });
}

void NSControl::setAlignment(NSTextAlignment alignment) {
  changeCell([&](NSCell& cell) { cell.setAlignment(alignment); });
}

void NSControl::setLineBreakMode(NSLineBreakMode mode) {
  changeCell([&](NSCell& cell) { cell.setLineBreakMode(mode); });
}

CGSize NSControl::intrinsicContentSize() const { return cell_ ? cell_->cellSize() : NSView::intrinsicContentSize(); }

bool NSControl::sendActionTo(std::string_view action, const Ref<NSObject>& target) {
  if (NSApp) return NSApp->sendAction(action, target.get(), this);
  return target && target->performSelector(action, this);
}

void NSControl::drawRect(CGRect) {
  if (cell_) cell_->drawWithFrame(bounds(), *this);
}

void NSControl::mouseDown(const Ref<NSEvent>& event) {
  if (!isEnabled()) return;
  const CGPoint point = convertPointFromView(event->locationInWindow(), nullptr);
  cell_->setMouseDownFlags(event->modifierFlags() & 0xFFFF0000u);
  lastPoint_ = point;
  setHighlighted(true);
  isTracking_ = cell_->startTrackingAt(point, *this);
  if (!isTracking_) setHighlighted(false);
  setNeedsDisplay(true);
}

void NSControl::mouseDragged(const Ref<NSEvent>& event) {
  if (!isTracking_ || !cell_) return;
  const CGPoint point = convertPointFromView(event->locationInWindow(), nullptr);
  setHighlighted(NSPointInRect(point, bounds()));
  if (!cell_->continueTracking(lastPoint_, point, *this)) endTracking(point, false);
  lastPoint_ = point;
}

void NSControl::mouseUp(const Ref<NSEvent>& event) {
  if (!isTracking_) return;
  const Ref<NSObject> held = shared_from_this();  // an action may let the control go
  const CGPoint point = convertPointFromView(event->locationInWindow(), nullptr);
  const bool isOver = NSPointInRect(point, bounds());
  endTracking(point, isOver);
  if (isOver) wasClicked();
}

void NSControl::endTracking(CGPoint point, bool isMouseUp) {
  isTracking_ = false;
  if (cell_) cell_->stopTracking(lastPoint_, point, *this, isMouseUp);
  setHighlighted(false);
  setNeedsDisplay(true);
}

void NSControl::wasClicked() { sendActionTo(action_, target()); }

std::optional<AccessibilityElements> NSControl::accessibilityOwnChildren() const {
  AccessibilityElements result;
  if (cell_) result.push_back(cell_);
  const AccessibilityElements views = NSView::accessibilityOwnChildren().value_or(AccessibilityElements());
  result.insert(result.end(), views.begin(), views.end());
  return result;
}

void NSControl::viewDidHide() {
  if (isTracking_) endTracking(lastPoint_, false);
  NSView::viewDidHide();
}

void NSControl::windowWillChange() {
  if (isTracking_) endTracking(lastPoint_, false);
  NSView::windowWillChange();
}

}  // namespace tessaluna::platform
