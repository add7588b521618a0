// What a control shows and how it follows the mouse, apart from the view that it stands in. A cell knows its control view
// but does not keep it alive.
#pragma once

#include <cstdint>

#include "platform/foundation/Geometry.h"
#include "platform/foundation/NSObject.h"
#include "platform/views/Forward.h"

namespace platform {

enum NSControlStateValue { NSControlStateValueMixed = -1, NSControlStateValueOff = 0, NSControlStateValueOn = 1 };

class NSCell : public NSObject {
 public:
  static const ClassInfo staticClassInfo;
  const ClassInfo& classInfo() const override { return staticClassInfo; }

  NSCell() = default;
  // Keys: "enabled" (true if missing), "highlighted", "state", "tag".
  explicit NSCell(NSCoder& coder);

  NSView* controlView() const { return controlView_; }
  void setControlView(NSView* view) { controlView_ = view; }

  // Plain stores; the control that sets them asks for the redraw.
  bool isEnabled() const { return isEnabled_; }
  void setEnabled(bool isEnabled) { isEnabled_ = isEnabled; }
  bool isHighlighted() const { return isHighlighted_; }
  void setHighlighted(bool isHighlighted) { isHighlighted_ = isHighlighted; }
  NSControlStateValue state() const { return state_; }
  void setState(NSControlStateValue state) { state_ = state; }
  std::int64_t tag() const { return tag_; }
  void setTag(std::int64_t tag) { tag_ = tag; }

  // In the control view's coordinates. The first draws the whole cell, border included; the second what is inside.
  virtual void drawWithFrame(CGRect frame, NSView& view) { drawInteriorWithFrame(frame, view); }
  virtual void drawInteriorWithFrame(CGRect, NSView&) {}

  // A press, as states and not as a loop: it starts, goes on with each drag, and stops. Points are in the view's
  // coordinates. Start and continue return whether to go on; stop is told whether the button went up over the cell.
  virtual bool startTrackingAt(CGPoint start, NSView& view);
  virtual bool continueTracking(CGPoint last, CGPoint current, NSView& view);
  virtual void stopTracking(CGPoint last, CGPoint stop, NSView& view, bool mouseIsUp);

  // The modifier flags of the last left press on the cell; 0 before one, and after one without modifiers.
  std::uint32_t mouseDownFlags() const { return mouseDownFlags_; }
  void setMouseDownFlags(std::uint32_t flags) { mouseDownFlags_ = flags; }  // for the control that tracks

 private:
  NSView* controlView_ = nullptr;
  std::int64_t tag_ = 0;
  std::uint32_t mouseDownFlags_ = 0;
  NSControlStateValue state_ = NSControlStateValueOff;
  bool isEnabled_ = true;
  bool isHighlighted_ = false;
};

}  // namespace platform
