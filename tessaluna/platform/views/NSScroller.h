// A scroll bar: a knob that is dragged, and a slot on which a click goes a page on.
#pragma once

#include "tessaluna/platform/views/NSControl.h"

namespace tessaluna::platform {

class NSScroller : public NSControl {
 public:
  static const ClassInfo staticClassInfo;
  const ClassInfo& classInfo() const override { return staticClassInfo; }

  explicit NSScroller(CGRect frame) : NSControl(frame) {}
  explicit NSScroller(NSCoder& coder) : NSControl(coder) {}
  static constexpr CGFloat scrollerWidth() { return 12; }

  // 0 at the start and 1 at the end; the knob's length is its share of the slot. Each asks for a redraw if it changes.
  CGFloat doubleValue() const { return value_; }
  void setDoubleValue(CGFloat value);
  CGFloat knobProportion() const { return knobProportion_; }
  void setKnobProportion(CGFloat proportion);
  CGRect knobRect() const;
  bool isVertical() const { return bounds().size.height >= bounds().size.width; }

  // What the user asked for last, for the action to read.
  enum class Part { Knob, PageBefore, PageAfter };
  Part hitPart() const { return hitPart_; }

  void drawRect(CGRect rect) override;
  void mouseDown(const Ref<NSEvent>& event) override;
  void mouseDragged(const Ref<NSEvent>& event) override;
  void mouseUp(const Ref<NSEvent>& event) override;
  void viewDidHide() override;

 protected:
  void windowWillChange() override;

 private:
  void letGoOfKnob();
  CGFloat alongSlot(const Ref<NSEvent>& event) const;
  CGFloat slotLength() const { return isVertical() ? bounds().size.height : bounds().size.width; }
  CGFloat knobLength() const;

  CGFloat value_ = 0, knobProportion_ = 1, grabOffset_ = 0;
  Part hitPart_ = Part::Knob;
  bool isDragging_ = false;
};

}  // namespace tessaluna::platform
