// Ten thousand tracks, each row with its play, favorite and more controls. What a host does stands in
// TrackListHost.
#include <QVBoxLayout>

#include "gallery/Pages.h"
#include "gallery/tracks/TrackListHost.h"
#include "tessaluna/backends/qt/QtViewWidget.h"

namespace gallery {

using namespace tessaluna::platform;

QWidget* makeTrackListPage(Report report) {
  constexpr std::size_t trackCount = 10000;
  const auto host = make<TrackListHost>(generatedTracks(trackCount));
  host->setReport(std::move(report));
  auto* list = new tessaluna::backend::qt::QtViewWidget(host->view());
  list->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
  list->setAccessibleName("track list");
  // The controls at rest are half-transparent white: they want a ground that is not.
  auto* ground = new QWidget;
  ground->setObjectName("trackList");
  ground->setAttribute(Qt::WA_StyledBackground);
  auto* inGround = new QVBoxLayout(ground);
  inGround->setContentsMargins(4, 4, 4, 4);
  inGround->addWidget(list);

  auto* page = new QWidget;
  auto* column = new QVBoxLayout(page);
  column->setContentsMargins(0, 0, 32, 24);
  column->addWidget(ground);
  QObject::connect(page, &QObject::destroyed, [host] { host->close(); });
  return page;
}

}  // namespace gallery
