// Joins one suggestion to one row of a completion pop-up. The row's views come from the host's interface file, whose root is
// a HighlightingView and which may do without any of the three outlets.
#pragma once

#include "tessaluna/platform/views/NSImageView.h"
#include "tessaluna/platform/views/NSTextField.h"
#include "tessaluna/platform/windows/NSViewController.h"
#include "tessaluna/uikit/suggestions/Suggestion.h"

namespace TessalunaUIKit {

class SuggestionItemViewController : public tessaluna::platform::NSViewController {
 public:
  static const tessaluna::platform::ClassInfo staticClassInfo;
  const tessaluna::platform::ClassInfo& classInfo() const override { return staticClassInfo; }

  explicit SuggestionItemViewController(std::optional<std::string> nibName, tessaluna::platform::NSBundle* bundle = nullptr)
      : NSViewController(std::move(nibName), bundle) {}
  explicit SuggestionItemViewController(tessaluna::platform::NSCoder& coder) : NSViewController(coder) {}

  // Setting it fills those outlets that are connected by then, so the view has to be loaded before. Absent clears them.
  const std::optional<Suggestion>& suggestion() const { return suggestion_; }
  void setSuggestion(std::optional<Suggestion> suggestion);

  const tessaluna::platform::Ref<tessaluna::platform::NSTextField>& labelTextField() const {
    return labelTextField_.optional();
  }
  void setLabelTextField(tessaluna::platform::Ref<tessaluna::platform::NSTextField> field) {
    labelTextField_ = std::move(field);
  }
  const tessaluna::platform::Ref<tessaluna::platform::NSTextField>& detailedLabelTextField() const {
    return detailedLabelTextField_.optional();
  }
  void setDetailedLabelTextField(tessaluna::platform::Ref<tessaluna::platform::NSTextField> field) {
    detailedLabelTextField_ = std::move(field);
  }
  const tessaluna::platform::Ref<tessaluna::platform::NSImageView>& imageView() const { return imageView_.optional(); }
  void setImageView(tessaluna::platform::Ref<tessaluna::platform::NSImageView> view) { imageView_ = std::move(view); }

 private:
  static const tessaluna::platform::Outlet outlets_[];

  std::optional<Suggestion> suggestion_;
  tessaluna::platform::Required<tessaluna::platform::Ref<tessaluna::platform::NSTextField>> labelTextField_{
      "labelTextField"};
  tessaluna::platform::Required<tessaluna::platform::Ref<tessaluna::platform::NSTextField>> detailedLabelTextField_{
      "detailedLabelTextField"};
  tessaluna::platform::Required<tessaluna::platform::Ref<tessaluna::platform::NSImageView>> imageView_{"imageView"};
};

}  // namespace TessalunaUIKit
