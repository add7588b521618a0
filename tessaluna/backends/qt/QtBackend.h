// The desktop as Qt 6 shows it: real windows, input, screens and time. Make it after the QApplication and destroy it before:
//
//   QApplication qt(argc, argv);
//   backend::qt::QtBackend desktop;
//   auto application = platform::NSApplication::sharedApplication();
//   auto window = platform::make<platform::NSWindow>(...);
//   window->makeKeyAndOrderFront(nullptr);
//   return qt.exec();
//
// A program with widgets of its own embeds views with QtViewWidget.
#pragma once

#include <QObject>
#include <QThreadPool>
#include <memory>

#include "tessaluna/backends/qt/CommandKey.h"
#include "tessaluna/backends/qt/PopUpMenu.h"
#include "tessaluna/backends/qt/QtTextEngine.h"
#include "tessaluna/platform/backend/Backend.h"
#include "tessaluna/platform/backend/PrimarySelection.h"

class QWidget;

namespace tessaluna::backend::qt {

class AccessibilityBridge;
class EmbeddingHosts;

class QtBackend : public Backend, public PrimarySelection {
 public:
  QtBackend();
  ~QtBackend() override;

  // The current one; the program stops without one.
  static QtBackend& current();

  // Meta unless the host chooses otherwise. A change applies to the keys that follow.
  CommandKey commandKey() const { return commandKey_; }
  void setCommandKey(CommandKey key) { commandKey_ = key; }

  std::unique_ptr<NativeWindow> makeWindow(WindowClient& client, const WindowOptions& options) override;
  std::vector<Screen> screens() const override;
  CGPoint mouseLocation() const override;
  Color systemColor(SystemColor color) const override;
  ClickLimits clickLimits() const override;
  LayoutDirection layoutDirection() const override;
  std::unique_ptr<NativeMenu> popUpMenu(NativeWindow& window, const MenuPlace& place, std::vector<MenuEntry> entries,
                                        std::function<void(std::optional<std::size_t>)> chosen) override;
  std::string clipboardText() const override;
  void setClipboardText(const std::string& text) override;
  bool hasPrimarySelection() const override;
  std::string primarySelectionText() const override;
  void setPrimarySelectionText(const std::string& text) override;
  const TextEngine& textEngine() const override { return textEngine_; }
  std::shared_ptr<const ImagePixels> decodeImage(std::span<const std::byte> bytes) const override;
  double now() const override;
  void callAfter(double seconds, std::function<void()> block) override;
  void callElsewhere(std::function<void()> work, std::function<void()> answer) override;
  bool prefersReducedMotion() const override;

  EmbeddingHosts& hosts() { return *hosts_; }
  // That of the current backend; null without one, and while it is being destroyed.
  static AccessibilityBridge* accessibility();

 private:
  class ApplicationFilter;

  CommandKey commandKey_ = CommandKey::Meta;
  QtTextEngine textEngine_;
  PopUpMenu menu_;
  QObject clock_;          // what is still to be called is forgotten with it
  QThreadPool elsewhere_;  // gone before the clock that its answers go to
  std::unique_ptr<EmbeddingHosts> hosts_;
  std::unique_ptr<AccessibilityBridge> accessibility_;
  std::unique_ptr<ApplicationFilter> filter_;
};

}  // namespace tessaluna::backend::qt
