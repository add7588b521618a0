// The second part of a view: when the views below it get their places. What changes marks the view, and one pass of its
// window, before the next drawing, calls layout() of all that are marked, superviews before their subviews. A pass also runs
// before anybody asks where something is: conversions, visibleRect, hit tests and scrolling have the views in their places.
//
// Autoresizing is done at once and needs no pass.
#pragma once

#include "tessaluna/platform/foundation/LinkedList.h"
#include "tessaluna/platform/views/ViewGeometry.h"

namespace tessaluna::platform {

class ViewLayout : public ViewGeometry, private ListLink {
 public:
  explicit ViewLayout(CGRect frame) : ViewGeometry(frame), sizeItCameWith_(frame.size) {}
  explicit ViewLayout(NSCoder& coder) : ViewGeometry(coder), sizeItCameWith_(frame().size) {}

  // Gives the subviews their frames, from the bounds; an override calls its base's first. It may mark views, this one too,
  // and change the tree: the pass goes round again, but only so often. What still is marked then waits for the next pass.
  // Called by passes; a program marks the view instead.
  virtual void layout() {}

  // True for a new view; set whenever the size changes.
  bool needsLayout() const { return needsLayout_; }
  void setNeedsLayout(bool needsLayout);
  // Lays out this view and those below it that are marked, now. While the tree draws, nothing happens.
  void layoutSubtreeIfNeeded();

  // What the content wants, by axis; noIntrinsicMetric where it wants nothing.
  virtual CGSize intrinsicContentSize() const { return {noIntrinsicMetric, noIntrinsicMetric}; }
  static constexpr CGFloat noIntrinsicMetric = -1;
  // The content wants another size: the superviews are laid out again, and a widget around the view asks for its size.
  void invalidateIntrinsicContentSize();
  // False where what the views below want matters to nobody above: a document scrolls instead.
  virtual bool isSizedByContent() const { return true; }
  // The size that suits the view: the least that its constraints and those of the views below it allow. Where none of them says
  // anything about it, by axis the intrinsic one, else the one that the view came with, which is that of its last frame outside
  // of a window.
  CGSize fittingSize() const;

 protected:
  // Brings the frames of the whole tree up to date, before somebody reads them. Nothing happens during a pass, while the
  // tree draws, or as long as its topmost view is being made.
  void layOutTree() const;

  bool isDrawing_ = false;  // this view or what is below it

 private:
  friend class ViewGeometry;
  void sizeDidChange();
  void cameIntoSuperview();
  void willLeaveSuperview() { leaveList(); }
  bool hasMarks() const { return needsLayout_ || !marked_.isEmpty(); }
  void reportMarks();
  void runPass();
  void solveConstraints();
  void layOutMarked();

  LinkedList marked_;  // the subviews that are marked, or have marked views below them
  CGSize sizeItCameWith_;
  bool needsLayout_ = true;
  bool isInLayout_ = false;  // layout() is running
  bool isInPass_ = false;    // one that began here
};

}  // namespace tessaluna::platform
