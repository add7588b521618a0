#include "tessaluna/backends/headless/netpbm.h"

#include <algorithm>
#include <cstdint>
#include <optional>
#include <string_view>

namespace tessaluna::backend::headless {

namespace {

struct Header {
  std::int64_t width = 0, height = 0, maximum = 0, depth = 3;
};

constexpr bool isBlank(char c) { return c == ' ' || c == '\n' || c == '\t' || c == '\r'; }

// The next word of the text, taken off its front with the one blank behind it; comments are lines that begin with "#".
std::string_view takeWord(std::string_view& text) {
  while (!text.empty() && (isBlank(text.front()) || text.front() == '#')) {
    const bool isComment = text.front() == '#';
    text.remove_prefix(isComment ? std::min(text.find('\n'), text.size()) : 1);
  }
  std::size_t length = 0;
  while (length < text.size() && !isBlank(text[length])) ++length;
  const std::string_view word = text.substr(0, length);
  text.remove_prefix(std::min(length + 1, text.size()));
  return word;
}

// A size has at most nine digits: what is longer is no picture that anybody decodes. Absent for anything else.
std::optional<std::int64_t> takeNumber(std::string_view& text) {
  const std::string_view word = takeWord(text);
  if (word.empty() || word.size() > 9) return std::nullopt;
  std::int64_t number = 0;
  for (const char c : word) {
    if (c < '0' || c > '9') return std::nullopt;
    number = number * 10 + (c - '0');
  }
  return number;
}

std::optional<Header> takeHeader(std::string_view& text) {
  const std::string_view magic = takeWord(text);
  Header header;
  if (magic == "P6") {
    for (std::int64_t* field : {&header.width, &header.height, &header.maximum}) {
      const std::optional<std::int64_t> number = takeNumber(text);
      if (!number) return std::nullopt;
      *field = *number;
    }
    return header;
  }
  if (magic != "P7") return std::nullopt;
  for (std::string_view key = takeWord(text); key != "ENDHDR"; key = takeWord(text)) {
    if (key == "TUPLTYPE") {
      takeWord(text);  // said by the depth already
      continue;
    }
    std::int64_t* const field = key == "WIDTH"    ? &header.width
                                : key == "HEIGHT" ? &header.height
                                : key == "MAXVAL" ? &header.maximum
                                : key == "DEPTH"  ? &header.depth
                                                  : nullptr;
    const std::optional<std::int64_t> number = field ? takeNumber(text) : std::nullopt;
    if (!number) return std::nullopt;
    *field = *number;
  }
  return header;
}

}  // namespace

std::shared_ptr<const ImagePixels> decodeNetpbm(std::span<const std::byte> bytes) {
  std::string_view text(reinterpret_cast<const char*>(bytes.data()), bytes.size());
  const std::optional<Header> header = takeHeader(text);
  if (!header || header->maximum != 255 || (header->depth != 3 && header->depth != 4)) return nullptr;
  if (header->width <= 0 || header->height <= 0 || header->width > mostImagePixels / header->height) return nullptr;
  const std::int64_t count = header->width * header->height;
  if (static_cast<std::int64_t>(text.size()) < count * header->depth) return nullptr;

  auto pixels = std::make_shared<ImagePixels>();
  pixels->width = static_cast<int>(header->width);
  pixels->height = static_cast<int>(header->height);
  pixels->isOpaque = header->depth == 3;
  pixels->argb.reserve(static_cast<std::size_t>(count));
  for (std::int64_t i = 0; i < count; ++i) {
    const auto channel = [&](std::int64_t c) {
      return static_cast<std::uint32_t>(static_cast<unsigned char>(text[static_cast<std::size_t>(i * header->depth + c)]));
    };
    const std::uint32_t alpha = header->depth == 4 ? channel(3) : 255;
    const auto multiplied = [&](std::int64_t c) { return (channel(c) * alpha + 127) / 255; };
    pixels->argb.push_back(alpha << 24 | multiplied(0) << 16 | multiplied(1) << 8 | multiplied(2));
  }
  return pixels;
}

}  // namespace tessaluna::backend::headless
