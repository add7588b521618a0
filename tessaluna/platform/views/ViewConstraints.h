// The third part of a view: the constraints that place it and those that it holds for views in it. All views of a window are
// solved together, in the window's pass of layout. Views that no constraint mentions keep the frames that they are given.
//
// A constrained view that translates its autoresizing mask, as new views do, keeps the frame that it has in its superview, by
// its mask; constraints must not contradict it. One that does not gets its frame from the constraints alone, on whole device
// pixels.
#pragma once

#include <memory>
#include <vector>

#include "tessaluna/platform/layout/NSLayoutPriority.h"
#include "tessaluna/platform/views/ViewLayout.h"

namespace tessaluna::platform {

class LayoutEngine;
class NSLayoutConstraint;

class ViewConstraints : public ViewLayout {
 public:
  explicit ViewConstraints(CGRect frame);
  explicit ViewConstraints(NSCoder& coder);
  ~ViewConstraints() override;

  // Those that the view holds and keeps alive, which makes them active. Their items are the view and views below it; any other
  // stops the program. Adding one that another view has moves it here; removing one that is not here does nothing.
  // One whose item leaves the view that holds it is removed.
  const std::vector<Ref<NSLayoutConstraint>>& constraints() const;
  void addConstraint(const Ref<NSLayoutConstraint>& constraint);
  void addConstraints(const std::vector<Ref<NSLayoutConstraint>>& constraints);
  void removeConstraint(const Ref<NSLayoutConstraint>& constraint);
  void removeConstraints(const std::vector<Ref<NSLayoutConstraint>>& constraints);

  // Whether frame and autoresizingMask count as constraints. True for a new view.
  bool translatesAutoresizingMaskIntoConstraints() const;
  void setTranslatesAutoresizingMaskIntoConstraints(bool does);

  // How much the view resists to be wider or higher than its intrinsic size (hugging, at first 250), and to be narrower or
  // lower (compression, at first 750). The sizes have one for each axis, as interface files write them.
  NSLayoutPriority contentHuggingPriorityForOrientation(NSLayoutConstraintOrientation orientation) const;
  void setContentHuggingPriority(NSLayoutPriority priority, NSLayoutConstraintOrientation orientation);
  NSLayoutPriority contentCompressionResistancePriorityForOrientation(NSLayoutConstraintOrientation orientation) const;
  void setContentCompressionResistancePriority(NSLayoutPriority priority, NSLayoutConstraintOrientation orientation);
  void setContentHuggingPriorities(CGSize priorities);
  void setContentCompressionResistancePriorities(CGSize priorities);

  // Where the first and the last line of text are, at the size that the content wants.
  virtual CGFloat firstBaselineOffsetFromTop() const { return 0; }
  virtual CGFloat lastBaselineOffsetFromBottom() const { return 0; }

  // The last moment to change constraints: called before they are solved on views that need it, subviews first. An override
  // calls its base's last.
  virtual void updateConstraints() {}
  bool needsUpdateConstraints() const;
  void setNeedsUpdateConstraints(bool needs);

 private:
  friend class LayoutEngine;
  friend class NSLayoutConstraint;
  friend class NSView;
  friend class ViewGeometry;
  friend class ViewLayout;
  struct State;
  State& state();
  static void install(NSLayoutConstraint& constraint);
  LayoutEngine& makeEngineOfTree();
  bool isPlacedByConstraints() const;
  void frameDidChange();
  void maskDidChange();
  void contentSizeDidChange();
  void layoutDirectionDidChange();
  void cameIntoSuperview();
  void willLeaveSuperview();
  void takeOut(const Ref<NSView>& subview);
  void solve();
  CGSize constrainedSize(CGSize unconstrained) const;

  std::unique_ptr<State> state_;  // null as long as everything is as at first
};

}  // namespace tessaluna::platform
