#include "tessaluna/ready/sidebar/SideBarRow.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "tessaluna/platform/events/NSEvent.h"
#include "tessaluna/platform/graphics/NSBezierPath.h"
#include "tessaluna/platform/graphics/NSRect.h"
#include "tessaluna/platform/text/NSAttributedString.h"
#include "tessaluna/platform/text/NSFont.h"
#include "tessaluna/platform/text/NSParagraphStyle.h"
#include "tessaluna/ready/sidebar/SideBar.h"

namespace tessaluna::ready {

using namespace platform;

const ClassInfo SideBarRow::staticClassInfo{.name = "tessaluna.ready.SideBarRow", .base = &NSView::staticClassInfo};

namespace {

constexpr CGFloat iconSide = 16, iconGap = 8, margin = 10, countGap = 8, groundMargin = 6, groundRadius = 5, ringInset = 3;
constexpr CGFloat countTone = 0.72;

NSAttributedString textOf(std::string_view text, const Ref<NSColor>& color, const Ref<NSFont>& font) {
  return NSAttributedString(
      text, {{NSFontAttributeName, font},
             {NSForegroundColorAttributeName, color},
             {NSParagraphStyleAttributeName, make<NSParagraphStyle>(NSTextAlignmentNatural, NSLineBreakByTruncatingTail)}});
}

}  // namespace

// A view of its own for the tint.
class SideBarRow::Icon : public NSView {
 public:
  Icon() : NSView(CGRect{0, 0, iconSide, iconSide}) {}
  void show(std::function<void(CGRect)> draw) {
    draw_ = std::move(draw);
    setHidden(draw_ == nullptr);
    setNeedsDisplay(true);
  }
  void drawRect(CGRect) override {
    if (draw_) draw_(bounds());
  }

 private:
  std::function<void(CGRect)> draw_;
};

SideBarRow::SideBarRow(WeakRef<SideBar> bar, int depth)
    : NSView(CGRect{0, 0, 0, sideBarRowHeight}), bar_(std::move(bar)), depth_(depth), icon_(make<Icon>()) {
  addSubview(icon_);
}

void SideBarRow::showItem(SideItem item, IconRoom room) {
  const std::string before = accessibilityTitle();
  iconRoom_ = room;
  item_ = std::move(item);
  icon_->show(item_.icon);
  updateTint();
  setNeedsDisplay(true);
  const Ref<NSObject> self = weak_from_this().lock();
  if (self && accessibilityTitle() != before) NSAccessibilityPostNotification(self, NSAccessibilityTitleChangedNotification);
}

void SideBarRow::setIsSelected(bool isSelected) {
  if (std::exchange(isSelected_, isSelected) == isSelected) return;
  updateTint();
  setNeedsDisplay(true);
}

void SideBarRow::updateTint() {
  const Ref<NSColor> own = item_.tint ? item_.tint : NSColor::controlTextColor();
  icon_->setTintColor(isSelected_ ? NSColor::alternateSelectedControlTextColor() : own);
  icon_->setTintGroundColor(isSelected_ ? NSColor::alternateSelectedControlColor() : nullptr);
}

void SideBarRow::choose() {
  const Ref<NSView> self = refTo<NSView>(*this);
  if (const Ref<SideBar> bar = bar_.lock()) bar->choose(SideItem(item_));
}

// What it looks like.

void SideBarRow::layout() {
  NSView::layout();
  icon_->setFrameOrigin({sideBarTextLeft(depth_), (bounds().size.height - iconSide) / 2});
}

CGRect SideBarRow::groundRect() const { return NSInsetRect(bounds(), groundMargin, 1); }

CGRect SideBarRow::focusRingMaskBounds() const {
  return isSelected_ ? NSInsetRect(groundRect(), ringInset, ringInset) : groundRect();
}

Ref<NSColor> SideBarRow::focusRingGround() const { return isSelected_ ? NSColor::alternateSelectedControlColor() : nullptr; }

void SideBarRow::drawRect(CGRect) {
  if (isSelected_) {
    NSColor::alternateSelectedControlColor()->setFill();
    NSBezierPath::bezierPathWithRoundedRect(groundRect(), groundRadius, groundRadius)->fill();
  }
  const Ref<NSColor> color = isSelected_ ? NSColor::alternateSelectedControlTextColor() : NSColor::controlTextColor();
  const Ref<NSFont> font = NSFont::systemFontOfSize(NSFont::systemFontSize());
  const CGFloat lineHeight = font->ascender() - font->descender();
  const CGFloat bottom = std::round((bounds().size.height - lineHeight) / 2);
  CGFloat right = bounds().size.width - groundMargin - margin;
  if (item_.count) {
    const Ref<NSFont> small = NSFont::systemFontOfSize(NSFont::smallSystemFontSize());
    const NSAttributedString count =
        textOf(std::to_string(*item_.count), isSelected_ ? color : color->colorWithAlphaComponent(countTone), small);
    const CGSize size = count.size();
    // On the title's baseline.
    const CGFloat countBottom = bottom - font->descender() + small->descender();
    count.drawInRect({right - size.width, countBottom, size.width, size.height});
    right -= size.width + countGap;
  }
  const CGFloat left = sideBarTextLeft(depth_) + (iconRoom_ == IconRoom::Left ? iconSide + iconGap : 0);
  textOf(item_.title, color, font).drawInRect({left, bottom, std::max(0.0, right - left), lineHeight});
}

// What the user does.

// A press on the icon gives the item the keyboard, as one beside it does.
NSView* SideBarRow::hitTest(CGPoint point) { return NSView::hitTest(point) ? this : nullptr; }

void SideBarRow::mouseUp(const Ref<NSEvent>& event) {
  // Its section may have been folded meanwhile.
  if (!isLeftOut() && NSPointInRect(convertPointFromView(event->locationInWindow(), nullptr), bounds())) choose();
}

void SideBarRow::keyDown(const Ref<NSEvent>& event) {
  const Ref<SideBar> bar = bar_.lock();
  if (!bar || !bar->handleKey(*this, *event)) NSView::keyDown(event);
}

bool SideBarRow::becomeFirstResponder() {
  if (const Ref<SideBar> bar = bar_.lock()) bar->keyboardCameTo(*this);
  return true;
}

bool SideBarRow::canBecomeKeyView() const {
  const Ref<SideBar> bar = bar_.lock();
  return NSView::canBecomeKeyView() && bar && bar->isKeyPlace(*this);
}

// What assistive clients see.

std::string SideBarRow::accessibilityRole() const { return std::string(NSAccessibilityRowRole); }

std::string SideBarRow::accessibilityTitle() const {
  return item_.title + (item_.count ? ", " + std::to_string(*item_.count) : "");
}

std::vector<std::string> SideBarRow::accessibilityActionNames() const { return {std::string(NSAccessibilityPressAction)}; }

void SideBarRow::accessibilityPerformAction(std::string_view action) {
  if (action == NSAccessibilityPressAction) choose();
}

}  // namespace tessaluna::ready
