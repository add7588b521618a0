#include "tessaluna/platform/text/textBoundaries.h"

#include <utf8proc.h>

#include <algorithm>

#include "tessaluna/platform/text/unicode.h"

namespace tessaluna::platform {

namespace {

enum class Sort { Word, Blank, Other };

Sort sortOfScalar(char32_t scalar) {
  switch (utf8proc_category(static_cast<utf8proc_int32_t>(scalar))) {
    case UTF8PROC_CATEGORY_LU:
    case UTF8PROC_CATEGORY_LL:
    case UTF8PROC_CATEGORY_LT:
    case UTF8PROC_CATEGORY_LM:
    case UTF8PROC_CATEGORY_LO:
    case UTF8PROC_CATEGORY_MN:
    case UTF8PROC_CATEGORY_MC:
    case UTF8PROC_CATEGORY_ME:
    case UTF8PROC_CATEGORY_ND:
    case UTF8PROC_CATEGORY_NL:
    case UTF8PROC_CATEGORY_NO:
    case UTF8PROC_CATEGORY_PC: return Sort::Word;
    case UTF8PROC_CATEGORY_ZS:
    case UTF8PROC_CATEGORY_ZL:
    case UTF8PROC_CATEGORY_ZP:
    case UTF8PROC_CATEGORY_CC: return Sort::Blank;
    default: return Sort::Other;
  }
}

bool isApostrophe(char32_t scalar) { return scalar == '\'' || scalar == 0x2019; }

// Of the character that starts at the border. An apostrophe between two letters belongs to their word.
Sort sortOfCharacter(std::u16string_view text, const std::vector<std::size_t>& borders, std::size_t character) {
  const char32_t scalar = scalarAt(text, borders[character]);
  const auto isLetter = [&](std::size_t other) { return sortOfScalar(scalarAt(text, borders[other])) == Sort::Word; };
  const bool isInside = character > 0 && character + 2 < borders.size();
  if (isApostrophe(scalar) && isInside && isLetter(character - 1) && isLetter(character + 1)) return Sort::Word;
  return sortOfScalar(scalar);
}

// The number of the character that the index is in or before; at the end, the number of characters.
std::size_t characterOf(const std::vector<std::size_t>& borders, std::size_t index) {
  return static_cast<std::size_t>(std::upper_bound(borders.begin(), borders.end(), index) - borders.begin()) - 1;
}

// The characters of the line that a unit is in, and the line's end. No character and no word reaches into another line, so
// that a step in a long text looks at one of its lines.
struct Line {
  Line(std::u16string_view text, std::size_t index) {
    const NSRange range = lineRangeAt(text, index);
    start = range.location;
    units = text.substr(start, range.length);
    borders = characterBorders(units);
  }
  std::size_t count() const { return borders.size() - 1; }
  Sort sortAt(std::size_t character) const { return sortOfCharacter(units, borders, character); }
  // How far characters of one sort reach from a border, to either side.
  std::size_t startOf(Sort sort, std::size_t border) const {
    while (border > 0 && sortAt(border - 1) == sort) --border;
    return border;
  }
  std::size_t endOf(Sort sort, std::size_t border) const {
    while (border < count() && sortAt(border) == sort) ++border;
    return border;
  }

  std::size_t start = 0;
  std::u16string_view units;
  std::vector<std::size_t> borders;  // from the line's start
};

}  // namespace

std::size_t characterBorderAfter(std::u16string_view text, std::size_t index) {
  if (index >= text.size()) return text.size();
  const Line line(text, index);
  return line.start + *std::upper_bound(line.borders.begin(), line.borders.end(), index - line.start);
}

std::size_t characterBorderBefore(std::u16string_view text, std::size_t index) {
  if (index == 0 || index > text.size()) return std::min(index, text.size());
  const Line line(text, index - 1);
  return line.start + *std::prev(std::lower_bound(line.borders.begin(), line.borders.end(), index - line.start));
}

std::size_t wordEndAfter(std::u16string_view text, std::size_t index) {
  while (index < text.size()) {
    const Line line(text, index);
    std::size_t character = characterOf(line.borders, index - line.start);
    while (character < line.count() && line.sortAt(character) != Sort::Word) ++character;
    while (character < line.count() && line.sortAt(character) == Sort::Word) ++character;
    index = line.start + line.borders[character];
    if (character < line.count() || line.sortAt(character - 1) == Sort::Word) break;
  }
  return std::min(index, text.size());
}

std::size_t wordStartBefore(std::u16string_view text, std::size_t index) {
  index = std::min(index, text.size());
  while (index > 0) {
    const Line line(text, index - 1);
    const auto at = std::lower_bound(line.borders.begin(), line.borders.end(), index - line.start);
    auto character = static_cast<std::size_t>(at - line.borders.begin());
    while (character > 0 && line.sortAt(character - 1) != Sort::Word) --character;
    const bool hasWord = character > 0;
    while (character > 0 && line.sortAt(character - 1) == Sort::Word) --character;
    index = line.start + line.borders[character];
    if (hasWord) break;
  }
  return index;
}

NSRange wordRangeAt(std::u16string_view text, std::size_t index) {
  if (text.empty()) return {0, 0};
  index = std::min(index, text.size() - 1);
  const Line line(text, index);
  const std::size_t character = characterOf(line.borders, index - line.start);
  const Sort sort = line.sortAt(character);
  const std::size_t first = line.startOf(sort, character), end = line.endOf(sort, character);
  std::size_t from = line.start + line.borders[first], to = line.start + line.borders[end];
  // Only blanks, as the ends of lines are, continue in the lines around.
  for (bool continues = sort == Sort::Blank && first == 0; continues && from > 0;) {
    const Line before(text, from - 1);
    const std::size_t start = before.startOf(sort, before.count());
    from = before.start + before.borders[start];
    continues = start == 0;
  }
  for (bool continues = sort == Sort::Blank && end == line.count(); continues && to < text.size();) {
    const Line after(text, to);
    const std::size_t last = after.endOf(sort, 0);
    to = after.start + after.borders[last];
    continues = last == after.count();
  }
  return {from, to - from};
}

NSRange lineRangeAt(std::u16string_view text, std::size_t index) {
  const auto isBetween = [&](std::size_t i) { return i > 0 && i < text.size() && text[i - 1] == '\r' && text[i] == '\n'; };
  std::size_t end = std::min(index, text.size()), start = isBetween(end) ? end - 1 : end;
  while (start > 0 && !isLineEnd(text[start - 1])) --start;
  while (end < text.size() && !isLineEnd(text[end])) ++end;
  if (end < text.size()) end += isBetween(end + 1) ? 2 : 1;
  return {start, end - start};
}

NSRange paragraphRangeAt(std::u16string_view text, std::size_t index) {
  std::size_t start = std::min(index, text.size()), end = start;
  while (start > 0 && !isLineEnd(text[start - 1])) --start;
  while (end < text.size() && !isLineEnd(text[end])) ++end;
  return {start, end - start};
}

bool isRightToLeft(std::u16string_view text) {
  for (std::size_t i = 0; i < text.size(); i += unitsOf(scalarAt(text, i))) {
    switch (utf8proc_get_property(static_cast<utf8proc_int32_t>(scalarAt(text, i)))->bidi_class) {
      case UTF8PROC_BIDI_CLASS_L: return false;
      case UTF8PROC_BIDI_CLASS_R:
      case UTF8PROC_BIDI_CLASS_AL: return true;
      default: break;
    }
  }
  return false;
}

}  // namespace tessaluna::platform
