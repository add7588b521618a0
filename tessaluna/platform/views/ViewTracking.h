// The fifth part of a view: which view is under a point, and where the pointer's entries and exits are reported.
#pragma once

#include <string>
#include <utility>
#include <vector>

#include "tessaluna/platform/views/ViewDrawing.h"

namespace tessaluna::platform {

class ViewTracking : public ViewDrawing {
 public:
  using ViewDrawing::ViewDrawing;

  // The frontmost view, this one or one below it, that lies under the point; null for a point outside or a hidden view.
  // The point is in the superview's coordinates.
  virtual NSView* hitTest(CGPoint point);

  // An addition: where it is off, the controls in the view, itself included, are disabled, whatever each was set to, which
  // it is again when it is on. On initially.
  void setEnablesControls(bool enables);
  bool areControlsEnabled() const;  // false also below a view where it is off
  // The answer has changed, by this view or one above.
  virtual void enablesControlsDidChange() {}

  // Whether a drag that begins on this view moves the window, where the window is movable by its background.
  virtual bool mouseDownCanMoveWindow() const { return !isOpaque(); }

  // What shows while the pointer rests over the view, or over one below it without a tool tip of its own; empty: nothing. A
  // change takes effect when the pointer next moves.
  const std::string& toolTip() const { return toolTip_; }
  void setToolTip(std::string text) { toolTip_ = std::move(text); }

  // Areas may come and go at any time; under a pointer that does not move nothing is sent.
  const DequeList<Ref<NSTrackingArea>>& trackingAreas() const { return trackingAreas_; }
  void addTrackingArea(const Ref<NSTrackingArea>& area);
  void removeTrackingArea(const Ref<NSTrackingArea>& area);
  // Called when the view comes into a window and when its visible rectangle changes, also by what happens to a view above;
  // an override calls its base's first.
  virtual void updateTrackingAreas() {}

  // Where the pointer changes its look. The window asks for the rectangles again, all of them, when the view has changed
  // its place or invalidateCursorRectsForView was called; resetCursorRects adds them. Later ones lie over earlier ones.
  virtual void resetCursorRects() {}
  void addCursorRect(CGRect rect, const Ref<NSCursor>& cursor);
  void discardCursorRects() { cursorRects_.clear(); }
  Ref<NSCursor> cursorAt(CGPoint point) const;  // null outside all rectangles

 protected:
  void geometryDidChange() override;

 private:
  friend class NSWindow;
  // A change of a view's place changes what is visible of all views below it.
  void visibleAreaDidChange();
  static void callEnablesControlsDidChange(NSView& view);

  struct CursorRect {
    CGRect rect;
    Ref<NSCursor> cursor;
  };

  DequeList<Ref<NSTrackingArea>> trackingAreas_;
  std::vector<CursorRect> cursorRects_;
  std::string toolTip_;
  bool areCursorRectsValid_ = false;
  bool enablesControls_ = true;
};

}  // namespace tessaluna::platform
