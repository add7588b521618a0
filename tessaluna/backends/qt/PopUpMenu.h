// A menu of the desktop at a place of a window. One is open at a time; opening another closes the first, as a choice of nothing.
#pragma once

#include <QPoint>
#include <QPointer>
#include <functional>
#include <optional>
#include <vector>

#include "tessaluna/platform/backend/Backend.h"

class QMenu;
class QWindow;

namespace tessaluna::backend::qt {

class PopUpMenu {
 public:
  using Chosen = std::function<void(std::optional<std::size_t>)>;

  PopUpMenu() = default;
  ~PopUpMenu();
  PopUpMenu(const PopUpMenu&) = delete;
  PopUpMenu& operator=(const PopUpMenu&) = delete;

  // The upper left corner is at the place, in Qt's screen space. The choice is told once the menu has gone.
  void open(QWindow& window, QPoint place, const std::vector<MenuEntry>& entries, Chosen chosen);

 private:
  QPointer<QMenu> menu_;
};

}  // namespace tessaluna::backend::qt
