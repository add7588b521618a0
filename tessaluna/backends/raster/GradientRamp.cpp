#include "tessaluna/backends/raster/GradientRamp.h"

#include <cmath>

#include "tessaluna/backends/raster/PixelRect.h"

namespace tessaluna::backend::raster {

namespace {

Float4 premultiplied(Float4 color) {
  const float alpha = color[3];
  color[3] = 1;
  return color * splat(alpha);
}

// Channels of 0...1 with eight bits before the point and 24 bits after it, plus half a step for rounding.
Uint4 steps(Float4 color) {
  constexpr float one = 255.0f * (1 << 24);
  constexpr std::uint32_t half = 1u << 23;
  Uint4 result{};
  for (int i = 0; i < 4; ++i) result[i] = std::uint32_t(std::int64_t(color[i] * one)) + half;
  return result;
}

}  // namespace

bool GradientRamp::begin(const LinearGradient& gradient, const CGAffineTransform& toDevice) {
  const std::optional<CGAffineTransform> toPath = toDevice.inverted();
  stops_.clear();
  isOpaque_ = true;
  for (const GradientStop& stop : gradient.stops) {
    if (!std::isfinite(stop.location)) continue;
    Color opaque = stop.color;
    opaque.alpha = 1;
    Float4 color = raster::premultiplied(opaque, 1);
    color[3] = float(clamp01(stop.color.alpha));
    if (color[3] != 1) isOpaque_ = false;
    stops_.push_back({stop.location, color});
  }
  if (!toPath || stops_.empty()) return false;

  const double dx = gradient.end.x - gradient.start.x, dy = gradient.end.y - gradient.start.y;
  const double length = std::hypot(dx, dy), across = dx / length, up = dy / length;
  const CGPoint origin = toPath->apply({0.5, 0.5});
  start_ = ((origin.x - gradient.start.x) * across + (origin.y - gradient.start.y) * up) / length;
  perColumn_ = (toPath->a * across + toPath->b * up) / length;
  perRow_ = (toPath->c * across + toPath->d * up) / length;
  if (!std::isfinite(start_) || !std::isfinite(perColumn_) || !std::isfinite(perRow_)) {
    // On an axis without length every pixel lies after the end.
    start_ = stops_.back().location;
    perColumn_ = perRow_ = 0;
  }
  return true;
}

// Among stops at one place the last one applies from there on.
std::size_t GradientRamp::stopAfter(double position) const {
  std::size_t next = 0;
  while (next < stops_.size() && stops_[next].location <= position) ++next;
  return next;
}

// The color from this position on, as far as it changes linearly.
inline GradientRamp::Slope GradientRamp::slopeAt(double position, std::size_t next) const {
  if (next == 0 || next == stops_.size()) return {stops_[next > 0 ? next - 1 : 0].color, Float4{}};
  const Stop &low = stops_[next - 1], &high = stops_[next];
  const double width = high.location - low.location;
  const Float4 change = high.color - low.color;
  return {low.color + change * splat(float((position - low.location) / width)), change * splat(float(perColumn_ / width))};
}

Float4 GradientRamp::colorAt(double x, double y) const {
  const double position = positionOf(x, y);
  return premultiplied(slopeAt(position, stopAfter(position)).first);
}

template <class Write>
void GradientRamp::forEachSlope(int x, int y, int count, Write write) const {
  const auto positionAt = [&](int index) { return positionOf(x + index, y); };
  for (int index = 0; index < count;) {
    const double position = positionAt(index);
    const std::size_t next = stopAfter(position);
    int end = count;
    if (perColumn_ != 0) {
      // First an estimate of where the color leaves these two stops, then a search with the same sums as above.
      const bool isForwards = perColumn_ > 0;
      const std::size_t left = isForwards ? next : next - 1;  // wraps around where there is none
      if (left < stops_.size()) {
        const double after = (stops_[left].location - position) / perColumn_;
        end = floorWithin(after, 0, count - index) + index;
        while (end > index + 1 && stopAfter(positionAt(end - 1)) != next) --end;
        end = std::max(end, index + 1);
        while (end < count && stopAfter(positionAt(end)) == next) ++end;
      }
    }
    write(index, end - index, slopeAt(position, next));
    index = end;
  }
}

void GradientRamp::writePixels(int x, int y, int count, std::uint32_t* pixels) {
  const auto fill = [](std::uint32_t* out, int pixelCount, Float4 color) {
    std::uint32_t pixel = 0;
    storeRow(&color, &pixel, 1);
    fillPixels(out, pixelCount, pixel);
  };
  if (perColumn_ == 0) return fill(pixels, count, colorAt(x, y));
  forEachSlope(x, y, count, [&](int index, int pixelCount, const Slope& slope) {
    if (!isAnySet(slope.perPixel != splat(0))) return fill(pixels + index, pixelCount, slope.first);
    // Sums of such fine steps are exact to a hundredth at the end of the longest row.
    const Uint4 first = steps(slope.first), step = steps(slope.perPixel) - (1u << 23);
    const Uint4 places{0, 1, 2, 3};
    Uint4 blue = first[0] + step[0] * places, green = first[1] + step[1] * places, red = first[2] + step[2] * places;
    const Uint4 blueStep = Uint4{} + step[0] * 4, greenStep = Uint4{} + step[1] * 4, redStep = Uint4{} + step[2] * 4;
    forEachFour(pixels + index, pixelCount, [&](std::uint32_t* four, int) {
      const Uint4 colors = 0xff000000 | (red >> 8 & 0xff0000) | (green >> 16 & 0xff00) | blue >> 24;
      storeFour(reinterpret_cast<Short8>(colors), four);
      blue += blueStep;
      green += greenStep;
      red += redStep;
    });
  });
}

void GradientRamp::writeInks(int x, int y, int count, InkRow& row) {
  forEachSlope(x, y, count, [&row](int index, int pixelCount, const Slope& slope) {
    // Pixels of the last four that lie after the end are overwritten by what follows.
    for (int i = 0; i < pixelCount; i += 4) {
      const Float4 places = Float4{0, 1, 2, 3} + splat(float(i));
      const auto channel = [&](int c) { return splat(slope.first[c]) + splat(slope.perPixel[c]) * places; };
      const Float4 alpha = smaller(larger(channel(3), splat(0)), splat(1)) * splat(0xff00);
      const auto ink = [&](int c) {
        return __builtin_convertvector(smaller(larger(channel(c), splat(0)), splat(1)) * alpha + splat(0.5f), Int4);
      };
      const Int4 alphaInk = __builtin_convertvector(alpha + splat(0.5f), Int4);
      row.set(index + i, {halves(ink(0) | ink(2) << 16), halves(ink(1) | alphaInk << 16)});
    }
  });
}

}  // namespace tessaluna::backend::raster
