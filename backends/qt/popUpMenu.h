// A menu of the desktop at a point of the screen.
#pragma once

#include <QPoint>
#include <functional>
#include <optional>
#include <vector>

#include "platform/backend/Backend.h"

namespace backend::qt {

// Returns at once. `chosen` is called when the menu has closed.
void popUpMenuAt(QPoint place, const std::vector<MenuEntry>& entries,
                 std::function<void(std::optional<std::size_t>)> chosen);

}  // namespace backend::qt
