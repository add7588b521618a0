#include "tessaluna/backends/qt/ClickCounter.h"

#include <QGuiApplication>
#include <QStyleHints>
#include <cmath>

namespace tessaluna::backend::qt {

int ClickCounter::press(const Press& press) {
  const QStyleHints* desktop = QGuiApplication::styleHints();
  const QPointF way = press.place - last_.place;
  const bool goesOn = count_ > 0 && press.button == last_.button && press.time >= last_.time &&
                      press.time - last_.time <= static_cast<std::uint64_t>(desktop->mouseDoubleClickInterval()) &&
                      std::fmax(std::abs(way.x()), std::abs(way.y())) <= desktop->mouseDoubleClickDistance();
  last_ = press;
  return count_ = goesOn ? count_ + 1 : 1;
}

}  // namespace tessaluna::backend::qt
