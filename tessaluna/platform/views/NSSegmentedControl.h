// A control over a segmented cell: tabs, switches, or push buttons side by side. Its action comes when a segment is clicked,
// by mouse, key or an assistive client; selectedSegment says which.
//
// It is one stop of the Tab key. Inside, the left and right arrows, Home and End go from segment to segment; where one is
// selected they select it, and where not, the space bar clicks the segment that the keys are on.
#pragma once

#include "tessaluna/platform/cells/NSSegmentedCell.h"
#include "tessaluna/platform/views/NSControl.h"

namespace tessaluna::platform {

class NSSegmentedControl : public NSControl {
 public:
  static const ClassInfo staticClassInfo;
  const ClassInfo& classInfo() const override { return staticClassInfo; }

  explicit NSSegmentedControl(CGRect frame) : NSControl(frame) {}
  explicit NSSegmentedControl(NSCoder& coder) : NSControl(coder) {}

  // These are the cell's, whose class is NSSegmentedCell or derived from it; with another cell there are no segments, and the
  // setters do nothing. They ask for a redraw.
  std::size_t segmentCount() const;
  void setSegmentCount(std::size_t count);
  void setTrackingMode(NSSegmentSwitchTracking mode);
  std::optional<std::string> labelForSegment(std::size_t segment) const;
  void setLabelForSegment(std::optional<std::string> label, std::size_t segment);
  void setImageForSegment(Ref<NSImage> image, std::size_t segment);
  void setWidthForSegment(CGFloat width, std::size_t segment);
  void setEnabledForSegment(bool isEnabled, std::size_t segment);
  void setTagForSegment(std::int64_t tag, std::size_t segment);
  std::optional<std::size_t> selectedSegment() const;
  void setSelectedSegment(std::optional<std::size_t> segment);
  bool isSelectedForSegment(std::size_t segment) const;
  void setSelectedForSegment(bool isSelected, std::size_t segment);

  // An addition: what does not fit is in a menu at the end (see the cell). The menu has the segments' labels, and choosing from
  // it clicks the segment.
  void setPutsOverflowIntoMenu(bool puts);
  bool openOverflowMenu();  // false without one

  // The segment that the keys are on: the one that was clicked or reached last, else the selected one, else the first that is
  // enabled; absent if there is none.
  std::optional<std::size_t> keySegment() const;
  // What a click does, without a mouse. False, and nothing done, for one that is disabled.
  bool performClickOnSegment(std::size_t segment);

  bool acceptsFirstResponder() const override { return isEnabled() && keySegment().has_value(); }
  CGRect focusRingMaskBounds() const override;  // where arrows do not select, the segment that the keys are on
  void keyDown(const Ref<NSEvent>& event) override;
  void mouseDown(const Ref<NSEvent>& event) override;
  void mouseUp(const Ref<NSEvent>& event) override;
  bool sendActionTo(std::string_view action, const Ref<NSObject>& target) override;

 protected:
  Ref<NSCell> makeCell() override { return make<NSSegmentedCell>(); }
  Ref<NSCell> makeCell(NSCoder& coder) override { return make<NSSegmentedCell>(coder); }

 private:
  NSSegmentedCell* segmentedCell() const { return dynamic_cast<NSSegmentedCell*>(cell().get()); }
  template <class Change>
  void changeCell(Change change);
  std::optional<std::size_t> enabledSegment(std::size_t from, int step) const;
  void setKeySegment(std::optional<std::size_t> segment, std::optional<std::size_t> earlier);
  void moveTo(std::optional<std::size_t> segment);
  void endMomentarySelection();

  std::optional<std::size_t> keySegment_;
  std::optional<std::size_t> keySegmentAtRelease_;
  Ref<NSMenu> overflowMenu_;  // while it is open
  bool isReleasing_ = false;
};

}  // namespace tessaluna::platform
