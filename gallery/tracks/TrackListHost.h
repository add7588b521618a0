// The host of a track list: it owns the tracks, fills the rows that show, knows which row the mouse is on and which track
// plays, and decides what a click on a control does. This is what a player writes around the kit's controls:
//
//   1. It is the target of every row's controls (tableViewViewForRow makes the rows).
//   2. It tells a row's controls what to show, and asks them for the redraw, whenever that changes: when the mouse comes
//      to another row, when another track plays, when a favorite is made (updateRow, which TrackRowView::showState ends).
//   3. A click names the control that was clicked; the table knows which row that stands in (rowForView).
//
// The controls follow the pointer and a press by themselves.
#pragma once

#include <functional>
#include <optional>
#include <string>

#include "gallery/tracks/TrackRowView.h"
#include "platform/views/NSScrollView.h"
#include "platform/views/NSTableView.h"

namespace gallery {

class TrackListHost : public platform::NSObject,
                      public platform::NSTableViewDataSource,
                      public platform::NSTableViewDelegate,
                      public TessalunaUIKit::TrackListRowActionTarget {
 public:
  static const platform::ClassInfo staticClassInfo;
  const platform::ClassInfo& classInfo() const override { return staticClassInfo; }

  explicit TrackListHost(std::vector<Track> tracks);
  void didInit() override;

  // The controls keep their target alive, and the host its rows: whoever made the host ends that.
  void close();

  // What is embedded. Absent once the host is closed.
  const platform::Ref<platform::NSScrollView>& view() const { return scrollView_; }
  const platform::Ref<platform::NSTableView>& table() const { return table_; }
  // Hears in a few words of what the user did.
  void setReport(std::function<void(const std::string&)> report) { report_ = std::move(report); }

  std::size_t numberOfRowsInTableView(platform::NSTableView& table) override;
  platform::Ref<platform::NSView> tableViewViewForRow(platform::NSTableView& table, std::size_t row) override;
  void tableViewSelectionDidChange(platform::NSTableView& table) override;
  void tableViewHoveredRowDidChange(platform::NSTableView& table, std::optional<std::size_t> row) override;
  void tableViewRowWasDoubleClicked(platform::NSTableView& table, std::size_t row) override;

  void trackRowPlayButtonClicked(TessalunaUIKit::TrackRowPlayButton& button) override;
  void trackRowFavoriteButtonClicked(TessalunaUIKit::TrackRowFavoriteButton& button) override;
  void trackRowMoreButtonClicked(TessalunaUIKit::TrackRowMoreButton& button) override;

  // Chosen from the menu of the more control.
  void playFromMenu(platform::NSObject* sender);
  void toggleFavoriteFromMenu(platform::NSObject* sender);

 protected:
  // What a row's controls show.
  virtual TrackRowState stateOf(std::size_t row) const;

 private:
  void play(std::size_t row);
  void toggleFavorite(std::size_t row);
  void updateRow(std::size_t row);
  void report(const std::string& what) const;
  static const platform::Selector selectors_[];

  std::vector<Track> tracks_;
  platform::Ref<platform::NSScrollView> scrollView_;
  platform::Ref<platform::NSTableView> table_;
  std::optional<std::size_t> current_, hovered_, menuRow_;
  bool isPlaying_ = false;
  std::function<void(const std::string&)> report_;
};

}  // namespace gallery
