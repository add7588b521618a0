#include "tessaluna/uikit/transport/TimeBubble.h"

#include <algorithm>
#include <cmath>

#include "tessaluna/platform/graphics/NSBezierPath.h"
#include "tessaluna/platform/graphics/NSColor.h"
#include "tessaluna/platform/graphics/NSRect.h"
#include "tessaluna/platform/text/NSAttributedString.h"
#include "tessaluna/platform/text/NSFont.h"
#include "tessaluna/platform/views/NSView.h"
#include "tessaluna/platform/windows/NSScreen.h"

namespace TessalunaUIKit {

using namespace tessaluna::platform;

namespace {

constexpr CGFloat sideMargin = 7, lineMargin = 3, distance = 4;

class BubbleView : public NSView {
 public:
  using NSView::NSView;

  void setText(const std::string& text) {
    text_ = text;
    setNeedsDisplay(true);
  }
  CGSize wantedSize() const {
    const CGSize size = attributedText().size();
    return {std::ceil(size.width) + 2 * sideMargin, std::ceil(size.height) + 2 * lineMargin};
  }
  bool isFlipped() const override { return true; }
  void drawRect(CGRect) override {
    // Upright, as a desktop that blends no windows shows what is outside of round corners.
    NSColor::controlBackgroundColor()->setFill();
    NSRectFill(bounds());
    NSColor::controlTextColor()->colorWithAlphaComponent(0.35)->setStroke();
    NSBezierPath::bezierPathWithRect(NSInsetRect(bounds(), 0.5, 0.5))->stroke();
    attributedText().drawInRect(NSInsetRect(bounds(), sideMargin, lineMargin));
  }

 private:
  NSAttributedString attributedText() const {
    return NSAttributedString(std::string_view(text_),
                              NSAttributes{{NSFontAttributeName, NSFont::systemFontOfSize(NSFont::smallSystemFontSize())},
                                           {NSForegroundColorAttributeName, NSColor::controlTextColor()}});
  }
  std::string text_;
};

}  // namespace

class TimeBubble::Window : public NSWindow {
 public:
  Window() : NSWindow({0, 0, 1, 1}, NSWindowStyleMaskBorderless, NSBackingStoreBuffered, /*defer=*/true) {}
  void didInit() override {
    NSWindow::didInit();
    setContentView(view_);
  }
  bool isAccessibilityElement() const override { return false; }
  BubbleView& view() const { return *view_; }

 private:
  Ref<BubbleView> view_ = make<BubbleView>(NSZeroRect);
};

TimeBubble::~TimeBubble() {
  hide();
  if (window_) window_->close();
}

void TimeBubble::show(const std::string& text, CGRect rect, NSWindow& parent) {
  if (!window_) window_ = make<Window>();
  window_->view().setText(text);
  const CGSize size = window_->view().wantedSize();
  const CGRect knob = parent.convertRectToScreen(rect);
  CGPoint origin{std::round(CGRectGetMidX(knob) - size.width / 2), std::round(CGRectGetMaxY(knob) + distance)};
  if (const Ref<NSScreen> screen = parent.screen()) {
    const CGRect room = screen->frame();
    origin.x = std::max(room.origin.x, std::min(origin.x, CGRectGetMaxX(room) - size.width));
    if (origin.y + size.height > CGRectGetMaxY(room)) origin.y = std::round(knob.origin.y - distance - size.height);
  }
  window_->setFrame({origin, size}, /*display=*/true);
  if (window_->parentWindow() != &parent) parent.addChildWindow(window_, NSWindowAbove);
}

void TimeBubble::hide() {
  if (!window_) return;
  if (NSWindow* parent = window_->parentWindow()) parent->removeChildWindow(*window_);
  window_->orderOut(nullptr);
}

}  // namespace TessalunaUIKit
