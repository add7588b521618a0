#include "bench/tracklist/KitList.h"

#include "tessaluna/backends/qt/QtViewWidget.h"

namespace bench {

using namespace tessaluna::platform;

namespace {

class HostWithControlsOnEveryRow : public gallery::TrackListHost {
 public:
  using TrackListHost::TrackListHost;

 protected:
  gallery::TrackRowState stateOf(std::size_t row) const override {
    gallery::TrackRowState state = TrackListHost::stateOf(row);
    state.hasMouse = true;
    return state;
  }
};

Ref<gallery::TrackListHost> makeHost(std::vector<gallery::Track> tracks, Controls controls) {
  if (controls == Controls::Hidden) return make<gallery::TrackListHost>(std::move(tracks));
  return make<HostWithControlsOnEveryRow>(std::move(tracks));
}

}  // namespace

KitList::KitList(std::vector<gallery::Track> tracks, Controls controls) : host_(makeHost(std::move(tracks), controls)) {
  dressWindow(window_);
  auto* list = new tessaluna::backend::qt::QtViewWidget(host_->view(), &window_);
  list->setGeometry(0, 0, width, height);
  window_.show();
  letEventsHappen();
  paints_.watch(*list);
}

KitList::~KitList() { host_->close(); }

void KitList::showFrameAt(int y) {
  host_->view()->contentView()->scrollToPoint({0, double(y)});
  letEventsHappen();
}

}  // namespace bench
