// A slider: its knob is dragged, comes to a press in the track, and follows keys and the wheel. It lies along its longer side.
//
//   key                  the value changes by
//   arrows               a step: a twentieth of the range, or a tick mark where only those are allowed
//   Page Up, Page Down   four steps
//   Home, End            all the way to the minimum or the maximum
//
// Right and up are more; so is left in a layout from right to left. A notch of the wheel is a step, away from the user more.
// Keys and wheel send the action if they change the value.
#pragma once

#include "tessaluna/platform/cells/NSSliderCell.h"
#include "tessaluna/platform/views/NSControl.h"

namespace tessaluna::platform {

class NSSlider : public NSControl {
 public:
  static const ClassInfo staticClassInfo;
  const ClassInfo& classInfo() const override { return staticClassInfo; }

  explicit NSSlider(CGRect frame) : NSControl(frame) {}
  explicit NSSlider(NSCoder& coder) : NSControl(coder) {}

  // These are the cell's; the setters request a redraw. A slider with another cell, or none, has the values of a new one.
  double minValue() const { return sliderCell().minValue(); }
  double maxValue() const { return sliderCell().maxValue(); }
  void setMinValue(double value);
  void setMaxValue(double value);
  bool isVertical() const;
  void setVertical(bool isVertical);
  std::size_t numberOfTickMarks() const { return sliderCell().numberOfTickMarks(); }
  void setNumberOfTickMarks(std::size_t count);
  NSTickMarkPosition tickMarkPosition() const { return sliderCell().tickMarkPosition(); }
  void setTickMarkPosition(NSTickMarkPosition position);
  bool allowsTickMarkValuesOnly() const { return sliderCell().allowsTickMarkValuesOnly(); }
  void setAllowsTickMarkValuesOnly(bool only);
  double tickMarkValueAtIndex(std::size_t index) const { return sliderCell().tickMarkValueAtIndex(index); }
  CGRect rectOfTickMarkAtIndex(std::size_t index) const { return sliderCell().rectOfTickMarkAtIndex(index); }
  std::size_t indexOfTickMarkAtPoint(CGPoint point) const { return sliderCell().indexOfTickMarkAtPoint(point); }
  double closestTickMarkValueToValue(double value) const { return sliderCell().closestTickMarkValueToValue(value); }
  CGFloat knobThickness() const { return sliderCell().knobThickness(); }

  void setObjectValue(Ref<NSObject> value) override;  // redraws and notifies only if the value changes
  CGSize intrinsicContentSize() const override;       // none along the slider

  bool acceptsFirstResponder() const override { return isEnabled(); }
  void keyDown(const Ref<NSEvent>& event) override;
  void scrollWheel(const Ref<NSEvent>& event) override;

 protected:
  Ref<NSCell> makeCell() override { return make<NSSliderCell>(); }
  Ref<NSCell> makeCell(NSCoder& coder) override { return make<NSSliderCell>(coder); }
  // What a key asks for; absent for a key that is not the slider's.
  virtual std::optional<double> valueForKey(const NSEvent& event) const;
  NSSliderCell* ownSliderCell() const { return dynamic_cast<NSSliderCell*>(cell().get()); }

 private:
  const NSSliderCell& sliderCell() const;
  template <class Change>
  void changeSliderCell(Change change);

  CGFloat scrolled_ = 0;  // points of the wheel that have not yet made a step
};

}  // namespace tessaluna::platform
