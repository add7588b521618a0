// The first part of a view: its place in the tree and in space. A frame lies in the superview's coordinates, bounds in the
// view's own. A view has y up unless it is flipped; the content view's superview space is the window's base space.
#pragma once

#include <cstdint>

#include "tessaluna/platform/events/NSResponder.h"
#include "tessaluna/platform/foundation/AffineTransform.h"
#include "tessaluna/platform/foundation/DequeList.h"
#include "tessaluna/platform/foundation/Geometry.h"
#include "tessaluna/platform/windows/effectiveAppearance.h"

namespace tessaluna::platform {

enum NSAutoresizingMask : std::uint32_t {
  NSViewNotSizable = 0,
  NSViewMinXMargin = 1,
  NSViewWidthSizable = 2,
  NSViewMaxXMargin = 4,
  NSViewMinYMargin = 8,
  NSViewHeightSizable = 16,
  NSViewMaxYMargin = 32,
};

class ViewGeometry : public NSResponder {
 public:
  explicit ViewGeometry(CGRect frame);
  explicit ViewGeometry(NSCoder& coder);
  ~ViewGeometry() override;

  // The tree. A superview keeps its subviews alive, front last; a view knows its superview and window without that.
  NSView* superview() const { return superview_; }
  const DequeList<Ref<NSView>>& subviews() const { return subviews_; }
  NSWindow* window() const { return window_; }
  void addSubview(const Ref<NSView>& view);  // in front; out of its earlier superview first
  void removeFromSuperview();
  virtual void willRemoveSubview(NSView&) {}
  bool isDescendantOf(const NSView* view) const;  // a view is its own descendant
  NSResponder* nextResponder() const override;
  virtual void viewDidMoveToWindow() {}

  // Space.
  CGRect frame() const { return frame_; }
  CGRect bounds() const { return bounds_; }
  virtual void setFrame(CGRect frame);
  void setFrameOrigin(CGPoint origin) { setFrame({origin, frame_.size}); }
  void setFrameSize(CGSize size) { setFrame({frame_.origin, size}); }
  virtual void setBoundsOrigin(CGPoint origin);  // scrolls
  virtual bool isFlipped() const { return false; }
  CGRect visibleRect() const;  // of bounds, what no superview cuts off; the tree is laid out first

  // To and from another view's coordinates, or with none the window's base space. The tree is laid out first.
  CGPoint convertPointToView(CGPoint point, const NSView* view) const;
  CGPoint convertPointFromView(CGPoint point, const NSView* view) const;
  CGRect convertRectToView(CGRect rect, const NSView* view) const;
  CGRect convertRectFromView(CGRect rect, const NSView* view) const;
  // By the frames as they are now.
  CGAffineTransform transformToSuperview() const;
  CGAffineTransform transformToWindow() const;

  // How the frame follows a change of the superview's size. On by default.
  bool autoresizesSubviews() const { return autoresizesSubviews_; }
  void setAutoresizesSubviews(bool does);
  std::uint32_t autoresizingMask() const { return autoresizingMask_; }
  void setAutoresizingMask(std::uint32_t mask);
  virtual void resizeSubviewsWithOldSize(CGSize oldSize);
  virtual void subviewFrameDidChange(NSView&) {}
  void resizeWithOldSuperviewSize(CGSize oldSize);

 protected:
  CGRect visibleRectNow() const;  // by the frames as they are now
  // What the later parts of a view do about a change. Called by this one.
  virtual void geometryWillChange() {}  // the area that is covered now
  virtual void geometryDidChange() {}   // the area that is covered then
  virtual void windowWillChange() {}
  NSView& asView();
  const NSView& asView() const;

 private:
  friend class NSWindow;
  void moveToWindow(NSWindow* window);
  CGAffineTransform transformToView(const NSView* view) const;

  NSView* superview_ = nullptr;
  NSWindow* window_ = nullptr;
  std::size_t appearanceChanges_ = effectiveAppearanceChanges();  // that it has followed
  DequeList<Ref<NSView>> subviews_;
  CGRect frame_, bounds_;
  std::uint32_t autoresizingMask_ = NSViewNotSizable;
  bool autoresizesSubviews_ = true;
};

}  // namespace tessaluna::platform
