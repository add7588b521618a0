// A text in lines: where each is, what it measures, which character is where. All that measures or draws text goes
// through here; nothing is kept between two uses. Coordinates count from the upper left corner of the text, y down.
#pragma once

#include <limits>
#include <span>
#include <vector>

#include "tessaluna/platform/backend/TextEngine.h"
#include "tessaluna/platform/text/NSAttributedString.h"
#include "tessaluna/platform/text/NSParagraphStyle.h"

namespace tessaluna::platform {

class CGContext;

enum NSStringDrawingOptions : std::uint32_t { NSStringDrawingUsesLineFragmentOrigin = 1 };

// Which of two lines has a caret that is both at the end of one and at the start of the next, because the text wraps there.
enum NSSelectionAffinity { NSSelectionAffinityUpstream, NSSelectionAffinityDownstream };

struct CaretPlace {
  std::size_t index = 0;
  NSSelectionAffinity affinity = NSSelectionAffinityDownstream;
};

class TextLayout {
 public:
  struct Options {
    CGFloat width = std::numeric_limits<CGFloat>::infinity();
    bool wrapsLines = true;                             // false: a line for each paragraph, whatever the width
    const NSAttributes* attributesOfNothing = nullptr;  // the height and place of a text without characters
    // Borrowed: the text outlives the layout and does not change meanwhile, so that it is not copied.
    enum class Text { Copied, Lent } text = Text::Copied;
  };

  struct Line {
    std::size_t start = 0, length = 0;    // of the text, with the line's end
    CGFloat x = 0, y = 0;                 // of its upper left corner
    CGFloat baseline = 0;                 // y of its baseline
    Ref<const NSAttributedString> shown;  // shortened, without the line's end
    std::shared_ptr<const backend::ShapedLine> shaped;
    NSRange leftOut;     // counted from the line's start: what the "…" at its location replaces
    bool isCut = false;  // by the edge of the width
    backend::FontMetrics metrics;

    CGFloat height() const { return metrics.ascent + metrics.descent + metrics.leading; }
    // Of the text, what the cluster of the shaped line shows.
    NSRange rangeOf(const backend::TextCluster& cluster) const;
  };

  TextLayout(const NSAttributedString& text, Options options);
  // The text has changed: of a range, as it is now, and with it of all that was so much shorter. Only its paragraphs are set again.
  // The options are those of the layout.
  void textWasEdited(const NSAttributedString& text, NSRange edited, std::ptrdiff_t change, const Options& options);

  const std::vector<Line>& lines() const { return lines_; }
  // Of what is shown: the longest line, and all heights. An empty text is one line high.
  CGSize size() const { return size_; }

  // From the rectangle's upper edge on, into the current context; a line that starts below the lower edge is left out.
  void drawInRect(CGRect rect) const;
  // The same of the lines with characters of the range, however high the rectangle is.
  void drawRangeInRect(NSRange range, CGRect rect) const;
  // The characters of the lines that may be drawn between two heights: letters may be higher and deeper than their line.
  NSRange rangeBetween(CGFloat top, CGFloat bottom) const;

  // The character whose box holds the point, or the nearest of its line. The text's length for an empty one.
  std::size_t characterAt(CGPoint point) const;
  // The caret place nearest to the point.
  CaretPlace caretPlaceAt(CGPoint point) const;
  std::size_t insertionIndexAt(CGPoint point) const { return caretPlaceAt(point).index; }
  const Line& lineOf(CaretPlace place) const;
  // The boxes of a range, one or more a line, in the order of the lines.
  std::vector<CGRect> rectsOf(NSRange range) const;
  // One point wide, at the leading edge of the character at the index; at the end of a line at the trailing edge of the
  // last one, which in text from right to left is its left.
  CGRect caretRectAt(CaretPlace place) const;
  CGRect caretRectAt(std::size_t index) const { return caretRectAt(CaretPlace{index}); }

 private:
  const Line& lineAt(CGFloat y) const;
  std::span<const Line> linesOf(NSRange range) const;
  explicit TextLayout(CGFloat width) : width_(width) {}
  void addParagraphs(const NSAttributedString& text, std::size_t start, std::size_t end, const Options& options);
  void addParagraph(const NSAttributedString& text, NSRange range, std::size_t lineEnd, const Options& options);
  void addWrapped(const Ref<const NSAttributedString>& paragraph, const backend::ShapedLine& shaped, std::size_t start,
                  std::size_t lineEnd, NSLineBreakMode mode);
  void addLine(Line line);
  void place();
  void drawLines(std::span<const Line> lines, CGRect rect) const;
  void drawLine(const Line& line, CGContext& context) const;

  std::vector<Line> lines_;
  std::vector<NSTextAlignment> alignments_;  // of each line
  CGSize size_;
  CGFloat width_;
  CGFloat tallest_ = 0;  // of the lines
};

// Strings in one set of attributes. Those in UTF-8 are measured and drawn as the same text in UTF-16. A lone surrogate is one
// unit of the text, and shows as the character for what cannot be shown.
CGSize sizeWithAttributes(std::string_view string, const NSAttributes& attributes);
CGSize sizeWithAttributes(std::u16string_view string, const NSAttributes& attributes);
CGRect boundingRectWithSize(std::string_view string, CGSize size, std::uint32_t options, const NSAttributes& attributes);
CGRect boundingRectWithSize(std::u16string_view string, CGSize size, std::uint32_t options, const NSAttributes& attributes);
void drawInRect(std::string_view string, CGRect rect, const NSAttributes& attributes);
void drawInRect(std::u16string_view string, CGRect rect, const NSAttributes& attributes);

}  // namespace tessaluna::platform
