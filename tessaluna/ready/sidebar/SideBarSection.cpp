#include "tessaluna/ready/sidebar/SideBarSection.h"

#include <algorithm>
#include <map>
#include <unordered_set>
#include <utility>

#include "tessaluna/platform/events/NSEvent.h"
#include "tessaluna/platform/foundation/NSBundle.h"
#include "tessaluna/platform/graphics/NSBezierPath.h"
#include "tessaluna/platform/graphics/NSRect.h"
#include "tessaluna/platform/text/NSFont.h"
#include "tessaluna/platform/time/NSAnimationContext.h"
#include "tessaluna/platform/views/NSButton.h"
#include "tessaluna/platform/views/NSTextField.h"
#include "tessaluna/platform/windows/NSWindow.h"
#include "tessaluna/ready/sidebar/SideBar.h"
#include "tessaluna/uikit/containers/DisclosureHeaderView.h"

namespace tessaluna::ready {

using namespace platform;
using TessalunaUIKit::DisclosureHeaderView;
using TessalunaUIKit::DisclosureView;

namespace {

constexpr CGFloat margin = 10, chevronSide = 8, chevronGap = 6, buttonFontSize = 11;
constexpr NSLayoutPriority foldingPriority = 500;

// Left to the mouse: keys work the heading.
class FoldButton : public NSButton {
 public:
  using NSButton::NSButton;
  bool acceptsFirstResponder() const override { return false; }
};

}  // namespace

class SideBarSection::Heading : public DisclosureHeaderView {
 public:
  Heading(WeakRef<SideBar> bar, SideBarSection& section, int depth)
      : DisclosureHeaderView(CGRect{0, 0, 0, sideBarRowHeight}),
        bar_(std::move(bar)),
        section_(section.weak_from_this()),
        depth_(depth),
        title_(NSTextField::labelWithString("")),
        button_(make<FoldButton>(CGRect{})) {
    setIsOperable(true);
    title_->setFont(NSFont::boldSystemFontOfSize(NSFont::smallSystemFontSize()));
    title_->setLineBreakMode(NSLineBreakByTruncatingTail);
    // As a section that is open has it.
    button_->setTitle(NSBundle::mainBundle()->localizedStringForKey("Hide"));
    button_->setFont(NSFont::systemFontOfSize(buttonFontSize));
    button_->setAction([this] { toggle(); });
  }
  void didInit() override {
    DisclosureHeaderView::didInit();
    const Ref<NSView> self = refTo<NSView>(*this);
    for (const Ref<NSView>& view : std::initializer_list<Ref<NSView>>{title_, button_}) {
      view->setTranslatesAutoresizingMaskIntoConstraints(false);
      addSubview(view);
      addConstraint(equalConstraint(view, NSLayoutAttributeCenterY, self, NSLayoutAttributeCenterY));
    }
    addConstraint(equalConstraint(title_, NSLayoutAttributeLeft, self, NSLayoutAttributeLeft, sideBarTextLeft(depth_)));
    const auto right = equalConstraint(button_, NSLayoutAttributeRight, self, NSLayoutAttributeRight, -margin);
    right->setPriority(marginPriority);
    addConstraint(right);
    addConstraint(NSLayoutConstraint::constraintWithItem(title_, NSLayoutAttributeRight, NSLayoutRelationLessThanOrEqual,
                                                         button_, NSLayoutAttributeLeft, 1, -chevronGap));
    setDisclosureButton(button_);
  }
  void showTitle(const std::string& title) {
    if (title_->stringValue() == title) return;
    title_->setStringValue(title);
    NSAccessibilityPostNotification(refTo<NSObject>(*this), NSAccessibilityTitleChangedNotification);
  }

  // The ground is the bar's.
  bool isOpaque() const override { return false; }
  void drawRect(CGRect) override {
    const auto section = section_.lock();
    if (!section) return;
    // Down while the section is open, else to the right.
    const CGFloat x = sideBarHeadingLeft(depth_), y = CGRectGetMidY(bounds()), r = chevronSide / 2;
    const auto path = NSBezierPath::bezierPath();
    if (section->isOpen()) {
      path->moveToPoint({x, y + r / 2});
      path->lineToPoint({x + r, y - r / 2});
      path->lineToPoint({x + 2 * r, y + r / 2});
    } else {
      path->moveToPoint({x + r / 2, y + r});
      path->lineToPoint({x + 1.5 * r, y});
      path->lineToPoint({x + r / 2, y - r});
    }
    path->setLineWidth(1.5);
    path->setLineCapStyle(NSRoundLineCapStyle);
    path->setLineJoinStyle(NSRoundLineJoinStyle);
    NSColor::controlTextColor()->setStroke();
    path->stroke();
  }

  // A press on the title gives the heading the keyboard, as one beside it does.
  NSView* hitTest(CGPoint point) override {
    NSView* hit = DisclosureHeaderView::hitTest(point);
    return hit && !hit->isDescendantOf(button_.get()) ? this : hit;
  }
  void mouseEntered(const Ref<NSEvent>& event) override {
    isUnderPointer_ = true;
    DisclosureHeaderView::mouseEntered(event);
  }
  void mouseExited(const Ref<NSEvent>& event) override {
    isUnderPointer_ = false;
    DisclosureHeaderView::mouseExited(event);
  }
  // While the section moves, the pointer may come and go unseen.
  void sectionDidMove() { button_->setHidden(!isUnderPointer_); }
  void mouseDown(const Ref<NSEvent>&) override {}
  void mouseUp(const Ref<NSEvent>& event) override {
    if (!isLeftOut() && NSPointInRect(convertPointFromView(event->locationInWindow(), nullptr), bounds())) toggle();
  }
  void keyDown(const Ref<NSEvent>& event) override {
    const Ref<SideBar> bar = bar_.lock();
    if (!bar || !bar->handleKey(*this, *event)) DisclosureHeaderView::keyDown(event);
  }
  bool becomeFirstResponder() override {
    if (const Ref<SideBar> bar = bar_.lock()) bar->keyboardCameTo(*this);
    return true;
  }
  bool canBecomeKeyView() const override {
    const Ref<SideBar> bar = bar_.lock();
    return DisclosureHeaderView::canBecomeKeyView() && bar && bar->isKeyPlace(*this);
  }
  CGRect focusRingMaskBounds() const override { return NSInsetRect(bounds(), 6, 1); }

 private:
  void toggle() {
    const Ref<SideBar> bar = bar_.lock();
    const auto section = section_.lock();
    if (bar && section) bar->toggle(*section);
  }

  const WeakRef<SideBar> bar_;
  const std::weak_ptr<SideBarSection> section_;
  const int depth_;
  const Ref<NSTextField> title_;
  const Ref<FoldButton> button_;
  bool isUnderPointer_ = false;
};

// The items of a section. As many as there are have no constraints of their own.
class SideBarSection::List : public NSView {
 public:
  List() : NSView(CGRect{}) { setTranslatesAutoresizingMaskIntoConstraints(false); }

  void show(const std::vector<Ref<SideBarRow>>& rows, const std::string& title) {
    title_ = title;
    const std::unordered_set<Ref<SideBarRow>> staying(rows.begin(), rows.end());
    for (const Ref<SideBarRow>& row : rows_)
      if (!staying.contains(row)) row->removeFromSuperview();
    const bool isOtherHeight = rows_.size() != rows.size();
    rows_ = rows;
    for (const Ref<SideBarRow>& row : rows_)
      if (row->superview() != this) addSubview(row);
    if (isOtherHeight) invalidateIntrinsicContentSize();
    setNeedsLayout(true);
  }

  bool isFlipped() const override { return true; }
  CGSize intrinsicContentSize() const override {
    return {noIntrinsicMetric, sideBarRowHeight * static_cast<CGFloat>(rows_.size())};
  }
  void layout() override {
    NSView::layout();
    CGFloat y = 0;
    for (const Ref<SideBarRow>& row : rows_) {
      row->setFrame({0, y, bounds().size.width, sideBarRowHeight});
      y += sideBarRowHeight;
    }
  }

  bool isAccessibilityElement() const override { return !rows_.empty(); }
  std::string accessibilityRole() const override { return std::string(NSAccessibilityListRole); }
  std::string accessibilityTitle() const override { return title_; }
  AccessibilityValue accessibilityAttributeValue(std::string_view attribute) const override {
    if (attribute == NSAccessibilityOrientationAttribute) return NSAccessibilityVerticalOrientationValue;
    if (attribute != NSAccessibilitySelectedChildrenAttribute) return NSView::accessibilityAttributeValue(attribute);
    AccessibilityElements selected;
    for (const Ref<SideBarRow>& row : rows_)
      if (row->isSelected()) selected.push_back(row);
    return selected;
  }

 protected:
  std::optional<AccessibilityElements> accessibilityOwnChildren() const override {
    const auto shown = NSView::accessibilityOwnChildren();
    if (!shown) return shown;
    const std::unordered_set<Ref<NSObject>> showing(shown->begin(), shown->end());
    AccessibilityElements inOrder;
    for (const Ref<SideBarRow>& row : rows_)
      if (showing.contains(row)) inOrder.push_back(row);
    return inOrder;
  }

 private:
  std::string title_;
  std::vector<Ref<SideBarRow>> rows_;
};

SideBarSection::SideBarSection(WeakRef<SideBar> bar, int depth)
    : bar_(std::move(bar)),
      depth_(depth),
      view_(make<DisclosureView>(CGRect{})),
      content_(make<SideBarStack>(SideBarStack::Kind::Part)),
      list_(make<List>()) {}

// The heading and its section keep each other alive.
SideBarSection::~SideBarSection() { heading_->setParentDisclosure(nullptr); }

void SideBarSection::didInit() {
  heading_ = make<Heading>(bar_, *this, depth_);
  heading_->setTranslatesAutoresizingMaskIntoConstraints(false);
  heading_->setParentDisclosure(view_);
  view_->setTranslatesAutoresizingMaskIntoConstraints(false);
  view_->setHeaderView(heading_);
  view_->setContentView(content_);
  view_->setLeavesOutFoldedViews(true);
  view_->addSubview(heading_);
  view_->addSubview(content_);
  const auto height = NSLayoutConstraint::constraintWithItem(heading_, NSLayoutAttributeHeight, NSLayoutRelationEqual,
                                                             nullptr, NSLayoutAttributeNotAnAttribute, 1, sideBarRowHeight);
  // What folds is cut off below, not moved.
  const auto bottom = equalConstraint(view_, NSLayoutAttributeBottom, content_, NSLayoutAttributeBottom);
  bottom->setPriority(foldingPriority);
  view_->addConstraints({equalConstraint(heading_, NSLayoutAttributeLeft, view_, NSLayoutAttributeLeft),
                         equalConstraint(heading_, NSLayoutAttributeRight, view_, NSLayoutAttributeRight),
                         equalConstraint(heading_, NSLayoutAttributeTop, view_, NSLayoutAttributeTop), height,
                         equalConstraint(content_, NSLayoutAttributeLeft, view_, NSLayoutAttributeLeft),
                         equalConstraint(content_, NSLayoutAttributeRight, view_, NSLayoutAttributeRight),
                         equalConstraint(content_, NSLayoutAttributeTop, heading_, NSLayoutAttributeBottom), bottom});
  view_->awakeFromNib();
}

Ref<NSView> SideBarSection::heading() const { return heading_; }

void SideBarSection::show(const SideSection& section) {
  id_ = idOf(section);
  title_ = section.title;
  heading_->showTitle(title_);
  showRows(section.items);
  sections_ = sectionsShowing(section.sections, sections_, bar_, depth_ + 1);
  std::vector<SideBarStack::Entry> entries{{.view = list_}};
  if (section.view) entries.push_back({.view = section.view, .left = sideBarTextLeft(depth_), .margin = margin});
  for (const auto& inner : sections_) entries.push_back({.view = inner->view()});
  content_->show(std::move(entries));
}

void SideBarSection::showRows(const std::vector<SideItem>& items) {
  const bool hasIcons = std::ranges::any_of(items, [](const SideItem& item) { return item.icon != nullptr; });
  const auto room = hasIcons ? SideBarRow::IconRoom::Left : SideBarRow::IconRoom::Absent;
  // Of rows with one id the first is taken first.
  std::multimap<std::string, Ref<SideBarRow>> earlier;
  for (const Ref<SideBarRow>& row : std::exchange(rows_, {})) earlier.emplace(idOf(row->item()), row);
  for (const SideItem& item : items) {
    auto known = earlier.extract(idOf(item));
    rows_.push_back(known ? known.mapped() : make<SideBarRow>(bar_, depth_));
    rows_.back()->showItem(item, room);
  }
  list_->show(rows_, title_);
}

void SideBarSection::beginFolded() {
  isOpen_ = false;
  view_->setDisclosureTo(false, false);
}

void SideBarSection::setIsOpen(bool isOpen) {
  if (std::exchange(isOpen_, isOpen) == isOpen) return;
  heading_->setNeedsDisplay(true);
  if (!view_->isChanging()) move();
}

// The group around the view's own ends after it, when the view can be moved again.
void SideBarSection::move() {
  const bool isVisible = view_->window() && view_->window()->isVisible();
  NSAnimationContext::runAnimationGroup([&](NSAnimationContext&) { view_->setDisclosureTo(isOpen_, isVisible); },
                                        [weak = weak_from_this()] {
                                          if (const auto section = weak.lock()) section->didMove();
                                        });
}

void SideBarSection::didMove() {
  heading_->sectionDidMove();
  if (!view_->isChanging() && view_->isDisclosed() != isOpen_) move();
}

void SideBarSection::setSelected(const std::optional<std::string>& id) {
  bool isOther = false;
  for (const Ref<SideBarRow>& row : rows_) {
    const bool isSelected = id == idOf(row->item());
    isOther |= row->isSelected() != isSelected;
    row->setIsSelected(isSelected);
  }
  if (isOther) NSAccessibilityPostNotification(list_, NSAccessibilitySelectedChildrenChangedNotification);
  for (const auto& section : sections_) section->setSelected(id);
}

std::vector<std::shared_ptr<SideBarSection>> sectionsShowing(const std::vector<SideSection>& sections,
                                                             const std::vector<std::shared_ptr<SideBarSection>>& earlier,
                                                             const WeakRef<SideBar>& bar, int depth) {
  std::vector<std::shared_ptr<SideBarSection>> result;
  for (const SideSection& section : sections) {
    const auto known = std::ranges::find_if(earlier, [&](const auto& one) {
      return one->id() == idOf(section) && std::ranges::find(result, one) == result.end();
    });
    if (known != earlier.end()) {
      result.push_back(*known);
    } else {
      result.push_back(std::make_shared<SideBarSection>(bar, depth));
      result.back()->didInit();
    }
    result.back()->show(section);
  }
  return result;
}

}  // namespace tessaluna::ready
