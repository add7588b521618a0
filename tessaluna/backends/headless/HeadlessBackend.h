// A desktop in memory, for tests: screens, a pointer, windows and a clock that only a test moves. Nothing happens by
// itself: a display that was asked for and a block that fell due come with the next settle or advance.
//
//   HeadlessBackend desktop;
//   VirtualUser user(desktop);
//   user.click(*window, {10, 10});
//   desktop.advance(0.25);
//   HeadlessWindow::of(*window).paints().back().lines
#pragma once

#include <map>

#include "tessaluna/backends/headless/HeadlessTextEngine.h"
#include "tessaluna/backends/headless/HeadlessWindow.h"
#include "tessaluna/backends/headless/VirtualClock.h"
#include "tessaluna/platform/backend/Backend.h"

namespace tessaluna::backend::headless {

class HeadlessBackend : public Backend {
 public:
  HeadlessBackend();
  ~HeadlessBackend() override;

  // Lets time pass; see VirtualClock. The windows that asked for a display are painted whenever a moment's blocks are
  // through, once each.
  void advance(double seconds);
  // The same for what is due now, without time passing.
  void settle() { advance(0); }

  // One screen of 1440 by 900 points at scale 1, unless set. A window learns of its new scale at once.
  void setScreens(std::vector<Screen> screens);
  // For the only screen there is.
  void setScale(double scale);
  void setSystemColor(SystemColor which, Color color) { systemColors_[which] = color; }
  void setLayoutDirection(LayoutDirection direction) { layoutDirection_ = direction; }
  void setMouseLocation(CGPoint location) { mouseLocation_ = location; }  // sends nothing

  void setPrefersReducedMotion(bool prefers) { prefersReducedMotion_ = prefers; }

  // Whether windows made from now on also keep pixels; only recordings at the start.
  void setPictures(Pictures pictures) { pictures_ = pictures; }

  // All that exist, hidden ones too, from back to front.
  const std::vector<HeadlessWindow*>& windows() const { return windows_; }
  HeadlessWindow* keyWindow() const { return keyWindow_; }

  std::unique_ptr<NativeWindow> makeWindow(WindowClient& client, const WindowOptions& options) override;
  std::vector<Screen> screens() const override { return screens_; }
  CGPoint mouseLocation() const override { return mouseLocation_; }
  Color systemColor(SystemColor color) const override;
  LayoutDirection layoutDirection() const override { return layoutDirection_; }
  const HeadlessTextEngine& textEngine() const override { return textEngine_; }
  HeadlessTextEngine& textEngine() { return textEngine_; }
  // Binary "netpbm" pictures of eight bits: P6, and P7 (PAM) with the tuple types RGB and RGB_ALPHA.
  std::shared_ptr<const ImagePixels> decodeImage(std::span<const std::byte> bytes) const override;
  // The menu that is open, until a test chooses from it or closes it; absent for none.
  struct OpenMenu {
    MenuPlace place;
    std::vector<MenuEntry> entries;
    std::function<void(std::optional<std::size_t>)> chosen;
  };
  const OpenMenu* openMenu() const { return openMenu_.get(); }
  // The entry's number; absent closes the menu. The program stops where there is no menu, or no entry that a user could choose.
  void chooseFromMenu(std::optional<std::size_t> number);
  std::unique_ptr<NativeMenu> popUpMenu(NativeWindow& window, const MenuPlace& place, std::vector<MenuEntry> entries,
                                        std::function<void(std::optional<std::size_t>)> chosen) override;

  std::string clipboardText() const override { return clipboard_; }
  void setClipboardText(const std::string& text) override { clipboard_ = text; }

  double now() const override { return clock_.now(); }
  void callAfter(double seconds, std::function<void()> block) override { clock_.callAfter(seconds, std::move(block)); }
  // Whatever was asked for is worked off, on another thread but one after the other, at the next settle or advance.
  void callElsewhere(std::function<void()> work, std::function<void()> answer) override;
  bool prefersReducedMotion() const override { return prefersReducedMotion_; }

 private:
  friend class HeadlessWindow;
  class MenuHandle;
  void closeMenu(std::optional<std::size_t> chosen);
  void workOff();
  void raise(HeadlessWindow& window);
  void setKeyWindow(HeadlessWindow* window);
  void windowGoes(HeadlessWindow& window);
  void displayWindows();

  VirtualClock clock_;
  HeadlessTextEngine textEngine_;
  std::shared_ptr<OpenMenu> openMenu_;
  std::string clipboard_;
  std::vector<Screen> screens_;
  std::map<SystemColor, Color> systemColors_;
  CGPoint mouseLocation_;
  bool prefersReducedMotion_ = false;
  struct WorkElsewhere {
    std::function<void()> work, answer;
  };
  std::vector<WorkElsewhere> workElsewhere_;
  LayoutDirection layoutDirection_ = LayoutDirection::LeftToRight;
  Pictures pictures_ = Pictures::RecordedOnly;
  std::vector<HeadlessWindow*> windows_;
  HeadlessWindow* keyWindow_ = nullptr;
};

}  // namespace tessaluna::backend::headless
