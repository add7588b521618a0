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

// Lines and typefaces kept; what was used longest ago goes first.
constexpr std::size_t mostLines = 2000;
constexpr std::size_t mostTypefaces = 64;

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
  };
  std::list<Line> lines;  // used last first
  std::unordered_map<Shaping, std::list<Line>::iterator, ShapingHash> byShaping;
  std::vector<std::pair<QRawFont, std::shared_ptr<const Typeface>>> typefaces;

  // One typeface for each font, so that the glyphs that a canvas keeps serve all lines.
  std::shared_ptr<const Typeface> typefaceOf(const QRawFont& font) {
    for (const auto& [known, typeface] : typefaces)
      if (known == font) return typeface;
    if (typefaces.size() >= mostTypefaces) typefaces.erase(typefaces.begin());
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
  const std::vector<std::size_t> borders = platform::characterBorders(shaping.text);
  for (std::size_t i = 0; i + 1 < borders.size(); ++i) {
    int position = static_cast<int>(borders[i]);
    const double leading = qtLine.cursorToX(&position, QTextLine::Leading);
    position = static_cast<int>(borders[i]);
    const double trailing = qtLine.cursorToX(&position, QTextLine::Trailing);
    line.clusters.push_back({.start = borders[i],
                             .length = borders[i + 1] - borders[i],
                             .left = std::min(leading, trailing),
                             .right = std::max(leading, trailing),
                             .isRightToLeft = trailing < leading});
  }
  return line;
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
  auto shaped = std::make_shared<const ShapedLine>(
      shapeAnew(shaping, *this, [this](const QRawFont& font) { return kept_->typefaceOf(font); }));
  kept_->lines.push_front({shaping, shaped});
  kept_->byShaping[shaping] = kept_->lines.begin();
  if (kept_->lines.size() > mostLines) {
    kept_->byShaping.erase(kept_->lines.back().shaping);
    kept_->lines.pop_back();
  }
  return shaped;
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
