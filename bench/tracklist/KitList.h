// The gallery's own list: its host, its rows, in a widget.
#pragma once

#include <QWidget>

#include "bench/tracklist/ScrollingList.h"
#include "gallery/tracks/TrackListHost.h"

namespace bench {

class KitList : public ScrollingList {
 public:
  KitList(std::vector<gallery::Track> tracks, Controls controls);
  ~KitList() override;

  const char* name() const override { return "kit"; }
  void showFrameAt(int y) override;
  QImage picture() override { return window_.grab().toImage(); }

 private:
  platform::Ref<gallery::TrackListHost> host_;
  QWidget window_;
};

}  // namespace bench
