#include "tessaluna/backends/headless/HeadlessWindow.h"

#include <cmath>
#include <utility>

#include "tessaluna/backends/headless/HeadlessBackend.h"
#include "tessaluna/backends/headless/TeeCanvas.h"
#include "tessaluna/backends/raster/RasterCanvas.h"
#include "tessaluna/backends/recording/RecordingCanvas.h"
#include "tessaluna/platform/foundation/stopProgram.h"
#include "tessaluna/platform/windows/NSWindow.h"

namespace tessaluna::backend::headless {

HeadlessWindow& HeadlessWindow::of(const platform::NSWindow& window) {
  auto* native = dynamic_cast<HeadlessWindow*>(window.nativeWindow());
  if (!native) platform::stopProgram("headless: the window has not been shown");
  return *native;
}

HeadlessWindow::HeadlessWindow(HeadlessBackend& backend, WindowClient& client, const WindowOptions& options,
                               Pictures pictures)
    : backend_(&backend), client_(client), options_(options), pictures_(pictures), frame_(options.content) {
  if (const std::optional<Screen> place = screen()) scale_ = place->scale;
  makePicture();
}

HeadlessWindow::~HeadlessWindow() {
  if (backend_) backend_->windowGoes(*this);
}

std::optional<Screen> HeadlessWindow::screen() const {
  return backend_ ? screenShowing(frame_, backend_->screens()) : std::nullopt;
}

void HeadlessWindow::makePicture() {
  if (pictures_ == Pictures::RecordedOnly) return;
  constexpr double epsilon = 1e-6;  // of a size that is whole device pixels
  const auto pixels = [this](double points) { return static_cast<int>(std::ceil(points * scale_ - epsilon)); };
  picture_ = raster::Bitmap::make(pixels(frame_.size.width), pixels(frame_.size.height));
}

// Off all screens a window keeps the scale that it had.
void HeadlessWindow::placeDidChange() {
  const std::optional<Screen> place = screen();
  if (!place || place->scale == scale_) return;
  scale_ = place->scale;
  makePicture();
  client_.nativeScaleChanged();
}

void HeadlessWindow::setFrame(CGRect content) {
  const bool isResized = content.size != frame_.size;
  frame_ = content;
  if (isResized) makePicture();
  placeDidChange();
}

void HeadlessWindow::moveByUser(CGRect content) {
  setFrame(content);
  client_.nativeFrameChanged(content);
}

void HeadlessWindow::closeByUser() { client_.nativeCloseRequested(); }

void HeadlessWindow::show() {
  isVisible_ = true;
  waitForFrame();
}

void HeadlessWindow::callAtNextFrame(std::function<void()> block) {
  frameBlocks_.push_back(std::move(block));
  waitForFrame();
}

void HeadlessWindow::waitForFrame() {
  constexpr double framePeriod = 0.01;  // seconds
  if (!backend_ || !isVisible_ || frameTimer_ || frameBlocks_.empty()) return;
  frameTimer_ = backend_->timer(framePeriod, [this] {
    frameTimer_ = nullptr;
    if (!isVisible_) return;
    const std::vector<std::function<void()>> due = std::exchange(frameBlocks_, {});
    for (const auto& block : due) block();
  });
}

void HeadlessWindow::hide() {
  isVisible_ = false;
  if (backend_ && backend_->keyWindow() == this) backend_->setKeyWindow(nullptr);
}

void HeadlessWindow::raise() {
  if (backend_) backend_->raise(*this);
}

void HeadlessWindow::requestKey() {
  if (backend_ && isVisible_ && options_.canBecomeKey) backend_->setKeyWindow(this);
}

void HeadlessWindow::paint(std::span<const CGRect> dirty, const std::function<void(Canvas&)>& painter) {
  recording::RecordingCanvas recording;
  if (picture_) {
    raster::RasterCanvas pixels(*picture_, {.scale = scale_});
    TeeCanvas both(pixels, recording);
    painter(both);
  } else {
    painter(recording);
  }
  paints_.push_back({{dirty.begin(), dirty.end()}, recording.lines()});
}

}  // namespace tessaluna::backend::headless
