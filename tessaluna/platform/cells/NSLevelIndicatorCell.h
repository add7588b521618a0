// A level: a bar, a row of blocks, thin lines or stars that fill up with the value. A user changes it only where it is editable,
// and then in whole steps where it is shown in blocks or stars.
#pragma once

#include "tessaluna/platform/cells/RangeCell.h"

namespace tessaluna::platform {

enum NSLevelIndicatorStyle {
  NSLevelIndicatorStyleRelevancy = 0,           // thin lines
  NSLevelIndicatorStyleContinuousCapacity = 1,  // a bar
  NSLevelIndicatorStyleDiscreteCapacity = 2,    // a block for each step from the minimum to the maximum
  NSLevelIndicatorStyleRating = 3,              // a star for each step
};
template <>
struct EnumNames<NSLevelIndicatorStyle> {
  static constexpr NamedValue all[] = {{"relevancy", NSLevelIndicatorStyleRelevancy},
                                       {"continuousCapacity", NSLevelIndicatorStyleContinuousCapacity},
                                       {"discreteCapacity", NSLevelIndicatorStyleDiscreteCapacity},
                                       {"rating", NSLevelIndicatorStyleRating}};
};

class NSLevelIndicatorCell : public RangeCell {
 public:
  static const ClassInfo staticClassInfo;
  const ClassInfo& classInfo() const override { return staticClassInfo; }

  // A rating, unless a style is given. The value and the minimum start at 0, the maximum at 5 for blocks and stars and at 100
  // for the others.
  NSLevelIndicatorCell() : RangeCell(5) {}
  explicit NSLevelIndicatorCell(NSLevelIndicatorStyle style);
  explicit NSLevelIndicatorCell(std::string text) : RangeCell(5, std::move(text)) {}
  explicit NSLevelIndicatorCell(Ref<NSImage> image) : RangeCell(5, std::move(image)) {}
  // Keys besides the cell's: "levelIndicatorStyle", "minValue", "maxValue", "doubleValue", "warningValue", "criticalValue",
  // "editable", "numberOfTickMarks", "numberOfMajorTickMarks", "tickMarkPosition".
  explicit NSLevelIndicatorCell(NSCoder& coder);
  Ref<NSCell> copy() const override { return make<NSLevelIndicatorCell>(*this); }

  // Plain stores. A value outside the range shows as its end.
  NSLevelIndicatorStyle levelIndicatorStyle() const { return style_; }
  void setLevelIndicatorStyle(NSLevelIndicatorStyle style) { style_ = style; }
  // From here on a bar or blocks are yellow, and red; downward where the critical value is the lower one. Equal ones, as at the
  // start, mean that there are no such levels.
  double warningValue() const { return warningValue_; }
  void setWarningValue(double value) { warningValue_ = value; }
  double criticalValue() const { return criticalValue_; }
  void setCriticalValue(double value) { criticalValue_ = value; }
  bool isEditable() const { return isEditable_; }
  void setEditable(bool isEditable) { isEditable_ = isEditable; }

  bool isUserChangeable() const override { return isEditable_; }

  // Tick marks are along a bar, blocks or lines, which leave them room; a rating has none. So many of them, at equal distances,
  // are longer than the others: 3 of 11 are the first, the sixth and the last. None initially.
  std::size_t numberOfMajorTickMarks() const { return majorTickMarks_; }
  void setNumberOfMajorTickMarks(std::size_t count) { majorTickMarks_ = count; }
  CGRect rectOfTickMarkAtIndex(std::size_t index) const override;

  // Of blocks or stars: one for each whole step of the range, up to 200; 0 in the other styles.
  std::size_t numberOfParts() const;
  CGRect rectOfPart(std::size_t part, CGRect bounds) const;
  // How much of the range is filled, from 0 to 1; in whole parts where there are any.
  double filledShare() const;
  // What a press asks for: whole steps in blocks and stars, the minimum at the left of the cell.
  double valueAtPoint(CGPoint point, CGRect bounds) const;
  double allowedValue(double value) const override { return cutToRange(value); }
  double valueAfterSteps(double steps) const override;  // of a part, or of a twentieth

  // Stars that are not given show as dots while a rating is highlighted or editable; the highlight changes nothing else.
  CGSize cellSize() const override;
  void drawInteriorWithFrame(CGRect frame, NSView& view) override;

  // One that is not editable is not pressed. The highlight belongs to the host.
  bool isHighlightedByPress() const override { return false; }
  bool startTrackingAt(CGPoint start, NSView& view) override;
  bool continueTracking(CGPoint last, CGPoint current, NSView& view) override;

  std::string accessibilityRole() const override { return std::string(NSAccessibilityLevelIndicatorRole); }

 private:
  double cutToRange(double value) const;
  bool hasTickMarks() const { return numberOfTickMarks() > 0 && style_ != NSLevelIndicatorStyleRating; }
  bool isMajorTickMark(std::size_t index) const;
  CGRect withoutTickMarks(CGRect bounds, bool flipped) const;
  Ref<NSColor> levelColor() const;
  void drawRating(CGRect frame) const;

  NSLevelIndicatorStyle style_ = NSLevelIndicatorStyleRating;
  double warningValue_ = 0, criticalValue_ = 0;
  std::size_t majorTickMarks_ = 0;
  bool isEditable_ = false;
};

}  // namespace tessaluna::platform
