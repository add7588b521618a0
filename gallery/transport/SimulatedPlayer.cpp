#include "gallery/transport/SimulatedPlayer.h"

#include <algorithm>
#include <cmath>

namespace gallery {

namespace {

// The whole frames of an amount; the rest waits for the next one.
std::uint64_t wholeFrames(double& rest, double frames) {
  rest += frames;
  const double whole = std::floor(rest);
  rest -= whole;
  return static_cast<std::uint64_t>(whole);
}

}  // namespace

SimulatedPlayer::SimulatedPlayer(std::vector<Song> songs) : songs_(std::move(songs)) { loadFrom(0); }

std::uint64_t SimulatedPlayer::framesOf(const Song& song) const {
  return static_cast<std::uint64_t>(song.seconds * song.framesPerSecond);
}

TessalunaUIKit::LoadedSpan SimulatedPlayer::loaded(std::size_t buffer) const {
  const Buffer& asked = buffers_[buffer];
  if (asked.song != songIndex_) return {};
  return {asked.start, asked.frames, asked.isCompleted()};
}

void SimulatedPlayer::beginLoadingAt(std::size_t buffer, std::size_t song, std::uint64_t start) {
  const auto room = static_cast<std::uint64_t>(bufferSeconds * songs_[song].framesPerSecond);
  buffers_[buffer] = {.song = song, .start = start, .capacity = std::min(room, framesOf(songs_[song]) - start)};
}

// The song that plays, from there; the other buffer waits for its turn.
void SimulatedPlayer::loadFrom(std::uint64_t frame) {
  frame_ = std::min(frame, framesOf(song()) - 1);
  playing_ = 0;
  beginLoadingAt(0, songIndex_, frame_);
  buffers_[1] = {.song = songIndex_};
  isSeeking_ = isWaiting_ = true;
}

void SimulatedPlayer::skipTo(std::size_t song) {
  songIndex_ = song;
  loadFrom(0);
}

void SimulatedPlayer::setSongs(std::vector<Song> songs, std::size_t playing) {
  songs_ = std::move(songs);
  songIndex_ = buffers_[playing_].song = playing;
  buffers_[1 - playing_] = {.song = playing};
}

void SimulatedPlayer::seek(double seconds) {
  loadFrom(static_cast<std::uint64_t>(std::max(seconds, 0.0) * song().framesPerSecond));
}

void SimulatedPlayer::advance(double seconds) {
  // In steps that are short beside what a buffer holds.
  constexpr double step = 0.05;
  for (double rest = seconds; rest > 0; rest -= step) {
    load(std::min(rest, step));
    play(std::min(rest, step));
  }
}

// At a song's end the next one follows, which in a list of one song is the same.
SimulatedPlayer::Place SimulatedPlayer::placeAfter(const Buffer& buffer) const {
  if (buffer.end() < framesOf(songs_[buffer.song])) return {buffer.song, buffer.end()};
  return {(buffer.song + 1) % songs_.size(), 0};
}

void SimulatedPlayer::load(double seconds) {
  const std::size_t other = 1 - playing_;
  const Buffer& current = buffers_[playing_];
  const std::size_t loading = current.isCompleted() ? other : playing_;
  Buffer& buffer = buffers_[loading];
  // What the other buffer holds was played before: now it takes what follows.
  const auto [song, start] = placeAfter(current);
  if (loading == other && (buffer.song != song || buffer.start != start || buffer.capacity == 0))
    beginLoadingAt(other, song, start);
  const std::uint64_t come = wholeFrames(unloaded_, seconds * speed_ * songs_[buffer.song].framesPerSecond);
  buffer.frames = std::min(buffer.frames + come, buffer.capacity);
  if (buffers_[playing_].frames > 0) isSeeking_ = false;
}

void SimulatedPlayer::play(double seconds) {
  if (!isPlaying_ || isSeeking_) return;
  frame_ += wholeFrames(unplayed_, seconds * song().framesPerSecond);
  const Buffer& current = buffers_[playing_];
  isWaiting_ = frame_ >= current.end() && !current.isCompleted();
  if (frame_ < current.end()) return;
  const std::uint64_t beyond = frame_ - current.end();
  const Buffer& following = buffers_[1 - playing_];
  const auto [song, start] = placeAfter(current);
  const bool hasFollowing =
      current.isCompleted() && following.frames > 0 && following.song == song && following.start == start;
  if (!hasFollowing) {
    isWaiting_ = true;
    frame_ = current.end() - 1;
    return;
  }
  if (start == 0) ++passedEnds_;
  playing_ = 1 - playing_;
  songIndex_ = following.song;
  frame_ = following.start + std::min(beyond, following.frames - 1);
}

}  // namespace gallery
