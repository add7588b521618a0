#include "tessaluna/ready/tracks/TrackModel.h"

#include <algorithm>

namespace tessaluna::ready {

void TrackModel::removeObserver(Observer& observer) { std::erase(observers_, &observer); }

// An observer may end another one.
template <class Call>
void TrackModel::tell(Call call) {
  const std::vector<Observer*> all = observers_;
  for (Observer* observer : all)
    if (std::find(observers_.begin(), observers_.end(), observer) != observers_.end()) call(*observer);
}

void TrackModel::didInsertRows(std::size_t first, std::size_t count) {
  tell([&](Observer& observer) { observer.rowsWereInserted(first, count); });
}

void TrackModel::didRemoveRows(std::size_t first, std::size_t count) {
  tell([&](Observer& observer) { observer.rowsWereRemoved(first, count); });
}

void TrackModel::didMoveRow(std::size_t from, std::size_t to) {
  tell([&](Observer& observer) { observer.rowWasMoved(from, to); });
}

void TrackModel::didChangeRows(std::size_t first, std::size_t count) {
  tell([&](Observer& observer) { observer.rowsDidChange(first, count); });
}

void TrackModel::didChangeAll() {
  tell([](Observer& observer) { observer.allDidChange(); });
}

}  // namespace tessaluna::ready
