#include "gallery/links/LinksHost.h"

#include <algorithm>

#include "tessaluna/platform/graphics/NSColor.h"
#include "tessaluna/platform/text/NSFont.h"

namespace gallery {

using namespace tessaluna::platform;
using namespace TessalunaUIKit;

namespace {

struct Sample {
  const char* name;
  const char* note;
  std::vector<std::string> strings;
};

std::vector<Sample> samples() {
  return {
      {"artists", "three artists", {"Mira Holt", "The Quiet Engine", "Jonas Wehr"}},
      {"orchestra",
       "long names",
       {"The Chamber Orchestra of the Lower Valley", "Amalie Sondergaard-Whitcombe",
        "Choir of the Old Harbor Master's House"}},
      {"right-to-left", "from right to left", {"נועה לביא", "אורי כהן", "Ada Brink"}},
      {"mixed", "both directions", {"Ada Brink & נועה", "ليلى منصور", "Trio 7"}},
      {"combining", "combining marks", {"Zoe\u0301 Be\u0301la", "Nguye\u0302\u0303n A\u030a", "O\u0308 & U\u0308"}},
      {"emoji", "emoji", {"🎵 Club", "👩🏽‍🎤 & 👨‍👩‍👧‍👦", "🇫🇮 Band"}},
      {"letters", "one letter each", {"A", "B", "C", "D"}},
      {"empty-name", "an empty name between two", {"First", "", "Third"}},
      {"empty", "an empty list", {}},
  };
}

// Pieces of the text, some of which lead somewhere.
struct Piece {
  const char* text;
  const char* link = nullptr;
};
constexpr Piece pieces[] = {
    {"Recorded in one take by "},
    {"The Quiet Engine", "https://example.org/artists/the-quiet-engine"},
    {" with "},
    {"Mira Holt", "https://example.org/artists/mira-holt"},
    {", this album returns to the harbor of their first songs. Liner notes, lyrics and a film about the sessions are in "},
    {"the booklet that came with the first pressing", "https://example.org/albums/harbor/booklet"},
    {"; "},
    {"נועה לביא", "https://example.org/artists/noa-lavi"},
    {" drew the cover. 🎧"},
};

Ref<NSAttributedString> textWithLinks() {
  const auto text = make<NSMutableAttributedString>();
  for (const Piece& piece : pieces) {
    NSAttributes look{{NSFontAttributeName, NSFont::systemFontOfSize(NSFont::systemFontSize())},
                      {NSForegroundColorAttributeName, NSColor::controlTextColor()}};
    if (piece.link) {
      look[NSLinkAttributeName] = std::string(piece.link);
      look[NSForegroundColorAttributeName] = NSColor::colorWithSRGBRed(0.15, 0.28, 0.69, 1);
      look[NSUnderlineStyleAttributeName] = std::int64_t{NSUnderlineStyleSingle};
    }
    text->appendAttributedString(NSAttributedString(std::string_view(piece.text), look));
  }
  return text;
}

}  // namespace

LinksHost::LinksHost() : label_(make<ClickableLabel>(CGRect{0, 0, 420, 100})) {
  for (const Sample& sample : samples()) {
    const auto field = make<MultipleLinksTextField>(CGRect{0, 0, 420, 20});
    field->setStringValues(sample.strings);
    field->setShowsMenuAtEllipsis(true);
    field->setTakesKeyboard(true);
    field->setShowsToolTipWhileCut(true);
    lines_.push_back({sample.name, sample.note, field});
  }
  label_->setBezeled(false);
  label_->setDrawsBackground(false);
  label_->setEditable(false);
  label_->setTakesKeyboard(true);
  label_->setAttributedStringValue(textWithLinks());
}

void LinksHost::didInit() {
  NSObject::didInit();
  for (const Line& line : lines_) line.field->setTarget(refTo(*this));
  label_->setActionTarget(refTo(*this));
}

void LinksHost::close() {
  for (const Line& line : lines_) line.field->setTarget(nullptr);
  label_->setActionTarget(nullptr);
}

void LinksHost::setLinksEnabled(bool enabled) {
  for (const Line& line : lines_) {
    line.field->setLinksEnabled(enabled);
    line.field->setNeedsDisplay(true);
  }
}

void LinksHost::linkClicked(std::size_t elementIndex, MultipleLinksTextField& sender) {
  const auto line = std::ranges::find(lines_, &sender, [](const Line& each) { return each.field.get(); });
  const auto& strings = sender.stringValues();
  if (line != lines_.end() && strings && elementIndex < strings->size())
    report((*strings)[elementIndex] + ", link " + std::to_string(elementIndex + 1) + " of " + line->name);
}

void LinksHost::labelClicked(ClickableLabel&) { report("the label, beside its links"); }

void LinksHost::linkClicked(const URL& link) { report("link to " + link.absoluteString()); }

void LinksHost::report(const std::string& what) const {
  if (report_) report_(what);
}

}  // namespace gallery
