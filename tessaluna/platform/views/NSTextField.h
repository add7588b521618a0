// A text on a line or on several. One that is neither editable nor selectable is a label: it passes mouse events on. The
// others are edited, on one line, in the field editor of their window: it comes with a click or the Tab key and goes when
// the keys go elsewhere, which is when the field takes over what was typed. Return takes it over and sends the action; without one
// it presses the button that has Return as its key equivalent, or else the key is left to the desktop, whose default button it may
// press.
#pragma once

#include "tessaluna/platform/cells/NSTextFieldCell.h"
#include "tessaluna/platform/views/NSControl.h"
#include "tessaluna/platform/views/NSText.h"
#include "tessaluna/platform/views/NSTextFieldDelegate.h"

namespace tessaluna::platform {

class NSTextField : public NSControl, public NSTextDelegate {
 public:
  static const ClassInfo staticClassInfo;
  const ClassInfo& classInfo() const override { return staticClassInfo; }

  // Framed and with a background, as a field to write in.
  explicit NSTextField(CGRect frame) : NSControl(frame) {}
  // Outlet besides the control's: "delegate".
  explicit NSTextField(NSCoder& coder) : NSControl(coder) {}
  // Without frame and background, as wide as its text.
  static Ref<NSTextField> labelWithString(std::string_view text);

  // Of the cell, whose class is that of a text field or derived from it. Each asks for a redraw.
  void setTextColor(Ref<NSColor> color);
  Ref<NSColor> textColor() const;
  void setDrawsBackground(bool draws);
  void setBackgroundColor(Ref<NSColor> color);
  void setBezeled(bool isBezeled);
  void setEditable(bool isEditable);
  void setSelectable(bool isSelectable);
  bool isEditable() const;
  bool isSelectable() const;
  void setPlaceholderString(std::string text);

  // While the field is edited its value is the text in the editor.
  Ref<NSObject> objectValue() const override;
  void setObjectValue(Ref<NSObject> value) override;
  void setEnabled(bool isEnabled) override;  // disabling ends the editing
  void viewDidHide() override;               // so does hiding, also of a view above it
  void enablesControlsDidChange() override;  // and so does what disables it from above

  // Not kept alive.
  Ref<NSTextFieldDelegate> delegate() const { return delegate_.lock(); }
  void setDelegate(const Ref<NSTextFieldDelegate>& delegate) { delegate_ = delegate; }

  // The view that edits the field's text now; null when none does. The first operation takes over what was typed, the
  // second one throws it away and ends the editing without notifying anybody; it returns whether there was any.
  virtual Ref<NSText> currentEditor() const;
  virtual void validateEditing();
  virtual bool abortEditing();
  // Begins editing with all of the text selected. Not in a field that is hidden or in no window.
  void selectText(NSObject* sender);

  CGSize intrinsicContentSize() const override;  // one to write in has a height only

  bool acceptsFirstResponder() const override { return isSelectable() && isEnabled(); }
  bool becomeFirstResponder() override;
  CGRect focusRingMaskBounds() const override { return NSZeroRect; }  // the field draws its ring itself, while it is edited
  bool canBecomeKeyView() const override { return isEditable() && NSControl::canBecomeKeyView(); }

  NSView* hitTest(CGPoint point) override;
  bool mouseDownCanMoveWindow() const override { return !isSelectable(); }
  void mouseDown(const Ref<NSEvent>& event) override;
  void mouseDragged(const Ref<NSEvent>& event) override;
  void mouseUp(const Ref<NSEvent>& event) override;
  // Go to the editor, which comes for it.
  void rightMouseDown(const Ref<NSEvent>& event) override;
  void otherMouseDown(const Ref<NSEvent>& event) override;
  void resetCursorRects() override;
  void drawRect(CGRect rect) override;

  // The editor's delegate is the field.
  bool textShouldBeginEditing(NSText& editor) override;
  bool textShouldEndEditing(NSText& editor) override;
  void textDidBeginEditing(const Ref<NSNotification>& notification) override;
  void textDidChange(const Ref<NSNotification>& notification) override;
  void textDidEndEditing(const Ref<NSNotification>& notification) override;
  bool textViewDoCommandBySelector(NSTextView& editor, std::string_view selector) override;

 protected:
  Ref<NSCell> makeCell() override;
  Ref<NSCell> makeCell(NSCoder& coder) override { return make<NSTextFieldCell>(coder); }
  void windowWillChange() override;

 private:
  static const Outlet outlets_[];
  NSTextFieldCell* textCell() const { return dynamic_cast<NSTextFieldCell*>(cell().get()); }
  template <class Change>
  void changeTextCell(Change change);
  void notify(std::string_view name, void (NSTextFieldDelegate::*operation)(const Ref<NSNotification>&));
  Ref<NSText> editorForPress();  // null for a label
  std::string cellText() const { return cell() ? cell()->stringValue() : std::string(); }
  void takeOver(const NSText& editor);

  WeakRef<NSTextFieldDelegate> delegate_;
};

}  // namespace tessaluna::platform
