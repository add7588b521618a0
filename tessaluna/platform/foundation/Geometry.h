// Points, sizes, rectangles and ranges: plain values in double-precision points, the y axis upward unless a
// view says that it is flipped.
#pragma once

#include <cstddef>

#include "tessaluna/platform/foundation/languageVersion.h"

namespace tessaluna::platform {

using CGFloat = double;

struct CGPoint {
  CGFloat x = 0;
  CGFloat y = 0;
  friend bool operator==(const CGPoint&, const CGPoint&) = default;
};

struct CGSize {
  CGFloat width = 0;
  CGFloat height = 0;
  friend bool operator==(const CGSize&, const CGSize&) = default;
};

// Written {x, y, width, height}: CGRect{10, 20, 24, 24}.
struct CGRect {
  CGPoint origin;
  CGSize size;

  constexpr CGRect() = default;
  constexpr CGRect(CGPoint at, CGSize extent) : origin(at), size(extent) {}
  constexpr CGRect(CGFloat x, CGFloat y, CGFloat width, CGFloat height) : origin{x, y}, size{width, height} {}
  friend bool operator==(const CGRect&, const CGRect&) = default;
};

// A span of UTF-16 units.
struct NSRange {
  std::size_t location = 0;
  std::size_t length = 0;
  friend bool operator==(const NSRange&, const NSRange&) = default;
};

enum NSRectEdge { NSMinXEdge = 0, NSMinYEdge = 1, NSMaxXEdge = 2, NSMaxYEdge = 3 };

inline constexpr CGRect NSZeroRect{};

// Of the area that the rectangle covers: one of negative size has its origin at the other edge, and a positive width.
constexpr CGFloat CGRectGetMinX(CGRect r) { return r.size.width < 0 ? r.origin.x + r.size.width : r.origin.x; }
constexpr CGFloat CGRectGetMinY(CGRect r) { return r.size.height < 0 ? r.origin.y + r.size.height : r.origin.y; }
constexpr CGFloat CGRectGetMaxX(CGRect r) { return r.size.width < 0 ? r.origin.x : r.origin.x + r.size.width; }
constexpr CGFloat CGRectGetMaxY(CGRect r) { return r.size.height < 0 ? r.origin.y : r.origin.y + r.size.height; }
constexpr CGFloat CGRectGetMidX(CGRect r) { return r.origin.x + r.size.width * 0.5; }
constexpr CGFloat CGRectGetMidY(CGRect r) { return r.origin.y + r.size.height * 0.5; }
constexpr CGFloat CGRectGetWidth(CGRect r) { return r.size.width < 0 ? -r.size.width : r.size.width; }
constexpr CGFloat CGRectGetHeight(CGRect r) { return r.size.height < 0 ? -r.size.height : r.size.height; }

// The same rectangle with sizes that are not negative.
constexpr CGRect CGRectStandardize(CGRect r) {
  return {{CGRectGetMinX(r), CGRectGetMinY(r)}, {CGRectGetWidth(r), CGRectGetHeight(r)}};
}

// True unless both sizes are positive; a size that is NaN counts as empty.
constexpr bool NSIsEmptyRect(CGRect r) { return !(r.size.width > 0 && r.size.height > 0); }

// The edges at the minimum belong to the rectangle, those at the maximum do not. Knows nothing of flipped views.
constexpr bool NSPointInRect(CGPoint p, CGRect r) {
  return p.x >= CGRectGetMinX(r) && p.x < CGRectGetMaxX(r) && p.y >= CGRectGetMinY(r) && p.y < CGRectGetMaxY(r);
}

// Both edges move inward by dx and dy; negative values grow the rectangle.
constexpr CGRect NSInsetRect(CGRect r, CGFloat dx, CGFloat dy) {
  return {r.origin.x + dx, r.origin.y + dy, r.size.width - 2 * dx, r.size.height - 2 * dy};
}

constexpr CGRect NSOffsetRect(CGRect r, CGFloat dx, CGFloat dy) {
  return {r.origin.x + dx, r.origin.y + dy, r.size.width, r.size.height};
}

// Cuts a slice of `amount` points off the rectangle at one edge; the rest is the remainder. More than there is takes all.
void NSDivideRect(CGRect rect, CGRect& slice, CGRect& remainder, CGFloat amount, NSRectEdge edge);
// The smallest rectangle around both. An empty one adds nothing; of two empty ones the result is zero.
CGRect NSUnionRect(CGRect a, CGRect b);
// The common area, or zero where there is none.
CGRect NSIntersectionRect(CGRect a, CGRect b);
// An empty rectangle intersects nothing.
bool NSIntersectsRect(CGRect a, CGRect b);
// True if b is not empty and lies in a, edges included.
bool NSContainsRect(CGRect a, CGRect b);

}  // namespace tessaluna::platform
