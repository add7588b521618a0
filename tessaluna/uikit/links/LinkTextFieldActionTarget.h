// Who is notified when a link of a MultipleLinksTextField is clicked.
#pragma once

#include <cstddef>

#include "tessaluna/platform/foundation/languageVersion.h"

namespace TessalunaUIKit {

class MultipleLinksTextField;

class LinkTextFieldActionTarget {
 public:
  virtual ~LinkTextFieldActionTarget() = default;
  // The element is the one under the pointer at the release, or the first one when an assistive client presses the view; of
  // the menu, the keyboard and the links that clients see, the one that is chosen or pressed. That under the pointer is not
  // checked against the current list: after a change of the list it may lie outside until the pointer moves.
  virtual void linkClicked(std::size_t elementIndex, MultipleLinksTextField& sender) = 0;
};

}  // namespace TessalunaUIKit
