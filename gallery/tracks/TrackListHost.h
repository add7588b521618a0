// The host of a track list: it owns the tracks, fills the rows that show, knows which row the mouse is on and which track
// plays, and decides what a click on a control does. This is what a player writes around the kit's controls:
//
//   1. It is the target of every row's controls (tableViewViewForRow makes the rows).
//   2. It tells a row's controls what to show, and asks them for the redraw, whenever that changes: when the mouse comes
//      to another row, when another track plays, when a favorite is made (updateRow, which TrackRowView::showState ends).
//   3. A click names the control that was clicked; the table knows which row that stands in (rowForView). One on an artist
//      also says which of the row's artists it is.
//
// The controls follow the pointer and a press by themselves.
#pragma once

#include <functional>
#include <optional>
#include <string>

#include "gallery/tracks/TrackRowView.h"
#include "tessaluna/platform/views/NSScrollView.h"
#include "tessaluna/platform/views/NSTableView.h"
#include "tessaluna/uikit/links/LinkTextFieldActionTarget.h"

namespace gallery {

class TrackListHost : public tessaluna::platform::NSObject,
                      public tessaluna::platform::NSTableViewDataSource,
                      public tessaluna::platform::NSTableViewDelegate,
                      public TessalunaUIKit::TrackListRowActionTarget,
                      public TessalunaUIKit::LinkTextFieldActionTarget {
 public:
  static const tessaluna::platform::ClassInfo staticClassInfo;
  const tessaluna::platform::ClassInfo& classInfo() const override { return staticClassInfo; }

  explicit TrackListHost(std::vector<Track> tracks);
  void didInit() override;

  // The controls keep their target alive, and the host its rows: whoever made the host ends that.
  void close();

  // What is embedded. Absent once the host is closed.
  const tessaluna::platform::Ref<tessaluna::platform::NSScrollView>& view() const { return scrollView_; }
  const tessaluna::platform::Ref<tessaluna::platform::NSTableView>& table() const { return table_; }
  // Hears in a few words of what the user did.
  void setReport(std::function<void(const std::string&)> report) { report_ = std::move(report); }

  std::size_t numberOfRowsInTableView(tessaluna::platform::NSTableView& table) override;
  tessaluna::platform::Ref<tessaluna::platform::NSView> tableViewViewForRow(tessaluna::platform::NSTableView& table,
                                                                            std::size_t row) override;
  void tableViewSelectionDidChange(tessaluna::platform::NSTableView& table) override;
  void tableViewHoveredRowDidChange(tessaluna::platform::NSTableView& table, std::optional<std::size_t> row) override;
  void tableViewRowWasDoubleClicked(tessaluna::platform::NSTableView& table, std::size_t row) override;

  void trackRowPlayButtonClicked(TessalunaUIKit::TrackRowPlayButton& button) override;
  void trackRowFavoriteButtonClicked(TessalunaUIKit::TrackRowFavoriteButton& button) override;
  void trackRowMoreButtonClicked(TessalunaUIKit::TrackRowMoreButton& button) override;

  // An artist of a track.
  void linkClicked(std::size_t elementIndex, TessalunaUIKit::MultipleLinksTextField& sender) override;

  // Chosen from the menu of the more control.
  void playFromMenu(tessaluna::platform::NSObject* sender);
  void toggleFavoriteFromMenu(tessaluna::platform::NSObject* sender);

 protected:
  // What a row's controls show.
  virtual TrackRowState stateOf(std::size_t row) const;

 private:
  void play(std::size_t row);
  void toggleFavorite(std::size_t row);
  void updateRow(std::size_t row);
  void report(const std::string& what) const;
  static const tessaluna::platform::Selector selectors_[];

  std::vector<Track> tracks_;
  tessaluna::platform::Ref<tessaluna::platform::NSScrollView> scrollView_;
  tessaluna::platform::Ref<tessaluna::platform::NSTableView> table_;
  std::optional<std::size_t> current_, hovered_;
  bool isPlaying_ = false;
  std::function<void(const std::string&)> report_;
};

}  // namespace gallery
