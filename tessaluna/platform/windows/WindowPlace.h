// The first part of a window: where it is on the desktop, and the ways between its spaces. Base space has its origin at the
// lower left of the window's content; screen space at the lower left of the primary screen; both count points.
#pragma once

#include <memory>
#include <optional>

#include "tessaluna/platform/backend/Backend.h"
#include "tessaluna/platform/events/NSResponder.h"
#include "tessaluna/platform/foundation/Geometry.h"

namespace tessaluna::platform {

class NSScreen;

class WindowPlace : public NSResponder {
 public:
  CGRect frame() const { return frame_; }
  // The screen that shows most of the window; null where none shows any of it.
  Ref<NSScreen> screen() const;

  CGPoint convertPointToScreen(CGPoint point) const;
  CGPoint convertPointFromScreen(CGPoint point) const;
  CGRect convertRectToScreen(CGRect rect) const;
  CGRect convertRectFromScreen(CGRect rect) const;

  // Device pixels per point. A window that was never shown has the scale of its screen, or else of the main one.
  CGFloat backingScaleFactor() const;
  // Base space in device pixels, from the same corner. Nothing is rounded.
  CGRect convertRectToBacking(CGRect rect) const;
  CGRect convertRectFromBacking(CGRect rect) const;

  // Null before the window is first shown, where it is deferred.
  backend::NativeWindow* nativeWindow() const { return native_.get(); }

 protected:
  explicit WindowPlace(CGRect frame) : frame_(frame) {}
  explicit WindowPlace(NSCoder& coder);

  std::unique_ptr<backend::NativeWindow> native_;
  CGRect frame_;
  // The frame before one that is not finite, from which moves are measured. Absent where there was none.
  std::optional<CGRect> lastFiniteFrame_;
};

}  // namespace tessaluna::platform
