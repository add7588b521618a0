// Who is notified that the user moved the selection of a completion pop-up.
#pragma once

#include <optional>

#include "tessaluna/uikit/suggestions/Suggestion.h"

namespace TessalunaUIKit {

class SuggestionsWindowTarget {
 public:
  virtual ~SuggestionsWindowTarget() = default;
  // That of the row that is selected now; absent when none is.
  virtual void suggestionSelectionChanged(std::optional<Suggestion> suggestion) = 0;
};

}  // namespace TessalunaUIKit
