// A window in memory. It remembers its calls and everything that was painted into it, as recorded lines and, where
// the desktop was asked for pictures, as pixels.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "tessaluna/backends/raster/Bitmap.h"
#include "tessaluna/platform/backend/Backend.h"
#include "tessaluna/platform/views/Forward.h"

namespace tessaluna::backend::headless {

class HeadlessBackend;

enum class Pictures { RecordedOnly, Painted };

// One opening of the kept picture.
struct Paint {
  std::vector<CGRect> dirty;       // base space
  std::vector<std::string> lines;  // what the painter did, as the recording canvas writes it
};

class HeadlessWindow : public NativeWindow {
 public:
  // The native side of a window that has one; otherwise the program stops.
  static HeadlessWindow& of(const platform::NSWindow& window);

  HeadlessWindow(HeadlessBackend& backend, WindowClient& client, const WindowOptions& options, Pictures pictures);
  ~HeadlessWindow() override;

  // What the window was set to, first and since.
  const WindowOptions& options() const { return options_; }
  CGRect frame() const { return frame_; }  // of the content, screen space
  bool isVisible() const { return isVisible_; }
  const std::string& title() const { return title_; }
  CursorShape cursor() const { return cursor_; }
  const std::string& toolTip() const { return toolTip_; }  // shown, as far as a desktop without pictures shows anything
  HeadlessWindow* parent() const { return parent_; }
  bool isDisplayScheduled() const { return isDisplayScheduled_; }
  int textInputChanges() const { return textInputChanges_; }
  int discardsOfMarkedText() const { return discardsOfMarkedText_; }
  int eventsNotTaken() const { return eventsNotTaken_; }  // key downs and scrolls that found nobody

  // What was painted, the earliest first.
  const std::vector<Paint>& paints() const { return paints_; }
  void forgetPaints() { paints_.clear(); }
  // The kept picture, as large as the content in whole device pixels; transparent where nothing was painted yet. Absent
  // where only recordings were asked for.
  const raster::Bitmap* picture() const { return picture_ ? &*picture_ : nullptr; }

  // What the user or the desktop does to it.
  void moveByUser(CGRect content);
  void closeByUser();
  platform::WindowInput& input() { return client_.input(); }
  void noteNotTaken() { ++eventsNotTaken_; }

  void setFrame(CGRect content) override;
  void show() override;
  void hide() override;
  void raise() override;
  void requestKey() override;  // granted at once to a visible window that can
  void setParent(NativeWindow* parent) override { parent_ = static_cast<HeadlessWindow*>(parent); }
  void setTitle(const std::string& title) override { title_ = title; }
  void setCursor(CursorShape shape) override { cursor_ = shape; }
  void setOpaque(bool isOpaque) override { options_.isOpaque = isOpaque; }
  void setHasShadow(bool hasShadow) override { options_.hasShadow = hasShadow; }
  void setToolTip(const std::string& text) override { toolTip_ = text; }
  double scale() const override { return scale_; }
  std::optional<Screen> screen() const override;
  void scheduleDisplay() override { isDisplayScheduled_ = true; }
  // A frame comes every hundredth of a second, to windows that are visible.
  void callAtNextFrame(std::function<void()> block) override;
  void textInputDidChange() override { ++textInputChanges_; }
  void discardMarkedText() override { ++discardsOfMarkedText_; }
  void paint(std::span<const CGRect> dirty, const std::function<void(Canvas&)>& painter) override;

 private:
  friend class HeadlessBackend;
  void placeDidChange();
  void makePicture();
  void waitForFrame();

  HeadlessBackend* backend_;  // absent when it has gone first
  WindowClient& client_;
  WindowOptions options_;
  Pictures pictures_;
  CGRect frame_;
  double scale_ = 1;
  std::string title_, toolTip_;
  CursorShape cursor_ = CursorShape::Arrow;
  HeadlessWindow* parent_ = nullptr;
  bool isVisible_ = false, isDisplayScheduled_ = false;
  int eventsNotTaken_ = 0, textInputChanges_ = 0, discardsOfMarkedText_ = 0;
  std::vector<std::function<void()>> frameBlocks_;
  Timer frameTimer_;
  std::vector<Paint> paints_;
  std::optional<raster::Bitmap> picture_;
};

}  // namespace tessaluna::backend::headless
