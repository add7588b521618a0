// Shows a window's tool tip once the pointer rests, after the time that the desktop's style says.
#pragma once

#include <QPointer>
#include <QString>
#include <QTimer>
#include <optional>
#include <string>

#include "tessaluna/platform/foundation/languageVersion.h"

class QWidget;

namespace tessaluna::backend::qt {

class ToolTip {
 public:
  ToolTip();
  ~ToolTip();

  // The pointer has moved over what has this tool tip; empty: over nothing that has one. The widget, if any, is the one that
  // the pointer is over.
  void set(const std::string& text, QWidget* widget = nullptr);

 private:
  void hide();

  QTimer timer_;
  QString text_;                             // while it shows or is going to
  std::optional<QPointer<QWidget>> widget_;  // absent: over none
};

}  // namespace tessaluna::backend::qt
