#include "tessaluna/platform/text/searchWords.h"

#include <utf8proc.h>

#include <array>
#include <utility>

#include "tessaluna/platform/text/unicode.h"

namespace tessaluna::platform {

namespace {

bool isMark(char32_t scalar) {
  const utf8proc_category_t category = utf8proc_category(static_cast<utf8proc_int32_t>(scalar));
  return category >= UTF8PROC_CATEGORY_MN && category <= UTF8PROC_CATEGORY_ME;
}

// Whatever is beyond the first plane counts: people search for pictograms as well.
bool isOfWord(char32_t scalar) {
  const utf8proc_category_t category = utf8proc_category(static_cast<utf8proc_int32_t>(scalar));
  return scalar > 0xFFFF || (category >= UTF8PROC_CATEGORY_LU && category <= UTF8PROC_CATEGORY_LO) ||
         (category >= UTF8PROC_CATEGORY_ND && category <= UTF8PROC_CATEGORY_NO);
}

// Letters that stay whole when accents are taken off, but that people type in another way.
std::string plainLetter(char32_t letter) {
  switch (letter) {
    case U'ø': return "o";
    case U'æ': return "ae";
    case U'œ': return "oe";
    case U'ß': return "ss";
    case U'ł': return "l";
    case U'đ':
    case U'ð': return "d";
    case U'ı': return "i";
    default: return utf8FromScalar(letter);
  }
}

// What the scalar becomes without its capital and with its accents apart.
std::u32string decomposed(char32_t scalar) {
  std::array<utf8proc_int32_t, 32> parts{};
  int lastBoundary = 0;
  const utf8proc_ssize_t count = utf8proc_decompose_char(
      static_cast<utf8proc_int32_t>(scalar), parts.data(), static_cast<utf8proc_ssize_t>(parts.size()),
      static_cast<utf8proc_option_t>(UTF8PROC_DECOMPOSE | UTF8PROC_COMPAT | UTF8PROC_CASEFOLD), &lastBoundary);
  // A lone surrogate has no parts.
  if (count < 0 || count > static_cast<utf8proc_ssize_t>(parts.size())) return {scalar};
  return {parts.begin(), parts.begin() + count};
}

}  // namespace

std::vector<SearchWord> searchWords(std::string_view text) {
  const std::u16string units = utf16FromUtf8(text);
  std::vector<SearchWord> words;
  bool isInWord = false;
  for (std::size_t i = 0; i < units.size();) {
    const char32_t scalar = scalarAt(units, i);
    const std::size_t end = i + unitsOf(scalar);
    for (const char32_t part : decomposed(scalar)) {
      if (isMark(part)) {
        if (isInWord) words.back().places.back() = end;
        continue;
      }
      if (part == '\'' || part == U'’') continue;
      const bool wasInWord = std::exchange(isInWord, isOfWord(part));
      if (!isInWord) continue;
      if (!wasInWord) words.push_back({"", {i}});
      SearchWord& word = words.back();
      const std::string letter = plainLetter(part);
      word.letters += letter;
      word.places.back() = i;
      word.places.resize(word.letters.size(), i);
      word.places.push_back(end);
    }
    i = end;
  }
  return words;
}

}  // namespace tessaluna::platform
