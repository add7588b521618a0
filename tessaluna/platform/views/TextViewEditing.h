// The third part of a text view: how its text changes by the user's hand. Every change can be undone; what is typed in one
// go is undone in one go. Text that is being composed is marked and underlined until it is taken over.
#pragma once

#include <memory>

#include "tessaluna/platform/events/NSTextInputClient.h"
#include "tessaluna/platform/foundation/NSUndoManager.h"
#include "tessaluna/platform/views/TextViewSelection.h"

namespace tessaluna::platform {

class NSPasteboard;

class TextViewEditing : public TextViewSelection, public NSTextInputClient {
 public:
  using TextViewSelection::TextViewSelection;

  void setString(std::string_view text) override;
  void setDelegate(const Ref<NSTextDelegate>& delegate) override;
  void setEditable(bool isEditable) override;  // what is being composed stays as it is, as if it were typed

  // Of what the user types or pastes. In a field editor ends of lines become blanks.
  void insertText(std::string_view text, NSRange replacementRange) override;
  void insertText(std::string_view text) { insertText(text, noRange); }
  void setMarkedText(std::string_view text, NSRange selectedRange, NSRange replacementRange) override;
  void unmarkText() override;
  bool hasMarkedText() const override { return marked_.location != NSNotFound; }
  NSRange markedRange() const override { return marked_; }
  NSRange selectedRange() const override { return TextViewSelection::selectedRange(); }
  std::u16string text() const override { return textStorage()->text(); }
  bool acceptsTextInput() const override { return isEditable(); }
  CGRect firstRectForCharacterRange(NSRange range) const override;
  std::size_t characterIndexForPoint(CGPoint screenPoint) const override;

  // The selection, or without one what the motion goes over.
  void deleteTo(TextMotion motion);
  void deleteSelection(NSObject* sender);  // delete:
  void copy(NSObject* sender);
  void cut(NSObject* sender);
  void paste(NSObject* sender);  // as plain text
  // Inserts what was selected last with the mouse, here or in another program, at a point of the view.
  void pasteSelectionAt(CGPoint point);

  const Ref<NSUndoManager>& undoManager() const { return undoManager_; }
  void undo(NSObject* sender);
  void redo(NSObject* sender);
  void breakUndoCoalescing() { lastKind_ = EditKind::Other; }

  // Asks the delegate, once in an editing, whether it may begin, and notifies it. False if it may not.
  bool shouldChangeText();
  void didChangeText();

 protected:
  void editingDidEnd();  // the next change begins a new one
  void willTrackMouse() override;
  void didTrackMouse() override;
  void selectionDidChange() override;
  void textStorageDidProcessEditing(NSTextStorage& storage, NSRange range, std::ptrdiff_t changeInLength) override;

 private:
  enum class EditKind { Typing, DeletingBackward, DeletingForward, Other };
  struct Snapshot {
    std::u16string text;
    Selection selection;
  };
  struct UndoStep;
  struct Change {
    NSRange range;
    std::u16string text;
    EditKind kind = EditKind::Other;
  };
  bool change(const Change& change);
  void putSelectionOn(NSPasteboard& pasteboard) const;
  void pasteFrom(const NSPasteboard& pasteboard, NSRange range);
  void replace(NSRange range, std::u16string_view text);
  NSRange replacedBy(NSRange replacementRange) const;
  NSRange withinText(NSRange range) const;
  std::u16string typedText(std::string_view text) const;
  void registerUndo(Snapshot before);
  void bringBack(UndoStep& step);
  void setMarkedRange(NSRange range);
  std::u16string textInMark() const;
  void notifyInputMethod();
  Ref<NSObject> accessibleText() const;

  Ref<NSUndoManager> undoManager_ = make<NSUndoManager>();
  std::weak_ptr<UndoStep> lastUndo_, lastRedo_;
  EditKind lastKind_ = EditKind::Other;
  Selection lastSelection_;  // after the last change; typing elsewhere is another step
  NSRange marked_ = noRange;
  std::u16string markedText_;  // as it was marked, or left by the program's last edit
  std::optional<Snapshot> beforeMarking_;
  bool hasBegun_ = false;
  bool isEditingItself_ = false;  // it says afterwards what is selected
};

}  // namespace tessaluna::platform
