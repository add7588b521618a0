#include "tessaluna/uikit/transport/PlaybackTransportSliderCell.h"

#include <cmath>

#include "tessaluna/platform/foundation/SystemVersion.h"
#include "tessaluna/platform/graphics/NSBezierPath.h"
#include "tessaluna/platform/graphics/NSColor.h"
#include "tessaluna/platform/graphics/NSRect.h"
#include "tessaluna/platform/views/NSSlider.h"

namespace TessalunaUIKit {

using namespace tessaluna::platform;

namespace {

constexpr CGFloat barHeight = 4, barRadius = 2.5;
constexpr CGSize knobSize{3, 14};

Ref<NSColor> gray(CGFloat level) { return NSColor::colorWithCalibratedRed(level, level, level, 1); }
Ref<NSColor> darkGray() { return gray(0.4); }
Ref<NSColor> trackGray() { return gray(std::floor(NSAppKitVersionNumber) < 1187 ? 0.5 : 0.6); }
Ref<NSColor> focusColor() { return NSColor::keyboardFocusIndicatorColor(); }

Ref<NSBezierPath> roundedBar(CGRect rect) { return NSBezierPath::bezierPathWithRoundedRect(rect, barRadius, barRadius); }

void fillRect(CGRect rect, const Ref<NSColor>& color) {
  color->setFill();
  NSRectFill(rect);
}

void fillRounded(CGRect rect, const Ref<NSColor>& color) {
  color->setFill();
  roundedBar(rect)->fill();
}

}  // namespace

const ClassInfo PlaybackTransportSliderCell::staticClassInfo{.name = "TessalunaUIKit.PlaybackTransportSliderCell",
                                                             .base = &NSSliderCell::staticClassInfo};

PlaybackTransportSliderCell::PlaybackTransportSliderCell(NSCoder& coder) : NSSliderCell(coder) { setBezeled(false); }

void PlaybackTransportSliderCell::displayLoadStatusFrom(std::uint64_t from, std::uint64_t to, bool completed,
                                                        std::uint64_t buffer2From, std::uint64_t buffer2End, bool buf2done,
                                                        std::uint64_t) {
  buffers_[0] = {from, to, completed};
  buffers_[1] = {buffer2From, buffer2End, buf2done};
}

CGRect PlaybackTransportSliderCell::knobRectFlipped(bool flipped) const {
  const CGRect stock = NSSliderCell::knobRectFlipped(flipped);
  const auto* slider = dynamic_cast<const NSSlider*>(controlView());
  if (slider && slider->isVertical()) return NSZeroRect;
  const double ratio = (doubleValue() - minValue()) / (maxValue() - minValue());
  const CGFloat width = controlView() ? controlView()->frame().size.width : 0;
  return {{(width - knobSize.width) * ratio, stock.origin.y - knobSize.height * 0.5 + std::floor(stock.size.height * 0.5)},
          knobSize};
}

void PlaybackTransportSliderCell::drawKnob(CGRect knobRect) {
  fillRect(knobRect, NSColor::colorWithCalibratedRed(0, 0, 0.6, 1));
}

void PlaybackTransportSliderCell::drawBarInside(CGRect rect, bool) {
  CGRect bar = rect;
  bar.origin.y += std::floor(rect.size.height * 0.5) - barHeight * 0.5;
  bar.size.height = barHeight;
  if (isVertical()) {
    // Intentional: a flat bar across the middle, as if it were horizontal.
    constexpr CGFloat margin = 4;
    return fillRect({bar.origin.x + margin, bar.origin.y, bar.size.width - 2 * margin, barHeight}, darkGray());
  }
  trackGray()->set();
  roundedBar(bar)->stroke();
  if (maxValue() == 0) return;
  if (buffers_[0].isLoadCompleted && buffers_[0].loadedFrames == 0) {
    fillRounded(bar, darkGray());
    return fillRounded(playedRect(bar), focusColor());
  }
  fillRounded(playedRect(bar), focusColor()->colorWithAlphaComponent(0.4));
  for (const Buffer& buffer : buffers_)
    if (buffer.loadedFrames != 0) fillSpan(buffer, bar);
}

CGRect PlaybackTransportSliderCell::playedRect(CGRect bar) const {
  return {bar.origin, {floatValue() * bar.size.width / maxValue(), barHeight}};
}

void PlaybackTransportSliderCell::fillSpan(const Buffer& buffer, CGRect bar) const {
  const auto extent = [&](double frames) { return frames * bar.size.width / maxValue(); };
  const auto part = [&](double first, double frames) {
    return CGRect{bar.origin.x + extent(first), bar.origin.y, extent(frames), barHeight};
  };
  const Ref<NSColor> ahead = buffer.isLoadCompleted ? darkGray() : trackGray();
  const auto first = static_cast<double>(buffer.firstLoadedFrame), frames = static_cast<double>(buffer.loadedFrames);
  // Intentional: in single precision, in which frames of a long song near the position are one.
  const float position = floatValue();
  const auto start = static_cast<float>(buffer.firstLoadedFrame);
  const auto end = static_cast<float>(buffer.firstLoadedFrame + buffer.loadedFrames);
  if (start >= position) return fillRect(part(first, frames), ahead);
  if (!(end > position)) return fillRect(part(first, frames), focusColor());
  const float played = position - start;
  fillRect(part(first, played), focusColor());
  fillRect(part(position, frames - played), ahead);
}

}  // namespace TessalunaUIKit
