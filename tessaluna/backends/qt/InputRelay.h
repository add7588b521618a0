// Turns the mouse, wheel and key events of one native window into events of the window that it belongs to and sends them
// through NSApp. An event may end the window, and the relay with it: each call survives that.
//
// Places are counted from the upper left corner of the window's content, in points.
#pragma once

#include <QEvent>
#include <QPointF>
#include <memory>
#include <optional>
#include <vector>

#include "tessaluna/platform/backend/Backend.h"

class QKeyEvent;
class QMouseEvent;
class QWheelEvent;

namespace tessaluna::backend::qt {

enum class Taken { No, Yes };
enum class Crossing { Entered, Left };

// What Qt asks for shortcuts first, it sends again as a key press. The key goes to its window at the first asking, as only
// the window's views can tell whether they take it; this is remembered for the second. While a screen reader listens, Qt shows
// it the key press and sends us a copy, later and without its time; the next keys may have been asked for by then.
class KeysSentEarly {
 public:
  void sent(const QKeyEvent& event, Taken taken);
  // What became of the key press when it was sent early; absent if it was not. Then it is forgotten.
  std::optional<Taken> resultOf(const QKeyEvent& event);
  bool wasTaken(const QKeyEvent& event) const;

 private:
  struct Key {
    int key;
    quint64 time;
    Taken taken;
  };
  std::vector<Key>::const_iterator find(const QKeyEvent& event) const;

  std::vector<Key> keys_;  // the earliest first
};

class InputRelay {
 public:
  InputRelay(WindowClient& client, KeysSentEarly& keysSentEarly);
  ~InputRelay();
  InputRelay(const InputRelay&) = delete;
  InputRelay& operator=(const InputRelay&) = delete;

  void mouse(const QMouseEvent& event, QPointF place);
  void pointerCrossed(Crossing crossing, QPointF place);
  Taken wheel(const QWheelEvent& event, QPointF place);
  // A press, a release, or Qt's question whether a shortcut is overridden.
  Taken key(const QKeyEvent& event);

  // Told by the native window while an event is being sent.
  void eventWasNotTaken();
  // Nothing is sent any more.
  void clientIsGoing();

 private:
  struct State;
  std::shared_ptr<State> state_;
};

}  // namespace tessaluna::backend::qt
