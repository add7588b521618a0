// The action of a control or a menu's item as a Qt connection:
//   connectAction(*next, this, &PlayerWindow::next);
//   connectAction(*next, this, [this] { player_.next(); });
#pragma once

#include <QAction>
#include <QObject>
#include <memory>
#include <utility>

#include "tessaluna/platform/events/ActionSender.h"

namespace tessaluna::backend::qt {

// The slot is called whenever the sender sends its action, until the receiver is deleted, the returned connection is
// disconnected, the sender gets another action, or the sender is destroyed. The receiver may live in another thread.
template <class Receiver, class Slot>
QMetaObject::Connection connectAction(platform::ActionSender& sender, const Receiver* receiver, Slot slot) {
  const auto signal = std::make_shared<QAction>();  // in no widget: it only has the connection
  const auto connection = QObject::connect(signal.get(), &QAction::triggered, receiver, std::move(slot));
  sender.setAction([signal] { signal->trigger(); });
  return connection;
}

}  // namespace tessaluna::backend::qt
