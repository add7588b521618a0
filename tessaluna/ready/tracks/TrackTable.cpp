#include "tessaluna/ready/tracks/TrackTable.h"

#include <algorithm>
#include <unordered_set>

#include "tessaluna/platform/accessibility/names.h"
#include "tessaluna/platform/foundation/stopProgram.h"
#include "tessaluna/platform/menus/NSMenu.h"
#include "tessaluna/platform/windows/NSWindow.h"
#include "tessaluna/ready/tracks/TrackTableRow.h"
#include "tessaluna/ready/tracks/trackPlaces.h"

namespace tessaluna::ready {

using namespace platform;
using namespace TessalunaUIKit;

const ClassInfo TrackTable::staticClassInfo{.name = "tessaluna.ready.TrackTable", .base = &NSView::staticClassInfo};

namespace {

constexpr CGFloat headerHeight = 26;
constexpr std::string_view rowIdentifier = "track";

struct ColumnLook {
  std::string_view identifier;
  std::string TrackTexts::*title = nullptr;  // null for a column without one
  std::optional<TrackColumn> column = {};    // absent for one that does not sort
};

// In the order of TrackColumns.
constexpr ColumnLook columnLooks[] = {
    {"play"},     {"title", &TrackTexts::title, TrackColumn::Title}, {"artists", &TrackTexts::artists, TrackColumn::Artists},
    {"controls"}, {"time", &TrackTexts::time, TrackColumn::Time},    {"rest"}};

// The controls of a row in the order of the keys: play, the artists that have a name, favorite, more.
struct ControlOrder {
  std::size_t artists = 0;
  std::size_t favorite() const { return 1 + artists; }
  std::size_t more() const { return 2 + artists; }
};

}  // namespace

// The controls of the rows keep their target alive, and the table its rows: this is in between.
class TrackTable::Clicks : public TrackListRowActionTarget, public LinkTextFieldActionTarget {
 public:
  explicit Clicks(TrackTable& table) : table_(&table) {}
  void end() { table_ = nullptr; }

  void trackRowPlayButtonClicked(TrackRowPlayButton& button) override {
    const Ref<NSObject> held = heldTable();
    if (const auto row = rowOf(button)) table_->playOrPause(*row);
  }
  void trackRowFavoriteButtonClicked(TrackRowFavoriteButton& button) override {
    const Ref<NSObject> held = heldTable();
    const auto row = rowOf(button);
    if (row && table_->actions_.favorite) table_->actions_.favorite(*row);
  }
  void trackRowMoreButtonClicked(TrackRowMoreButton& button) override {
    const Ref<NSObject> held = heldTable();
    const auto row = rowOf(button);
    if (!row) return;
    const CGRect place = table_->table_->convertRectFromView(button.bounds(), &button);
    table_->tableViewShowMenuForRow(*table_->table_, *row, {place.origin.x, CGRectGetMaxY(place)});
  }
  void linkClicked(std::size_t artist, MultipleLinksTextField& sender) override {
    const Ref<NSObject> held = heldTable();
    const auto row = rowOf(sender);
    // The row may have got another track since the pointer last moved.
    if (row && table_->actions_.artist && artist < table_->model_->row(*row).artists.size())
      table_->actions_.artist(*row, artist);
  }

 private:
  // An action may remove the table, and the function that runs is the table's.
  Ref<NSObject> heldTable() const { return table_ ? table_->shared_from_this() : nullptr; }
  std::optional<std::size_t> rowOf(const NSView& view) const {
    return table_ ? table_->table_->rowForView(view) : std::nullopt;
  }
  TrackTable* table_;
};

TrackTable::TrackTable(std::shared_ptr<TrackModel> model, TrackActions actions)
    : NSView(CGRect{0, 0, 600, 400}),
      model_(std::move(model)),
      actions_(std::move(actions)),
      scrollView_(make<NSScrollView>(CGRect{0, 0, 600, 400})),
      table_(make<NSTableView>(CGRect{0, 0, 600, 0})),
      header_(make<NSTableHeaderView>(CGRect{0, 0, 600, headerHeight})),
      clicks_(std::make_shared<Clicks>(*this)) {
  if (!model_) stopProgram("TrackTable: made without a model");
  setAutoresizingMask(NSViewWidthSizable | NSViewHeightSizable);
  for (const ColumnLook& look : columnLooks) {
    const auto column = make<NSTableColumn>(std::string(look.identifier));
    if (look.title) column->setTitle(texts_.*look.title);
    column->setMinWidth(0);
    if (look.column == TrackColumn::Time) column->setTitleEnd(NSTableColumn::TitleEnd::Trailing);
    column->setResizable(false);
    if (look.column && model_->isSortable())
      column->setSortDescriptorPrototype(make<NSSortDescriptor>(std::string(look.identifier), true));
    table_->addTableColumn(column);
    columns_.push_back(column);
  }
  table_->setRowHeight(trackRowHeight);
  table_->setHeaderView(header_);
  scrollView_->setHasVerticalScroller(true);
  scrollView_->setDrawsBackground(false);
  scrollView_->setDocumentView(table_);
  addSubview(scrollView_);
  setName("Tracks");
}

TrackTable::~TrackTable() {
  model_->removeObserver(*this);
  clicks_->end();
}

void TrackTable::didInit() {
  NSView::didInit();
  table_->setDataSource(refTo(*this));
  table_->setDelegate(refTo(*this));
  table_->reloadData();
  model_->addObserver(*this);
}

void TrackTable::setName(const std::string& name) {
  table_->accessibilitySetOverrideValue(name, NSAccessibilityDescriptionAttribute);
}

void TrackTable::setTexts(TrackTexts texts) {
  texts_ = std::move(texts);
  for (std::size_t i = 0; i < columns_.size(); ++i)
    if (columnLooks[i].title) columns_[i]->setTitle(texts_.*columnLooks[i].title);
  rowsDidChange(0, table_->numberOfRows());
}

void TrackTable::setShowsHeader(bool shows) {
  table_->setHeaderView(shows ? header_ : nullptr);
  setNeedsLayout(true);
}

// Places.

void TrackTable::layout() {
  NSView::layout();
  scrollView_->setFrame(bounds());
  scrollView_->tile();  // the columns are as wide as what its bar leaves
  placeColumns();
}

void TrackTable::placeColumns() {
  const auto widths = trackColumnsForWidth(scrollView_->contentView()->bounds().size.width).all();
  for (std::size_t i = 0; i < widths.size(); ++i) {
    if (columns_[i]->width() != widths[i]) columns_[i]->setWidth(widths[i]);
    if (columns_[i]->isHidden() != (widths[i] <= 0)) columns_[i]->setHidden(widths[i] <= 0);
  }
}

// Rows.

std::size_t TrackTable::numberOfRowsInTableView(NSTableView&) { return model_->count(); }

Ref<NSView> TrackTable::tableViewViewForRow(NSTableView& table, std::size_t row) {
  auto view = std::dynamic_pointer_cast<TrackTableRow>(table.makeViewWithIdentifier(std::string(rowIdentifier)));
  if (view) {
    view->endPresses();
  } else {
    view = make<TrackTableRow>(clicks_, clicks_, actions_.more ? TrackTableRow::More::Shown : TrackTableRow::More::Absent);
    view->setIdentifier(std::string(rowIdentifier));
  }
  view->showTrack(model_->row(row));
  showState(*view, row);
  return view;
}

bool TrackTable::tableViewUpdateViewOfRow(NSTableView&, NSView& view, std::size_t row) {
  auto* track = dynamic_cast<TrackTableRow*>(&view);
  if (track) track->showTrack(model_->row(row));
  return track != nullptr;
}

TrackTableRow* TrackTable::shownRow(std::size_t row) const {
  return dynamic_cast<TrackTableRow*>(table_->viewAtRow(row).get());
}

void TrackTable::showState(TrackTableRow& view, std::size_t row) const {
  view.showState({.isHovered = table_->hoveredRow() == row,
                  .hasKeyboard = table_->keyboardRow() == row,
                  .isSelected = table_->isRowSelected(row)});
}

// Few rows show, so that looking at all of them costs less than remembering which showed something.
void TrackTable::showStatesOfRows() {
  for (const Ref<NSView>& view : table_->subviews())
    if (auto* track = dynamic_cast<TrackTableRow*>(view.get()))
      if (const std::optional<std::size_t> row = table_->rowForView(*view)) showState(*track, *row);
}

void TrackTable::tableViewSelectionDidChange(NSTableView&) {
  selectedIdentities_.clear();
  for (const std::size_t row : table_->selectedAccessibleItems())
    if (const std::uint64_t identity = model_->identityOf(row)) selectedIdentities_.push_back(identity);
  showStatesOfRows();
  // A copy: the call may set another.
  const auto changed = selectionChanged_;
  if (changed) changed();
}

void TrackTable::tableViewHoveredRowDidChange(NSTableView&, std::optional<std::size_t>) { showStatesOfRows(); }
void TrackTable::tableViewKeyboardRowDidChange(NSTableView&, std::optional<std::size_t>) { showStatesOfRows(); }

void TrackTable::tableViewSortDescriptorsDidChange(NSTableView& table) {
  if (table.sortDescriptors().empty()) return;
  const NSSortDescriptor& first = *table.sortDescriptors().front();
  for (const ColumnLook& look : columnLooks)
    if (look.column && look.identifier == first.key()) return model_->sortBy(*look.column, first.ascending());
}

// What the user does.

void TrackTable::playOrPause(std::size_t row) {
  const bool isPlaying = model_->row(row).playback == Playback::Playing;
  const std::function<void(std::size_t)>& action = isPlaying && actions_.pause ? actions_.pause : actions_.play;
  if (action) action(row);
}

void TrackTable::tableViewRowWasDoubleClicked(NSTableView&, std::size_t row) {
  if (actions_.play) actions_.play(row);
}

bool TrackTable::tableViewRowWasEntered(NSTableView&, std::size_t row) {
  if (!actions_.play) return false;
  actions_.play(row);
  return true;
}

bool TrackTable::tableViewShowMenuForRow(NSTableView& table, std::size_t row, CGPoint place) {
  if (!actions_.more) return false;
  closeMenu();
  // The list may change while the program makes the commands: from here on the row is followed.
  menuRow_ = row;
  const auto commands = std::make_shared<std::vector<TrackCommand>>(actions_.more(row));
  if (!menuRow_) return false;
  const auto menu = make<NSMenu>();
  menu->setAutoenablesItems(false);
  for (const TrackCommand& command : *commands) {
    const Ref<NSMenuItem> item = command.title.empty() ? NSMenuItem::separatorItem() : make<NSMenuItem>(command.title);
    item->setState(command.isChecked ? NSControlStateValueOn : NSControlStateValueOff);
    item->setEnabled(command.isEnabled);
    item->setTag(static_cast<std::int64_t>(menu->numberOfItems()));
    menu->addItem(item);
  }
  const auto closed = [weak = WeakRef<NSObject>(shared_from_this()), commands,
                       closing = menu.get()](const Ref<NSMenuItem>& chosen) {
    const auto self = std::dynamic_pointer_cast<TrackTable>(weak.lock());
    // One that closeMenu has closed reports so when another may be open.
    if (!self || self->menu_.get() != closing) return;
    const std::optional<std::size_t> now = std::exchange(self->menuRow_, std::nullopt);
    self->menu_ = nullptr;
    if (!chosen || !now) return;
    const auto& choose = (*commands)[static_cast<std::size_t>(chosen->tag())].choose;
    if (choose) choose(*now);
  };
  menu_ = menu;
  if (menu->popUpMenuPositioningItem(nullptr, place, &table, closed)) return true;
  menuRow_ = std::nullopt;
  menu_ = nullptr;
  return false;
}

void TrackTable::closeMenu() {
  menuRow_ = std::nullopt;
  if (const Ref<NSMenu> menu = std::exchange(menu_, nullptr)) menu->cancelTracking();
}

std::string TrackTable::tableViewTypeSelectStringForRow(NSTableView&, std::size_t row) { return model_->row(row).title; }

std::string TrackTable::tableViewNameOfRow(NSTableView&, std::size_t row) {
  const TrackRow track = model_->row(row);
  std::string name = track.title;
  const auto add = [&](const std::string& words) { name += words.empty() ? "" : ", " + words; };
  for (const std::string& artist : track.artists) add(artist);
  add(trackLengthText(track.seconds));
  if (track.isFavorite) add(texts_.isFavorite);
  if (track.playback != Playback::None) add(track.playback == Playback::Playing ? texts_.isPlaying : texts_.isPaused);
  return name;
}

std::vector<TableRowControl> TrackTable::tableViewControlsOfRow(NSTableView&, std::size_t row) {
  if (row >= model_->count()) return {};
  const TrackRow track = model_->row(row);
  const TrackTableRow* view = shownRow(row);
  const TrackRowPlaces places = trackRowPlaces(table_->bounds().size.width);
  const auto inTable = [&](CGRect place) {
    return view && place.size.width > 0 ? table_->convertRectFromView(place, view) : CGRect{};
  };
  std::vector<TableRowControl> controls;
  controls.push_back({.name = track.playback == Playback::Playing ? texts_.pause : texts_.play,
                      .frame = inTable(places.play),
                      .isRowAction = true});
  const std::vector<std::size_t> named = namedArtists(track);
  for (std::size_t i = 0; i < named.size(); ++i)
    controls.push_back({.name = track.artists[named[i]],
                        .role = NSAccessibilityLinkRole,
                        .frame = view ? inTable(view->frameOfArtist(i)) : CGRect{}});
  controls.push_back({.name = texts_.favorite,
                      .role = NSAccessibilityCheckBoxRole,
                      .frame = inTable(places.favorite),
                      .isOn = track.isFavorite,
                      .isRowAction = true});
  if (actions_.more)
    controls.push_back(
        {.name = texts_.more, .role = NSAccessibilityMenuButtonRole, .frame = inTable(places.more), .isRowAction = true});
  return controls;
}

void TrackTable::tableViewPressControl(NSTableView& table, std::size_t row, std::size_t control) {
  const std::vector<std::size_t> named = namedArtists(model_->row(row));
  const ControlOrder order{.artists = named.size()};
  if (control == 0) return playOrPause(row);
  if (control == order.favorite()) {
    if (actions_.favorite) actions_.favorite(row);
  } else if (control == order.more()) {
    const CGRect place = tableViewControlsOfRow(table, row)[control].frame;
    const CGRect at = NSIsEmptyRect(place) ? table.rectOfRow(row) : place;
    tableViewShowMenuForRow(table, row, {at.origin.x, CGRectGetMaxY(at)});
  } else if (actions_.artist && control <= order.artists) {
    actions_.artist(row, named[control - 1]);
  }
}

// What the model says. Whoever is notified of a change of the selection may remove the table.

void TrackTable::rowsWereInserted(std::size_t first, std::size_t count) {
  const Ref<NSObject> held = shared_from_this();
  if (menuRow_ && *menuRow_ >= first) *menuRow_ += count;
  table_->insertRowsAtIndexes(NSIndexSet(NSRange{first, count}));
}

void TrackTable::rowsWereRemoved(std::size_t first, std::size_t count) {
  const Ref<NSObject> held = shared_from_this();
  if (menuRow_ && *menuRow_ >= first && *menuRow_ < first + count) closeMenu();
  if (menuRow_ && *menuRow_ >= first + count) *menuRow_ -= count;
  const bool hadKeyboard = table_->keyboardRow().has_value();
  table_->removeRowsAtIndexes(NSIndexSet(NSRange{first, count}));
  // Whoever deletes rows with keys continues with the next one.
  if (hadKeyboard && table_->selectedRowIndexes().isEmpty() && table_->numberOfRows() > 0)
    table_->selectByKey(std::min(first, table_->numberOfRows() - 1), false);
}

void TrackTable::rowWasMoved(std::size_t from, std::size_t to) {
  const Ref<NSObject> held = shared_from_this();
  if (menuRow_ == from) menuRow_ = to;
  else if (menuRow_ && from < *menuRow_ && *menuRow_ <= to) --*menuRow_;
  else if (menuRow_ && to <= *menuRow_ && *menuRow_ < from) ++*menuRow_;
  table_->moveRowAtIndex(from, to);
}

void TrackTable::rowsDidChange(std::size_t first, std::size_t count) {
  const Ref<NSObject> held = shared_from_this();
  table_->reloadDataForRowIndexes(NSIndexSet(NSRange{first, count}));
}

void TrackTable::allDidChange() {
  const Ref<NSObject> held = shared_from_this();
  closeMenu();
  const std::unordered_set<std::uint64_t> selected(selectedIdentities_.begin(), selectedIdentities_.end());
  table_->reloadData();
  if (selected.empty()) return;
  NSIndexSet rows;
  for (std::size_t row = 0; row < table_->numberOfRows(); ++row)
    if (selected.contains(model_->identityOf(row))) rows.add(row);
  table_->selectRowIndexes(rows, NSTableView::Selecting::Replaces);
}

}  // namespace tessaluna::ready
