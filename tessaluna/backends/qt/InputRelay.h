// Turns the mouse, wheel and key events of one native window into events of the window that it belongs to and sends them
// through NSApp. An event may end the window, and the relay with it: each call survives that.
//
// Places are counted from the upper left corner of the window's content, in points.
#pragma once

#include <QEvent>
#include <QPointF>
#include <memory>

#include "tessaluna/platform/backend/Backend.h"

class QKeyEvent;
class QMouseEvent;
class QWheelEvent;

namespace tessaluna::backend::qt {

enum class Taken { No, Yes };
enum class Crossing { Entered, Left };

class InputRelay {
 public:
  explicit InputRelay(WindowClient& client);
  ~InputRelay();
  InputRelay(const InputRelay&) = delete;
  InputRelay& operator=(const InputRelay&) = delete;

  void mouse(const QMouseEvent& event, QPointF place);
  // Ends those that are under way, outside of everything.
  void endPresses();
  void pointerCrossed(Crossing crossing, QPointF place);
  Taken wheel(const QWheelEvent& event, QPointF place);
  // A press, a release, or Qt's question whether a shortcut is overridden. A press that no view takes is offered to the
  // program's shortcuts, after the parent, if any, was asked the same question.
  Taken key(const QKeyEvent& event, QObject* parent = nullptr);

  // Told by the native window while an event is being sent.
  void eventWasNotTaken();
  // Nothing is sent any more.
  void clientIsGoing();

 private:
  struct State;
  std::shared_ptr<State> state_;
};

}  // namespace tessaluna::backend::qt
