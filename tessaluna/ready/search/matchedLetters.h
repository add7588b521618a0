// Which letters of a row explain why it was found.
#pragma once

#include <string_view>
#include <vector>

#include "tessaluna/platform/foundation/Geometry.h"

namespace tessaluna::ready {

// The ranges of the text, in UTF-16 units and in order, that something typed matches: where a typed word begins a word, as much
// of it as was typed. Capitals and accents do not count.
std::vector<platform::NSRange> matchedLetters(std::string_view text, std::string_view typed);

}  // namespace tessaluna::ready
