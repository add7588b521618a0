#include "tessaluna/backends/qt/EmbeddingHosts.h"

#include <QEvent>
#include <QWidget>

#include "tessaluna/platform/views/NSView.h"
#include "tessaluna/platform/windows/NSWindow.h"

namespace tessaluna::backend::qt {

EmbeddingHost& EmbeddingHosts::hostOf(QWidget& topLevel) {
  std::unique_ptr<EmbeddingHost>& host = hosts_[&topLevel];
  if (!host) {
    host = std::make_unique<EmbeddingHost>(topLevel);
    // The host is the context as well: with the hosts gone, nobody is called.
    QObject::connect(&topLevel, &QObject::destroyed, host.get(), [this, widget = &topLevel] { hosts_.erase(widget); });
  }
  return *host;
}

EmbeddingHost* EmbeddingHosts::hostIfAny(const QWidget& topLevel) const {
  const auto found = hosts_.find(&topLevel);
  return found == hosts_.end() ? nullptr : found->second.get();
}

QtViewWidget* EmbeddingHosts::widgetOf(const platform::NSView& view) const {
  for (const auto& [topLevel, host] : hosts_)
    if (view.window() == &host->window()) return host->widgetOf(view);
  return nullptr;
}

void EmbeddingHosts::observe(QWidget& widget, const QEvent& event) {
  if (hosts_.empty()) return;
  EmbeddingHost* host = hostIfAny(*widget.window());
  if (!host) return;
  switch (event.type()) {
    case QEvent::Move:
    case QEvent::Resize:
    case QEvent::Show:
    case QEvent::Hide: host->placeChanged(widget); break;
    case QEvent::Wheel: host->wheelTurned(); break;
    case QEvent::WindowActivate:
    case QEvent::WindowDeactivate:
      if (widget.isWindow()) host->activationChanged();
      break;
    default: break;
  }
}

}  // namespace tessaluna::backend::qt
