#include "tessaluna/platform/text/linePieces.h"

#include <utf8proc.h>

#include <algorithm>
#include <cstdint>
#include <iterator>
#include <optional>
#include <unordered_map>
#include <utility>

#include "tessaluna/platform/text/textBoundaries.h"
#include "tessaluna/platform/text/unicode.h"

namespace tessaluna::platform {

namespace {

// What a character is to the order of its line. The rules are those of Unicode's bidirectional algorithm (UAX 9) for a line
// without marks that set directions by hand.
enum class Kind : std::uint8_t {
  Along,    // a letter in the direction of the line
  Against,  // one in the other direction
  Number,   // follows the letter before it
  ArabicNumber,
  NumberSign,  // goes with a number that it touches
  Neutral,     // takes the direction of the letters around it, or that of the line between two directions
};

// Absent for a mark that sets directions.
std::optional<Kind> kindOf(char32_t scalar, bool isLineRightToLeft) {
  switch (utf8proc_get_property(static_cast<utf8proc_int32_t>(scalar))->bidi_class) {
    case UTF8PROC_BIDI_CLASS_L: return isLineRightToLeft ? Kind::Against : Kind::Along;
    case UTF8PROC_BIDI_CLASS_R:
    case UTF8PROC_BIDI_CLASS_AL: return isLineRightToLeft ? Kind::Along : Kind::Against;
    case UTF8PROC_BIDI_CLASS_EN: return Kind::Number;
    case UTF8PROC_BIDI_CLASS_AN: return Kind::ArabicNumber;
    case UTF8PROC_BIDI_CLASS_ET: return Kind::NumberSign;
    case UTF8PROC_BIDI_CLASS_LRE:
    case UTF8PROC_BIDI_CLASS_LRO:
    case UTF8PROC_BIDI_CLASS_RLE:
    case UTF8PROC_BIDI_CLASS_RLO:
    case UTF8PROC_BIDI_CLASS_PDF:
    case UTF8PROC_BIDI_CLASS_LRI:
    case UTF8PROC_BIDI_CLASS_RLI:
    case UTF8PROC_BIDI_CLASS_FSI:
    case UTF8PROC_BIDI_CLASS_PDI: return std::nullopt;
    default: return Kind::Neutral;
  }
}

// The characters of a line.
struct Characters {
  std::vector<Kind> kinds;
  // Of a bracket that has a partner: where that is. Both have one direction.
  std::unordered_map<std::size_t, std::size_t> partners;
};

bool isPair(char32_t opening, char32_t closing) { return closing == opening + 1 || closing == opening + 2; }

std::unordered_map<std::size_t, std::size_t> partnersIn(std::u16string_view line, const std::vector<std::size_t>& borders) {
  constexpr std::size_t maxOpen = 63;  // Unicode's limit
  std::unordered_map<std::size_t, std::size_t> partners;
  std::vector<std::pair<char32_t, std::size_t>> open;
  for (std::size_t i = 0; i + 1 < borders.size(); ++i) {
    const char32_t scalar = scalarAt(line, borders[i]);
    const utf8proc_property_t& property = *utf8proc_get_property(static_cast<utf8proc_int32_t>(scalar));
    if (!property.bidi_mirrored) continue;
    if (property.category == UTF8PROC_CATEGORY_PS) {
      if (open.size() == maxOpen) break;
      open.emplace_back(scalar, i);
    } else if (property.category == UTF8PROC_CATEGORY_PE) {
      const auto found =
          std::find_if(open.rbegin(), open.rend(), [&](const auto& each) { return isPair(each.first, scalar); });
      if (found == open.rend()) continue;
      partners[found->second] = i;
      partners[i] = found->second;
      open.erase(std::prev(found.base()), open.end());
    }
  }
  return partners;
}

// A stretch of characters.
struct Stretch {
  std::size_t first = 0, end = 0;
  bool isAgainst =
      false;  // from the first letter against the line's direction to the last one, with nothing along it between
};

// The stretches against the line's direction that are longer than so many characters, and what is between them.
std::vector<Stretch> stretchesOf(const Characters& characters, bool isLineRightToLeft, std::size_t most) {
  const std::vector<Kind>& kinds = characters.kinds;
  std::vector<Stretch> stretches;
  std::size_t done = 0;
  bool isInStretch = false;
  std::size_t begin = 0, end = 0;  // of what belongs to the stretch for certain
  struct Opening {
    std::size_t partner, endBefore;
  };
  std::vector<Opening> openings;  // in the stretch
  const auto endStretch = [&](std::size_t next) {
    if (!std::exchange(isInStretch, false)) return;
    // A bracket whose partner is not in the stretch may run along the line.
    for (const Opening& opening : openings)
      if (opening.partner >= next) end = std::min(end, opening.endBefore);
    if (end > begin && end - begin > most) {
      if (begin > done) stretches.push_back({done, begin, false});
      stretches.push_back({begin, end, true});
      done = end;
    }
    openings.clear();
  };
  bool isNumber = false, isAfterArabicNumber = false, isAfterBracket = false;
  for (std::size_t i = 0; i < kinds.size(); ++i) {
    const Kind kind = kinds[i];
    isNumber = kind == Kind::Number || kind == Kind::ArabicNumber || (isNumber && kind == Kind::NumberSign);
    const auto bracket = kind == Kind::Neutral ? characters.partners.find(i) : characters.partners.end();
    const bool isBracket = bracket != characters.partners.end();
    if (isInStretch && isBracket && bracket->second > i) openings.push_back({bracket->second, end});
    // An Arabic number runs as letters from right to left do to what is around it: in a line of that direction it ends the
    // stretch, in another line one that comes after it has begun with it.
    const bool endsHere = kind == Kind::Along || (isLineRightToLeft && kind == Kind::ArabicNumber) ||
                          (isInStretch && isBracket && bracket->second < begin);
    // What follows the end of a stretch without a letter along the line may be a number that goes with its letters.
    if (endsHere && isBracket) isAfterBracket = true;
    if (kind == Kind::Along) isAfterBracket = false;
    if (isAfterBracket && kind == Kind::Number && !isInStretch) isAfterArabicNumber = true;
    if (endsHere) endStretch(i);
    else if (kind == Kind::Against && !isInStretch && !isAfterArabicNumber) {
      isInStretch = true;
      begin = i;
    }
    // The second bracket of a pair with something in it runs as that does.
    const bool closesPair = isBracket && bracket->second < i && end > bracket->second;
    if (isInStretch && (kind == Kind::Against || isNumber || closesPair)) end = i + 1;
    if (kind == Kind::ArabicNumber || endsHere) isAfterArabicNumber = kind == Kind::ArabicNumber && !isLineRightToLeft;
  }
  endStretch(kinds.size());
  if (done < kinds.size()) stretches.push_back({done, kinds.size(), false});
  return stretches;
}

// The brackets that run as what is between them says, and not as the letters beside them would have it: no piece may end between
// such a one and its partner. Of each character whether a pair of them begins (1) or ends (-1) there.
std::vector<std::int8_t> unsureBrackets(const Characters& characters) {
  const std::vector<Kind>& kinds = characters.kinds;
  std::vector<bool> isUnsure(kinds.size());
  const auto isLetter = [](Kind kind) { return kind == Kind::Along || kind == Kind::Against; };
  Kind before = Kind::Along;
  for (std::size_t i = 0; i < kinds.size(); ++i) {
    isUnsure[i] = before != Kind::Along;
    if (kinds[i] != Kind::Neutral) before = isLetter(kinds[i]) ? kinds[i] : Kind::Against;
  }
  std::vector<std::int8_t> steps(kinds.size());
  for (const auto& [opening, closing] : characters.partners) {
    if (opening > closing || (!isUnsure[opening] && !isUnsure[closing])) continue;
    ++steps[opening];
    --steps[closing];
  }
  return steps;
}

// Whether the letter changes its form with the one before it.
bool mayJoin(std::u16string_view line, std::size_t index) {
  return utf8proc_get_property(static_cast<utf8proc_int32_t>(scalarAt(line, index)))->bidi_class == UTF8PROC_BIDI_CLASS_AL;
}

// How many times as long as others a piece gets before a word of joined letters is cut.
constexpr std::size_t joinedPieceFactor = 8;

}  // namespace

LinePieces linePieces(std::u16string_view line, std::size_t least, std::size_t most) {
  const std::vector<std::size_t> borders = characterBorders(line);
  const bool isTurned = isRightToLeft(line);
  LinePieces result;
  Characters characters{.kinds = std::vector<Kind>(borders.size() - 1), .partners = {}};
  std::vector<Kind>& kinds = characters.kinds;
  bool isWhole = line.size() <= most;
  for (std::size_t i = 0; i < kinds.size(); ++i) {
    const std::optional<Kind> kind = kindOf(scalarAt(line, borders[i]), isTurned);
    if (!kind) isWhole = true;
    else kinds[i] = *kind;
  }
  if (isWhole) return {.inTextOrder = {{0, line.size(), isTurned}}, .fromLeft = {0}};
  // With letters of one direction only, numbers and signs follow it, too.
  const auto turns = [](Kind kind) { return kind == Kind::Against || kind == Kind::ArabicNumber; };
  if (!isTurned && std::ranges::none_of(kinds, turns)) std::ranges::fill(kinds, Kind::Along);
  else characters.partners = partnersIn(line, borders);
  const std::vector<std::int8_t> unsure = unsureBrackets(characters);

  std::vector<std::size_t>& order = result.fromLeft;
  for (const Stretch& stretch : stretchesOf(characters, isTurned, most)) {
    const std::size_t firstPiece = result.inTextOrder.size();
    const bool isRightToLeft = isTurned != stretch.isAgainst;
    const Kind letter = stretch.isAgainst ? Kind::Against : Kind::Along;
    std::size_t start = borders[stretch.first];
    const auto endPiece = [&](std::size_t end) {
      result.inTextOrder.push_back({start, end - start, isRightToLeft});
      start = end;
    };
    // Between two letters of the stretch's own direction, before the second one.
    std::optional<Kind> before;
    int unsurePairs = 0;  // that the character is in
    for (std::size_t i = stretch.first; i < stretch.end; ++i) {
      const std::size_t length = borders[i] - start;
      const bool isCut =
          kinds[i] == letter && before == letter && length >= least && (stretch.isAgainst || unsurePairs == 0);
      if (isCut && (line[borders[i] - 1] == u' ' || length >= (mayJoin(line, borders[i]) ? joinedPieceFactor * most : most)))
        endPiece(borders[i]);
      if (kinds[i] != Kind::Neutral) before = kinds[i];
      unsurePairs += unsure[i];
    }
    endPiece(borders[stretch.end]);
    // Among themselves from the side where the stretch begins; the line's stretches are turned as a whole below.
    for (std::size_t piece = firstPiece; piece < result.inTextOrder.size(); ++piece) order.push_back(piece);
    if (stretch.isAgainst) std::reverse(order.begin() + static_cast<std::ptrdiff_t>(firstPiece), order.end());
  }
  if (isTurned) std::ranges::reverse(order);
  return result;
}

}  // namespace tessaluna::platform
