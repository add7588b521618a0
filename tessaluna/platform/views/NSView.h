// A rectangle of a window that draws and takes events. Its parts are in headers of their own: ViewGeometry (tree and
// space), ViewLayout (when subviews get their places), ViewConstraints (what places them), ViewDrawing (what it shows),
// ViewTracking (what is under the pointer), ViewAccessibility (what assistive clients see).
#pragma once

#include <optional>
#include <string>

#include "tessaluna/platform/views/NSFocusRingType.h"
#include "tessaluna/platform/views/NSUserInterfaceLayoutDirection.h"
#include "tessaluna/platform/views/ViewAccessibility.h"

namespace tessaluna::platform {

class NSView : public ViewAccessibility {
 public:
  static const ClassInfo staticClassInfo;
  const ClassInfo& classInfo() const override { return staticClassInfo; }

  explicit NSView(CGRect frame) : ViewAccessibility(frame) {}
  // Keys: "frame", "hidden", "autoresizingMask", "autoresizesSubviews", "wantsLayer", "identifier"; the
  // objects "subviews" and "constraints".
  explicit NSView(NSCoder& coder);

  // What the program calls the view, or its kind: a table asks for the views that it may use again by it. Empty for a view
  // without one.
  const std::string& identifier() const { return identifier_; }
  void setIdentifier(std::string identifier) { identifier_ = std::move(identifier); }

  // The view whose setters take their time (NSViewAnimator.h).
  NSViewAnimator animator();

  // Scrolling. The first clip view above is asked; without one nothing happens and the answer is false.
  NSScrollView* enclosingScrollView() const;
  bool scrollRectToVisible(CGRect rect);  // the least way that shows it; true if anything moved
  void scrollPoint(CGPoint point);        // to the clip view's origin corner
  // Called by a clip view with what shows of its document, whenever that changes: a view that makes its content as it is
  // needed does so here.
  virtual void prepareContentInRect(CGRect) {}

  // A key equivalent goes down the tree, to the first view that takes it.
  bool performKeyEquivalent(const Ref<NSEvent>& event) override;

  // In which direction neighbours follow each other. That of the application, unless it was set for the view.
  NSUserInterfaceLayoutDirection userInterfaceLayoutDirection() const;
  void setUserInterfaceLayoutDirection(NSUserInterfaceLayoutDirection direction);

  // Whether the Tab key may stop here.
  virtual bool canBecomeKeyView() const { return acceptsFirstResponder() && !isHiddenOrHasHiddenAncestor() && !isLeftOut(); }

  // An addition: a view that says true leaves out, of the Tab chain and of what assistive clients are shown, the views below it
  // of which nothing lies in its bounds. What is scrolled out of sight within it is not meant.
  virtual bool leavesOutWhatItCutsOff() const { return false; }
  bool isLeftOut() const;  // by a view above; the tree is laid out first

  // What the window draws a ring around while the keyboard is here and a key brought it here (FocusRing.h), in the view's
  // coordinates; empty for a view that shows it in another way. A view with several places for the keyboard gives the one
  // that has it, and calls noteFocusRingMaskChanged whenever it moves to another.
  virtual CGRect focusRingMaskBounds() const { return bounds(); }
  void noteFocusRingMaskChanged();
  NSFocusRingType focusRingType() const { return focusRingType_; }
  void setFocusRingType(NSFocusRingType type);

 protected:
  void windowWillChange() override;

 private:
  std::string identifier_;
  std::optional<NSUserInterfaceLayoutDirection> layoutDirection_;
  NSFocusRingType focusRingType_ = NSFocusRingTypeDefault;
};

}  // namespace tessaluna::platform
