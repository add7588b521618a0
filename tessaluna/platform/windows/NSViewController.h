// Keeps a view that is made when it is first asked for, as a rule from an interface file, and fills it.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "tessaluna/platform/events/NSResponder.h"
#include "tessaluna/platform/foundation/Forward.h"
#include "tessaluna/platform/views/NSView.h"

namespace tessaluna::platform {

class NSViewController : public NSResponder {
 public:
  static const ClassInfo staticClassInfo;
  const ClassInfo& classInfo() const override { return staticClassInfo; }

  NSViewController() = default;
  // An absent nib name means the class's own name, with its module or without. Interface files are the program's, and no
  // bundle is asked for one.
  explicit NSViewController(std::optional<std::string> nibName, NSBundle* bundle = nullptr);
  // Key: "nibName".
  explicit NSViewController(NSCoder& coder);
  ~NSViewController() override;

  // Loaded at first use; without one then, the program stops.
  const Ref<NSView>& view();
  void setView(Ref<NSView> view) { view_ = std::move(view); }
  bool isViewLoaded() const { return view_ != nullptr; }
  const std::optional<std::string>& nibName() const { return nibName_; }

  // Makes the view: from the interface file, whose owner this is. It is what the outlet "view" was given, or else the first
  // view at the top. No such interface file, or one with an error, stops the program. An override calls setView.
  virtual void loadView();
  virtual void viewDidLoad() {}

 private:
  static const Outlet outlets_[];

  Ref<NSView> view_;
  std::optional<std::string> nibName_;
  std::vector<Ref<NSObject>> topLevelObjects_;
};

}  // namespace tessaluna::platform
