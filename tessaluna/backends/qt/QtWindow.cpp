#include "tessaluna/backends/qt/QtWindow.h"

#include <QCloseEvent>
#include <QGuiApplication>
#include <QPainter>
#include <QRasterWindow>
#include <QTimer>
#include <algorithm>
#include <cmath>
#include <optional>

#include "tessaluna/backends/qt/AccessibilityBridge.h"
#include "tessaluna/backends/qt/KeptPicture.h"
#include "tessaluna/backends/qt/QtBackend.h"
#include "tessaluna/backends/qt/ToolTip.h"
#include "tessaluna/backends/qt/UnseenChange.h"
#include "tessaluna/backends/qt/cursorShapes.h"
#include "tessaluna/backends/qt/inputEvents.h"
#include "tessaluna/backends/qt/screenSpace.h"
#include "tessaluna/backends/qt/x11.h"
#include "tessaluna/platform/windows/NSWindow.h"

namespace tessaluna::backend::qt {

namespace {

Qt::WindowFlags flagsOf(const WindowOptions& options) {
  Qt::WindowFlags flags = options.isPanel ? Qt::Tool : Qt::Window;
  switch (options.kind) {
    case WindowKind::Titled:
      flags |= Qt::CustomizeWindowHint | Qt::WindowTitleHint | Qt::WindowSystemMenuHint;
      flags.setFlag(Qt::WindowCloseButtonHint, options.isClosable);
      flags.setFlag(Qt::WindowMinimizeButtonHint, options.isMiniaturizable);
      flags.setFlag(Qt::WindowMaximizeButtonHint, options.isResizable);
      break;
    case WindowKind::Borderless: flags |= Qt::FramelessWindowHint; break;
    case WindowKind::Popup: flags = Qt::ToolTip | Qt::FramelessWindowHint; break;
  }
  if (!options.hasShadow) flags |= Qt::NoDropShadowWindowHint;
  if (!options.canBecomeKey) flags |= Qt::WindowDoesNotAcceptFocus;
  return flags;
}

bool isOnWayland() { return QGuiApplication::platformName().startsWith("wayland"); }

// A Wayland compositor places a pop-up when it appears and never again.
bool movesOnlyWhenHidden(const QWindow& window) { return window.type() == Qt::ToolTip && isOnWayland(); }

}  // namespace

class QtWindow::Surface : public QRasterWindow {
 public:
  Surface(WindowClient& client, const WindowOptions& options)
      : client_(&client), wanted_(options.content), isFixed_(options.kind == WindowKind::Titled && !options.isResizable) {
    setFlags(flagsOf(options));
    if (!options.isOpaque) {
      QSurfaceFormat translucent = requestedFormat();
      translucent.setAlphaBufferSize(8);
      setFormat(translucent);
    }
    // To come to the front and to take the keyboard are two wishes.
    setProperty("_q_showWithoutActivating", true);
    take(qtRectOf(wanted_));
    connect(this, &QWindow::screenChanged, this, &Surface::scaleMayHaveChanged);
    displayTimer_.setSingleShot(true);
    connect(&displayTimer_, &QTimer::timeout, this, &Surface::display);
  }

  // As the other was a moment ago. What hangs on that hangs on this one now.
  void takePlaceOf(Surface& other) {
    setTitle(other.title());
    setCursor(other.cursor());
    stayAbove(other.transientParent());
    for (QWindow* window : QGuiApplication::allWindows())
      if (window->transientParent() != &other) continue;
      else if (auto* child = dynamic_cast<Surface*>(window)) child->stayAbove(this);
      else window->setTransientParent(this);
    for (auto& block : std::exchange(other.frameBlocks_, {})) callAtNextFrame(std::move(block));
    if (!other.isVisible()) return;
    const bool hasFocus = QGuiApplication::focusWindow() == &other;
    setWindowStates(other.windowStates());
    appear();
    if (hasFocus) requestActivate();
  }

  void stayAbove(QWindow* parent) {
    setTransientParent(parent);
    if (parent) parent->installEventFilter(this);
  }

  CGRect wantedFrame() const { return wanted_; }

  // The window that this one belongs to is going.
  void leave() {
    client_ = nullptr;
    toolTip_.set({});
    hide();
    if (depth_ == 0) delete this;
    else deleteLater();
  }

  void setWantedFrame(CGRect content) {
    wanted_ = content;
    const QRect place = qtRectOf(content);
    growsWithPicture_ = false;
    if (isVisible() && movesOnlyWhenHidden(*this) && place.topLeft() != geometry().topLeft()) {
      hide();
      take(place);
      show();
    } else if (isShownPopUp() && place.size() != size()) {
      growsWithPicture_ = place.width() > width() || place.height() > height();
      if (!growsWithPicture_) {
        client_->nativeDisplay();
        changeUnseen([&] { take(place); });
      }
    } else {
      take(place);
    }
  }

  // One that shows stays where it is on the desktop, and a hidden one where it is in screen space.
  void followScreenSpace() {
    if (isVisible()) placeMayHaveChanged();
    else take(qtRectOf(wanted_));
  }

  void appear() {
    // QWindow::show would also make a maximized window normal.
    if (type() != Qt::ToolTip || isOnWayland()) return setVisible(true);
    client_->nativeDisplay();
    changeUnseen([&] {
      show();
      placeToThePixel();
    });
  }

  void willClose() { willClose_ = true; }
  // A request of the user to close the window ends as what it is.
  void disappear() {
    if (!std::exchange(willClose_, false) || closing_ != Closing::No) return hide();
    closing_ = Closing::ByProgram;
    close();
    closing_ = Closing::No;
    if (isVisible()) hide();  // a filter of the program's may have kept it open
  }

  void requestFocus() {
    requestActivate();
    // To Qt a window that was hidden may still be the one with the focus, and then nothing changes.
    if (client_ && QGuiApplication::focusWindow() == this) client_->nativeKeyStatusChanged(true);
  }

  void setToolTip(const std::string& text) { toolTip_.set(text); }

  void scheduleDisplay() {
    if (!displayTimer_.isActive()) displayTimer_.start(0);
  }

  void callAtNextFrame(std::function<void()> block) {
    frameBlocks_.push_back(std::move(block));
    requestUpdate();
  }

  void paintPicture(std::span<const CGRect> dirty, const std::function<void(Canvas&)>& painter) {
    const platform::Ref<platform::NSWindow> window = client_->eventWindow();
    if (!window) return;
    picture_.setSize(window->frame().size, devicePixelRatio());
    QRegion changed = picture_.paint(dirty, painter);
    if (picture_.completeEdges() || isLargerThanPicture()) changed += edges();
    if (std::exchange(growsWithPicture_, false)) changeUnseen([&] { take(qtRectOf(wanted_)); });
    else update(changed);
  }

  QAccessibleInterface* accessibleRoot() const override {
    AccessibilityBridge* accessibility = QtBackend::accessibility();
    const platform::Ref<platform::NSWindow> window = client_ ? client_->eventWindow() : nullptr;
    return accessibility && window ? accessibility->rootOf(window) : nullptr;
  }

 protected:
  // A window is where it was asked to be when the window manager has put it there.
  bool eventFilter(QObject* watched, QEvent* event) override {
    if (watched == transientParent() && event->type() == QEvent::Move && isPlacedToThePixel_) placeToThePixel();
    return QRasterWindow::eventFilter(watched, event);
  }
  bool event(QEvent* event) override {
    if (!client_) return QRasterWindow::event(event);
    ++depth_;
    const bool isDone = handle(event) || QRasterWindow::event(event);
    --depth_;
    return isDone;
  }

  void closeEvent(QCloseEvent* event) override {
    if (!client_ || closing_ == Closing::ByProgram) return;
    closing_ = Closing::ByUser;
    client_->nativeCloseRequested();
    closing_ = Closing::No;
    event->setAccepted(!isVisible());
  }

  void paintEvent(QPaintEvent*) override {
    if (client_) {
      scaleMayHaveChanged();
      client_->nativeDisplay();
    }
    QPainter painter(this);
    painter.setCompositionMode(QPainter::CompositionMode_Source);
    painter.drawImage(QPointF(0, 0), picture_.image());
    if (isLargerThanPicture()) continuePicture(painter);
  }

 private:
  bool handle(QEvent* event) {
    switch (event->type()) {
      case QEvent::UpdateRequest: beginFrame(); return false;
      case QEvent::Show:
        if (!frameBlocks_.empty()) requestUpdate();  // a hidden window has no frames
        return false;
      case QEvent::FocusIn: client_->nativeKeyStatusChanged(true); return false;
      case QEvent::FocusOut: client_->nativeKeyStatusChanged(false); return false;
      case QEvent::Move:
      case QEvent::Resize: placeMayHaveChanged(); return false;
      default: break;
    }
    const QPointF corner(mapToGlobal(QPoint(0, 0)));
    return sendInput(*event, {.input = client_->input(), .origin = QPointF(), .onScreen = corner});
  }

  // What the blocks change is in the picture of this frame.
  void beginFrame() {
    if (frameBlocks_.empty()) return;
    const std::vector<std::function<void()>> due = std::exchange(frameBlocks_, {});
    for (const auto& block : due)
      if (client_) block();
    if (client_) client_->nativeDisplay();
  }

  // A place between points is rounded outward, and the picture is as large as the place.
  QSize pixels() const {
    return {int(std::ceil(width() * devicePixelRatio() - 1e-6)), int(std::ceil(height() * devicePixelRatio() - 1e-6))};
  }
  bool isLargerThanPicture() const {
    return pixels().width() > picture_.image().width() || pixels().height() > picture_.image().height();
  }
  QRegion edges() const {
    constexpr int depth = 3;  // points, into which the last pixels fall at any scale
    return QRegion(rect()).subtracted(rect().adjusted(depth, depth, -depth, -depth));
  }
  // To the right and below by its last column and row.
  void continuePicture(QPainter& painter) const {
    const QImage& image = picture_.image();
    const int width = image.width(), height = image.height();
    const int right = std::max(pixels().width() - width, 0), below = std::max(pixels().height() - height, 0);
    painter.scale(1 / devicePixelRatio(), 1 / devicePixelRatio());
    painter.drawImage(QRect(width, 0, right, height), image, QRect(width - 1, 0, 1, height));
    painter.drawImage(QRect(0, height, width, below), image, QRect(0, height - 1, width, 1));
    painter.drawImage(QRect(width, height, right, below), image, QRect(width - 1, height - 1, 1, 1));
  }
  QRect rect() const { return {QPoint(0, 0), size()}; }

  // The user can give one that is not resizable no other size.
  void take(const QRect& place) {
    constexpr int anySide = (1 << 24) - 1;
    if (isFixed_) {
      setMinimumSize({0, 0});
      setMaximumSize({anySide, anySide});
    }
    setGeometry(place);
    placeToThePixel();
    if (!isFixed_) return;
    setMinimumSize(place.size());
    setMaximumSize(place.size());
  }

  // A pop-up shares edges with what is in its parent. In points Qt knows neither window's place at a scale that is not 1, and
  // rounds a width whatever it begins at: so a pop-up is placed by the pixels of its parent, where the desktop can say them.
  void placeToThePixel() {
    const double scale = devicePixelRatio();
    const QWindow* parent = transientParent();
    if (type() != Qt::ToolTip || scale == 1 || !parent) return;
    const std::optional<QPoint> corner = deviceCornerOf(*parent);
    if (!corner) return;
    const auto* surface = dynamic_cast<const Surface*>(parent);
    const CGRect around = surface ? surface->wanted_ : rectOnScreen(parent->geometry());
    const auto pixels = [&](double points) { return static_cast<int>(std::lround(points * scale)); };
    const int left = pixels(CGRectGetMinX(wanted_) - around.origin.x),
              right = pixels(CGRectGetMaxX(wanted_) - around.origin.x);
    const int top = pixels(CGRectGetMaxY(around) - CGRectGetMaxY(wanted_));
    const int bottom = pixels(CGRectGetMaxY(around) - CGRectGetMinY(wanted_));
    setDevicePlace(*this, {corner->x() + left, corner->y() + top, std::max(right - left, 1), std::max(bottom - top, 1)});
    isPlacedToThePixel_ = true;
  }
  // In points that may be one more or less on each side.
  bool isWherePlaced() const {
    const QRect wanted = qtRectOf(wanted_);
    if (!isPlacedToThePixel_) return geometry() == wanted;
    const QRect place = geometry();
    return std::max({std::abs(place.left() - wanted.left()), std::abs(place.top() - wanted.top()),
                     std::abs(place.right() - wanted.right()), std::abs(place.bottom() - wanted.bottom())}) <= 1;
  }

  // Wayland shows a window together with its first picture, and resizes it with its next one.
  bool isShownPopUp() const { return type() == Qt::ToolTip && isVisible() && !isOnWayland(); }

  // A pop-up that appears or changes its size has its picture at once: nobody sees it without.
  template <class Change>
  void changeUnseen(Change change) {
    create();
    const UnseenChange unseen;
    change();
    const QRect all(QPoint(0, 0), size());
    update(all);
    QPaintEvent paint(all);
    QCoreApplication::sendEvent(this, &paint);
  }

  void placeMayHaveChanged() {
    if (growsWithPicture_ || isWherePlaced()) return;
    wanted_ = rectOnScreen(geometry());
    client_->nativeFrameChanged(wanted_);
  }

  // Qt reports a new screen, but not always of a new scale of the same one.
  void scaleMayHaveChanged() {
    if (client_ && std::exchange(knownScale_, devicePixelRatio()) != devicePixelRatio()) client_->nativeScaleChanged();
  }

  void display() {
    ++depth_;
    if (client_) client_->nativeDisplay();
    --depth_;
  }

  WindowClient* client_;  // absent when it has gone
  KeptPicture picture_;
  CGRect wanted_;  // as it was asked for, or as the user or the desktop made it since
  QTimer displayTimer_;
  std::vector<std::function<void()>> frameBlocks_;
  const bool isFixed_;
  ToolTip toolTip_;
  bool isPlacedToThePixel_ = false;
  bool growsWithPicture_ = false;  // the wanted place is taken when the picture for it has been painted
  double knownScale_ = devicePixelRatio();
  int depth_ = 0;           // of events that are being handled
  bool willClose_ = false;  // with the next hide
  enum class Closing { No, ByUser, ByProgram } closing_ = Closing::No;
};

void QtWindow::Farewell::operator()(Surface* surface) const { surface->leave(); }

QtWindow::QtWindow(WindowClient& client, const WindowOptions& options)
    : client_(client), options_(options), surface_(new Surface(client, options)) {}
QtWindow::~QtWindow() = default;

void QtWindow::setFrame(CGRect content) { surface_->setWantedFrame(content); }
void QtWindow::show() {
  surface_->setWindowStates(surface_->windowStates() & ~Qt::WindowMinimized);
  surface_->appear();
}
void QtWindow::hide() { surface_->disappear(); }
void QtWindow::willClose() { surface_->willClose(); }
void QtWindow::raise() { surface_->raise(); }
void QtWindow::requestKey() { surface_->requestFocus(); }
void QtWindow::setTitle(const std::string& title) { surface_->setTitle(QString::fromStdString(title)); }
void QtWindow::setCursor(CursorShape shape) { surface_->setCursor(qtCursorOf(shape)); }

// A window of the desktop is translucent from its beginning or never.
void QtWindow::setOpaque(bool isOpaque) {
  options_.isOpaque = isOpaque;
  options_.content = surface_->wantedFrame();
  std::unique_ptr<Surface, Farewell> fresh(new Surface(client_, options_));
  fresh->takePlaceOf(*surface_);
  surface_ = std::move(fresh);
}

void QtWindow::setHasShadow(bool hasShadow) {
  options_.hasShadow = hasShadow;
  surface_->setFlag(Qt::NoDropShadowWindowHint, !hasShadow);
}

bool QtWindow::moveWithPointer() {
  // No window manager knows of a tool tip.
  return surface_->type() != Qt::ToolTip && surface_->startSystemMove();
}

void QtWindow::setToolTip(const std::string& text) { surface_->setToolTip(text); }
double QtWindow::scale() const { return surface_->devicePixelRatio(); }
void QtWindow::scheduleDisplay() { surface_->scheduleDisplay(); }
void QtWindow::callAtNextFrame(std::function<void()> block) { surface_->callAtNextFrame(std::move(block)); }
void QtWindow::firstResponderDidChange() { notifyInputMethodOfChange(); }
void QtWindow::textInputDidChange() { notifyInputMethodOfChange(); }
void QtWindow::discardMarkedText() { resetInputMethod(); }
QWindow* QtWindow::qWindow() const { return surface_.get(); }
void QtWindow::screenSpaceHasMoved() { surface_->followScreenSpace(); }

void QtWindow::setParent(NativeWindow* parent) {
  const auto* native = dynamic_cast<QtNativeWindow*>(parent);
  surface_->stayAbove(native ? native->qWindow() : nullptr);
}

std::optional<Screen> QtWindow::screen() const {
  if (!isOnWayland()) return screenShowing(surface_->wantedFrame(), allScreens());
  // Where its windows are a Wayland compositor keeps to itself.
  const QScreen* screen = surface_->screen();
  return screen ? std::optional(screenOf(*screen)) : std::nullopt;
}

void QtWindow::paint(std::span<const CGRect> dirty, const std::function<void(Canvas&)>& painter) {
  surface_->paintPicture(dirty, painter);
}

}  // namespace tessaluna::backend::qt
