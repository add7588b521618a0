#include "gallery/GlyphView.h"

#include <algorithm>
#include <array>
#include <cmath>

#include "platform/graphics/NSColor.h"
#include "platform/graphics/NSRect.h"

namespace gallery {

using namespace platform;

namespace {

// Around the glyph, for strokes that reach beyond their frame.
constexpr CGFloat margin = 10;
constexpr CGFloat checker = 8;
constexpr std::size_t mostFlags = 8;

}  // namespace

GlyphView::GlyphView(const TessalunaUIKit::Routine& routine) : NSView(CGRect{}), routine_(routine) {
  for (const TessalunaUIKit::RoutineFlag& flag : routine.flags) flags_.push_back(flag.isOnByDefault);
  setGlyphSize(64);
}

void GlyphView::setGround(Ground ground) {
  ground_ = ground;
  setNeedsDisplay(true);
}

void GlyphView::setFlag(std::size_t index, bool isOn) {
  flags_[index] = isOn;
  setNeedsDisplay(true);
}

void GlyphView::setGlyphSize(double size) {
  const CGSize design = routine_.defaultFrame.size;
  const double scale = size / std::max(design.width, design.height);
  setFrameSize({std::max(1.0, std::round(design.width * scale)) + 2 * margin,
                std::max(1.0, std::round(design.height * scale)) + 2 * margin});
  setNeedsDisplay(true);
}

void GlyphView::drawRect(CGRect rect) {
  const double lightness = ground_ == Ground::Dark ? 0.13 : 1;
  NSColor::colorWithCalibratedWhite(lightness, 1)->setFill();
  NSRectFill(rect);
  if (ground_ == Ground::Checkered) {
    NSColor::colorWithCalibratedWhite(0.88, 1)->setFill();
    for (CGFloat y = 0; y < bounds().size.height; y += checker)
      for (CGFloat x = std::fmod(y / checker, 2) * checker; x < bounds().size.width; x += 2 * checker)
        NSRectFill({x, y, checker, checker});
  }
  std::array<bool, mostFlags> flags{};
  std::copy(flags_.begin(), flags_.end(), flags.begin());
  routine_.draw(NSInsetRect(bounds(), margin, margin), std::span(flags).first(flags_.size()));
}

}  // namespace gallery
