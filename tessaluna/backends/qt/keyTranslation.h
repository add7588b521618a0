// Keys, modifiers and mouse buttons as the platform layer names them.
#pragma once

#include <QKeyEvent>
#include <cstdint>
#include <string>

#include "tessaluna/backends/qt/CommandKey.h"
#include "tessaluna/platform/backend/Input.h"

namespace tessaluna::backend::qt {

// Qt's Meta is Command, Control is Control, Alt is Option; with Control as the command key the first two change places.
std::uint32_t modifierFlagsOf(Qt::KeyboardModifiers modifiers, CommandKey commandKey);

// A key with its modifiers as menus show it, of what an event of it would have.
QString shortcutTextOf(const std::string& characters, std::uint32_t modifiers, CommandKey commandKey);

// 0 left, 1 right, 2 middle, then the others in Qt's order.
int buttonNumberOf(Qt::MouseButton button);
std::uint32_t buttonBitsOf(Qt::MouseButtons buttons);

// Of a press, a release, or Qt's question whether a shortcut is overridden.
KeyInput keyInputOf(const QKeyEvent& event, CommandKey commandKey);

}  // namespace tessaluna::backend::qt
