#include "tessaluna/platform/views/TextViewEditing.h"

#include <algorithm>
#include <memory>
#include <utility>

#include "tessaluna/platform/accessibility/NSAccessibility.h"
#include "tessaluna/platform/text/textBoundaries.h"
#include "tessaluna/platform/text/unicode.h"
#include "tessaluna/platform/text/wholeScalars.h"
#include "tessaluna/platform/views/NSControl.h"
#include "tessaluna/platform/windows/NSPasteboard.h"
#include "tessaluna/platform/windows/NSWindow.h"

namespace tessaluna::platform {

void TextViewEditing::setString(std::string_view text) {
  if (hasMarkedText() && window() && window()->nativeWindow()) window()->nativeWindow()->discardMarkedText();
  marked_ = noRange;
  beforeMarking_.reset();
  breakUndoCoalescing();
  std::u16string units = typedText(text);
  // What was undone belongs to the text that goes.
  if (units != textStorage()->text()) undoManager_->removeRedoActions();
  isEditingItself_ = true;
  setWholeText(std::move(units));
  isEditingItself_ = false;
  setSelection({length(), length()});
  notifyInputMethod();
}

void TextViewEditing::notifyInputMethod() {
  if (window() && window()->firstResponder() == this && window()->nativeWindow())
    window()->nativeWindow()->textInputDidChange();
}

void TextViewEditing::setDelegate(const Ref<NSTextDelegate>& delegate) {
  TextViewSelection::setDelegate(delegate);
  // What was typed for another owner is nothing to undo here.
  undoManager_->removeAllActions();
  breakUndoCoalescing();
  hasBegun_ = false;
  NSAccessibilityPostNotification(accessibleText(), NSAccessibilitySelectedTextChangedNotification);
}

void TextViewEditing::setEditable(bool isEditable) {
  if (isEditable == this->isEditable()) return;
  if (!isEditable) unmarkText();
  TextViewSelection::setEditable(isEditable);
  restartCaret();
  notifyInputMethod();
}

// Of a field editor the element is the cell of the field that it is lent to.
Ref<NSObject> TextViewEditing::accessibleText() const {
  if (!isFieldEditor()) return std::const_pointer_cast<NSObject>(shared_from_this());
  const Ref<NSTextDelegate> delegate = this->delegate();
  const auto* field = dynamic_cast<const NSControl*>(delegate.get());
  return field ? field->cell() : nullptr;
}

namespace {

// Where a composition is after an edit that was not its own: what is left of it, or nothing.
NSRange movedByEdit(NSRange marked, NSRange edited, std::ptrdiff_t change) {
  const std::size_t now = edited.location + edited.length, before = now - static_cast<std::size_t>(change);
  const std::size_t end = marked.location + marked.length;
  if (edited.location <= marked.location && before >= end) return noRange;  // nothing of it is left
  const std::size_t start = marked.location >= before            ? marked.location + static_cast<std::size_t>(change)
                            : marked.location <= edited.location ? marked.location
                                                                 : now;
  const bool endMoves = end > before || (end == before && edited.location < end);
  const std::size_t newEnd = endMoves ? end + static_cast<std::size_t>(change) : std::min(end, edited.location);
  return newEnd > start ? NSRange{start, newEnd - start} : noRange;
}

}  // namespace

void TextViewEditing::textStorageDidProcessEditing(NSTextStorage& storage, NSRange range, std::ptrdiff_t change) {
  TextViewSelection::textStorageDidProcessEditing(storage, range, change);
  NSAccessibilityPostNotification(accessibleText(), NSAccessibilityValueChangedNotification);
  if (isEditingItself_) return;
  const bool wasComposing = hasMarkedText();
  // A change of attributes leaves it alone.
  if (wasComposing && (change != 0 || textInMark() != markedText_)) marked_ = movedByEdit(marked_, range, change);
  markedText_ = textInMark();
  if (wasComposing && !hasMarkedText()) {
    beforeMarking_.reset();
    if (window() && window()->nativeWindow()) window()->nativeWindow()->discardMarkedText();
  }
  reportSelection();
}

std::u16string TextViewEditing::typedText(std::string_view text) const {
  std::u16string units = utf16FromUtf8(text);
  if (!isFieldEditor()) return units;
  // A field has one line.
  std::u16string line;
  for (std::size_t i = 0; i < units.size(); ++i) {
    const char16_t unit = units[i];
    if (unit == '\r' && i + 1 < units.size() && units[i + 1] == '\n') continue;
    line += isLineEnd(unit) ? u' ' : unit;
  }
  return line;
}

// Changes.

bool TextViewEditing::shouldChangeText() {
  if (!isEditable()) return false;
  if (hasBegun_) return true;
  const Ref<NSTextDelegate> delegate = this->delegate();
  if (delegate && !delegate->textShouldBeginEditing(*this)) return false;
  hasBegun_ = true;
  const auto notification = make<NSNotification>(std::string(NSTextDidBeginEditingNotification), refTo<NSObject>(*this));
  if (delegate) delegate->textDidBeginEditing(notification);
  NSNotificationCenter::defaultCenter().postNotification(notification);
  return true;
}

void TextViewEditing::didChangeText() {
  notifyInputMethod();
  const auto notification = make<NSNotification>(std::string(NSTextDidChangeNotification), refTo<NSObject>(*this));
  if (const Ref<NSTextDelegate> delegate = this->delegate()) delegate->textDidChange(notification);
  NSNotificationCenter::defaultCenter().postNotification(notification);
}

void TextViewEditing::editingDidEnd() {
  hasBegun_ = false;
  breakUndoCoalescing();
}

void TextViewEditing::replace(NSRange range, std::u16string_view text) {
  NSTextStorage& storage = *textStorage();
  isEditingItself_ = true;
  storage.beginEditing();
  const bool wasEmpty = storage.length() == 0;
  storage.replaceCharactersInRange(range, text);
  if (wasEmpty)
    for (const auto& [key, value] : typingAttributes()) storage.addAttribute(key, value, {0, storage.length()});
  storage.endEditing();
  isEditingItself_ = false;
}

bool TextViewEditing::change(const Change& change) {
  const Ref<NSObject> held = shared_from_this();
  // A command that no key has brought, such as that of a menu.
  unmarkText();
  if (!shouldChangeText()) return false;
  // Whoever was asked may have changed the text.
  const NSRange range = withinText(change.range);
  const bool continuesRun = change.kind != EditKind::Other && change.kind == lastKind_ && selection() == lastSelection_;
  if (!continuesRun) registerUndo({textStorage()->text(), selection()});
  replace(range, change.text);
  const std::size_t caret = range.location + change.text.size();
  setSelection({caret, caret});
  lastKind_ = change.kind;
  lastSelection_ = selection();
  didChangeText();
  return true;
}

NSRange TextViewEditing::replacedBy(NSRange replacementRange) const {
  if (replacementRange.location == NSNotFound) return hasMarkedText() ? marked_ : selectedRange();
  return withinText(replacementRange);
}

NSRange TextViewEditing::withinText(NSRange range) const {
  const std::size_t start = std::min(range.location, length());
  return wholeScalars(textStorage()->text(), {start, std::min(range.length, length() - start)});
}

void TextViewEditing::insertText(std::string_view text, NSRange replacementRange) {
  const Ref<NSObject> held = shared_from_this();
  NSRange range = replacedBy(replacementRange);
  const std::u16string typed = typedText(text);
  if (hasMarkedText()) {
    // One step from before the composition began.
    Snapshot before = *beforeMarking_;
    setMarkedRange(noRange);
    breakUndoCoalescing();
    if (!shouldChangeText()) return;
    range = withinText(range);
    replace(range, typed);
    registerUndo(std::move(before));
    const std::size_t caret = range.location + typed.size();
    setSelection({caret, caret});
    didChangeText();
  } else if (range.length > 0 || !typed.empty()) {
    const EditKind kind = range.length == 0 ? EditKind::Typing : EditKind::Other;
    // What is typed over a selection and then after it is one step.
    if (change({.range = range, .text = typed, .kind = kind})) lastKind_ = EditKind::Typing;
  }
}

void TextViewEditing::deleteTo(TextMotion motion) {
  const NSRange selected = selectedRange();
  if (selected.length > 0) {
    change({.range = selected, .text = {}});
    return;
  }
  std::size_t to = destination(motion, selection().place()).index;
  // Before the blank at which a line wraps nothing else of the line is left, so the blank is deleted.
  const NSRange paragraph = paragraphRangeAt(textStorage()->text(), selected.location);
  const bool isBeforeBlank = selectionAffinity() == NSSelectionAffinityDownstream && to == selected.location &&
                             to < paragraph.location + paragraph.length;
  if (motion == TextMotion::LineEnd && isBeforeBlank) to = destination(TextMotion::Forward, {to}).index;
  const auto [start, end] = std::minmax(selected.location, to);
  if (start == end) return;
  const EditKind kind = motion == TextMotion::Backward  ? EditKind::DeletingBackward
                        : motion == TextMotion::Forward ? EditKind::DeletingForward
                                                        : EditKind::Other;
  change({.range = {start, end - start}, .text = {}, .kind = kind});
}

void TextViewEditing::deleteSelection(NSObject*) {
  if (selectedRange().length > 0) change({.range = selectedRange(), .text = {}});
}

// Composition.

std::u16string TextViewEditing::textInMark() const {
  if (!hasMarkedText()) return {};
  return textStorage()->text().substr(std::min(marked_.location, length()), marked_.length);
}

void TextViewEditing::setMarkedRange(NSRange range) {
  if (hasMarkedText()) {
    const std::size_t start = std::min(marked_.location, length());
    textStorage()->removeAttribute(NSUnderlineStyleAttributeName, {start, std::min(marked_.length, length() - start)});
  }
  marked_ = range;
  markedText_ = textInMark();
  if (hasMarkedText())
    textStorage()->addAttribute(NSUnderlineStyleAttributeName, std::int64_t{NSUnderlineStyleSingle}, marked_);
  else beforeMarking_.reset();
}

void TextViewEditing::setMarkedText(std::string_view text, NSRange selected, NSRange replacementRange) {
  const Ref<NSObject> held = shared_from_this();
  NSRange range = replacedBy(replacementRange);
  const std::u16string composed = typedText(text);
  if (!hasMarkedText() && composed.empty() && range.length == 0) return;
  if (!shouldChangeText()) return;
  range = withinText(range);
  if (!hasMarkedText()) beforeMarking_ = Snapshot{textStorage()->text(), selection()};
  const std::optional<Snapshot> before = beforeMarking_;
  setMarkedRange(noRange);
  beforeMarking_ = before;
  breakUndoCoalescing();
  replace(range, composed);
  if (composed.empty()) {
    // Given up. What the composition stood in place of is gone all the same.
    beforeMarking_.reset();
    if (before->text != textStorage()->text()) registerUndo(*before);
  } else {
    setMarkedRange({range.location, composed.size()});
  }
  const std::size_t start = range.location + std::min(selected.location, composed.size());
  const std::size_t end = std::min(start + selected.length, range.location + composed.size());
  setSelection({start, end});
  didChangeText();
}

void TextViewEditing::unmarkText() {
  if (!hasMarkedText()) return;
  Snapshot before = *beforeMarking_;
  setMarkedRange(noRange);
  registerUndo(std::move(before));
  if (window() && window()->nativeWindow()) window()->nativeWindow()->discardMarkedText();
}

void TextViewEditing::willTrackMouse() {
  unmarkText();
  breakUndoCoalescing();
}

void TextViewEditing::selectionDidChange() {
  notifyInputMethod();
  const auto notification =
      make<NSNotification>(std::string(NSTextViewDidChangeSelectionNotification), refTo<NSObject>(*this));
  if (const Ref<NSTextDelegate> delegate = this->delegate()) delegate->textViewDidChangeSelection(notification);
  NSAccessibilityPostNotification(accessibleText(), NSAccessibilitySelectedTextChangedNotification);
  NSNotificationCenter::defaultCenter().postNotification(notification);
}

CGRect TextViewEditing::firstRectForCharacterRange(NSRange range) const {
  if (!window()) return {};
  const std::vector<CGRect> rects = rectsForRange(range);
  const bool isCaret = range.length == 0 && range.location == selection().head;
  const CGRect rect = isCaret                              ? caretRect()
                      : range.length == 0 || rects.empty() ? caretRectForIndex(range.location)
                                                           : rects.front();
  return window()->convertRectToScreen(convertRectToView(rect, nullptr));
}

std::size_t TextViewEditing::characterIndexForPoint(CGPoint screenPoint) const {
  if (!window()) return NSNotFound;
  return characterIndexForInsertionAtPoint(convertPointFromView(window()->convertPointFromScreen(screenPoint), nullptr));
}

// Undo.

// The text as it was. Where a later step is to be taken back first, only what that one's text does not have is kept: many steps
// in a long text would take many times its memory.
struct TextViewEditing::UndoStep {
  Snapshot before;
  std::weak_ptr<UndoStep> earlier{};
  std::size_t head = 0, tail = 0;  // so much is left out, being as in the later step's text

  void shorten(std::u16string_view later) {
    const std::u16string& text = before.text;
    const std::size_t least = std::min(text.size(), later.size());
    while (head < least && text[head] == later[head]) ++head;
    while (tail < least - head && text[text.size() - 1 - tail] == later[later.size() - 1 - tail]) ++tail;
    before.text = text.substr(head, text.size() - head - tail);
    before.text.shrink_to_fit();
  }
  void complete(std::u16string_view later) {
    before.text.insert(0, later.substr(0, head)).append(later.substr(later.size() - tail));
    head = tail = 0;
  }
};

void TextViewEditing::registerUndo(Snapshot before) {
  std::weak_ptr<UndoStep>& last = undoManager_->isUndoing() ? lastRedo_ : lastUndo_;
  const auto step = std::make_shared<UndoStep>(UndoStep{.before = std::move(before), .earlier = last});
  if (const std::shared_ptr<UndoStep> earlier = last.lock()) earlier->shorten(step->before.text);
  last = step;
  undoManager_->registerUndo([weak = WeakRef<NSObject>(shared_from_this()), step] {
    if (const Ref<NSObject> self = weak.lock()) static_cast<TextViewEditing&>(*self).bringBack(*step);
  });
}

void TextViewEditing::bringBack(UndoStep& step) {
  const Snapshot& snapshot = step.before;
  (undoManager_->isUndoing() ? lastUndo_ : lastRedo_) = step.earlier;
  if (const std::shared_ptr<UndoStep> earlier = step.earlier.lock()) earlier->complete(snapshot.text);
  if (!shouldChangeText()) return;
  registerUndo({textStorage()->text(), selection()});
  isEditingItself_ = true;
  setWholeText(snapshot.text);
  isEditingItself_ = false;
  setSelection(snapshot.selection);
  breakUndoCoalescing();
  didChangeText();
}

void TextViewEditing::undo(NSObject*) {
  unmarkText();
  undoManager_->undo();
}

void TextViewEditing::redo(NSObject*) {
  unmarkText();
  undoManager_->redo();
}

// The clipboard.

void TextViewEditing::putSelectionOn(NSPasteboard& pasteboard) const {
  const NSRange range = selectedRange();
  if (range.length == 0) return;
  const std::u16string selected = textStorage()->text().substr(range.location, range.length);
  pasteboard.setString(utf8FromUtf16(selected), NSPasteboardTypeString);
}

void TextViewEditing::copy(NSObject*) { putSelectionOn(*NSPasteboard::generalPasteboard()); }

void TextViewEditing::didTrackMouse() { putSelectionOn(*NSPasteboard::selectionPasteboard()); }

void TextViewEditing::cut(NSObject* sender) {
  if (!isEditable()) return;
  copy(sender);
  deleteSelection(sender);
}

void TextViewEditing::paste(NSObject*) {
  if (!isEditable()) return;
  unmarkText();
  pasteFrom(*NSPasteboard::generalPasteboard(), selectedRange());
}

void TextViewEditing::pasteFrom(const NSPasteboard& pasteboard, NSRange range) {
  const std::optional<std::string> text = pasteboard.stringForType(NSPasteboardTypeString);
  if (!text) return;
  breakUndoCoalescing();
  change({.range = range, .text = typedText(*text)});
}

void TextViewEditing::pasteSelectionAt(CGPoint point) {
  if (!isEditable()) return;
  unmarkText();
  pasteFrom(*NSPasteboard::selectionPasteboard(), {characterIndexForInsertionAtPoint(point), 0});
}

}  // namespace tessaluna::platform
