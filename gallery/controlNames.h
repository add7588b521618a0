// The names of a page's controls.
#pragma once

#include <string>

class QWidget;

namespace gallery {

// Users of assistive programs get the name with spaces for its hyphens; programs that operate the controls find it unchanged
// ("place NAME ..." of --log-actions).
void nameControl(QWidget& control, const std::string& name);
// The name that was given to the control, otherwise the one that users get; empty if it has neither.
std::string controlName(const QWidget& control);

}  // namespace gallery
