#include "tessaluna/platform/graphics/NSColor.h"

#include "tessaluna/platform/backend/Backend.h"
#include "tessaluna/platform/graphics/CGContext.h"
#include "tessaluna/platform/graphics/NSGraphicsContext.h"
#include "tessaluna/platform/graphics/NSImage.h"

namespace tessaluna::platform {

namespace {

// The catalog: where a name means a color that the desktop decides.
struct SystemColorName {
  std::string_view name;
  backend::SystemColor color;
};
using enum backend::SystemColor;
constexpr SystemColorName systemColorNames[] = {
    {"controlTextColor", ControlText},
    {"disabledControlTextColor", DisabledControlText},
    {"placeholderTextColor", PlaceholderText},
    {"alternateSelectedControlColor", AlternateSelectedControl},
    {"alternateSelectedControlTextColor", AlternateSelectedControlText},
    {"selectedTextBackgroundColor", SelectedTextBackground},
    {"unemphasizedSelectedTextBackgroundColor", UnemphasizedSelectedTextBackground},
    {"controlColor", Control},
    {"controlBackgroundColor", ControlBackground},
    {"windowBackgroundColor", WindowBackground},
    {"keyboardFocusIndicatorColor", KeyboardFocusIndicator},
};

Ref<NSColor> makeColor(NSColor::Kind kind, double red, double green, double blue, double alpha) {
  return make<NSColor>(NSColor::Value{.kind = kind, .color = {red, green, blue, alpha}});
}

Ref<NSColor> standardWhite(std::string_view name, double white, double alpha = 1) {
  return make<NSColor>(NSColor::Value{.kind = NSColor::Kind::CalibratedWhite, .color = {white, white, white, alpha, name}});
}

Ref<NSColor> standardRGB(std::string_view name, double red, double green, double blue) {
  return make<NSColor>(NSColor::Value{.kind = NSColor::Kind::CalibratedRGB, .color = {red, green, blue, 1, name}});
}

Ref<NSColor> systemColor(std::string_view name) {
  return make<NSColor>(NSColor::Value{.kind = NSColor::Kind::Named, .color = {0, 0, 0, 0, name}});
}

backend::Color resolve(std::string_view name) {
  for (const SystemColorName& entry : systemColorNames) {
    if (entry.name != name) continue;
    const backend::Backend* backend = backend::Backend::current();
    backend::Color color = backend ? backend->systemColor(entry.color) : backend::defaultSystemColor(entry.color);
    color.name = name;
    color.isSystem = true;
    return color;
  }
  unreachable();
}

}  // namespace

const ClassInfo NSColor::staticClassInfo{.name = "NSColor", .base = &NSObject::staticClassInfo};

NSColor::NSColor(Value value) : kind_(value.kind), color_(value.color), pattern_(std::move(value.pattern)) {}

Ref<NSColor> NSColor::colorWithCalibratedRed(CGFloat red, CGFloat green, CGFloat blue, CGFloat alpha) {
  return makeColor(Kind::CalibratedRGB, red, green, blue, alpha);
}
Ref<NSColor> NSColor::colorWithCalibratedWhite(CGFloat white, CGFloat alpha) {
  return makeColor(Kind::CalibratedWhite, white, white, white, alpha);
}
Ref<NSColor> NSColor::colorWithDeviceRed(CGFloat red, CGFloat green, CGFloat blue, CGFloat alpha) {
  return makeColor(Kind::DeviceRGB, red, green, blue, alpha);
}
Ref<NSColor> NSColor::colorWithDeviceWhite(CGFloat white, CGFloat alpha) {
  return makeColor(Kind::DeviceWhite, white, white, white, alpha);
}
Ref<NSColor> NSColor::colorWithSRGBRed(CGFloat red, CGFloat green, CGFloat blue, CGFloat alpha) {
  return makeColor(Kind::SRGB, red, green, blue, alpha);
}
Ref<NSColor> NSColor::colorWithPatternImage(Ref<NSImage> image) {
  return make<NSColor>(Value{.kind = Kind::Pattern, .color = {0, 0, 0, 0}, .pattern = std::move(image)});
}

Ref<NSColor> NSColor::blackColor() {
  static const Ref<NSColor> color = standardWhite("blackColor", 0);
  return color;
}
Ref<NSColor> NSColor::whiteColor() {
  static const Ref<NSColor> color = standardWhite("whiteColor", 1);
  return color;
}
Ref<NSColor> NSColor::darkGrayColor() {
  static const Ref<NSColor> color = standardWhite("darkGrayColor", 1.0 / 3);
  return color;
}
Ref<NSColor> NSColor::grayColor() {
  static const Ref<NSColor> color = standardWhite("grayColor", 0.5);
  return color;
}
Ref<NSColor> NSColor::lightGrayColor() {
  static const Ref<NSColor> color = standardWhite("lightGrayColor", 2.0 / 3);
  return color;
}
Ref<NSColor> NSColor::redColor() {
  static const Ref<NSColor> color = standardRGB("redColor", 1, 0, 0);
  return color;
}
Ref<NSColor> NSColor::greenColor() {
  static const Ref<NSColor> color = standardRGB("greenColor", 0, 1, 0);
  return color;
}
Ref<NSColor> NSColor::blueColor() {
  static const Ref<NSColor> color = standardRGB("blueColor", 0, 0, 1);
  return color;
}
Ref<NSColor> NSColor::clearColor() {
  static const Ref<NSColor> color = standardWhite("clearColor", 0, 0);
  return color;
}

Ref<NSColor> NSColor::controlTextColor() {
  static const Ref<NSColor> color = systemColor("controlTextColor");
  return color;
}
Ref<NSColor> NSColor::disabledControlTextColor() {
  static const Ref<NSColor> color = systemColor("disabledControlTextColor");
  return color;
}
Ref<NSColor> NSColor::placeholderTextColor() {
  static const Ref<NSColor> color = systemColor("placeholderTextColor");
  return color;
}
Ref<NSColor> NSColor::alternateSelectedControlColor() {
  static const Ref<NSColor> color = systemColor("alternateSelectedControlColor");
  return color;
}
Ref<NSColor> NSColor::alternateSelectedControlTextColor() {
  static const Ref<NSColor> color = systemColor("alternateSelectedControlTextColor");
  return color;
}
Ref<NSColor> NSColor::selectedTextBackgroundColor() {
  static const Ref<NSColor> color = systemColor("selectedTextBackgroundColor");
  return color;
}
Ref<NSColor> NSColor::unemphasizedSelectedTextBackgroundColor() {
  static const Ref<NSColor> color = systemColor("unemphasizedSelectedTextBackgroundColor");
  return color;
}
Ref<NSColor> NSColor::controlColor() {
  static const Ref<NSColor> color = systemColor("controlColor");
  return color;
}
Ref<NSColor> NSColor::controlBackgroundColor() {
  static const Ref<NSColor> color = systemColor("controlBackgroundColor");
  return color;
}
Ref<NSColor> NSColor::windowBackgroundColor() {
  static const Ref<NSColor> color = systemColor("windowBackgroundColor");
  return color;
}
Ref<NSColor> NSColor::keyboardFocusIndicatorColor() {
  static const Ref<NSColor> color = systemColor("keyboardFocusIndicatorColor");
  return color;
}

backend::Color NSColor::components() const { return kind_ == Kind::Named ? resolve(color_.name) : color_; }

Ref<NSColor> NSColor::blendedColorWithFraction(CGFloat fraction, const Ref<NSColor>& other) const {
  if (!other || isPattern() || other->isPattern()) return nullptr;
  const backend::Color a = components(), b = other->components();
  const CGFloat rest = 1 - fraction;
  return make<NSColor>(Value{.kind = Kind::CalibratedRGB,
                             .color = {.red = rest * a.red + fraction * b.red,
                                       .green = rest * a.green + fraction * b.green,
                                       .blue = rest * a.blue + fraction * b.blue,
                                       .alpha = rest * a.alpha + fraction * b.alpha,
                                       .isSystem = a.isSystem || b.isSystem}});
}

Ref<NSColor> NSColor::colorWithAlphaComponent(CGFloat alpha) {
  if (isPattern()) return refTo(*this);
  backend::Color color = components();
  color.alpha = alpha;
  color.name = {};
  return make<NSColor>(Value{.kind = kind_ == Kind::Named ? Kind::SRGB : kind_, .color = color});
}

void NSColor::setFill() const {
  CGContext* context = NSGraphicsContext::currentCGContextIfAny();
  if (!context) return;
  if (isPattern()) context->setFillPattern(pattern_);
  else context->setFillColor(components());
}

void NSColor::setStroke() const {
  CGContext* context = NSGraphicsContext::currentCGContextIfAny();
  if (!context) return;
  if (isPattern()) context->setStrokePattern(pattern_);
  else context->setStrokeColor(components());
}

void NSColor::set() const {
  setFill();
  setStroke();
}

bool NSColor::isEqual(const NSObject* other) const {
  const auto* color = dynamic_cast<const NSColor*>(other);
  if (!color || color->kind_ != kind_ || color->color_.name != color_.name) return false;
  return color->color_ == color_ && color->pattern_ == pattern_;
}

}  // namespace tessaluna::platform
