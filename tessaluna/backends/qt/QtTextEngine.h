// Text as Qt shapes it: font fallback, ligatures, both directions. Glyphs are not hinted, so that a line is as wide at any
// device scale. What was shaped lately is kept, within bounds.
#pragma once

#include <memory>

#include "tessaluna/platform/backend/TextEngine.h"

namespace tessaluna::backend::qt {

class QtTextEngine : public TextEngine {
 public:
  QtTextEngine();
  ~QtTextEngine() override;

  bool hasFamily(std::string_view family) const override;
  FontMetrics metrics(const FontDescription& font) const override;
  std::shared_ptr<const ShapedLine> shape(std::u16string_view text, std::span<const FontSpan> fonts) const override;
  std::vector<std::size_t> breakOpportunities(std::u16string_view text) const override;

  // What was kept no longer holds: the desktop's font has changed.
  void forgetFonts();

 private:
  struct Kept;
  std::unique_ptr<Kept> kept_;
};

}  // namespace tessaluna::backend::qt
