// Ten thousand tracks in a TrackTable: TrackLibrary has the tracks, and the ready-made table does everything else.
#include <QVBoxLayout>

#include "gallery/Pages.h"
#include "gallery/tracks/TrackLibrary.h"
#include "tessaluna/backends/qt/QtViewWidget.h"

namespace gallery {

QWidget* makeTrackListPage(Report report) {
  constexpr std::size_t trackCount = 10000;
  const auto library = std::make_shared<TrackLibrary>(generatedTracks(trackCount), TrackLibrary::Covers::Shown);
  auto* list = new tessaluna::backend::qt::QtViewWidget(makeTrackTable(library, std::move(report)));
  list->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
  list->setAccessibleName("track list");

  auto* page = new QWidget;
  auto* column = new QVBoxLayout(page);
  column->setContentsMargins(0, 0, 32, 24);
  column->addWidget(list);
  return page;
}

}  // namespace gallery
