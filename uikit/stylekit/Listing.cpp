#include "uikit/stylekit/Listing.h"

namespace TessalunaUIKit {

using namespace platform;

void appendListing(NSBezierPath& path, CGRect frame, ListingView outline) {
  const CGPoint* fraction = outline.fractions.data();
  for (const backend::PathVerb verb : outline.verbs) {
    switch (verb) {
      case backend::PathVerb::Move: path.moveToPoint(pointInFrame(frame, fraction[0])); break;
      case backend::PathVerb::Line: path.lineToPoint(pointInFrame(frame, fraction[0])); break;
      case backend::PathVerb::Curve:
        path.curveToPoint(pointInFrame(frame, fraction[0]), pointInFrame(frame, fraction[1]),
                          pointInFrame(frame, fraction[2]));
        break;
      case backend::PathVerb::Close: path.closePath(); break;
    }
    fraction += backend::pointCount(verb);
  }
}

Ref<NSBezierPath> pathInFrame(CGRect frame, ListingView outline) {
  auto path = NSBezierPath::bezierPath();
  appendListing(*path, frame, outline);
  return path;
}

}  // namespace TessalunaUIKit
