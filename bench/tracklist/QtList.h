// The same list as one would write it with Qt alone: a QListView whose delegate draws the texts with QPainter and the
// glyphs, which are SVG documents, with QSvgRenderer.
#pragma once

#include <QListView>
#include <memory>

#include "bench/tracklist/ScrollingList.h"
#include "bench/tracklist/frames.h"
#include "gallery/tracks/GeneratedTracks.h"

namespace bench {

class QtList : public ScrollingList {
 public:
  QtList(std::vector<gallery::Track> tracks, Controls controls);
  ~QtList() override;

  const char* name() const override { return "QListView"; }
  void showFrameAt(int y) override;
  int framesPainted() const override { return paints_.count; }
  QImage picture() override { return window_.grab().toImage(); }

 private:
  std::unique_ptr<QAbstractListModel> model_;
  std::unique_ptr<QAbstractItemDelegate> delegate_;
  PaintCount paints_;
  QWidget window_;
  QListView* list_;
};

}  // namespace bench
