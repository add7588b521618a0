// Plain letters of single strokes, for labels without a font: ASCII letters, digits, space and a few signs. Any other
// character is an empty box.
#pragma once

#include <string_view>

#include "tessaluna/platform/foundation/Geometry.h"
#include "tessaluna/platform/graphics/Forward.h"
#include "tessaluna/platform/graphics/NSBezierPath.h"

namespace artwork {

struct LetterStyle {
  double size = 9;  // points from the bottom of a "g" to the top of an "H", including the line width
  double lineWidth = 1;
};

// From the left edge of the first letter to the right edge of the last.
double widthOfLetters(std::string_view text, const LetterStyle& style);

// To be stroked; the baseline begins at the point. Empty for a text of spaces.
tessaluna::platform::Ref<tessaluna::platform::NSBezierPath> pathOfLetters(std::string_view text,
                                                                          tessaluna::platform::CGPoint baseline,
                                                                          const LetterStyle& style);

}  // namespace artwork
