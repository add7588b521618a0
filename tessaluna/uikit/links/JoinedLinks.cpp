#include "tessaluna/uikit/links/JoinedLinks.h"

#include <string_view>

#include "tessaluna/platform/foundation/stopProgram.h"
#include "tessaluna/platform/text/TextLayout.h"
#include "tessaluna/platform/text/unicode.h"
#include "tessaluna/uikit/links/wholePoints.h"

namespace TessalunaUIKit {

using namespace tessaluna::platform;

namespace {

constexpr std::u16string_view separator = u", ";
constexpr std::u16string_view ellipsis = u"…";

CGFloat widthOf(std::u16string_view text, const NSAttributes& attributes) {
  return sizeWithAttributes(text, attributes).width;
}

// A text that can be cut after any of its user-perceived characters.
class CuttableText {
 public:
  CuttableText(std::u16string_view text, const NSAttributes& attributes)
      : text_(text), attributes_(attributes), borders_(characterBorders(text)) {}

  std::int64_t characterCount() const { return static_cast<std::int64_t>(borders_.size()) - 1; }
  CGFloat widthOfPrefix(std::int64_t characters) const { return widthOf(prefix(characters), attributes_); }
  std::u16string cutAfter(std::int64_t characters) const { return std::u16string(prefix(characters)).append(ellipsis); }
  CGFloat widthCutAfter(std::int64_t characters) const { return widthOf(cutAfter(characters), attributes_); }

 private:
  std::u16string_view prefix(std::int64_t characters) const {
    if (characters < 0) stopProgram("MultipleLinksTextField: the width is no greater than that of \"…\"");
    return text_.substr(0, borders_[static_cast<std::size_t>(characters)]);
  }

  std::u16string_view text_;
  const NSAttributes& attributes_;
  std::vector<std::size_t> borders_;
};

}  // namespace

void JoinedLinks::setStrings(const std::optional<std::vector<std::string>>& strings, const NSAttributes& attributes) {
  text_.clear();
  if (!strings || strings->empty()) {
    places_.reset();
    return;
  }

  const CGFloat separatorWidth = widthOf(separator, attributes);
  places_.emplace();
  characters_.emplace();
  CGFloat x = 0;
  std::int64_t character = 0;
  for (const std::string& utf8 : *strings) {
    // Intentional: whether a separator precedes the string depends on x, and not on the string's index.
    if (x > 0) text_ += separator;
    const std::u16string string = utf16FromUtf8(utf8);
    text_ += string;

    const auto count = static_cast<std::int64_t>(characterBorders(string).size()) - 1;
    characters_->push_back({character, character + count});
    character += count + 2;

    // Intentional: each string is measured alone, so that kerning at a separator does not count.
    const CGFloat width = widthOf(string, attributes);
    places_->push_back({wholePoints(x), wholePoints(x + width)});
    x += width + separatorWidth;
  }
}

JoinedLinks::Cut JoinedLinks::cutToWidth(CGFloat width, const NSAttributes& attributes) const {
  const CGFloat budget = width + 1;
  if (budget >= widthOf(text_, attributes)) return {.text = text_, .suffixPosition = {}};

  const CuttableText text(text_, attributes);
  std::int64_t low = 0, high = text.characterCount();
  while (high > low) {
    const std::int64_t middle = (low + high) / 2;
    const CGFloat candidate = text.widthCutAfter(middle);
    if (width > candidate) {
      low = middle + 1;
    } else if (candidate > width) {
      high = middle - 1;
    } else {
      // Intentional: on an exact hit the last visible character is not part of a link.
      const CGFloat linksEnd = text.widthOfPrefix(middle - 1);
      return {.text = text.cutAfter(middle), .suffixPosition = linksEnd};
    }
  }
  std::int64_t position = high;
  if (position > 0 && text.widthCutAfter(position) > budget) --position;
  return {.text = text.cutAfter(position), .suffixPosition = text.widthOfPrefix(position)};
}

}  // namespace TessalunaUIKit
