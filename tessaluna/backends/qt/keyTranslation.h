// Keys, modifiers and mouse buttons as the platform layer names them.
#pragma once

#include <QKeyEvent>
#include <cstdint>
#include <optional>
#include <string>

#include "tessaluna/backends/qt/CommandKey.h"
#include "tessaluna/platform/events/NSEvent.h"

namespace tessaluna::backend::qt {

// Qt's Meta is Command, Control is Control, Alt is Option; with Control as the command key the first two change places.
std::uint32_t modifierFlagsOf(Qt::KeyboardModifiers modifiers, CommandKey commandKey);

// A key with its modifiers as menus show it, of what an event of it would have.
QString shortcutTextOf(const std::string& characters, std::uint32_t modifiers, CommandKey commandKey);

// 0 left, 1 right, 2 middle, then the others in Qt's order.
int buttonNumberOf(Qt::MouseButton button);

// The fields that a key event brings; window, location and time are the sender's. A modifier key is a change of flags.
// Absent for what is no event here: the releases between the repeats of a key that is held.
std::optional<platform::NSEvent::Fields> keyFieldsOf(const QKeyEvent& event, CommandKey commandKey);

}  // namespace tessaluna::backend::qt
