// What a control of a page is called.
#pragma once

#include <string>

class QWidget;

namespace gallery {

// Users of assistive programs meet the name with blanks for its hyphens; programs that use the controls find it as it is
// ("place NAME ..." of --log-actions).
void nameControl(QWidget& control, const std::string& name);
// That of a control that was named, else what users meet; empty if it is called nothing.
std::string controlName(const QWidget& control);

}  // namespace gallery
