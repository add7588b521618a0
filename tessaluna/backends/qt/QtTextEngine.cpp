#include "tessaluna/backends/qt/QtTextEngine.h"

#include <QFontDatabase>
#include <QFontMetricsF>
#include <QGlyphRun>
#include <QGuiApplication>
#include <QPainterPath>
#include <QRawFont>
#include <QScreen>
#include <QTextBoundaryFinder>
#include <QTextLayout>
#include <algorithm>
#include <functional>
#include <list>
#include <unordered_map>

#include "tessaluna/platform/text/unicode.h"

namespace tessaluna::backend::qt {

namespace {

// Bytes of lines, and typefaces, that are kept; what was used longest ago goes first.
constexpr std::size_t maxBytes = 16 << 20;
constexpr std::size_t maxTypefaces = 64;
// Qt finds the place of a character by walking along the line. A line that is longer than maxPiece is shaped in pieces, so that
// the walks stay short, and so that a letter typed into a long line changes one piece. A piece ends after a blank where there
// is one from minPiece on: nothing is shaped across most blanks.
constexpr std::size_t minPiece = 256, maxPiece = 512;  // UTF-16 units

QString toQString(std::u16string_view text) {
  return QString(reinterpret_cast<const QChar*>(text.data()), static_cast<qsizetype>(text.size()));
}

class QtTypeface : public Typeface {
 public:
  explicit QtTypeface(QRawFont font) : font_(std::move(font)) {}

  Path outline(std::uint32_t glyph) const override {
    Path path;
    const QPainterPath shape = font_.pathForGlyph(glyph);
    // Qt counts y downward, and tells a curve as its two controls and then its end.
    const auto at = [&](int i) { return CGPoint{shape.elementAt(i).x, -shape.elementAt(i).y}; };
    for (int i = 0; i < shape.elementCount(); ++i) {
      switch (shape.elementAt(i).type) {
        case QPainterPath::MoveToElement:
          if (!path.isEmpty()) path.close();
          path.moveTo(at(i));
          break;
        case QPainterPath::LineToElement: path.lineTo(at(i)); break;
        case QPainterPath::CurveToElement:
          path.curveTo(at(i + 2), at(i), at(i + 1));
          i += 2;
          break;
        case QPainterPath::CurveToDataElement: break;
      }
    }
    if (!path.isEmpty()) path.close();
    return path;
  }

 private:
  QRawFont font_;
};

struct Shaping {
  std::u16string text;
  std::vector<std::pair<FontDescription, std::size_t>> fonts;
  friend bool operator==(const Shaping&, const Shaping&) = default;
};

struct ShapingHash {
  std::size_t operator()(const Shaping& shaping) const {
    std::size_t hash = std::hash<std::u16string>()(shaping.text);
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
    Shaping shaping;
    std::shared_ptr<const ShapedLine> shaped;
    std::size_t bytes;
  };
  std::list<Line> lines;  // used last first
  std::size_t bytes = 0;  // of all lines
  std::unordered_map<Shaping, std::list<Line>::iterator, ShapingHash> byShaping;
  std::vector<std::pair<QRawFont, std::shared_ptr<const Typeface>>> typefaces;

  // One typeface for each font, so that the glyphs that a canvas keeps serve all lines.
  std::shared_ptr<const Typeface> typefaceOf(const QRawFont& font) {
    for (const auto& [known, typeface] : typefaces)
      if (known == font) return typeface;
    if (typefaces.size() >= maxTypefaces) typefaces.erase(typefaces.begin());
    return typefaces.emplace_back(font, std::make_shared<QtTypeface>(font)).second;
  }
};

namespace {

QFont fontOf(const FontDescription& description) {
  QFont font = description.family.empty() ? QGuiApplication::font() : QFont(QString::fromStdString(description.family));
  // A point of ours is a pixel at scale 1; Qt's are scaled by the screen's resolution.
  const QScreen* screen = QGuiApplication::primaryScreen();
  font.setPointSizeF(std::max(0.1, description.size) * 72 / (screen ? screen->logicalDotsPerInch() : 96));
  font.setBold(description.isBold);
  font.setHintingPreference(QFont::PreferNoHinting);
  return font;
}

// For a cluster that stands first in a stretch of the other direction: Qt gives it the place where the stretch begins for the
// text before it, and no width.
void placeByGlyphs(TextCluster& cluster, const QTextLayout& layout) {
  bool isFirst = true;
  for (const QGlyphRun& run : layout.glyphRuns(static_cast<int>(cluster.start), static_cast<int>(cluster.length))) {
    const QList<QPointF> positions = run.positions();
    const QList<QPointF> advances = run.rawFont().advancesForGlyphIndexes(run.glyphIndexes());
    for (qsizetype i = 0; i < positions.size(); ++i) {
      const double left = positions[i].x(), right = left + advances[i].x();
      cluster.left = isFirst ? left : std::min(cluster.left, left);
      cluster.right = isFirst ? right : std::max(cluster.right, right);
      isFirst = false;
    }
    cluster.isRightToLeft = run.isRightToLeft();
  }
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

ShapedLine shapeAnew(const Shaping& shaping, const QtTextEngine& engine,
                     const std::function<std::shared_ptr<const Typeface>(const QRawFont&)>& typefaceOf) {
  ShapedLine line;
  for (const auto& [font, length] : shaping.fonts) {
    const FontMetrics own = engine.metrics(font);
    line.metrics.ascent = std::max(line.metrics.ascent, own.ascent);
    line.metrics.descent = std::max(line.metrics.descent, own.descent);
    line.metrics.leading = std::max(line.metrics.leading, own.leading);
  }
  if (shaping.text.empty()) return line;

  const QString text = toQString(shaping.text);
  QTextLayout layout(text, fontOf(shaping.fonts.front().first));
  QList<QTextLayout::FormatRange> formats;
  int start = 0;
  for (const auto& [font, length] : shaping.fonts) {
    QTextCharFormat format;
    format.setFont(fontOf(font));
    formats.append({start, static_cast<int>(length), format});
    start += static_cast<int>(length);
  }
  if (formats.size() > 1) layout.setFormats(formats);
  QTextOption option;
  option.setWrapMode(QTextOption::NoWrap);
  option.setUseDesignMetrics(true);
  layout.setTextOption(option);
  layout.beginLayout();
  QTextLine qtLine = layout.createLine();
  layout.endLayout();
  if (!qtLine.isValid()) return line;

  line.advance = qtLine.horizontalAdvance();
  const double ascent = qtLine.ascent();
  for (qsizetype span = 0; span < formats.size(); ++span) {
    for (const QGlyphRun& qtRun : layout.glyphRuns(formats[span].start, formats[span].length)) {
      GlyphRun run{.typeface = typefaceOf(qtRun.rawFont()), .glyphs = {}, .positions = {}};
      const QList<quint32> glyphs = qtRun.glyphIndexes();
      const QList<QPointF> positions = qtRun.positions();
      run.glyphs.assign(glyphs.begin(), glyphs.end());
      for (const QPointF& position : positions) run.positions.push_back({position.x(), ascent - position.y()});
      line.runs.push_back(std::move(run));
      line.runFonts.push_back(static_cast<std::size_t>(span));
    }
  }
  if (placeSimpleClusters(line, shaping.text)) return line;
  const std::vector<std::size_t> borders = platform::characterBorders(shaping.text);
  for (std::size_t i = 0; i + 1 < borders.size(); ++i) {
    int position = static_cast<int>(borders[i]);
    const double leading = qtLine.cursorToX(&position, QTextLine::Leading);
    position = static_cast<int>(borders[i]);
    const double trailing = qtLine.cursorToX(&position, QTextLine::Trailing);
    TextCluster cluster{.start = borders[i],
                        .length = borders[i + 1] - borders[i],
                        .left = std::min(leading, trailing),
                        .right = std::max(leading, trailing),
                        .isRightToLeft = trailing < leading};
    if (leading == trailing) placeByGlyphs(cluster, layout);
    line.clusters.push_back(cluster);
  }
  return line;
}

// Where the line may be cut into pieces that are shaped alone: the ends of the pieces, the text's length last.
std::vector<std::size_t> endsOfPieces(std::u16string_view text) {
  std::vector<std::size_t> ends;
  std::size_t start = 0;
  const std::vector<std::size_t> borders = platform::characterBorders(text);
  for (std::size_t i = 1; i + 1 < borders.size(); ++i) {
    const std::size_t length = borders[i] - start;
    if (length < minPiece || (length < maxPiece && text[borders[i] - 1] != u' ')) continue;
    ends.push_back(borders[i]);
    start = borders[i];
  }
  ends.push_back(text.size());
  return ends;
}

// Pieces follow each other from left to right only where all text does.
bool runsToTheRight(std::u16string_view text) {
  return std::ranges::none_of(toQString(text), [](QChar unit) {
    switch (unit.direction()) {
      case QChar::DirR:
      case QChar::DirAL:
      case QChar::DirAN:
      case QChar::DirRLE:
      case QChar::DirRLO:
      case QChar::DirRLI:
      case QChar::DirFSI: return true;
      default:
        return unit.isSurrogate() && unit.unicode() >= 0xD802 && unit.unicode() <= 0xD83B;  // scripts of either direction
    }
  });
}

// The piece starts at that unit of the whole text; its fonts have those numbers there.
void append(ShapedLine& whole, const ShapedLine& piece, std::size_t start, std::span<const std::size_t> fonts) {
  for (std::size_t i = 0; i < piece.runs.size(); ++i) {
    GlyphRun& run = whole.runs.emplace_back(piece.runs[i]);
    for (CGPoint& position : run.positions) position.x += whole.advance;
    whole.runFonts.push_back(fonts[piece.runFonts[i]]);
  }
  for (TextCluster cluster : piece.clusters) {
    cluster.start += start;
    cluster.left += whole.advance;
    cluster.right += whole.advance;
    whole.clusters.push_back(cluster);
  }
  whole.advance += piece.advance;
  whole.metrics.ascent = std::max(whole.metrics.ascent, piece.metrics.ascent);
  whole.metrics.descent = std::max(whole.metrics.descent, piece.metrics.descent);
  whole.metrics.leading = std::max(whole.metrics.leading, piece.metrics.leading);
}

std::size_t bytesOf(const ShapedLine& line) {
  std::size_t bytes = sizeof line + line.clusters.size() * sizeof(TextCluster);
  for (const GlyphRun& run : line.runs)
    bytes += sizeof run + run.glyphs.size() * (sizeof run.glyphs[0] + sizeof run.positions[0]);
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
  Shaping shaping{.text = std::u16string(text), .fonts = {}};
  for (const FontSpan& span : fonts) shaping.fonts.emplace_back(span.font, span.length);
  if (const auto known = kept_->byShaping.find(shaping); known != kept_->byShaping.end()) {
    kept_->lines.splice(kept_->lines.begin(), kept_->lines, known->second);
    return known->second->shaped;
  }
  auto shaped = std::make_shared<ShapedLine>();
  if (text.size() > maxPiece && runsToTheRight(text)) *shaped = shapeInPieces(text, fonts);
  else *shaped = shapeAnew(shaping, *this, [this](const QRawFont& font) { return kept_->typefaceOf(font); });
  // The text is kept twice: in the list and in the index.
  const std::size_t bytes = bytesOf(*shaped) + 2 * (sizeof(Shaping) + text.size() * sizeof(char16_t));
  kept_->lines.push_front({shaping, shaped, bytes});
  kept_->byShaping[std::move(shaping)] = kept_->lines.begin();
  kept_->bytes += bytes;
  while (kept_->bytes > maxBytes && kept_->lines.size() > 1) {
    kept_->bytes -= kept_->lines.back().bytes;
    kept_->byShaping.erase(kept_->lines.back().shaping);
    kept_->lines.pop_back();
  }
  return shaped;
}

ShapedLine QtTextEngine::shapeInPieces(std::u16string_view text, std::span<const FontSpan> fonts) const {
  ShapedLine whole;
  std::size_t start = 0, font = 0, endOfFont = fonts.front().length;
  for (const std::size_t end : endsOfPieces(text)) {
    std::vector<FontSpan> spans;
    std::vector<std::size_t> numbers;
    for (std::size_t from = start; from < end;) {
      while (endOfFont <= from) endOfFont += fonts[++font].length;
      const std::size_t to = std::min(end, endOfFont);
      spans.push_back({fonts[font].font, to - from});
      numbers.push_back(font);
      from = to;
    }
    append(whole, *shape(text.substr(start, end - start), spans), start, numbers);
    start = end;
  }
  return whole;
}

std::vector<std::size_t> QtTextEngine::breakOpportunities(std::u16string_view text) const {
  std::vector<std::size_t> breaks;
  const QString string = toQString(text);
  QTextBoundaryFinder finder(QTextBoundaryFinder::Line, string);
  for (qsizetype position = finder.toNextBoundary(); position >= 0; position = finder.toNextBoundary())
    breaks.push_back(static_cast<std::size_t>(position));
  if (breaks.empty() || breaks.back() != text.size()) breaks.push_back(text.size());
  return breaks;
}

}  // namespace tessaluna::backend::qt
