// A rectangle of a window that draws and takes events. Its parts stand in headers of their own: ViewGeometry (tree and
// space), ViewDrawing (what it shows), ViewTracking (what is under the pointer).
#pragma once

#include "platform/views/ViewTracking.h"

namespace platform {

class NSView : public ViewTracking {
 public:
  static const ClassInfo staticClassInfo;
  const ClassInfo& classInfo() const override { return staticClassInfo; }

  explicit NSView(CGRect frame) : ViewTracking(frame) {}
  // Keys: "frame", "hidden", "autoresizingMask", "autoresizesSubviews", "wantsLayer".
  explicit NSView(NSCoder& coder) : ViewTracking(coder) {}

  // Called on all objects of an interface file once its outlets are connected.
  virtual void awakeFromNib() {}

  // A key equivalent goes down the tree, to the first view that takes it.
  bool performKeyEquivalent(const Ref<NSEvent>& event) override;

  // Whether the Tab key may stop here.
  virtual bool canBecomeKeyView() const { return acceptsFirstResponder() && !isHiddenOrHasHiddenAncestor(); }

 protected:
  void windowWillChange() override;
};

}  // namespace platform
