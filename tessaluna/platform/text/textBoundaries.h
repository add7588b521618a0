// Where a caret stops on its way through a text: between user-perceived characters and at the ends of words. Indexes count
// UTF-16 units; one past the end counts as the end.
#pragma once

#include <cstddef>
#include <string_view>

#include "tessaluna/platform/foundation/Geometry.h"

namespace tessaluna::platform {

// The next border of a character after or before an index, or the text's end or start.
std::size_t characterBorderAfter(std::u16string_view text, std::size_t index);
std::size_t characterBorderBefore(std::u16string_view text, std::size_t index);

// The end of the word that the index is before or in, and the start of the one that it is after or in.
std::size_t wordEndAfter(std::u16string_view text, std::size_t index);
std::size_t wordStartBefore(std::u16string_view text, std::size_t index);

// What a double click on the character at the index selects: its word, or the blanks or other signs around it. At
// the end of the text it is the last of these.
NSRange wordRangeAt(std::u16string_view text, std::size_t index);

// The paragraph around an index, with its line's end.
NSRange lineRangeAt(std::u16string_view text, std::size_t index);

// The paragraph around an index, without the line's end.
NSRange paragraphRangeAt(std::u16string_view text, std::size_t index);

// Whether the first letter that has a direction runs from right to left.
bool isRightToLeft(std::u16string_view text);

}  // namespace tessaluna::platform
