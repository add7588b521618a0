// A view with a text in it that can be selected and edited. NSTextView is the one that does it; this is what its users
// need to know of it. As a field editor it lends itself to the text fields of a window, one after the other.
#pragma once

#include <string>
#include <string_view>

#include "tessaluna/platform/foundation/NSNotificationCenter.h"
#include "tessaluna/platform/graphics/Forward.h"
#include "tessaluna/platform/text/Forward.h"
#include "tessaluna/platform/text/NSParagraphStyle.h"
#include "tessaluna/platform/views/NSView.h"

namespace tessaluna::platform {

inline constexpr std::string_view NSTextDidBeginEditingNotification = "NSTextDidBeginEditingNotification";
inline constexpr std::string_view NSTextDidChangeNotification = "NSTextDidChangeNotification";
inline constexpr std::string_view NSTextDidEndEditingNotification = "NSTextDidEndEditingNotification";
inline constexpr std::string_view NSTextViewDidChangeSelectionNotification = "NSTextViewDidChangeSelectionNotification";

// What ended the editing in a field editor.
enum NSTextMovement {
  NSTextMovementOther = 0,
  NSTextMovementReturn = 0x10,
  NSTextMovementTab = 0x11,
  NSTextMovementBacktab = 0x12,
};

// Notified of a text's editing before the observers of the notifications are, whose object is the text.
class NSTextDelegate {
 public:
  virtual ~NSTextDelegate() = default;
  virtual bool textShouldBeginEditing(NSText&) { return true; }  // before the first change
  virtual bool textShouldEndEditing(NSText&) { return true; }    // before the keys go elsewhere; false refuses
  virtual void textDidBeginEditing(const Ref<NSNotification>&) {}
  virtual void textDidChange(const Ref<NSNotification>&) {}  // by the user
  virtual void textDidEndEditing(const Ref<NSNotification>&) {}
  virtual void textViewDidChangeSelection(const Ref<NSNotification>&) {}
  // textView:doCommandBySelector: is offered every command first. True if it was done here.
  virtual bool textViewDoCommandBySelector(NSTextView&, std::string_view /*selector*/) { return false; }
};

class NSText : public NSView {
 public:
  static const ClassInfo staticClassInfo;
  const ClassInfo& classInfo() const override { return staticClassInfo; }

  using NSView::NSView;

  // UTF-8; ranges count UTF-16 units, and are cut to the text. Setting does not notify the delegate and puts the caret at
  // the end.
  virtual std::string string() const = 0;
  virtual void setString(std::string_view text) = 0;
  virtual NSRange selectedRange() const = 0;
  virtual void setSelectedRange(NSRange range) = 0;

  // Of the whole text.
  virtual Ref<NSFont> font() const = 0;
  virtual void setFont(Ref<NSFont> font) = 0;
  virtual void setTextColor(Ref<NSColor> color) = 0;
  // Null: the system's. Any other background serves windows at rest too.
  void setInsertionPointColor(Ref<NSColor> color);
  void setSelectedTextBackgroundColor(Ref<NSColor> color);
  virtual void setAlignment(NSTextAlignment alignment) = 0;

  bool isEditable() const { return isEditable_; }
  virtual void setEditable(bool isEditable) { isEditable_ = isEditable; }
  bool isSelectable() const { return isSelectable_ || isEditable_; }
  // What cannot be selected cannot be edited either.
  void setSelectable(bool isSelectable);
  // A field editor has one line; Return, Tab and Shift-Tab end its editing.
  bool isFieldEditor() const { return isFieldEditor_; }
  virtual void setFieldEditor(bool isFieldEditor) { isFieldEditor_ = isFieldEditor; }
  // Not kept alive.
  Ref<NSTextDelegate> delegate() const { return delegate_.lock(); }
  virtual void setDelegate(const Ref<NSTextDelegate>& delegate) { delegate_ = delegate; }

  // Ends the editing in a field editor: the delegate is notified, but not asked, and takes over the text.
  virtual void endEditing() = 0;
  // What ended the editing, while the delegate is notified of it.
  NSTextMovement movement() const { return movement_; }

  bool isFlipped() const override { return true; }

 protected:
  Ref<NSColor> insertionPointColor() const;
  Ref<NSColor> selectedTextBackgroundColor(bool hasKeys) const;

  NSTextMovement movement_ = NSTextMovementOther;

 private:
  WeakRef<NSTextDelegate> delegate_;
  Ref<NSColor> insertionPointColor_, selectedTextBackgroundColor_;
  bool isEditable_ = true, isSelectable_ = true, isFieldEditor_ = false;
};

}  // namespace tessaluna::platform
