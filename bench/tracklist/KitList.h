// The kit's track table with the gallery's library, in a widget.
#pragma once

#include <QWidget>

#include "bench/tracklist/ScrollingList.h"
#include "bench/tracklist/frames.h"
#include "gallery/tracks/TrackLibrary.h"

namespace bench {

class KitList : public ScrollingList {
 public:
  KitList(std::vector<gallery::Track> tracks, Controls controls);

  const char* name() const override { return "kit"; }
  void showFrameAt(int y) override;
  int framesPainted() const override { return paints_.count; }
  QImage picture() override { return window_.grab().toImage(); }

 private:
  Controls controls_;
  tessaluna::platform::Ref<tessaluna::ready::TrackTable> table_;
  PaintCount paints_;
  QWidget window_;
};

}  // namespace bench
