#include "gallery/player/MusicPlayer.h"

#include <algorithm>
#include <random>

namespace gallery {

using tessaluna::ready::Playback;
using tessaluna::ready::TransportState;

namespace {

constexpr double secondsOfBeginning = 3;

}  // namespace

std::vector<SimulatedPlayer::Song> MusicPlayer::songsOfQueue() const {
  std::vector<SimulatedPlayer::Song> songs;
  songs.reserve(queue_.size());
  for (const std::size_t number : queue_) {
    const Track& track = library_->songs()[number].track;
    songs.push_back({.title = track.title, .seconds = static_cast<double>(track.seconds)});
  }
  return songs;
}

std::optional<std::size_t> MusicPlayer::place() const {
  return player_ ? std::optional(player_->songIndex()) : std::nullopt;
}

std::optional<std::size_t> MusicPlayer::song() const {
  return player_ ? std::optional(queue_[player_->songIndex()]) : std::nullopt;
}

void MusicPlayer::play(SongNumbers songs, std::size_t place) {
  if (songs.empty()) return;
  queue_ = ordered_ = std::move(songs);
  player_.emplace(songsOfQueue());
  player_->skipTo(place);
  player_->setPlaying(true);
  if (isShuffled_) setShuffled(true);
  else if (changed_) changed_();
}

void MusicPlayer::playAt(std::size_t place) {
  player_->skipTo(place);
  setPlaying(true);
}

void MusicPlayer::playNext(const SongNumbers& songs) {
  if (!player_) return play(songs, 0);
  const std::size_t current = player_->songIndex();
  const auto insertAfter = [&](SongNumbers& list, std::size_t place) {
    list.insert(list.begin() + static_cast<std::ptrdiff_t>(place + 1), songs.begin(), songs.end());
  };
  const auto inOrder = std::ranges::find(ordered_, queue_[current]);
  insertAfter(ordered_, static_cast<std::size_t>(inOrder - ordered_.begin()));
  SongNumbers queue = queue_;
  insertAfter(queue, current);
  setQueue(std::move(queue), current);
}

// The song that plays is at that place of the other queue, and plays on.
void MusicPlayer::setQueue(SongNumbers queue, std::size_t place) {
  queue_ = std::move(queue);
  player_->setSongs(songsOfQueue(), place);
  if (changed_) changed_();
}

void MusicPlayer::setPlaying(bool isPlaying) {
  player_->setPlaying(isPlaying);
  if (changed_) changed_();
}

void MusicPlayer::pause() {
  if (isPlaying()) setPlaying(false);
}

void MusicPlayer::playOrPause() {
  if (player_) setPlaying(!player_->isPlaying());
}

void MusicPlayer::next() {
  if (!player_) return;
  player_->next();
  if (changed_) changed_();
}

void MusicPlayer::previous() {
  if (!player_) return;
  if (player_->position() > secondsOfBeginning) player_->seek(0);
  else player_->previous();
  if (changed_) changed_();
}

void MusicPlayer::seek(double seconds) {
  if (player_) player_->seek(seconds);
}

void MusicPlayer::setShuffled(bool isShuffled) {
  isShuffled_ = isShuffled;
  if (!player_) return;
  const std::size_t current = *song();
  SongNumbers queue = ordered_;
  const auto playing = std::ranges::find(queue, current);
  std::size_t place = static_cast<std::size_t>(playing - queue.begin());
  if (isShuffled) {
    queue.erase(playing);
    std::ranges::shuffle(queue, std::minstd_rand(static_cast<unsigned>(current) + 1));
    queue.insert(queue.begin(), current);
    place = 0;
  }
  setQueue(std::move(queue), place);
}

void MusicPlayer::advance(double seconds) {
  if (!player_) return;
  const std::size_t earlier = player_->songIndex();
  player_->advance(seconds);
  if (player_->songIndex() == earlier) return;
  const bool isOver = player_->songIndex() == 0 && !isRepeated_;
  if (isOver) player_->setPlaying(false);
  if (changed_) changed_();
}

Playback MusicPlayer::playbackOf(std::size_t song) const {
  if (this->song() != song) return Playback::None;
  return isPlaying() ? Playback::Playing : Playback::Paused;
}

TransportState MusicPlayer::state() const {
  TransportState state{.isShuffled = isShuffled_, .isRepeated = isRepeated_, .volume = volume_};
  if (!player_) return state;
  state.isPlaying = player_->isPlaying();
  state.position = player_->position();
  state.isSeeking = player_->isSeeking();
  state.first = player_->loaded(0);
  state.second = player_->loaded(1);
  return state;
}

}  // namespace gallery
