#include "gallery/transport/TransportHost.h"

namespace gallery {

using namespace tessaluna::platform;
using tessaluna::ready::TransportBar;

TransportHost::TransportHost(std::vector<SimulatedPlayer::Song> songs)
    : player_(std::move(songs)), bar_(make<TransportBar>(CGRect{0, 0, 640, 52})) {
  const auto mode = [this](bool& isOn, const char* name) {
    return [this, &isOn, name](bool to) {
      isOn = to;
      report(name + std::string(to ? " on" : " off"));
    };
  };
  bar_->setActions({.previous = [this] { skip(&SimulatedPlayer::previous); },
                    .playOrPause =
                        [this] {
                          player_.setPlaying(!player_.isPlaying());
                          showState(player_.isSeeking());
                          report(player_.isPlaying() ? "play" : "pause");
                        },
                    .stop =
                        [this] {
                          player_.setPlaying(false);
                          player_.seek(0);
                          showState(false);
                          report("stop");
                        },
                    .next = [this] { skip(&SimulatedPlayer::next); },
                    .shuffle = mode(isShuffled_, "shuffle"),
                    .repeat = mode(isRepeated_, "repeat"),
                    .seek =
                        [this](double seconds) {
                          player_.seek(seconds);
                          showState(true);
                          report("seek " + bar_->slider()->shownTime(seconds));
                        },
                    .setVolume = [this](double volume) { volume_ = volume; }});
  showSong();
}

void TransportHost::start() {
  ticker_.start([this](double seconds) { advance(seconds); });
}

void TransportHost::advance(double seconds) {
  player_.advance(seconds);
  if (player_.songIndex() == shownSong_) return showState(player_.isSeeking());
  showSong();
  report("song " + player_.song().title);
}

void TransportHost::skip(void (SimulatedPlayer::*step)()) {
  (player_.*step)();
  showSong();
  report("song " + player_.song().title);
}

void TransportHost::showSong() {
  shownSong_ = player_.songIndex();
  const SimulatedPlayer::Song& song = player_.song();
  bar_->showSong({.title = song.title, .seconds = song.seconds, .framesPerSecond = song.framesPerSecond});
  showState(false);
}

void TransportHost::showState(bool isSeeking) {
  bar_->showState({.isPlaying = player_.isPlaying(),
                   .position = player_.position(),
                   .isSeeking = isSeeking,
                   .isShuffled = isShuffled_,
                   .isRepeated = isRepeated_,
                   .volume = volume_,
                   .note = player_.isWaitingForData() ? "loading" : "",
                   .first = player_.loaded(0),
                   .second = player_.loaded(1)});
}

void TransportHost::report(const std::string& what) const {
  if (report_) report_(what);
}

}  // namespace gallery
