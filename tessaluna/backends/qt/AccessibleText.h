// The text of an element that is written in: its value, and the range that is selected in it. Positions count UTF-16
// units.
#pragma once

#include <QAccessible>

#include "tessaluna/platform/accessibility/NSAccessibility.h"

namespace tessaluna::backend::qt {

class AccessibleElement;

class AccessibleText : public QAccessibleTextInterface, public QAccessibleEditableTextInterface {
 public:
  explicit AccessibleText(const AccessibleElement& element) : element_(element) {}

  int characterCount() const override { return static_cast<int>(whole().size()); }
  QString text(int start, int end) const override;
  // -1 where the element does not tell its selection.
  int cursorPosition() const override;
  void setCursorPosition(int position) override { select(position, position); }
  int selectionCount() const override;  // one at the most
  void selection(int index, int* start, int* end) const override;
  void addSelection(int start, int end) override { select(start, end); }
  void removeSelection(int index) override;
  void setSelection(int index, int start, int end) override;

  // Elements do not tell where a character stands, nor what it looks like.
  QRect characterRect(int) const override { return {}; }
  int offsetAtPoint(const QPoint&) const override { return -1; }
  void scrollToSubstring(int, int) override {}
  QString attributes(int offset, int* start, int* end) const override;

  void deleteText(int start, int end) override { replaceText(start, end, {}); }
  void insertText(int offset, const QString& text) override { replaceText(offset, offset, text); }
  void replaceText(int start, int end, const QString& text) override;

  // What is there now counts as told.
  void noteText() { told_ = whole(); }
  void tellText(QAccessibleInterface& interface);
  void tellSelection(QAccessibleInterface& interface) const;

 private:
  QString whole() const;
  std::optional<platform::NSRange> selectedRange() const;
  void select(int start, int end);

  const AccessibleElement& element_;
  QString told_;
};

}  // namespace tessaluna::backend::qt
