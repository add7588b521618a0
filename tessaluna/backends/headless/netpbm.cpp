#include "tessaluna/backends/headless/netpbm.h"

#include <cstdint>
#include <optional>
#include <string_view>

#include "tessaluna/platform/backend/imageHeader.h"

namespace tessaluna::backend::headless {

std::shared_ptr<const ImagePixels> decodeNetpbm(std::span<const std::byte> bytes) {
  std::string_view text(reinterpret_cast<const char*>(bytes.data()), bytes.size());
  const std::optional<NetpbmHeader> header = takeNetpbmHeader(text);
  if (!header || header->maximum != 255 || (header->depth != 3 && header->depth != 4)) return nullptr;
  if (header->width <= 0 || header->height <= 0 || header->width > maxImagePixels / header->height) return nullptr;
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
