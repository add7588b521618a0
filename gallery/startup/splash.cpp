#include "gallery/startup/splash.h"

#include "tessaluna/platform/graphics/NSBezierPath.h"
#include "tessaluna/platform/graphics/NSColor.h"
#include "tessaluna/platform/graphics/NSImage.h"
#include "tessaluna/platform/interface_files/NSNib.h"
#include "tessaluna/platform/views/NSImageView.h"
#include "tessaluna/platform/views/NSProgressIndicator.h"
#include "tessaluna/platform/windows/NSWindow.h"
#include "tessaluna/uikit/interfaceFileClasses.h"
#include "tessaluna/uikit/stylekit/TessalunaStyleKit.h"

namespace gallery {

using namespace tessaluna::platform;
using namespace TessalunaUIKit;

namespace {

constexpr std::string_view splashDocument = R"({
  "owner": {"window": "window", "progressIndicator": "spinner", "appIconView": "icon", "titleLabel": "title",
            "informativeTextLabel": "information", "currentStepTextLabel": "step"},
  "objects": [{"id": "window", "class": "NSWindow", "contentRect": [0, 0, 420, 140], "styleMask": 0, "title": "Tessaluna",
    "contentView": {"class": "NSView", "subviews": [
      {"id": "icon", "class": "NSImageView", "frame": [24, 30, 80, 80], "imageScaling": "proportionallyUpOrDown"},
      {"id": "title", "class": "NSTextField", "frame": [124, 84, 230, 26],
       "properties": {"bezeled": false, "editable": false, "drawsBackground": false, "font": {"size": 20, "bold": true}}},
      {"id": "information", "class": "NSTextField", "frame": [124, 58, 270, 20],
       "properties": {"bezeled": false, "editable": false, "drawsBackground": false}},
      {"id": "step", "class": "NSTextField", "frame": [124, 30, 270, 20],
       "properties": {"bezeled": false, "editable": false, "drawsBackground": false, "font": 11}},
      {"id": "spinner", "class": "NSProgressIndicator", "frame": [372, 86, 24, 24], "style": "spinning"}]}}]})";

// A white record on a tile.
Ref<NSImage> makeIcon() {
  return NSImage::imageWithSize({80, 80}, false, [](CGRect frame) {
    NSColor::colorWithCalibratedRed(0.33, 0.45, 0.76, 1)->setFill();
    NSBezierPath::bezierPathWithRoundedRect(frame, 16, 16)->fill();
    TessalunaStyleKit::drawIconAlbum(NSInsetRect(frame, 12, 12));
    return true;
  });
}

}  // namespace

Ref<AppSplashController> makeSplash() {
  registerInterfaceFileClasses();
  NSNib::registerDocument("gallery.Splash", splashDocument);
  if (!NSImage::imageNamed("AppIcon.icns")) NSImage::setImageNamed("AppIcon.icns", makeIcon());
  const auto splash = make<AppSplashController>("gallery.Splash");
  // The window loads with its labels.
  for (const Ref<NSView>& view : splash->window()->contentView()->subviews()) {
    const char* name = dynamic_cast<NSImageView*>(view.get())           ? "Tessaluna"
                       : dynamic_cast<NSProgressIndicator*>(view.get()) ? "Starting"
                                                                        : nullptr;
    if (name) view->accessibilitySetOverrideValue(name, NSAccessibilityDescriptionAttribute);
  }
  splash->setTitle("Tessaluna");
  return splash;
}

}  // namespace gallery
