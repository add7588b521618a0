// A list of tracks over a program's own model: cover, title, artists as links, time, and the kit's controls in the row that the
// pointer or the keyboard is on; headers that sort, and a whole table to keys and to assistive clients.
//
//   const auto table = make<TrackTable>(queue, TrackActions{.play = [&](std::size_t row) { player.play(row); },
//                                                           .pause = [&](std::size_t) { player.pause(); }});
//   window->contentView()->addSubview(table);
//
// Return and a double click play a row; the menu key, Shift-F10 and a right click open its menu; a letter goes to the next title
// that begins with it; Left and Right lead to the controls and artists of a row. The actions change the
// model, and the model announces it; the table changes nothing by itself. Main thread.
#pragma once

#include <functional>

#include "tessaluna/platform/views/NSScrollView.h"
#include "tessaluna/platform/views/NSTableColumn.h"
#include "tessaluna/platform/views/NSTableHeaderView.h"
#include "tessaluna/platform/views/NSTableView.h"
#include "tessaluna/ready/tracks/TrackModel.h"

namespace tessaluna::ready {

class TrackTableRow;

// A line of a row's menu; a line without a title is a separator. `choose` is called with the row where the track is by then.
struct TrackCommand {
  std::string title = {};
  std::function<void(std::size_t row)> choose = {};
  bool isChecked = false, isEnabled = true;
};

// What the program does; an absent one does nothing, but that without `pause` a row that plays is played again. Without `more`
// rows have no menu and no control for it.
struct TrackActions {
  std::function<void(std::size_t row)> play = {}, pause = {}, favorite = {};
  std::function<std::vector<TrackCommand>(std::size_t row)> more = {};
  std::function<void(std::size_t row, std::size_t artist)> artist = {};
};

// What the table says, in the user's language.
struct TrackTexts {
  std::string title = "Title", artists = "Artist", time = "Time";  // of the columns
  // The rest is for assistive clients: the controls of a row, and what is said in its name.
  std::string play = "Play", pause = "Pause", favorite = "Favorite", more = "More";
  std::string isFavorite = "favorite", isPlaying = "playing", isPaused = "paused";
};

class TrackTable : public platform::NSView,
                   public platform::NSTableViewDataSource,
                   public platform::NSTableViewCellSource,
                   public platform::NSTableViewDelegate,
                   public platform::NSTableViewRowControls,
                   public TrackModel::Observer {
 public:
  static const platform::ClassInfo staticClassInfo;
  const platform::ClassInfo& classInfo() const override { return staticClassInfo; }

  // 600 by 400 points until it is resized. The table keeps the model alive; a null model stops the program.
  TrackTable(std::shared_ptr<TrackModel> model, TrackActions actions);
  ~TrackTable() override;
  void didInit() override;

  const std::shared_ptr<TrackModel>& model() const { return model_; }
  // For selection, scrolling and the keyboard; its data source and delegate are this view.
  const platform::Ref<platform::NSTableView>& table() const { return table_; }
  const platform::Ref<platform::NSScrollView>& scrollView() const { return scrollView_; }
  // The table's name for assistive clients; "Tracks" at first.
  void setName(const std::string& name);
  void setTexts(TrackTexts texts);
  void setShowsHeader(bool shows);  // on at first
  // Called after each change of the selection, whoever made it. The table may be removed in it.
  void setOnSelectionChange(std::function<void()> changed) { selectionChanged_ = std::move(changed); }

  void layout() override;

  // From the table.
  std::size_t numberOfRowsInTableView(platform::NSTableView& table) override;
  platform::Ref<platform::NSObject> tableViewObjectValue(platform::NSTableView&, platform::NSTableColumn&,
                                                         std::size_t) override {
    return nullptr;
  }
  void tableViewSortDescriptorsDidChange(platform::NSTableView& table) override;
  platform::Ref<platform::NSView> tableViewViewForRow(platform::NSTableView& table, std::size_t row) override;
  bool tableViewUpdateViewOfRow(platform::NSTableView& table, platform::NSView& view, std::size_t row) override;
  void tableViewSelectionDidChange(platform::NSTableView& table) override;
  void tableViewHoveredRowDidChange(platform::NSTableView& table, std::optional<std::size_t> row) override;
  void tableViewKeyboardRowDidChange(platform::NSTableView& table, std::optional<std::size_t> row) override;
  void tableViewRowWasDoubleClicked(platform::NSTableView& table, std::size_t row) override;
  bool tableViewRowWasEntered(platform::NSTableView& table, std::size_t row) override;
  bool tableViewShowMenuForRow(platform::NSTableView& table, std::size_t row, platform::CGPoint place) override;
  std::string tableViewTypeSelectStringForRow(platform::NSTableView& table, std::size_t row) override;
  std::string tableViewNameOfRow(platform::NSTableView& table, std::size_t row) override;
  std::vector<platform::TableRowControl> tableViewControlsOfRow(platform::NSTableView& table, std::size_t row) override;
  void tableViewPressControl(platform::NSTableView& table, std::size_t row, std::size_t control) override;

  // From the model.
  void rowsWereInserted(std::size_t first, std::size_t count) override;
  void rowsWereRemoved(std::size_t first, std::size_t count) override;
  void rowWasMoved(std::size_t from, std::size_t to) override;
  void rowsDidChange(std::size_t first, std::size_t count) override;
  void allDidChange() override;

 private:
  class Clicks;
  TrackTableRow* shownRow(std::size_t row) const;
  void showStatesOfRows();
  void showState(TrackTableRow& view, std::size_t row) const;
  void placeColumns();
  void playOrPause(std::size_t row);
  void closeMenu();

  const std::shared_ptr<TrackModel> model_;
  const TrackActions actions_;
  TrackTexts texts_;
  const platform::Ref<platform::NSScrollView> scrollView_;
  const platform::Ref<platform::NSTableView> table_;
  const platform::Ref<platform::NSTableHeaderView> header_;
  std::vector<platform::Ref<platform::NSTableColumn>> columns_;
  std::shared_ptr<Clicks> clicks_;
  std::function<void()> selectionChanged_;
  platform::Ref<platform::NSMenu> menu_;  // while it is open, with its row
  std::optional<std::size_t> menuRow_;
  std::vector<std::uint64_t> selectedIdentities_;  // of the selected rows; empty without identities
};

}  // namespace tessaluna::ready
