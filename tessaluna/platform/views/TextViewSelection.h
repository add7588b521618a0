// The second part of a text view: what is selected, the caret, and how both move. A selection has two ends: the anchor, where
// it began, and the head, which moves while Shift is down and which the view keeps in sight. Only whole user-perceived characters
// are stepped over.
//
// Left and right step along the order of the text: in a paragraph that begins from right to left, left is forward.
#pragma once

#include <optional>

#include "tessaluna/platform/backend/Timer.h"
#include "tessaluna/platform/views/CaretBlink.h"
#include "tessaluna/platform/views/TextViewLayout.h"

namespace tessaluna::platform {

enum class TextMotion {
  Left,
  Right,
  Backward,
  Forward,
  WordLeft,
  WordRight,
  WordBackward,
  WordForward,
  LineStart,
  LineEnd,
  LeftEndOfLine,
  RightEndOfLine,
  DocumentStart,
  DocumentEnd,
  Up,
  Down,
};

class TextViewSelection : public TextViewLayout {
 public:
  using TextViewLayout::TextViewLayout;

  NSRange selectedRange() const override;
  void setSelectedRange(NSRange range) override;
  // Of the end that moves: upstream, at the end of the line, where End or a click has put it at a place at which a word wraps.
  NSSelectionAffinity selectionAffinity() const { return selection_.affinity; }
  void scrollRangeToVisible(NSRange range);

  // To where the motion leads, without or with the text on the way selected. Without, a selection first collapses.
  void move(TextMotion motion);
  void moveAndModifySelection(TextMotion motion);
  void selectAll(NSObject* sender);

  // A click places the caret, a double click selects words, a third all of a field editor or a paragraph; Shift and drags
  // continue from the anchor, by the same steps. A drag that rests beyond the visible text keeps scrolling.
  bool mouseDownCanMoveWindow() const override { return !isSelectable(); }
  void mouseDown(const Ref<NSEvent>& event) override;
  void mouseDragged(const Ref<NSEvent>& event) override;
  void mouseUp(const Ref<NSEvent>& event) override;
  void resetCursorRects() override;

  void drawRect(CGRect rect) override;
  // Whether the caret is on screen at this moment of its blinking.
  bool isCaretShown() const { return blink_.isShown(); }
  CGRect caretRect() const { return caretRectForPlace(selection_.place()); }

 protected:
  // Whether the keys go to this text: it is the first responder of the key window.
  bool hasKeys() const;
  void becameFirstResponder();
  void resignedFirstResponder();
  void keyStatusDidChange();  // of the window
  void restartCaret();        // shows it, and blinks from now on, where the text has the keys and can be edited
  struct Selection {
    std::size_t anchor = 0, head = 0;
    NSSelectionAffinity affinity = NSSelectionAffinityDownstream;
    CaretPlace place() const { return {head, affinity}; }
    friend bool operator==(const Selection&, const Selection&) = default;
  };
  Selection selection() const { return selection_; }
  void setSelection(Selection selection);  // cut to the text
  void reportSelection();                  // unless it is the one that was reported last
  CaretPlace destination(TextMotion motion, CaretPlace from) const;
  // The selection is another one. While the text changes it moves along, and is not reported before the change is over.
  virtual void selectionDidChange() {}
  // A press is about to use the text.
  virtual void willTrackMouse() {}
  virtual void didTrackMouse() {}  // the press is over
  void textStorageDidProcessEditing(NSTextStorage& storage, NSRange range, std::ptrdiff_t changeInLength) override;

 private:
  enum class Step { Character, Word, Paragraph };
  NSRange stepAt(CGPoint point) const;
  void select(std::size_t anchor, std::size_t head, CGPoint pointer);
  CaretPlace lineAbove(CaretPlace from) const;
  CaretPlace lineBelow(CaretPlace from) const;
  void dragTo(CGPoint location);  // in the window
  void continueScrollingAfterDragTo(CGPoint location);

  Selection selection_, reported_;
  Step step_ = Step::Character;  // of the press that is going on
  NSRange pressed_;              // what it first selected
  bool isPressed_ = false, isFirstResponder_ = false;
  backend::Timer nextScroll_;      // while a drag rests beyond the edge
  std::optional<CGFloat> column_;  // where a series of moves up and down began
  CaretBlink blink_{[this] { setNeedsDisplayInRect(caretRect()); }};
};

}  // namespace tessaluna::platform
