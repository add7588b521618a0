// Where the characters of a text are, for clients that ask with a parameter.
#pragma once

#include <functional>
#include <string_view>
#include <vector>

#include "tessaluna/platform/accessibility/AccessibilityValue.h"

namespace tessaluna::platform {

class NSView;

// In a view's coordinates.
struct TextPlaces {
  std::size_t length = 0;  // of the text; what is asked for is cut to it
  std::function<std::vector<CGRect>(NSRange)> rectsOf;
  std::function<CGRect(std::size_t)> caretAt;
  std::function<std::size_t(CGPoint)> nearestCharacterTo;
};

// The frame of a range, or of the caret at an empty one; the range of the character whose box holds the point, as far as
// it shows. Absent for other attributes, and where there is no answer.
AccessibilityValue textPlaceValue(std::string_view attribute, const AccessibilityValue& parameter, const NSView& view,
                                  const TextPlaces& places);

}  // namespace tessaluna::platform
