// The look of a text field or a label: a text on its background, with or without a frame around it.
#pragma once

#include "tessaluna/platform/cells/NSCell.h"

namespace tessaluna::platform {

class NSTextFieldCell : public NSCell {
 public:
  static const ClassInfo staticClassInfo;
  const ClassInfo& classInfo() const override { return staticClassInfo; }

  NSTextFieldCell() = default;
  explicit NSTextFieldCell(std::string text) : NSCell(std::move(text)) {}
  // Keys besides the cell's: "bezeled", "editable", "selectable", "drawsBackground", "placeholder".
  explicit NSTextFieldCell(NSCoder& coder);
  Ref<NSCell> copy() const override { return make<NSTextFieldCell>(*this); }  // a copy is not edited

  // Plain stores.
  const Ref<NSColor>& textColor() const { return textColor_; }  // null: the system's
  void setTextColor(Ref<NSColor> color) { textColor_ = std::move(color); }
  bool drawsBackground() const { return drawsBackground_; }
  void setDrawsBackground(bool draws) { drawsBackground_ = draws; }
  const Ref<NSColor>& backgroundColor() const { return backgroundColor_; }  // null: the system's for texts
  void setBackgroundColor(Ref<NSColor> color) { backgroundColor_ = std::move(color); }
  bool isEditable() const { return isEditable_; }
  void setEditable(bool isEditable) { isEditable_ = isEditable; }
  bool isSelectable() const { return isSelectable_ || isEditable_; }
  // What cannot be selected cannot be edited either.
  void setSelectable(bool isSelectable);
  // An addition: whether a text that is not editable is placed as an editable one is, in the middle and a little further from
  // the sides; off initially. A table's rows turn it on, so that all texts of a row are on one line.
  bool standsAsIfEditable() const { return standsAsIfEditable_; }
  void setStandsAsIfEditable(bool stands) { standsAsIfEditable_ = stands; }
  const std::string& placeholderString() const { return placeholder_; }
  void setPlaceholderString(std::string text) { placeholder_ = std::move(text); }

  CGSize cellSize() const override;
  // Where the text is within a frame, in the frame's coordinates: it is drawn and edited in the first. The second is for a
  // class to say where its title is; nothing here asks for it.
  virtual CGRect drawingRectForBounds(CGRect bounds) const;
  virtual CGRect titleRectForBounds(CGRect bounds) const { return drawingRectForBounds(bounds); }

  // Puts the editor into the view, at drawingRectForBounds of the frame, with the cell's text, and gives it the keys: with
  // a part of the text selected, or with the press that the event is done by the editor. While it is there the cell draws
  // no text.
  virtual void selectWithFrame(CGRect frame, NSView& inView, const Ref<NSText>& editor, const Ref<NSTextDelegate>& delegate,
                               std::size_t start, std::size_t length);
  virtual void editWithFrame(CGRect frame, NSView& inView, const Ref<NSText>& editor, const Ref<NSTextDelegate>& delegate,
                             const Ref<NSEvent>& event);
  // Makes the editor's text look like the cell's. Called before the text is set.
  virtual Ref<NSText> setUpFieldEditorAttributes(const Ref<NSText>& editor);
  // Takes the editor out again; its text is not taken over.
  virtual void endEditing(const Ref<NSText>& editor);

  void drawWithFrame(CGRect frame, NSView& view) override;
  void drawInteriorWithFrame(CGRect frame, NSView& view) override;

  // The value of one that is editable can be set, which types it into the field, and while it is edited the selected range. A
  // cell that is not edited has no selection. The value is what is on screen: while it is edited, the text in the editor.
  bool isAccessibilityElement() const override { return true; }
  std::string accessibilityRole() const override;
  AccessibilityValue accessibilityValue() const override;
  AccessibilityValue accessibilityAttributeValue(std::string_view attribute) const override;
  AccessibilityValue accessibilityAttributeValueForParameter(std::string_view attribute,
                                                             const AccessibilityValue& parameter) const override;
  bool accessibilityIsAttributeSettable(std::string_view attribute) const override;
  void accessibilitySetValue(const AccessibilityValue& value, std::string_view forAttribute) override;

 protected:
  // Where a text that is not edited is drawn within a frame, for a class that draws it elsewhere than the stock cell.
  virtual CGRect drawnTextRectForBounds(CGRect bounds) const { return drawingRectForBounds(bounds); }
  Ref<NSColor> plainTextColor() const override;
  virtual Ref<NSColor> placeholderColor() const;

 private:
  Ref<NSText> editor() const;  // null while the cell is not edited
  NSAttributes attributesOfText() const;
  void placeEditor(CGRect frame, NSView& view, const Ref<NSText>& editor, const Ref<NSTextDelegate>& delegate);
  CGFloat borderMargin() const;
  CGFloat sideMargin() const;
  CGFloat heightOfText(CGFloat width) const;

  Uncopied<WeakRef<NSText>> editor_;
  Ref<NSColor> textColor_, backgroundColor_;
  std::string placeholder_;
  bool drawsBackground_ = false, isEditable_ = false, isSelectable_ = false, standsAsIfEditable_ = false;
};

}  // namespace tessaluna::platform
