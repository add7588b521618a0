#include "gallery/player/MusicPlayer.h"

#include <gmock/gmock.h>

#include <algorithm>

namespace gallery {
namespace {

using tessaluna::ready::Playback;
using testing::ElementsAre;
using testing::UnorderedElementsAre;

class MusicPlayerTest : public testing::Test {
 protected:
  MusicPlayerTest() {
    player.setOnChange([this] { ++changes; });
  }
  double secondsOf(std::size_t song) const { return library->songs()[song].track.seconds; }

  const std::shared_ptr<MusicLibrary> library = std::make_shared<MusicLibrary>(2);
  MusicPlayer player{library};
  int changes = 0;
};

TEST_F(MusicPlayerTest, WithoutAQueueNothingPlays) {
  player.playOrPause();
  player.next();
  player.previous();
  player.seek(3);
  player.setShuffled(true);
  player.advance(1);
  player.play({}, 0);
  EXPECT_EQ(player.song(), std::nullopt);
  EXPECT_FALSE(player.isPlaying());
  EXPECT_EQ(changes, 0);
}

TEST_F(MusicPlayerTest, PlaysAQueueFromTheChosenSong) {
  player.play({4, 5, 6}, 1);
  EXPECT_EQ(player.song(), 5u);
  EXPECT_EQ(player.playbackOf(5), Playback::Playing);
  EXPECT_EQ(player.playbackOf(4), Playback::None);
  player.advance(secondsOf(5) + 2);
  EXPECT_EQ(player.song(), 6u);
  EXPECT_EQ(changes, 2);
  player.pause();
  EXPECT_EQ(player.playbackOf(6), Playback::Paused);
}

TEST_F(MusicPlayerTest, PausesAtTheEndOfTheQueueUnlessItRepeats) {
  player.play({4, 5}, 1);
  player.advance(secondsOf(5) + 2);
  EXPECT_EQ(player.song(), 4u);
  EXPECT_FALSE(player.isPlaying());
  player.setRepeated(true);
  player.playAt(1);
  player.advance(secondsOf(5) + 2);
  EXPECT_EQ(player.song(), 4u);
  EXPECT_TRUE(player.isPlaying());
}

TEST_F(MusicPlayerTest, AQueueOfOneSongPausesAtItsEnd) {
  player.play({4}, 0);
  player.advance(secondsOf(4) + 2);
  EXPECT_FALSE(player.isPlaying());
  EXPECT_LT(player.state().position, 3);
  EXPECT_EQ(changes, 2);
}

TEST_F(MusicPlayerTest, AQueueOfOneSongRepeats) {
  player.setRepeated(true);
  player.play({4}, 0);
  player.advance(secondsOf(4) + 2);
  EXPECT_TRUE(player.isPlaying());
  EXPECT_NEAR(player.state().position, 2, 0.2);
  EXPECT_EQ(changes, 2);
  player.advance(secondsOf(4));
  EXPECT_TRUE(player.isPlaying());
  EXPECT_EQ(changes, 3);
}

TEST_F(MusicPlayerTest, ASongThatFollowsItselfPlaysTwice) {
  player.play({4, 4, 5}, 0);
  player.advance(secondsOf(4) + 2);
  EXPECT_EQ(player.place(), 1u);
  EXPECT_TRUE(player.isPlaying());
}

TEST_F(MusicPlayerTest, PreviousGoesToTheBeginningFirst) {
  player.play({4, 5}, 1);
  player.advance(20);
  player.previous();
  EXPECT_EQ(player.song(), 5u);
  EXPECT_LT(player.state().position, 1);
  player.previous();
  EXPECT_EQ(player.song(), 4u);
}

TEST_F(MusicPlayerTest, ShuffledTheSongContinuesAndTheOthersFollow) {
  player.play({1, 2, 3, 4, 5, 6, 7, 8}, 3);
  player.advance(10);
  const double position = player.state().position;
  player.setShuffled(true);
  EXPECT_EQ(player.song(), 4u);
  EXPECT_EQ(player.place(), 0u);
  EXPECT_EQ(player.state().position, position);
  EXPECT_THAT(player.queue(), UnorderedElementsAre(1, 2, 3, 4, 5, 6, 7, 8));
  EXPECT_FALSE(std::ranges::is_sorted(player.queue()));
  player.setShuffled(false);
  EXPECT_THAT(player.queue(), ElementsAre(1, 2, 3, 4, 5, 6, 7, 8));
  EXPECT_EQ(player.place(), 3u);
  EXPECT_EQ(player.state().position, position);
}

TEST_F(MusicPlayerTest, NoLongerShuffledASongThatIsThereTwiceKeepsItsPlace) {
  player.play({1, 2, 3, 2, 4}, 3);
  player.setShuffled(true);
  EXPECT_THAT(player.queue(), UnorderedElementsAre(1, 2, 2, 3, 4));
  player.setShuffled(false);
  EXPECT_THAT(player.queue(), ElementsAre(1, 2, 3, 2, 4));
  EXPECT_EQ(player.place(), 3u);
}

TEST_F(MusicPlayerTest, WhatComesNextFollowsTheSecondOfTwoEqualSongs) {
  player.play({1, 2, 3, 2, 4}, 3);
  player.setShuffled(true);
  player.playNext({7, 8});
  EXPECT_THAT(SongNumbers(player.queue().begin(), player.queue().begin() + 3), ElementsAre(2, 7, 8));
  player.next();
  player.setShuffled(false);
  EXPECT_THAT(player.queue(), ElementsAre(1, 2, 3, 2, 7, 8, 4));
  EXPECT_EQ(player.place(), 4u);
}

TEST_F(MusicPlayerTest, WhatComesNextFollowsTheSongThatPlays) {
  player.playNext({9});
  EXPECT_EQ(player.song(), 9u);
  player.play({1, 2, 3}, 1);
  player.advance(5);
  player.playNext({7, 8});
  EXPECT_THAT(player.queue(), ElementsAre(1, 2, 7, 8, 3));
  EXPECT_EQ(player.song(), 2u);
  player.advance(secondsOf(2));
  EXPECT_EQ(player.song(), 7u);
  player.setShuffled(true);
  player.setShuffled(false);
  EXPECT_THAT(player.queue(), ElementsAre(1, 2, 7, 8, 3));
}

TEST_F(MusicPlayerTest, HasTheStateThatATransportBarShows) {
  player.setVolume(0.4);
  player.setRepeated(true);
  player.play({1}, 0);
  EXPECT_TRUE(player.state().isSeeking) << "nothing is loaded yet";
  player.advance(12);
  const tessaluna::ready::TransportState state = player.state();
  EXPECT_TRUE(state.isPlaying);
  EXPECT_NEAR(state.position, 12, 0.2);
  EXPECT_EQ(state.volume, 0.4);
  EXPECT_TRUE(state.isRepeated);
  EXPECT_FALSE(state.isShuffled);
  EXPECT_GT(state.first.frames, 0u);
  player.seek(30);
  EXPECT_TRUE(player.state().isSeeking);
  EXPECT_EQ(player.state().position, 30);
}

}  // namespace
}  // namespace gallery
