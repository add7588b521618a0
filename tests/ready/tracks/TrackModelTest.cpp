#include "tessaluna/ready/tracks/TrackModel.h"

#include <gmock/gmock.h>

#include <functional>

namespace tessaluna::ready {
namespace {

using testing::ElementsAre;

class Songs : public TrackModel {
 public:
  std::size_t count() const override { return 3; }
  TrackRow row(std::size_t) const override { return {}; }
  using TrackModel::didChangeAll;
  using TrackModel::didChangeRows;
  using TrackModel::didInsertRows;
  using TrackModel::didMoveRow;
  using TrackModel::didRemoveRows;
};

class Listener : public TrackModel::Observer {
 public:
  std::vector<std::string> calls;
  std::function<void()> onCall;

  void rowsWereInserted(std::size_t first, std::size_t count) override { note("inserted", first, count); }
  void rowsWereRemoved(std::size_t first, std::size_t count) override { note("removed", first, count); }
  void rowWasMoved(std::size_t from, std::size_t to) override { note("moved", from, to); }
  void rowsDidChange(std::size_t first, std::size_t count) override { note("changed", first, count); }
  void allDidChange() override { note("all", 0, 0); }

 private:
  void note(const std::string& what, std::size_t a, std::size_t b) {
    calls.push_back(what + " " + std::to_string(a) + " " + std::to_string(b));
    if (onCall) onCall();
  }
};

TEST(TrackModelTest, EachChangeIsReportedToAllObservers) {
  Songs songs;
  Listener one, other;
  songs.addObserver(one);
  songs.addObserver(other);
  songs.didInsertRows(4);
  songs.didRemoveRows(1, 2);
  songs.didMoveRow(0, 2);
  songs.didChangeRows(1);
  songs.didChangeAll();
  EXPECT_THAT(one.calls, ElementsAre("inserted 4 1", "removed 1 2", "moved 0 2", "changed 1 1", "all 0 0"));
  EXPECT_EQ(other.calls, one.calls);
}

TEST(TrackModelTest, AnObserverThatAnotherOneEndsIsNotNotified) {
  Songs songs;
  Listener first, second;
  songs.addObserver(first);
  songs.addObserver(second);
  first.onCall = [&] { songs.removeObserver(second); };
  songs.didChangeAll();
  EXPECT_EQ(first.calls.size(), 1u);
  EXPECT_TRUE(second.calls.empty());
}

TEST(TrackModelTest, WithoutWordOfItsOwnAModelIsNotSortedAndHasNoIdentities) {
  const Songs songs;
  EXPECT_FALSE(songs.isSortable());
  EXPECT_EQ(songs.identityOf(1), 0u);
}

}  // namespace
}  // namespace tessaluna::ready
