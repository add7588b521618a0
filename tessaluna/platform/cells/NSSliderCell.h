// A slider: a bar with a knob on it whose place is the value, from minValue to maxValue. The knob follows the mouse, wherever
// that goes until the button is let go; a press beside it brings it to the mouse first.
//
// The knob is where knobRectFlipped says, also for the mouse: a class with a knob of another size is dragged right without
// more. The bar is that of barRectFlipped. Both are in the coordinates of trackRect.
//
// While it is continuous, as it is initially, its control sends the action when a press moves the knob, with each drag and
// at the release; otherwise at the release only.
#pragma once

#include <cstddef>
#include <optional>
#include <string>

#include "tessaluna/platform/cells/RangeCell.h"

namespace tessaluna::platform {

class NSSliderCell : public RangeCell {
 public:
  static const ClassInfo staticClassInfo;
  const ClassInfo& classInfo() const override { return staticClassInfo; }

  NSSliderCell();
  // Keys besides the cell's: "minValue", "maxValue", "doubleValue", "vertical", "numberOfTickMarks", "tickMarkPosition",
  // "allowsTickMarkValuesOnly".
  explicit NSSliderCell(NSCoder& coder);
  Ref<NSCell> copy() const override { return make<NSSliderCell>(*this); }

  // From 0 to 1 initially. A value outside is the nearest limit; of limits in the wrong order the minimum counts.
  void setMinValue(double value) override;
  void setMaxValue(double value) override;
  void setObjectValue(Ref<NSObject> value) override;

  // Unless it was set: whether the track is higher than it is wide. A vertical slider has its minimum at the bottom.
  bool isVertical() const;
  void setVertical(bool isVertical) { isVertical_ = isVertical; }

  bool allowsTickMarkValuesOnly() const { return allowsTickMarkValuesOnly_; }  // for the user; other values can be set
  void setAllowsTickMarkValuesOnly(bool only) { allowsTickMarkValuesOnly_ = only; }
  CGRect rectOfTickMarkAtIndex(std::size_t index) const override;
  std::size_t indexOfTickMarkAtPoint(CGPoint point) const;  // NSNotFound beside the marks
  double closestTickMarkValueToValue(double value) const;   // the value itself without marks

  // The same in a flipped space and one with y up, unless the slider is vertical.
  virtual CGRect knobRectFlipped(bool flipped) const;
  virtual CGRect barRectFlipped(bool flipped) const;
  CGFloat knobThickness() const;  // along the bar
  // The value of a knob with its middle there; only the coordinate along the bar counts.
  double valueAtPoint(CGPoint middleOfKnob) const;
  // Whether the minimum is at the right: where the layout direction is from right to left, and the slider is not vertical.
  virtual bool isMirrored() const;

  virtual void drawBarInside(CGRect rect, bool flipped);
  virtual void drawKnob(CGRect knobRect);
  void drawKnob();
  void drawInteriorWithFrame(CGRect frame, NSView& view) override;
  CGSize cellSize() const override;  // that of a slider that is not long

  bool startTrackingAt(CGPoint start, NSView& view) override;
  bool continueTracking(CGPoint last, CGPoint current, NSView& view) override;

  // Steps are twentieths of the range, or tick marks where only their values are allowed.
  double valueAfterSteps(double steps) const override;
  // Within the limits and, where only those are allowed, at a tick mark.
  double allowedValue(double value) const override;

  std::string accessibilityRole() const override { return std::string(NSAccessibilitySliderRole); }
  AccessibilityValue accessibilityAttributeValue(std::string_view attribute) const override;

 private:
  std::size_t closestTickMark(double value) const;  // not for a slider without marks
  CGFloat tickMarkRoom() const;
  CGFloat middleAcross(bool flipped) const;
  CGRect rectAlong(CGFloat middle, CGSize alongAndAcross, bool flipped) const;
  CGFloat middleOfKnobAt(double value, bool flipped) const;
  bool runsBackward(bool flipped) const;

  std::optional<bool> isVertical_;
  bool allowsTickMarkValuesOnly_ = false;
  CGFloat grabOffset_ = 0;  // along the bar, from the knob's middle to the hand
};

}  // namespace tessaluna::platform
