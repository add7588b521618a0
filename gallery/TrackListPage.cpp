// Ten thousand tracks, each row with its play, favorite and more controls. What a host does stands in
// TrackListHost.
#include <QVBoxLayout>

#include "backends/qt/QtViewWidget.h"
#include "gallery/Pages.h"
#include "gallery/tracks/TrackListHost.h"

namespace gallery {

using namespace platform;

QWidget* makeTrackListPage(Report report) {
  constexpr std::size_t trackCount = 10000;
  const auto host = make<TrackListHost>(generatedTracks(trackCount));
  host->setReport(std::move(report));
  auto* page = new QWidget;
  // The controls at rest are half-transparent white: they want a ground that is not.
  page->setObjectName("trackList");
  page->setAttribute(Qt::WA_StyledBackground);
  page->setStyleSheet("#trackList { background: #d8dae0; border-radius: 8px; }");
  auto* column = new QVBoxLayout(page);
  column->setContentsMargins(4, 4, 4, 4);
  auto* list = new backend::qt::QtViewWidget(host->view());
  list->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
  column->addWidget(list);
  QObject::connect(page, &QObject::destroyed, [host] { host->close(); });
  return page;
}

}  // namespace gallery
