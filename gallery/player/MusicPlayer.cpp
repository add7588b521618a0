#include "gallery/player/MusicPlayer.h"

#include <algorithm>
#include <numeric>
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
  places_ = inOrder();
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
  const auto after = [](auto& list, std::size_t place) { return list.begin() + static_cast<std::ptrdiff_t>(place + 1); };
  const std::size_t currentInOrder = places_[current];
  ordered_.insert(after(ordered_, currentInOrder), songs.begin(), songs.end());
  for (std::size_t& place : places_)
    if (place > currentInOrder) place += songs.size();
  std::vector<std::size_t> added(songs.size());
  std::iota(added.begin(), added.end(), currentInOrder + 1);
  places_.insert(after(places_, current), added.begin(), added.end());
  updateQueue(current);
}

std::vector<std::size_t> MusicPlayer::inOrder() const {
  std::vector<std::size_t> places(ordered_.size());
  std::iota(places.begin(), places.end(), std::size_t{0});
  return places;
}

// The song that plays is at that place of the queue now, and continues to play.
void MusicPlayer::updateQueue(std::size_t current) {
  queue_.clear();
  for (const std::size_t place : places_) queue_.push_back(ordered_[place]);
  player_->setSongs(songsOfQueue(), current);
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
  const std::size_t current = places_[player_->songIndex()];
  places_ = inOrder();
  if (!isShuffled) return updateQueue(current);
  places_.erase(places_.begin() + static_cast<std::ptrdiff_t>(current));
  std::ranges::shuffle(places_, std::minstd_rand(static_cast<unsigned>(ordered_[current]) + 1));
  places_.insert(places_.begin(), current);
  updateQueue(0);
}

void MusicPlayer::advance(double seconds) {
  if (!player_) return;
  const std::size_t earlier = player_->passedEnds();
  player_->advance(seconds);
  if (player_->passedEnds() == earlier) return;
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
