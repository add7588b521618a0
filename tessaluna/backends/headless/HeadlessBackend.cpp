#include "tessaluna/backends/headless/HeadlessBackend.h"

#include <algorithm>
#include <thread>

#include "tessaluna/backends/headless/netpbm.h"
#include "tessaluna/platform/foundation/stopProgram.h"

namespace tessaluna::backend::headless {

namespace {

constexpr CGRect usualScreen{0, 0, 1440, 900};

bool canChoose(const std::vector<MenuEntry>& entries, std::size_t number) {
  return std::any_of(entries.begin(), entries.end(), [number](const MenuEntry& entry) {
    if (!entry.isEnabled || entry.isSeparator) return false;
    return entry.hasSubmenu ? canChoose(entry.submenu, number) : entry.number == number;
  });
}

}  // namespace

HeadlessBackend::HeadlessBackend() : screens_{{.frame = usualScreen, .visibleFrame = usualScreen}} {}

HeadlessBackend::~HeadlessBackend() {
  // A window that a test forgot to let go outlives its desktop and must not look for it.
  for (HeadlessWindow* window : windows_) window->backend_ = nullptr;
}

void HeadlessBackend::advance(double seconds) {
  workOff();
  clock_.advance(seconds, [this] {
    displayWindows();
    workOff();
  });
}

void HeadlessBackend::workOff() {
  const std::vector<WorkElsewhere> all = std::exchange(workElsewhere_, {});
  for (const WorkElsewhere& asked : all) {
    std::thread(asked.work).join();
    callAfter(0, asked.answer);
  }
}

void HeadlessBackend::callElsewhere(std::function<void()> work, std::function<void()> answer) {
  workElsewhere_.push_back({std::move(work), std::move(answer)});
}

void HeadlessBackend::displayWindows() {
  std::vector<HeadlessWindow*> asked;
  for (HeadlessWindow* window : windows_)
    if (std::exchange(window->isDisplayScheduled_, false)) asked.push_back(window);
  // Painting one may make or close others.
  for (HeadlessWindow* window : asked)
    if (std::find(windows_.begin(), windows_.end(), window) != windows_.end()) window->client_.nativeDisplay();
}

void HeadlessBackend::setScreens(std::vector<Screen> screens) {
  screens_ = std::move(screens);
  const std::vector<HeadlessWindow*> copy = windows_;
  for (HeadlessWindow* window : copy) window->placeDidChange();
}

void HeadlessBackend::setScale(double scale) {
  Screen only = screens_.at(0);
  only.scale = scale;
  setScreens({only});
}

std::unique_ptr<NativeWindow> HeadlessBackend::makeWindow(WindowClient& client, const WindowOptions& options) {
  auto window = std::make_unique<HeadlessWindow>(*this, client, options, pictures_);
  windows_.push_back(window.get());
  return window;
}

Color HeadlessBackend::systemColor(SystemColor color) const {
  const auto found = systemColors_.find(color);
  return found == systemColors_.end() ? Backend::systemColor(color) : found->second;
}

std::shared_ptr<const ImagePixels> HeadlessBackend::decodeImage(std::span<const std::byte> bytes) const {
  return decodeNetpbm(bytes);
}

void HeadlessBackend::raise(HeadlessWindow& window) {
  std::erase(windows_, &window);
  windows_.push_back(&window);
  const std::vector<HeadlessWindow*> copy = windows_;
  for (HeadlessWindow* other : copy)
    if (other->parent() == &window) raise(*other);  // a child stays above its parent
}

void HeadlessBackend::setKeyWindow(HeadlessWindow* window) {
  if (window == keyWindow_) return;
  HeadlessWindow* const earlier = std::exchange(keyWindow_, window);
  if (earlier) earlier->client_.nativeKeyStatusChanged(false);
  if (window && window == keyWindow_) window->client_.nativeKeyStatusChanged(true);
}

void HeadlessBackend::windowGoes(HeadlessWindow& window) {
  std::erase(windows_, &window);
  for (HeadlessWindow* other : windows_)
    if (other->parent_ == &window) other->parent_ = nullptr;
  if (keyWindow_ == &window) keyWindow_ = nullptr;
}

class HeadlessBackend::MenuHandle : public NativeMenu {
 public:
  MenuHandle(HeadlessBackend& backend, const std::shared_ptr<OpenMenu>& menu) : backend_(backend), menu_(menu) {}
  void close() override {
    if (const auto menu = menu_.lock(); menu && menu == backend_.openMenu_) backend_.closeMenu(std::nullopt);
  }

 private:
  HeadlessBackend& backend_;
  std::weak_ptr<OpenMenu> menu_;  // gone with the backend
};

std::unique_ptr<NativeMenu> HeadlessBackend::popUpMenu(NativeWindow&, const MenuPlace& place, std::vector<MenuEntry> entries,
                                                       std::function<void(std::optional<std::size_t>)> chosen) {
  if (openMenu_) closeMenu(std::nullopt);
  openMenu_ = std::make_shared<OpenMenu>(OpenMenu{place, std::move(entries), std::move(chosen)});
  return std::make_unique<MenuHandle>(*this, openMenu_);
}

void HeadlessBackend::chooseFromMenu(std::optional<std::size_t> number) {
  if (!openMenu_) platform::stopProgram("headless: no menu is open");
  if (number && !canChoose(openMenu_->entries, *number)) platform::stopProgram("headless: that entry cannot be chosen");
  closeMenu(number);
}

// As on a desktop, the choice is reported on a later turn.
void HeadlessBackend::closeMenu(std::optional<std::size_t> chosen) {
  callAfter(0, [menu = std::exchange(openMenu_, nullptr), chosen] { menu->chosen(chosen); });
}

}  // namespace tessaluna::backend::headless
