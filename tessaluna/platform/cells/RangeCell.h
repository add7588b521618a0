// What the cells of sliders and of level indicators share: a value between two limits, marks at equal distances from one limit
// to the other, and what assistive clients find: they see the value as a number and change it where the user may.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "tessaluna/platform/cells/NSCell.h"
#include "tessaluna/platform/foundation/EnumNames.h"

namespace tessaluna::platform {

// Below or right of what the marks belong to, or above or left of it.
enum NSTickMarkPosition { NSTickMarkPositionBelow = 0, NSTickMarkPositionAbove = 1 };

template <>
struct EnumNames<NSTickMarkPosition> {
  static constexpr NamedValue all[] = {{"below", NSTickMarkPositionBelow}, {"above", NSTickMarkPositionAbove}};
};

class RangeCell : public NSCell {
 public:
  static const ClassInfo staticClassInfo;
  const ClassInfo& classInfo() const override { return staticClassInfo; }

  double minValue() const { return minValue_; }
  double maxValue() const { return maxValue_; }
  virtual void setMinValue(double value) { minValue_ = value; }
  virtual void setMaxValue(double value) { maxValue_ = value; }

  // The first at the minimum and the last at the maximum; none initially. An index past them stops the program.
  std::size_t numberOfTickMarks() const { return tickMarks_; }
  void setNumberOfTickMarks(std::size_t count) { tickMarks_ = count; }
  NSTickMarkPosition tickMarkPosition() const { return tickMarkPosition_; }
  void setTickMarkPosition(NSTickMarkPosition position) { tickMarkPosition_ = position; }
  double tickMarkValueAtIndex(std::size_t index) const;
  virtual CGRect rectOfTickMarkAtIndex(std::size_t index) const = 0;  // in the coordinates of trackRect
  virtual void drawTickMarks();                                       // none where they would touch each other

  // Where the cell is: the bounds of a control of its own, elsewhere where it was drawn last.
  CGRect trackRect() const;
  void drawWithFrame(CGRect frame, NSView& view) override;
  bool prefersTrackingUntilMouseUp() const override { return true; }

  // Whether a user may change the value of an enabled cell.
  virtual bool isUserChangeable() const { return true; }
  // The value as the user may choose it, and where so many steps up or down lead.
  virtual double allowedValue(double value) const = 0;
  virtual double valueAfterSteps(double steps) const = 0;
  // Takes over what the user chose by other ways than the mouse, and sends the action if that changes the value.
  void userChoseValue(double value);

  bool isAccessibilityElement() const override { return true; }
  AccessibilityValue accessibilityValue() const override { return doubleValue(); }
  AccessibilityValue accessibilityAttributeValue(std::string_view attribute) const override;
  bool accessibilityIsAttributeSettable(std::string_view attribute) const override;
  void accessibilitySetValue(const AccessibilityValue& value, std::string_view forAttribute) override;
  std::vector<std::string> accessibilityActionNames() const override;
  void accessibilityPerformAction(std::string_view action) override;

 protected:
  explicit RangeCell(double maxValue) : maxValue_(maxValue) {}
  RangeCell(double maxValue, std::string text) : NSCell(std::move(text)), maxValue_(maxValue) {}
  RangeCell(double maxValue, Ref<NSImage> image) : NSCell(std::move(image)), maxValue_(maxValue) {}
  // Reads "minValue", "maxValue", "numberOfTickMarks" and "tickMarkPosition".
  RangeCell(double maxValue, NSCoder& coder);

  bool isInFlippedView() const;
  // At the control, if the cell is its own.
  void changeValue(double value);
  void sendAction();

 private:
  double minValue_ = 0, maxValue_;
  std::size_t tickMarks_ = 0;
  NSTickMarkPosition tickMarkPosition_ = NSTickMarkPositionBelow;
  CGRect drawnFrame_;
};

}  // namespace tessaluna::platform
