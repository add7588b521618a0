#include "tessaluna/platform/cells/NSSegmentedCell.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "tessaluna/platform/accessibility/NSAccessibilityButton.h"
#include "tessaluna/platform/cells/buttonBox.h"
#include "tessaluna/platform/cells/selectedSegmentProperty.h"
#include "tessaluna/platform/foundation/NSCoder.h"
#include "tessaluna/platform/foundation/memberTables.h"
#include "tessaluna/platform/foundation/stopProgram.h"
#include "tessaluna/platform/graphics/NSColor.h"
#include "tessaluna/platform/graphics/NSGraphicsContext.h"
#include "tessaluna/platform/graphics/NSImage.h"
#include "tessaluna/platform/graphics/NSRect.h"
#include "tessaluna/platform/views/NSSegmentedControl.h"
#include "tessaluna/platform/windows/NSWindow.h"

namespace tessaluna::platform {

namespace {

constexpr Property segmentedCellProperties[] = {property<&NSSegmentedCell::setTrackingMode, "trackingMode">(),
                                                selectedSegmentProperty<NSSegmentedCell>()};

// Between a label or image and the segment's edge, between the two of them, and above and below the text.
constexpr CGFloat padding = 10, imageGap = 5, paddingY = 4;
// Of the part that opens the menu of what does not fit.
constexpr CGFloat overflowWidth = 28;

}  // namespace

const ClassInfo NSSegmentedCell::staticClassInfo{
    .name = "NSSegmentedCell", .base = &NSCell::staticClassInfo, .properties = segmentedCellProperties};

// A segment as assistive clients see it. It may outlive the cell and then is nothing any more.
class NSSegmentedCell::Element : public NSObject, public NSAccessibility, public NSAccessibilityButton {
 public:
  Element(const NSSegmentedCell& cell, std::size_t segment) : cell_(&cell), segment_(segment) {}
  void leaveCell() { cell_ = nullptr; }
  std::size_t segment() const { return segment_; }

  bool isAccessibilityElement() const override { return isThere(); }
  std::string accessibilityRole() const override {
    if (!isThere()) return std::string(NSAccessibilityUnknownRole);
    switch (cell_->trackingMode()) {
      case NSSegmentSwitchTrackingSelectOne: return std::string(NSAccessibilityTabButtonRole);
      case NSSegmentSwitchTrackingSelectAny: return std::string(NSAccessibilityCheckBoxRole);
      case NSSegmentSwitchTrackingMomentary: return std::string(NSAccessibilityButtonRole);
    }
    unreachable();
  }
  std::string accessibilityTitle() const override {
    return isThere() ? cell_->labelForSegment(segment_).value_or("") : std::string();
  }
  std::string accessibilityLabel() const override { return {}; }  // the title says it
  AccessibilityValue accessibilityValue() const override {
    if (!isThere() || cell_->trackingMode() == NSSegmentSwitchTrackingMomentary) return {};
    return cell_->isSelectedForSegment(segment_) ? 1.0 : 0.0;
  }
  bool isAccessibilityEnabled() const override {
    return isThere() && cell_->isEnabled() && cell_->isEnabledForSegment(segment_);
  }
  bool isAccessibilityFocused() const override {
    const auto* control = this->control();
    return control && control->isAccessibilityFocused() && control->keySegment() == segment_;
  }
  AccessibilityValue accessibilityAttributeValue(std::string_view attribute) const override {
    if (attribute == NSAccessibilitySelectedAttribute && isThere()) return cell_->isSelectedForSegment(segment_);
    return NSAccessibility::accessibilityAttributeValue(attribute);
  }
  CGRect accessibilityFrame() const override {
    NSView* view = isThere() ? cell_->controlView() : nullptr;
    if (!view || !view->window()) return {};
    const Layout layout = cell_->layout(view->bounds());
    const CGRect rect = segment_ < layout.shown ? layout.rects[segment_] : *layout.overflow;
    return std::isfinite(rect.size.width) ? view->window()->convertRectToScreen(view->convertRectToView(rect, nullptr))
                                          : CGRect{};
  }
  Ref<NSObject> accessibilityParent() const override {
    return isThere() ? NSAccessibilityUnignoredAncestor(std::const_pointer_cast<NSObject>(cell_->shared_from_this()))
                     : nullptr;
  }
  bool accessibilityPerformPress() override {
    auto* control = this->control();
    return control && control->performClickOnSegment(segment_);
  }

 private:
  bool isThere() const { return cell_ && segment_ < cell_->segmentCount(); }
  NSSegmentedControl* control() const {
    return isThere() ? dynamic_cast<NSSegmentedControl*>(cell_->controlView()) : nullptr;
  }

  const NSSegmentedCell* cell_;
  const std::size_t segment_;
};

NSSegmentedCell::NSSegmentedCell(NSCoder& coder) : NSCell(coder) {
  trackingMode_ = coder.decodeEnumForKey<NSSegmentSwitchTracking>("trackingMode").value_or(trackingMode_);
  const auto archived = coder.decodeCodersForKey("segments");
  if (!archived) return;
  setSegmentCount(archived->size());
  for (std::size_t i = 0; i < archived->size(); ++i) {
    const NSCoder& each = (*archived)[i];
    at(i).label = each.decodeStringForKey("label");
    at(i).width = each.decodeDoubleForKey("width");
    at(i).tag = each.decodeIntegerForKey("tag");
    at(i).isEnabled = each.boolForKey("enabled").value_or(true);
    if (each.decodeBoolForKey("selected")) setSelectedForSegment(true, i);
  }
}

NSSegmentedCell::NSSegmentedCell(const NSSegmentedCell&) = default;

NSSegmentedCell::~NSSegmentedCell() {
  for (const Ref<Element>& element : elements_.value) element->leaveCell();
}

const NSSegmentedCell::Segment& NSSegmentedCell::at(std::size_t segment) const {
  if (segment >= segments_.size()) stopProgram("NSSegmentedCell: there is no segment at that index");
  return segments_[segment];
}

void NSSegmentedCell::setSegmentCount(std::size_t count) {
  segments_.resize(count);
  if (lastSelected_ && *lastSelected_ >= count) lastSelected_.reset();
  if (tracked_.value && *tracked_.value >= count) tracked_.value.reset();
}

void NSSegmentedCell::setLabelForSegment(std::optional<std::string> label, std::size_t segment) {
  at(segment).label = std::move(label);
}

void NSSegmentedCell::setImageForSegment(Ref<NSImage> image, std::size_t segment) { at(segment).image = std::move(image); }

void NSSegmentedCell::setEnabledForSegment(bool isEnabled, std::size_t segment) { at(segment).isEnabled = isEnabled; }

void NSSegmentedCell::setSelectedForSegment(bool isSelected, std::size_t segment) {
  bool hasChanged = std::exchange(at(segment).isSelected, isSelected) != isSelected;
  // Several may be selected from a time when any could be.
  if (isSelected && trackingMode_ == NSSegmentSwitchTrackingSelectOne)
    for (Segment& each : segments_)
      if (&each != &at(segment)) hasChanged |= std::exchange(each.isSelected, false);
  if (isSelected) lastSelected_ = segment;
  if (hasChanged) selectionDidChange();
}

std::optional<std::size_t> NSSegmentedCell::selectedSegment() const {
  if (lastSelected_ && segments_[*lastSelected_].isSelected) return lastSelected_;
  const auto found = std::find_if(segments_.begin(), segments_.end(), [](const Segment& each) { return each.isSelected; });
  if (found == segments_.end()) return std::nullopt;
  return static_cast<std::size_t>(found - segments_.begin());
}

void NSSegmentedCell::setSelectedSegment(std::optional<std::size_t> segment) {
  if (segment) return setSelectedForSegment(true, *segment);
  if (!selectedSegment()) return;
  for (Segment& each : segments_) each.isSelected = false;
  selectionDidChange();
}

bool NSSegmentedCell::selectSegmentWithTag(std::int64_t tag) {
  const auto found = std::find_if(segments_.begin(), segments_.end(), [&](const Segment& each) { return each.tag == tag; });
  if (found == segments_.end()) return false;
  setSelectedSegment(static_cast<std::size_t>(found - segments_.begin()));
  return true;
}

void NSSegmentedCell::selectionDidChange() {
  if (!controlView()) return;  // nobody sees the cell, which may still be in its making
  NSAccessibilityPostNotification(shared_from_this(), NSAccessibilitySelectedChildrenChangedNotification);
}

Ref<NSAttributedString> NSSegmentedCell::attributedLabel(const Segment& segment) const {
  NSAttributes attributes = plainAttributes();
  if (!segment.isEnabled) attributes[NSForegroundColorAttributeName] = NSColor::disabledControlTextColor();
  return make<NSAttributedString>(std::string_view(segment.label ? *segment.label : std::string()), attributes);
}

CGFloat NSSegmentedCell::widthForSegment(std::size_t segment) const {
  const Segment& asked = at(segment);
  if (asked.width > 0) return asked.width;
  const CGFloat label = asked.label ? attributedLabel(asked)->size().width : 0;
  const CGFloat image = asked.image ? asked.image->size().width : 0;
  return 2 * padding + label + image + (label > 0 && image > 0 ? imageGap : 0);
}

NSSegmentedCell::Layout NSSegmentedCell::layout(CGRect bounds) const {
  bounds = CGRectStandardize(bounds);
  std::vector<CGFloat> widths;
  CGFloat total = 0;
  for (std::size_t i = 0; i < segmentCount(); ++i) {
    widths.push_back(widthForSegment(i));
    total += widths.back();
  }
  Layout result;
  CGFloat room = bounds.size.width;
  result.shown = widths.size();
  if (putsOverflowIntoMenu_ && total > room) {
    room = std::max(room - overflowWidth, 0.0);
    for (; result.shown > 0 && total > room; total -= widths[result.shown]) --result.shown;
    result.overflow = {bounds.origin.x + room, bounds.origin.y, bounds.size.width - room, bounds.size.height};
    if (result.shown == 0) result.overflow = bounds;
  }
  CGFloat x = bounds.origin.x;
  for (std::size_t i = 0; i < widths.size(); ++i) {
    const CGFloat width = i < result.shown ? room * widths[i] / total : 0;
    result.rects.push_back({x, bounds.origin.y, width, bounds.size.height});
    x += width;
  }
  return result;
}

std::vector<CGRect> NSSegmentedCell::segmentRectsForBounds(CGRect bounds) const { return layout(bounds).rects; }

std::optional<std::size_t> NSSegmentedCell::segmentAtPoint(CGPoint point, CGRect bounds) const {
  if (!NSPointInRect(point, bounds)) return std::nullopt;
  const std::vector<CGRect> rects = segmentRectsForBounds(bounds);
  const auto found = std::find_if(rects.begin(), rects.end(), [&](CGRect rect) { return NSPointInRect(point, rect); });
  if (found == rects.end()) return std::nullopt;
  return static_cast<std::size_t>(found - rects.begin());
}

void NSSegmentedCell::clickSegment(std::size_t segment) {
  if (!isEnabled() || !isEnabledForSegment(segment)) return;
  const bool isOff = trackingMode_ == NSSegmentSwitchTrackingSelectAny && isSelectedForSegment(segment);
  setSelectedForSegment(!isOff, segment);
}

CGSize NSSegmentedCell::cellSize() const {
  CGFloat width = 0, height = 0;
  for (std::size_t i = 0; i < segmentCount(); ++i) {
    width += widthForSegment(i);
    height = std::max({height, attributedLabel(at(i))->size().height, at(i).image ? at(i).image->size().height : 0});
  }
  return {width, height + 2 * paddingY};
}

void NSSegmentedCell::drawWithFrame(CGRect frame, NSView& view) {
  const Ref<NSBezierPath> box = buttonBoxPath(frame);
  buttonFaceColor({})->setFill();
  box->fill();
  NSGraphicsContext::saveGraphicsState();
  box->addClip();
  drawSegmentsInFrame(frame, view);
  NSGraphicsContext::restoreGraphicsState();
  const Layout layout = this->layout(frame);
  std::vector<CGRect> rects(layout.rects.begin(), layout.rects.begin() + static_cast<std::ptrdiff_t>(layout.shown));
  if (layout.overflow) rects.push_back(*layout.overflow);
  buttonEdgeColor({.isEnabled = isEnabled()})->setStroke();
  for (std::size_t i = 1; i < rects.size(); ++i) {
    const auto line = NSBezierPath::bezierPath();
    line->moveToPoint({std::floor(rects[i].origin.x) + 0.5, CGRectGetMinY(frame)});
    line->lineToPoint({std::floor(rects[i].origin.x) + 0.5, CGRectGetMaxY(frame)});
    line->stroke();
  }
  box->stroke();
}

void NSSegmentedCell::drawSegmentsInFrame(CGRect frame, NSView& view) {
  const Layout layout = this->layout(frame);
  for (std::size_t i = 0; i < layout.shown; ++i) drawSegment(i, layout.rects[i], view);
  if (!layout.overflow) return;
  bool hasSelected = false;
  for (std::size_t i = layout.shown; i < segmentCount(); ++i) hasSelected = hasSelected || isSelectedForSegment(i);
  drawOverflow(*layout.overflow, view, hasSelected);
}

void NSSegmentedCell::drawOverflow(CGRect frame, NSView&, bool hasSelected) {
  if (hasSelected) {
    buttonFaceColor({.isDown = true})->setFill();
    NSRectFill(frame);
  }
  constexpr CGFloat radius = 1.5, pitch = 6;
  plainTextColor()->setFill();
  for (const CGFloat dot : {-pitch, 0.0, pitch})
    NSBezierPath::bezierPathWithOvalInRect(
        {CGRectGetMidX(frame) + dot - radius, CGRectGetMidY(frame) - radius, 2 * radius, 2 * radius})
        ->fill();
}

void NSSegmentedCell::drawSegment(std::size_t index, CGRect frame, NSView&) {
  const Segment& segment = at(index);
  if (segment.isSelected || tracked_.value == index) {
    buttonFaceColor({.isDown = true})->setFill();
    NSRectFill(frame);
  }
  const Ref<NSAttributedString> label = attributedLabel(segment);
  const CGSize text = segment.label ? label->size() : CGSize{};
  const CGSize image = segment.image ? segment.image->size() : CGSize{};
  const CGFloat gap = text.width > 0 && image.width > 0 ? imageGap : 0;
  CGFloat x = frame.origin.x + std::max((frame.size.width - text.width - image.width - gap) / 2, 0.0);
  NSGraphicsContext::saveGraphicsState();
  NSRectClip(frame);
  const auto centered = [&](CGSize size) {
    return CGRect{x, frame.origin.y + (frame.size.height - size.height) / 2, size.width, size.height};
  };
  if (segment.image) segment.image->drawInRect(centered(image), {.respectFlipped = true});
  x += image.width + gap;
  if (text.width > 0) label->drawInRect(centered(text));
  NSGraphicsContext::restoreGraphicsState();
}

bool NSSegmentedCell::startTrackingAt(CGPoint start, NSView& view) {
  tracked_.value = segmentAtPoint(start, view.bounds());
  clicked_.value.reset();
  if (tracked_.value && !at(*tracked_.value).isEnabled) tracked_.value.reset();
  return NSCell::startTrackingAt(start, view);
}

void NSSegmentedCell::stopTracking(CGPoint last, CGPoint stop, NSView& view, bool mouseIsUp) {
  const auto tracked = std::exchange(tracked_.value, std::nullopt);
  if (mouseIsUp && tracked && segmentAtPoint(stop, view.bounds()) == tracked) {
    clicked_.value = tracked;
    clickSegment(*tracked);
  }
  NSCell::stopTracking(last, stop, view, mouseIsUp);
}

std::string NSSegmentedCell::accessibilityRole() const {
  return std::string(trackingMode_ == NSSegmentSwitchTrackingSelectOne ? NSAccessibilityTabGroupRole
                                                                       : NSAccessibilityGroupRole);
}

AccessibilityValue NSSegmentedCell::accessibilityAttributeValue(std::string_view attribute) const {
  if (attribute == NSAccessibilitySelectedChildrenAttribute && controlView()) {
    AccessibilityElements selected;
    for (std::size_t i = 0; i < segmentCount(); ++i)
      if (isSelectedForSegment(i)) selected.push_back(elementOf(i));
    return selected;
  }
  return NSCell::accessibilityAttributeValue(attribute);
}

Ref<NSSegmentedCell::Element> NSSegmentedCell::elementOf(std::size_t segment) const {
  std::vector<Ref<Element>>& elements = elements_.value;
  while (elements.size() <= segment) elements.push_back(make<Element>(*this, elements.size()));
  return elements[segment];
}

std::optional<AccessibilityElements> NSSegmentedCell::accessibilityOwnChildren() const {
  if (!controlView()) return NSCell::accessibilityOwnChildren();
  AccessibilityElements children;
  for (std::size_t i = 0; i < segmentCount(); ++i) children.push_back(elementOf(i));
  return children;
}

}  // namespace tessaluna::platform
