// A slider: a bar with a knob on it whose place is the value, from minValue to maxValue. The knob follows the mouse, wherever
// that goes until the button is let go; a press beside it brings it to the mouse first.
//
// The knob is where knobRectFlipped says, also for the mouse: a class with a knob of another size is dragged right without
// more. The bar is that of barRectFlipped. Both are in the coordinates of trackRect.
//
// While it is continuous, as it is at the start, its control sends the action when a press moves the knob, with each drag and
// at the release; otherwise at the release only.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

#include "tessaluna/platform/cells/NSCell.h"

namespace tessaluna::platform {

// Below or right of the bar, or above or left of it.
enum NSTickMarkPosition { NSTickMarkPositionBelow = 0, NSTickMarkPositionAbove = 1 };

template <>
struct EnumNames<NSTickMarkPosition> {
  static constexpr NamedValue all[] = {{"below", NSTickMarkPositionBelow}, {"above", NSTickMarkPositionAbove}};
};

class NSSliderCell : public NSCell {
 public:
  static const ClassInfo staticClassInfo;
  const ClassInfo& classInfo() const override { return staticClassInfo; }

  NSSliderCell();
  // Keys besides the cell's: "minValue", "maxValue", "doubleValue", "vertical", "numberOfTickMarks", "tickMarkPosition",
  // "allowsTickMarkValuesOnly".
  explicit NSSliderCell(NSCoder& coder);
  Ref<NSCell> copy() const override { return make<NSSliderCell>(*this); }

  // From 0 to 1 at the start. A value outside is the nearest limit; of limits in the wrong order the minimum counts.
  double minValue() const { return minValue_; }
  double maxValue() const { return maxValue_; }
  void setMinValue(double value);
  void setMaxValue(double value);
  void setObjectValue(Ref<NSObject> value) override;

  // Unless it was set: whether the track is higher than it is wide. A vertical slider has its minimum at the bottom.
  bool isVertical() const;
  void setVertical(bool isVertical) { isVertical_ = isVertical; }

  // Marks at equal distances, the first at the minimum and the last at the maximum. An index past them stops the program.
  std::size_t numberOfTickMarks() const { return tickMarks_; }
  void setNumberOfTickMarks(std::size_t count) { tickMarks_ = count; }
  NSTickMarkPosition tickMarkPosition() const { return tickMarkPosition_; }
  void setTickMarkPosition(NSTickMarkPosition position) { tickMarkPosition_ = position; }
  bool allowsTickMarkValuesOnly() const { return allowsTickMarkValuesOnly_; }  // for the user; other values can be set
  void setAllowsTickMarkValuesOnly(bool only) { allowsTickMarkValuesOnly_ = only; }
  double tickMarkValueAtIndex(std::size_t index) const;
  CGRect rectOfTickMarkAtIndex(std::size_t index) const;
  std::size_t indexOfTickMarkAtPoint(CGPoint point) const;  // NSNotFound beside the marks
  double closestTickMarkValueToValue(double value) const;   // the value itself without marks

  // Where the slider is: the bounds of a control of its own, elsewhere where it was drawn last.
  CGRect trackRect() const;
  // The same in a flipped space and one with y up, unless the slider is vertical.
  virtual CGRect knobRectFlipped(bool flipped) const;
  virtual CGRect barRectFlipped(bool flipped) const;
  CGFloat knobThickness() const;  // along the bar
  // The value of a knob with its middle there; only the coordinate along the bar counts.
  double valueAtPoint(CGPoint middleOfKnob) const;
  // Whether the minimum is at the right: where the layout direction is from right to left, and the slider is not vertical.
  virtual bool isMirrored() const;

  virtual void drawBarInside(CGRect rect, bool flipped);
  virtual void drawTickMarks();  // none where they would touch each other
  virtual void drawKnob(CGRect knobRect);
  void drawKnob();
  void drawWithFrame(CGRect frame, NSView& view) override;
  void drawInteriorWithFrame(CGRect frame, NSView& view) override;
  CGSize cellSize() const override;  // that of a slider that is not long

  bool prefersTrackingUntilMouseUp() const override { return true; }
  bool startTrackingAt(CGPoint start, NSView& view) override;
  bool continueTracking(CGPoint last, CGPoint current, NSView& view) override;

  // Where so many steps up or down lead: twentieths of the range, or tick marks where only their values are allowed.
  virtual double valueAfterSteps(double steps) const;
  // The value as the user may choose it: within the limits and, where only those are allowed, at a tick mark.
  double allowedValue(double value) const;
  // Takes over what the user chose by other ways than the mouse, and sends the action if that changes the value.
  void userChoseValue(double value);

  bool isAccessibilityElement() const override { return true; }
  std::string accessibilityRole() const override { return std::string(NSAccessibilitySliderRole); }
  AccessibilityValue accessibilityValue() const override { return doubleValue(); }
  AccessibilityValue accessibilityAttributeValue(std::string_view attribute) const override;
  bool accessibilityIsAttributeSettable(std::string_view attribute) const override;
  void accessibilitySetValue(const AccessibilityValue& value, std::string_view forAttribute) override;
  std::vector<std::string> accessibilityActionNames() const override;
  void accessibilityPerformAction(std::string_view action) override;

 private:
  std::size_t closestTickMark(double value) const;  // not for a slider without marks
  CGFloat tickMarkRoom() const;
  CGFloat middleAcross(bool flipped) const;
  CGRect rectAlong(CGFloat middle, CGSize alongAndAcross, bool flipped) const;
  CGFloat middleOfKnobAt(double value, bool flipped) const;
  bool runsBackward(bool flipped) const;
  bool isInFlippedView() const;
  void changeValue(double value);
  void sendAction();

  double minValue_ = 0, maxValue_ = 1;
  std::size_t tickMarks_ = 0;
  std::optional<bool> isVertical_;
  NSTickMarkPosition tickMarkPosition_ = NSTickMarkPositionBelow;
  bool allowsTickMarkValuesOnly_ = false;
  CGRect drawnFrame_;
  CGFloat grabOffset_ = 0;  // along the bar, from the knob's middle to the hand
};

}  // namespace tessaluna::platform
