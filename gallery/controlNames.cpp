#include "gallery/controlNames.h"

#include <QVariant>
#include <QWidget>

namespace gallery {

namespace {

constexpr const char* nameProperty = "controlName";

}  // namespace

void nameControl(QWidget& control, const std::string& name) {
  const QString text = QString::fromStdString(name);
  control.setProperty(nameProperty, text);
  control.setAccessibleName(QString(text).replace('-', ' '));
}

std::string controlName(const QWidget& control) {
  const QVariant name = control.property(nameProperty);
  return (name.isValid() ? name.toString() : control.accessibleName()).toStdString();
}

}  // namespace gallery
