#include "tessaluna/backends/qt/AccessibleText.h"

#include <algorithm>

#include "tessaluna/backends/qt/AccessibleElement.h"
#include "tessaluna/backends/qt/screenSpace.h"
#include "tessaluna/platform/events/NSTextInputClient.h"

namespace tessaluna::backend::qt {

using namespace tessaluna::platform;

namespace {

std::size_t offsetOf(int offset) { return static_cast<std::size_t>(std::max(offset, 0)); }
// -1 is the end of the text.
std::size_t endOf(int end) { return end < 0 ? NSNotFound : offsetOf(end); }

}  // namespace

AccessibleTextState AccessibleText::state() const { return accessibleTextOf(element_.element()); }

QString AccessibleText::text(int start, int end) const {
  const std::u16string all = state().text;
  const std::size_t from = std::min(offsetOf(start), all.size()), to = std::clamp(endOf(end), from, all.size());
  return QStringView(all).mid(static_cast<qsizetype>(from), static_cast<qsizetype>(to - from)).toString();
}

int AccessibleText::cursorPosition() const {
  const std::optional<std::size_t> caret = state().caret;
  return caret ? static_cast<int>(*caret) : -1;
}

int AccessibleText::selectionCount() const {
  const std::optional<NSRange> range = state().selection;
  return range && range->length > 0 ? 1 : 0;
}

void AccessibleText::selection(int index, int* start, int* end) const {
  const NSRange range = index == 0 ? state().selection.value_or(NSRange{}) : NSRange{};
  *start = static_cast<int>(range.location);
  *end = static_cast<int>(range.location + range.length);
}

void AccessibleText::removeSelection(int index) {
  if (index == 0 && selectionCount() > 0) setCursorPosition(cursorPosition());
}

void AccessibleText::setSelection(int index, int start, int end) {
  if (index == 0) select(start, end);
}

void AccessibleText::select(int start, int end) { selectAccessibleText(element_.element(), offsetOf(start), offsetOf(end)); }

QRect AccessibleText::characterRect(int offset) const {
  const CGRect frame = frameOfAccessibleText(element_.element(), {offsetOf(offset), 1});
  return NSIsEmptyRect(frame) ? QRect() : qtRectOf(frame);
}

int AccessibleText::offsetAtPoint(const QPoint& point) const {
  const auto offset = accessibleTextOffsetAt(element_.element(), middleOfPixel(point));
  return offset ? static_cast<int>(*offset) : -1;
}

QString AccessibleText::attributes(int, int* start, int* end) const {
  *start = 0;
  *end = characterCount();
  return {};
}

void AccessibleText::replaceText(int start, int end, const QString& text) {
  replaceAccessibleText(element_.element(), offsetOf(start), endOf(end), text.toStdU16String());
}

}  // namespace tessaluna::backend::qt
