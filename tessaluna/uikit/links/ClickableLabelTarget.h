// Who is notified when a ClickableLabel or a link in it is clicked.
#pragma once

#include "tessaluna/platform/foundation/URL.h"

namespace TessalunaUIKit {

class ClickableLabel;

class ClickableLabelTarget {
 public:
  virtual ~ClickableLabelTarget() = default;
  // A click that began on no link has ended, wherever the pointer is by then.
  virtual void labelClicked(ClickableLabel& sender) = 0;
  // A press on a link was released on the same link, or a key or an assistive client pressed it.
  virtual void linkClicked(const tessaluna::platform::URL& link) = 0;
};

}  // namespace TessalunaUIKit
