// Counts the clicks of one place: a press soon after and close to the one before is the second of a double click, and so on.
// Qt itself counts to two only.
#pragma once

#include <QPointF>
#include <Qt>
#include <cstdint>

namespace tessaluna::backend::qt {

class ClickCounter {
 public:
  struct Press {
    Qt::MouseButton button = Qt::NoButton;
    QPointF place;           // on the screen
    std::uint64_t time = 0;  // milliseconds
  };
  // The press's number, from 1; within the desktop's interval and distance it goes on from the last.
  int press(const Press& press);
  // Of the last press.
  int count() const { return count_; }

 private:
  Press last_;
  int count_ = 0;
};

}  // namespace tessaluna::backend::qt
