#include "tessaluna/backends/qt/EmbeddingHost.h"

#include <QGuiApplication>
#include <QPainter>
#include <QPointer>
#include <QScreen>
#include <QScrollArea>
#include <QWindow>
#include <algorithm>
#include <cmath>
#include <utility>

#include "tessaluna/backends/qt/AccessibilityBridge.h"
#include "tessaluna/backends/qt/QtBackend.h"
#include "tessaluna/backends/qt/QtNativeWindow.h"
#include "tessaluna/backends/qt/QtViewWidget.h"
#include "tessaluna/backends/qt/ToolTip.h"
#include "tessaluna/backends/qt/cursorShapes.h"
#include "tessaluna/backends/qt/inputEvents.h"
#include "tessaluna/backends/qt/screenSpace.h"
#include "tessaluna/platform/graphics/NSColor.h"
#include "tessaluna/platform/graphics/NSRect.h"
#include "tessaluna/platform/views/KeyboardWhileHidden.h"
#include "tessaluna/platform/views/NSClipView.h"
#include "tessaluna/platform/views/NSView.h"
#include "tessaluna/platform/windows/NSWindow.h"

namespace tessaluna::backend::qt {

using namespace tessaluna::platform;

namespace {

// Counts y downward as widgets do, so that a view's place stays what it is when the top-level widget grows.
class FlippedView : public NSView {
 public:
  using NSView::NSView;
  bool isFlipped() const override { return true; }
};

// Hidden while its widget is: Qt says where the keyboard goes then.
class WidgetClip : public NSView, public KeyboardWhileHidden {
 public:
  using NSView::NSView;
  bool keepsKeyboardWhileHidden(const NSView& hidden) const override { return &hidden == this; }
};

// Of the rectangle, the device pixels that Qt gives a widget there. At a scale like 1.5 not every point begins with a pixel,
// and a view that began inside one would lose the part that Qt cuts off.
CGRect shownPixels(const QRect& rect, double scale) {
  const auto edge = [scale](int points) { return std::floor(points * scale + 0.5) / scale; };
  const double left = edge(rect.x()), top = edge(rect.y());
  return {left, top, edge(rect.x() + rect.width()) - left, edge(rect.y() + rect.height()) - top};
}

// Whether the widget is what an area of Qt's scrolls.
bool isInScrollArea(const QWidget& widget) {
  const QWidget* viewport = widget.parentWidget();
  const auto* area = viewport ? qobject_cast<const QAbstractScrollArea*>(viewport->parentWidget()) : nullptr;
  return area && area->viewport() == viewport;
}

// Qt brings only the widgets that its own focus comes to into sight.
void bringIntoSight(const QPointer<QtViewWidget>& widget) {
  for (QPointer<QWidget> above = widget.data(); above; above = above ? above->parentWidget() : nullptr)
    if (auto* area = qobject_cast<QScrollArea*>(above.data()); area && widget) area->ensureWidgetVisible(widget);
}

// What of the widget its ancestors do not cut off, in the top-level widget's space.
QRect visibleRectOf(const QWidget& widget, const QWidget& topLevel) {
  QRect visible(widget.mapTo(&topLevel, QPoint(0, 0)), widget.size());
  for (const QWidget* inner = &widget; inner != &topLevel;) {
    inner = inner->parentWidget();
    visible &= QRect(inner->mapTo(&topLevel, QPoint(0, 0)), inner->size());
  }
  return visible;
}

}  // namespace

// The program shows, hides, names and raises its own window; of what a window asks for, only the rest is done.
class EmbeddingHost::NativeSide : public QtNativeWindow {
 public:
  explicit NativeSide(EmbeddingHost& host) : host_(&host) {}
  void hostIsGone() { host_ = nullptr; }

  void setFrame(CGRect content) override {
    if (host_) host_->topLevel_.setGeometry(qtRectOf(content));
  }
  void show() override {}
  void hide() override {}
  void raise() override {}
  void setTitle(const std::string&) override {}
  void setOpaque(bool) override {}
  void setHasShadow(bool) override {}
  bool isMovable() const override { return false; }
  void requestKey() override {
    if (host_) host_->topLevel_.activateWindow();
  }
  void setParent(NativeWindow* parent) override {
    const auto* native = dynamic_cast<QtNativeWindow*>(parent);
    if (QWindow* own = qWindow()) own->setTransientParent(native ? native->qWindow() : nullptr);
  }
  void setCursor(CursorShape shape) override {
    if (!host_) return;
    for (const Embedded& embedded : host_->embedded_)
      if (embedded.widget->underMouse()) embedded.widget->setCursor(qtCursorOf(shape));
  }
  void setToolTip(const std::string& text) override {
    if (!host_) return;
    const auto isUnderMouse = [](const Embedded& embedded) { return embedded.widget->underMouse(); };
    const auto under = std::find_if(host_->embedded_.begin(), host_->embedded_.end(), isUnderMouse);
    toolTip_.set(text, under == host_->embedded_.end() ? nullptr : under->widget);
  }
  double scale() const override { return host_ ? host_->topLevel_.devicePixelRatioF() : 1; }
  std::optional<Screen> screen() const override {
    if (!host_) return std::nullopt;
    return screenOf(*host_->topLevel_.screen());
  }
  void scheduleDisplay() override {
    if (host_ && !host_->displayTimer_.isActive()) host_->displayTimer_.start(0);
  }
  // Qt says when a window's next frame is due, but for one with widgets only by painting them all.
  void callAtNextFrame(std::function<void()> block) override {
    if (!host_) return;
    const double framesPerSecond = std::max(1.0, host_->topLevel_.screen()->refreshRate());
    QTimer::singleShot(static_cast<int>(1000 / framesPerSecond), Qt::PreciseTimer, host_, std::move(block));
  }
  void paint(std::span<const CGRect> dirty, const std::function<void(Canvas&)>& painter) override {
    if (host_) host_->paint(dirty, painter);
  }
  void firstResponderDidChange() override {
    if (host_) host_->followFirstResponder();
    notifyInputMethodOfChange();
  }
  void textInputDidChange() override { notifyInputMethodOfChange(); }
  void discardMarkedText() override { resetInputMethod(); }
  void intrinsicContentSizeDidChange(NSView& view) override {
    if (host_) host_->sizeHintChanged(view);
  }
  bool moveFocus(FocusStep step) override { return host_ && host_->moveFocus(step); }
  QWindow* qWindow() const override { return host_ ? host_->topLevel_.windowHandle() : nullptr; }
  void screenSpaceHasMoved() override {
    if (host_) host_->placeTopLevel();
  }

 private:
  EmbeddingHost* host_;
  ToolTip toolTip_;
};

EmbeddingHost::EmbeddingHost(QWidget& topLevel)
    : topLevel_(topLevel),
      window_(make<NSWindow>(rectOnScreen(topLevel.geometry()), NSWindowStyleMaskTitled, NSBackingStoreBuffered, true)),
      native_(new NativeSide(*this)),
      knownScale_(topLevel.devicePixelRatioF()) {
  displayTimer_.setSingleShot(true);
  wheel_.setSingleShot(true);
  connect(&displayTimer_, &QTimer::timeout, this, &EmbeddingHost::display);
  const auto content = make<FlippedView>(CGRect{});
  window_->setContentView(content);
  window_->setOpaque(false);
  window_->setBackgroundColor(NSColor::clearColor());
  window_->adoptNativeWindow(std::unique_ptr<NativeWindow>(native_));
  activationChanged();
}

EmbeddingHost::~EmbeddingHost() {
  native_->hostIsGone();
  for (const Embedded& embedded : embedded_) embedded.clip->removeFromSuperview();
  window_->close();
}

WindowInput& EmbeddingHost::input() { return window_->windowClient().input(); }

void EmbeddingHost::add(QtViewWidget& widget) {
  // Not flipped: in an embedded view's superview y counts up, as it does for the view of a window.
  const auto clip = make<WidgetClip>(CGRect{});
  clip->setAutoresizesSubviews(false);
  clip->setHidden(true);
  clip->setEnablesControls(widget.isEnabled());
  // The widget places it, whatever it was made for.
  widget.view()->setTranslatesAutoresizingMaskIntoConstraints(true);
  clip->addSubview(widget.view());
  window_->contentView()->addSubview(clip);
  const Embedded embedded{&widget, clip};
  embedded_.push_back(embedded);
  clips_[&widget] = clip;
  place(embedded);
}

void EmbeddingHost::remove(QtViewWidget& widget) {
  const auto found =
      std::find_if(embedded_.begin(), embedded_.end(), [&](const Embedded& embedded) { return embedded.widget == &widget; });
  if (found == embedded_.end()) return;
  const Ref<NSView> clip = found->clip;
  embedded_.erase(found);
  clips_.erase(&widget);
  clip->removeFromSuperview();
  // The view may be on its way to another host and has left already.
  if (widget.view()->superview() == clip.get()) widget.view()->removeFromSuperview();
}

bool EmbeddingHost::isHere(const Embedded& embedded) const {
  const auto found = clips_.find(embedded.widget);
  return found != clips_.end() && found->second == embedded.clip;
}

// All of the widgets in the rows of a list move when it scrolls, each with a word of its own: one without others in it looks
// for none.
std::vector<EmbeddingHost::Embedded> EmbeddingHost::embeddedIn(QWidget& widget) const {
  std::vector<Embedded> result;
  if (!widget.children().isEmpty()) {
    for (const Embedded& embedded : embedded_)
      if (widget.isAncestorOf(embedded.widget)) result.push_back(embedded);
  } else if (const auto found = clips_.find(&widget); found != clips_.end()) {
    result.push_back({static_cast<QtViewWidget*>(&widget), found->second});
  }
  return result;
}

void EmbeddingHost::placeChanged(QWidget& widget) {
  const QPointer<EmbeddingHost> held = this;
  const bool mayBeScrolled = isInScrollArea(widget);  // which may be gone when it has been placed
  const std::vector<Embedded> concerned = embeddedIn(widget);
  if (&widget == &topLevel_) placeTopLevel();
  for (const Embedded& embedded : concerned)
    if (held && isHere(embedded)) place(embedded);
  if (!held || !wheel_.isActive() || !mayBeScrolled) return;
  for (const Embedded& embedded : concerned)
    if (isHere(embedded)) window_->contentWasScrolledByUser(*embedded.clip);
}

void EmbeddingHost::placeTopLevel() {
  const QPointer<EmbeddingHost> held = this;
  const bool isVisible = topLevel_.isVisible();
  CGRect content = rectOnScreen(topLevel_.geometry());
  // Widgets count their pixels from above, windows theirs from below: both agree on a height of whole pixels.
  const double scale = topLevel_.devicePixelRatioF();
  const double height = std::ceil(content.size.height * scale - 1e-6) / scale;
  content = {content.origin.x, content.origin.y + content.size.height - height, content.size.width, height};
  window_->windowClient().nativeFrameChanged(content);
  if (!held || isVisible == window_->isVisible()) return;
  if (isVisible) window_->orderFront(nullptr);
  else window_->orderOut(nullptr);
}

void EmbeddingHost::place(const Embedded& embedded) {
  const QPointer<EmbeddingHost> held = this;
  const QtViewWidget& widget = *embedded.widget;
  embedded.clip->setHidden(!widget.isVisible());
  if (!widget.isVisible() || !held || !isHere(embedded)) return;
  const double scale = topLevel_.devicePixelRatioF();
  const QRect visible = visibleRectOf(widget, topLevel_);
  const CGRect whole = shownPixels({widget.mapTo(&topLevel_, QPoint(0, 0)), widget.size()}, scale);
  // Out of sight is not hidden, which would end a press and an editing: a window that shrinks has its widgets below its edge
  // until it lays them out.
  const CGRect clip = shownPixels(visible, scale);
  const Ref<NSView> view = widget.view();
  embedded.clip->setFrame(clip);
  if (view->superview() != embedded.clip.get()) return;
  view->setFrame({{whole.origin.x - clip.origin.x, CGRectGetMaxY(clip) - CGRectGetMaxY(whole)}, whole.size});
}

void EmbeddingHost::enabledChanged(QtViewWidget& widget) {
  for (const Embedded& embedded : std::vector(embedded_))
    if (embedded.widget == &widget) return embedded.clip->setEnablesControls(widget.isEnabled());
}

void EmbeddingHost::activationChanged() {
  // A window that appears may be given its place without a word to its widget.
  const QPointer<EmbeddingHost> held = this;
  placeTopLevel();
  if (!held) return;
  const bool isActive = topLevel_.isActiveWindow();
  // While the window rested, the widget may have been hidden or another one given the focus: Qt does not say that this one lost it.
  const QtViewWidget* widget = widgetOf(window_->firstResponder());
  const bool isFocused = widget && widget->isVisible() && widget == topLevel_.focusWidget();
  if (isActive && widget && !isFocused) window_->makeFirstResponder(nullptr);
  if (held) window_->windowClient().nativeKeyStatusChanged(isActive);
}

void EmbeddingHost::scaleMayHaveChanged() {
  const double scale = topLevel_.devicePixelRatioF();
  if (std::exchange(knownScale_, scale) == scale) return;
  placeChanged(topLevel_);
  window_->windowClient().nativeScaleChanged();
}

void EmbeddingHost::display() { window_->displayIfNeeded(); }

void EmbeddingHost::paint(std::span<const CGRect> dirty, const std::function<void(Canvas&)>& painter) {
  picture_.setSize(window_->frame().size, topLevel_.devicePixelRatioF());
  const QRegion changed = picture_.paint(dirty, painter);
  for (const Embedded& embedded : embedded_) {
    if (!embedded.widget->isVisible()) continue;
    embedded.widget->update(changed.translated(-embedded.widget->mapTo(&topLevel_, QPoint(0, 0))));
  }
}

void EmbeddingHost::paintWidget(QtViewWidget& widget, QPainter& painter) {
  scaleMayHaveChanged();
  display();
  painter.drawImage(QPointF(-widget.mapTo(&topLevel_, QPoint(0, 0))), picture_.image());
}

QtViewWidget* EmbeddingHost::widgetOf(const NSResponder* responder) const {
  const auto* view = dynamic_cast<const NSView*>(responder);
  return view ? widgetOf(*view) : nullptr;
}

QtViewWidget* EmbeddingHost::widgetOf(const NSView& view) const {
  for (const Embedded& embedded : embedded_)
    if (view.isDescendantOf(embedded.widget->view().get())) return embedded.widget;
  return nullptr;
}

void EmbeddingHost::followFirstResponder() {
  // Where there is none for now, Qt's focus stays: the keys find the window.
  QtViewWidget* widget = widgetOf(window_->firstResponder());
  if (widget) widget->setFocus(Qt::OtherFocusReason);
}

void EmbeddingHost::focusEntered(QtViewWidget& widget, Qt::FocusReason reason) {
  const bool isTab = reason == Qt::TabFocusReason || reason == Qt::BacktabFocusReason;
  if (AccessibilityBridge* accessibility = QtBackend::accessibility()) accessibility->focusMayHaveChanged();
  if (!isTab && widgetOf(window_->firstResponder()) == &widget) return;
  const QPointer<EmbeddingHost> held = this;
  const QPointer<QtViewWidget> entered = &widget;
  const Ref<NSWindow> window = window_;
  const Ref<NSView> view = widget.view();
  if (!window->makeFirstResponder(nullptr) || !held || !entered) return;
  const FocusStep step = reason == Qt::BacktabFocusReason ? FocusStep::Previous : FocusStep::Next;
  const bool isKey = isTab || reason == Qt::ShortcutFocusReason;
  const FocusRing::Cause cause = isKey ? FocusRing::Cause::Key : FocusRing::Cause::Program;
  if (window->selectKeyViewWithin(*view, step, cause) || !isTab || !held || !entered) return;
  // Nothing in this view takes keys: the chain continues, unless it has gone round already.
  if (passedOver_ >= embedded_.size()) return;
  ++passedOver_;
  if (AccessibilityBridge* accessibility = QtBackend::accessibility()) accessibility->focusWasPassedOn();
  entered->passFocusOn(step);
  if (held) --passedOver_;
}

void EmbeddingHost::focusLeft(QtViewWidget& widget, Qt::FocusReason reason) {
  // A window that rests, or a menu above it, brings the focus back.
  const bool comesBack =
      reason == Qt::ActiveWindowFocusReason || reason == Qt::PopupFocusReason || reason == Qt::MenuBarFocusReason;
  if (comesBack || widgetOf(window_->firstResponder()) != &widget) return;
  window_->makeFirstResponder(nullptr);
}

QRect EmbeddingHost::placeOfKeyboard(const QtViewWidget& widget) const {
  const NSView& whole = *widget.view();
  const auto* view = dynamic_cast<const NSView*>(window_->firstResponder());
  if (!view || !view->isDescendantOf(&whole)) return {};
  CGRect place = view->focusRingMaskBounds();
  if (NSIsEmptyRect(place)) place = view->bounds();
  for (; view != &whole; view = view->superview()) {
    place = view->convertRectToView(place, view->superview());
    if (dynamic_cast<const NSClipView*>(view->superview())) place = NSIntersectionRect(place, view->superview()->bounds());
  }
  const CGRect all = whole.bounds();
  const CGFloat top = whole.isFlipped() ? place.origin.y - all.origin.y : CGRectGetMaxY(all) - CGRectGetMaxY(place);
  return QRectF(place.origin.x - all.origin.x, top, place.size.width, place.size.height).toAlignedRect();
}

bool EmbeddingHost::moveFocus(FocusStep step) {
  QPointer<QtViewWidget> widget = widgetOf(window_->firstResponder());
  for (const Embedded& embedded : embedded_)
    if (!widget && embedded.widget->hasFocus()) widget = embedded.widget;
  if (!widget) return false;
  const QPointer<EmbeddingHost> held = this;
  const Ref<NSWindow> window = window_;
  const Ref<NSView> view = widget->view();
  const auto movesWithin = [&] {
    if (!window->selectKeyViewWithin(*view, step)) return false;
    if (held) bringIntoSight(widget);
    return true;
  };
  if (movesWithin()) return true;
  // Editing ends before Qt's focus moves: the one who is asked may refuse, or delete the widgets that Qt is about to look at.
  if (!window->makeFirstResponder(nullptr) || !held || !widget || widget->passFocusOn(step)) return true;
  // Nobody else takes the focus: round again.
  return !held || movesWithin();
}

void EmbeddingHost::sizeHintChanged(NSView& view) {
  if (QtViewWidget* widget = widgetOf(view)) widget->sizeMayHaveChanged();
}

}  // namespace tessaluna::backend::qt
