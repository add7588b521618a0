#include "tessaluna/ready/search/SearchPopUp.h"

#include <algorithm>

#include "tessaluna/platform/graphics/NSColor.h"
#include "tessaluna/platform/graphics/NSRect.h"
#include "tessaluna/platform/text/NSFont.h"
#include "tessaluna/platform/text/NSParagraphStyle.h"
#include "tessaluna/platform/views/NSProgressIndicator.h"
#include "tessaluna/platform/views/NSScrollView.h"
#include "tessaluna/ready/search/SearchRowView.h"

namespace tessaluna::ready {

using namespace platform;
using TessalunaUIKit::Suggestion;
using TessalunaUIKit::SuggestionItemViewController;

const ClassInfo SearchPopUp::staticClassInfo{.name = "tessaluna.ready.SearchPopUp",
                                             .base = &TessalunaUIKit::SuggestionsWindowController::staticClassInfo};

namespace {

constexpr CGFloat margin = 12, headingHeight = 24, noteHeight = 34, wheelSide = 16, smallTextHeight = 16;

void drawText(std::string_view text, const Ref<NSFont>& font, CGRect rect) {
  NSAttributedString(
      text, {{NSFontAttributeName, font},
             {NSForegroundColorAttributeName, NSColor::controlTextColor()->colorWithAlphaComponent(0.7)},
             {NSParagraphStyleAttributeName, make<NSParagraphStyle>(NSTextAlignmentNatural, NSLineBreakByTruncatingTail)}})
      .drawInRect(rect);
}

// A view among the rows that is not one of them. A click ends here: the pop-up's controller, further up the responder chain,
// would take it for one on a row.
struct NonRow : NSView {
  explicit NonRow(CGFloat height) : NSView({0, 0, 2 * margin, height}) {}
  void mouseDown(const Ref<NSEvent>&) override {}
  void mouseUp(const Ref<NSEvent>&) override {}
};

// The name of a section. Assistive clients meet it as the description of each of its rows.
class Heading : public NonRow {
 public:
  explicit Heading(std::string text) : NonRow(headingHeight), text_(std::move(text)) {}
  void drawRect(CGRect) override {
    drawText(text_, NSFont::boldSystemFontOfSize(NSFont::smallSystemFontSize()),
             {margin, 3, bounds().size.width - 2 * margin, smallTextHeight});
  }

 private:
  const std::string text_;
};

// What the note says is all that assistive clients need.
struct Wheel : NSProgressIndicator {
  explicit Wheel(CGRect frame) : NSProgressIndicator(frame) {
    setStyle(NSProgressIndicatorStyleSpinning);
    startAnimation(nullptr);
  }
  bool isAccessibilityElement() const override { return false; }
};

class Note : public NonRow {
 public:
  Note(std::string text, bool isBusy) : NonRow(noteHeight), text_(std::move(text)) {
    if (isBusy) addSubview(make<Wheel>(CGRect{margin, (noteHeight - wheelSide) / 2, wheelSide, wheelSide}));
  }
  void drawRect(CGRect) override {
    const CGFloat left = subviews().empty() ? margin : margin + wheelSide + 8;
    drawText(text_, NSFont::systemFontOfSize(NSFont::systemFontSize()), {left, 8, bounds().size.width - left - margin, 18});
  }
  bool isAccessibilityElement() const override { return true; }
  std::string accessibilityRole() const override { return std::string(NSAccessibilityStaticTextRole); }
  AccessibilityValue accessibilityValue() const override { return text_; }

 private:
  const std::string text_;
};

// A line around the pop-up, for desktops whose windows have no shadow.
struct Edge : NSView {
  explicit Edge(CGRect frame) : NSView(frame) { setAutoresizingMask(NSViewWidthSizable | NSViewHeightSizable); }
  void drawRect(CGRect) override {
    NSColor::controlTextColor()->colorWithAlphaComponent(0.3)->setFill();
    const CGRect frame = bounds();
    const CGFloat right = frame.size.width - 1, top = frame.size.height - 1;
    for (const CGRect side : {CGRect{0, 0, frame.size.width, 1}, CGRect{0, top, frame.size.width, 1},
                              CGRect{0, 1, 1, top - 1}, CGRect{right, 1, 1, top - 1}})
      NSRectFillUsingOperation(side, NSCompositingOperationSourceOver);
  }
  NSView* hitTest(CGPoint) override { return nullptr; }
};

bool isSame(const SearchRow& a, const SearchRow& b) {
  return a.id == b.id && a.title == b.title && a.detail == b.detail && a.section == b.section;
}

}  // namespace

SearchPopUp::SearchPopUp() {
  setEndsWithHiddenWindow(true);
  // One ground under the rows and under the scroll bar beside them.
  window()->setBackgroundColor(NSColor::windowBackgroundColor());
  dynamic_cast<NSScrollView&>(*window()->contentView()).setDrawsBackground(false);
  window()->contentView()->addSubview(make<Edge>(window()->contentView()->bounds()));
}

void SearchPopUp::setContent(Content content) {
  const std::optional<SearchRow> earlier = selected();
  content_ = std::move(content);
  std::vector<Suggestion> suggestions;
  for (std::size_t i = 0; i < content_.rows.size(); ++i) {
    const SearchRow& row = content_.rows[i];
    suggestions.emplace_back(row.title, static_cast<std::int64_t>(i));
    if (!row.detail.empty()) suggestions.back().detailedLabel = row.detail;
    suggestions.back().image = row.image;
  }
  setSuggestions(std::move(suggestions));
  if (!isOpen()) return;
  const auto same =
      std::ranges::find_if(content_.rows, [&](const SearchRow& row) { return earlier && isSame(row, *earlier); });
  selectRow(same == content_.rows.end() ? std::nullopt : std::optional(std::size_t(same - content_.rows.begin())));
}

void SearchPopUp::setListName(const std::string& name) {
  const auto& list = dynamic_cast<NSScrollView&>(*window()->contentView()).documentView();
  list->accessibilitySetOverrideValue(name, NSAccessibilityDescriptionAttribute);
}

void SearchPopUp::openBelow(const Ref<NSTextField>& field) {
  // What ended the pop-up otherwise may have left something.
  cancelSuggestions();
  beginForTextField(field);
  selectRow(std::nullopt);
}

void SearchPopUp::followField(const NSTextField& field) {
  if (!isOpen() || !field.window()) return;
  CGRect frame = window()->frame();
  if (frame.size.width != field.frame().size.width) {
    const std::optional<std::size_t> row = selectedRow();
    frame.size.width = field.frame().size.width;
    window()->setFrame(frame, false);
    setSuggestions(suggestions());
    selectRow(row);
  }
  parentControlMoved();
}

std::optional<SearchRow> SearchPopUp::selected() const {
  const std::optional<std::size_t> row = selectedRow();
  return row && *row < content_.rows.size() ? std::optional(content_.rows[*row]) : std::nullopt;
}

SearchPopUp::ItemRef SearchPopUp::makeItem(const Suggestion& suggestion) {
  const auto item = make<SuggestionItemViewController>(std::nullopt);
  item->setView(make<SearchRowView>(content_.rows.at(static_cast<std::size_t>(*suggestion.itemId)), content_.typed));
  return item;
}

Ref<NSView> SearchPopUp::viewAboveRow(std::size_t row) {
  const std::string& section = content_.rows.at(row).section;
  const bool begins = row == 0 || content_.rows[row - 1].section != section;
  return begins && !section.empty() ? make<Heading>(section) : nullptr;
}

Ref<NSView> SearchPopUp::viewBelowRows() {
  return content_.note.empty() ? nullptr : make<Note>(content_.note, content_.isBusy);
}

}  // namespace tessaluna::ready
