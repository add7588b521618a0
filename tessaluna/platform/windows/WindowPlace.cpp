#include "tessaluna/platform/windows/WindowPlace.h"

#include "tessaluna/platform/foundation/NSCoder.h"
#include "tessaluna/platform/windows/NSScreen.h"

namespace tessaluna::platform {

WindowPlace::WindowPlace(NSCoder& coder) : NSResponder(coder), frame_(coder.decodeRectForKey("contentRect")) {}

Ref<NSScreen> WindowPlace::screen() const {
  std::optional<backend::Screen> found;
  if (native_) found = native_->screen();
  else if (const backend::Backend* backend = backend::Backend::current()) found = screenShowing(frame_, backend->screens());
  return found ? make<NSScreen>(*found) : nullptr;
}

CGPoint WindowPlace::convertPointToScreen(CGPoint p) const { return {p.x + frame_.origin.x, p.y + frame_.origin.y}; }
CGPoint WindowPlace::convertPointFromScreen(CGPoint p) const { return {p.x - frame_.origin.x, p.y - frame_.origin.y}; }
CGRect WindowPlace::convertRectToScreen(CGRect r) const { return {convertPointToScreen(r.origin), r.size}; }
CGRect WindowPlace::convertRectFromScreen(CGRect r) const { return {convertPointFromScreen(r.origin), r.size}; }

CGFloat WindowPlace::backingScaleFactor() const {
  if (native_) return native_->scale();
  Ref<NSScreen> place = screen();
  if (!place) place = NSScreen::mainScreen();
  return place ? place->backingScaleFactor() : 1;
}

CGRect WindowPlace::convertRectToBacking(CGRect r) const {
  const CGFloat scale = backingScaleFactor();
  return {r.origin.x * scale, r.origin.y * scale, r.size.width * scale, r.size.height * scale};
}

CGRect WindowPlace::convertRectFromBacking(CGRect r) const {
  const CGFloat scale = backingScaleFactor();
  return {r.origin.x / scale, r.origin.y / scale, r.size.width / scale, r.size.height / scale};
}

}  // namespace tessaluna::platform
