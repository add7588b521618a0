// Runs the splash of a program that starts: a window with the program's icon, a spinner and three lines of text. The window and
// all in it come from the host's interface file, whose owner is the controller and which connects every outlet:
//
//   const auto splash = make<AppSplashController>("Splash");
//   splash->showWindow(nullptr);
//   splash->setCurrentStepText("Opening the library");
//   splash->close();
//
// Outlets: "window", "progressIndicator", "appIconView", "titleLabel", "informativeTextLabel", "currentStepTextLabel". One
// other than the window that is absent when it is used stops the program: the icon's and the spinner's once the window is
// loaded, a label's at its text.
#pragma once

#include <string>
#include <string_view>

#include "tessaluna/platform/views/NSImageView.h"
#include "tessaluna/platform/views/NSProgressIndicator.h"
#include "tessaluna/platform/views/NSTextField.h"
#include "tessaluna/platform/windows/NSWindowController.h"

namespace TessalunaUIKit {

class AppSplashController : public tessaluna::platform::NSWindowController {
 public:
  static const tessaluna::platform::ClassInfo staticClassInfo;
  const tessaluna::platform::ClassInfo& classInfo() const override { return staticClassInfo; }

  AppSplashController() = default;
  explicit AppSplashController(tessaluna::platform::Ref<tessaluna::platform::NSWindow> window)  // which may be null
      : NSWindowController(std::move(window)) {}
  explicit AppSplashController(std::string windowNibName) : NSWindowController(std::move(windowNibName)) {}
  explicit AppSplashController(tessaluna::platform::NSCoder& coder) : NSWindowController(coder) {}

  // The spinner; null until it is connected. It is started when the window is loaded, and never stopped.
  const tessaluna::platform::Ref<tessaluna::platform::NSProgressIndicator>& progressIndicator() const {
    return progressIndicator_.optional();
  }
  void setProgressIndicator(tessaluna::platform::Ref<tessaluna::platform::NSProgressIndicator> indicator) {
    progressIndicator_ = std::move(indicator);
  }

  // Shows the image named "AppIcon.icns", if the host has one, starts the spinner and centers the window in a rectangle of its
  // screen's size at the origin of screen space, which is the screen itself where that is the primary one. A window on no screen
  // goes by the main screen, and stops the program if there is none; without a window nothing is centered.
  void windowDidLoad() override;

  // The three lines, from the top. Their labels keep them.
  void setTitle(std::string_view text) { titleLabel_->setStringValue(text); }
  void setInformativeText(std::string_view text) { informativeTextLabel_->setStringValue(text); }
  void setCurrentStepText(std::string_view text) { currentStepTextLabel_->setStringValue(text); }

 private:
  template <class View>
  using RequiredView = tessaluna::platform::Required<tessaluna::platform::Ref<View>>;
  using Label = tessaluna::platform::NSTextField;
  using ImageView = tessaluna::platform::NSImageView;

  static const tessaluna::platform::Outlet outlets_[];
  void setAppIconView(tessaluna::platform::Ref<ImageView> view) { appIconView_ = std::move(view); }
  void setTitleLabel(tessaluna::platform::Ref<Label> label) { titleLabel_ = std::move(label); }
  void setInformativeTextLabel(tessaluna::platform::Ref<Label> label) { informativeTextLabel_ = std::move(label); }
  void setCurrentStepTextLabel(tessaluna::platform::Ref<Label> label) { currentStepTextLabel_ = std::move(label); }

  RequiredView<tessaluna::platform::NSProgressIndicator> progressIndicator_{"progressIndicator"};
  RequiredView<ImageView> appIconView_{"appIconView"};
  RequiredView<Label> titleLabel_{"titleLabel"};
  RequiredView<Label> informativeTextLabel_{"informativeTextLabel"};
  RequiredView<Label> currentStepTextLabel_{"currentStepTextLabel"};
};

}  // namespace TessalunaUIKit
