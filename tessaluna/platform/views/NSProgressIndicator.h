// Shows how far something has got, or only that it is under way: as a bar that fills or has a piece running along it, or as a
// wheel of spokes that turns or darkens one spoke after the other. At the start it is a bar, indeterminate, from 0 to 100.
//
// An indeterminate indicator moves from startAnimation to stopAnimation. It does so only as long as it is drawn: one that is
// hidden, or in a window that nobody can see, costs nothing. Where the user prefers less motion it does not move.
#pragma once

#include "tessaluna/platform/backend/Timer.h"
#include "tessaluna/platform/views/NSView.h"

namespace tessaluna::platform {

enum NSProgressIndicatorStyle { NSProgressIndicatorStyleBar = 0, NSProgressIndicatorStyleSpinning = 1 };
enum NSControlTint { NSDefaultControlTint = 0, NSBlueControlTint = 1, NSGraphiteControlTint = 6, NSClearControlTint = 7 };

template <>
struct EnumNames<NSProgressIndicatorStyle> {
  static constexpr NamedValue all[] = {{"bar", NSProgressIndicatorStyleBar}, {"spinning", NSProgressIndicatorStyleSpinning}};
};
template <>
struct EnumNames<NSControlTint> {
  static constexpr NamedValue all[] = {{"default", NSDefaultControlTint},
                                       {"blue", NSBlueControlTint},
                                       {"graphite", NSGraphiteControlTint},
                                       {"clear", NSClearControlTint}};
};

class NSProgressIndicator : public NSView {
 public:
  static const ClassInfo staticClassInfo;
  const ClassInfo& classInfo() const override { return staticClassInfo; }

  explicit NSProgressIndicator(CGRect frame) : NSView(frame) {}
  // Keys besides the view's: "style", "controlTint", "indeterminate", "minValue", "maxValue", "doubleValue",
  // "displayedWhenStopped".
  explicit NSProgressIndicator(NSCoder& coder);

  // Each requests a redraw.
  NSProgressIndicatorStyle style() const { return style_; }
  void setStyle(NSProgressIndicatorStyle style);
  NSControlTint controlTint() const { return controlTint_; }  // of the bar
  void setControlTint(NSControlTint tint);
  bool isIndeterminate() const { return isIndeterminate_; }
  void setIndeterminate(bool isIndeterminate);
  double minValue() const { return minValue_; }
  void setMinValue(double value);
  double maxValue() const { return maxValue_; }
  void setMaxValue(double value);
  double doubleValue() const { return value_; }  // a value outside of the limits shows as the nearest one
  void setDoubleValue(double value);
  void incrementBy(double amount) { setDoubleValue(value_ + amount); }
  bool isDisplayedWhenStopped() const { return isDisplayedWhenStopped_; }
  void setDisplayedWhenStopped(bool isDisplayed);

  void startAnimation(NSObject* sender);
  void stopAnimation(NSObject* sender);
  bool isAnimating() const { return isAnimating_; }  // between the two

  CGSize intrinsicContentSize() const override;
  void drawRect(CGRect rect) override;

  // Indeterminate, it has no value.
  bool isAccessibilityElement() const override { return true; }
  std::string accessibilityRole() const override { return std::string(NSAccessibilityProgressIndicatorRole); }
  AccessibilityValue accessibilityValue() const override;
  AccessibilityValue accessibilityAttributeValue(std::string_view attribute) const override;

 private:
  template <class T>
  void change(T& member, T value);
  double share() const;  // of the way, from 0 to 1
  void drawBar() const;
  void drawSpokes() const;
  void waitForNextStep();

  double minValue_ = 0, maxValue_ = 100, value_ = 0;
  backend::Timer nextStep_;
  unsigned step_ = 0;  // of the animation
  NSProgressIndicatorStyle style_ = NSProgressIndicatorStyleBar;
  NSControlTint controlTint_ = NSDefaultControlTint;
  bool isIndeterminate_ = true, isDisplayedWhenStopped_ = true, isAnimating_ = false;
};

}  // namespace tessaluna::platform
