#include "tessaluna/ready/sidebar/SideBarStack.h"

#include <algorithm>

namespace tessaluna::ready {

using namespace platform;

const ClassInfo SideBarStack::staticClassInfo{.name = "tessaluna.ready.SideBarStack", .base = &NSView::staticClassInfo};

Ref<NSLayoutConstraint> equalConstraint(const Ref<NSView>& view, NSLayoutAttribute attribute, const Ref<NSView>& other,
                                        NSLayoutAttribute otherAttribute, CGFloat constant) {
  return NSLayoutConstraint::constraintWithItem(view, attribute, NSLayoutRelationEqual, other, otherAttribute, 1, constant);
}

SideBarStack::SideBarStack(Kind kind) : NSView(CGRect{}), kind_(kind) {
  if (kind == Kind::Part) setTranslatesAutoresizingMaskIntoConstraints(false);
}

void SideBarStack::show(std::vector<Entry> entries) {
  const bool areAllHere = std::ranges::all_of(entries, [&](const Entry& entry) { return entry.view->superview() == this; });
  if (entries == entries_ && areAllHere && !chain_.empty()) return;
  removeConstraints(chain_);
  chain_.clear();
  // A view that goes may end the editing of a field, whose handler is the program's.
  const std::vector<Entry> before = entries_;
  for (const Entry& earlier : before) {
    const bool stays = std::ranges::any_of(entries, [&](const Entry& entry) { return entry.view == earlier.view; });
    if (!stays && earlier.view->superview() == this) earlier.view->removeFromSuperview();
  }
  entries_ = std::move(entries);
  const Ref<NSView> self = refTo<NSView>(*this);
  Ref<NSView> above = self;
  CGFloat gap = 0;
  for (const auto& [view, left, margin] : entries_) {
    view->setTranslatesAutoresizingMaskIntoConstraints(false);
    if (view->superview() != this) addSubview(view);
    chain_.push_back(equalConstraint(view, NSLayoutAttributeLeft, self, NSLayoutAttributeLeft, left));
    chain_.push_back(equalConstraint(view, NSLayoutAttributeRight, self, NSLayoutAttributeRight, -margin));
    if (left + margin > 0) chain_.back()->setPriority(marginPriority);
    const auto edge = above == self ? NSLayoutAttributeTop : NSLayoutAttributeBottom;
    chain_.push_back(equalConstraint(view, NSLayoutAttributeTop, above, edge, gap));
    above = view;
    gap = margin;
  }
  if (kind_ == Kind::Part) {
    const auto edge = above == self ? NSLayoutAttributeTop : NSLayoutAttributeBottom;
    chain_.push_back(equalConstraint(self, NSLayoutAttributeBottom, above, edge, gap));
  }
  addConstraints(chain_);
  setNeedsLayout(true);
}

void SideBarStack::layout() {
  NSView::layout();
  if (kind_ != Kind::Document) return;
  CGFloat height = 0;
  for (const Entry& entry : entries_) height = std::max(height, CGRectGetMaxY(entry.view->frame()) + entry.margin);
  if (frame().size.height != height) setFrameSize({frame().size.width, height});
}

void SideBarStack::subviewFrameDidChange(NSView&) {
  if (kind_ == Kind::Document) setNeedsLayout(true);
}

std::optional<AccessibilityElements> SideBarStack::accessibilityOwnChildren() const {
  const auto shown = NSView::accessibilityOwnChildren();
  if (!shown) return shown;
  AccessibilityElements inOrder;
  for (const Entry& entry : entries_)
    if (std::ranges::find(*shown, entry.view) != shown->end()) inOrder.push_back(entry.view);
  return inOrder;
}

}  // namespace tessaluna::ready
