// The strings of a MultipleLinksTextField as one text, joined by ", ": where each of them is in it, and how the text is cut to a
// width. Attributes are the caller's and not kept.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "tessaluna/platform/foundation/Geometry.h"
#include "tessaluna/platform/text/NSAttributedString.h"

namespace TessalunaUIKit {

class JoinedLinks {
 public:
  // From `lower` up to and without `upper`.
  struct Span {
    std::int64_t lower = 0, upper = 0;
  };

  // In UTF-8. Absent and empty are alike: the text and the places in points go, those in characters stay as they were. A place
  // in points that no integer holds stops the program.
  void setStrings(const std::optional<std::vector<std::string>>& strings,
                  const tessaluna::platform::NSAttributes& attributes);

  const std::u16string& text() const { return text_; }
  bool hasLinks() const { return places_ && !places_->empty(); }
  // Of each string, in whole points from the text's left edge, as measured when the strings were set; absent without strings.
  const std::optional<std::vector<Span>>& places() const { return places_; }
  // Of each string, in user-perceived characters of the text; absent before the first strings.
  const std::optional<std::vector<Span>>& characters() const { return characters_; }

  struct Cut {
    std::u16string text;
    // Where links end, in points: at the "…" that ends the text, or a character before it; absent if nothing is cut off.
    std::optional<tessaluna::platform::CGFloat> suffixPosition;
    std::size_t suffixLength() const { return suffixPosition ? 1 : 0; }
  };
  // All of the text, also where it is up to a point too wide, or its beginning and "…". A width that is no greater than that of
  // "…" can stop the program.
  Cut cutToWidth(tessaluna::platform::CGFloat width, const tessaluna::platform::NSAttributes& attributes) const;

 private:
  std::u16string text_;
  std::optional<std::vector<Span>> places_, characters_;
};

}  // namespace TessalunaUIKit
