// A backend as small as possible: a window is a bitmap, time passes only by pass(), and what the user does comes in as plain
// values. It shows that a backend needs no rules of its own. docs/backends.md explains it.
#pragma once

#include <map>
#include <memory>
#include <string>
#include <vector>

#include "tessaluna/backends/headless/HeadlessTextEngine.h"
#include "tessaluna/backends/raster/Bitmap.h"
#include "tessaluna/platform/backend/Backend.h"

namespace bitmap {

using namespace tessaluna::backend;
using tessaluna::platform::CGPoint;
using tessaluna::platform::CGRect;

class BitmapBackend;

class BitmapWindow : public NativeWindow {
 public:
  BitmapWindow(BitmapBackend& backend, WindowClient& client, const WindowOptions& options);
  ~BitmapWindow() override;

  const raster::Bitmap& picture() const { return *picture_; }
  CGRect frame() const { return frame_; }
  bool isVisible() const { return isVisible_; }
  bool canBecomeKey() const { return canBecomeKey_; }
  WindowClient& client() { return client_; }

  void setFrame(CGRect content) override;
  void show() override;
  void hide() override;
  void raise() override;
  void requestKey() override;
  void setParent(NativeWindow*) override {}  // only the order of showing decides which window is in front
  void setTitle(const std::string&) override {}
  void setCursor(CursorShape) override {}
  void setOpaque(bool) override {}
  void setHasShadow(bool) override {}
  void setToolTip(const std::string&) override {}
  double scale() const override { return 1; }
  std::optional<Screen> screen() const override;
  void scheduleDisplay() override;
  void paint(std::span<const CGRect> dirty, const std::function<void(Canvas&)>& painter) override;
  void callAtNextFrame(std::function<void()> block) override;

 private:
  void makePicture();

  BitmapBackend& backend_;
  WindowClient& client_;
  CGRect frame_;
  bool canBecomeKey_;
  bool isVisible_ = false;
  std::optional<raster::Bitmap> picture_;
  Timer display_, nextFrame_;
  std::vector<std::function<void()>> frameBlocks_;
};

// The screen is 800 by 600 points. The user's places count from its lower left corner.
class BitmapBackend : public Backend {
 public:
  static constexpr CGRect wholeScreen{0, 0, 800, 600};

  void pass(double seconds);  // runs what becomes due

  // What a user does, to the frontmost window under the pointer or to the key window.
  void move(CGPoint place);
  void press();
  void release();
  void turnWheel(double lines);
  void type(KeyInput key);  // down and up

  BitmapWindow* windowAt(CGPoint place) const;                            // null if there is none
  const std::vector<BitmapWindow*>& windows() const { return windows_; }  // the frontmost one last

  std::unique_ptr<NativeWindow> makeWindow(WindowClient& client, const WindowOptions& options) override;
  std::vector<Screen> screens() const override { return {{.frame = wholeScreen, .visibleFrame = wholeScreen}}; }
  CGPoint mouseLocation() const override { return pointer_; }
  std::unique_ptr<NativeMenu> popUpMenu(NativeWindow&, const MenuPlace&, std::vector<MenuEntry>,
                                        std::function<void(std::optional<std::size_t>)> chosen) override;
  std::string clipboardText() const override { return clipboard_; }
  void setClipboardText(const std::string& text) override { clipboard_ = text; }
  const TextEngine& textEngine() const override { return textEngine_; }
  std::shared_ptr<const ImagePixels> decodeImage(std::span<const std::byte>) const override { return nullptr; }
  double now() const override { return now_; }
  void callAfter(double seconds, std::function<void()> block) override;
  void callElsewhere(std::function<void()> work, std::function<void()> answer) override;

 private:
  friend class BitmapWindow;
  void pointer(PointerInput input);
  void setKeyWindow(BitmapWindow* window);

  double now_ = 0;
  std::multimap<double, std::function<void()>> blocks_;  // by the time when they become due
  std::vector<BitmapWindow*> windows_;
  BitmapWindow* keyWindow_ = nullptr;
  BitmapWindow* under_ = nullptr;  // under the pointer; null if there is none
  CGPoint pointer_;
  bool isDown_ = false;
  std::string clipboard_;
  headless::HeadlessTextEngine textEngine_;
};

}  // namespace bitmap
