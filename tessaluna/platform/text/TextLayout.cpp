#include "tessaluna/platform/text/TextLayout.h"

#include <algorithm>
#include <cmath>
#include <iterator>

#include "tessaluna/platform/graphics/NSColor.h"
#include "tessaluna/platform/graphics/NSGraphicsContext.h"
#include "tessaluna/platform/graphics/NSRect.h"
#include "tessaluna/platform/text/NSFont.h"
#include "tessaluna/platform/text/textBoundaries.h"
#include "tessaluna/platform/text/unicode.h"

namespace tessaluna::platform {

namespace {

constexpr char16_t ellipsis = 0x2026;

// A width that went through a few sums and differences still holds the text that it was measured for.
constexpr CGFloat epsilon = 1e-6;
constexpr CGFloat maxSeam = 0.01;  // points between stretches of a line that touch

backend::FontDescription fontOf(const NSAttributes& attributes) {
  const auto font = attributeObject<NSFont>(attributes, NSFontAttributeName);
  return font ? font->description() : backend::FontDescription{.family = "", .size = NSFont::systemFontSize()};
}

Ref<NSParagraphStyle> styleOf(const NSAttributes& attributes) {
  auto style = attributeObject<NSParagraphStyle>(attributes, NSParagraphStyleAttributeName);
  return style ? style : NSParagraphStyle::defaultParagraphStyle();
}

std::shared_ptr<const backend::ShapedLine> shape(const NSAttributedString& text) {
  std::vector<backend::FontSpan> spans;
  spans.reserve(text.runs().size());
  for (const NSAttributedString::Run& run : text.runs()) spans.push_back({fontOf(run.attributes), run.length});
  return textEngine().shape(text.text(), spans);
}

bool isBlank(char16_t unit) { return unit == ' ' || unit == '\t'; }

struct Shortened {
  Ref<NSAttributedString> shown;
  NSRange leftOut;
};

// What is left of a text that keeps so many of its characters, at its head, its tail or both, and "…" for the rest.
Shortened shortened(const NSAttributedString& text, const std::vector<std::size_t>& borders, std::size_t kept,
                    NSLineBreakMode mode) {
  const std::size_t count = borders.size() - 1;
  const std::size_t head = mode == NSLineBreakByTruncatingTail   ? kept
                           : mode == NSLineBreakByTruncatingHead ? 0
                                                                 : (kept + 1) / 2;
  const std::size_t tailStart = borders[count - (kept - head)];
  const auto result = make<NSMutableAttributedString>();
  result->appendAttributedString(*text.attributedSubstring({0, borders[head]}));
  const NSAttributes& around = text.attributesAtIndex(head > 0 ? borders[head - 1] : 0);
  result->appendAttributedString(NSAttributedString(std::u16string(1, ellipsis), around));
  result->appendAttributedString(*text.attributedSubstring({tailStart, text.length() - tailStart}));
  return {result, {borders[head], tailStart - borders[head]}};
}

// The most characters that fit beside the ellipsis; the ellipsis alone stays even where it does not fit.
Shortened shortenedToWidth(const NSAttributedString& text, CGFloat width, NSLineBreakMode mode) {
  const std::vector<std::size_t> borders = characterBorders(text.text());
  std::size_t low = 0, high = borders.size() - 1;
  while (low < high) {
    const std::size_t middle = (low + high + 1) / 2;
    if (shape(*shortened(text, borders, middle, mode).shown)->advance <= width + epsilon) low = middle;
    else high = middle - 1;
  }
  return shortened(text, borders, low, mode);
}

}  // namespace

TextLayout::TextLayout(const NSAttributedString& text, Options options) : width_(options.width) {
  addParagraphs(text, 0, std::u16string::npos, options);
  place();
}

// Up to a paragraph that starts at `stop`, or else to the end of the text.
void TextLayout::addParagraphs(const NSAttributedString& text, std::size_t start, std::size_t stop, const Options& options) {
  const std::u16string& units = text.text();
  while (start != stop) {
    std::size_t end = start;
    while (end < units.size() && !isLineEnd(units[end])) ++end;
    const bool isLast = end == units.size();
    std::size_t next = isLast ? end : end + 1;
    if (next < units.size() && units[end] == '\r' && units[next] == '\n') ++next;
    addParagraph(text, {start, end - start}, next, options);
    if (isLast) break;
    start = next;
  }
}

namespace {

template <class T>
void replace(std::vector<T>& all, std::size_t first, std::size_t end, std::vector<T>& by) {
  const std::size_t both = std::min(end - first, by.size());
  const auto at = [](std::vector<T>& list, std::size_t i) { return list.begin() + static_cast<std::ptrdiff_t>(i); };
  std::move(by.begin(), at(by, both), at(all, first));
  all.erase(at(all, first + both), at(all, end));
  all.insert(at(all, first + both), std::make_move_iterator(at(by, both)), std::make_move_iterator(by.end()));
}

}  // namespace

void TextLayout::textWasEdited(const NSAttributedString& text, NSRange edited, std::ptrdiff_t change,
                               const Options& options) {
  const std::u16string& units = text.text();
  // A unit before the range may be the first one of a line's end that has two now.
  const std::size_t from = lineRangeAt(units, std::max<std::size_t>(edited.location, 1) - 1).location;
  const NSRange lastLine = lineRangeAt(units, edited.location + edited.length);
  const std::size_t to = lastLine.location + lastLine.length;
  // The last line may have nothing but the looks of the line's end before it.
  const bool isToEnd = to == units.size();
  const auto lineFrom = [&](std::size_t start) {
    const auto found =
        std::partition_point(lines_.begin(), lines_.end(), [start](const Line& line) { return line.start < start; });
    return static_cast<std::size_t>(found - lines_.begin());
  };
  const std::size_t first = lineFrom(from);
  const std::size_t end = isToEnd ? lines_.size() : lineFrom(to - static_cast<std::size_t>(change));
  TextLayout added(width_);
  added.addParagraphs(text, from, isToEnd ? std::u16string::npos : to, options);
  for (std::size_t line = end; line < lines_.size(); ++line) lines_[line].start += static_cast<std::size_t>(change);
  replace(lines_, first, end, added.lines_);
  replace(alignments_, first, end, added.alignments_);
  place();
}

void TextLayout::addParagraph(const NSAttributedString& text, NSRange range, std::size_t lineEnd, const Options& options) {
  const bool isWhole = range.location == 0 && range.length == text.length();
  const Ref<const NSAttributedString> paragraph = !isWhole ? text.attributedSubstring(range)
                                                  : options.text == Options::Text::Lent
                                                      ? Ref<const NSAttributedString>(Ref<void>(), &text)
                                                      : text.mutableCopy();
  // A paragraph without characters is laid out as the line's end after it says, and the last one as the one before it.
  static const NSAttributes none;
  const NSAttributes& attributes = text.length() > 0 ? text.attributesAtIndex(std::min(range.location, text.length() - 1))
                                   : options.attributesOfNothing ? *options.attributesOfNothing
                                                                 : none;
  const Ref<NSParagraphStyle> style = styleOf(attributes);
  const NSLineBreakMode mode = style->lineBreakMode();

  auto shaped = shape(*paragraph);
  Line line;
  line.start = range.location;
  line.length = lineEnd - range.location;
  if (paragraph->length() == 0) line.metrics = textEngine().metrics(fontOf(attributes));
  if (paragraph->length() == 0 || shaped->advance <= width_ + epsilon || !options.wrapsLines ||
      mode == NSLineBreakByClipping) {
    line.isCut = options.wrapsLines && shaped->advance > width_ + epsilon;
    line.shown = paragraph;
    line.shaped = std::move(shaped);
    addLine(std::move(line));
  } else if (wraps(mode)) {
    addWrapped(paragraph, *shaped, range.location, lineEnd, mode);
  } else {
    Shortened result = shortenedToWidth(*paragraph, width_, mode);
    line.leftOut = result.leftOut;
    line.shaped = shape(*result.shown);
    line.shown = std::move(result.shown);
    addLine(std::move(line));
  }
  alignments_.resize(lines_.size(), style->alignment());
}

void TextLayout::addWrapped(const Ref<const NSAttributedString>& paragraph, const backend::ShapedLine& shaped,
                            std::size_t start, std::size_t lineEnd, NSLineBreakMode mode) {
  const std::u16string& units = paragraph->text();
  const std::vector<std::size_t> breaks =
      mode == NSLineBreakByCharWrapping ? characterBorders(units) : textEngine().breakOpportunities(units);
  const std::vector<backend::TextCluster>& clusters = shaped.clusters;
  std::size_t from = 0, firstCluster = 0;
  while (from < units.size()) {
    // Widths of the whole paragraph's clusters are used for those of the line: kerning across a break is not counted. Blanks
    // at a line's end may hang over.
    std::size_t fitting = from;
    CGFloat width = 0;
    for (std::size_t i = firstCluster; i < clusters.size(); ++i) {
      width += clusters[i].right - clusters[i].left;
      if (width > width_ + epsilon && !isBlank(units[clusters[i].start])) break;
      fitting = clusters[i].start + clusters[i].length;
    }
    std::size_t breakAt = fitting;
    if (fitting < units.size()) {
      // At the last word that fits; where none does, within one, and of that at least a character.
      const auto after = std::upper_bound(breaks.begin(), breaks.end(), fitting);
      if (after != breaks.begin() && *std::prev(after) > from) breakAt = *std::prev(after);
      else if (fitting == from) breakAt = clusters[firstCluster].start + clusters[firstCluster].length;
    }
    const bool isLast = breakAt >= units.size();
    std::size_t shownEnd = breakAt;
    if (!isLast || width > width_ + epsilon)
      while (shownEnd > from && isBlank(units[shownEnd - 1])) --shownEnd;

    Line line;
    line.start = start + from;
    line.length = (isLast ? lineEnd : start + breakAt) - line.start;
    line.shown = paragraph->attributedSubstring({from, shownEnd - from});
    line.shaped = shape(*line.shown);
    if (shownEnd == from) line.metrics = textEngine().metrics(fontOf(paragraph->attributesAtIndex(from)));
    addLine(std::move(line));
    from = breakAt;
    while (firstCluster < clusters.size() && clusters[firstCluster].start < from) ++firstCluster;
  }
}

void TextLayout::addLine(Line line) {
  if (line.shown->length() > 0) line.metrics = line.shaped->metrics;
  lines_.push_back(std::move(line));
}

NSRange TextLayout::Line::rangeOf(const backend::TextCluster& cluster) const {
  if (leftOut.length == 0 || cluster.start < leftOut.location) return {start + cluster.start, cluster.length};
  if (cluster.start == leftOut.location) return {start + leftOut.location, leftOut.length};
  return {start + cluster.start - 1 + leftOut.length, cluster.length};  // the "…" is one unit
}

void TextLayout::place() {
  CGFloat y = 0;
  size_ = {};
  tallest_ = 0;
  for (std::size_t i = 0; i < lines_.size(); ++i) {
    Line& line = lines_[i];
    line.y = y;
    line.baseline = y + line.metrics.ascent;
    y += line.height();
    tallest_ = std::max(tallest_, line.height());
    const CGFloat spare = width_ - line.shaped->advance;
    // A text too long for its width starts at the left whatever its alignment.
    if (std::isfinite(spare) && spare > 0) {
      if (alignments_[i] == NSTextAlignmentCenter) line.x = spare * 0.5;
      if (alignments_[i] == NSTextAlignmentRight) line.x = spare;
    }
    size_.width = std::max(size_.width, line.isCut ? std::max(0.0, width_) : line.shaped->advance);
  }
  size_.height = y;
}

void TextLayout::drawInRect(CGRect rect) const {
  const auto end = std::partition_point(
      lines_.begin(), lines_.end(), [&](const Line& line) { return !(line.y > 0 && line.y >= rect.size.height - epsilon); });
  drawLines({lines_.begin(), end}, rect);
}

void TextLayout::drawRangeInRect(NSRange range, CGRect rect) const { drawLines(linesOf(range), rect); }

std::span<const TextLayout::Line> TextLayout::linesOf(NSRange range) const {
  const auto first = std::partition_point(lines_.begin(), lines_.end(),
                                          [&](const Line& line) { return line.start + line.length <= range.location; });
  const auto end = std::partition_point(first, lines_.end(),
                                        [&](const Line& line) { return line.start < range.location + range.length; });
  return {first, end};
}

NSRange TextLayout::rangeBetween(CGFloat top, CGFloat bottom) const {
  const auto first = std::partition_point(lines_.begin(), lines_.end(),
                                          [&](const Line& line) { return line.y + line.height() + tallest_ <= top; });
  const auto end = std::partition_point(first, lines_.end(), [&](const Line& line) { return line.y - tallest_ < bottom; });
  if (first == end) return {0, 0};
  const std::size_t start = first->start;
  return {start, std::prev(end)->start + std::prev(end)->length - start};
}

void TextLayout::drawLines(std::span<const Line> lines, CGRect rect) const {
  const Ref<NSGraphicsContext> graphics = NSGraphicsContext::currentContext();
  if (!graphics) return;
  CGContext& context = graphics->CGContext();
  const GraphicsStateScope state(context);
  for (const Line& line : lines) {
    // The line in a space of its own, with the origin at its start on the baseline and y up.
    const GraphicsStateScope lineState(context);
    const CGFloat x = CGRectGetMinX(rect) + line.x;
    if (graphics->isFlipped()) context.concat({1, 0, 0, -1, x, CGRectGetMinY(rect) + line.baseline});
    else context.concat(CGAffineTransform::translation(x, CGRectGetMaxY(rect) - line.baseline));
    drawLine(line, context);
  }
}

namespace {

struct Span {
  CGFloat left, right;
};

// Adds a stretch of a line, as one with those that it touches on either side, so that what is painted along them has no seams.
void join(std::vector<Span>& spans, Span added) {
  for (std::size_t i = spans.size(); i-- > 0;) {
    const Span other = spans[i];
    if (added.left > other.right + maxSeam || other.left > added.right + maxSeam) continue;
    added = {std::min(added.left, other.left), std::max(added.right, other.right)};
    spans.erase(spans.begin() + static_cast<std::ptrdiff_t>(i));
  }
  spans.push_back(added);
}

// Where the clusters are that start in the stretch of the shown text.
std::vector<Span> spansOf(const backend::ShapedLine& line, std::size_t start, std::size_t end) {
  std::vector<Span> spans;
  auto cluster = std::partition_point(line.clusters.begin(), line.clusters.end(),
                                      [start](const backend::TextCluster& each) { return each.start < start; });
  for (; cluster != line.clusters.end() && cluster->start < end; ++cluster) join(spans, {cluster->left, cluster->right});
  return spans;
}

}  // namespace

void TextLayout::drawLine(const Line& line, CGContext& context) const {
  // The edge cuts to the right only: accents and tails may be higher and deeper than their line.
  if (line.isCut) context.clipRect({0, -line.height(), width_, 3 * line.height()});
  const auto& runs = line.shown->runs();
  const auto colorOf = [](const NSAttributedString::Run& run) {
    const auto color = attributeObject<NSColor>(run.attributes, NSForegroundColorAttributeName);
    return color ? color : NSColor::blackColor();
  };
  for (std::size_t i = 0; i < line.shaped->runs.size(); ++i) {
    colorOf(runs[line.shaped->runFonts[i]])->setFill();
    context.drawGlyphs(line.shaped->runs[i], {0, 0});
  }
  for (const backend::GlyphPicture& picture : line.shaped->pictures) {
    const GraphicsStateScope scope(context);
    context.setAlpha(context.alpha() * colorOf(runs[picture.font])->alphaComponent());
    const backend::ImagePixels& pixels = *picture.pixels;
    context.drawImage(pixels, {0, 0, CGFloat(pixels.width), CGFloat(pixels.height)}, picture.place);
  }
  std::size_t start = 0;
  for (const NSAttributedString::Run& run : runs) {
    const std::size_t end = start + run.length;
    const auto found = run.attributes.find(NSUnderlineStyleAttributeName);
    const auto* style = found == run.attributes.end() ? nullptr : std::get_if<std::int64_t>(&found->second);
    if (style && *style != NSUnderlineStyleNone) {
      colorOf(run)->setFill();
      for (const Span& span : spansOf(*line.shaped, start, end)) {
        const CGFloat thickness = static_cast<CGFloat>(*style);
        NSRectFillUsingOperation({span.left, -1 - thickness, span.right - span.left, thickness},
                                 NSCompositingOperationSourceOver);
      }
    }
    start = end;
  }
}

const TextLayout::Line& TextLayout::lineAt(CGFloat y) const {
  const auto found =
      std::partition_point(lines_.begin(), lines_.end(), [&](const Line& line) { return !(y < line.y + line.height()); });
  return found == lines_.end() ? lines_.back() : *found;
}

std::size_t TextLayout::characterAt(CGPoint point) const {
  const Line& line = lineAt(point.y);
  const CGFloat x = point.x - line.x;
  const backend::TextCluster* nearest = nullptr;
  CGFloat least = std::numeric_limits<CGFloat>::infinity();
  for (const backend::TextCluster& cluster : line.shaped->clusters) {
    const CGFloat distance = x < cluster.left ? cluster.left - x : x >= cluster.right ? x - cluster.right : -1;
    if (distance >= least) continue;
    least = distance;
    nearest = &cluster;
  }
  return nearest ? line.rangeOf(*nearest).location : line.start;
}

CaretPlace TextLayout::caretPlaceAt(CGPoint point) const {
  const Line& line = lineAt(point.y);
  const CGFloat x = point.x - line.x;
  std::size_t result = line.start;
  CGFloat least = std::numeric_limits<CGFloat>::infinity();
  const auto consider = [&](CGFloat place, std::size_t index) {
    if (std::abs(x - place) >= least) return;
    least = std::abs(x - place);
    result = index;
  };
  for (const backend::TextCluster& cluster : line.shaped->clusters) {
    const NSRange range = line.rangeOf(cluster);
    const std::size_t end = range.location + range.length;
    consider(cluster.left, cluster.isRightToLeft ? end : range.location);
    consider(cluster.right, cluster.isRightToLeft ? range.location : end);
  }
  return {result, &lineOf({result}) == &line ? NSSelectionAffinityDownstream : NSSelectionAffinityUpstream};
}

std::vector<CGRect> TextLayout::rectsOf(NSRange range) const {
  std::vector<CGRect> rects;
  const std::size_t end = range.location + range.length;
  for (const Line& line : linesOf(range)) {
    std::vector<Span> spans;
    const std::vector<backend::TextCluster>& clusters = line.shaped->clusters;
    auto cluster = std::partition_point(clusters.begin(), clusters.end(), [&](const backend::TextCluster& each) {
      const NSRange own = line.rangeOf(each);
      return own.location + own.length <= range.location;
    });
    for (; cluster != clusters.end() && line.rangeOf(*cluster).location < end; ++cluster)
      join(spans, {cluster->left, cluster->right});
    for (const Span& span : spans) rects.push_back({{line.x + span.left, line.y}, {span.right - span.left, line.height()}});
  }
  return rects;
}

const TextLayout::Line& TextLayout::lineOf(CaretPlace place) const {
  const bool isUpstream = place.affinity == NSSelectionAffinityUpstream;
  const auto after = std::partition_point(lines_.begin(), lines_.end(), [&](const Line& line) {
    return isUpstream ? line.start < place.index : line.start <= place.index;
  });
  return after == lines_.begin() ? lines_.front() : *std::prev(after);
}

CGRect TextLayout::caretRectAt(CaretPlace place) const {
  const Line& line = lineOf(place);
  const std::vector<backend::TextCluster>& clusters = line.shaped->clusters;
  const auto cluster = std::partition_point(clusters.begin(), clusters.end(), [&](const backend::TextCluster& each) {
    return line.rangeOf(each).location < place.index;
  });
  CGFloat x = 0;
  if (cluster != clusters.end()) x = cluster->isRightToLeft ? cluster->right : cluster->left;
  else if (!clusters.empty()) x = clusters.back().isRightToLeft ? clusters.back().left : clusters.back().right;
  return {line.x + x, line.y, 1, line.height()};
}

CGSize sizeWithAttributes(std::u16string_view string, const NSAttributes& attributes) {
  return NSAttributedString(std::u16string(string), attributes).size();
}

CGRect boundingRectWithSize(std::u16string_view string, CGSize size, std::uint32_t options, const NSAttributes& attributes) {
  return NSAttributedString(std::u16string(string), attributes).boundingRectWithSize(size, options);
}

void drawInRect(std::u16string_view string, CGRect rect, const NSAttributes& attributes) {
  NSAttributedString(std::u16string(string), attributes).drawInRect(rect);
}

CGSize sizeWithAttributes(std::string_view string, const NSAttributes& attributes) {
  return sizeWithAttributes(utf16FromUtf8(string), attributes);
}

CGRect boundingRectWithSize(std::string_view string, CGSize size, std::uint32_t options, const NSAttributes& attributes) {
  return boundingRectWithSize(utf16FromUtf8(string), size, options, attributes);
}

void drawInRect(std::string_view string, CGRect rect, const NSAttributes& attributes) {
  drawInRect(utf16FromUtf8(string), rect, attributes);
}

}  // namespace tessaluna::platform
