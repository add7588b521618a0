#include "tessaluna/ready/tracks/TrackModel.h"

namespace tessaluna::ready {

void TrackModel::didInsertRows(std::size_t first, std::size_t count) {
  observers_.notify([&](Observer& observer) { observer.rowsWereInserted(first, count); });
}

void TrackModel::didRemoveRows(std::size_t first, std::size_t count) {
  observers_.notify([&](Observer& observer) { observer.rowsWereRemoved(first, count); });
}

void TrackModel::didMoveRow(std::size_t from, std::size_t to) {
  observers_.notify([&](Observer& observer) { observer.rowWasMoved(from, to); });
}

void TrackModel::didChangeRows(std::size_t first, std::size_t count) {
  observers_.notify([&](Observer& observer) { observer.rowsDidChange(first, count); });
}

void TrackModel::didChangeAll() {
  observers_.notify([](Observer& observer) { observer.allDidChange(); });
}

}  // namespace tessaluna::ready
