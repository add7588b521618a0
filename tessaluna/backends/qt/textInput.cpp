#include "tessaluna/backends/qt/textInput.h"

#include <QGuiApplication>
#include <QInputMethod>
#include <QInputMethodEvent>
#include <algorithm>
#include <string>

#include "tessaluna/platform/events/NSTextInputClient.h"
#include "tessaluna/platform/windows/NSWindow.h"

namespace tessaluna::backend::qt {

using namespace tessaluna::platform;

namespace {

NSTextInputClient* textOf(const NSWindow& window) {
  auto* text = dynamic_cast<NSTextInputClient*>(window.firstResponder());
  return text && text->acceptsTextInput() ? text : nullptr;
}

QString toQString(std::u16string_view text) {
  return QString(reinterpret_cast<const QChar*>(text.data()), static_cast<qsizetype>(text.size()));
}

// Qt counts in the text without what is being composed, which stands at the caret.
struct Surroundings {
  std::u16string text;
  std::size_t anchor = 0, cursor = 0;
};

Surroundings surroundingsOf(const NSTextInputClient& client) {
  Surroundings result{.text = client.text()};
  const NSRange selected = client.selectedRange(), marked = client.markedRange();
  result.anchor = selected.location;
  result.cursor = selected.location + selected.length;
  if (client.hasMarkedText()) {
    result.text.erase(marked.location, marked.length);
    result.anchor = result.cursor = marked.location;
  }
  return result;
}

QRectF placeOf(const NSTextInputClient& client, std::size_t index, const NSWindow& window) {
  const CGRect rect = window.convertRectFromScreen(client.firstRectForCharacterRange({index, 0}));
  return {rect.origin.x, window.frame().size.height - CGRectGetMaxY(rect), rect.size.width, rect.size.height};
}

QVariant answer(Qt::InputMethodQuery query, const NSWindow& window, QPoint origin) {
  const NSTextInputClient* client = textOf(window);
  if (query == Qt::ImEnabled) return client != nullptr;
  if (!client) return {};
  const Surroundings around = surroundingsOf(*client);
  const auto rectAt = [&](std::size_t index) { return placeOf(*client, index, window).translated(-origin); };
  const NSRange selected = client->selectedRange();
  switch (query) {
    case Qt::ImCursorRectangle: return rectAt(selected.location + selected.length);
    case Qt::ImAnchorRectangle: return rectAt(selected.location);
    case Qt::ImSurroundingText: return toQString(around.text);
    case Qt::ImCursorPosition: return static_cast<int>(around.cursor);
    case Qt::ImAnchorPosition: return static_cast<int>(around.anchor);
    case Qt::ImCurrentSelection:
      return toQString(std::u16string_view(around.text).substr(around.anchor, around.cursor - around.anchor));
    case Qt::ImHints: return static_cast<int>(Qt::ImhNone);
    default: return {};
  }
}

}  // namespace

void answerInputMethod(QInputMethodQueryEvent& query, const NSWindow& window, QPoint origin) {
  for (unsigned bit = 1; bit != 0; bit <<= 1) {
    const auto one = static_cast<Qt::InputMethodQuery>(bit);
    if (query.queries().testFlag(one)) query.setValue(one, answer(one, window, origin));
  }
  query.accept();
}

void sendToText(const QInputMethodEvent& event, NSWindow& window) {
  NSTextInputClient* client = textOf(window);
  if (!client) return;
  const Ref<NSResponder> held = refTo(*window.firstResponder());
  const auto utf8 = [](const QString& text) { return text.toStdString(); };
  if (!event.commitString().isEmpty() || event.replacementLength() > 0) {
    NSRange range = noRange;
    if (event.replacementLength() > 0) {
      // What is composed goes first; then the place is counted from the caret.
      if (client->hasMarkedText()) client->setMarkedText("", {0, 0}, noRange);
      const auto cursor = static_cast<std::ptrdiff_t>(surroundingsOf(*client).cursor);
      const std::ptrdiff_t start = std::max<std::ptrdiff_t>(0, cursor + event.replacementStart());
      range = {static_cast<std::size_t>(start), static_cast<std::size_t>(event.replacementLength())};
    }
    client->insertText(utf8(event.commitString()), range);
  }
  // The text may have lost the keys over what was committed.
  if (textOf(window) != client) return;
  if (event.preeditString().isEmpty() && !client->hasMarkedText()) return;
  NSRange caret{static_cast<std::size_t>(event.preeditString().size()), 0};
  for (const QInputMethodEvent::Attribute& attribute : event.attributes())
    if (attribute.type == QInputMethodEvent::Cursor && attribute.start >= 0)
      caret.location = static_cast<std::size_t>(attribute.start);
  client->setMarkedText(utf8(event.preeditString()), caret, noRange);
}

void tellInputMethodOfChange() { QGuiApplication::inputMethod()->update(Qt::ImQueryAll); }
void resetInputMethod() { QGuiApplication::inputMethod()->reset(); }

}  // namespace tessaluna::backend::qt
