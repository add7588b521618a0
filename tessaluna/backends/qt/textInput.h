// Qt's input methods and dead keys, and the text that takes a window's keys. Both are asked and told here; neither the
// native window nor the widget knows more of it than the event.
#pragma once

#include <QPoint>

#include "tessaluna/platform/views/Forward.h"

class QInputMethodEvent;
class QInputMethodQueryEvent;

namespace tessaluna::backend::qt {

// Places are told relative to the origin, which is counted from the upper left corner of the window's content.
void answerInputMethod(QInputMethodQueryEvent& query, const platform::NSWindow& window, QPoint origin);

// What was composed or committed goes into the text; where none takes it nothing happens.
void sendToText(const QInputMethodEvent& event, platform::NSWindow& window);

// What Qt's input method knows of the text no longer holds, or is to be dropped.
void tellInputMethodOfChange();
void resetInputMethod();

}  // namespace tessaluna::backend::qt
