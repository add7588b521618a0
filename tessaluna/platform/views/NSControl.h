// A view whose look and tracking are a cell's, and which sends an action. The action is a selector's name; its target is
// not kept alive, and an absent one means the responder chain. A control is flipped.
#pragma once

#include <string>

#include "tessaluna/platform/cells/NSCell.h"
#include "tessaluna/platform/views/NSView.h"

namespace tessaluna::platform {

class NSControl : public NSView {
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
  void setCell(Ref<NSCell> cell);  // absent leaves a control without look and tracking

  bool isEnabled() const { return cell_ && cell_->isEnabled(); }
  virtual void setEnabled(bool isEnabled);
  bool isHighlighted() const { return cell_ && cell_->isHighlighted(); }
  void setHighlighted(bool isHighlighted);
  std::int64_t tag() const { return cell_ ? cell_->tag() : 0; }
  void setTag(std::int64_t tag);

  // Of the cell. Setting one asks for a redraw.
  virtual std::string stringValue() const { return cell_ ? cell_->stringValue() : std::string(); }
  virtual void setStringValue(std::string_view text);
  virtual Ref<NSAttributedString> attributedStringValue() const;
  virtual void setAttributedStringValue(Ref<NSAttributedString> text);
  Ref<NSFont> font() const { return cell_ ? cell_->font() : nullptr; }
  void setFont(Ref<NSFont> font);
  void setAlignment(NSTextAlignment alignment);
  void setLineBreakMode(NSLineBreakMode mode);
  CGSize intrinsicContentSize() const override;

  Ref<NSObject> target() const { return target_.lock(); }
  void setTarget(const Ref<NSObject>& target) { target_ = target; }
  const std::string& action() const { return action_; }
  void setAction(std::string selector) { action_ = std::move(selector); }
  // False if nobody took it.
  virtual bool sendActionTo(std::string_view action, const Ref<NSObject>& target);

  bool isFlipped() const override { return true; }
  void drawRect(CGRect rect) override;
  void mouseDown(const Ref<NSEvent>& event) override;
  void mouseDragged(const Ref<NSEvent>& event) override;
  void mouseUp(const Ref<NSEvent>& event) override;
  void viewDidHide() override;  // a press ends there, without an action

 protected:
  // The cell stands for the control.
  std::optional<AccessibilityElements> accessibilityOwnChildren() const override;
  virtual Ref<NSCell> makeCell() { return make<NSCell>(); }
  virtual Ref<NSCell> makeCell(NSCoder& coder) { return make<NSCell>(coder); }
  // A press that the cell tracked has ended over the control.
  virtual void wasClicked();
  bool isTracking() const { return isTracking_; }
  void windowWillChange() override;

 private:
  static const Outlet outlets_[];
  void endTracking(CGPoint point, bool isMouseUp);
  template <class Change>
  void changeCell(Change change);

  Ref<NSCell> cell_;
  WeakRef<NSObject> target_;
  std::string action_;
  std::optional<NSCoder> cellCoder_;  // until the cell is made
  CGPoint lastPoint_;
  bool isTracking_ = false;
};

}  // namespace tessaluna::platform
