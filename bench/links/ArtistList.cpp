#include "bench/links/ArtistList.h"

#include <string>
#include <vector>

#include "bench/tracklist/turn.h"
#include "gallery/tracks/InventedNames.h"
#include "tessaluna/backends/qt/QtViewWidget.h"
#include "tessaluna/platform/views/NSTextField.h"
#include "tessaluna/uikit/links/MultipleLinksTextField.h"

namespace bench {

using namespace tessaluna::platform;
using TessalunaUIKit::MultipleLinksTextField;

namespace {

struct Track {
  std::string title;
  std::vector<std::string> artists;
  std::string text;  // the artists
};

// In every third row the artists are too long for their column.
constexpr CGFloat titleWidth = 500, artistsWidth = 300, textHeight = 17;

Ref<NSTextField> label(CGFloat x, CGFloat width) {
  const auto field = NSTextField::labelWithString("");
  field->setLineBreakMode(NSLineBreakByTruncatingTail);
  field->setFrame({x, 4, width, textHeight});
  return field;
}

class Row : public NSView {
 public:
  explicit Row(Artists artists) : NSView(CGRect{}) {
    addSubview(title_);
    if (artists == Artists::Label) {
      label_ = label(titleWidth, artistsWidth);
      addSubview(label_);
    } else {
      links_ = make<MultipleLinksTextField>(CGRect{titleWidth + 2, 4, artistsWidth - 4, textHeight});
      links_->setLinksEnabled(true);
      addSubview(links_);
    }
  }
  bool isFlipped() const override { return true; }
  void show(const Track& track) {
    title_->setStringValue(track.title);
    if (links_) links_->setStringValues(track.artists);
    else label_->setStringValue(track.text);
  }

 private:
  const Ref<NSTextField> title_ = label(0, titleWidth);
  Ref<NSTextField> label_;
  Ref<MultipleLinksTextField> links_;
};

}  // namespace

class ArtistList::Host : public NSObject, public NSTableViewDataSource, public NSTableViewDelegate {
 public:
  explicit Host(Artists artists) : artists_(artists) {
    gallery::InventedNames names(1);
    for (int i = 0; i < trackCount; ++i) {
      Track track{.title = names.title(), .artists = {names.person(), names.person(), names.person()}, .text = {}};
      for (const std::string& artist : track.artists) track.text += (track.text.empty() ? "" : ", ") + artist;
      tracks_.push_back(std::move(track));
    }
  }
  std::size_t numberOfRowsInTableView(NSTableView&) override { return tracks_.size(); }
  Ref<NSView> tableViewViewForRow(NSTableView& table, std::size_t row) override {
    auto view = std::dynamic_pointer_cast<Row>(table.makeViewWithIdentifier("track"));
    if (!view) {
      view = make<Row>(artists_);
      view->setIdentifier("track");
    }
    view->show(tracks_[row]);
    return view;
  }

 private:
  Artists artists_;
  std::vector<Track> tracks_;
};

ArtistList::ArtistList(Artists artists)
    : artists_(artists),
      host_(make<Host>(artists)),
      table_(make<NSTableView>(CGRect{0, 0, width - 12, 0})),
      scrollView_(make<NSScrollView>(CGRect{0, 0, width, height})) {
  table_->setRowHeight(rowHeight);
  table_->setDataSource(host_);
  table_->setDelegate(host_);
  scrollView_->setDrawsBackground(false);
  scrollView_->setHasVerticalScroller(true);
  scrollView_->setDocumentView(table_);
  table_->reloadData();
  dressWindow(window_);
  auto* list = new tessaluna::backend::qt::QtViewWidget(scrollView_, &window_);
  list->setGeometry(0, 0, width, height);
  window_.show();
  letEventsHappen();
  paints_.watch(*list);
}

ArtistList::~ArtistList() { scrollView_->setDocumentView(nullptr); }

const char* ArtistList::name() const { return artists_ == Artists::Links ? "links" : "labels"; }

void ArtistList::showFrameAt(int y) {
  scrollView_->contentView()->scrollToPoint({0, double(y)});
  letEventsHappen();
}

}  // namespace bench
