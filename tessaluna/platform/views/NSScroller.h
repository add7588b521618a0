// A scroll bar: a knob that is dragged, and a slot on which a press scrolls by a page, and while it lasts page by page until the
// knob is under the pointer. Its action comes with each drag of the knob and with each page.
#pragma once

#include "tessaluna/platform/backend/Timer.h"
#include "tessaluna/platform/views/NSControl.h"

namespace tessaluna::platform {

class NSScroller : public NSControl {
 public:
  static const ClassInfo staticClassInfo;
  const ClassInfo& classInfo() const override { return staticClassInfo; }

  explicit NSScroller(CGRect frame) : NSControl(frame) {}
  explicit NSScroller(NSCoder& coder) : NSControl(coder) {}
  static constexpr CGFloat scrollerWidth() { return 12; }

  // The value is a number: 0 at the start and 1 at the end. The knob's length is its share of the slot. Each asks for a redraw
  // if it changes.
  void setObjectValue(Ref<NSObject> value) override;
  CGFloat knobProportion() const { return knobProportion_; }
  void setKnobProportion(CGFloat proportion);
  CGRect knobRect() const;
  bool isVertical() const { return bounds().size.height >= bounds().size.width; }

  // What the user asked for last, for the action to read.
  enum class Part { Knob, PageBefore, PageAfter };
  Part hitPart() const { return hitPart_; }

  void drawRect(CGRect rect) override;

 protected:
  Ref<NSCell> makeCell() override;
  Ref<NSCell> makeCell(NSCoder& coder) override;

 private:
  class Tracker;  // the cell
  CGFloat alongSlot(CGPoint point) const;
  CGFloat slotLength() const { return isVertical() ? bounds().size.height : bounds().size.width; }
  CGFloat knobLength() const;
  CGFloat knobWay() const { return slotLength() - knobLength(); }
  Part partAt(CGPoint point) const;
  void repeatAfter(double seconds);
  void repeatPage();

  CGFloat knobProportion_ = 1;
  Part hitPart_ = Part::Knob;
  CGPoint hand_;  // where the press is now
  tessaluna::backend::Timer nextPage_;
};

}  // namespace tessaluna::platform
