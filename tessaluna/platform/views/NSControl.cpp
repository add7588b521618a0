#include "tessaluna/platform/views/NSControl.h"

#include <algorithm>
#include <utility>

#include "tessaluna/platform/events/NSEvent.h"
#include "tessaluna/platform/events/takenPress.h"
#include "tessaluna/platform/foundation/NSCoder.h"
#include "tessaluna/platform/foundation/memberTables.h"
#include "tessaluna/platform/interface_files/archivedLooks.h"
#include "tessaluna/platform/interface_files/classRegistry.h"
#include "tessaluna/platform/text/NSFont.h"
#include "tessaluna/platform/views/NSText.h"
#include "tessaluna/platform/windows/NSApplication.h"
#include "tessaluna/platform/windows/NSWindow.h"

namespace tessaluna::platform {

const Outlet NSControl::outlets_[] = {outlet<&NSControl::setTarget>("target")};

namespace {

constexpr Property controlProperties[] = {
    property<&NSControl::setEnabled, "enabled">(),
    property<&NSControl::setHighlighted, "highlighted">(),
    property<&NSControl::setTag, "tag">(),
    property<&NSControl::setStringValue, "stringValue">(),
    property<&NSControl::setIntegerValue, "integerValue">(),
    property<&NSControl::setDoubleValue, "doubleValue">(),
    property<&NSControl::setFloatValue, "floatValue">(),
    property<&NSControl::setContinuous, "continuous">(),
    property<&NSControl::setFont, "font">(),
    property<&NSControl::setAlignment, "alignment">(),
    property<&NSControl::setLineBreakMode, "lineBreakMode">(),
    property<static_cast<void (ActionSender::*)(std::string)>(&ActionSender::setAction), "action">()};

// The control has read the archive and made the cell.
constexpr InnerObjects controlInnerObjects[] = {
    {.key = "cell", .made = [](NSObject& control) -> Ref<NSObject> { return static_cast<NSControl&>(control).cell(); }}};

}  // namespace

const ClassInfo NSControl::staticClassInfo{.name = "NSControl",
                                           .base = &NSView::staticClassInfo,
                                           .outlets = NSControl::outlets_,
                                           .properties = controlProperties,
                                           .innerObjects = controlInnerObjects};

NSControl::NSControl(NSCoder& coder) : NSView(coder) {
  cellCoder_ = coder.decodeCoderForKey("cell");
  if (const auto className = cellCoder_ ? cellCoder_->decodeStringForKey("class") : std::nullopt) {
    const Ref<NSObject> object = makeObjectOfClass(*className, *cellCoder_);
    cell_ = std::dynamic_pointer_cast<NSCell>(object);
    if (!object) coder.fail("its cell: " + cellCoder_->failure().value_or("could not be made"));
    else if (!cell_) coder.fail("its cell: " + object->className() + " is not a cell");
  }
  setAction(coder.decodeStringForKey("action").value_or(""));
}

namespace {

// Unless another control has taken the cell meanwhile.
void forget(const NSControl& control, const Ref<NSCell>& cell) {
  if (cell && cell->controlView() == &control) cell->setControlView(nullptr);
}

}  // namespace

NSControl::~NSControl() { forget(*this, cell_); }

void NSControl::didInit() {
  NSView::didInit();
  if (cell_) cell_->setControlView(this);
  else setCell(cellCoder_ ? makeCell(*cellCoder_) : makeCell());
  cellCoder_.reset();
}

void NSControl::setCell(Ref<NSCell> cell) {
  const bool wasTracked = isTracking();
  endPress();
  forget(*this, cell_);
  cell_ = std::move(cell);
  if (cell_) cell_->setControlView(this);
  // A copy of the pressed cell looks pressed, and no release would end it.
  if (cell_ && wasTracked && cell_->isHighlightedByPress()) cell_->setHighlighted(false);
  cellDidChange();
}

void NSControl::setEnabled(bool isEnabled) {
  if (!cell_) return;
  if (!isEnabled) endPress();
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

void NSControl::cellDidChange() {
  invalidateIntrinsicContentSize();
  setNeedsDisplay(true);
}

void NSControl::setObjectValue(Ref<NSObject> value) {
  if (!cell_) return;
  cell_->setObjectValue(std::move(value));
  cellDidChange();
  NSAccessibilityPostNotification(cell_, NSAccessibilityValueChangedNotification);
}

Ref<NSAttributedString> NSControl::attributedStringValue() const {
  return cell_ ? cell_->attributedStringValue() : make<NSAttributedString>();
}

void NSControl::setFont(Ref<NSFont> font) {
  if (!cell_) return;
  cell_->setFont(std::move(font));
  // What is being edited shows in it, too.
  const Ref<NSText> editor = window() ? window()->fieldEditor(false, nullptr) : nullptr;
  if (editor && dynamic_cast<NSObject*>(editor->delegate().get()) == this) editor->setFont(cell_->font());
  cellDidChange();
}

void NSControl::setAlignment(NSTextAlignment alignment) {
  if (!cell_) return;
  cell_->setAlignment(alignment);
  cellDidChange();
}

void NSControl::setLineBreakMode(NSLineBreakMode mode) {
  if (!cell_) return;
  cell_->setLineBreakMode(mode);
  cellDidChange();
}

CGSize NSControl::intrinsicContentSize() const { return cell_ ? cell_->cellSize() : NSView::intrinsicContentSize(); }

namespace {

Ref<NSFont> fontOf(const NSControl& control) {
  const Ref<NSFont> font = control.font();
  return font ? font : NSFont::systemFontOfSize(NSFont::systemFontSize());
}

}  // namespace

CGFloat NSControl::lineHeight() const {
  return NSAttributedString("x", NSAttributes{{NSFontAttributeName, fontOf(*this)}}).size().height;
}

// The same above a text and below it, at the size that the cell wants.
CGFloat NSControl::marginOfText() const {
  const Ref<NSAttributedString> value = attributedStringValue();
  const CGFloat text = value->length() > 0 ? value->size().height : 0;
  return (cell_->cellSize().height - std::max(text, lineHeight())) / 2;
}

CGFloat NSControl::firstBaselineOffsetFromTop() const { return cell_ ? marginOfText() + fontOf(*this)->ascender() : 0; }

CGFloat NSControl::lastBaselineOffsetFromBottom() const {
  return cell_ ? marginOfText() + lineHeight() - fontOf(*this)->ascender() : 0;
}

void NSControl::setContinuous(bool isContinuous) {
  if (cell_) cell_->setContinuous(isContinuous);
}

bool NSControl::sendActionTo(std::string_view action, const Ref<NSObject>& target) { return send(action, target, *this); }

void NSControl::drawRect(CGRect) {
  if (cell_) cell_->drawWithFrame(bounds(), *this);
}

CGPoint NSControl::pointOf(const NSEvent& event) const { return convertPointFromView(event.locationInWindow(), nullptr); }

// In all of these an action, or the cell, may let the control go, disable it or give it another cell.

void NSControl::mouseDown(const Ref<NSEvent>& event) {
  if (!isEnabled()) return;
  const Ref<NSObject> held = shared_from_this();
  endPress();  // one whose release never came
  if (!isEnabled()) return;
  cell_->setMouseDownFlags(event->modifierFlags() & 0xFFFF0000u);
  startTracking(pointOf(*event));
  sendActionIfOn(NSEventType::LeftMouseDown);
}

void NSControl::mouseDragged(const Ref<NSEvent>& event) {
  if (!isPressed()) return;
  const Ref<NSObject> held = shared_from_this();
  const CGPoint point = pointOf(*event);
  const bool isOver = NSPointInRect(point, bounds());
  // Only the cell may have been disabled.
  if (!isEnabled()) endPress();
  else if (press_ == Press::Away && isOver) startTracking(point);
  else if (press_ == Press::Tracked && (isOver || cell_->prefersTrackingUntilMouseUp())) track(point);
  else stopTracking(Press::Away, lastPoint_, point, /*isMouseUp=*/false);
}

void NSControl::mouseUp(const Ref<NSEvent>& event) {
  if (!isPressed()) return;
  const Ref<NSObject> held = shared_from_this();
  if (endsTakenPress(*event)) return endPress();
  const CGPoint point = pointOf(*event);
  const bool isOver = NSPointInRect(point, bounds());
  if (press_ == Press::Away && isOver && isEnabled()) startTracking(point);  // a release may be the first to show it
  const bool isClick = press_ == Press::Tracked && isEnabled() && (isOver || cell_->prefersTrackingUntilMouseUp());
  const Ref<NSCell> cell = cell_;
  stopTracking(Press::None, lastPoint_, point, /*isMouseUp=*/true);
  if (!isClick) return;
  wasClicked();
  if (cell->sendsActionOn(NSEventType::LeftMouseUp)) sendActionTo(action(), target());
}

void NSControl::startTracking(CGPoint point) {
  lastPoint_ = point;
  press_ = Press::Tracked;
  const Ref<NSCell> cell = cell_;
  if (cell->isHighlightedByPress()) setHighlighted(true);
  if (!cell->startTrackingAt(point, *this) && cell == cell_) {
    press_ = Press::None;
    if (cell->isHighlightedByPress()) setHighlighted(false);
  }
  setNeedsDisplay(true);
}

void NSControl::track(CGPoint point) {
  const CGPoint last = std::exchange(lastPoint_, point);
  const Ref<NSCell> cell = cell_;
  const bool continues = cell->continueTracking(last, point, *this);
  if (cell != cell_ || press_ != Press::Tracked) return;
  if (continues) sendActionIfOn(NSEventType::LeftMouseDragged);
  else stopTracking(Press::None, last, point, /*isMouseUp=*/false);
}

void NSControl::sendActionIfOn(NSEventType type) {
  if (press_ == Press::Tracked && cell_->sendsActionOn(type)) sendActionTo(action(), target());
}

void NSControl::stopTracking(Press next, CGPoint last, CGPoint point, bool isMouseUp) {
  if (std::exchange(press_, next) != Press::Tracked) return;
  const Ref<NSCell> cell = cell_;
  cell->stopTracking(last, point, *this, isMouseUp);
  if (cell->isHighlightedByPress()) cell->setHighlighted(false);
  setNeedsDisplay(true);
}

std::optional<AccessibilityElements> NSControl::accessibilityOwnChildren() const {
  AccessibilityElements result;
  if (cell_) result.push_back(cell_);
  const AccessibilityElements views = NSView::accessibilityOwnChildren().value_or(AccessibilityElements());
  result.insert(result.end(), views.begin(), views.end());
  return result;
}

void NSControl::viewDidHide() {
  endPress();
  NSView::viewDidHide();
}

void NSControl::enablesControlsDidChange() {
  if (!isEnabled()) endPress();
  NSAccessibilityPostNotification(cell_, NSAccessibilityEnabledChangedNotification);
}

void NSControl::windowWillChange() {
  endPress();
  NSView::windowWillChange();
}

}  // namespace tessaluna::platform
