// A player without sound: it loads songs in pieces, plays what is loaded, changes from one song to the next without a gap, and
// seeks. Time passes only by advance.
//
// It has two buffers. It plays from one while the other loads what follows, which at a song's end is the beginning of the
// next song; a buffer that has been played to its end loads again.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "tessaluna/uikit/transport/PlaybackSlider.h"

namespace gallery {

class SimulatedPlayer {
 public:
  struct Song {
    std::string title;
    double seconds = 0;
    double framesPerSecond = 44100;
  };
  explicit SimulatedPlayer(std::vector<Song> songs);

  const Song& song() const { return songs_[songIndex_]; }
  std::size_t songIndex() const { return songIndex_; }
  // How many songs have played to their ends; the same song may follow one.
  std::size_t passedEnds() const { return passedEnds_; }
  double position() const { return static_cast<double>(frame_) / song().framesPerSecond; }  // seconds
  bool isPlaying() const { return isPlaying_; }
  void setPlaying(bool isPlaying) { isPlaying_ = isPlaying; }
  // What the buffer holds of the song that plays; empty if it holds nothing of it.
  TessalunaUIKit::LoadedSpan loaded(std::size_t buffer) const;
  bool isWaitingForData() const { return isWaiting_; }

  // Replaces the list by one in which the song that plays is at that place. It continues to play; what is loaded of another
  // song is dropped.
  void setSongs(std::vector<Song> songs, std::size_t playing);

  // Seconds of music that are loaded per second.
  void setLoadingSpeed(double speed) { speed_ = speed; }
  // The first song follows the last one, and the last one precedes the first.
  void skipTo(std::size_t song);
  void next() { skipTo((songIndex_ + 1) % songs_.size()); }
  void previous() { skipTo((songIndex_ + songs_.size() - 1) % songs_.size()); }
  // Drops what is loaded; the seek ends when the first piece has been loaded.
  void seek(double seconds);
  bool isSeeking() const { return isSeeking_; }

  void advance(double seconds);

  static constexpr double bufferSeconds = 40;  // of music in one buffer

 private:
  struct Buffer {
    std::size_t song = 0;
    std::uint64_t start = 0, frames = 0, capacity = 0;  // of that song
    bool isCompleted() const { return frames == capacity; }
    std::uint64_t end() const { return start + frames; }
  };
  std::uint64_t framesOf(const Song& song) const;
  struct Place {
    std::size_t song = 0;
    std::uint64_t frame = 0;
  };
  Place placeAfter(const Buffer& buffer) const;
  void load(double seconds);
  void play(double seconds);
  void beginLoadingAt(std::size_t buffer, std::size_t song, std::uint64_t start);
  void loadFrom(std::uint64_t frame);

  std::vector<Song> songs_;
  Buffer buffers_[2];
  std::size_t songIndex_ = 0, playing_ = 0;  // the buffer that is played from
  std::size_t passedEnds_ = 0;
  std::uint64_t frame_ = 0;
  double speed_ = 8;
  double unplayed_ = 0, unloaded_ = 0;  // fractions of a frame
  bool isPlaying_ = false, isSeeking_ = false, isWaiting_ = false;
};

}  // namespace gallery
