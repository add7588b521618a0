// A menu of the desktop at a place of a window. One is open at a time; opening another closes the first, as a choice of nothing.
#pragma once

#include <QPointer>
#include <functional>
#include <memory>
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

  // Without a window the menu belongs to none. The choice is reported after the menu has closed.
  std::unique_ptr<NativeMenu> open(QWindow* window, const MenuPlace& place, const std::vector<MenuEntry>& entries,
                                   Chosen chosen);

 private:
  QPointer<QMenu> menu_;
};

}  // namespace tessaluna::backend::qt
