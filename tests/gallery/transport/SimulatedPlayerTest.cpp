#include "gallery/transport/SimulatedPlayer.h"

#include <gtest/gtest.h>

using gallery::SimulatedPlayer;

namespace {

struct SimulatedPlayerTest : testing::Test {
  SimulatedPlayerTest() { player.setPlaying(true); }
  SimulatedPlayer player{{{"First", 100, 1000}, {"Second", 60, 2000}}};
};

}  // namespace

TEST_F(SimulatedPlayerTest, PlaysOnceSomethingIsLoaded) {
  EXPECT_TRUE(player.isSeeking());
  player.advance(10);
  EXPECT_FALSE(player.isSeeking());
  EXPECT_NEAR(player.position(), 10, 0.1);
}

TEST_F(SimulatedPlayerTest, PausedItLoadsAndDoesNotAdvance) {
  player.setPlaying(false);
  player.advance(20);
  EXPECT_EQ(player.position(), 0);
  EXPECT_EQ(player.loaded(0).frames, 40000u);
  EXPECT_TRUE(player.loaded(0).isCompleted);
  EXPECT_EQ(player.loaded(1).start, 40000u);
  EXPECT_EQ(player.loaded(1).frames, 40000u);
}

TEST_F(SimulatedPlayerTest, TheBuffersTakeTurns) {
  player.advance(45);
  EXPECT_NEAR(player.position(), 45, 0.1);
  // The first buffer was played to its end and now holds the end of the song.
  EXPECT_EQ(player.loaded(0).start, 80000u);
  EXPECT_TRUE(player.loaded(1).isCompleted);
}

TEST_F(SimulatedPlayerTest, TheNextSongFollowsWithoutAGap) {
  player.advance(99);
  EXPECT_EQ(player.songIndex(), 0u);
  player.advance(3);
  EXPECT_EQ(player.songIndex(), 1u);
  EXPECT_NEAR(player.position(), 2, 0.2);
  player.advance(60);
  EXPECT_EQ(player.songIndex(), 0u);
}

TEST_F(SimulatedPlayerTest, AListOfOneSongBeginsAgain) {
  for (const double seconds : {20.0, 100.0}) {
    SimulatedPlayer one({{"Only", seconds, 1000}});
    one.setPlaying(true);
    one.advance(seconds - 1);
    EXPECT_EQ(one.passedEnds(), 0u);
    one.advance(3);
    EXPECT_EQ(one.passedEnds(), 1u);
    EXPECT_NEAR(one.position(), 2, 0.2);
    one.advance(seconds);
    EXPECT_EQ(one.passedEnds(), 2u);
    EXPECT_FALSE(one.isWaitingForData());
  }
}

TEST_F(SimulatedPlayerTest, OnASlowNetworkItWaitsForData) {
  player.setLoadingSpeed(0.5);
  player.advance(20);
  EXPECT_TRUE(player.isWaitingForData());
  EXPECT_NEAR(player.position(), 10, 0.2);
}

TEST_F(SimulatedPlayerTest, ASeekDropsWhatIsLoadedAndEndsWhenDataComes) {
  player.advance(5);
  player.setLoadingSpeed(0);
  player.seek(70);
  EXPECT_TRUE(player.isSeeking());
  EXPECT_EQ(player.position(), 70);
  EXPECT_EQ(player.loaded(0).frames, 0u);
  player.advance(1);
  EXPECT_TRUE(player.isSeeking());
  player.setLoadingSpeed(4);
  player.advance(1);
  EXPECT_FALSE(player.isSeeking());
  EXPECT_EQ(player.loaded(0).start, 70000u);
}

TEST_F(SimulatedPlayerTest, SkippingWrapsAroundAtTheEnds) {
  player.previous();
  EXPECT_EQ(player.songIndex(), 1u);
  player.next();
  EXPECT_EQ(player.songIndex(), 0u);
  EXPECT_EQ(player.position(), 0);
}

TEST_F(SimulatedPlayerTest, AnotherListLeavesTheSongPlaying) {
  player.advance(20);
  player.setSongs({{"Third", 30, 1000}, {"First", 100, 1000}, {"Fourth", 40, 1000}}, 1);
  EXPECT_EQ(player.song().title, "First");
  EXPECT_NEAR(player.position(), 20, 0.1);
  EXPECT_FALSE(player.isSeeking());
  player.advance(81);
  EXPECT_EQ(player.song().title, "Fourth");
}
