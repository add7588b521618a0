// A transport bar over a simulated player, and what its host does: it shows the player's state a few times a second, and hands
// on what the user asks for.
#pragma once

#include <functional>
#include <string>

#include "gallery/Ticker.h"
#include "gallery/transport/SimulatedPlayer.h"
#include "tessaluna/platform/views/NSTextField.h"
#include "tessaluna/uikit/transport/PlaybackSlider.h"
#include "tessaluna/uikit/transport/PlaybackTransportButton.h"

namespace gallery {

class TransportHost : public tessaluna::platform::NSObject {
 public:
  static const tessaluna::platform::ClassInfo staticClassInfo;
  const tessaluna::platform::ClassInfo& classInfo() const override { return staticClassInfo; }

  explicit TransportHost(std::vector<SimulatedPlayer::Song> songs) : player_(std::move(songs)) {}
  void didInit() override;

  // What is embedded.
  const tessaluna::platform::Ref<tessaluna::platform::NSView>& view() const { return view_; }
  const tessaluna::platform::Ref<TessalunaUIKit::PlaybackSlider>& slider() const { return slider_; }
  const tessaluna::platform::Ref<TessalunaUIKit::PlaybackTransportButton>& playButton() const { return playButton_; }
  SimulatedPlayer& player() { return player_; }
  std::string shownTime() const { return timeLabel_->stringValue(); }

  // Is notified in a few words of what the user asked for and of each song that begins.
  void setReport(std::function<void(const std::string&)> report) { report_ = std::move(report); }
  // Lets the player's time pass with the clock, from now on.
  void start();
  // Lets the player's time pass at once.
  void advance(double seconds);

  // The actions.
  void playOrPause(tessaluna::platform::NSObject* sender);
  void stop(tessaluna::platform::NSObject* sender);
  void previous(tessaluna::platform::NSObject* sender);
  void next(tessaluna::platform::NSObject* sender);
  void changeMode(tessaluna::platform::NSObject* sender);
  void seek(tessaluna::platform::NSObject* sender);

 private:
  tessaluna::platform::Ref<TessalunaUIKit::PlaybackTransportButton> addButton(std::uint64_t style, std::string action,
                                                                              const std::string& name,
                                                                              tessaluna::platform::CGFloat x);
  tessaluna::platform::Ref<tessaluna::platform::NSTextField> addLabel(tessaluna::platform::CGRect frame);
  void showSong();
  void showState();
  void report(const std::string& what) const;

  SimulatedPlayer player_;
  tessaluna::platform::Ref<tessaluna::platform::NSView> view_;
  tessaluna::platform::Ref<tessaluna::platform::NSTextField> titleLabel_, timeLabel_;
  tessaluna::platform::Ref<TessalunaUIKit::PlaybackSlider> slider_;
  tessaluna::platform::Ref<TessalunaUIKit::PlaybackTransportButton> playButton_;
  std::function<void(const std::string&)> report_;
  Ticker ticker_;
  std::size_t shownSong_ = 0;
  bool awaitsSeek_ = false;
};

}  // namespace gallery
