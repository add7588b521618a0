// What the play, favorite and more controls of a track list's row share: a press that counts if it begins on the control and
// ends over it, a hover state, and a target that is notified.
//
//   mouseInside  isPressed   state
//   false        false       idle
//   true         false       hover
//   true         true        pressed        a release here notifies the target
//   false        true        pressed away   a release here does not
//
// The row itself is the host's: it sets what a control is to show, requests the redraw and paints the ground, which is dark: at
// rest the heart and the dots are half-transparent white. A control can be clicked while it draws nothing. The events of a click
// stop here and do not reach the row; others, such as the wheel's, pass on to it. While a view above has its controls disabled,
// what a control draws is pale.
#pragma once

#include "tessaluna/platform/foundation/NSCoder.h"
#include "tessaluna/platform/views/NSView.h"
#include "tessaluna/uikit/trackrow/TrackListRowActionTarget.h"

namespace TessalunaUIKit {

class TrackRowControl : public tessaluna::platform::NSView {
 public:
  static const tessaluna::platform::ClassInfo staticClassInfo;
  const tessaluna::platform::ClassInfo& classInfo() const override { return staticClassInfo; }

  explicit TrackRowControl(tessaluna::platform::CGRect frame) : NSView(frame) {}
  // All states are false, as in a new control, whatever an archive holds; interface files set them as properties. The target is
  // null, and is not reachable by name, so it is not an outlet.
  explicit TrackRowControl(tessaluna::platform::NSCoder& coder) : NSView(coder) {
    coder.overlookKeys({"hasMouseOnRow", "isPressed"});
  }

  // The mouse is somewhere on the control's row. Set by the host, who also requests the redraw.
  bool hasMouseOnRow() const { return hasMouseOnRow_; }
  void setHasMouseOnRow(bool has) { hasMouseOnRow_ = has; }

  // A press began on the control and is not over. Still true while the target is notified.
  bool isPressed() const { return isPressed_; }
  void setIsPressed(bool isPressed) { isPressed_ = isPressed; }

  // Kept alive: a target that owns its buttons has to break that cycle itself. Null: a click is swallowed.
  const tessaluna::platform::Ref<TrackListRowActionTarget>& target() const { return target_; }
  void setTarget(tessaluna::platform::Ref<TrackListRowActionTarget> target) { target_ = std::move(target); }

  // An addition: one that its host has named (NSAccessibilityDescriptionAttribute) is a button to assistive clients, and its
  // press is a click. Without a name clients do not see it; a TrackTable represents those of its rows.
  bool isAccessibilityElement() const override;
  std::string accessibilityRole() const override;
  bool isAccessibilityEnabled() const override { return areControlsEnabled(); }
  std::vector<std::string> accessibilityActionNames() const override;
  void accessibilityPerformAction(std::string_view action) override;

  void viewDidHide() override;               // ends a press without a click
  void enablesControlsDidChange() override;  // so does what disables it from above, and none begins until it is enabled
  void updateTrackingAreas() override;
  void mouseEntered(const tessaluna::platform::Ref<tessaluna::platform::NSEvent>& event) override;
  void mouseExited(const tessaluna::platform::Ref<tessaluna::platform::NSEvent>& event) override;
  void mouseDragged(const tessaluna::platform::Ref<tessaluna::platform::NSEvent>& event) override;
  void mouseDown(const tessaluna::platform::Ref<tessaluna::platform::NSEvent>& event) override;
  void mouseUp(const tessaluna::platform::Ref<tessaluna::platform::NSEvent>& event) override;

 protected:
  bool mouseInside() const { return mouseInside_; }
  virtual void notifyTarget(TrackListRowActionTarget& target) = 0;

 private:
  void endPress(tessaluna::platform::Ref<TrackListRowActionTarget> clicked);

  tessaluna::platform::Ref<TrackListRowActionTarget> target_;
  tessaluna::platform::Ref<tessaluna::platform::NSTrackingArea> trackingArea_;  // made once
  bool hasMouseOnRow_ = false;
  bool isPressed_ = false;
  bool mouseInside_ = false;  // as far as events have shown
};

}  // namespace TessalunaUIKit
