// A view whose look, value and tracking are a cell's, and which sends an action: see ActionSender. A control is flipped.
//
// A press highlights the cell and has it track the mouse; a release over the control clicks it. The action is sent at the
// moments that the cell's sendActionOn names, usually the click. A press ends without a click when the control is disabled,
// hidden, taken out of its window or given another cell meanwhile, when its window is hidden, and when the release is lost.
#pragma once

#include <string>

#include "tessaluna/platform/cells/NSCell.h"
#include "tessaluna/platform/events/ActionSender.h"
#include "tessaluna/platform/foundation/NSCoder.h"
#include "tessaluna/platform/views/NSView.h"

namespace tessaluna::platform {

class NSControl : public NSView, public CellValue, public ActionSender {
 public:
  static const ClassInfo staticClassInfo;
  const ClassInfo& classInfo() const override { return staticClassInfo; }

  // The class says which cell it starts with: makeCell, called when the control is made.
  explicit NSControl(CGRect frame) : NSView(frame) {}
  // Keys besides the view's: "cell" (an object, read by the cell; with "class" one of another class than the control's own),
  // "action". Outlet: "target".
  explicit NSControl(NSCoder& coder);
  ~NSControl() override;
  void didInit() override;

  const Ref<NSCell>& cell() const { return cell_; }
  void setCell(Ref<NSCell> cell);  // null leaves a control without look and tracking

  bool isEnabled() const { return cell_ && cell_->isEnabled(); }
  virtual void setEnabled(bool isEnabled);
  bool isHighlighted() const { return cell_ && cell_->isHighlighted(); }
  void setHighlighted(bool isHighlighted);
  std::int64_t tag() const { return cell_ ? cell_->tag() : 0; }
  void setTag(std::int64_t tag);

  // These are the cell's; the setters request a redraw.
  Ref<NSObject> objectValue() const override { return cell_ ? cell_->objectValue() : nullptr; }
  void setObjectValue(Ref<NSObject> value) override;
  Ref<NSAttributedString> attributedStringValue() const;
  void setAttributedStringValue(Ref<NSAttributedString> text) { setObjectValue(std::move(text)); }
  Ref<NSFont> font() const { return cell_ ? cell_->font() : nullptr; }
  void setFont(Ref<NSFont> font);
  void setAlignment(NSTextAlignment alignment);
  void setLineBreakMode(NSLineBreakMode mode);
  CGSize intrinsicContentSize() const override;
  CGFloat firstBaselineOffsetFromTop() const override;
  CGFloat lastBaselineOffsetFromBottom() const override;

  bool isContinuous() const { return cell_ && cell_->isContinuous(); }
  void setContinuous(bool isContinuous);
  NSEventMask sendActionOn(NSEventMask mask) { return cell_ ? cell_->sendActionOn(mask) : 0; }
  // False if nobody took it.
  virtual bool sendActionTo(std::string_view action, const Ref<NSObject>& target);

  bool mouseDownCanMoveWindow() const override { return false; }
  bool isFlipped() const override { return true; }
  void drawRect(CGRect rect) override;
  void mouseDown(const Ref<NSEvent>& event) override;
  void mouseDragged(const Ref<NSEvent>& event) override;
  void mouseUp(const Ref<NSEvent>& event) override;
  void viewDidHide() override;
  void enablesControlsDidChange() override;

 protected:
  // The cell represents the control.
  std::optional<AccessibilityElements> accessibilityOwnChildren() const override;
  virtual Ref<NSCell> makeCell() { return make<NSCell>(); }
  virtual Ref<NSCell> makeCell(NSCoder& coder) { return make<NSCell>(coder); }
  // A press that the cell tracked has ended over the control, or wherever such a cell prefers. The action follows.
  virtual void wasClicked() {}
  // From the press until it ends; the first also while the pointer is away.
  bool isPressed() const { return press_ != Press::None; }
  bool isTracking() const { return press_ == Press::Tracked; }
  // What the cell shows or the room that it needs has changed.
  void cellDidChange();
  void windowWillChange() override;

 private:
  static const Outlet outlets_[];
  enum class Press { None, Tracked, Away };  // away: the pointer has left and may come back
  CGFloat lineHeight() const;
  CGFloat marginOfText() const;
  CGPoint pointOf(const NSEvent& event) const;
  void startTracking(CGPoint point);
  void track(CGPoint point);
  void stopTracking(Press next, CGPoint last, CGPoint point, bool isMouseUp);
  void endPress() { stopTracking(Press::None, lastPoint_, lastPoint_, /*isMouseUp=*/false); }
  void sendActionIfOn(NSEventType type);

  Ref<NSCell> cell_;
  std::optional<NSCoder> cellCoder_;  // until the cell is made
  CGPoint lastPoint_;
  Press press_ = Press::None;
};

}  // namespace tessaluna::platform
