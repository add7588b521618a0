#include "bench/tracklist/KitList.h"

#include "tessaluna/backends/qt/QtViewWidget.h"
#include "tessaluna/ready/tracks/TrackTableRow.h"

namespace bench {

using namespace tessaluna::platform;
using tessaluna::ready::TrackTableRow;

KitList::KitList(std::vector<gallery::Track> tracks, Controls controls)
    : controls_(controls),
      table_(gallery::makeTrackTable(
          std::make_shared<gallery::TrackLibrary>(std::move(tracks), gallery::TrackLibrary::Covers::Shown), nullptr)) {
  dressWindow(window_);
  table_->setShowsHeader(false);
  auto* list = new tessaluna::backend::qt::QtViewWidget(table_, &window_);
  list->setGeometry(0, 0, width, height);
  window_.show();
  letEventsHappen();
  paints_.watch(*list);
}

void KitList::showFrameAt(int y) {
  table_->scrollView()->contentView()->scrollToPoint({0, double(y)});
  if (controls_ == Controls::OnEveryRow) {
    table_->table()->viewAtRow(0);  // lays the rows out
    for (const Ref<NSView>& view : table_->table()->subviews())
      if (auto* row = dynamic_cast<TrackTableRow*>(view.get())) row->showState({.isHovered = true, .hasKeyboard = true});
  }
  letEventsHappen();
}

}  // namespace bench
