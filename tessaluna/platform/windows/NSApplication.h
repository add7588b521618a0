// The application: the one way of all events, first through the local monitors and then to their windows, and the list of
// windows. NSApp is absent until sharedApplication makes it.
#pragma once

#include <functional>
#include <string_view>
#include <vector>

#include "tessaluna/platform/accessibility/NSAccessibility.h"
#include "tessaluna/platform/events/NSEvent.h"
#include "tessaluna/platform/events/NSResponder.h"
#include "tessaluna/platform/views/NSUserInterfaceLayoutDirection.h"

namespace tessaluna::platform {

class NSApplication : public NSResponder, public NSAccessibility {
 public:
  static const ClassInfo staticClassInfo;
  const ClassInfo& classInfo() const override { return staticClassInfo; }

  // Made at the first call and kept in NSApp.
  static Ref<NSApplication> sharedApplication();

  // Every event of the application goes through here. An event without a window is seen by the monitors alone.
  virtual void sendEvent(const Ref<NSEvent>& event);
  // The one that a window has now; null while none has any.
  const Ref<NSEvent>& currentEvent() const { return currentEvent_; }

  bool isActive() const { return isActive_; }
  void setActive(bool isActive) { isActive_ = isActive; }  // set by the backend

  // That of the desktop's language; from left to right without a backend.
  NSUserInterfaceLayoutDirection userInterfaceLayoutDirection() const;

  // The menu whose items' key equivalents work in all windows, after those of the key window's views. Null initially. It is not
  // shown.
  const Ref<NSMenu>& mainMenu() const { return mainMenu_; }
  void setMainMenu(Ref<NSMenu> menu) { mainMenu_ = std::move(menu); }

  Ref<NSWindow> keyWindow() const { return keyWindow_.lock(); }
  std::vector<Ref<NSWindow>> windows() const;

  // Who would perform the action: the target if it has it, or with none the first that has it of the key window's responder
  // chain and the application. Null if nobody has it.
  Ref<NSObject> targetForAction(std::string_view action, NSObject* target = nullptr);
  // Performs it there. False if nobody has it.
  bool sendAction(std::string_view action, NSObject* target, NSObject* sender);

  // Its children are the visible windows, but for those that say that they belong elsewhere.
  bool isAccessibilityElement() const override { return true; }
  std::string accessibilityRole() const override { return std::string(NSAccessibilityApplicationRole); }

 protected:
  std::optional<AccessibilityElements> accessibilityOwnChildren() const override;

 private:
  friend class NSEvent;
  friend class NSWindow;
  Ref<NSObject> addMonitor(NSEventMask mask, NSEvent::MonitorHandler handler);
  void removeMonitor(const Ref<NSObject>& token);
  void windowWasMade(const Ref<NSWindow>& window);
  void windowKeyStatusChanged(NSWindow& window, bool isKey);

  class Monitor;
  std::vector<Ref<Monitor>> monitors_;
  std::vector<WeakRef<NSWindow>> windows_;
  WeakRef<NSWindow> keyWindow_;
  Ref<NSMenu> mainMenu_;
  Ref<NSEvent> currentEvent_;
  bool isActive_ = true;
};

// The one application. Tests remove it by setting it to null.
extern Ref<NSApplication> NSApp;

}  // namespace tessaluna::platform
