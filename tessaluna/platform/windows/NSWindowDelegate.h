// What a window reports of itself: to its delegate, and by name through the default notification center.
#pragma once

#include <string_view>

#include "tessaluna/platform/foundation/NSNotificationCenter.h"
#include "tessaluna/platform/views/Forward.h"

namespace tessaluna::platform {

inline constexpr std::string_view NSWindowDidBecomeKeyNotification = "NSWindowDidBecomeKeyNotification";
inline constexpr std::string_view NSWindowDidResignKeyNotification = "NSWindowDidResignKeyNotification";
inline constexpr std::string_view NSWindowDidMoveNotification = "NSWindowDidMoveNotification";
inline constexpr std::string_view NSWindowDidResizeNotification = "NSWindowDidResizeNotification";
inline constexpr std::string_view NSWindowWillCloseNotification = "NSWindowWillCloseNotification";

// The delegate is notified of each change before the observers are. The notification's object is the window.
class NSWindowDelegate {
 public:
  virtual ~NSWindowDelegate() = default;
  // Asked when the user closes the window, and by performClose:, but not by close(). False keeps it open.
  virtual bool windowShouldClose(NSWindow& /*sender*/) { return true; }
  virtual void windowDidBecomeKey(const Ref<NSNotification>&) {}
  virtual void windowDidResignKey(const Ref<NSNotification>&) {}
  virtual void windowDidMove(const Ref<NSNotification>&) {}
  virtual void windowDidResize(const Ref<NSNotification>&) {}
  virtual void windowWillClose(const Ref<NSNotification>&) {}
};

}  // namespace tessaluna::platform
