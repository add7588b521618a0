// A player's transport bar, whole: buttons, what plays, a position that seeks, a volume. The program says what the user may ask for,
// and shows its player's state as often as it likes:
//
//   const auto bar = make<ready::TransportBar>(CGRect{0, 0, 800, 52});
//   bar->setActions({.playOrPause = [&] { player.toggle(); },
//                    .next = [&] { player.next(); },
//                    .seek = [&](double seconds) { player.seek(seconds); }});
//   bar->showSong({.title = "Slow orbit", .artists = "Amber Quartet", .seconds = 245});
//   bar->showState({.isPlaying = true, .position = player.position()});
//
// There is a control for each action that is set, and none for the others. Tab goes from one to the next.
// A bar that is too narrow leaves out the volume, and then shuffle and repeat. Main thread.
#pragma once

#include <functional>
#include <optional>
#include <string>

#include "tessaluna/platform/views/NSTextField.h"
#include "tessaluna/uikit/transport/PlaybackSlider.h"
#include "tessaluna/uikit/transport/PlaybackTransportButton.h"

namespace tessaluna::ready {

// What the user may ask the player for. The bar may be removed in any of them.
struct TransportActions {
  std::function<void()> previous{}, playOrPause{}, stop{}, next{};
  std::function<void(bool isOn)> shuffle{}, repeat{};
  std::function<void(double seconds)> seek{};      // without it the position only shows
  std::function<void(double volume)> setVolume{};  // from 0 to 1
};

struct TransportSong {
  std::string title, artists{};
  std::optional<double> seconds{};  // absent, not above 0, or 1000 hours and more: unknown or endless
  double framesPerSecond = 44100;   // of the loaded spans
};

struct TransportState {
  bool isPlaying = false;
  double position = 0;     // seconds
  bool isSeeking = false;  // the player has not reached what the user asked for yet: the knob stays there
  bool isShuffled = false, isRepeated = false;
  double volume = 1;
  std::string note{};                            // after the title, such as "loading"
  TessalunaUIKit::LoadedSpan first{}, second{};  // what is loaded, as PlaybackSlider::showLoaded takes it
};

// What the bar says, in the user's language.
struct TransportTexts {
  std::string previous = "Previous", play = "Play", pause = "Pause", stop = "Stop", next = "Next";
  std::string shuffle = "Shuffle", repeat = "Repeat", position = "Position", volume = "Volume";
};

class TransportBar : public platform::NSView {
 public:
  static const platform::ClassInfo staticClassInfo;
  const platform::ClassInfo& classInfo() const override { return staticClassInfo; }

  explicit TransportBar(platform::CGRect frame) : NSView(frame) {}  // 52 points are the usual height
  void didInit() override;

  // Makes the controls again; song and state stay as they are.
  void setActions(TransportActions actions);
  void setTexts(TransportTexts texts);

  // A song, or the next one of a gapless change. It ends what the user was seeking.
  void showSong(TransportSong song);
  // Only what has changed is drawn again.
  void showState(TransportState state);
  const TransportState& state() const { return state_; }

  const platform::Ref<TessalunaUIKit::PlaybackSlider>& slider() const { return slider_; }

  platform::CGSize intrinsicContentSize() const override;
  void resizeSubviewsWithOldSize(platform::CGSize oldSize) override;

 private:
  class Volume;
  using Button = platform::Ref<TessalunaUIKit::PlaybackTransportButton>;
  void makeControls();
  Button makeButton(std::uint64_t style, std::function<void()> action);
  void place();
  void showTexts();
  void showTime(platform::NSTextField& label, std::optional<double> seconds);  // absent: nothing

  TransportActions actions_;
  TransportTexts texts_;
  TransportSong song_;
  TransportState state_;
  Button previous_, play_, stop_, next_, shuffle_, repeat_;  // null without their actions
  platform::Ref<platform::NSTextField> title_, elapsed_, length_;
  platform::Ref<TessalunaUIKit::PlaybackSlider> slider_;
  platform::Ref<Volume> volume_;
  platform::CGFloat timeWidth_ = 0;  // of each of the two times, with the gap to the slider
  bool awaitsSeek_ = false;
};

}  // namespace tessaluna::ready
