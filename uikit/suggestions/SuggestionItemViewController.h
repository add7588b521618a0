// Joins one suggestion to one row of a completion pop-up. The row's views come from the host's interface file, whose root is
// a HighlightingView and which may do without any of the three outlets.
#pragma once

#include "platform/views/NSImageView.h"
#include "platform/views/NSTextField.h"
#include "platform/windows/NSViewController.h"
#include "uikit/suggestions/Suggestion.h"

namespace TessalunaUIKit {

class SuggestionItemViewController : public platform::NSViewController {
 public:
  static const platform::ClassInfo staticClassInfo;
  const platform::ClassInfo& classInfo() const override { return staticClassInfo; }

  explicit SuggestionItemViewController(std::optional<std::string> nibName, platform::NSBundle* bundle = nullptr)
      : NSViewController(std::move(nibName), bundle) {}
  explicit SuggestionItemViewController(platform::NSCoder& coder) : NSViewController(coder) {}

  // Setting it fills those outlets that are connected by then: the view is loaded first. Absent clears them.
  const std::optional<Suggestion>& suggestion() const { return suggestion_; }
  void setSuggestion(std::optional<Suggestion> suggestion);

  const platform::Ref<platform::NSTextField>& labelTextField() const { return labelTextField_.optional(); }
  void setLabelTextField(platform::Ref<platform::NSTextField> field) { labelTextField_ = std::move(field); }
  const platform::Ref<platform::NSTextField>& detailedLabelTextField() const {
    return detailedLabelTextField_.optional();
  }
  void setDetailedLabelTextField(platform::Ref<platform::NSTextField> field) {
    detailedLabelTextField_ = std::move(field);
  }
  const platform::Ref<platform::NSImageView>& imageView() const { return imageView_.optional(); }
  void setImageView(platform::Ref<platform::NSImageView> view) { imageView_ = std::move(view); }

 private:
  static const platform::Outlet outlets_[];

  std::optional<Suggestion> suggestion_;
  platform::Required<platform::Ref<platform::NSTextField>> labelTextField_{"labelTextField"};
  platform::Required<platform::Ref<platform::NSTextField>> detailedLabelTextField_{"detailedLabelTextField"};
  platform::Required<platform::Ref<platform::NSImageView>> imageView_{"imageView"};
};

}  // namespace TessalunaUIKit
