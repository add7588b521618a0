// A font whose every number can be worked out by hand: each user-perceived character advances by half of the point size, and
// a line is 1.2 times the size high, of which a quarter lies below the baseline. A glyph is a box; its index is the first
// scalar of its character. There are the families "Headless" and the desktop's own; a line may end after a blank. Letters of
// scripts that run from right to left do so, with what is between two of them; lines begin at the left all the same.
#pragma once

#include <set>
#include <string>

#include "tessaluna/platform/backend/TextEngine.h"

namespace tessaluna::backend::headless {

class HeadlessTextEngine : public TextEngine {
 public:
  bool hasFamily(std::string_view family) const override { return families_.contains(family); }
  FontMetrics metrics(const FontDescription& font) const override;
  std::shared_ptr<const ShapedLine> shape(std::u16string_view text, std::span<const FontSpan> fonts) const override;
  std::vector<std::size_t> breakOpportunities(std::u16string_view text) const override;

  // For tests: makes a family that is there.
  void addFamily(std::string family) { families_.insert(std::move(family)); }

 private:
  std::set<std::string, std::less<>> families_{"Headless"};
};

}  // namespace tessaluna::backend::headless
