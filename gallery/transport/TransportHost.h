// The ready-made transport bar over a simulated player, and what its host does: it shows the player's state a few times per second,
// and passes on what the user asks for.
#pragma once

#include <functional>
#include <string>

#include "gallery/Ticker.h"
#include "gallery/transport/SimulatedPlayer.h"
#include "tessaluna/ready/transport/TransportBar.h"

namespace gallery {

class TransportHost {
 public:
  explicit TransportHost(std::vector<SimulatedPlayer::Song> songs);
  ~TransportHost() { bar_->setActions({}); }  // a widget may keep the bar
  TransportHost(const TransportHost&) = delete;
  TransportHost& operator=(const TransportHost&) = delete;

  const tessaluna::platform::Ref<tessaluna::ready::TransportBar>& bar() const { return bar_; }
  SimulatedPlayer& player() { return player_; }

  // Is notified, in a few words, of what the user asked for and of each song that begins.
  void setReport(std::function<void(const std::string&)> report) { report_ = std::move(report); }
  // Advances the player's time with the clock from now on.
  void start();
  // Advances the player's time at once.
  void advance(double seconds);

 private:
  void showSong();
  void showState(bool isSeeking);
  void skip(void (SimulatedPlayer::*step)());
  void report(const std::string& what) const;

  SimulatedPlayer player_;
  const tessaluna::platform::Ref<tessaluna::ready::TransportBar> bar_;
  std::function<void(const std::string&)> report_;
  Ticker ticker_;
  std::size_t shownSong_ = 0;
  bool isShuffled_ = false, isRepeated_ = false;
  double volume_ = 0.8;
};

}  // namespace gallery
