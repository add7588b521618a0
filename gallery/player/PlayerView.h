// A small player's window as one view: ready-made hosts over a library of music and a player. It builds and places them, and
// connects what the user does in one to what the others show; the models hold what there is to show.
//
//   the space bar          plays and pauses, wherever nothing else takes it
//   Control-F, Command-F   go to the search field
#pragma once

#include <functional>
#include <memory>
#include <string>

#include "gallery/Ticker.h"
#include "gallery/player/AlbumList.h"
#include "gallery/player/Collections.h"
#include "gallery/player/MusicSearch.h"
#include "gallery/player/PlayerSideBar.h"
#include "gallery/player/SimulatedTasks.h"
#include "gallery/player/SongList.h"
#include "tessaluna/platform/views/NSPopUpButton.h"
#include "tessaluna/platform/views/NSSegmentedControl.h"
#include "tessaluna/ready/TessalunaReady.h"
#include "tessaluna/uikit/coverart/CoverArtThumbnailView.h"
#include "tessaluna/uikit/trackrow/PrevNextButton.h"

namespace gallery {

class PlayerView : public tessaluna::platform::NSView {
 public:
  PlayerView(tessaluna::platform::CGRect frame, std::shared_ptr<MusicLibrary> library);
  void didInit() override;

  // Is notified, in a few words, of what the user asked for.
  void setReport(std::function<void(const std::string&)> report) { report_ = std::move(report); }
  // Advances its time with the clock from now on.
  void start();
  void advance(double seconds);

  enum class Tab { Songs, Albums, UpNext };
  void showTab(Tab tab);
  void show(const Collection& collection);

  const Collections& collections() const { return collections_; }
  MusicPlayer& player() { return *player_; }
  SimulatedTasks& tasks() { return *tasks_; }
  const tessaluna::platform::Ref<tessaluna::ready::SearchField>& search() const { return search_; }
  const tessaluna::platform::Ref<tessaluna::ready::TrackTable>& table(Tab tab) const;
  const tessaluna::platform::Ref<tessaluna::ready::TransportBar>& transport() const { return transport_; }
  const tessaluna::platform::Ref<tessaluna::ready::TaskBar>& taskBar() const { return taskBar_; }
  const tessaluna::platform::Ref<TessalunaUIKit::CoverArtThumbnailView>& cover() const { return cover_; }
  const tessaluna::platform::Ref<tessaluna::platform::NSSegmentedControl>& tabs() const { return tabs_; }
  const tessaluna::platform::Ref<tessaluna::ready::SideBar>& sideBar() const { return sideBar_; }
  std::string shownTitle() const { return title_->stringValue(); }

  bool isFlipped() const override { return true; }
  void layout() override;
  void drawRect(tessaluna::platform::CGRect rect) override;
  void keyDown(const tessaluna::platform::Ref<tessaluna::platform::NSEvent>& event) override;
  bool performKeyEquivalent(const tessaluna::platform::Ref<tessaluna::platform::NSEvent>& event) override;

 private:
  void makeTop();
  void makeSide();
  void makeMiddle();
  void makePlacesButton();
  void makeTabs();
  void makeTables();
  void makeFoot();
  template <class Model, class SongsOfRow>
  tessaluna::platform::Ref<tessaluna::ready::TrackTable> makeTable(const std::shared_ptr<Model>& model, SongsOfRow songsOf,
                                                                   std::function<void(std::size_t)> play);
  std::vector<tessaluna::ready::TrackCommand> commandsFor(const SongNumbers& songs,
                                                          const std::function<void(std::size_t)>& play);
  void pick(const tessaluna::ready::SearchRow& row);
  void searchFor(const std::string& text);
  void playOrPause();
  void toggleFavorite(const SongNumbers& songs);
  void showCollection();
  void showPlayback();
  void report(const std::string& what) const;

  const std::shared_ptr<MusicLibrary> library_;
  const std::shared_ptr<MusicPlayer> player_;
  const std::shared_ptr<SongList> songs_, upNext_;
  const std::shared_ptr<AlbumList> albums_;
  const Collections collections_;
  const std::shared_ptr<PlayerSideBar> side_;
  const MusicSearch found_;
  std::unique_ptr<SimulatedTasks> tasks_;

  tessaluna::platform::Ref<tessaluna::ready::SearchField> search_;
  tessaluna::platform::Ref<tessaluna::ready::TaskBar> taskBar_;
  tessaluna::platform::Ref<TessalunaUIKit::PrevNextButton> back_, forward_;
  tessaluna::platform::Ref<TessalunaUIKit::CoverArtThumbnailView> cover_;
  tessaluna::platform::Ref<tessaluna::ready::SideBar> sideBar_;
  tessaluna::platform::Ref<tessaluna::platform::NSTextField> title_, note_;
  tessaluna::platform::Ref<tessaluna::platform::NSPopUpButton> placesButton_;
  tessaluna::platform::Ref<tessaluna::platform::NSSegmentedControl> tabs_;
  tessaluna::platform::Ref<tessaluna::ready::TrackTable> songTable_, albumTable_, upNextTable_;
  tessaluna::platform::Ref<tessaluna::ready::TransportBar> transport_;

  std::vector<Collection> visited_;  // the shown one is at `visit_`
  std::size_t visit_ = 0;
  std::optional<std::size_t> shownSong_;
  std::function<void(const std::string&)> report_;
  Ticker ticker_;
};

}  // namespace gallery
