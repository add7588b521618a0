#include "tessaluna/uikit/cells/UnderlinedSegmentedCell.h"

#include <cmath>
#include <limits>

#include "tessaluna/platform/foundation/NSCoder.h"
#include "tessaluna/platform/foundation/memberTables.h"
#include "tessaluna/platform/graphics/NSBezierPath.h"
#include "tessaluna/platform/graphics/NSColor.h"
#include "tessaluna/platform/graphics/NSGraphicsContext.h"
#include "tessaluna/platform/graphics/NSRect.h"
#include "tessaluna/platform/interface_files/archivedLooks.h"
#include "tessaluna/platform/text/NSFont.h"
#include "tessaluna/platform/text/TextLayout.h"
#include "tessaluna/platform/views/NSView.h"

namespace TessalunaUIKit {

using namespace tessaluna::platform;

namespace {

constexpr CGFloat horizontalPadding = 10;

constexpr Property properties[] = {property<&UnderlinedSegmentedCell::setUseDarkTheme, "useDarkTheme">(),
                                   property<&UnderlinedSegmentedCell::setUnderlineColor, "underlineColor">()};

}  // namespace

const ClassInfo UnderlinedSegmentedCell::staticClassInfo{
    .name = "TessalunaUIKit.UnderlinedSegmentedCell", .base = &NSSegmentedCell::staticClassInfo, .properties = properties};

UnderlinedSegmentedCell::UnderlinedSegmentedCell() { underlineColor_ = NSColor::blueColor(); }

UnderlinedSegmentedCell::UnderlinedSegmentedCell(std::string text) : NSSegmentedCell(std::move(text)) {
  underlineColor_ = NSColor::blueColor();
}

UnderlinedSegmentedCell::UnderlinedSegmentedCell(Ref<NSImage> image) : NSSegmentedCell(std::move(image)) {
  underlineColor_ = NSColor::blueColor();
}

UnderlinedSegmentedCell::UnderlinedSegmentedCell(NSCoder& coder) : NSSegmentedCell(coder) {
  underlineColor_ = NSColor::blueColor();
  coder.overlookKeys({"useDarkTheme", "underlineColor"});
}

Ref<NSFont> UnderlinedSegmentedCell::labelFont() const {
  return font() ? font() : NSFont::systemFontOfSize(NSFont::systemFontSize());
}

CGFloat UnderlinedSegmentedCell::widthForSegment(std::size_t segment) const {
  const std::optional<std::string> label = labelForSegment(segment);
  if (!label) return 0;
  constexpr CGFloat unlimited = std::numeric_limits<CGFloat>::infinity();
  const CGRect measured = boundingRectWithSize(*label, {unlimited, unlimited}, NSStringDrawingUsesLineFragmentOrigin,
                                               {{NSFontAttributeName, labelFont()}});
  return 2 * horizontalPadding + measured.size.width;
}

void UnderlinedSegmentedCell::drawWithFrame(CGRect frame, NSView& view) { drawSegmentsInFrame(frame, view); }

Ref<NSColor> UnderlinedSegmentedCell::labelColor(bool isPressed, bool isSelected) const {
  if (isPressed) return useDarkTheme_ ? NSColor::whiteColor() : NSColor::darkGrayColor();
  if (isSelected) return useDarkTheme_ ? NSColor::colorWithSRGBRed(0.9, 0.9, 0.9, 1) : NSColor::blackColor();
  return useDarkTheme_ ? NSColor::lightGrayColor() : NSColor::darkGrayColor();
}

void UnderlinedSegmentedCell::drawLabel(const std::string& label, CGRect frame, const Ref<NSColor>& color) const {
  const CGRect text{frame.origin, {std::floor(frame.size.width + 0.5), std::floor(0.75 * frame.size.height + 0.5)}};
  const auto style = NSParagraphStyle::defaultParagraphStyle()->mutableCopy();
  style->setAlignment(NSTextAlignmentCenter);
  style->setLineBreakMode(lineBreakMode());
  const NSAttributes attributes{
      {NSFontAttributeName, labelFont()}, {NSForegroundColorAttributeName, color}, {NSParagraphStyleAttributeName, style}};
  const CGFloat height = boundingRectWithSize(label, {text.size.width, std::numeric_limits<CGFloat>::infinity()},
                                              NSStringDrawingUsesLineFragmentOrigin, attributes)
                             .size.height;
  NSGraphicsContext::saveGraphicsState();
  NSRectClip(text);
  const CGRect centered{CGRectGetMinX(text), (text.size.height - height) * 0.5 + CGRectGetMinY(text), text.size.width,
                        height};
  drawInRect(label, NSOffsetRect(centered, 0, 1), attributes);
  NSGraphicsContext::restoreGraphicsState();
}

void UnderlinedSegmentedCell::drawLine(CGRect frame, bool isSelected) const {
  const auto line = make<NSBezierPath>();
  line->moveToPoint({CGRectGetMinX(frame), CGRectGetMaxY(frame) - 2});
  line->lineToPoint({CGRectGetMaxX(frame), CGRectGetMaxY(frame) - 2});
  if (isSelected) underlineColor_->setStroke();
  else (useDarkTheme_ ? NSColor::lightGrayColor() : NSColor::darkGrayColor())->setStroke();
  line->setLineWidth(isSelected ? 4 : 0.5);
  line->stroke();
}

void UnderlinedSegmentedCell::drawSegment(std::size_t segment, CGRect frame, NSView&) {
  const std::optional<std::string> label = labelForSegment(segment);
  if (!label) return;
  const bool isSelected = isSelectedForSegment(segment);
  drawLabel(*label, frame, labelColor(pressedSegment() == segment, isSelected));
  drawLine(frame, isSelected);
}

void UnderlinedSegmentedCell::drawOverflow(CGRect frame, NSView&, bool hasSelected) {
  drawLabel("•••", frame, labelColor(/*isPressed=*/false, hasSelected));
  drawLine(frame, hasSelected);
}

bool UnderlinedSegmentedCell::startTrackingAt(CGPoint start, NSView& view) {
  // Outside of all segments an earlier one stays.
  if (const auto segment = segmentAtPoint(start, view.bounds())) pressedSegment_.value = segment;
  return NSSegmentedCell::startTrackingAt(start, view);
}

void UnderlinedSegmentedCell::stopTracking(CGPoint last, CGPoint stop, NSView& view, bool mouseIsUp) {
  pressedSegment_.value.reset();
  NSSegmentedCell::stopTracking(last, stop, view, mouseIsUp);
}

}  // namespace TessalunaUIKit
