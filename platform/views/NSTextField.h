// A text on a line or on several. One that is neither editable nor selectable is a label: it passes mouse events on.
#pragma once

#include "platform/cells/NSTextFieldCell.h"
#include "platform/views/NSControl.h"

namespace platform {

class NSTextField : public NSControl {
 public:
  static const ClassInfo staticClassInfo;
  const ClassInfo& classInfo() const override { return staticClassInfo; }

  // Framed and with a background, as a field to write in.
  explicit NSTextField(CGRect frame) : NSControl(frame) {}
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

  // The view that edits the field's text now; absent when none does. The first operation takes over what was typed, the
  // second one throws it away and ends the editing; it is true if there was any.
  virtual Ref<NSView> currentEditor() const { return nullptr; }
  virtual void validateEditing() {}
  virtual bool abortEditing() { return false; }

  void mouseDown(const Ref<NSEvent>& event) override;
  void mouseDragged(const Ref<NSEvent>& event) override;
  void mouseUp(const Ref<NSEvent>& event) override;

 protected:
  Ref<NSCell> makeCell() override;
  Ref<NSCell> makeCell(NSCoder& coder) override { return make<NSTextFieldCell>(coder); }

 private:
  NSTextFieldCell* textCell() const { return dynamic_cast<NSTextFieldCell*>(cell().get()); }
  template <class Change>
  void changeTextCell(Change change);
};

}  // namespace platform
