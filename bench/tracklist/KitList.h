// The gallery's own list: its host, its rows, in a widget.
#pragma once

#include <QWidget>

#include "bench/tracklist/ScrollingList.h"
#include "bench/tracklist/frames.h"
#include "gallery/tracks/TrackListHost.h"

namespace bench {

class KitList : public ScrollingList {
 public:
  KitList(std::vector<gallery::Track> tracks, Controls controls);
  ~KitList() override;

  const char* name() const override { return "kit"; }
  void showFrameAt(int y) override;
  int framesPainted() const override { return paints_.count; }
  QImage picture() override { return window_.grab().toImage(); }

 private:
  tessaluna::platform::Ref<gallery::TrackListHost> host_;
  PaintCount paints_;
  QWidget window_;
};

}  // namespace bench
