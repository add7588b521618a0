// The words of a text as searches compare them: without capitals, accents and punctuation.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "tessaluna/platform/foundation/languageVersion.h"

namespace tessaluna::platform {

struct SearchWord {
  // In small letters without accents, in UTF-8; never empty. "Ø" is "o", "ß" is "ss", and "don't" is one word.
  std::string letters;
  // For each byte of the letters, where the character that it comes from begins in the text, in UTF-16 units; last where the
  // word ends.
  std::vector<std::size_t> places;
};

std::vector<SearchWord> searchWords(std::string_view text);

}  // namespace tessaluna::platform
