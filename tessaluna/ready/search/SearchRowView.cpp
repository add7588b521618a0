#include "tessaluna/ready/search/SearchRowView.h"

#include "tessaluna/platform/graphics/NSColor.h"
#include "tessaluna/platform/text/NSAttributedString.h"
#include "tessaluna/platform/text/NSFont.h"
#include "tessaluna/platform/text/NSParagraphStyle.h"
#include "tessaluna/ready/search/matchedLetters.h"

namespace tessaluna::ready {

using namespace platform;

const ClassInfo SearchRowView::staticClassInfo{.name = "tessaluna.ready.SearchRowView",
                                               .base = &TessalunaUIKit::HighlightingView::staticClassInfo};

namespace {

constexpr CGFloat margin = 12, pictureSide = 28, textAfterPicture = 10, titleHeight = 18, detailHeight = 16;
constexpr CGFloat lowRow = 30, highRow = 44;

NSAttributes attributesOf(const Ref<NSFont>& font, const Ref<NSColor>& color) {
  return {{NSFontAttributeName, font},
          {NSForegroundColorAttributeName, color},
          {NSParagraphStyleAttributeName, make<NSParagraphStyle>(NSTextAlignmentNatural, NSLineBreakByTruncatingTail)}};
}

}  // namespace

SearchRowView::SearchRowView(SearchRow row, std::string_view typed)
    : HighlightingView(CGRect{0, 0, 2 * margin, row.detail.empty() && !row.image ? lowRow : highRow}),
      row_(std::move(row)),
      matched_(matchedLetters(row_.title, typed)) {}

void SearchRowView::drawRect(CGRect dirtyRect) {
  HighlightingView::drawRect(dirtyRect);
  const CGSize size = bounds().size;
  CGFloat left = margin;
  if (row_.image) {
    row_.image->drawInRect({left, (size.height - pictureSide) / 2, pictureSide, pictureSide});
    left += pictureSide + textAfterPicture;
  }
  const CGFloat width = size.width - left - margin, textHeight = titleHeight + (row_.detail.empty() ? 0 : detailHeight);
  const CGFloat bottom = (size.height - textHeight) / 2;
  const Ref<NSColor> color = isHighlighted() ? NSColor::alternateSelectedControlTextColor() : NSColor::controlTextColor();
  NSMutableAttributedString title(row_.title, attributesOf(NSFont::systemFontOfSize(NSFont::systemFontSize()), color));
  const Ref<NSObject> bold = NSFont::boldSystemFontOfSize(NSFont::systemFontSize());
  for (const NSRange& range : matched_) title.addAttribute(NSFontAttributeName, bold, range);
  title.drawInRect({left, bottom + textHeight - titleHeight, width, titleHeight});
  if (row_.detail.empty()) return;
  // Paler than the title, and still easy to read on either ground.
  const Ref<NSColor> second = color->colorWithAlphaComponent(isHighlighted() ? 0.85 : 0.7);
  NSAttributedString(row_.detail, attributesOf(NSFont::systemFontOfSize(NSFont::smallSystemFontSize()), second))
      .drawInRect({left, bottom, width, detailHeight});
}

std::string SearchRowView::accessibilityTitle() const {
  return row_.detail.empty() ? row_.title : row_.title + ", " + row_.detail;
}

}  // namespace tessaluna::ready
