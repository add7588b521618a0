#include "tessaluna/platform/views/TextViewSelection.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "tessaluna/platform/backend/Backend.h"
#include "tessaluna/platform/events/NSCursor.h"
#include "tessaluna/platform/events/NSEvent.h"
#include "tessaluna/platform/graphics/NSColor.h"
#include "tessaluna/platform/graphics/NSRect.h"
#include "tessaluna/platform/text/textBoundaries.h"
#include "tessaluna/platform/text/wholeScalars.h"
#include "tessaluna/platform/time/durations.h"
#include "tessaluna/platform/windows/NSWindow.h"

namespace tessaluna::platform {

NSRange TextViewSelection::selectedRange() const {
  const auto [start, end] = std::minmax(selection_.anchor, selection_.head);
  return {start, end - start};
}

void TextViewSelection::setSelectedRange(NSRange range) {
  const std::size_t start = std::min(range.location, length());
  const NSRange whole = wholeScalars(textStorage()->text(), {start, std::min(range.length, length() - start)});
  setSelection({whole.location, whole.location + whole.length});
}

void TextViewSelection::setSelection(Selection wanted) {
  wanted = {std::min(wanted.anchor, length()), std::min(wanted.head, length()), wanted.affinity};
  selection_ = wanted;
  column_.reset();
  setNeedsDisplay(true);
  restartCaret();
  scrollRectToVisible(caretRect());
  reportSelection();
}

void TextViewSelection::reportSelection() {
  if (std::exchange(reported_, selection_) != selection_) selectionDidChange();
}

void TextViewSelection::textStorageDidProcessEditing(NSTextStorage& storage, NSRange range, std::ptrdiff_t change) {
  TextViewLayout::textStorageDidProcessEditing(storage, range, change);
  // Whoever edits says where the caret is to be. Until then it stays before the character that it is before, or at the end of
  // what is new if that character has gone.
  const std::size_t end = range.location + range.length, earlierEnd = end - static_cast<std::size_t>(change);
  const auto moved = [&](std::size_t index) {
    if (index >= earlierEnd) return std::min(index + static_cast<std::size_t>(change), length());
    return std::min(index, end);
  };
  selection_ = {moved(selection_.anchor), moved(selection_.head)};
}

void TextViewSelection::scrollRangeToVisible(NSRange range) {
  CGRect area = caretRectForIndex(range.location);
  for (const CGRect& rect : rectsForRange(range)) area = NSUnionRect(area, rect);
  scrollRectToVisible(area);
}

bool TextViewSelection::hasKeys() const { return isFirstResponder_ && window() && window()->isKeyWindow(); }

void TextViewSelection::becameFirstResponder() {
  isFirstResponder_ = true;
  keyStatusDidChange();
}

void TextViewSelection::resignedFirstResponder() {
  isFirstResponder_ = false;
  nextScroll_ = nullptr;
  keyStatusDidChange();
}

void TextViewSelection::keyStatusDidChange() {
  setNeedsDisplay(true);
  restartCaret();
}

void TextViewSelection::restartCaret() {
  if (hasKeys() && isEditable() && selection_.anchor == selection_.head) blink_.start();
  else blink_.stop();
}

// Motions.

namespace {

bool isBlank(char16_t unit) { return unit == ' ' || unit == '\t'; }

}  // namespace

CaretPlace TextViewSelection::lineAbove(CaretPlace from) const {
  const CGRect caret = caretRectForPlace(from);
  if (caret.origin.y <= caretRectForIndex(0).origin.y) return {0};
  return caretPlaceAtPoint({column_.value_or(caret.origin.x), caret.origin.y - 1});
}

CaretPlace TextViewSelection::lineBelow(CaretPlace from) const {
  const CGRect caret = caretRectForPlace(from);
  if (caret.origin.y >= caretRectForIndex(length()).origin.y) return {length()};
  return caretPlaceAtPoint({column_.value_or(caret.origin.x), CGRectGetMaxY(caret) + 1});
}

CaretPlace TextViewSelection::destination(TextMotion motion, CaretPlace from) const {
  const std::u16string& text = textStorage()->text();
  const auto isTurned = [&] {
    const NSRange paragraph = paragraphRangeAt(text, from.index);
    return isRightToLeft(std::u16string_view(text).substr(paragraph.location, paragraph.length));
  };
  switch (motion) {
    case TextMotion::Left: return destination(isTurned() ? TextMotion::Forward : TextMotion::Backward, from);
    case TextMotion::Right: return destination(isTurned() ? TextMotion::Backward : TextMotion::Forward, from);
    case TextMotion::WordLeft: return destination(isTurned() ? TextMotion::WordForward : TextMotion::WordBackward, from);
    case TextMotion::WordRight: return destination(isTurned() ? TextMotion::WordBackward : TextMotion::WordForward, from);
    case TextMotion::LeftEndOfLine: return destination(isTurned() ? TextMotion::LineEnd : TextMotion::LineStart, from);
    case TextMotion::RightEndOfLine: return destination(isTurned() ? TextMotion::LineStart : TextMotion::LineEnd, from);
    case TextMotion::Backward: return {characterBorderBefore(text, from.index)};
    case TextMotion::Forward: return {characterBorderAfter(text, from.index)};
    case TextMotion::WordBackward: return {wordStartBefore(text, from.index)};
    case TextMotion::WordForward: return {wordEndAfter(text, from.index)};
    case TextMotion::LineStart: return {layoutManager()->layout().lineOf(from).start};
    case TextMotion::LineEnd: {
      const TextLayout::Line& line = layoutManager()->layout().lineOf(from);
      const NSRange paragraph = paragraphRangeAt(text, from.index);
      const std::size_t end = line.start + line.length, paragraphEnd = paragraph.location + paragraph.length;
      if (end >= paragraphEnd) return {paragraphEnd};
      // The blank at which a line wraps does not show: the caret is before it.
      if (isBlank(text[end - 1])) return {end - 1};
      return {end, NSSelectionAffinityUpstream};
    }
    case TextMotion::DocumentStart: return {0};
    case TextMotion::DocumentEnd: return {text.size()};
    case TextMotion::Up: return lineAbove(from);
    case TextMotion::Down: return lineBelow(from);
  }
  unreachable();
}

void TextViewSelection::move(TextMotion motion) {
  const NSRange selected = selectedRange();
  const std::size_t start = selected.location, end = start + selected.length;
  CaretPlace to = destination(motion, selection_.place());
  if (selected.length > 0) {
    // A step to a side only gives up the selection; anything longer continues from the end on its side.
    switch (motion) {
      case TextMotion::Left:
      case TextMotion::Right:
      case TextMotion::Backward:
      case TextMotion::Forward: to = {to.index < selection_.head || to.index == 0 ? start : end}; break;
      case TextMotion::Up:
        if (selection_.head != start) to = destination(motion, {start});
        break;
      case TextMotion::Down:
        if (selection_.head != end) to = destination(motion, {end});
        break;
      default: break;
    }
  }
  const bool isVertical = motion == TextMotion::Up || motion == TextMotion::Down;
  const CGFloat column = column_.value_or(caretRect().origin.x);
  setSelection({to.index, to.index, to.affinity});
  if (isVertical) column_ = column;
}

void TextViewSelection::moveAndModifySelection(TextMotion motion) {
  const bool isVertical = motion == TextMotion::Up || motion == TextMotion::Down;
  const CGFloat column = column_.value_or(caretRect().origin.x);
  const CaretPlace to = destination(motion, selection_.place());
  setSelection({selection_.anchor, to.index, to.affinity});
  if (isVertical) column_ = column;
}

void TextViewSelection::selectAll(NSObject*) {
  if (isSelectable()) setSelection({0, length()});
}

// The mouse.

NSRange TextViewSelection::stepAt(CGPoint point) const {
  const std::u16string& text = textStorage()->text();
  switch (step_) {
    case Step::Character: return {characterIndexForInsertionAtPoint(point), 0};
    case Step::Word: {
      const CGPoint origin = textOrigin();
      return wordRangeAt(text, layoutManager()->characterIndexForPoint({point.x - origin.x, point.y - origin.y},
                                                                       *textContainer(), nullptr));
    }
    case Step::Paragraph:
      if (isFieldEditor()) return {0, length()};
      return paragraphRangeAt(text, characterIndexForInsertionAtPoint(point));
  }
  unreachable();
}

// The head is on the pointer's line, if that is where the pointer is.
void TextViewSelection::select(std::size_t anchor, std::size_t head, CGPoint pointer) {
  const CaretPlace place = caretPlaceAtPoint(pointer);
  setSelection({anchor, head, place.index == head ? place.affinity : NSSelectionAffinityDownstream});
}

// The field forwards its events to its editor, so what the editor does not take must not return to the field.
void TextViewSelection::mouseDown(const Ref<NSEvent>& event) {
  if (!isSelectable()) {
    if (!isFieldEditor()) NSText::mouseDown(event);
    return;
  }
  willTrackMouse();
  const CGPoint point = convertPointFromView(event->locationInWindow(), nullptr);
  isPressed_ = true;
  step_ = event->clickCount() >= 3 ? Step::Paragraph : event->clickCount() == 2 ? Step::Word : Step::Character;
  const NSRange hit = stepAt(point);
  if (event->modifierFlags() & NSEventModifierFlagShift) {
    pressed_ = {selection_.anchor, 0};
    select(selection_.anchor, hit.location, point);
  } else {
    pressed_ = hit;
    select(hit.location, hit.location + hit.length, point);
  }
}

void TextViewSelection::mouseDragged(const Ref<NSEvent>& event) {
  if (!isPressed_) {
    if (!isFieldEditor()) NSText::mouseDragged(event);
    return;
  }
  dragTo(event->locationInWindow());
  continueScrollingAfterDragTo(event->locationInWindow());
}

void TextViewSelection::continueScrollingAfterDragTo(CGPoint location) {
  nextScroll_ = nullptr;
  backend::Backend* backend = backend::Backend::current();
  if (!backend || NSPointInRect(convertPointFromView(location, nullptr), visibleRect())) return;
  nextScroll_ = backend->timer(textScrollPeriod, [this, location] {
    if (!isPressed_ || !window()) return;
    const Ref<NSObject> held = shared_from_this();
    const Selection before = selection_;
    dragTo(location);
    // At the end of the text there is nothing to scroll to.
    if (selection_ != before) continueScrollingAfterDragTo(location);
  });
}

void TextViewSelection::dragTo(CGPoint location) {
  const CGPoint point = convertPointFromView(location, nullptr);
  const NSRange hit = stepAt(point);
  // What was pressed stays selected, on whichever side of it the pointer is.
  const std::size_t end = pressed_.location + pressed_.length;
  if (hit.location < pressed_.location) select(end, hit.location, point);
  else select(pressed_.location, std::max(end, hit.location + hit.length), point);
}

void TextViewSelection::mouseUp(const Ref<NSEvent>& event) {
  nextScroll_ = nullptr;
  if (std::exchange(isPressed_, false)) didTrackMouse();
  else if (!isFieldEditor()) NSText::mouseUp(event);
}

void TextViewSelection::resetCursorRects() {
  if (isSelectable()) addCursorRect(bounds(), NSCursor::IBeamCursor());
}

// The look.

namespace {

NSRange commonRange(NSRange a, NSRange b) {
  const std::size_t start = std::max(a.location, b.location);
  const std::size_t end = std::min(a.location + a.length, b.location + b.length);
  return {start, end > start ? end - start : 0};
}

// As many whole device pixels wide as the rectangle has, at least one, from the nearest ones to its edges.
CGRect onDevicePixels(CGRect rect, const NSView& view) {
  constexpr CGFloat epsilon = 1e-6;  // of a width that is whole
  const CGFloat scale = view.window() ? view.window()->backingScaleFactor() : 1;
  const CGRect base = view.convertRectToView(rect, nullptr);
  const auto nearest = [scale](CGFloat edge) { return std::round(edge * scale) / scale; };
  const CGFloat low = nearest(CGRectGetMinY(base)), high = nearest(CGRectGetMaxY(base));
  const CGFloat width = std::max(1.0, std::floor(base.size.width * scale + epsilon)) / scale;
  return view.convertRectFromView({nearest(CGRectGetMinX(base)), low, width, high - low}, nullptr);
}

}  // namespace

void TextViewSelection::drawRect(CGRect rect) {
  // Of a long text most is out of sight, also when all of the view is to be redrawn.
  const NSRange shown = characterRangeIn(NSIntersectionRect(rect, visibleRectNow()));
  if (selection_.anchor != selection_.head && isFirstResponder_) {
    selectedTextBackgroundColor(hasKeys())->setFill();
    for (const CGRect& box : rectsForRange(commonRange(selectedRange(), shown)))
      NSRectFillUsingOperation(box, NSCompositingOperationSourceOver);
  }
  drawText(shown);
  if (!blink_.isShown()) return;
  insertionPointColor()->setFill();
  NSRectFillUsingOperation(onDevicePixels(caretRect(), *this), NSCompositingOperationSourceOver);
}

}  // namespace tessaluna::platform
