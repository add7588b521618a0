#include "gallery/artwork/GlyphView.h"

#include <algorithm>
#include <cctype>
#include <memory>

#include "tessaluna/platform/graphics/NSGraphicsContext.h"
#include "tessaluna/platform/graphics/PaletteCanvas.h"

namespace gallery {

using namespace tessaluna::platform;

namespace {

constexpr CGFloat margin = 3;

CGFloat longerSide(CGSize size) { return std::max(size.width, size.height); }

}  // namespace

GlyphView::GlyphView(const TessalunaUIKit::Routine& routine)
    : NSView(CGRect{}), routine_(routine), size_(longerSide(routine.defaultFrame.size)) {
  for (const TessalunaUIKit::RoutineFlag& flag : routine.flags) flags_.push_back(flag.isOnByDefault);
}

void GlyphView::setFlag(std::size_t index, bool isOn) {
  flags_[index] = isOn;
  setNeedsDisplay(true);
}

void GlyphView::setBackground(BackgroundKind background) {
  background_ = background;
  setNeedsDisplay(true);
}

void GlyphView::setGlyphSize(double size) {
  size_ = size;
  invalidateIntrinsicContentSize();
}

CGSize GlyphView::intrinsicContentSize() const {
  const CGSize standard = routine_.defaultFrame.size;
  const CGFloat scale = size_ / longerSide(standard);
  return {standard.width * scale + 2 * margin, standard.height * scale + 2 * margin};
}

// The routine's name without its verb.
std::string GlyphView::accessibilityTitle() const {
  constexpr std::string_view verb = "draw";
  std::string member = routine_.member(), words;
  if (member.starts_with(verb)) member.erase(0, verb.size());
  for (const char letter : member) {
    const auto unit = static_cast<unsigned char>(letter);
    if (std::isupper(unit) && !words.empty()) words += ' ';
    words += static_cast<char>(std::tolower(unit));
  }
  return words;
}

void GlyphView::drawRect(CGRect) {
  const auto flags = std::make_unique<bool[]>(flags_.size());
  std::copy(flags_.begin(), flags_.end(), flags.get());
  PaletteCanvas canvas(NSGraphicsContext::currentCgContext().canvas(), axisOf(background_));
  const CanvasScope scope(canvas);
  routine_.draw(NSInsetRect(bounds(), margin, margin), {flags.get(), flags_.size()});
}

}  // namespace gallery
