// Between the UTF-8 of the interface and the UTF-16 that ranges count in, and the borders of user-perceived characters.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "tessaluna/platform/foundation/languageVersion.h"

namespace tessaluna::platform {

// Bytes that are not UTF-8 become U+FFFD, one for each maximal part of a character.
std::u16string utf16FromUtf8(std::string_view text);
// A lone surrogate becomes U+FFFD.
std::string utf8FromUtf16(std::u16string_view text);
std::string utf8FromScalar(char32_t scalar);
// The first scalar of a UTF-8 text; absent characters give 0.
char32_t firstScalar(std::string_view text);
// Each scalar by itself, whatever the language.
std::string lowercase(std::string_view text);

// The scalar at the index, which is that of its first unit. A lone surrogate is itself.
char32_t scalarAt(std::u16string_view text, std::size_t index);
constexpr std::size_t unitsOf(char32_t scalar) { return scalar > 0xFFFF ? 2 : 1; }
// Whether a line or paragraph ends with the unit.
bool isLineEnd(char16_t unit);

// The offsets in UTF-16 units at which user-perceived characters (extended grapheme clusters) start, and the length last. A
// lone surrogate is a character.
std::vector<std::size_t> characterBorders(std::u16string_view text);

}  // namespace tessaluna::platform
