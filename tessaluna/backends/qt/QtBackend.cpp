#include "tessaluna/backends/qt/QtBackend.h"

#include <QApplication>
#include <QClipboard>
#include <QCursor>
#include <QGuiApplication>
#include <QMouseEvent>
#include <QPointer>
#include <QScreen>
#include <QStyle>
#include <QStyleHints>
#include <QTimer>
#include <QWidget>
#include <algorithm>
#include <chrono>
#include <cmath>
#include <utility>

#include "tessaluna/backends/qt/AccessibilityBridge.h"
#include "tessaluna/backends/qt/EmbeddingHosts.h"
#include "tessaluna/backends/qt/QtViewWidget.h"
#include "tessaluna/backends/qt/QtWindow.h"
#include "tessaluna/backends/qt/decodeImage.h"
#include "tessaluna/backends/qt/keyTranslation.h"
#include "tessaluna/backends/qt/screenSpace.h"
#include "tessaluna/backends/qt/systemColors.h"
#include "tessaluna/platform/foundation/stopProgram.h"
#include "tessaluna/platform/views/NSView.h"
#include "tessaluna/platform/windows/NSApplication.h"
#include "tessaluna/platform/windows/NSWindow.h"
#include "tessaluna/platform/windows/WindowInput.h"
#include "tessaluna/platform/windows/effectiveAppearance.h"

namespace tessaluna::backend::qt {

using namespace tessaluna::platform;

// Sees every event of the program before its receiver does.
class QtBackend::ApplicationFilter : public QObject {
 public:
  explicit ApplicationFilter(QtBackend& backend) : backend_(backend) {
    qApp->installEventFilter(this);
    connect(qApp, &QGuiApplication::applicationStateChanged, this, [](Qt::ApplicationState state) {
      if (NSApp) NSApp->setActive(state == Qt::ApplicationActive);
    });
    connect(qApp, &QGuiApplication::layoutDirectionChanged, this, effectiveAppearanceDidChange);
    connect(qApp, &QGuiApplication::primaryScreenChanged, this, &ApplicationFilter::followPrimaryScreen);
    followPrimaryScreen(QGuiApplication::primaryScreen());
  }

  bool eventFilter(QObject* receiver, QEvent* event) override {
    const QPointer<QObject> held = receiver;  // what the event calls may delete it: then nobody gets the event
    switch (event->type()) {
      case QEvent::MouseButtonPress:
      case QEvent::MouseButtonDblClick:
        if (receiver->isWidgetType() && !dynamic_cast<QtViewWidget*>(receiver))
          pressedElsewhere(static_cast<const QMouseEvent&>(*event));
        break;
      case QEvent::ApplicationFontChange:
        if (receiver == qApp) backend_.textEngine_.forgetFonts();
        [[fallthrough]];
      case QEvent::ApplicationPaletteChange:
        if (receiver == qApp) effectiveAppearanceDidChange();
        break;
      default:
        if (receiver->isWidgetType()) backend_.hosts_->observe(static_cast<QWidget&>(*receiver), *event);
    }
    return !held;
  }

 private:
  // A widget that does not want a press hands it to its parent: it counts once.
  void pressedElsewhere(const QMouseEvent& event) {
    const std::pair press(event.timestamp(), event.globalPosition());
    if (std::exchange(lastPress_, press) == press) return;
    sendPressElsewhere(pointOnScreen(event.globalPosition()), buttonNumberOf(event.button()),
                       modifierFlagsOf(event.modifiers(), backend_.commandKey()));
  }

  // Where screen space has its origin.
  void followPrimaryScreen(QScreen* screen) {
    if (screen)
      connect(screen, &QScreen::geometryChanged, this, &ApplicationFilter::originMayHaveMoved, Qt::UniqueConnection);
    originMayHaveMoved();
  }
  void originMayHaveMoved() {
    if (!NSApp) return;
    for (const Ref<NSWindow>& window : NSApp->windows())
      if (!window->parentWindow()) placeAgain(*window);
  }
  // Parents first: their children move with them.
  static void placeAgain(NSWindow& window) {
    if (auto* native = dynamic_cast<QtNativeWindow*>(window.nativeWindow())) native->screenSpaceHasMoved();
    for (const Ref<NSWindow>& child : window.childWindows()) placeAgain(*child);
  }

  QtBackend& backend_;
  std::pair<quint64, QPointF> lastPress_;
};

QtBackend::QtBackend() {
  if (!qobject_cast<QGuiApplication*>(QCoreApplication::instance())) stopProgram("QtBackend: made before the QApplication");
  hosts_ = std::make_unique<EmbeddingHosts>();
  accessibility_ = std::make_unique<AccessibilityBridge>(*hosts_);
  filter_ = std::make_unique<ApplicationFilter>(*this);
}

// The hosts' windows close with them, and would report it.
QtBackend::~QtBackend() {
  elsewhere_.clear();
  elsewhere_.waitForDone();
  accessibility_.reset();
}

QtBackend& QtBackend::current() {
  auto* backend = dynamic_cast<QtBackend*>(Backend::current());
  if (!backend) stopProgram("QtBackend: there is none");
  return *backend;
}

AccessibilityBridge* QtBackend::accessibility() {
  auto* backend = dynamic_cast<QtBackend*>(Backend::current());
  return backend ? backend->accessibility_.get() : nullptr;
}

std::unique_ptr<NativeWindow> QtBackend::makeWindow(WindowClient& client, const WindowOptions& options) {
  return std::make_unique<QtWindow>(client, options);
}

std::vector<Screen> QtBackend::screens() const { return allScreens(); }

CGPoint QtBackend::mouseLocation() const { return pointOnScreen(QCursor::pos()); }

ClickLimits QtBackend::clickLimits() const {
  const QStyleHints* hints = QGuiApplication::styleHints();
  return {.seconds = hints->mouseDoubleClickInterval() / 1000.0, .points = double(hints->mouseDoubleClickDistance())};
}

LayoutDirection QtBackend::layoutDirection() const {
  return QGuiApplication::isRightToLeft() ? LayoutDirection::RightToLeft : LayoutDirection::LeftToRight;
}

Color QtBackend::systemColor(SystemColor color) const { return systemColorOf(color); }

std::unique_ptr<NativeMenu> QtBackend::popUpMenu(NativeWindow& window, const MenuPlace& place,
                                                 std::vector<MenuEntry> entries,
                                                 std::function<void(std::optional<std::size_t>)> chosen) {
  return menu_.open(dynamic_cast<const QtNativeWindow&>(window).qWindow(), place, entries, std::move(chosen));
}

std::string QtBackend::clipboardText() const { return QGuiApplication::clipboard()->text().toStdString(); }

void QtBackend::setClipboardText(const std::string& text) {
  QGuiApplication::clipboard()->setText(QString::fromStdString(text));
}

bool QtBackend::hasPrimarySelection() const { return QGuiApplication::clipboard()->supportsSelection(); }

std::string QtBackend::primarySelectionText() const {
  return QGuiApplication::clipboard()->text(QClipboard::Selection).toStdString();
}

void QtBackend::setPrimarySelectionText(const std::string& text) {
  QGuiApplication::clipboard()->setText(QString::fromStdString(text), QClipboard::Selection);
}

std::shared_ptr<const ImagePixels> QtBackend::decodeImage(std::span<const std::byte> bytes) const {
  return qt::decodeImage(bytes);
}

double QtBackend::now() const {
  return std::chrono::duration<double>(std::chrono::steady_clock::now().time_since_epoch()).count();
}

void QtBackend::callAfter(double seconds, std::function<void()> block) {
  // Qt counts milliseconds in an int. Rounded up: a block never runs too early.
  constexpr double longest = 2e9;
  const double delay = std::clamp(std::isnan(seconds) ? 0.0 : std::ceil(seconds * 1000), 0.0, longest);
  QTimer::singleShot(static_cast<int>(delay), Qt::PreciseTimer, &clock_, std::move(block));
}

void QtBackend::callElsewhere(std::function<void()> work, std::function<void()> answer) {
  // The other thread only borrows: what the blocks hold may belong to this one.
  const auto asked =
      std::make_shared<std::pair<std::function<void()>, std::function<void()>>>(std::move(work), std::move(answer));
  elsewhere_.start([this, asked]() mutable {
    asked->first();
    QMetaObject::invokeMethod(
        &clock_, [asked = std::move(asked)] { asked->second(); }, Qt::QueuedConnection);
  });
}

// A style that animates nothing says so for all of the desktop. A program without widgets has no style.
bool QtBackend::prefersReducedMotion() const {
  return qobject_cast<QApplication*>(QCoreApplication::instance()) &&
         QApplication::style()->styleHint(QStyle::SH_Widget_Animation_Duration) == 0;
}

}  // namespace tessaluna::backend::qt
