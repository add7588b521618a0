#include "tessaluna/platform/views/NSTextView.h"

#include <utility>

#include "tessaluna/platform/events/NSEvent.h"
#include "tessaluna/platform/events/keyBindings.h"
#include "tessaluna/platform/events/menuKey.h"
#include "tessaluna/platform/foundation/AtEndOfScope.h"
#include "tessaluna/platform/graphics/NSRect.h"
#include "tessaluna/platform/views/textMenu.h"
#include "tessaluna/platform/windows/NSWindow.h"

namespace tessaluna::platform {

namespace {

enum class Effect { Move, Extend, Delete };

template <Effect effect, TextMotion motion>
constexpr Selector command(std::string_view name) {
  return {name, [](NSObject& receiver, NSObject*) {
            auto& text = static_cast<NSTextView&>(receiver);
            switch (effect) {
              case Effect::Move: return text.move(motion);
              case Effect::Extend: return text.moveAndModifySelection(motion);
              case Effect::Delete: return text.deleteTo(motion);
            }
          }};
}

}  // namespace

const Selector NSTextView::selectors_[] = {
    command<Effect::Move, TextMotion::Left>("moveLeft:"),
    command<Effect::Move, TextMotion::Right>("moveRight:"),
    command<Effect::Move, TextMotion::Backward>("moveBackward:"),
    command<Effect::Move, TextMotion::Forward>("moveForward:"),
    command<Effect::Move, TextMotion::Up>("moveUp:"),
    command<Effect::Move, TextMotion::Down>("moveDown:"),
    command<Effect::Move, TextMotion::WordLeft>("moveWordLeft:"),
    command<Effect::Move, TextMotion::WordRight>("moveWordRight:"),
    command<Effect::Move, TextMotion::WordBackward>("moveWordBackward:"),
    command<Effect::Move, TextMotion::WordForward>("moveWordForward:"),
    command<Effect::Move, TextMotion::LineStart>("moveToBeginningOfLine:"),
    command<Effect::Move, TextMotion::LineEnd>("moveToEndOfLine:"),
    command<Effect::Move, TextMotion::LeftEndOfLine>("moveToLeftEndOfLine:"),
    command<Effect::Move, TextMotion::RightEndOfLine>("moveToRightEndOfLine:"),
    command<Effect::Move, TextMotion::DocumentStart>("moveToBeginningOfDocument:"),
    command<Effect::Move, TextMotion::DocumentEnd>("moveToEndOfDocument:"),
    command<Effect::Extend, TextMotion::Left>("moveLeftAndModifySelection:"),
    command<Effect::Extend, TextMotion::Right>("moveRightAndModifySelection:"),
    command<Effect::Extend, TextMotion::Backward>("moveBackwardAndModifySelection:"),
    command<Effect::Extend, TextMotion::Forward>("moveForwardAndModifySelection:"),
    command<Effect::Extend, TextMotion::Up>("moveUpAndModifySelection:"),
    command<Effect::Extend, TextMotion::Down>("moveDownAndModifySelection:"),
    command<Effect::Extend, TextMotion::WordLeft>("moveWordLeftAndModifySelection:"),
    command<Effect::Extend, TextMotion::WordRight>("moveWordRightAndModifySelection:"),
    command<Effect::Extend, TextMotion::WordBackward>("moveWordBackwardAndModifySelection:"),
    command<Effect::Extend, TextMotion::WordForward>("moveWordForwardAndModifySelection:"),
    command<Effect::Extend, TextMotion::LineStart>("moveToBeginningOfLineAndModifySelection:"),
    command<Effect::Extend, TextMotion::LineEnd>("moveToEndOfLineAndModifySelection:"),
    command<Effect::Extend, TextMotion::LeftEndOfLine>("moveToLeftEndOfLineAndModifySelection:"),
    command<Effect::Extend, TextMotion::RightEndOfLine>("moveToRightEndOfLineAndModifySelection:"),
    command<Effect::Extend, TextMotion::DocumentStart>("moveToBeginningOfDocumentAndModifySelection:"),
    command<Effect::Extend, TextMotion::DocumentEnd>("moveToEndOfDocumentAndModifySelection:"),
    command<Effect::Delete, TextMotion::Backward>("deleteBackward:"),
    command<Effect::Delete, TextMotion::Forward>("deleteForward:"),
    command<Effect::Delete, TextMotion::WordBackward>("deleteWordBackward:"),
    command<Effect::Delete, TextMotion::WordForward>("deleteWordForward:"),
    command<Effect::Delete, TextMotion::LineStart>("deleteToBeginningOfLine:"),
    command<Effect::Delete, TextMotion::LineEnd>("deleteToEndOfLine:"),
    action<&NSTextView::selectAll>("selectAll:"),
    action<&NSTextView::deleteSelection>("delete:"),
    action<&NSTextView::copy>("copy:"),
    action<&NSTextView::cut>("cut:"),
    action<&NSTextView::paste>("paste:"),
    action<&NSTextView::undo>("undo:"),
    action<&NSTextView::redo>("redo:"),
    action<&NSTextView::insertNewline>("insertNewline:"),
    action<&NSTextView::insertTab>("insertTab:"),
    action<&NSTextView::insertBacktab>("insertBacktab:"),
};
const ClassInfo NSTextView::staticClassInfo{
    .name = "NSTextView", .base = &NSText::staticClassInfo, .selectors = NSTextView::selectors_};

NSTextView::~NSTextView() { stopObserving(); }

void NSTextView::setDelegate(const Ref<NSTextDelegate>& delegate) {
  TextViewEditing::setDelegate(delegate);
  // Lent again, perhaps by whoever is notified of the last end: an editing of its own.
  if (delegate) isFinishing_ = false;
}

void NSTextView::setFieldEditor(bool isFieldEditor) {
  TextViewEditing::setFieldEditor(isFieldEditor);
  // Its text is where the field draws it, on one line that scrolls.
  textContainer()->setLineFragmentPadding(isFieldEditor ? 0 : 5);
  textContainer()->setMaximumNumberOfLines(isFieldEditor ? 1 : 0);
  setHorizontallyResizable(isFieldEditor);
}

// Keys and commands.

void NSTextView::keyDown(const Ref<NSEvent>& event) {
  const Ref<NSObject> held = shared_from_this();
  // A key that the input method has left ends what was composed.
  unmarkText();
  if (isMenuKey(*event)) {
    const CGRect caret = caretRect();
    popUpTextMenu(*this, {caret.origin.x, CGRectGetMaxY(caret)});
  } else if (const std::string_view command = commandForKey(*event); !command.empty()) {
    if (!performCommand(command)) TextViewEditing::keyDown(event);
  } else if (const std::string_view typed = textOfKey(*event); !typed.empty() && isEditable()) {
    insertText(typed);
  } else {
    TextViewEditing::keyDown(event);
  }
}

void NSTextView::rightMouseDown(const Ref<NSEvent>& event) {
  if (!isSelectable()) {
    if (!isFieldEditor()) TextViewEditing::rightMouseDown(event);
    return;
  }
  willTrackMouse();
  if (!isFieldEditor() && window()) window()->makeFirstResponder(this);
  popUpTextMenu(*this, convertPointFromView(event->locationInWindow(), nullptr));
}

void NSTextView::otherMouseDown(const Ref<NSEvent>& event) {
  constexpr int middle = 2;
  // What a field's editor does not take must not come back to it by way of the field.
  const bool isTaken = event->buttonNumber() == middle && isEditable();
  if (isTaken) pasteSelectionAt(convertPointFromView(event->locationInWindow(), nullptr));
  else if (!isFieldEditor()) TextViewEditing::otherMouseDown(event);
}

void NSTextView::doCommandBySelector(std::string_view selector) { performCommand(selector); }

bool NSTextView::performCommand(std::string_view selector) {
  const Ref<NSObject> held = shared_from_this();
  const Ref<NSTextDelegate> delegate = this->delegate();
  if (delegate && delegate->textViewDoCommandBySelector(*this, selector)) return true;
  return tryToPerform(selector, this);
}

void NSTextView::insertNewline(NSObject*) {
  if (isFieldEditor()) finishEditing(NSTextMovementReturn, Asking::Delegate);
  else insertText("\n");
}

void NSTextView::insertTab(NSObject*) {
  if (isFieldEditor() || !isEditable()) moveToKeyView(NSTextMovementTab);
  else insertText("\t");
}

void NSTextView::insertBacktab(NSObject*) { moveToKeyView(NSTextMovementBacktab); }

void NSTextView::moveToKeyView(NSTextMovement movement) {
  if (!window()) return;
  const Ref<NSWindow> held = refTo(*window());
  const Ref<NSObject> self = shared_from_this();
  wantedMovement_ = movement;
  const AtEndOfScope end([this] { wantedMovement_ = NSTextMovementOther; });
  held->moveKeyView(movement == NSTextMovementTab ? backend::FocusStep::Next : backend::FocusStep::Previous);
}

// First responder and the end of editing.

bool NSTextView::becomeFirstResponder() {
  ++timesFirstResponder_;
  editingDidEnd();
  becameFirstResponder();
  return true;
}

bool NSTextView::resignFirstResponder() {
  const std::size_t times = timesFirstResponder_;
  if (!finishEditing(wantedMovement_, Asking::Delegate)) return false;
  // Unless whoever was notified of the end has lent it again.
  if (times == timesFirstResponder_) resignedFirstResponder();
  return true;
}

void NSTextView::endEditing() { finishEditing(NSTextMovementOther, Asking::Nobody); }

bool NSTextView::finishEditing(NSTextMovement movement, Asking asking) {
  if (isFinishing_) return true;
  const Ref<NSObject> held = shared_from_this();
  const Ref<NSTextDelegate> delegate = this->delegate();
  if (asking == Asking::Delegate && delegate && !delegate->textShouldEndEditing(*this)) return false;
  isFinishing_ = true;
  const AtEndOfScope end([this] {
    movement_ = NSTextMovementOther;
    isFinishing_ = false;
  });
  unmarkText();
  editingDidEnd();
  movement_ = movement;
  const auto notification = make<NSNotification>(std::string(NSTextDidEndEditingNotification), refTo<NSObject>(*this));
  if (delegate) delegate->textDidEndEditing(notification);
  NSNotificationCenter::defaultCenter().postNotification(notification);
  return true;
}

void NSTextView::stopObserving() {
  for (const Ref<NSObject>& observer : observers_) NSNotificationCenter::defaultCenter().removeObserver(observer);
  observers_.clear();
}

void NSTextView::viewDidMoveToWindow() {
  TextViewEditing::viewDidMoveToWindow();
  stopObserving();
  if (window())
    for (const std::string_view name : {NSWindowDidBecomeKeyNotification, NSWindowDidResignKeyNotification})
      observers_.push_back(NSNotificationCenter::defaultCenter().addObserverForName(
          // A window that is still being made is not an object yet; then of all windows.
          name, window()->weak_from_this().lock(), nullptr, [this](const Ref<NSNotification>&) { keyWindowDidChange(); }));
}

void NSTextView::keyWindowDidChange() {
  keyStatusDidChange();
  // The ring around the field says the same.
  if (auto* field = dynamic_cast<NSView*>(delegate().get())) field->setNeedsDisplay(true);
}

}  // namespace tessaluna::platform
