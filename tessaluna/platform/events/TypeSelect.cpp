#include "tessaluna/platform/events/TypeSelect.h"

#include <algorithm>

#include "tessaluna/platform/text/unicode.h"

namespace tessaluna::platform {

namespace {

// The first that begins so, from an entry on and once around.
std::optional<std::size_t> findFrom(std::size_t first, std::size_t count, const TypeSelect::TitleAt& titleAt,
                                    std::string_view start) {
  for (std::size_t i = 0; i < count; ++i) {
    const std::size_t index = (first + i) % count;
    const std::string title = titleAt(index);
    if (!title.empty() && lowercase(title).starts_with(start)) return index;
  }
  return std::nullopt;
}

}  // namespace

bool TypeSelect::takesText(std::string_view text, double now) {
  const char32_t scalar = firstScalar(text);
  if (scalar < 0x20 || scalar == 0x7F) return false;
  if (now - last_ > interval_) typed_.clear();
  if (typed_.empty() && text == " ") return false;
  last_ = now;
  before_ = typed_;
  typed_ += lowercase(text);
  return true;
}

void TypeSelect::takeBack() { typed_ = before_; }

std::optional<std::size_t> TypeSelect::entryAmong(std::size_t count, const TitleAt& titleAt,
                                                  std::optional<std::size_t> highlighted) const {
  if (count == 0 || typed_.empty()) return std::nullopt;
  const std::u16string units = utf16FromUtf8(typed_);
  const std::string first = utf8FromScalar(firstScalar(typed_));
  const std::size_t next = highlighted ? *highlighted + 1 : 0;
  // A first letter starts after the entry; a longer word may be that of the entry itself.
  if (typed_ == first) return findFrom(next, count, titleAt, first);
  if (const auto found = findFrom(highlighted.value_or(0), count, titleAt, typed_)) return found;
  // The same letter again and again goes from entry to entry.
  const bool isOneLetter = std::ranges::all_of(units, [&](char16_t unit) { return unit == units.front(); });
  return isOneLetter ? findFrom(next, count, titleAt, first) : std::nullopt;
}

}  // namespace tessaluna::platform
