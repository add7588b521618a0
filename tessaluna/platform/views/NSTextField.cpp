#include "tessaluna/platform/views/NSTextField.h"

#include "tessaluna/platform/events/NSCursor.h"
#include "tessaluna/platform/events/NSEvent.h"
#include "tessaluna/platform/events/NSTextInputClient.h"
#include "tessaluna/platform/foundation/NSString.h"
#include "tessaluna/platform/foundation/memberTables.h"
#include "tessaluna/platform/graphics/NSBezierPath.h"
#include "tessaluna/platform/graphics/NSColor.h"
#include "tessaluna/platform/interface_files/archivedLooks.h"
#include "tessaluna/platform/views/KeyboardWhileHidden.h"
#include "tessaluna/platform/windows/NSApplication.h"
#include "tessaluna/platform/windows/NSWindow.h"
#include "tessaluna/platform/windows/WindowInput.h"

namespace tessaluna::platform {

const Outlet NSTextField::outlets_[] = {outlet<&NSTextField::setDelegate>("delegate")};

namespace {

// While the field is edited, what the user may do with its text is what the field says now.
void letEditorFollow(NSTextField& field) {
  const Ref<NSText> editor = field.currentEditor();
  if (!editor) return;
  if (!field.isSelectable()) return field.window()->endEditingFor(&field);
  editor->setEditable(field.isEditable());
  editor->setSelectable(true);
}

constexpr Property textFieldProperties[] = {property<&NSTextField::setTextColor, "textColor">(),
                                            property<&NSTextField::setDrawsBackground, "drawsBackground">(),
                                            property<&NSTextField::setBackgroundColor, "backgroundColor">(),
                                            property<&NSTextField::setBezeled, "bezeled">(),
                                            property<&NSTextField::setEditable, "editable">(),
                                            property<&NSTextField::setSelectable, "selectable">(),
                                            property<&NSTextField::setPlaceholderString, "placeholderString">()};

}  // namespace

const ClassInfo NSTextField::staticClassInfo{.name = "NSTextField",
                                             .base = &NSControl::staticClassInfo,
                                             .outlets = NSTextField::outlets_,
                                             .properties = textFieldProperties};

Ref<NSCell> NSTextField::makeCell() {
  const auto cell = make<NSTextFieldCell>();
  cell->setBezeled(true);
  cell->setDrawsBackground(true);
  cell->setEditable(true);
  cell->setLineBreakMode(NSLineBreakByClipping);  // as it is edited: on one line
  return cell;
}

Ref<NSTextField> NSTextField::labelWithString(std::string_view text) {
  const auto label = make<NSTextField>(CGRect{});
  label->setBezeled(false);
  label->setDrawsBackground(false);
  label->setEditable(false);
  label->setLineBreakMode(NSLineBreakByWordWrapping);
  label->setStringValue(text);
  label->setFrameSize(label->intrinsicContentSize());
  return label;
}

template <class Change>
void NSTextField::changeTextCell(Change change) {
  NSTextFieldCell* cell = textCell();
  if (!cell) return;
  change(*cell);
  cellDidChange();
}

void NSTextField::setTextColor(Ref<NSColor> color) {
  changeTextCell([&](NSTextFieldCell& cell) { cell.setTextColor(std::move(color)); });
  // Not the color itself: what the text shows in is the cell's to say.
  if (const Ref<NSText> editor = currentEditor(); editor && textCell()) textCell()->setUpFieldEditorAttributes(editor);
}
Ref<NSColor> NSTextField::textColor() const { return textCell() ? textCell()->textColor() : nullptr; }
void NSTextField::setDrawsBackground(bool draws) {
  changeTextCell([&](NSTextFieldCell& cell) { cell.setDrawsBackground(draws); });
}
void NSTextField::setBackgroundColor(Ref<NSColor> color) {
  changeTextCell([&](NSTextFieldCell& cell) { cell.setBackgroundColor(std::move(color)); });
}
void NSTextField::setBezeled(bool isBezeled) {
  changeTextCell([&](NSTextFieldCell& cell) { cell.setBezeled(isBezeled); });
}
void NSTextField::setEditable(bool isEditable) {
  changeTextCell([&](NSTextFieldCell& cell) { cell.setEditable(isEditable); });
  letEditorFollow(*this);
}
void NSTextField::setSelectable(bool isSelectable) {
  changeTextCell([&](NSTextFieldCell& cell) { cell.setSelectable(isSelectable); });
  letEditorFollow(*this);
}
bool NSTextField::isEditable() const { return textCell() && textCell()->isEditable(); }
bool NSTextField::isSelectable() const { return textCell() && textCell()->isSelectable(); }
void NSTextField::setPlaceholderString(std::string text) {
  changeTextCell([&](NSTextFieldCell& cell) { cell.setPlaceholderString(std::move(text)); });
}

CGSize NSTextField::intrinsicContentSize() const {
  const CGSize size = NSControl::intrinsicContentSize();
  return {isEditable() ? noIntrinsicMetric : size.width, size.height};
}

// Editing.

Ref<NSObject> NSTextField::objectValue() const {
  const Ref<NSText> editor = currentEditor();
  return editor ? make<NSString>(editor->string()) : NSControl::objectValue();
}

void NSTextField::setObjectValue(Ref<NSObject> value) {
  if (const Ref<NSText> editor = currentEditor()) editor->setString(textOf(value.get()));
  NSControl::setObjectValue(std::move(value));
}

void NSTextField::setEnabled(bool isEnabled) {
  if (!isEnabled && currentEditor()) window()->endEditingFor(this);
  NSControl::setEnabled(isEnabled);
}

void NSTextField::viewDidHide() {
  if (currentEditor()) window()->endEditingFor(this);
  NSControl::viewDidHide();
}

void NSTextField::enablesControlsDidChange() {
  if (!isEnabled() && currentEditor()) window()->endEditingFor(this);
  NSControl::enablesControlsDidChange();
}

void NSTextField::windowWillChange() {
  if (currentEditor()) window()->endEditingFor(this);
  NSControl::windowWillChange();
}

Ref<NSText> NSTextField::currentEditor() const {
  const Ref<NSText> editor = window() ? window()->fieldEditor(false, nullptr) : nullptr;
  return editor && editor->delegate().get() == this ? editor : nullptr;
}

void NSTextField::takeOver(const NSText& editor) {
  // Attributes of a text that was not changed stay.
  if (editor.string() != cellText()) NSControl::setObjectValue(make<NSString>(editor.string()));
}

void NSTextField::validateEditing() {
  if (const Ref<NSText> editor = currentEditor()) takeOver(*editor);
}

bool NSTextField::abortEditing() {
  const Ref<NSText> editor = currentEditor();
  if (!editor || !textCell()) return false;
  const Ref<NSWindow> held = refTo(*window());
  textCell()->endEditing(editor);
  held->makeFirstResponder(nullptr);
  return true;
}

void NSTextField::selectText(NSObject*) {
  if (!window() || !acceptsFirstResponder() || isHiddenFromKeyboard(*this)) return;
  if (const Ref<NSText> editor = currentEditor()) editor->setSelectedRange({0, NSNotFound});
  else window()->makeFirstResponder(this);
}

bool NSTextField::becomeFirstResponder() {
  if (!textCell() || !window() || isHiddenFromKeyboard(*this)) return false;
  // It may still be lent to somebody who has lost the keys without a word.
  window()->endEditingFor(nullptr);
  textCell()->selectWithFrame(bounds(), *this, window()->fieldEditor(true, this), refTo(*this), 0, NSNotFound);
  return true;
}

void NSTextField::notify(std::string_view name, void (NSTextFieldDelegate::*operation)(const Ref<NSNotification>&)) {
  const auto notification = make<NSNotification>(std::string(name), refTo<NSObject>(*this));
  if (const Ref<NSTextFieldDelegate> delegate = delegate_.lock()) (delegate.get()->*operation)(notification);
  NSNotificationCenter::defaultCenter().postNotification(notification);
}

bool NSTextField::textShouldBeginEditing(NSText& editor) {
  const Ref<NSTextFieldDelegate> delegate = delegate_.lock();
  return !delegate || delegate->controlTextShouldBeginEditing(*this, editor);
}

bool NSTextField::textShouldEndEditing(NSText& editor) {
  const Ref<NSTextFieldDelegate> delegate = delegate_.lock();
  return !delegate || delegate->controlTextShouldEndEditing(*this, editor);
}

void NSTextField::textDidBeginEditing(const Ref<NSNotification>&) {
  notify(NSControlTextDidBeginEditingNotification, &NSTextFieldDelegate::controlTextDidBeginEditing);
}

void NSTextField::textDidChange(const Ref<NSNotification>&) {
  // A placeholder may reach beyond the editor, as its ellipsis does in a very narrow field.
  if (textCell() && !textCell()->placeholderString().empty()) setNeedsDisplay(true);
  notify(NSControlTextDidChangeNotification, &NSTextFieldDelegate::controlTextDidChange);
}

void NSTextField::textDidEndEditing(const Ref<NSNotification>&) {
  const Ref<NSText> editor = currentEditor();
  if (!editor || !textCell()) return;
  const Ref<NSObject> self = shared_from_this();
  const Ref<NSWindow> held = refTo(*window());
  const bool isReturn = editor->movement() == NSTextMovementReturn;
  takeOver(*editor);
  textCell()->endEditing(editor);
  notify(NSControlTextDidEndEditingNotification, &NSTextFieldDelegate::controlTextDidEndEditing);
  if (!isReturn) return;
  // A Return that nobody performs is the window's button's that has it as its key, or else left to what is around the window, as
  // the default button of a dialog.
  const Ref<NSView> content = held->contentView();
  const Ref<NSEvent> key = NSApp ? NSApp->currentEvent() : nullptr;
  const auto pressesButton = [&] {
    return content && key && key->type() == NSEventType::KeyDown && content->performKeyEquivalent(key);
  };
  if (!sendActionTo(action(), target()) && !pressesButton()) held->windowClient().input().eventWasNotTaken();
  // The keys stay here, unless the action took them elsewhere or the field away.
  const bool isThere = window() == held.get() && !isHiddenOrHasHiddenAncestor();
  if (isThere && held->firstResponder() == held.get()) selectText(nullptr);
}

bool NSTextField::textViewDoCommandBySelector(NSTextView& editor, std::string_view selector) {
  const Ref<NSTextFieldDelegate> delegate = delegate_.lock();
  return delegate && delegate->controlTextViewDoCommandBySelector(*this, editor, selector);
}

// The pointer.

NSView* NSTextField::hitTest(CGPoint point) {
  NSView* hit = NSControl::hitTest(point);
  // A click beside the text, on the frame, is one into the text.
  const Ref<NSText> editor = hit == this ? currentEditor() : nullptr;
  return editor ? editor.get() : hit;
}

// A label is not a control to the pointer: what is under it is. A first click has made the field the first responder, so
// that there is an editor for it to continue in.
void NSTextField::mouseDown(const Ref<NSEvent>& event) {
  if (!isSelectable()) return NSView::mouseDown(event);
  if (const Ref<NSText> editor = currentEditor()) editor->mouseDown(event);
}
void NSTextField::mouseDragged(const Ref<NSEvent>& event) {
  if (!isSelectable()) return NSView::mouseDragged(event);
  if (const Ref<NSText> editor = currentEditor()) editor->mouseDragged(event);
}
void NSTextField::mouseUp(const Ref<NSEvent>& event) {
  if (!isSelectable()) return NSView::mouseUp(event);
  if (const Ref<NSText> editor = currentEditor()) editor->mouseUp(event);
}

Ref<NSText> NSTextField::editorForPress() {
  if (!acceptsFirstResponder() || !window()) return nullptr;
  if (!currentEditor()) window()->makeFirstResponder(this);
  return currentEditor();
}
void NSTextField::rightMouseDown(const Ref<NSEvent>& event) {
  if (const Ref<NSText> editor = editorForPress()) editor->rightMouseDown(event);
  else NSView::rightMouseDown(event);
}
void NSTextField::otherMouseDown(const Ref<NSEvent>& event) {
  if (const Ref<NSText> editor = editorForPress()) editor->otherMouseDown(event);
  else NSView::otherMouseDown(event);
}

void NSTextField::resetCursorRects() {
  NSControl::resetCursorRects();
  if (acceptsFirstResponder()) addCursorRect(bounds(), NSCursor::IBeamCursor());
}

void NSTextField::drawRect(CGRect rect) {
  NSControl::drawRect(rect);
  const bool hasRing = isEditable() && focusRingType() != NSFocusRingTypeNone;
  if (!hasRing || !currentEditor() || !window()->isKeyWindow()) return;
  // The ring of the focus, inside of the view's edge.
  constexpr CGFloat width = 2, radius = 3;
  const auto ring = NSBezierPath::bezierPathWithRoundedRect(NSInsetRect(bounds(), width / 2, width / 2), radius, radius);
  ring->setLineWidth(width);
  NSColor::keyboardFocusIndicatorColor()->setStroke();
  ring->stroke();
}

}  // namespace tessaluna::platform
