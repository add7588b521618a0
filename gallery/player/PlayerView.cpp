#include "gallery/player/PlayerView.h"

#include <utility>

#include "gallery/covers/KeyboardCover.h"
#include "gallery/player/playerPlaces.h"
#include "tessaluna/platform/accessibility/names.h"
#include "tessaluna/platform/events/NSEvent.h"
#include "tessaluna/platform/events/keyEquivalents.h"
#include "tessaluna/platform/graphics/NSColor.h"
#include "tessaluna/platform/graphics/NSRect.h"
#include "tessaluna/platform/text/NSFont.h"
#include "tessaluna/platform/windows/NSWindow.h"
#include "tessaluna/ready/parts/controlName.h"
#include "tessaluna/uikit/cells/UnderlinedSegmentedCell.h"

namespace gallery {

using namespace tessaluna::platform;
using namespace tessaluna::ready;
using namespace TessalunaUIKit;

namespace {

constexpr CGFloat titleSize = 20, noteSize = 12;
constexpr double secondsPerDownloadedSong = 2;

// Grays, which follow the palette where neutral colors do.
Ref<NSColor> noteColor() { return NSColor::colorWithCalibratedWhite(0.36, 1); }
Ref<NSColor> lineColor() { return NSColor::colorWithCalibratedWhite(0.85, 1); }
Ref<NSColor> accentColor() { return NSColor::alternateSelectedControlColor(); }

// A chevron with room around it to hit.
class Arrow : public PrevNextButton {
 public:
  using PrevNextButton::PrevNextButton;
  void drawRect(CGRect) override { PrevNextButton::drawRect(NSInsetRect(bounds(), 9, 7)); }
};

Ref<NSTextField> makeLabel(const Ref<NSFont>& font) {
  const auto label = NSTextField::labelWithString("");
  label->setFont(font);
  label->setLineBreakMode(NSLineBreakByTruncatingTail);
  return label;
}

// A view that does not fit is hidden.
void place(NSView& view, CGRect frame) {
  view.setHidden(NSIsEmptyRect(frame));
  view.setFrame(frame);
}

}  // namespace

PlayerView::PlayerView(CGRect frame, std::shared_ptr<MusicLibrary> library)
    : NSView(frame),
      library_(std::move(library)),
      player_(std::make_shared<MusicPlayer>(library_)),
      songs_(std::make_shared<SongList>(library_, player_, SongList::Order::Sortable)),
      upNext_(std::make_shared<SongList>(library_, player_, SongList::Order::AsGiven)),
      albums_(std::make_shared<AlbumList>(library_, player_)),
      collections_(library_),
      side_(std::make_shared<PlayerSideBar>(collections_)),
      found_(library_) {}

void PlayerView::didInit() {
  NSView::didInit();
  makeTop();
  makeSide();
  makeMiddle();
  makeFoot();
  player_->setOnChange([this] { showPlayback(); });
  tasks_->setOnEnd([this](const std::string& title, SimulatedTasks::End end) {
    report(title + (end == SimulatedTasks::End::Stopped ? ": stopped" : ": done"));
    setNeedsLayout(true);
  });
  show(collections_.allMusic());
  showTab(Tab::Songs);
  showPlayback();
}

void PlayerView::makeTop() {
  const auto makeArrow = [this](bool isNext, const std::string& name) {
    const auto arrow = make<Arrow>(CGRect{});
    arrow->setNext(isNext);
    arrow->setAction([this, isNext] {
      visit_ = isNext ? visit_ + 1 : visit_ - 1;
      showCollection();
      report(shownTitle());
    });
    setNameAndToolTip(*arrow, name);
    addSubview(arrow);
    return arrow;
  };
  back_ = makeArrow(false, "Back");
  forward_ = makeArrow(true, "Forward");

  search_ = make<SearchField>(CGRect{});
  search_->setTexts({.placeholder = "Search artists, albums and tracks"});
  search_->setSource([this](const SearchQuestion& question) { question.answer(found_.rowsFor(question.text())); });
  search_->setOnPick([this](const SearchRow& row) { pick(row); });
  search_->setOnSearch([this](const std::string& text) { searchFor(text); });
  addSubview(search_);

  taskBar_ = make<TaskBar>(CGRect{});
  tasks_ = std::make_unique<SimulatedTasks>(taskBar_);
  addSubview(taskBar_);
}

void PlayerView::makeSide() {
  cover_ = make<KeyboardCover>(CGRect{});
  cover_->setImageScaling(NSImageScaleProportionallyUpOrDown);
  cover_->setClosesByClickAndEscape(true);
  addSubview(cover_);

  sideBar_ = make<SideBar>(side_);
  sideBar_->setName("Library");
  sideBar_->setOnChoose([this](const SideItem& item) {
    show(*collections_.find(item.title));
    report(item.title);
  });
  addSubview(sideBar_);
}

void PlayerView::makeMiddle() {
  title_ = makeLabel(NSFont::boldSystemFontOfSize(titleSize));
  note_ = makeLabel(NSFont::systemFontOfSize(noteSize));
  note_->setTextColor(noteColor());
  addSubview(title_);
  addSubview(note_);
  makePlacesButton();
  makeTabs();
  makeTables();
}

void PlayerView::makePlacesButton() {
  // It shows its purpose and not what was chosen last: the title shows the current collection.
  placesButton_ = make<NSPopUpButton>(CGRect{}, /*pullsDown=*/true);
  placesButton_->addItemWithTitle("Library");
  for (const CollectionSection& section : collections_.sections())
    for (const Collection& collection : section.collections) placesButton_->addItemWithTitle(collection.title);
  placesButton_->setAction([this] { show(*collections_.find(placesButton_->titleOfSelectedItem())); });
  setNameAndToolTip(*placesButton_, "Library");
  addSubview(placesButton_);
}

void PlayerView::makeTabs() {
  const auto cell = make<UnderlinedSegmentedCell>();
  cell->setUseDarkTheme(false);
  cell->setUnderlineColor(accentColor());
  tabs_ = make<NSSegmentedControl>(CGRect{});
  tabs_->setCell(cell);
  tabs_->setPutsOverflowIntoMenu(true);
  cell->accessibilitySetOverrideValue("What the list shows", NSAccessibilityDescriptionAttribute);
  tabs_->setSegmentCount(3);
  for (const auto& [tab, label] :
       {std::pair(Tab::Songs, "Tracks"), std::pair(Tab::Albums, "Albums"), std::pair(Tab::UpNext, "Up next")})
    tabs_->setLabelForSegment(label, static_cast<std::size_t>(tab));
  tabs_->setAction([this] { showTab(static_cast<Tab>(tabs_->selectedSegment().value_or(0))); });
  addSubview(tabs_);
}

void PlayerView::makeTables() {
  songTable_ = makeTable(
      songs_, [this](std::size_t row) { return SongNumbers{songs_->songs()[row]}; },
      [this](std::size_t row) {
        const std::size_t song = songs_->songs()[row];
        // A paused song continues.
        if (player_->playbackOf(song) == Playback::Paused) player_->playOrPause();
        else player_->play(songs_->songs(), row);
      });
  albumTable_ = makeTable(
      albums_, [this](std::size_t row) { return library_->albums()[albums_->albumAt(row)].songs; },
      [this](std::size_t row) {
        if (albums_->row(row).playback == Playback::Paused) player_->playOrPause();
        else player_->play(library_->albums()[albums_->albumAt(row)].songs, 0);
      });
  upNextTable_ = makeTable(
      upNext_, [this](std::size_t row) { return SongNumbers{upNext_->songs()[row]}; },
      [this](std::size_t row) {
        if (player_->place() == row && !player_->isPlaying()) player_->playOrPause();
        else player_->playAt(row);
      });
  albumTable_->setName("Albums");
  upNextTable_->setName("Up next");
}

template <class Model, class SongsOfRow>
Ref<TrackTable> PlayerView::makeTable(const std::shared_ptr<Model>& model, SongsOfRow songsOf,
                                      std::function<void(std::size_t)> play) {
  const auto playAndReport = [this, list = model.get(), play = std::move(play)](std::size_t row) {
    const std::string title = list->row(row).title;
    play(row);
    report("playing " + title);
  };
  TrackActions actions{.play = playAndReport};
  actions.pause = [this](std::size_t) {
    player_->pause();
    report("paused");
  };
  actions.favorite = [this, songsOf](std::size_t row) { toggleFavorite(songsOf(row)); };
  actions.more = [this, songsOf, playAndReport](std::size_t row) { return commandsFor(songsOf(row), playAndReport); };
  actions.artist = [this, list = model.get()](std::size_t row, std::size_t artist) {
    show(collections_.ofArtist(list->row(row).artists[artist]));
    report("artist " + shownTitle());
  };
  const auto table = make<TrackTable>(model, std::move(actions));
  addSubview(table);
  return table;
}

std::vector<TrackCommand> PlayerView::commandsFor(const SongNumbers& songs, const std::function<void(std::size_t)>& play) {
  const Song& first = library_->songs()[songs.front()];
  const std::string title = songs.size() == 1 ? first.track.title : library_->albums()[first.album].title;
  const auto playNext = [this, songs, title](std::size_t) {
    player_->playNext(songs);
    report("next " + title);
  };
  const auto favorite = [this, songs](std::size_t) { toggleFavorite(songs); };
  const auto showAlbum = [this, album = first.album](std::size_t) {
    show(collections_.ofAlbum(album));
    showTab(Tab::Songs);
    report("album " + shownTitle());
  };
  const auto download = [this, songs, title](std::size_t) {
    tasks_->begin("Downloading " + title, secondsPerDownloadedSong * static_cast<double>(songs.size()));
    setNeedsLayout(true);
    report("downloading " + title);
  };
  return {{.title = "Play", .choose = play},
          {.title = "Play next", .choose = playNext},
          {.title = "Favorite", .choose = favorite, .isChecked = library_->areFavorites(songs)},
          {},
          {.title = "Show album", .choose = showAlbum},
          {.title = "Download", .choose = download}};
}

void PlayerView::makeFoot() {
  transport_ = make<TransportBar>(CGRect{});
  transport_->setActions({.previous = [this] { player_->previous(); },
                          .playOrPause = [this] { playOrPause(); },
                          .next = [this] { player_->next(); },
                          .shuffle = [this](bool isOn) { player_->setShuffled(isOn); },
                          .repeat = [this](bool isOn) { player_->setRepeated(isOn); },
                          .seek = [this](double seconds) { player_->seek(seconds); },
                          .setVolume = [this](double volume) { player_->setVolume(volume); }});
  addSubview(transport_);
}

// Places.

void PlayerView::layout() {
  NSView::layout();
  const PlayerPlaces places = playerPlaces(bounds().size, taskBar_->taskCount() > 0 ? TaskLine::Shown : TaskLine::Absent);
  // The list is what the backgrounds leave free. While it stays, as when only a text has changed, they stay too.
  if (songTable_->frame() != places.list) setNeedsDisplay(true);
  place(*back_, places.back);
  place(*forward_, places.forward);
  place(*search_, places.search);
  taskBar_->setFrame(places.tasks);  // it hides itself
  place(*cover_, places.cover);
  place(*sideBar_, places.sideBar);
  place(*title_, places.title);
  place(*note_, places.note);
  place(*placesButton_, places.places);
  place(*tabs_, places.tabs);
  for (const Ref<TrackTable>& table : {songTable_, albumTable_, upNextTable_}) table->setFrame(places.list);
  place(*transport_, places.transport);
}

void PlayerView::drawRect(CGRect) {
  const PlayerPlaces places = playerPlaces(bounds().size, taskBar_->taskCount() > 0 ? TaskLine::Shown : TaskLine::Absent);
  NSColor::windowBackgroundColor()->setFill();
  NSRectFill(bounds());
  NSColor::controlBackgroundColor()->setFill();
  NSRectFill(places.middle);
  lineColor()->setFill();
  const CGRect& middle = places.middle;
  NSRectFill({0, middle.origin.y - 1, bounds().size.width, 1});
  NSRectFill({0, CGRectGetMaxY(middle), bounds().size.width, 1});
  if (middle.origin.x > 0) NSRectFill({middle.origin.x - 1, middle.origin.y, 1, middle.size.height});
}

// What shows.

const Ref<TrackTable>& PlayerView::table(Tab tab) const {
  switch (tab) {
    case Tab::Songs: return songTable_;
    case Tab::Albums: return albumTable_;
    case Tab::UpNext: break;
  }
  return upNextTable_;
}

void PlayerView::showTab(Tab tab) {
  tabs_->setSelectedSegment(static_cast<std::size_t>(tab));
  for (const Tab each : {Tab::Songs, Tab::Albums, Tab::UpNext}) table(each)->setHidden(each != tab);
  // Up next begins where the queue is.
  if (const auto place = player_->place(); tab == Tab::UpNext && place) upNextTable_->table()->scrollRowToVisible(*place);
}

// Forgets what was visited after the collection that is being left.
void PlayerView::show(const Collection& collection) {
  if (!visited_.empty()) visited_.resize(visit_ + 1);
  if (visited_.empty() || visited_.back().title != collection.title) visited_.push_back(collection);
  visit_ = visited_.size() - 1;
  showCollection();
}

void PlayerView::showCollection() {
  const Collection& collection = visited_[visit_];
  const SongNumbers songs = collection.songs();
  title_->setStringValue(collection.title);
  note_->setStringValue(collections_.noteOn(collection));
  // In its own order, however the collection before was sorted.
  songTable_->table()->setSortDescriptors({});
  albumTable_->table()->setSortDescriptors({});
  albums_->showAlbumsOf(songs);
  songs_->setSongs(songs);
  back_->setEnabled(visit_ > 0);
  forward_->setEnabled(visit_ + 1 < visited_.size());
  sideBar_->setSelected(collection.title);
  if (tabs_->selectedSegment() == static_cast<std::size_t>(Tab::UpNext)) showTab(Tab::Songs);
}

void PlayerView::showPlayback() {
  if (upNext_->songs() != player_->queue()) upNext_->setSongs(player_->queue());
  else upNext_->songsDidChange();
  songs_->songsDidChange();
  albums_->albumsDidChange();
  if (const auto number = player_->song(); std::exchange(shownSong_, number) != number && number) {
    const auto& [track, album] = library_->songs()[*number];
    transport_->showSong(
        {.title = track.title, .artists = artistsText(track), .seconds = static_cast<double>(track.seconds)});
    cover_->accessibilitySetOverrideValue("Cover of " + library_->albums()[album].title,
                                          NSAccessibilityDescriptionAttribute);
    cover_->setImage(library_->largeCover(album));
  }
  transport_->showState(player_->state());
}

// What the user does.

void PlayerView::pick(const SearchRow& row) {
  const auto [kind, number] = found_.found(row);
  switch (kind) {
    case LibraryItem::Kind::Artist: show(collections_.ofArtist(library_->artists()[number])); break;
    case LibraryItem::Kind::Album: show(collections_.ofAlbum(number)); break;
    case LibraryItem::Kind::Track: {
      show(collections_.ofAlbum(library_->songs()[number].album));
      const SongNumbers& songs = songs_->songs();
      const auto place = static_cast<std::size_t>(std::ranges::find(songs, number) - songs.begin());
      player_->play(songs, place);
      songTable_->table()->scrollRowToVisible(place);
      break;
    }
  }
  showTab(Tab::Songs);
  report(row.title);
}

void PlayerView::searchFor(const std::string& text) {
  if (text.empty()) return show(collections_.allMusic());
  show({"“" + text + "”", [songs = found_.songsFor(text)] { return songs; }, "Search"});
  report("search for " + shownTitle());
}

// Makes all of them favorites or, if all of them already are, none.
void PlayerView::toggleFavorite(const SongNumbers& songs) {
  const bool areFavorites = library_->areFavorites(songs);
  for (const std::size_t song : songs) library_->setFavorite(song, !areFavorites);
  // The collection may be the favorites.
  const SongNumbers shown = visited_[visit_].songs();
  songs_->updateTo(shown);
  albums_->updateToAlbumsOf(shown);
  note_->setStringValue(collections_.noteOn(visited_[visit_]));
  upNext_->songsDidChange();
  side_->countsDidChange();
  report(areFavorites ? "no longer a favorite" : "favorite");
}

// Without a queue, plays the collection that is shown.
void PlayerView::playOrPause() {
  if (player_->song()) player_->playOrPause();
  else player_->play(songs_->songs(), 0);
  report(player_->isPlaying() ? "play" : "pause");
}

// A key that is held plays or pauses once.
void PlayerView::keyDown(const Ref<NSEvent>& event) {
  if (!isKeyEquivalent(*event, " ", 0)) return NSView::keyDown(event);
  if (!event->isARepeat()) playOrPause();
}

bool PlayerView::performKeyEquivalent(const Ref<NSEvent>& event) {
  constexpr auto command = NSEventModifierFlagControl | NSEventModifierFlagCommand;
  if ((event->modifierFlags() & command) && event->charactersIgnoringModifiers() == "f") {
    search_->field()->selectText(this);
    return true;
  }
  return NSView::performKeyEquivalent(event);
}

void PlayerView::start() {
  ticker_.start([this](double seconds) { advance(seconds); });
}

void PlayerView::advance(double seconds) {
  player_->advance(seconds);
  tasks_->advance(seconds);
  transport_->showState(player_->state());
}

void PlayerView::report(const std::string& what) const {
  if (report_) report_(what);
}

}  // namespace gallery
