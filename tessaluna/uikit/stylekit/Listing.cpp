#include "tessaluna/uikit/stylekit/Listing.h"

namespace TessalunaUIKit {

using namespace tessaluna::platform;

void appendListing(NSBezierPath& path, CGRect frame, ListingView outline) {
  // pointInFrame, with what is the same for all points found once.
  const CGPoint low{CGRectGetMinX(frame), CGRectGetMinY(frame)};
  const CGSize size{CGRectGetWidth(frame), CGRectGetHeight(frame)};
  const auto place = [&](CGPoint p) { return CGPoint{low.x + size.width * p.x, low.y + size.height * p.y}; };
  const CGPoint* fraction = outline.fractions.data();
  CGPoint* point = path.appendSegments(outline.verbs, outline.fractions.size()).data();
  for (const tessaluna::backend::PathVerb verb : outline.verbs) {
    if (verb == tessaluna::backend::PathVerb::Curve) {
      // A path has the end after the controls.
      const CGPoint end = place(fraction[0]), control1 = place(fraction[1]), control2 = place(fraction[2]);
      point[0] = control1;
      point[1] = control2;
      point[2] = end;
      fraction += 3;
      point += 3;
    } else if (verb != tessaluna::backend::PathVerb::Close) {
      *point++ = place(*fraction++);
    }
  }
}

Ref<NSBezierPath> pathInFrame(CGRect frame, ListingView outline) {
  auto path = NSBezierPath::bezierPath();
  appendListing(*path, frame, outline);
  return path;
}

}  // namespace TessalunaUIKit
