#include "tessaluna/platform/foundation/URL.h"

#include <algorithm>
#include <vector>

namespace tessaluna::platform {

namespace {

constexpr std::string_view subDelimiters = "!$&'()*+,;=";

// Of ASCII alone, whatever the locale.
constexpr bool isLetter(char c) { return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z'); }
constexpr bool isDigit(char c) { return c >= '0' && c <= '9'; }
constexpr bool isHexDigit(char c) { return isDigit(c) || (c >= 'a' && c <= 'f') || (c >= 'A' && c <= 'F'); }
constexpr bool isIn(std::string_view characters, char c) { return characters.find(c) != characters.npos; }
constexpr bool isUnreserved(char c) { return isLetter(c) || isDigit(c) || isIn("-._~", c); }

bool consistsOf(std::string_view text, bool (*isMember)(char)) { return std::all_of(text.begin(), text.end(), isMember); }

// Unreserved characters, sub-delimiters, bytes written with a percent sign, and those of `more`.
bool isPlain(std::string_view text, std::string_view more) {
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (text[i] == '%') {
      if (i + 2 >= text.size() || !isHexDigit(text[i + 1]) || !isHexDigit(text[i + 2])) return false;
      i += 2;
    } else if (!isUnreserved(text[i]) && !isIn(subDelimiters, text[i]) && !isIn(more, text[i])) {
      return false;
    }
  }
  return true;
}

bool isScheme(std::string_view text) {
  return !text.empty() && isLetter(text.front()) &&
         consistsOf(text, [](char c) { return isLetter(c) || isDigit(c) || c == '+' || c == '-' || c == '.'; });
}

std::vector<std::string_view> split(std::string_view text, char at) {
  std::vector<std::string_view> pieces;
  for (std::size_t start = 0;;) {
    const std::size_t end = std::min(text.find(at, start), text.size());
    pieces.push_back(text.substr(start, end - start));
    if (end == text.size()) return pieces;
    start = end + 1;
  }
}

bool isIPv4Address(std::string_view text) {
  const auto pieces = split(text, '.');
  return pieces.size() == 4 && std::all_of(pieces.begin(), pieces.end(), [](std::string_view piece) {
           if (piece.empty() || piece.size() > 3 || !consistsOf(piece, isDigit)) return false;
           const bool hasLeadingZero = piece.size() > 1 && piece.front() == '0';
           return !hasLeadingZero && (piece.size() < 3 || piece <= "255");
         });
}

// How many groups of 16 bits a text of them is, an IPv4 address at the end counted as two; absent if it is not such a text.
std::optional<std::size_t> countGroups(std::string_view text, bool mayEndInIPv4) {
  if (text.empty()) return 0;
  const auto pieces = split(text, ':');
  std::size_t count = 0;
  for (std::size_t i = 0; i < pieces.size(); ++i) {
    if (!pieces[i].empty() && pieces[i].size() <= 4 && consistsOf(pieces[i], isHexDigit)) count += 1;
    else if (mayEndInIPv4 && i + 1 == pieces.size() && isIPv4Address(pieces[i])) count += 2;
    else return std::nullopt;
  }
  return count;
}

// Eight groups, or fewer around one "::".
bool isIPv6Address(std::string_view text) {
  const std::size_t gap = text.find("::");
  if (gap == text.npos) return countGroups(text, true) == 8;
  const auto before = countGroups(text.substr(0, gap), false), after = countGroups(text.substr(gap + 2), true);
  return before && after && *before + *after <= 7;
}

// "v", a version and a dot, then the address.
bool isFutureAddress(std::string_view text) {
  const std::size_t dot = text.find('.');
  return dot != text.npos && dot > 1 && dot + 1 < text.size() && (text[0] == 'v' || text[0] == 'V') &&
         consistsOf(text.substr(1, dot - 1), isHexDigit) && !isIn(text, '%') && isPlain(text.substr(dot + 1), ":");
}

}  // namespace

bool URL::parseAuthority(std::size_t start, std::size_t end) {
  const std::string_view text = std::string_view(text_).substr(0, end);
  if (const std::size_t at = text.find('@', start); at != text.npos) {
    user_ = Span{start, at - start};
    if (!isPlain(*user(), ":")) return false;
    start = at + 1;
  }
  const bool hasBrackets = start < end && text[start] == '[';
  const std::size_t bracket = hasBrackets ? text.find(']', start) : start;
  if (bracket == text.npos) return false;
  const std::size_t hostEnd = hasBrackets ? bracket + 1 : std::min(text.find(':', start), end);
  host_ = Span{start, hostEnd - start};
  if (hasBrackets) {
    const std::string_view address = text.substr(start + 1, bracket - start - 1);
    if (!isIPv6Address(address) && !isFutureAddress(address)) return false;
  } else if (!isPlain(*host(), "")) {
    return false;
  }
  if (hostEnd == end) return true;
  port_ = Span{hostEnd + 1, end - hostEnd - 1};
  return text[hostEnd] == ':' && consistsOf(*port(), isDigit);
}

std::optional<URL> URL::URLWithString(std::string_view string) {
  if (string.empty()) return std::nullopt;
  URL url;
  url.text_ = string;
  const std::string_view text = url.text_;
  const auto spanTo = [](std::size_t start, std::size_t end) { return Span{start, end - start}; };

  std::size_t start = 0;
  if (const std::size_t first = text.find_first_of(":/?#"); first != text.npos && text[first] == ':') {
    if (!isScheme(text.substr(0, first))) return std::nullopt;
    url.scheme_ = spanTo(0, first);
    start = first + 1;
  }
  const std::size_t hash = std::min(text.find('#', start), text.size());
  if (hash < text.size()) url.fragment_ = spanTo(hash + 1, text.size());
  const std::size_t question = std::min(text.substr(0, hash).find('?', start), hash);
  if (question < hash) url.query_ = spanTo(question + 1, hash);
  if (text.substr(start, question - start).starts_with("//")) {
    const std::size_t authority = start + 2;
    start = std::min(text.find('/', authority), question);
    if (!url.parseAuthority(authority, start)) return std::nullopt;
  }
  url.path_ = spanTo(start, question);

  const bool isWellFormed = isPlain(url.path(), ":@/") && isPlain(url.query().value_or(""), ":@/?") &&
                            isPlain(url.fragment().value_or(""), ":@/?");
  return isWellFormed ? std::optional(std::move(url)) : std::nullopt;
}

}  // namespace tessaluna::platform
