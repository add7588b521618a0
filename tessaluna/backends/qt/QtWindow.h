// A window of its own on the desktop. A pop-up is a tool tip to Qt: it takes no focus, is above its parent and has no
// frame. Places that are not whole points are rounded outward; as long as nobody else moves the window, it reports the
// place that was asked for. Qt counts a window that closes, and ends a program with its last one.
#pragma once

#include <memory>

#include "tessaluna/backends/qt/QtNativeWindow.h"
#include "tessaluna/platform/backend/ClosingWindow.h"

namespace tessaluna::backend::qt {

class QtWindow : public QtNativeWindow, public ClosingWindow {
 public:
  QtWindow(WindowClient& client, const WindowOptions& options);
  ~QtWindow() override;

  void setFrame(CGRect content) override;
  void show() override;
  void hide() override;
  void willClose() override;
  void raise() override;
  void requestKey() override;
  void setParent(NativeWindow* parent) override;
  void setTitle(const std::string& title) override;
  void setCursor(CursorShape shape) override;
  void setOpaque(bool isOpaque) override;
  void setHasShadow(bool hasShadow) override;
  bool moveWithPointer() override;
  void setToolTip(const std::string& text) override;
  double scale() const override;
  std::optional<Screen> screen() const override;
  void scheduleDisplay() override;
  void callAtNextFrame(std::function<void()> block) override;
  void paint(std::span<const CGRect> dirty, const std::function<void(Canvas&)>& painter) override;
  void firstResponderDidChange() override;
  void textInputDidChange() override;
  void discardMarkedText() override;
  QWindow* qWindow() const override;
  void screenSpaceHasMoved() override;

 private:
  class Surface;
  struct Farewell {
    void operator()(Surface* surface) const;
  };
  WindowClient& client_;
  WindowOptions options_;
  std::unique_ptr<Surface, Farewell> surface_;
};

}  // namespace tessaluna::backend::qt
