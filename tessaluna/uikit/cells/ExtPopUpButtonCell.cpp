#include "tessaluna/uikit/cells/ExtPopUpButtonCell.h"

#include <cstdint>
#include <limits>

#include "tessaluna/platform/foundation/NSCoder.h"
#include "tessaluna/platform/foundation/memberTables.h"
#include "tessaluna/platform/graphics/NSBezierPath.h"
#include "tessaluna/platform/graphics/NSColor.h"
#include "tessaluna/platform/graphics/NSGraphicsContext.h"
#include "tessaluna/platform/graphics/NSRect.h"
#include "tessaluna/platform/text/NSFont.h"
#include "tessaluna/platform/text/NSParagraphStyle.h"
#include "tessaluna/platform/text/TextLayout.h"
#include "tessaluna/platform/text/unicode.h"

namespace TessalunaUIKit {

using namespace tessaluna::platform;

namespace {

constexpr Property properties[] = {property<&ExtPopUpButtonCell::setUseDarkTheme, "useDarkTheme">()};

constexpr CGFloat boxInset = 3, boxRadius = 5;
// How much of the right end the chevrons have, in heights of the box. The box was designed 38 points high.
constexpr CGFloat chevronsWidth = 0.8421052631578947;
constexpr CGFloat chevronRight = 0.6052631578947368, chevronMiddle = 0.4228042105263157, chevronLeft = 0.2631578947368421;
struct Chevron {
  CGFloat base, tip;
};
constexpr Chevron chevrons[] = {{0.39474, 0.23684}, {0.60526, 0.76316}};

Ref<NSColor> white(CGFloat value) { return NSColor::colorWithCalibratedWhite(value, 1); }
Ref<NSColor> ink(bool isDark) { return isDark ? white(0.9) : NSColor::blackColor(); }

}  // namespace

const ClassInfo ExtPopUpButtonCell::staticClassInfo{
    .name = "TessalunaUIKit.ExtPopUpButtonCell", .base = &NSPopUpButtonCell::staticClassInfo, .properties = properties};

// Intentional: an archive's cell is not dark as those made in code are.
ExtPopUpButtonCell::ExtPopUpButtonCell(NSCoder& coder) : NSPopUpButtonCell(coder), useDarkTheme_(false) {
  coder.overlookKeys({"useDarkTheme"});
}

void ExtPopUpButtonCell::drawBorderAndBackgroundWithFrame(CGRect frame, NSView&) {
  const CGRect box = NSInsetRect(frame, boxInset, boxInset);
  const auto shape = NSBezierPath::bezierPathWithRoundedRect(box, boxRadius, boxRadius);
  shape->setLineWidth(1);
  white(useDarkTheme_ ? 0.1 : 0.9)->setFill();
  shape->fill();
  white(useDarkTheme_ ? 0.25 : 0.75)->setStroke();
  shape->stroke();

  const CGFloat height = box.size.height, x = box.origin.x + box.size.width - chevronsWidth * height;
  const auto path = make<NSBezierPath>();
  for (const Chevron& chevron : chevrons) {
    path->moveToPoint({x + chevronRight * height, box.origin.y + chevron.base * height});
    path->lineToPoint({x + chevronMiddle * height, box.origin.y + chevron.tip * height});
    path->lineToPoint({x + chevronLeft * height, box.origin.y + chevron.base * height});
  }
  ink(useDarkTheme_)->setStroke();
  path->setLineWidth(1);
  path->stroke();
}

NSAttributes ExtPopUpButtonCell::titleAttributes() const {
  // A title that is up to a point too wide is cut by the clip, and does not wrap.
  return {{NSFontAttributeName, font() ? font() : NSFont::systemFontOfSize(NSFont::systemFontSize())},
          {NSForegroundColorAttributeName, ink(useDarkTheme_)},
          {NSParagraphStyleAttributeName, make<NSParagraphStyle>(NSTextAlignmentNatural, NSLineBreakByClipping)}};
}

std::u16string ExtPopUpButtonCell::shortenedTitle(CGFloat width) const {
  const NSAttributes attributes = titleAttributes();
  const std::u16string title = utf16FromUtf8(this->title());
  const auto widthOf = [&](const std::u16string& text) { return sizeWithAttributes(text, attributes).width; };
  const auto cutAfter = [&](std::int64_t units) { return title.substr(0, static_cast<std::size_t>(units)) + u"…"; };
  if (title.empty() || widthOf(title) <= width + 1) return title;
  std::int64_t low = 0, high = static_cast<std::int64_t>(title.size());
  while (high > low) {
    const std::int64_t middle = (low + high) / 2;
    const CGFloat cutWidth = widthOf(cutAfter(middle));
    if (cutWidth == width) return cutAfter(middle);
    if (cutWidth < width) {
      low = middle + 1;
    } else {
      // In a width that holds no more there is nothing left to cut.
      if (low + high <= 1) return u"…";
      high = middle - 1;
    }
  }
  if (high > 0 && widthOf(cutAfter(high)) > width + 1) --high;
  return cutAfter(high);
}

void ExtPopUpButtonCell::drawTitleWithFrame(CGRect frame, NSView&) {
  const NSAttributes attributes = titleAttributes();
  const CGRect box{frame.origin.x + 13, frame.origin.y,
                   (frame.size.width - 16) - chevronsWidth * (frame.size.height - 2 * boxInset), frame.size.height - 3};
  const std::u16string text = shortenedTitle(box.size.width);
  const CGFloat height = boundingRectWithSize(text, {box.size.width, std::numeric_limits<CGFloat>::max()},
                                              NSStringDrawingUsesLineFragmentOrigin, attributes)
                             .size.height;
  NSGraphicsContext::saveGraphicsState();
  NSRectClip(box);
  drawInRect(text, {box.origin.x, (box.size.height - height) * 0.5 + box.origin.y, box.size.width, height}, attributes);
  NSGraphicsContext::restoreGraphicsState();
}

}  // namespace TessalunaUIKit
