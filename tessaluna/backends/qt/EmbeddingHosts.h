// The top-level widgets with embedded views, each with its host, from the first view's coming until the widget goes.
#pragma once

#include <map>
#include <memory>

#include "tessaluna/backends/qt/EmbeddingHost.h"

class QEvent;

namespace tessaluna::backend::qt {

class EmbeddingHosts {
 public:
  EmbeddingHost& hostOf(QWidget& topLevel);  // made where there is none
  EmbeddingHost* hostIfAny(const QWidget& topLevel) const;

  // That which the view is embedded in; absent if in none.
  QtViewWidget* widgetOf(const platform::NSView& view) const;

  // An event that some widget of the program is about to get.
  void observe(QWidget& widget, const QEvent& event);

 private:
  std::map<const QObject*, std::unique_ptr<EmbeddingHost>> hosts_;
};

}  // namespace tessaluna::backend::qt
