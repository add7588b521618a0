// The fourth part of a view: what it shows. A view draws itself in drawRect:, then its subviews from back to front, all cut
// to its bounds. Nothing is drawn immediately: a redraw is requested and happens with the window's next display.
#pragma once

#include "tessaluna/platform/graphics/Forward.h"
#include "tessaluna/platform/views/ViewConstraints.h"

namespace tessaluna::platform {

class ViewDrawing : public ViewConstraints {
 public:
  explicit ViewDrawing(CGRect frame) : ViewConstraints(frame) {}
  explicit ViewDrawing(NSCoder& coder);

  // Draws into the current context, in the view's coordinates. The rectangle is the part of bounds that is to be redrawn,
  // in whole device pixels where it does not reach the bounds' edges; exactly bounds after setNeedsDisplay(true).
  virtual void drawRect(CGRect) {}

  // True promises that drawRect: paints every point of the bounds: nothing under it is drawn.
  virtual bool isOpaque() const { return false; }

  // True requests a redraw of the bounds; false withdraws the request as far as only this view knows of it.
  void setNeedsDisplay(bool needsDisplay);
  void setNeedsDisplayInRect(CGRect rect);
  bool needsDisplay() const { return needsDisplay_; }

  // Hidden views, with all below them, neither draw nor take events.
  bool isHidden() const { return isHidden_; }
  virtual void setHidden(bool isHidden);
  bool isHiddenOrHasHiddenAncestor() const;
  // The view has become hidden, by itself or with a view above it.
  virtual void viewDidHide() {}

  // Additions: what black becomes in the view and below it, and what white does, with grays on the way between them. A system
  // color is resolved when it is drawn. Null, as initially: the view has no tint; white becomes the window's ground.
  const Ref<NSColor>& tintColor() const { return tintColor_; }
  void setTintColor(Ref<NSColor> color);
  const Ref<NSColor>& tintGroundColor() const { return tintGroundColor_; }  // without a tint it does nothing
  void setTintGroundColor(Ref<NSColor> color);

  // Kept for callers that ask for it; a view here never has a layer.
  bool wantsLayer() const { return wantsLayer_; }
  void setWantsLayer(bool wants) { wantsLayer_ = wants; }

  // Draws the view and all below it, as laid out last, into the context, whose space is the superview's, as is the rectangle's.
  void displayRectInContext(CGRect rect, NSGraphicsContext& context);

 protected:
  void geometryWillChange() override;
  void geometryDidChange() override;

 private:
  static void callViewDidHide(NSView& view);

  Ref<NSColor> tintColor_, tintGroundColor_;
  bool needsDisplay_ = false;
  bool needsWholeDisplay_ = false;  // as setNeedsDisplay(true) asks, also where a superview cuts the view off
  bool isHidden_ = false;
  bool wantsLayer_ = false;
};

}  // namespace tessaluna::platform
