// A push button: it is pressed with the mouse, with the space bar while it is the first responder, or with its key
// equivalent, shows that while it lasts, and sends its action when it is let go over itself.
#pragma once

#include "tessaluna/platform/backend/Timer.h"
#include "tessaluna/platform/cells/NSButtonCell.h"
#include "tessaluna/platform/views/NSControl.h"

namespace tessaluna::platform {

class NSButton : public NSControl {
 public:
  static const ClassInfo staticClassInfo;
  const ClassInfo& classInfo() const override { return staticClassInfo; }

  explicit NSButton(CGRect frame) : NSControl(frame) {}
  explicit NSButton(NSCoder& coder) : NSControl(coder) {}

  // Of the cell; a button whose cell was taken away has no title, and no key equivalent with a cell of another class.
  std::string title() const { return cell() ? cell()->title() : std::string(); }
  void setTitle(std::string_view title);
  void setKeyEquivalent(std::string characters);
  void setKeyEquivalentModifierMask(std::uint32_t mask);
  void setButtonType(NSButtonType type);
  void setAllowsMixedState(bool allows);
  NSControlStateValue state() const { return cell() ? cell()->state() : NSControlStateValueOff; }
  void setState(NSControlStateValue state);
  void setNextState();  // as a click on one that toggles does

  // A click without a mouse: the button shows as pressed for a moment, and the action is sent. A disabled one does nothing.
  virtual void performClick(NSObject* sender);

  bool acceptsFirstResponder() const override { return isEnabled(); }
  void keyDown(const Ref<NSEvent>& event) override;
  bool performKeyEquivalent(const Ref<NSEvent>& event) override;

 protected:
  Ref<NSCell> makeCell() override { return make<NSButtonCell>(); }
  Ref<NSCell> makeCell(NSCoder& coder) override { return make<NSButtonCell>(coder); }
  void wasClicked() override;

 private:
  NSButtonCell* buttonCell() const;
  void clickByKey(const NSEvent& event);

  backend::Timer endOfKeyboardClick_;
};

}  // namespace tessaluna::platform
