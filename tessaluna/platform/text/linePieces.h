// Where a long line can be taken apart so that each piece, shaped alone in a direction that is said, looks as it does in the line:
// nothing that is read from one side belongs to what is read from the other one. The work is linear in the length of the line.
#pragma once

#include <cstddef>
#include <string_view>
#include <vector>

#include "tessaluna/platform/foundation/languageVersion.h"

namespace tessaluna::platform {

struct LinePiece {
  std::size_t start = 0, length = 0;  // UTF-16 units
  bool isRightToLeft = false;
};

struct LinePieces {
  std::vector<LinePiece> inTextOrder;  // cover the line
  std::vector<std::size_t> fromLeft;   // their indexes in visual order
};

// A piece ends after a blank where there is one from `least` units on, and from `most` on at any letter that is not joined to the
// next one, as Arabic ones are: these only in a piece that is much longer. What cannot be taken
// apart stays whole, and so does a line with marks that set directions by hand.
LinePieces linePieces(std::u16string_view line, std::size_t least, std::size_t most);

}  // namespace tessaluna::platform
