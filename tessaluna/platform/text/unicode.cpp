#include "tessaluna/platform/text/unicode.h"

#include <utf8proc.h>

namespace tessaluna::platform {

namespace {

constexpr char32_t replacement = 0xFFFD;

constexpr bool isHighSurrogate(char16_t unit) { return (unit & 0xFC00) == 0xD800; }
constexpr bool isLowSurrogate(char16_t unit) { return (unit & 0xFC00) == 0xDC00; }

// Takes one scalar off the front of the text; of bytes that are none, as many as could have begun one.
char32_t takeScalar(std::string_view& text) {
  const auto byte = [&](std::size_t i) { return static_cast<unsigned char>(text[i]); };
  const unsigned char first = byte(0);
  const auto take = [&](std::size_t count, char32_t scalar) {
    text.remove_prefix(count);
    return scalar;
  };
  if (first < 0x80) return take(1, first);
  struct Lead {
    int following;
    char32_t bits;
    unsigned char low, high;  // what the second byte may be: excludes overlong forms, surrogates and beyond U+10FFFF
  };
  Lead lead{};
  if (first >= 0xC2 && first <= 0xDF) lead = {1, first & 0x1Fu, 0x80, 0xBF};
  else if (first == 0xE0) lead = {2, 0, 0xA0, 0xBF};
  else if (first == 0xED) lead = {2, 0xD, 0x80, 0x9F};
  else if (first >= 0xE1 && first <= 0xEF) lead = {2, first & 0xFu, 0x80, 0xBF};
  else if (first == 0xF0) lead = {3, 0, 0x90, 0xBF};
  else if (first >= 0xF1 && first <= 0xF3) lead = {3, first & 7u, 0x80, 0xBF};
  else if (first == 0xF4) lead = {3, 4, 0x80, 0x8F};
  else return take(1, replacement);

  char32_t scalar = lead.bits;
  for (int i = 1; i <= lead.following; ++i) {
    const unsigned char low = i == 1 ? lead.low : 0x80, high = i == 1 ? lead.high : 0xBF;
    if (static_cast<std::size_t>(i) >= text.size() || byte(i) < low || byte(i) > high) return take(i, replacement);
    scalar = scalar << 6 | (byte(i) & 0x3Fu);
  }
  return take(lead.following + 1, scalar);
}

void appendUtf8(std::string& text, char32_t scalar) {
  const auto put = [&](char32_t byte) { text += static_cast<char>(byte); };
  if (scalar < 0x80) {
    put(scalar);
  } else if (scalar < 0x800) {
    put(0xC0 | scalar >> 6);
    put(0x80 | (scalar & 0x3F));
  } else if (scalar < 0x10000) {
    put(0xE0 | scalar >> 12);
    put(0x80 | (scalar >> 6 & 0x3F));
    put(0x80 | (scalar & 0x3F));
  } else {
    put(0xF0 | scalar >> 18);
    put(0x80 | (scalar >> 12 & 0x3F));
    put(0x80 | (scalar >> 6 & 0x3F));
    put(0x80 | (scalar & 0x3F));
  }
}

}  // namespace

char32_t scalarAt(std::u16string_view text, std::size_t index) {
  const char16_t unit = text[index];
  if (!isHighSurrogate(unit) || index + 1 >= text.size() || !isLowSurrogate(text[index + 1])) return unit;
  return 0x10000 + ((unit - 0xD800u) << 10) + (text[index + 1] - 0xDC00u);
}

bool isLineEnd(char16_t unit) { return unit == '\n' || unit == '\r' || unit == 0x2028 || unit == 0x2029; }

std::u16string utf16FromUtf8(std::string_view text) {
  std::u16string result;
  result.reserve(text.size());
  while (!text.empty()) {
    const char32_t scalar = takeScalar(text);
    if (scalar < 0x10000) {
      result += static_cast<char16_t>(scalar);
    } else {
      result += static_cast<char16_t>(0xD800 + ((scalar - 0x10000) >> 10));
      result += static_cast<char16_t>(0xDC00 + ((scalar - 0x10000) & 0x3FF));
    }
  }
  return result;
}

std::string utf8FromUtf16(std::u16string_view text) {
  std::string result;
  result.reserve(text.size());
  for (std::size_t i = 0, length; i < text.size(); i += length) {
    const char32_t scalar = scalarAt(text, i);
    length = unitsOf(scalar);
    appendUtf8(result, scalar >= 0xD800 && scalar < 0xE000 ? replacement : scalar);
  }
  return result;
}

std::string utf8FromScalar(char32_t scalar) {
  std::string result;
  appendUtf8(result, scalar);
  return result;
}

char32_t firstScalar(std::string_view text) { return text.empty() ? 0 : takeScalar(text); }

std::string lowercase(std::string_view text) {
  std::string result;
  while (!text.empty())
    appendUtf8(result, static_cast<char32_t>(utf8proc_tolower(static_cast<utf8proc_int32_t>(takeScalar(text)))));
  return result;
}

std::vector<std::size_t> characterBorders(std::u16string_view text) {
  std::vector<std::size_t> borders;
  utf8proc_int32_t state = 0;
  char32_t previous = 0;
  for (std::size_t i = 0, length; i < text.size(); i += length) {
    const char32_t scalar = scalarAt(text, i);
    length = unitsOf(scalar);
    const bool isBorder = i == 0 || utf8proc_grapheme_break_stateful(static_cast<utf8proc_int32_t>(previous),
                                                                     static_cast<utf8proc_int32_t>(scalar), &state);
    if (isBorder) borders.push_back(i);
    previous = scalar;
  }
  borders.push_back(text.size());
  return borders;
}

}  // namespace tessaluna::platform
