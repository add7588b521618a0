// A row of labels of which one, some or none are selected: tabs, switches, or push buttons side by side.
//
// The segments fill the cell's frame from left to right, each in proportion to its widthForSegment, which a class may
// override: what is drawn, pressed and read aloud goes by the same rectangles. A press is tracked until the button goes up,
// and selects the segment that it began on if it also ends there.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "tessaluna/platform/cells/NSCell.h"
#include "tessaluna/platform/foundation/EnumNames.h"

namespace tessaluna::platform {

enum NSSegmentSwitchTracking {
  NSSegmentSwitchTrackingSelectOne = 0,  // at most one is selected
  NSSegmentSwitchTrackingSelectAny = 1,  // a click selects a segment or takes that back
  NSSegmentSwitchTrackingMomentary = 2,  // one is selected while its action is sent, and none otherwise
};
template <>
struct EnumNames<NSSegmentSwitchTracking> {
  static constexpr NamedValue all[] = {{"selectOne", NSSegmentSwitchTrackingSelectOne},
                                       {"selectAny", NSSegmentSwitchTrackingSelectAny},
                                       {"momentary", NSSegmentSwitchTrackingMomentary}};
};

class NSSegmentedCell : public NSCell {
 public:
  static const ClassInfo staticClassInfo;
  const ClassInfo& classInfo() const override { return staticClassInfo; }

  NSSegmentedCell() = default;
  explicit NSSegmentedCell(std::string text) : NSCell(std::move(text)) {}
  explicit NSSegmentedCell(Ref<NSImage> image) : NSCell(std::move(image)) {}
  // Keys besides the cell's: "trackingMode"; "segments", an array of objects with the keys "label", "width", "tag",
  // "enabled" (true if missing) and "selected".
  explicit NSSegmentedCell(NSCoder& coder);
  NSSegmentedCell(const NSSegmentedCell& other);
  ~NSSegmentedCell() override;
  Ref<NSCell> copy() const override { return make<NSSegmentedCell>(*this); }

  // Segments beyond the count go; new ones have no label. An index beyond the end stops the program, here and below. No
  // setter of this class asks for a redraw.
  std::size_t segmentCount() const { return segments_.size(); }
  void setSegmentCount(std::size_t count);
  NSSegmentSwitchTracking trackingMode() const { return trackingMode_; }
  void setTrackingMode(NSSegmentSwitchTracking mode) { trackingMode_ = mode; }

  std::optional<std::string> labelForSegment(std::size_t segment) const { return at(segment).label; }
  void setLabelForSegment(std::optional<std::string> label, std::size_t segment);
  const Ref<NSImage>& imageForSegment(std::size_t segment) const { return at(segment).image; }  // before the label
  void setImageForSegment(Ref<NSImage> image, std::size_t segment);
  // In points: what was set or, unless that is above 0, what label and image need. The cell's frame stretches it.
  virtual CGFloat widthForSegment(std::size_t segment) const;
  void setWidthForSegment(CGFloat width, std::size_t segment) { at(segment).width = width; }
  bool isEnabledForSegment(std::size_t segment) const { return at(segment).isEnabled; }
  void setEnabledForSegment(bool isEnabled, std::size_t segment);
  std::int64_t tagForSegment(std::size_t segment) const { return at(segment).tag; }
  void setTagForSegment(std::int64_t tag, std::size_t segment) { at(segment).tag = tag; }

  // Where at most one is selected, selecting one deselects the others.
  bool isSelectedForSegment(std::size_t segment) const { return at(segment).isSelected; }
  void setSelectedForSegment(bool isSelected, std::size_t segment);
  std::optional<std::size_t> selectedSegment() const;  // of several the one that was selected last
  void setSelectedSegment(std::optional<std::size_t> segment);
  bool selectSegmentWithTag(std::int64_t tag);  // false, and nothing done, without such a segment

  // Where each segment lies within a frame, and the one that holds a point, absent for none. Sizes are NaN where all widths
  // are 0.
  std::vector<CGRect> segmentRectsForBounds(CGRect bounds) const;
  std::optional<std::size_t> segmentAtPoint(CGPoint point, CGRect bounds) const;

  // An addition: where the frame is narrower than the segments' own widths, those at the end that do not fit go into a menu at the
  // right, which the control opens; they then lie, without width, where the menu's part begins. Off initially: the segments
  // shrink.
  bool putsOverflowIntoMenu() const { return putsOverflowIntoMenu_; }
  void setPutsOverflowIntoMenu(bool puts) { putsOverflowIntoMenu_ = puts; }
  std::size_t shownSegmentCount(CGRect bounds) const { return layout(bounds).shown; }
  std::optional<CGRect> overflowRectForBounds(CGRect bounds) const { return layout(bounds).overflow; }

  // What a click on an enabled segment does to the selection. The control sends the action.
  void clickSegment(std::size_t segment);
  // The segment that the last press clicked; absent if it ended elsewhere.
  std::optional<std::size_t> clickedSegment() const { return clicked_.value; }

  CGSize cellSize() const override;
  void drawWithFrame(CGRect frame, NSView& view) override;
  virtual void drawSegment(std::size_t segment, CGRect frame, NSView& view);
  // The part that opens the menu; `hasSelected` if a segment in the menu is selected.
  virtual void drawOverflow(CGRect frame, NSView& view, bool hasSelected);

  bool prefersTrackingUntilMouseUp() const override { return true; }
  bool startTrackingAt(CGPoint start, NSView& view) override;
  void stopTracking(CGPoint last, CGPoint stop, NSView& view, bool mouseIsUp) override;

  // A group of tabs, of check boxes or of buttons, by the tracking mode. Each segment is an element of its own.
  bool isAccessibilityElement() const override { return true; }
  std::string accessibilityRole() const override;
  AccessibilityValue accessibilityAttributeValue(std::string_view attribute) const override;

 protected:
  std::optional<AccessibilityElements> accessibilityOwnChildren() const override;
  // Draws all that the frame shows, in order.
  void drawSegmentsInFrame(CGRect frame, NSView& view);

 private:
  class Element;
  struct Layout {
    std::vector<CGRect> rects;
    std::size_t shown = 0;
    std::optional<CGRect> overflow;
  };
  Layout layout(CGRect bounds) const;
  struct Segment {
    std::optional<std::string> label;
    Ref<NSImage> image;
    CGFloat width = 0;
    std::int64_t tag = 0;
    bool isEnabled = true, isSelected = false;
  };
  const Segment& at(std::size_t segment) const;
  Segment& at(std::size_t segment) { return const_cast<Segment&>(std::as_const(*this).at(segment)); }
  Ref<NSAttributedString> attributedLabel(const Segment& segment) const;
  Ref<Element> elementOf(std::size_t segment) const;
  void selectionDidChange();

  std::vector<Segment> segments_;
  NSSegmentSwitchTracking trackingMode_ = NSSegmentSwitchTrackingSelectOne;
  bool putsOverflowIntoMenu_ = false;
  std::optional<std::size_t> lastSelected_;
  Uncopied<std::optional<std::size_t>> tracked_, clicked_;
  mutable Uncopied<std::vector<Ref<Element>>> elements_;  // of the segments that were asked for
};

}  // namespace tessaluna::platform
