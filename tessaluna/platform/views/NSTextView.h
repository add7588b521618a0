// A text that is edited with the keyboard, the mouse and input methods. Its parts are in headers of their own:
// TextViewLayout (the text and its lines), TextViewSelection (selection, caret, mouse), TextViewEditing (changes, undo,
// clipboard, composition). Here: keys become commands, and commands find who does them.
//
// A command is the selector of an operation ("moveWordLeft:"). It is offered to the delegate first; what the text view
// does not do itself is passed to its next responders.
#pragma once

#include "tessaluna/platform/views/TextViewEditing.h"

namespace tessaluna::platform {

class NSTextView : public TextViewEditing {
 public:
  static const ClassInfo staticClassInfo;  // its selectors are the table of commands
  const ClassInfo& classInfo() const override { return staticClassInfo; }

  using TextViewEditing::TextViewEditing;
  ~NSTextView() override;

  void setFieldEditor(bool isFieldEditor) override;
  void setDelegate(const Ref<NSTextDelegate>& delegate) override;
  void endEditing() override;

  void keyDown(const Ref<NSEvent>& event) override;
  // The right button and the menu key open the text's menu. The middle button inserts what was selected last with the mouse.
  void rightMouseDown(const Ref<NSEvent>& event) override;
  void otherMouseDown(const Ref<NSEvent>& event) override;
  void doCommandBySelector(std::string_view selector) override;

  // In a field editor Return and Tab end the editing, where text is written they are typed. Tab elsewhere and Shift-Tab move
  // on.
  void insertNewline(NSObject* sender);
  void insertTab(NSObject* sender);
  void insertBacktab(NSObject* sender);

  bool acceptsFirstResponder() const override { return isSelectable(); }
  bool becomeFirstResponder() override;
  bool resignFirstResponder() override;
  bool canBecomeKeyView() const override { return !isFieldEditor() && TextViewEditing::canBecomeKeyView(); }

  // Assistive clients do not see a field editor: the field's cell reports what is in it.
  bool isAccessibilityElement() const override { return !isFieldEditor(); }
  std::string accessibilityRole() const override;
  AccessibilityValue accessibilityValue() const override { return string(); }
  AccessibilityValue accessibilityAttributeValue(std::string_view attribute) const override;
  AccessibilityValue accessibilityAttributeValueForParameter(std::string_view attribute,
                                                             const AccessibilityValue& parameter) const override;
  // Its value is replaced as if all of it were typed over.
  bool accessibilityIsAttributeSettable(std::string_view attribute) const override;
  void accessibilitySetValue(const AccessibilityValue& value, std::string_view forAttribute) override;

 protected:
  void viewDidMoveToWindow() override;

 private:
  static const Selector selectors_[];
  enum class Asking { Delegate, Nobody };
  bool finishEditing(NSTextMovement movement, Asking asking);
  bool performCommand(std::string_view selector);
  void moveToKeyView(NSTextMovement movement);
  void stopObserving();
  void keyWindowDidChange();

  std::vector<Ref<NSObject>> observers_;  // of the window's key status
  NSTextMovement wantedMovement_ = NSTextMovementOther;
  std::size_t timesFirstResponder_ = 0;
  bool isFinishing_ = false;
};

}  // namespace tessaluna::platform
