#include "platform/windows/NSWindow.h"

#include <algorithm>
#include <utility>

#include "platform/events/NSEvent.h"
#include "platform/graphics/NSColor.h"
#include "platform/graphics/NSGraphicsContext.h"
#include "platform/graphics/NSRect.h"
#include "platform/views/NSTextView.h"
#include "platform/windows/NSApplication.h"
#include "platform/windows/NSWindowController.h"

namespace platform {

const ClassInfo NSWindow::staticClassInfo{.name = "NSWindow", .base = &NSResponder::staticClassInfo};

NSWindow::NSWindow(CGRect contentRect, std::uint32_t styleMask, NSBackingStoreType, bool defer)
    : frame_(contentRect), styleMask_(styleMask), backgroundColor_(NSColor::windowBackgroundColor()) {
  firstResponder_ = this;
  isDeferred_ = defer;
}

NSWindow::NSWindow(NSCoder& coder)
    : NSResponder(coder),
      frame_(coder.decodeRectForKey("contentRect")),
      styleMask_(static_cast<std::uint32_t>(coder.decodeIntegerForKey("styleMask"))),
      title_(coder.decodeStringForKey("title").value_or("")),
      backgroundColor_(NSColor::windowBackgroundColor()) {
  firstResponder_ = this;
}

NSWindow::~NSWindow() {
  // Nobody is told of an editing that ends with the window.
  if (fieldEditor_) {
    fieldEditor_->setDelegate(nullptr);
    if (NSView* clip = fieldEditor_->superview()) clip->removeFromSuperview();
    fieldEditor_->removeFromSuperview();
  }
  if (contentView_) contentView_->moveToWindow(nullptr);
}

void NSWindow::didInit() {
  NSResponder::didInit();
  if (!contentView_) setContentView(make<NSView>(CGRect{{0, 0}, frame_.size}));
  if (NSApp) NSApp->windowWasMade(refTo(*this));
  // Only now: what a derived class says of its window counts for the native one as well.
  if (!isDeferred_) makeNative();
}

void NSWindow::makeNative() {
  if (native_) return;
  backend::Backend* backend = backend::Backend::current();
  if (!backend) stopProgram("NSWindow: a window was shown without a backend");
  const bool isTitled = styleMask_ & NSWindowStyleMaskTitled;
  adoptNativeWindow(backend->makeWindow(
      *this, {.kind = isTitled ? backend::WindowKind::Titled
                               : canBecomeKeyWindow() ? backend::WindowKind::Borderless : backend::WindowKind::Popup,
              .content = frame_,
              .isOpaque = isOpaque_,
              .hasShadow = hasShadow_,
              .canBecomeKey = canBecomeKeyWindow()}));
}

void NSWindow::adoptNativeWindow(std::unique_ptr<backend::NativeWindow> native) {
  native_ = std::move(native);
  if (!title_.empty()) native_->setTitle(title_);
  if (contentView_) contentView_->setNeedsDisplay(true);
}

void NSWindow::setContentView(Ref<NSView> view) {
  if (contentView_) {
    contentView_->moveToWindow(nullptr);
  }
  contentView_ = std::move(view);
  if (contentView_) {
    contentView_->removeFromSuperview();
    contentView_->setFrame({{0, 0}, frame_.size});
    contentView_->moveToWindow(this);
    static_cast<ViewTracking&>(*contentView_).visibleAreaDidChange();
    contentView_->setNeedsDisplay(true);
  } else {
    invalidateRect({{0, 0}, frame_.size});
  }
}

void NSWindow::setFrame(CGRect frame, bool display) {
  if (native_ && frame != frame_) native_->setFrame(frame);
  nativeFrameChanged(frame);
  if (display) displayIfNeeded();
}

void NSWindow::setFrameTopLeftPoint(CGPoint point) {
  setFrame({{point.x, point.y - frame_.size.height}, frame_.size}, false);
}

void NSWindow::nativeFrameChanged(CGRect content) {
  const Ref<NSObject> held = weak_from_this().lock();  // absent while the window is being made
  const CGRect earlier = std::exchange(frame_, content);
  const CGPoint moved{content.origin.x - earlier.origin.x, CGRectGetMaxY(content) - CGRectGetMaxY(earlier)};
  if (content.size != earlier.size) {
    if (contentView_) contentView_->setFrame({{0, 0}, frame_.size});
    invalidateRect({{0, 0}, frame_.size});
  }
  if (moved != CGPoint{}) children_.parentMoved(moved);
  if (content.origin != earlier.origin) notify(NSWindowDidMoveNotification, &NSWindowDelegate::windowDidMove);
  if (content.size != earlier.size) notify(NSWindowDidResizeNotification, &NSWindowDelegate::windowDidResize);
}

void NSWindow::nativeScaleChanged() { invalidateRect({{0, 0}, frame_.size}); }

CGPoint NSWindow::convertPointToScreen(CGPoint p) const { return {p.x + frame_.origin.x, p.y + frame_.origin.y}; }
CGPoint NSWindow::convertPointFromScreen(CGPoint p) const { return {p.x - frame_.origin.x, p.y - frame_.origin.y}; }
CGRect NSWindow::convertRectToScreen(CGRect r) const { return {convertPointToScreen(r.origin), r.size}; }
CGRect NSWindow::convertRectFromScreen(CGRect r) const { return {convertPointFromScreen(r.origin), r.size}; }
CGFloat NSWindow::backingScaleFactor() const { return native_ ? native_->scale() : 1; }

void NSWindow::orderFront(NSObject*) {
  makeNative();
  isVisible_ = true;
  if (NSWindow* parent = parentWindow()) {
    parent->children_.childWasShown(*this, true);
    native_->setParent(parent->nativeWindow());
  }
  native_->show();
  native_->raise();
  displayIfNeeded();
  children_.parentWasShown();
}

void NSWindow::orderOut(NSObject*) {
  const Ref<NSWindow> held = refTo(*this);
  if (NSWindow* parent = parentWindow(); parent && parent->isVisible()) parent->children_.childWasShown(*this, false);
  tracking_.windowWasHidden();
  if (std::exchange(isVisible_, false)) {
    children_.parentWasHidden();
    NSAccessibilityPostNotification(NSAccessibilityUnignoredDescendant(held), NSAccessibilityUIElementDestroyedNotification);
  }
  if (native_) native_->hide();
  nativeKeyStatusChanged(false);
}

void NSWindow::makeKeyAndOrderFront(NSObject* sender) {
  orderFront(sender);
  if (canBecomeKeyWindow()) native_->requestKey();
}

void NSWindow::close() {
  const Ref<NSWindow> held = refTo(*this);
  endEditingFor(nullptr);
  notify(NSWindowWillCloseNotification, &NSWindowDelegate::windowWillClose);
  if (parentWindow()) parentWindow()->removeChildWindow(*this);
  orderOut(nullptr);
  if (NSApp) NSApp->windowWasClosed(*this);
}

void NSWindow::nativeKeyStatusChanged(bool isKey) {
  if (isKey && !canBecomeKeyWindow()) return;
  if (isKey == isKey_) return;
  isKey_ = isKey;
  if (NSApp) NSApp->windowKeyStatusChanged(*this, isKey);
  if (isKey) notify(NSWindowDidBecomeKeyNotification, &NSWindowDelegate::windowDidBecomeKey);
  else notify(NSWindowDidResignKeyNotification, &NSWindowDelegate::windowDidResignKey);
}

void NSWindow::notify(std::string_view name, void (NSWindowDelegate::*operation)(const Ref<NSNotification>&)) {
  const Ref<NSObject> held = weak_from_this().lock();
  if (!held) return;
  if (const Ref<NSWindowDelegate> delegate = delegate_.lock())
    (delegate.get()->*operation)(make<NSNotification>(std::string(name), held));
  NSNotificationCenter::defaultCenter().postNotificationName(name, held);
}

void NSWindow::addChildWindow(const Ref<NSWindow>& child, NSWindowOrderingMode) { children_.add(child); }

Ref<NSWindowController> NSWindow::windowController() const { return controller_.lock(); }
void NSWindow::setWindowController(const Ref<NSWindowController>& controller) { controller_ = controller; }

NSResponder* NSWindow::nextResponder() const {
  if (NSResponder* set = NSResponder::nextResponder()) return set;
  return controller_.lock().get();
}

Ref<NSObject> NSWindow::accessibilityParent() const { return NSApp; }

std::optional<AccessibilityElements> NSWindow::accessibilityOwnChildren() const {
  return contentView_ ? AccessibilityElements{contentView_} : AccessibilityElements{};
}

void NSWindow::setTitle(std::string title) {
  title_ = std::move(title);
  if (native_) native_->setTitle(title_);
  NSAccessibilityPostNotification(weak_from_this().lock(), NSAccessibilityTitleChangedNotification);
}

void NSWindow::setBackgroundColor(Ref<NSColor> color) {
  backgroundColor_ = std::move(color);
  invalidateRect({{0, 0}, frame_.size});
}

bool NSWindow::makeFirstResponder(NSResponder* responder) {
  NSResponder* wanted = responder ? responder : this;
  if (wanted == firstResponder_) return true;
  const Ref<NSResponder> held = refTo(*wanted);
  // One that takes the keys back whenever they go keeps them.
  constexpr int mostAsked = 3;
  for (int asked = 0; firstResponder_ != this; ++asked) {
    if (asked == mostAsked) return false;
    const Ref<NSResponder> earlier = refTo(*firstResponder_);
    const std::size_t changes = firstResponderChanges_;
    if (!earlier->resignFirstResponder()) return false;
    // Whoever was told of the end may have made another one the first responder: that one is asked as well.
    if (firstResponderChanges_ == changes) setFirstResponder(*this);
  }
  if (wanted == this) return true;
  if (!wanted->acceptsFirstResponder() || !wanted->becomeFirstResponder()) return false;
  // A text field has given the status on to its editor by now.
  if (firstResponder_ == this) setFirstResponder(*wanted);
  // A control's element is its cell.
  NSAccessibilityPostNotification(NSAccessibilityUnignoredDescendant(held),
                                  NSAccessibilityFocusedUIElementChangedNotification);
  return true;
}

void NSWindow::setFirstResponder(NSResponder& responder) {
  firstResponder_ = &responder;
  ++firstResponderChanges_;
  if (native_) native_->firstResponderDidChange();
}

namespace {

void collectKeyViews(const Ref<NSView>& view, std::vector<Ref<NSView>>& result) {
  if (view->isHidden()) return;
  if (view->canBecomeKeyView()) result.push_back(view);
  for (const Ref<NSView>& subview : view->subviews()) collectKeyViews(subview, result);
}

}  // namespace

bool NSWindow::selectKeyViewWithin(NSView& view, backend::FocusStep step) {
  const std::ptrdiff_t direction = step == backend::FocusStep::Next ? 1 : -1;
  std::vector<Ref<NSView>> views;
  collectKeyViews(refTo(view), views);
  const auto count = static_cast<std::ptrdiff_t>(views.size());
  std::ptrdiff_t now = direction > 0 ? -1 : count;
  // A field is edited in a view inside of it.
  const auto* first = dynamic_cast<const NSView*>(firstResponder_);
  for (std::ptrdiff_t i = 0; i < count; ++i)
    if (first && first->isDescendantOf(views[i].get())) now = i;
  for (std::ptrdiff_t next = now + direction; next >= 0 && next < count; next += direction)
    if (makeFirstResponder(views[next].get())) return true;
  return false;
}

bool NSWindow::selectNextKeyView() {
  return contentView_ && selectKeyViewWithin(*contentView_, backend::FocusStep::Next);
}

bool NSWindow::selectPreviousKeyView() {
  return contentView_ && selectKeyViewWithin(*contentView_, backend::FocusStep::Previous);
}

namespace {

std::optional<backend::FocusStep> focusStepOf(const NSEvent& event) {
  if (event.modifierFlags() & (NSEventModifierFlagControl | NSEventModifierFlagOption | NSEventModifierFlagCommand))
    return std::nullopt;
  if (event.characters() == NSBackTabCharacter) return backend::FocusStep::Previous;
  if (event.characters() != NSTabCharacter) return std::nullopt;
  return event.modifierFlags() & NSEventModifierFlagShift ? backend::FocusStep::Previous : backend::FocusStep::Next;
}

}  // namespace

void NSWindow::moveKeyView(backend::FocusStep step) {
  if ((native_ && native_->moveFocus(step)) || !contentView_ || selectKeyViewWithin(*contentView_, step)) return;
  if (makeFirstResponder(nullptr)) selectKeyViewWithin(*contentView_, step);
}

Ref<NSText> NSWindow::fieldEditor(bool createFlag, NSObject*) {
  if (!fieldEditor_ && createFlag) {
    fieldEditor_ = make<NSTextView>(CGRect{});
    fieldEditor_->setFieldEditor(true);
  }
  return fieldEditor_;
}

void NSWindow::endEditingFor(NSObject* object) {
  const Ref<NSText> editor = fieldEditor_;
  if (!editor || !editor->delegate() || (object && dynamic_cast<NSObject*>(editor->delegate().get()) != object)) return;
  editor->endEditing();
  if (firstResponder_ == editor.get()) setFirstResponder(*this);
}

void NSWindow::keyDown(const Ref<NSEvent>& event) {
  if (const std::optional<backend::FocusStep> step = focusStepOf(*event)) {
    moveKeyView(*step);
  } else if (nextResponder()) {
    NSResponder::keyDown(event);
  } else if (native_) {
    native_->eventWasNotTaken();
  }
}

void NSWindow::scrollWheel(const Ref<NSEvent>& event) {
  if (nextResponder()) NSResponder::scrollWheel(event);
  else if (native_) native_->eventWasNotTaken();
}

void NSWindow::viewWillLeave(NSView& view) {
  if (firstResponder_ == &view) {
    view.resignFirstResponder();
    setFirstResponder(*this);
  }
  for (Press& press : pressed_)
    if (press.view.lock().get() == &view) press.view.reset();
}

void NSWindow::intrinsicContentSizeDidChange(NSView& view) {
  if (native_) native_->intrinsicContentSizeDidChange(view);
}

void NSWindow::sendEvent(const Ref<NSEvent>& event) {
  const Ref<NSWindow> held = refTo(*this);
  switch (event->type()) {
    case NSEventType::KeyDown:
    case NSEventType::KeyUp:
    case NSEventType::FlagsChanged: dispatchKey(event); break;
    default: dispatchMouse(event);
  }
}

namespace {

enum class Phase { Down, Dragged, Up };

struct ButtonHandlers {
  int button;
  Phase phase;
  void (NSResponder::*handler)(const Ref<NSEvent>&);
};

// What of a press an event type is, and whom it calls.
std::optional<ButtonHandlers> buttonHandlers(NSEventType type) {
  switch (type) {
    case NSEventType::LeftMouseDown: return {{0, Phase::Down, &NSResponder::mouseDown}};
    case NSEventType::LeftMouseDragged: return {{0, Phase::Dragged, &NSResponder::mouseDragged}};
    case NSEventType::LeftMouseUp: return {{0, Phase::Up, &NSResponder::mouseUp}};
    case NSEventType::RightMouseDown: return {{1, Phase::Down, &NSResponder::rightMouseDown}};
    case NSEventType::RightMouseDragged: return {{1, Phase::Dragged, &NSResponder::rightMouseDragged}};
    case NSEventType::RightMouseUp: return {{1, Phase::Up, &NSResponder::rightMouseUp}};
    case NSEventType::OtherMouseDown: return {{2, Phase::Down, &NSResponder::otherMouseDown}};
    case NSEventType::OtherMouseDragged: return {{2, Phase::Dragged, &NSResponder::otherMouseDragged}};
    case NSEventType::OtherMouseUp: return {{2, Phase::Up, &NSResponder::otherMouseUp}};
    default: return std::nullopt;
  }
}

}  // namespace

void NSWindow::dispatchMouse(const Ref<NSEvent>& event) {
  const auto viewUnderPointer = [&]() -> Ref<NSView> {
    NSView* hit = contentView_ ? contentView_->hitTest(event->locationInWindow()) : nullptr;
    return hit ? refTo(*hit) : nullptr;
  };
  const auto isButtonDown = [&] {
    return std::any_of(std::begin(pressed_), std::end(pressed_), [](const Press& press) { return press.isDown; });
  };
  switch (event->type()) {
    case NSEventType::ScrollWheel:
      if (const Ref<NSView> view = viewUnderPointer()) view->scrollWheel(event);
      else scrollWheel(event);
      return;
    // A backend tells with these, without an area, that the pointer has come into the window or gone.
    case NSEventType::MouseExited:
      if (!isButtonDown()) tracking_.pointerLeft(event);
      return;
    case NSEventType::MouseEntered:
    case NSEventType::MouseMoved: tracking_.pointerMoved(event, isButtonDown()); return;
    default: break;
  }
  const std::optional<ButtonHandlers> handlers = buttonHandlers(event->type());
  if (!handlers) return;

  const bool wasVisible = isVisible_;
  Press& press = pressed_[handlers->button];
  Ref<NSView> receiver = press.view.lock();
  switch (handlers->phase) {
    case Phase::Down:
      receiver = viewUnderPointer();
      press = {.view = receiver, .isDown = true};
      if (receiver && handlers->button == 0 && receiver->acceptsFirstResponder()) makeFirstResponder(receiver.get());
      break;
    case Phase::Dragged: tracking_.pointerMoved(event, true); break;
    case Phase::Up: press = {}; break;
  }
  if (receiver && receiver->window() == this) (receiver.get()->*handlers->handler)(event);
  // Entries that the press held back come with its release, unless that has hidden the window.
  if (handlers->phase == Phase::Up && isVisible_ == wasVisible) tracking_.pointerMoved(event, isButtonDown());
}

void NSWindow::dispatchKey(const Ref<NSEvent>& event) {
  const Ref<NSResponder> receiver = refTo(*firstResponder_);
  switch (event->type()) {
    case NSEventType::KeyDown:
      if (contentView_ && Ref<NSView>(contentView_)->performKeyEquivalent(event)) return;
      receiver->keyDown(event);
      break;
    case NSEventType::KeyUp: receiver->keyUp(event); break;
    default: receiver->flagsChanged(event);
  }
}

void NSWindow::resetCursorRects() {
  if (contentView_) resetCursorRectsBelow(*contentView_);
}

void NSWindow::resetCursorRectsBelow(NSView& view) {
  if (view.isHidden()) return;
  ViewTracking& tracking = view;
  if (!std::exchange(tracking.areCursorRectsValid_, true)) {
    view.discardCursorRects();
    view.resetCursorRects();
  }
  const std::vector<Ref<NSView>> copy = view.subviews();
  for (const Ref<NSView>& subview : copy) resetCursorRectsBelow(*subview);
}

void NSWindow::invalidateCursorRectsForView(NSView& view) { static_cast<ViewTracking&>(view).areCursorRectsValid_ = false; }

void NSWindow::invalidateRect(CGRect rect) {
  dirty_.add(rect, backingScaleFactor());
  if (native_ && isVisible_ && !dirty_.isEmpty()) native_->scheduleDisplay();
}

void NSWindow::displayIfNeeded() {
  if (!native_ || !isVisible_ || dirty_.isEmpty()) return;
  const std::vector<CGRect> rects = dirty_.take({{0, 0}, frame_.size}, backingScaleFactor());
  if (rects.empty()) return;
  native_->paint(rects, [&](backend::Canvas& canvas) {
    for (const CGRect& rect : rects) drawContents(rect, canvas);
  });
}

void NSWindow::drawContents(CGRect rect, backend::Canvas& canvas) {
  CGContext context(canvas);
  const auto graphics = NSGraphicsContext::graphicsContextWithCGContext(context, false);
  const CurrentContextScope current(graphics);
  const GraphicsStateScope state(context);
  context.clipRect(rect);
  // The picture is kept: what was there goes first, also under a translucent background.
  (backgroundColor_ ? backgroundColor_ : NSColor::clearColor())->setFill();
  NSRectFill(rect);
  if (contentView_) contentView_->displayRectInContext(rect, *graphics);
}

}  // namespace platform
