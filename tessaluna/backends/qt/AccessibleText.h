// The text of an element that is written in, in Qt's words.
#pragma once

#include <QAccessible>

#include "tessaluna/platform/accessibility/AccessibleText.h"

namespace tessaluna::backend::qt {

class AccessibleElement;

class AccessibleText : public QAccessibleTextInterface, public QAccessibleEditableTextInterface {
 public:
  explicit AccessibleText(const AccessibleElement& element) : element_(element) {}

  int characterCount() const override { return static_cast<int>(state().text.size()); }
  QString text(int start, int end) const override;
  int cursorPosition() const override;  // -1 where the element does not report its selection
  void setCursorPosition(int position) override { select(position, position); }
  int selectionCount() const override;  // one at the most
  void selection(int index, int* start, int* end) const override;
  void addSelection(int start, int end) override { select(start, end); }
  void removeSelection(int index) override;
  void setSelection(int index, int start, int end) override;

  QRect characterRect(int offset) const override;
  int offsetAtPoint(const QPoint& point) const override;  // -1 where there is no character
  void scrollToSubstring(int, int) override {}
  QString attributes(int offset, int* start, int* end) const override;  // elements do not say what a character looks like

  void deleteText(int start, int end) override { replaceText(start, end, {}); }
  void insertText(int offset, const QString& text) override { replaceText(offset, offset, text); }
  void replaceText(int start, int end, const QString& text) override;

 private:
  platform::AccessibleTextState state() const;
  void select(int start, int end);

  const AccessibleElement& element_;
};

}  // namespace tessaluna::backend::qt
