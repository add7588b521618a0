// The platform's words for roles, states and actions in Qt's.
#pragma once

#include <QAccessible>
#include <QString>
#include <string>
#include <string_view>

#include "tessaluna/platform/accessibility/AccessibleStates.h"

namespace tessaluna::backend::qt {

QAccessible::Role qtRoleOf(std::string_view role);
QAccessible::State qtStateOf(platform::AccessibleStates states);
// An action that neither side has a word for keeps its name.
QString qtActionOf(std::string_view action);
std::string actionOf(const QString& qtAction);

}  // namespace tessaluna::backend::qt
