#include "gallery/tracks/TrackLibrary.h"

#include <gmock/gmock.h>

#include <algorithm>

#include "tests/harness/StillWorld.h"

namespace gallery {
namespace {

using namespace tessaluna::platform;
using tessaluna::ready::Playback;
using tessaluna::ready::TrackColumn;
using testing::ElementsAre;

class TrackLibraryTest : public harness::StillWorld {
 protected:
  const std::vector<Track> tracks = generatedTracks(50);
  const std::shared_ptr<TrackLibrary> library = std::make_shared<TrackLibrary>(tracks, TrackLibrary::Covers::Absent);
  std::vector<std::string> reports;
  const Ref<tessaluna::ready::TrackTable> table =
      makeTrackTable(library, [this](const std::string& what) { reports.push_back(what); });

  void perform(std::size_t row, std::string_view action) {
    accessibilityOf(table->table()->accessibleItem(row))->accessibilityPerformAction(action);
  }
};

TEST_F(TrackLibraryTest, OneTrackPlaysAtATime) {
  perform(2, "Play");
  perform(4, "Play");
  EXPECT_EQ(library->row(2).playback, Playback::None);
  EXPECT_EQ(library->row(4).playback, Playback::Playing);
  perform(4, "Pause");
  EXPECT_EQ(library->row(4).playback, Playback::Paused);
  library->pause(7);
  EXPECT_EQ(library->row(4).playback, Playback::Paused);
  EXPECT_THAT(reports, ElementsAre("playing " + tracks[2].title, "playing " + tracks[4].title, "paused " + tracks[4].title));
}

TEST_F(TrackLibraryTest, SortingOrdersTheTracksAndKeepsWhatPlays) {
  library->play(3);
  const auto isOrdered = [&](auto value, bool ascending) {
    for (std::size_t row = 1; row < library->count(); ++row)
      if (ascending ? value(library->track(row)) < value(library->track(row - 1))
                    : value(library->track(row - 1)) < value(library->track(row)))
        return false;
    return true;
  };
  for (const bool ascending : {true, false}) {
    library->sortBy(TrackColumn::Title, ascending);
    EXPECT_TRUE(isOrdered([](const Track& track) { return track.title; }, ascending));
    library->sortBy(TrackColumn::Artists, ascending);
    EXPECT_TRUE(isOrdered([](const Track& track) { return track.artists; }, ascending));
    library->sortBy(TrackColumn::Time, ascending);
    EXPECT_TRUE(isOrdered([](const Track& track) { return track.seconds; }, ascending));
  }
  std::vector<std::string> playing;
  for (std::size_t row = 0; row < library->count(); ++row)
    if (library->row(row).playback == Playback::Playing) playing.push_back(library->track(row).title);
  EXPECT_THAT(playing, ElementsAre(tracks[3].title));
}

TEST_F(TrackLibraryTest, AFavoriteIsRememberedAndATrackIsRemoved) {
  const bool was = tracks[5].isFavorite;
  perform(5, "Favorite");
  EXPECT_EQ(library->row(5).isFavorite, !was);
  library->remove(0);
  EXPECT_EQ(library->count(), 49u);
  EXPECT_EQ(table->table()->numberOfRows(), 49u);
  EXPECT_EQ(library->row(4).isFavorite, !was);
}

}  // namespace
}  // namespace gallery
