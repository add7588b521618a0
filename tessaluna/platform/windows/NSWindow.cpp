#include "tessaluna/platform/windows/NSWindow.h"

#include <algorithm>
#include <cmath>
#include <optional>
#include <utility>

#include "tessaluna/platform/backend/ClosingWindow.h"
#include "tessaluna/platform/events/NSEvent.h"
#include "tessaluna/platform/foundation/AtEndOfScope.h"
#include "tessaluna/platform/foundation/NSCoder.h"
#include "tessaluna/platform/foundation/memberTables.h"
#include "tessaluna/platform/graphics/NSColor.h"
#include "tessaluna/platform/graphics/NSGraphicsContext.h"
#include "tessaluna/platform/graphics/NSRect.h"
#include "tessaluna/platform/graphics/PaletteCanvas.h"
#include "tessaluna/platform/interface_files/archivedLooks.h"
#include "tessaluna/platform/time/CAMediaTimingFunction.h"
#include "tessaluna/platform/time/PropertyAnimation.h"
#include "tessaluna/platform/views/NSTextView.h"
#include "tessaluna/platform/windows/NSApplication.h"
#include "tessaluna/platform/windows/NSWindowAnimator.h"
#include "tessaluna/platform/windows/NSWindowController.h"
#include "tessaluna/platform/windows/NSWindowOcclusion.h"
#include "tessaluna/platform/windows/WindowInput.h"

namespace tessaluna::platform {

namespace {

constexpr Selector windowSelectors[] = {action<&NSWindow::performClose>("performClose:")};
constexpr Outlet windowOutlets[] = {outlet<&NSWindow::setDelegate>("delegate")};
constexpr Property windowProperties[] = {
    property<&NSWindow::setTitle, "title">(), property<&NSWindow::setOpaque, "opaque">(),
    property<&NSWindow::setHasShadow, "hasShadow">(), property<&NSWindow::setBackgroundColor, "backgroundColor">(),
    property<&NSWindow::setMovableByWindowBackground, "movableByWindowBackground">()};
constexpr InnerObjects windowInnerObjects[] = {innerObject<&NSWindow::setContentView>("contentView")};

void discardCursorRectsBelow(NSView& view, NSWindow& window) {
  view.discardCursorRects();
  window.invalidateCursorRectsForView(view);
  for (const Ref<NSView>& subview : view.subviews()) discardCursorRectsBelow(*subview, window);
}

// An operation of a window, for as long as it runs: a callback may ask for it again. Those that run at a time are chained, the
// innermost first.
class Running {
 public:
  Running(const NSWindow& window, const Running*& innermost)
      : window_(window), innermost_(innermost), outer_(std::exchange(innermost, this)) {}
  ~Running() { innermost_ = outer_; }
  Running(const Running&) = delete;
  Running& operator=(const Running&) = delete;

  static bool isFor(const NSWindow& window, const Running* innermost) {
    for (; innermost; innermost = innermost->outer_)
      if (&innermost->window_ == &window) return true;
    return false;
  }

 private:
  const NSWindow& window_;
  const Running*& innermost_;
  const Running* const outer_;
};

// What a desktop can be given.
bool isSomewhere(CGRect frame) {
  return std::isfinite(frame.origin.x) && std::isfinite(frame.origin.y) && std::isfinite(frame.size.width) &&
         std::isfinite(frame.size.height);
}

}  // namespace

const ClassInfo NSWindow::staticClassInfo{.name = "NSWindow",
                                          .base = &NSResponder::staticClassInfo,
                                          .selectors = windowSelectors,
                                          .outlets = windowOutlets,
                                          .properties = windowProperties,
                                          .innerObjects = windowInnerObjects};

NSWindow::NSWindow(CGRect contentRect, std::uint32_t styleMask, NSBackingStoreType, bool defer)
    : WindowPlace(contentRect),
      styleMask_(styleMask),
      backgroundColor_(NSColor::windowBackgroundColor()),
      input_(std::make_unique<WindowInput>(*this)),
      isMovableByWindowBackground_(styleMask & NSWindowStyleMaskTexturedBackground) {
  firstResponder_ = this;
  isDeferred_ = defer;
}

NSWindow::NSWindow(NSCoder& coder)
    : WindowPlace(coder),
      styleMask_(static_cast<std::uint32_t>(coder.decodeIntegerForKey("styleMask"))),
      title_(coder.decodeStringForKey("title").value_or("")),
      backgroundColor_(NSColor::windowBackgroundColor()),
      input_(std::make_unique<WindowInput>(*this)),
      isMovableByWindowBackground_(styleMask_ & NSWindowStyleMaskTexturedBackground) {
  firstResponder_ = this;
}

NSWindow::~NSWindow() {
  // Nobody is notified of an editing that ends with the window.
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
  adoptNativeWindow(backend->makeWindow(*this, {.kind = isTitled               ? backend::WindowKind::Titled
                                                        : canBecomeKeyWindow() ? backend::WindowKind::Borderless
                                                                               : backend::WindowKind::Popup,
                                                .content = isSomewhere(frame_) ? frame_ : CGRect{},
                                                .isOpaque = isOpaque_,
                                                .hasShadow = hasShadow_,
                                                .canBecomeKey = canBecomeKeyWindow(),
                                                .isPanel = isPanel(),
                                                .isClosable = (styleMask_ & NSWindowStyleMaskClosable) != 0,
                                                .isMiniaturizable = (styleMask_ & NSWindowStyleMaskMiniaturizable) != 0,
                                                .isResizable = (styleMask_ & NSWindowStyleMaskResizable) != 0}));
}

void NSWindow::adoptNativeWindow(std::unique_ptr<backend::NativeWindow> native) {
  native_ = std::move(native);
  if (!title_.empty()) native_->setTitle(title_);
  if (contentView_) contentView_->setNeedsDisplay(true);
}

void NSWindow::setContentView(Ref<NSView> view) {
  if (contentView_) contentView_->moveToWindow(nullptr);
  contentView_ = view;
  if (!view) return invalidateRect({{0, 0}, frame_.size});
  // Whoever is notified by a step may set another one.
  view->removeFromSuperview();  // or from another window
  if (contentView_ != view) return;
  view->setFrame({{0, 0}, frame_.size});
  if (contentView_ != view) return;
  view->moveToWindow(this);
  if (contentView_ != view) return;
  static_cast<ViewTracking&>(*view).visibleAreaDidChange();
  view->setNeedsDisplay(true);
}

void NSWindow::moveTo(CGRect frame) {
  const Ref<NSObject> held = weak_from_this().lock();
  const bool showedNothing = showsNothing(frame_);
  if (native_ && frame != frame_) input_->pointerMayRest();
  if (native_ && frame != frame_ && !showsNothing(frame)) native_->setFrame(frame);
  nativeFrameChanged(frame);
  if (native_ && isVisible_ && showsNothing(frame_) != showedNothing) {
    if (showedNothing) native_->show();
    else native_->hide();
  }
}

void NSWindow::setFrame(CGRect frame, bool display) {
  stopAnimationOfProperty<&NSWindow::moveTo>(*this);
  moveTo(frame);
  if (display) displayIfNeeded();
}

void NSWindow::setFrame(CGRect frame, bool display, bool animate) {
  if (!animate || !isVisible_) return setFrame(frame, display);
  // A move of its own: a group that is open takes no part in it.
  const auto pace = make<NSAnimationContext>();
  pace->setDuration(animationResizeTime(frame));
  pace->setTimingFunction(CAMediaTimingFunction::functionWithName(kCAMediaTimingFunctionEaseInEaseOut));
  animateFrame(frame, *pace);
}

void NSWindow::animateFrame(CGRect frame, const NSAnimationContext& context) {
  animateProperty<&NSWindow::moveTo>(
      *this, frame_, frame, [](NSWindow& window) { return &window; }, context);
}

double NSWindow::animationResizeTime(CGRect) const { return windowResizeDuration; }

NSWindowAnimator NSWindow::animator() { return NSWindowAnimator(*this); }

// A desktop would make it a small window, or one on the other side of its corner.
bool NSWindow::showsNothing(CGRect frame) const {
  if (!isSomewhere(frame)) return true;
  const CGFloat least = std::min(frame.size.width, frame.size.height);
  return least < 0 || (least == 0 && !(styleMask_ & NSWindowStyleMaskTitled));
}

void NSWindow::setFrameTopLeftPoint(CGPoint point) {
  setFrame({{point.x, point.y - frame_.size.height}, frame_.size}, false);
}

void NSWindow::nativeFrameChanged(CGRect content) {
  const Ref<NSObject> held = weak_from_this().lock();  // absent while the window is being made
  if (isSomewhere(frame_)) lastFiniteFrame_ = frame_;
  const CGRect earlier = std::exchange(frame_, content);
  CGPoint moved;  // children stay where they are while their parent is nowhere
  if (isSomewhere(content) && lastFiniteFrame_)
    moved = {content.origin.x - lastFiniteFrame_->origin.x, CGRectGetMaxY(content) - CGRectGetMaxY(*lastFiniteFrame_)};
  if (content.size != earlier.size) {
    if (const Ref<NSView> content = contentView_) content->setFrame({{0, 0}, frame_.size});
    invalidateRect({{0, 0}, frame_.size});
  }
  if (moved != CGPoint{} && std::isfinite(moved.x) && std::isfinite(moved.y)) children_.parentMoved(moved);
  if (content.origin != earlier.origin) notify(NSWindowDidMoveNotification, &NSWindowDelegate::windowDidMove);
  if (content.size != earlier.size) notify(NSWindowDidResizeNotification, &NSWindowDelegate::windowDidResize);
}

void NSWindow::nativeScaleChanged() { invalidateRect({{0, 0}, frame_.size}); }

void NSWindow::orderFront(NSObject*) {
  const Ref<NSWindow> held = refTo(*this);
  makeNative();
  const bool appears = !std::exchange(isVisible_, true);
  if (NSWindow* parent = parentWindow()) {
    parent->children_.childWasShown(*this, true);
    native_->setParent(parent->nativeWindow());
  }
  input_->pointerMayRest();
  // A layout or an observer may hide the window, or close it.
  layoutIfNeeded();
  if (!isVisible_) return;
  if (!showsNothing(frame_)) native_->show();
  native_->raise();
  displayIfNeeded();
  if (appears && isVisible_)
    NSNotificationCenter::defaultCenter().postNotificationName(NSWindowDidChangeOcclusionStateNotification, held);
  if (!isVisible_) return;
  children_.parentWasShown();
  if (!appears || !isVisible_) return;
  mouse_.windowWasShown();
  // What is seen of an ignored window reports itself: it may have to find its place in the tree first.
  if (!accessibilityIsIgnored()) NSAccessibilityPostNotification(held, NSAccessibilityCreatedNotification);
}

void NSWindow::orderOut(NSObject*) {
  const Ref<NSWindow> held = refTo(*this);
  // First of all: who ends what hangs on the key status finds the children still there.
  nativeKeyStatusChanged(false);
  if (NSWindow* parent = parentWindow(); parent && parent->isVisible()) parent->children_.childWasShown(*this, false);
  mouse_.windowWasHidden();
  const bool wasVisible = std::exchange(isVisible_, false);
  if (wasVisible) {
    NSNotificationCenter::defaultCenter().postNotificationName(NSWindowDidChangeOcclusionStateNotification, held);
    children_.parentWasHidden();
    NSAccessibilityPostNotification(NSAccessibilityUnignoredDescendant(held), NSAccessibilityUIElementDestroyedNotification);
  }
  if (native_) native_->hide();
  // A desktop reports no release to a window that it does not show.
  if (wasVisible) input_->endPresses();
}

void NSWindow::makeKeyAndOrderFront(NSObject* sender) {
  const Ref<NSWindow> held = refTo(*this);
  orderFront(sender);
  if (isVisible_ && canBecomeKeyWindow()) native_->requestKey();
}

void NSWindow::close() {
  static const Running* innermost = nullptr;
  if (Running::isFor(*this, innermost)) return;
  const Ref<NSWindow> held = refTo(*this);
  {
    // Whoever is notified may close it. Intentional: a close that the loss of key status leads to, below, is another one.
    const Running announcing(*this, innermost);
    endEditingFor(nullptr);
    notify(NSWindowWillCloseNotification, &NSWindowDelegate::windowWillClose);
  }
  if (parentWindow()) parentWindow()->removeChildWindow(*this);
  if (auto* closing = dynamic_cast<backend::ClosingWindow*>(native_.get())) closing->willClose();
  orderOut(nullptr);
}

void NSWindow::performClose(NSObject*) {
  if (styleMask_ & NSWindowStyleMaskClosable) nativeCloseRequested();
}

void NSWindow::nativeCloseRequested() {
  const Ref<NSWindow> held = refTo(*this);
  const Ref<NSWindowDelegate> delegate = delegate_.lock();
  if (!delegate || delegate->windowShouldClose(*this)) close();
}

void NSWindow::nativeKeyStatusChanged(bool isKey) {
  if (isKey && !canBecomeKeyWindow()) return;
  if (isKey == isKey_) return;
  isKey_ = isKey;
  scheduleDisplay();  // the focus ring shows in the key window
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

void NSWindow::addChildWindow(const Ref<NSWindow>& child, NSWindowOrderingMode ordered) {
  if (ordered != NSWindowAbove) stopProgram("NSWindow: a child window can only be above its parent");
  children_.add(child);
}

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

void NSWindow::setOpaque(bool isOpaque) {
  if (std::exchange(isOpaque_, isOpaque) == isOpaque) return;
  invalidateRect({{0, 0}, frame_.size});
  if (native_) native_->setOpaque(isOpaque);
}

void NSWindow::setHasShadow(bool has) {
  if (std::exchange(hasShadow_, has) != has && native_) native_->setHasShadow(has);
}

void NSWindow::setBackgroundColor(Ref<NSColor> color) {
  backgroundColor_ = std::move(color);
  invalidateRect({{0, 0}, frame_.size});
}

void NSWindow::scrollWheel(const Ref<NSEvent>& event) {
  if (nextResponder()) NSResponder::scrollWheel(event);
  else input_->eventWasNotTaken();
}

void NSWindow::viewWillLeave(NSView& view) {
  if (firstResponder_ == &view) {
    view.resignFirstResponder();
    // Whoever was notified may have given the keys to another view.
    if (firstResponder_ == &view) setFirstResponder(*this);
  }
  mouse_.viewWillLeave(view);
}

void NSWindow::intrinsicContentSizeDidChange(NSView& view) {
  if (native_) native_->intrinsicContentSizeDidChange(view);
}

void NSWindow::sendEvent(const Ref<NSEvent>& event) {
  const Ref<NSWindow> held = refTo(*this);
  switch (event->type()) {
    case NSEventType::KeyDown:
    case NSEventType::KeyUp:
    case NSEventType::FlagsChanged: {
      const FocusRing::CauseScope cause(focusRing_, FocusRing::Cause::Key);
      dispatchKey(event);
      break;
    }
    default: {
      const FocusRing::CauseScope cause(focusRing_, FocusRing::Cause::Pointer);
      layoutIfNeeded();
      mouse_.send(event);
    }
  }
}

void NSWindow::resetCursorRects() {
  static const Running* innermost = nullptr;
  if (Running::isFor(*this, innermost)) return;
  const Running reset(*this, innermost);
  if (contentView_) discardCursorRectsBelow(*contentView_, *this);
  updateCursorRects();
}

void NSWindow::updateCursorRects() {
  layoutIfNeeded();
  if (const Ref<NSView> content = contentView_) updateCursorRectsBelow(*content);
}

void NSWindow::updateCursorRectsBelow(NSView& view) {
  if (view.isHidden()) return;
  ViewTracking& tracking = view;
  if (!std::exchange(tracking.areCursorRectsValid_, true)) {
    view.discardCursorRects();
    view.resetCursorRects();
  }
  const std::vector<Ref<NSView>> copy = view.subviews();
  for (const Ref<NSView>& subview : copy) updateCursorRectsBelow(*subview);
}

void NSWindow::invalidateCursorRectsForView(NSView& view) { static_cast<ViewTracking&>(view).areCursorRectsValid_ = false; }

void NSWindow::invalidateRect(CGRect rect) {
  dirty_.add(rect, backingScaleFactor());
  if (!dirty_.isEmpty()) scheduleDisplay();
}

void NSWindow::layoutIsNeeded() { scheduleDisplay(); }

void NSWindow::scheduleDisplay() {
  if (native_ && isVisible_ && !isPreparingDisplay_) native_->scheduleDisplay();
}

void NSWindow::focusRingMaskDidChange(NSView& view) {
  if (focusRing_.maskDidChange(view)) scheduleDisplay();
}

void NSWindow::layoutIfNeeded() {
  if (contentView_) Ref<NSView>(contentView_)->layoutSubtreeIfNeeded();
}

void NSWindow::displayIfNeeded() {
  if (!native_ || !isVisible_) return;
  const Ref<NSObject> held = weak_from_this().lock();
  {
    isPreparingDisplay_ = true;
    const AtEndOfScope end([this] { isPreparingDisplay_ = false; });
    layoutIfNeeded();
    focusRing_.update();
  }
  // A layout may have hidden the window, or closed it.
  if (!native_ || !isVisible_ || showsNothing(frame_) || dirty_.isEmpty()) return;
  const std::vector<CGRect> rects = dirty_.take({{0, 0}, frame_.size}, backingScaleFactor());
  if (rects.empty()) return;
  native_->paint(rects, [&](backend::Canvas& canvas) {
    for (const CGRect& rect : rects) drawContents(rect, canvas);
  });
  // Where the ring lies may be known only now, as where a line of links is cut. It follows with the next display.
  focusRing_.update();
}

void NSWindow::drawContents(CGRect rect, backend::Canvas& canvas) {
  std::optional<PaletteCanvas> mapping;
  if (neutralsFollowPalette()) mapping.emplace(canvas, NeutralAxis::ofPalette());
  CGContext context(mapping ? static_cast<backend::Canvas&>(*mapping) : canvas);
  const auto graphics = NSGraphicsContext::graphicsContextWithCGContext(context, false);
  const CurrentContextScope current(graphics);
  const GraphicsStateScope state(context);
  context.clipRect(rect);
  // The picture is kept: what was there goes first, also under a translucent background.
  (backgroundColor_ ? backgroundColor_ : NSColor::clearColor())->setFill();
  NSRectFill(rect);
  if (contentView_) contentView_->displayRectInContext(rect, *graphics);
  focusRing_.draw();
}

}  // namespace tessaluna::platform
