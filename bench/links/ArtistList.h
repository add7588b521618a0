// A table of tracks with a title and three artists each, in a widget; the artists are links or one plain label.
#pragma once

#include <QWidget>

#include "bench/tracklist/ScrollingList.h"
#include "bench/tracklist/frames.h"
#include "tessaluna/platform/views/NSScrollView.h"
#include "tessaluna/platform/views/NSTableView.h"

namespace bench {

enum class Artists { Links, Label };

class ArtistList : public ScrollingList {
 public:
  explicit ArtistList(Artists artists);
  ~ArtistList() override;

  const char* name() const override;
  void showFrameAt(int y) override;
  int framesPainted() const override { return paints_.count; }
  QImage picture() override { return window_.grab().toImage(); }

 private:
  class Host;

  Artists artists_;
  tessaluna::platform::Ref<Host> host_;
  tessaluna::platform::Ref<tessaluna::platform::NSTableView> table_;
  tessaluna::platform::Ref<tessaluna::platform::NSScrollView> scrollView_;
  PaintCount paints_;
  QWidget window_;
};

}  // namespace bench
