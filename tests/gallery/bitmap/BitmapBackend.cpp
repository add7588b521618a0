#include "tests/gallery/bitmap/BitmapBackend.h"

#include <algorithm>
#include <cmath>

#include "tessaluna/backends/raster/RasterCanvas.h"
#include "tessaluna/platform/windows/WindowInput.h"

namespace bitmap {

namespace {

constexpr double framePeriod = 0.01;  // seconds

class ClosedMenu : public NativeMenu {
 public:
  void close() override {}
};

}  // namespace

BitmapWindow::BitmapWindow(BitmapBackend& backend, WindowClient& client, const WindowOptions& options)
    : backend_(backend), client_(client), frame_(options.content), canBecomeKey_(options.canBecomeKey) {
  makePicture();
}

BitmapWindow::~BitmapWindow() { hide(); }

void BitmapWindow::makePicture() {
  const auto pixels = [](double points) { return std::max(1, static_cast<int>(std::ceil(points))); };
  picture_ = raster::Bitmap::make(pixels(frame_.size.width), pixels(frame_.size.height));
}

void BitmapWindow::setFrame(CGRect content) {
  const bool isResized = content.size != frame_.size;
  frame_ = content;
  if (isResized) makePicture();
}

void BitmapWindow::show() {
  if (std::exchange(isVisible_, true)) return;
  backend_.windows_.push_back(this);
}

void BitmapWindow::hide() {
  isVisible_ = false;
  std::erase(backend_.windows_, this);
  if (backend_.under_ == this) backend_.under_ = nullptr;
  if (backend_.keyWindow_ == this) backend_.keyWindow_ = nullptr;
}

void BitmapWindow::raise() {
  if (isVisible_)
    std::rotate(std::find(backend_.windows_.begin(), backend_.windows_.end(), this), backend_.windows_.end() - 1,
                backend_.windows_.end());
}

void BitmapWindow::requestKey() {
  if (isVisible_ && canBecomeKey_) backend_.setKeyWindow(this);
}

std::optional<Screen> BitmapWindow::screen() const { return screenShowing(frame_, backend_.screens()); }

void BitmapWindow::scheduleDisplay() {
  if (display_) return;
  display_ = backend_.timer(0, [this] {
    display_ = nullptr;
    client_.nativeDisplay();
  });
}

void BitmapWindow::paint(std::span<const CGRect>, const std::function<void(Canvas&)>& painter) {
  raster::RasterCanvas canvas(*picture_, {.scale = 1});
  painter(canvas);
}

void BitmapWindow::callAtNextFrame(std::function<void()> block) {
  frameBlocks_.push_back(std::move(block));
  if (nextFrame_) return;
  nextFrame_ = backend_.timer(framePeriod, [this] {
    nextFrame_ = nullptr;
    for (const auto& due : std::exchange(frameBlocks_, {})) due();
  });
}

void BitmapBackend::callAfter(double seconds, std::function<void()> block) {
  blocks_.emplace(now_ + std::max(0.0, seconds), std::move(block));
}

void BitmapBackend::callElsewhere(std::function<void()> work, std::function<void()> answer) {
  work();
  callAfter(0, std::move(answer));
}

void BitmapBackend::pass(double seconds) {
  const double end = now_ + seconds;
  while (!blocks_.empty() && blocks_.begin()->first <= end) {
    const auto node = blocks_.extract(blocks_.begin());
    now_ = node.key();
    node.mapped()();
  }
  now_ = end;
}

std::unique_ptr<NativeWindow> BitmapBackend::makeWindow(WindowClient& client, const WindowOptions& options) {
  return std::make_unique<BitmapWindow>(*this, client, options);
}

// A menu cannot be seen here, so nothing is chosen.
std::unique_ptr<NativeMenu> BitmapBackend::popUpMenu(NativeWindow&, const MenuPlace&, std::vector<MenuEntry>,
                                                     std::function<void(std::optional<std::size_t>)> chosen) {
  callAfter(0, [chosen = std::move(chosen)] { chosen(std::nullopt); });
  return std::make_unique<ClosedMenu>();
}

void BitmapBackend::setKeyWindow(BitmapWindow* window) {
  if (window == keyWindow_) return;
  if (BitmapWindow* earlier = std::exchange(keyWindow_, window)) earlier->client().nativeKeyStatusChanged(false);
  if (window && window == keyWindow_) window->client().nativeKeyStatusChanged(true);
}

BitmapWindow* BitmapBackend::windowAt(CGPoint place) const {
  for (auto window = windows_.rbegin(); window != windows_.rend(); ++window)
    if (tessaluna::platform::NSPointInRect(place, (*window)->frame())) return *window;
  return nullptr;
}

void BitmapBackend::pointer(PointerInput input) {
  if (!under_) return;
  const CGRect frame = under_->frame();
  input.place = {pointer_.x - frame.origin.x, CGRectGetMaxY(frame) - pointer_.y};
  input.heldButtons = isDown_ ? 1 : 0;
  under_->client().input().pointer(input);
}

// While the button is down, everything goes to the window that was pressed.
void BitmapBackend::move(CGPoint place) {
  pointer_ = place;
  BitmapWindow* const now = isDown_ ? under_ : windowAt(place);
  if (now != under_) {
    pointer({.what = PointerInput::What::Left});
    under_ = now;
    pointer({.what = PointerInput::What::Entered});
  }
  pointer({.what = PointerInput::What::Moved});
}

void BitmapBackend::press() {
  under_ = windowAt(pointer_);
  isDown_ = true;
  if (under_) under_->requestKey();
  pointer({.what = PointerInput::What::Pressed});
}

void BitmapBackend::release() {
  isDown_ = false;
  pointer({.what = PointerInput::What::Released});
}

void BitmapBackend::turnWheel(double lines) {
  const BitmapWindow* window = windowAt(pointer_);
  if (!window) return;
  const CGRect frame = window->frame();
  windowAt(pointer_)->client().input().wheel(
      {.place = {pointer_.x - frame.origin.x, CGRectGetMaxY(frame) - pointer_.y}, .lines = {0, lines}});
}

void BitmapBackend::type(KeyInput key) {
  for (const KeyInput::What what : {KeyInput::What::Pressed, KeyInput::What::Released}) {
    key.what = what;
    if (keyWindow_) keyWindow_->client().input().key(key);
  }
}

}  // namespace bitmap
