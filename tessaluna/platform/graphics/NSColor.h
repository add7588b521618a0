// An immutable color: a space, its components, and for the standard ones a name. Standard colors are one object each;
// isEqual compares all three, so blackColor is not (0, 0, 0, 1) made with components. System colors are names that the
// backend resolves when they are asked for their components or set.
#pragma once

#include <array>
#include <string_view>

#include "tessaluna/platform/backend/Canvas.h"
#include "tessaluna/platform/foundation/NSObject.h"
#include "tessaluna/platform/graphics/Forward.h"
#include "tessaluna/platform/graphics/NSColorSpace.h"

namespace tessaluna::platform {

class NSColor : public NSObject {
 public:
  using Kind = NSColorSpace::Kind;

  static const ClassInfo staticClassInfo;
  const ClassInfo& classInfo() const override { return staticClassInfo; }

  // Components from 0 to 1; others are taken as they are and cut to that range when painted.
  static Ref<NSColor> colorWithCalibratedRed(CGFloat red, CGFloat green, CGFloat blue, CGFloat alpha);
  static Ref<NSColor> colorWithCalibratedWhite(CGFloat white, CGFloat alpha);
  static Ref<NSColor> colorWithDeviceRed(CGFloat red, CGFloat green, CGFloat blue, CGFloat alpha);
  static Ref<NSColor> colorWithDeviceWhite(CGFloat white, CGFloat alpha);
  static Ref<NSColor> colorWithSRGBRed(CGFloat red, CGFloat green, CGFloat blue, CGFloat alpha);
  // Has no components: it cannot be blended or made more transparent.
  static Ref<NSColor> colorWithPatternImage(Ref<NSImage> image);

  // Standard colors, in white or RGB.
  static Ref<NSColor> blackColor();
  static Ref<NSColor> whiteColor();
  static Ref<NSColor> darkGrayColor();
  static Ref<NSColor> grayColor();
  static Ref<NSColor> lightGrayColor();
  static Ref<NSColor> redColor();
  static Ref<NSColor> greenColor();
  static Ref<NSColor> blueColor();
  static Ref<NSColor> clearColor();

  // System colors.
  static Ref<NSColor> controlTextColor();
  static Ref<NSColor> disabledControlTextColor();
  static Ref<NSColor> placeholderTextColor();
  static Ref<NSColor> alternateSelectedControlColor();
  static Ref<NSColor> alternateSelectedControlTextColor();
  static Ref<NSColor> selectedTextBackgroundColor();
  static Ref<NSColor> unemphasizedSelectedTextBackgroundColor();  // in a window that is not the key window
  static Ref<NSColor> controlColor();
  static Ref<NSColor> controlBackgroundColor();
  static Ref<NSColor> windowBackgroundColor();
  static Ref<NSColor> keyboardFocusIndicatorColor();

  // The color's values in RGB. Of a pattern color they are zero, and its alpha is 1.
  CGFloat redComponent() const { return components().red; }
  CGFloat greenComponent() const { return components().green; }
  CGFloat blueComponent() const { return components().blue; }
  CGFloat alphaComponent() const { return isPattern() ? 1 : components().alpha; }
  Kind colorSpaceKind() const { return kind_; }
  bool isPattern() const { return kind_ == Kind::Pattern; }
  const Ref<NSImage>& patternImage() const { return pattern_; }

  // (1 - fraction) * self + fraction * other, in RGB, alpha too. Null where either is a pattern or `other` is null.
  Ref<NSColor> blendedColorWithFraction(CGFloat fraction, const Ref<NSColor>& other) const;
  // The same color with another alpha and without its name. A pattern color is given back as it is.
  Ref<NSColor> colorWithAlphaComponent(CGFloat alpha);

  // The color of the fills, of the strokes, or of both that follow in the current context. Without one: nothing.
  void setFill() const;
  void setStroke() const;
  void set() const;

  bool isEqual(const NSObject* other) const override;

  // What a canvas gets: the current components, and the name.
  backend::Color components() const;

  struct Value {
    Kind kind = Kind::CalibratedRGB;
    backend::Color color;
    Ref<NSImage> pattern = nullptr;
  };
  explicit NSColor(Value value);

 private:
  Kind kind_;
  backend::Color color_;
  Ref<NSImage> pattern_;
};

}  // namespace tessaluna::platform
