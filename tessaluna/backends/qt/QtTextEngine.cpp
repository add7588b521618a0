#include "tessaluna/backends/qt/QtTextEngine.h"

#include <QFontDatabase>
#include <QFontMetricsF>
#include <QGlyphRun>
#include <QGuiApplication>
#include <QImage>
#include <QRawFont>
#include <QStringView>
#include <QTextBoundaryFinder>
#include <QTextLayout>
#include <algorithm>
#include <functional>
#include <list>
#include <optional>
#include <span>
#include <unordered_map>

#include "tessaluna/backends/qt/QtTypeface.h"
#include "tessaluna/platform/text/linePieces.h"
#include "tessaluna/platform/text/unicode.h"

namespace tessaluna::backend::qt {

namespace {

// Bytes of lines, and typefaces, that are kept; what was used longest ago goes first.
constexpr std::size_t maxBytes = 16 << 20;
constexpr std::size_t maxTypefaces = 64;
// Qt finds the place of a character by walking along the line. A line that is longer than maxPiece is shaped in pieces, so that
// the walks stay short, and so that a letter typed into a long line changes one piece.
constexpr std::size_t minPiece = 256, maxPiece = 512;  // UTF-16 units

// A line, or a piece of one that is said to have a direction.
struct Shaping {
  std::u16string_view text;
  std::span<const FontSpan> fonts;
  Qt::LayoutDirection direction = Qt::LayoutDirectionAuto;

  friend bool operator==(const Shaping& a, const Shaping& b) {
    const auto areSame = [](const FontSpan& x, const FontSpan& y) { return x.length == y.length && x.font == y.font; };
    return a.direction == b.direction && a.text == b.text && std::ranges::equal(a.fonts, b.fonts, areSame);
  }
};

struct ShapingHash {
  std::size_t operator()(const Shaping& shaping) const {
    std::size_t hash = std::hash<std::u16string_view>()(shaping.text) + static_cast<std::size_t>(shaping.direction);
    for (const auto& [font, length] : shaping.fonts) {
      hash = hash * 31 + std::hash<std::string>()(font.family);
      hash = hash * 31 + std::hash<double>()(font.size) + (font.isBold ? 7 : 0) + length;
    }
    return hash;
  }
};

}  // namespace

struct QtTextEngine::Kept {
  struct Line {
    std::u16string text;
    std::vector<FontSpan> fonts;
    Qt::LayoutDirection direction;
    std::shared_ptr<const ShapedLine> shaped;
    std::size_t bytes;
    Shaping shaping() const { return {text, fonts, direction}; }
  };
  std::list<Line> lines;                                                          // used last first
  std::size_t bytes = 0;                                                          // of all lines
  std::unordered_map<Shaping, std::list<Line>::iterator, ShapingHash> byShaping;  // the keys look at the lines
  std::vector<std::pair<QRawFont, std::shared_ptr<const QtTypeface>>> typefaces;

  // Shaped now, or before. A long line is taken apart where it can be.
  std::shared_ptr<const ShapedLine> lineOf(const Shaping& shaping, const QtTextEngine& engine);
  std::shared_ptr<const ShapedLine> longLineOf(const Shaping& shaping, const QtTextEngine& engine);
  template <class Shape>
  std::shared_ptr<const ShapedLine> remembered(const Shaping& shaping, Shape shape);
  ShapedLine shapeWhole(const Shaping& shaping, const QtTextEngine& engine);
  ShapedLine shapeInPieces(const Shaping& shaping, const QtTextEngine& engine);

  // One typeface for each font, so that the glyphs that a canvas keeps serve all lines.
  std::shared_ptr<const QtTypeface> typefaceOf(const QRawFont& font) {
    for (const auto& [known, typeface] : typefaces)
      if (known == font) return typeface;
    if (typefaces.size() >= maxTypefaces) typefaces.erase(typefaces.begin());
    return typefaces.emplace_back(font, std::make_shared<QtTypeface>(font)).second;
  }
};

namespace {

// With 72 dots per inch, where a point is a pixel at scale 1. Fonts that Qt makes are for the screen's resolution, and those that it
// made before there was a screen for one that it has assumed.
const QImage& deviceOfFonts() {
  static const QImage device = [] {
    constexpr double inchesPerMeter = 1 / 0.0254;
    QImage image(1, 1, QImage::Format_Alpha8);
    image.setDotsPerMeterX(qRound(72 * inchesPerMeter));
    image.setDotsPerMeterY(qRound(72 * inchesPerMeter));
    return image;
  }();
  return device;
}

QFont fontOf(const FontDescription& description) {
  const QFont family =
      description.family.empty() ? QGuiApplication::font() : QFont(QString::fromStdString(description.family));
  QFont font(family, &deviceOfFonts());
  font.setPointSizeF(std::max(0.1, description.size));
  font.setBold(description.isBold);
  font.setHintingPreference(QFont::PreferNoHinting);
  return font;
}

// Qt misplaces clusters where directions change: one that is first in a stretch of the other direction gets the place where the
// stretch begins for the text before it, and no width; those that are last get places outside of the stretch where it has fewer
// glyphs than characters. Such a cluster gets the place of its glyphs; one with a share of a glyph keeps that.
void placeByGlyphs(TextCluster& cluster, const QTextLayout& layout) {
  TextCluster placed = cluster;
  bool isFirst = true;
  for (const QGlyphRun& run : layout.glyphRuns(static_cast<int>(cluster.start), static_cast<int>(cluster.length))) {
    const QList<QPointF> positions = run.positions();
    const QList<QPointF> advances = run.rawFont().advancesForGlyphIndexes(run.glyphIndexes());
    for (qsizetype i = 0; i < positions.size(); ++i) {
      const double left = positions[i].x(), right = left + advances[i].x();
      placed.left = isFirst ? left : std::min(placed.left, left);
      placed.right = isFirst ? right : std::max(placed.right, right);
      isFirst = false;
    }
    placed.isRightToLeft = run.isRightToLeft();
  }
  constexpr double step = 1.0 / 64;  // of Qt's places
  const bool isInside = cluster.left >= placed.left - step && cluster.right <= placed.right + step;
  if (cluster.left == cluster.right || !isInside) cluster = placed;
}

// Whether the unit is a character of its own, with a glyph of its own unless it is part of a ligature, and runs from left to right.
bool isSimple(char16_t unit) {
  constexpr char16_t softHyphen = 0xAD, lastLatin = 0x24F, firstDash = 0x2010, ellipsis = 0x2026;
  return (unit >= ' ' && unit <= '~') || (unit >= 0xA0 && unit <= lastLatin && unit != softHyphen) ||
         (unit >= firstDash && unit <= ellipsis);
}

// Qt says where a character is by going through the line up to it. Where each character has a glyph of its own, the glyphs say
// it for the whole line. False, and nothing done, for other lines.
bool placeSimpleClusters(ShapedLine& line, std::u16string_view text) {
  if (!std::ranges::all_of(text, isSimple)) return false;
  std::vector<double> lefts;
  lefts.reserve(text.size() + 1);
  for (const GlyphRun& run : line.runs)
    for (const CGPoint& position : run.positions) lefts.push_back(position.x);
  lefts.push_back(line.advance);
  if (lefts.size() != text.size() + 1 || !std::ranges::is_sorted(lefts)) return false;
  line.clusters.reserve(text.size());
  for (std::size_t i = 0; i < text.size(); ++i)
    line.clusters.push_back({.start = i, .length = 1, .left = lefts[i], .right = lefts[i + 1]});
  return true;
}

void enlarge(FontMetrics& metrics, const FontMetrics& by) {
  metrics.ascent = std::max(metrics.ascent, by.ascent);
  metrics.descent = std::max(metrics.descent, by.descent);
  metrics.leading = std::max(metrics.leading, by.leading);
}

QList<QTextLayout::FormatRange> formatsOf(std::span<const FontSpan> fonts) {
  QList<QTextLayout::FormatRange> formats;
  int start = 0;
  for (const auto& [font, length] : fonts) {
    QTextCharFormat format;
    format.setFont(fontOf(font));
    formats.append({start, static_cast<int>(length), format});
    start += static_cast<int>(length);
  }
  return formats;
}

QTextOption optionOf(Qt::LayoutDirection direction) {
  QTextOption option;
  option.setWrapMode(QTextOption::NoWrap);
  option.setUseDesignMetrics(true);
  option.setTextDirection(direction);
  return option;
}

using TypefaceOf = std::function<std::shared_ptr<const QtTypeface>(const QRawFont&)>;

struct AddedRuns {
  std::size_t glyphCount = 0;
  bool hasRightToLeft = false;
};

// The layout's glyphs, on a baseline that far below its upper edge.
AddedRuns addRuns(ShapedLine& line, const QTextLayout& layout, const QList<QTextLayout::FormatRange>& formats, double ascent,
                  const TypefaceOf& typefaceOf) {
  AddedRuns added;
  for (qsizetype span = 0; span < formats.size(); ++span) {
    for (const QGlyphRun& qtRun : layout.glyphRuns(formats[span].start, formats[span].length)) {
      const std::shared_ptr<const QtTypeface> typeface = typefaceOf(qtRun.rawFont());
      GlyphRun run{.typeface = typeface, .glyphs = {}, .positions = {}};
      const QList<quint32> glyphs = qtRun.glyphIndexes();
      const QList<QPointF> positions = qtRun.positions();
      run.glyphs.assign(glyphs.begin(), glyphs.end());
      for (const QPointF& position : positions) run.positions.push_back({position.x(), ascent - position.y()});
      for (std::size_t i = 0; i < run.glyphs.size(); ++i) {
        std::optional<GlyphPicture> picture = typeface->picture(run.glyphs[i], run.positions[i]);
        if (!picture) continue;
        picture->font = static_cast<std::size_t>(span);
        line.pictures.push_back(std::move(*picture));
      }
      added.glyphCount += run.glyphs.size();
      added.hasRightToLeft = added.hasRightToLeft || qtRun.isRightToLeft();
      line.runs.push_back(std::move(run));
      line.runFonts.push_back(static_cast<std::size_t>(span));
    }
  }
  return added;
}

// Where Qt's carets are before the cluster and after it.
TextCluster clusterBetween(std::size_t start, std::size_t end, const QTextLine& line) {
  int position = static_cast<int>(start);
  const double leading = line.cursorToX(&position, QTextLine::Leading);
  position = static_cast<int>(start);
  const double trailing = line.cursorToX(&position, QTextLine::Trailing);
  return {.start = start,
          .length = end - start,
          .left = std::min(leading, trailing),
          .right = std::max(leading, trailing),
          .isRightToLeft = trailing < leading};
}

ShapedLine shapeLine(const Shaping& shaping, const QtTextEngine& engine, const TypefaceOf& typefaceOf) {
  ShapedLine line;
  for (const FontSpan& span : shaping.fonts) enlarge(line.metrics, engine.metrics(span.font));
  if (shaping.text.empty()) return line;

  QTextLayout layout(QStringView(shaping.text).toString(), fontOf(shaping.fonts.front().font));
  const QList<QTextLayout::FormatRange> formats = formatsOf(shaping.fonts);
  if (formats.size() > 1) layout.setFormats(formats);
  layout.setTextOption(optionOf(shaping.direction));
  layout.beginLayout();
  const QTextLine qtLine = layout.createLine();
  layout.endLayout();
  if (!qtLine.isValid()) return line;

  line.advance = qtLine.horizontalAdvance();
  const AddedRuns runs = addRuns(line, layout, formats, qtLine.ascent(), typefaceOf);
  // A text that is set from right to left is not simple, even one without letters.
  const bool mayBeSimple = shaping.direction != Qt::RightToLeft;
  if (mayBeSimple && placeSimpleClusters(line, shaping.text)) return line;
  const bool mayBeMisplaced = runs.hasRightToLeft && runs.glyphCount != shaping.text.size();
  const std::vector<std::size_t> borders = platform::characterBorders(shaping.text);
  for (std::size_t i = 0; i + 1 < borders.size(); ++i) {
    TextCluster cluster = clusterBetween(borders[i], borders[i + 1], qtLine);
    if (cluster.left == cluster.right || mayBeMisplaced) placeByGlyphs(cluster, layout);
    line.clusters.push_back(cluster);
  }
  return line;
}

// The piece starts at that unit of the whole text and that far from the line's left edge; its fonts have those numbers there.
void append(ShapedLine& whole, const ShapedLine& piece, std::size_t start, double left, std::span<const std::size_t> fonts) {
  for (std::size_t i = 0; i < piece.runs.size(); ++i) {
    GlyphRun& run = whole.runs.emplace_back(piece.runs[i]);
    for (CGPoint& position : run.positions) position.x += left;
    whole.runFonts.push_back(fonts[piece.runFonts[i]]);
  }
  for (GlyphPicture picture : piece.pictures) {
    picture.place.origin.x += left;
    picture.font = fonts[picture.font];
    whole.pictures.push_back(std::move(picture));
  }
  for (TextCluster cluster : piece.clusters) {
    cluster.start += start;
    cluster.left += left;
    cluster.right += left;
    whole.clusters.push_back(cluster);
  }
  whole.advance += piece.advance;
  enlarge(whole.metrics, piece.metrics);
}

std::size_t bytesOf(const ShapedLine& line) {
  std::size_t bytes = sizeof line + line.clusters.size() * sizeof(TextCluster);
  for (const GlyphRun& run : line.runs)
    bytes += sizeof run + run.glyphs.size() * (sizeof run.glyphs[0] + sizeof run.positions[0]);
  for (const GlyphPicture& picture : line.pictures)
    bytes += sizeof picture + picture.pixels->argb.size() * sizeof picture.pixels->argb[0];
  return bytes;
}

}  // namespace

QtTextEngine::QtTextEngine() : kept_(std::make_unique<Kept>()) {}
QtTextEngine::~QtTextEngine() = default;

void QtTextEngine::forgetFonts() { *kept_ = {}; }

bool QtTextEngine::hasFamily(std::string_view family) const {
  return QFontDatabase::families().contains(QString::fromUtf8(family.data(), static_cast<qsizetype>(family.size())));
}

FontMetrics QtTextEngine::metrics(const FontDescription& font) const {
  const QFontMetricsF metrics(fontOf(font));
  return {.ascent = metrics.ascent(), .descent = metrics.descent(), .leading = std::max(0.0, metrics.leading())};
}

std::shared_ptr<const ShapedLine> QtTextEngine::shape(std::u16string_view text, std::span<const FontSpan> fonts) const {
  if (text.size() <= maxPiece) return kept_->lineOf({text, fonts}, *this);
  return kept_->longLineOf({text, fonts}, *this);
}

std::shared_ptr<const ShapedLine> QtTextEngine::Kept::lineOf(const Shaping& shaping, const QtTextEngine& engine) {
  return remembered(shaping, [&] { return shapeWhole(shaping, engine); });
}

ShapedLine QtTextEngine::Kept::shapeWhole(const Shaping& shaping, const QtTextEngine& engine) {
  return shapeLine(shaping, engine, [this](const QRawFont& font) { return typefaceOf(font); });
}

std::shared_ptr<const ShapedLine> QtTextEngine::Kept::longLineOf(const Shaping& shaping, const QtTextEngine& engine) {
  return remembered(shaping, [&] { return shapeInPieces(shaping, engine); });
}

template <class Shape>
std::shared_ptr<const ShapedLine> QtTextEngine::Kept::remembered(const Shaping& shaping, Shape shape) {
  if (const auto known = byShaping.find(shaping); known != byShaping.end()) {
    lines.splice(lines.begin(), lines, known->second);
    return known->second->shaped;
  }
  auto shaped = std::make_shared<const ShapedLine>(shape());
  const std::size_t added = bytesOf(*shaped) + sizeof(Line) + sizeof(Shaping) + shaping.text.size() * sizeof(char16_t) +
                            shaping.fonts.size() * sizeof(FontSpan);
  lines.push_front({.text = std::u16string(shaping.text),
                    .fonts = {shaping.fonts.begin(), shaping.fonts.end()},
                    .direction = shaping.direction,
                    .shaped = shaped,
                    .bytes = added});
  byShaping[lines.front().shaping()] = lines.begin();
  bytes += added;
  while (bytes > maxBytes && lines.size() > 1) {
    bytes -= lines.back().bytes;
    byShaping.erase(lines.back().shaping());
    lines.pop_back();
  }
  return shaped;
}

ShapedLine QtTextEngine::Kept::shapeInPieces(const Shaping& shaping, const QtTextEngine& engine) {
  struct Piece {
    std::shared_ptr<const ShapedLine> shaped;
    std::vector<std::size_t> fonts;  // their numbers in the whole line
    double left = 0;
  };
  const platform::LinePieces parts = platform::linePieces(shaping.text, minPiece, maxPiece);
  if (parts.inTextOrder.size() == 1) return shapeWhole(shaping, engine);
  std::vector<Piece> pieces;
  std::size_t font = 0, endOfFont = shaping.fonts.front().length;
  for (const platform::LinePiece& part : parts.inTextOrder) {
    const std::size_t end = part.start + part.length;
    std::vector<FontSpan> spans;
    Piece& piece = pieces.emplace_back();
    for (std::size_t from = part.start; from < end;) {
      while (endOfFont <= from) endOfFont += shaping.fonts[++font].length;
      const std::size_t to = std::min(end, endOfFont);
      spans.push_back({shaping.fonts[font].font, to - from});
      piece.fonts.push_back(font);
      from = to;
    }
    piece.shaped = lineOf({.text = shaping.text.substr(part.start, part.length),
                           .fonts = spans,
                           .direction = part.isRightToLeft ? Qt::RightToLeft : Qt::LeftToRight},
                          engine);
  }
  double left = 0;
  for (const std::size_t i : parts.fromLeft) {
    pieces[i].left = left;
    left += pieces[i].shaped->advance;
  }
  ShapedLine whole;
  for (std::size_t i = 0; i < pieces.size(); ++i)
    append(whole, *pieces[i].shaped, parts.inTextOrder[i].start, pieces[i].left, pieces[i].fonts);
  return whole;
}

std::vector<std::size_t> QtTextEngine::breakOpportunities(std::u16string_view text) const {
  std::vector<std::size_t> breaks;
  const QString string = QStringView(text).toString();
  QTextBoundaryFinder finder(QTextBoundaryFinder::Line, string);
  for (qsizetype position = finder.toNextBoundary(); position >= 0; position = finder.toNextBoundary())
    breaks.push_back(static_cast<std::size_t>(position));
  if (breaks.empty() || breaks.back() != text.size()) breaks.push_back(text.size());
  return breaks;
}

}  // namespace tessaluna::backend::qt
