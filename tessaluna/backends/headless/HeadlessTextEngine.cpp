#include "tessaluna/backends/headless/HeadlessTextEngine.h"

#include <algorithm>
#include <tuple>

#include "tessaluna/platform/text/textBoundaries.h"
#include "tessaluna/platform/text/unicode.h"

namespace tessaluna::backend::headless {

namespace {

class BoxTypeface : public Typeface {
 public:
  explicit BoxTypeface(double size) : size_(size) {}
  Path outline(std::uint32_t glyph) const override {
    if (glyph == ' ' || glyph == '\t') return {};
    return Path::rect({size_ * 0.05, 0, size_ * 0.4, size_ * 0.7});
  }

 private:
  double size_;
};

// Turns the clusters from one letter that runs to the left to the last one that does before a letter of the other kind.
void turnRightToLeft(ShapedLine& line, std::u16string_view text) {
  const auto letters = [&](const TextCluster& cluster) { return text.substr(cluster.start, cluster.length); };
  std::vector<TextCluster>& clusters = line.clusters;
  for (std::size_t first = 0; first < clusters.size(); ++first) {
    if (!platform::isRightToLeft(letters(clusters[first]))) continue;
    std::size_t last = first;
    for (std::size_t i = first + 1; i < clusters.size(); ++i) {
      if (platform::isRightToLeft(letters(clusters[i]))) last = i;
      else if (text[clusters[i].start] != ' ') break;
    }
    const double left = clusters[first].left, right = clusters[last].right;
    for (std::size_t i = first; i <= last; ++i) {
      TextCluster& cluster = clusters[i];
      std::tie(cluster.left, cluster.right) = std::pair(left + right - cluster.right, left + right - cluster.left);
      cluster.isRightToLeft = true;
    }
    first = last;
  }
  // A glyph is where its cluster is.
  std::size_t next = 0;
  for (GlyphRun& run : line.runs)
    for (CGPoint& position : run.positions) position.x = clusters[next++].left;
}

}  // namespace

FontMetrics HeadlessTextEngine::metrics(const FontDescription& font) const {
  return {.ascent = font.size * 0.9, .descent = font.size * 0.3, .leading = 0};
}

std::shared_ptr<const ShapedLine> HeadlessTextEngine::shape(std::u16string_view text,
                                                            std::span<const FontSpan> fonts) const {
  const auto result = std::make_shared<ShapedLine>();
  ShapedLine& line = *result;
  const std::vector<std::size_t> borders = platform::characterBorders(text);
  std::size_t spanStart = 0, next = 0;
  for (std::size_t span = 0; span < fonts.size(); ++span) {
    const FontDescription& font = fonts[span].font;
    const std::size_t spanEnd = spanStart + fonts[span].length;
    GlyphRun run{.typeface = std::make_shared<BoxTypeface>(font.size), .glyphs = {}, .positions = {}};
    // A character belongs to the span that it starts in.
    for (; next + 1 < borders.size() && borders[next] < spanEnd; ++next) {
      const std::size_t start = borders[next], length = borders[next + 1] - start;
      const double right = line.advance + font.size * 0.5;
      run.glyphs.push_back(platform::firstScalar(platform::utf8FromUtf16(text.substr(start, length))));
      run.positions.push_back({line.advance, 0});
      line.clusters.push_back({.start = start, .length = length, .left = line.advance, .right = right});
      line.advance = right;
    }
    if (!run.glyphs.empty()) {
      line.runs.push_back(std::move(run));
      line.runFonts.push_back(span);
    }
    const FontMetrics own = metrics(font);
    line.metrics.ascent = std::max(line.metrics.ascent, own.ascent);
    line.metrics.descent = std::max(line.metrics.descent, own.descent);
    spanStart = spanEnd;
  }
  turnRightToLeft(line, text);
  return result;
}

std::vector<std::size_t> HeadlessTextEngine::breakOpportunities(std::u16string_view text) const {
  std::vector<std::size_t> breaks;
  for (std::size_t i = 1; i < text.size(); ++i)
    if (text[i - 1] == ' ' && text[i] != ' ') breaks.push_back(i);
  breaks.push_back(text.size());
  return breaks;
}

}  // namespace tessaluna::backend::headless
