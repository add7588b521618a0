#include "tessaluna/uikit/containers/BorderedView.h"

#include "tessaluna/platform/foundation/NSCoder.h"
#include "tessaluna/platform/foundation/memberTables.h"
#include "tessaluna/platform/graphics/NSBezierPath.h"
#include "tessaluna/platform/interface_files/archivedLooks.h"
#include "tessaluna/platform/windows/NSApplication.h"

namespace TessalunaUIKit {

using namespace tessaluna::platform;

namespace {

constexpr Property properties[] = {property<&BorderedView::setBorderColor, "borderColor">()};

constexpr CGFloat outerRadius = 3.6, innerRadius = 2.6;
constexpr CGFloat mutedFraction = 0.7;  // of light gray

}  // namespace

const ClassInfo BorderedView::staticClassInfo{
    .name = "TessalunaUIKit.BorderedView", .base = &NSView::staticClassInfo, .properties = properties};

BorderedView::BorderedView(CGRect frame) : NSView(frame) {
  stopUnimplementedInitializer("TessalunaUIKit.BorderedView", "init(frame:)");
}

BorderedView::BorderedView(NSCoder& coder) : NSView(coder) {
  coder.overlookKeys({"borderColor"});
  borderColor_ = NSColor::blackColor();
  if (!coder.failed()) setWantsLayer(true);
}

void BorderedView::setBorderColor(Ref<NSColor> color) {
  borderColor_ = std::move(color);
  setNeedsDisplay(true);
}

void BorderedView::drawRect(CGRect rect) {
  NSView::drawRect(rect);
  if (!NSApp) stopProgram("TessalunaUIKit.BorderedView: drawn without an application");
  if (NSApp->isActive()) {
    borderColor_->setFill();
  } else if (const auto muted = borderColor_->blendedColorWithFraction(mutedFraction, NSColor::lightGrayColor())) {
    muted->setFill();
  }
  // Intentional: a panel too small for its inside passes on what is left, of which nothing is filled.
  const CGSize size = frame().size;
  NSBezierPath::bezierPathWithRoundedRect({0, 1, size.width, size.height - 1}, outerRadius, outerRadius)->fill();
  NSColor::whiteColor()->set();
  NSBezierPath::bezierPathWithRoundedRect({1, 2, size.width - 2, size.height - 3}, innerRadius, innerRadius)->fill();
}

}  // namespace TessalunaUIKit
