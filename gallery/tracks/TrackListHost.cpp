#include "gallery/tracks/TrackListHost.h"

#include "tessaluna/platform/menus/NSMenu.h"

namespace gallery {

using namespace tessaluna::platform;
using namespace TessalunaUIKit;

namespace {

std::size_t rowOfItem(NSObject* item) { return static_cast<std::size_t>(dynamic_cast<NSMenuItem&>(*item).tag()); }

}  // namespace

const Selector TrackListHost::selectors_[] = {action<&TrackListHost::playFromMenu>("playFromMenu:"),
                                              action<&TrackListHost::toggleFavoriteFromMenu>("toggleFavoriteFromMenu:")};
const ClassInfo TrackListHost::staticClassInfo{
    .name = "gallery.TrackListHost", .base = &NSObject::staticClassInfo, .selectors = TrackListHost::selectors_};

TrackListHost::TrackListHost(std::vector<Track> tracks)
    : tracks_(std::move(tracks)),
      scrollView_(make<NSScrollView>(CGRect{0, 0, 900, 600})),
      table_(make<NSTableView>(CGRect{0, 0, 888, 0})) {
  scrollView_->setHasVerticalScroller(true);
  scrollView_->setDrawsBackground(false);  // the page's own shows
  table_->setAutoresizingMask(NSViewWidthSizable);
  scrollView_->setDocumentView(table_);
}

void TrackListHost::didInit() {
  NSObject::didInit();
  table_->setDataSource(refTo(*this));
  table_->setDelegate(refTo(*this));
  table_->reloadData();
}

void TrackListHost::close() {
  scrollView_->setDocumentView(nullptr);
  scrollView_->removeFromSuperview();
  scrollView_ = nullptr;
  table_ = nullptr;
}

std::size_t TrackListHost::numberOfRowsInTableView(NSTableView&) { return tracks_.size(); }

Ref<NSView> TrackListHost::tableViewViewForRow(NSTableView& table, std::size_t row) {
  auto view = std::dynamic_pointer_cast<TrackRowView>(table.makeViewWithIdentifier("track"));
  if (!view) {
    view = make<TrackRowView>(refTo(*this), refTo(*this));
    view->setIdentifier("track");
  }
  view->showTrack(row + 1, tracks_[row]);
  view->showState(stateOf(row));
  return view;
}

TrackRowState TrackListHost::stateOf(std::size_t row) const {
  return {.hasMouse = hovered_ == row,
          .isCurrent = current_ == row,
          .isPlaying = current_ == row && isPlaying_,
          .isFavorite = tracks_[row].isFavorite};
}

void TrackListHost::updateRow(std::size_t row) {
  // A row that does not show now is filled when it comes into sight.
  if (const auto view = std::dynamic_pointer_cast<TrackRowView>(table_->viewAtRow(row))) view->showState(stateOf(row));
}

void TrackListHost::tableViewHoveredRowDidChange(NSTableView&, std::optional<std::size_t> row) {
  const std::optional<std::size_t> earlier = std::exchange(hovered_, row);
  if (earlier) updateRow(*earlier);
  if (row) updateRow(*row);
}

void TrackListHost::tableViewSelectionDidChange(NSTableView& table) {
  report(std::to_string(table.selectedRowIndexes().count()) + " selected");
}

void TrackListHost::tableViewRowWasDoubleClicked(NSTableView&, std::size_t row) { play(row); }

void TrackListHost::trackRowPlayButtonClicked(TrackRowPlayButton& button) {
  if (const auto row = table_->rowForView(button)) play(*row);
}

void TrackListHost::trackRowFavoriteButtonClicked(TrackRowFavoriteButton& button) {
  if (const auto row = table_->rowForView(button)) toggleFavorite(*row);
}

void TrackListHost::trackRowMoreButtonClicked(TrackRowMoreButton& button) {
  const std::optional<std::size_t> row = table_->rowForView(button);
  if (!row) return;
  const auto menu = make<NSMenu>();
  menu->addItemWithTitle(current_ == row && isPlaying_ ? "Pause" : "Play", "playFromMenu:");
  menu->addItemWithTitle("Favorite", "toggleFavoriteFromMenu:")->setState(NSControlStateValue(tracks_[*row].isFavorite));
  for (const Ref<NSMenuItem>& item : menu->itemArray()) {
    item->setTarget(refTo(*this));
    item->setTag(static_cast<std::int64_t>(*row));
  }
  menu->popUpMenuPositioningItem(nullptr, {0, 0}, &button);
  report("more of track " + std::to_string(*row + 1));
}

void TrackListHost::linkClicked(std::size_t elementIndex, MultipleLinksTextField& sender) {
  const std::optional<std::size_t> row = table_->rowForView(sender);
  // The row may have got another track since the pointer last moved.
  if (row && elementIndex < tracks_[*row].artists.size()) report("artist " + tracks_[*row].artists[elementIndex]);
}

void TrackListHost::playFromMenu(NSObject* sender) { play(rowOfItem(sender)); }

void TrackListHost::toggleFavoriteFromMenu(NSObject* sender) { toggleFavorite(rowOfItem(sender)); }

void TrackListHost::play(std::size_t row) {
  const std::optional<std::size_t> earlier = current_;
  isPlaying_ = earlier == row ? !isPlaying_ : true;
  current_ = row;
  if (earlier) updateRow(*earlier);
  updateRow(row);
  report((isPlaying_ ? "playing " : "paused ") + tracks_[row].title);
}

void TrackListHost::toggleFavorite(std::size_t row) {
  tracks_[row].isFavorite = !tracks_[row].isFavorite;
  updateRow(row);
  report((tracks_[row].isFavorite ? "favorite " : "no favorite ") + tracks_[row].title);
}

void TrackListHost::report(const std::string& what) const {
  if (report_) report_(what);
}

}  // namespace gallery
