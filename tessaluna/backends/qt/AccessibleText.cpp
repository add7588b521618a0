#include "tessaluna/backends/qt/AccessibleText.h"

#include <algorithm>

#include "tessaluna/backends/qt/AccessibleElement.h"
#include "tessaluna/backends/qt/accessibilityNames.h"

namespace tessaluna::backend::qt {

using namespace tessaluna::platform;

QString AccessibleText::whole() const {
  const Ref<NSObject> held = element_.element();
  return held ? textOf(*accessibilityOf(held), NSAccessibilityValueAttribute) : QString();
}

std::optional<NSRange> AccessibleText::selectedRange() const {
  const Ref<NSObject> held = element_.element();
  if (!held) return std::nullopt;
  return attributeOf<NSRange>(*accessibilityOf(held), NSAccessibilitySelectedTextRangeAttribute);
}

QString AccessibleText::text(int start, int end) const {
  const QString all = whole();
  const int length = static_cast<int>(all.size());
  const int from = std::clamp(start, 0, length), to = end < 0 ? length : std::clamp(end, from, length);
  return all.mid(from, to - from);
}

int AccessibleText::cursorPosition() const {
  const std::optional<NSRange> range = selectedRange();
  return range ? static_cast<int>(range->location + range->length) : -1;
}

int AccessibleText::selectionCount() const {
  const std::optional<NSRange> range = selectedRange();
  return range && range->length > 0 ? 1 : 0;
}

void AccessibleText::selection(int index, int* start, int* end) const {
  *start = *end = 0;
  const std::optional<NSRange> range = selectedRange();
  if (index != 0 || !range) return;
  *start = static_cast<int>(range->location);
  *end = static_cast<int>(range->location + range->length);
}

void AccessibleText::removeSelection(int index) {
  if (index == 0 && selectionCount() > 0) setCursorPosition(cursorPosition());
}

void AccessibleText::setSelection(int index, int start, int end) {
  if (index == 0) select(start, end);
}

void AccessibleText::select(int start, int end) {
  const Ref<NSObject> held = element_.element();
  if (!held) return;
  const int length = characterCount();
  const int from = std::clamp(std::min(start, end), 0, length), to = std::clamp(std::max(start, end), 0, length);
  accessibilityOf(held)->accessibilitySetValue(NSRange{std::size_t(from), std::size_t(to - from)},
                                               NSAccessibilitySelectedTextRangeAttribute);
}

QString AccessibleText::attributes(int, int* start, int* end) const {
  *start = 0;
  *end = characterCount();
  return {};
}

void AccessibleText::replaceText(int start, int end, const QString& text) {
  const Ref<NSObject> held = element_.element();
  if (!held) return;
  QString all = whole();
  const int length = static_cast<int>(all.size());
  const int from = std::clamp(start, 0, length), to = std::clamp(end < 0 ? length : end, from, length);
  all.replace(from, to - from, text);
  accessibilityOf(held)->accessibilitySetValue(all.toStdString(), NSAccessibilityValueAttribute);
}

void AccessibleText::tellText(QAccessibleInterface& interface) {
  const QString now = whole();
  const auto shorter = std::min(now.size(), told_.size());
  const auto start = std::mismatch(now.begin(), now.begin() + shorter, told_.begin()).first - now.begin();
  const auto tail = std::mismatch(now.rbegin(), now.rbegin() + (shorter - start), told_.rbegin()).first - now.rbegin();
  const QString gone = told_.mid(start, told_.size() - start - tail), come = now.mid(start, now.size() - start - tail);
  told_ = now;
  const int position = static_cast<int>(start);
  if (gone.isEmpty() && come.isEmpty()) return;
  if (gone.isEmpty()) {
    QAccessibleTextInsertEvent event(&interface, position, come);
    QAccessible::updateAccessibility(&event);
  } else if (come.isEmpty()) {
    QAccessibleTextRemoveEvent event(&interface, position, gone);
    QAccessible::updateAccessibility(&event);
  } else {
    QAccessibleTextUpdateEvent event(&interface, position, gone, come);
    QAccessible::updateAccessibility(&event);
  }
}

void AccessibleText::tellSelection(QAccessibleInterface& interface) const {
  const std::optional<NSRange> range = selectedRange();
  if (!range) return;
  const int start = static_cast<int>(range->location), end = start + static_cast<int>(range->length);
  if (start < end) {
    QAccessibleTextSelectionEvent event(&interface, start, end);
    QAccessible::updateAccessibility(&event);
  }
  QAccessibleTextCursorEvent event(&interface, end);
  QAccessible::updateAccessibility(&event);
}

}  // namespace tessaluna::backend::qt
