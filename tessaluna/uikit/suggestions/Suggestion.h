// What the host gives for one row of a completion pop-up, and gets back when the selection moves.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>

#include "tessaluna/platform/graphics/NSImage.h"

namespace TessalunaUIKit {

struct Suggestion {
  std::string label;                                             // main text of the row
  std::optional<std::string> detailedLabel;                      // second text
  std::optional<std::int64_t> itemId;                            // the host's own; only carried back to it
  tessaluna::platform::Ref<tessaluna::platform::NSImage> image;  // may be null; a copy of the suggestion shares it

  Suggestion(std::string text, std::optional<std::int64_t> identifier) : label(std::move(text)), itemId(identifier) {}
  // Bytes that cannot be decoded leave the image null. They are not kept.
  Suggestion(std::string text, std::optional<std::int64_t> identifier, std::optional<std::string> secondText,
             std::optional<std::span<const std::byte>> imageData)
      : label(std::move(text)),
        detailedLabel(std::move(secondText)),
        itemId(identifier),
        image(imageData ? tessaluna::platform::NSImage::initWithData(*imageData) : nullptr) {}
};

}  // namespace TessalunaUIKit
