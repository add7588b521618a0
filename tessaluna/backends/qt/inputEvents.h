// Qt's events of mouse, wheel, keys and input methods, handed to the window that they are for as plain values.
#pragma once

#include <QEvent>
#include <QPointF>

#include "tessaluna/platform/backend/Input.h"
#include "tessaluna/platform/views/Forward.h"

namespace tessaluna::platform {

class WindowInput;

}  // namespace tessaluna::platform

namespace tessaluna::backend::qt {

// Who gets an event from Qt: the native window, or a widget in it.
struct InputReceiver {
  platform::WindowInput& input;
  QPointF origin;             // of the receiver, from the upper left corner of the window's content
  QPointF onScreen;           // the same corner of the receiver
  QObject* parent = nullptr;  // asked for shortcuts before the program; may be null
};

// True if the event was one of input; it is accepted then if somebody took it. What it calls may end receiver and window.
bool sendInput(QEvent& event, const InputReceiver& receiver);
bool isInput(QEvent::Type type);

PointerInput crossingOf(PointerInput::What what, QPointF place);

// What Qt's input method knows of the text no longer holds, or is to be dropped.
void notifyInputMethodOfChange();
void resetInputMethod();

}  // namespace tessaluna::backend::qt
