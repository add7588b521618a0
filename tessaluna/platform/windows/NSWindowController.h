// Keeps a window and acts for it: it comes after the window in the responder chain. A window from an interface file is
// loaded at its first use.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "tessaluna/platform/events/NSResponder.h"
#include "tessaluna/platform/windows/NSWindow.h"

namespace tessaluna::platform {

class NSWindowController : public NSResponder {
 public:
  static const ClassInfo staticClassInfo;
  const ClassInfo& classInfo() const override { return staticClassInfo; }

  NSWindowController() = default;
  explicit NSWindowController(Ref<NSWindow> window);       // initWithWindow:
  explicit NSWindowController(std::string windowNibName);  // initWithWindowNibName:
  explicit NSWindowController(NSCoder& coder) : NSResponder(coder) {}
  ~NSWindowController() override;
  void didInit() override;

  // Null for a controller with neither a window nor a nib name, and for one whose document does not connect the outlet
  // "window". A name that nobody registered, or a document with an error, stops the program: NSNib reports errors of
  // documents without that.
  const Ref<NSWindow>& window();
  void setWindow(Ref<NSWindow> window);
  bool isWindowLoaded() const { return window_ != nullptr; }
  const std::optional<std::string>& windowNibName() const { return nibName_; }

  // Called once the interface file has been loaded and connected, and only then.
  virtual void windowDidLoad() {}

  void showWindow(NSObject* sender);
  virtual void close();

 private:
  static const Outlet outlets_[];
  void loadWindow(const std::string& nibName);

  Ref<NSWindow> window_;
  std::optional<std::string> nibName_;
  std::vector<Ref<NSObject>> topLevelObjects_;
  bool hasLoaded_ = false;
};

}  // namespace tessaluna::platform
