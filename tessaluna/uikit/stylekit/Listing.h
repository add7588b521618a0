// An outline as a reviewer reads it, compiled into a table:
//
//   constexpr auto leftArrow = listing<"M (1, 1), L (0.16667, 0.5), L (1, 0)">;
//   auto path = pathInFrame(frame, leftArrow);
//
// M (x, y) moves, L (x, y) draws a line, C (x, y; x1, y1; x2, y2) a curve to x, y with two control points, Z closes. Pairs
// are fractions of a frame. A typing error is a compile error; a coordinate is the double nearest to its decimal.
#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <span>
#include <string_view>

#include "tessaluna/platform/backend/Path.h"
#include "tessaluna/platform/graphics/NSBezierPath.h"

namespace TessalunaUIKit {

// A literal as a template argument.
template <std::size_t size>
struct ListingText {
  char characters[size];
  consteval ListingText(const char (&literal)[size]) {  // NOLINT(google-explicit-constructor): the point of it
    std::copy_n(literal, size, characters);
  }
  constexpr std::string_view view() const { return {characters, size - 1}; }
};

// A listing of any length. A curve's three points are in the order of the notation: end, first control, second control.
struct ListingView {
  std::span<const tessaluna::backend::PathVerb> verbs;
  std::span<const tessaluna::platform::CGPoint> fractions;
};

template <std::size_t verbCount, std::size_t pointCount>
struct Listing {
  std::array<tessaluna::backend::PathVerb, verbCount> verbs{};
  std::array<tessaluna::platform::CGPoint, pointCount> fractions{};
  constexpr operator ListingView() const { return {verbs, fractions}; }  // NOLINT(google-explicit-constructor)
};

namespace listing_parser {

// Reached only while compiling, and then it is the error. (What calls it below is constexpr and not consteval only because
// older compilers refuse variables in the latter; `count` and `compile` see to it that nothing of it runs later.)
void notInListingNotation();

class Reader {
 public:
  constexpr explicit Reader(std::string_view text) : rest_(text) {}

  constexpr bool atEnd() const { return rest_.empty(); }
  constexpr bool accept(char expected) {
    if (atEnd() || rest_.front() != expected) return false;
    rest_.remove_prefix(1);
    return true;
  }
  constexpr void expect(std::string_view expected) {
    for (const char character : expected)
      if (!accept(character)) notInListingNotation();
  }
  constexpr tessaluna::backend::PathVerb verb() {
    if (accept('M')) return tessaluna::backend::PathVerb::Move;
    if (accept('L')) return tessaluna::backend::PathVerb::Line;
    if (accept('C')) return tessaluna::backend::PathVerb::Curve;
    if (!accept('Z')) notInListingNotation();
    return tessaluna::backend::PathVerb::Close;
  }
  constexpr tessaluna::platform::CGPoint pair() {
    const double x = number();
    expect(", ");
    return {x, number()};
  }

 private:
  // Digits and a power of ten are exact doubles here, so their one division rounds to the nearest.
  constexpr double number() {
    const bool isNegative = accept('-');
    double digits = 0, scale = 1;
    bool hasPoint = false, hasDigit = false;
    for (; !atEnd(); rest_.remove_prefix(1)) {
      const char character = rest_.front();
      if (character == '.' && !hasPoint) {
        hasPoint = true;
        continue;
      }
      if (character < '0' || character > '9') break;
      digits = digits * 10 + (character - '0');
      if (hasPoint) scale *= 10;
      hasDigit = true;
    }
    if (!hasDigit || digits > 0x1p53) notInListingNotation();
    return (isNegative ? -digits : digits) / scale;
  }

  std::string_view rest_;
};

// Calls add(verb, points) for each segment.
template <class Add>
constexpr void parse(std::string_view text, Add add) {
  Reader reader(text);
  while (true) {
    const tessaluna::backend::PathVerb verb = reader.verb();
    std::array<tessaluna::platform::CGPoint, 3> points{};
    const auto count = static_cast<std::size_t>(tessaluna::backend::pointCount(verb));
    if (count > 0) reader.expect(" (");
    for (std::size_t i = 0; i < count; ++i) {
      if (i > 0) reader.expect("; ");
      points[i] = reader.pair();
    }
    if (count > 0) reader.expect(")");
    add(verb, std::span(points).first(count));
    if (reader.atEnd()) return;
    reader.expect(", ");
  }
}

struct Counts {
  std::size_t verbs = 0, points = 0;
};

consteval Counts count(std::string_view text) {
  Counts counts;
  parse(text, [&](tessaluna::backend::PathVerb, std::span<const tessaluna::platform::CGPoint> points) {
    ++counts.verbs;
    counts.points += points.size();
  });
  return counts;
}

template <ListingText text>
consteval auto compile() {
  constexpr Counts counts = count(text.view());
  Listing<counts.verbs, counts.points> result;
  std::size_t verbIndex = 0, pointIndex = 0;
  parse(text.view(), [&](tessaluna::backend::PathVerb verb, std::span<const tessaluna::platform::CGPoint> points) {
    result.verbs[verbIndex++] = verb;
    for (const tessaluna::platform::CGPoint& point : points) result.fractions[pointIndex++] = point;
  });
  return result;
}

}  // namespace listing_parser

template <ListingText text>
inline constexpr auto compiledListing = listing_parser::compile<text>();

// A view of the one table, so that calls do not copy a function's constant.
template <ListingText text>
inline constexpr ListingView listing = compiledListing<text>;

// The point at the fractions of a frame: minX + width * x, minY + height * y, without rounding.
constexpr tessaluna::platform::CGPoint pointInFrame(tessaluna::platform::CGRect frame,
                                                    tessaluna::platform::CGPoint fraction) {
  return {CGRectGetMinX(frame) + CGRectGetWidth(frame) * fraction.x,
          CGRectGetMinY(frame) + CGRectGetHeight(frame) * fraction.y};
}

// Adds the outline to a path, or makes a path of it.
void appendListing(tessaluna::platform::NSBezierPath& path, tessaluna::platform::CGRect frame, ListingView outline);
tessaluna::platform::Ref<tessaluna::platform::NSBezierPath> pathInFrame(tessaluna::platform::CGRect frame,
                                                                        ListingView outline);

}  // namespace TessalunaUIKit
