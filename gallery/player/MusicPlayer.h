// What plays: a queue of a library's songs over a simulated player, which makes no sound. Time passes only by advance.
#pragma once

#include <functional>
#include <optional>

#include "gallery/player/MusicLibrary.h"
#include "gallery/transport/SimulatedPlayer.h"
#include "tessaluna/ready/tracks/TrackModel.h"
#include "tessaluna/ready/transport/TransportBar.h"

namespace gallery {

class MusicPlayer {
 public:
  explicit MusicPlayer(std::shared_ptr<MusicLibrary> library) : library_(std::move(library)) {}

  // Called when another song plays, or when playing begins or stops; the queue has changed by then.
  void setOnChange(std::function<void()> changed) { changed_ = std::move(changed); }
  // These songs become the queue, and the one at that place plays. An empty list changes nothing.
  void play(SongNumbers songs, std::size_t place);
  // A song of the queue.
  void playAt(std::size_t place);
  // They come after the song that plays, or begin to play if none does.
  void playNext(const SongNumbers& songs);
  void pause();
  void playOrPause();
  void next();
  // Goes to the beginning of the song, and from there to the song before.
  void previous();
  void seek(double seconds);
  // Shuffled, the songs after the current one play in another order; otherwise they play in their own.
  void setShuffled(bool isShuffled);
  // Not repeated, it pauses at the end of the queue.
  void setRepeated(bool isRepeated) { isRepeated_ = isRepeated; }
  void setVolume(double volume) { volume_ = volume; }

  void advance(double seconds);

  const SongNumbers& queue() const { return queue_; }
  std::optional<std::size_t> place() const;  // in the queue; absent while that is empty
  std::optional<std::size_t> song() const;
  bool isPlaying() const { return player_ && player_->isPlaying(); }
  tessaluna::ready::Playback playbackOf(std::size_t song) const;
  tessaluna::ready::TransportState state() const;

 private:
  std::vector<SimulatedPlayer::Song> songsOfQueue() const;
  std::vector<std::size_t> inOrder() const;
  void updateQueue(std::size_t current);
  void setPlaying(bool isPlaying);

  const std::shared_ptr<MusicLibrary> library_;
  std::optional<SimulatedPlayer> player_;
  SongNumbers queue_, ordered_;      // as it plays, and as it was before it was shuffled
  std::vector<std::size_t> places_;  // in the latter, of each song of the queue; a song may be there twice
  std::function<void()> changed_;
  double volume_ = 0.8;
  bool isShuffled_ = false, isRepeated_ = false;
};

}  // namespace gallery
