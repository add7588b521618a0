// What a backend knows of text: which families exist, how a line is shaped, and what its glyphs look like. Text comes in
// UTF-16; a lone surrogate is shaped as one character. All measures are in points, y up from the baseline.
#pragma once

#include <cstdint>
#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "tessaluna/platform/backend/ImagePixels.h"
#include "tessaluna/platform/backend/Path.h"

namespace tessaluna::backend {

struct FontDescription {
  std::string family;  // empty: the desktop's own
  double size = 13;
  bool isBold = false;
  friend bool operator==(const FontDescription&, const FontDescription&) = default;
};

struct FontMetrics {
  double ascent = 0;   // above the baseline
  double descent = 0;  // below it, positive
  double leading = 0;  // between two lines
};

// One font at one size, after fallback. Lives as long as somebody holds it.
class Typeface {
 public:
  virtual ~Typeface() = default;
  // In points, the origin on the baseline.
  virtual Path outline(std::uint32_t glyph) const = 0;
};

struct GlyphRun {
  std::shared_ptr<const Typeface> typeface;
  std::vector<std::uint32_t> glyphs;
  std::vector<CGPoint> positions;  // one for each glyph, from the start of the line
};

// A glyph with colors of its own, as emoji have.
struct GlyphPicture {
  std::shared_ptr<const ImagePixels> pixels;
  CGRect place;          // from the start of the line
  std::size_t font = 0;  // the index of the span that it comes from
};

// What is between two caret places: one user-perceived character, or a ligature's share of one.
struct TextCluster {
  std::size_t start = 0, length = 0;  // UTF-16 units
  double left = 0, right = 0;         // from the start of the line
  bool isRightToLeft = false;
};

struct ShapedLine {
  std::vector<GlyphRun> runs;
  std::vector<std::size_t> runFonts;   // for each run, the index of the span that it comes from
  std::vector<GlyphPicture> pictures;  // beside the runs, where such glyphs have no outline
  std::vector<TextCluster> clusters;   // in the order of the text
  double advance = 0;
  FontMetrics metrics;  // the largest of its fonts
};

struct FontSpan {
  FontDescription font;
  std::size_t length = 0;  // UTF-16 units
};

class TextEngine {
 public:
  virtual ~TextEngine() = default;
  // Whether exactly this family is installed.
  virtual bool hasFamily(std::string_view family) const = 0;
  virtual FontMetrics metrics(const FontDescription& font) const = 0;
  // One line, without a break. The spans cover the text in order. An engine may hand out a line that it has shaped before.
  virtual std::shared_ptr<const ShapedLine> shape(std::u16string_view text, std::span<const FontSpan> fonts) const = 0;
  // Where a line may end: ascending offsets after which a break is allowed, the text's length last.
  virtual std::vector<std::size_t> breakOpportunities(std::u16string_view text) const = 0;
};

}  // namespace tessaluna::backend
