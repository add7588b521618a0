#include "tessaluna/uikit/suggestions/SuggestionItemViewController.h"

#include "tessaluna/platform/foundation/memberTables.h"

namespace TessalunaUIKit {

using namespace tessaluna::platform;

const Outlet SuggestionItemViewController::outlets_[] = {
    outlet<&SuggestionItemViewController::setLabelTextField>("labelTextField"),
    outlet<&SuggestionItemViewController::setDetailedLabelTextField>("detailedLabelTextField"),
    outlet<&SuggestionItemViewController::setImageView>("imageView"),
};
const ClassInfo SuggestionItemViewController::staticClassInfo{.name = "TessalunaUIKit.SuggestionItemViewController",
                                                              .base = &NSViewController::staticClassInfo,
                                                              .outlets = SuggestionItemViewController::outlets_};

void SuggestionItemViewController::setSuggestion(std::optional<Suggestion> suggestion) {
  suggestion_ = std::move(suggestion);
  if (labelTextField_) labelTextField_->setStringValue(suggestion_ ? suggestion_->label : "");
  if (detailedLabelTextField_)
    detailedLabelTextField_->setStringValue(suggestion_ ? suggestion_->detailedLabel.value_or("") : "");
  if (imageView_) imageView_->setImage(suggestion_ ? suggestion_->image : nullptr);
}

}  // namespace TessalunaUIKit
