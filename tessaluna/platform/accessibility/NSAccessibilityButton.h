// What a view or cell adopts, beside NSAccessibility, to be a button to assistive clients: they see an element with the role of
// a button and this label, and its one action is to press it.
#pragma once

#include <string>

#include "tessaluna/platform/foundation/languageVersion.h"

namespace tessaluna::platform {

class NSAccessibilityButton {
 public:
  virtual ~NSAccessibilityButton() = default;
  virtual std::string accessibilityLabel() const = 0;  // empty: none besides the title
  virtual bool accessibilityPerformPress() = 0;        // false if nothing could be pressed
};

}  // namespace tessaluna::platform
