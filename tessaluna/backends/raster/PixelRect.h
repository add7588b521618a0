// A rectangle of whole device pixels: columns left...right - 1, rows top...bottom - 1, row 0 at the top.
#pragma once

#include <algorithm>
#include <cmath>
#include <cstddef>

#include "tessaluna/platform/foundation/languageVersion.h"

namespace tessaluna::backend::raster {

struct PixelOffset {
  int x = 0, y = 0;
};

struct PixelRect {
  int left = 0, top = 0, right = 0, bottom = 0;

  constexpr int width() const { return right - left; }
  constexpr int height() const { return bottom - top; }
  constexpr std::size_t area() const { return std::size_t(width()) * std::size_t(height()); }  // not of reversed sides
  constexpr bool isEmpty() const { return right <= left || bottom <= top; }
  friend constexpr bool operator==(const PixelRect&, const PixelRect&) = default;

  constexpr PixelRect intersected(const PixelRect& other) const {
    const PixelRect common{std::max(left, other.left), std::max(top, other.top), std::min(right, other.right),
                           std::min(bottom, other.bottom)};
    return common.isEmpty() ? PixelRect{} : common;
  }
  constexpr PixelRect united(const PixelRect& other) const {
    if (isEmpty()) return other;
    if (other.isEmpty()) return *this;
    return {std::min(left, other.left), std::min(top, other.top), std::max(right, other.right),
            std::max(bottom, other.bottom)};
  }
  constexpr PixelRect moved(PixelOffset by) const { return {left + by.x, top + by.y, right + by.x, bottom + by.y}; }
  constexpr PixelRect grown(int by) const { return {left - by, top - by, right + by, bottom + by}; }
  constexpr bool contains(const PixelRect& other) const {
    return other.left >= left && other.top >= top && other.right <= right && other.bottom <= bottom;
  }
};

// A rectangle in device pixels with fractions, y down. It is empty if a side is NaN or the sides are reversed.
struct DeviceRect {
  double left = 0, top = 0, right = 0, bottom = 0;

  bool isEmpty() const { return !(right > left && bottom > top); }
  DeviceRect intersected(const DeviceRect& other) const {
    return {std::max(left, other.left), std::max(top, other.top), std::min(right, other.right),
            std::min(bottom, other.bottom)};
  }
  DeviceRect grown(double by) const { return {left - by, top - by, right + by, bottom + by}; }
  DeviceRect moved(double dx, double dy) const { return {left + dx, top + dy, right + dx, bottom + dy}; }
  DeviceRect scaled(double f) const { return {left * f, top * f, right * f, bottom * f}; }
  static DeviceRect of(const PixelRect& rect) {
    return {double(rect.left), double(rect.top), double(rect.right), double(rect.bottom)};
  }
  // The whole pixels that it touches. Edges are clamped to a range larger than any picture, so that sums of them fit an int.
  PixelRect roundedOut() const {
    if (isEmpty()) return {};
    const auto clamped = [](double v) { return int(std::clamp(v, -1e8, 1e8)); };
    return {clamped(std::floor(left)), clamped(std::floor(top)), clamped(std::ceil(right)), clamped(std::ceil(bottom))};
  }
};

// Coordinates this near to a pixel's border count as lying on it: sums of scaled coordinates are off by about this much.
inline constexpr double nearlyWhole = 1e-6;
inline bool isNearlyWhole(double v) { return std::abs(v - std::round(v)) < nearlyWhole; }
inline double snapped(double v) { return isNearlyWhole(v) ? std::round(v) : v; }

// How much of a pixel lies between two edges, in one direction.
inline float shareOfPixel(int pixel, double low, double high) {
  return float(std::max(0.0, std::min(pixel + 1.0, high) - std::max(double(pixel), low)));
}

// The floor of a number, clamped to bounds; the lower bound for NaN.
inline int floorWithin(double v, int low, int high) { return v >= low ? (v < high ? int(std::floor(v)) : high) : low; }

}  // namespace tessaluna::backend::raster
