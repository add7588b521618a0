// An addition: the position slider of a player, in seconds, over a PlaybackTransportSliderCell. It keeps what the user asks for
// apart from what the player reports:
//
//   beginSong({.seconds = 300, .framesPerSecond = 44100});   a song, or the next one of a gapless change
//   setPosition(player.position());                          as often as the player likes
//   setTarget(host); setAction("seek:");                     the user asked for requestedTime(), by mouse, key, wheel or an
//                                                            assistive client
//   confirmSeek();                                           the player has arrived
//
// From the user's first move until the player confirms, or seekTimeout has passed since the action, the player's positions do
// not move the knob. The last of them shows if the time passes. A song that begins ends all of that, a press too. A press that
// ends without its release asks for nothing, and the knob returns, unless it is continuous and has asked already.
//
// A song whose length is absent, unknown or endless, has no knob and cannot be sought in. Time runs from left to right in every
// layout. A pointer that rests on the track shows the time that a press there asks for, as a tool tip. While the user holds the
// knob, that time is above it.
#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "tessaluna/platform/backend/Timer.h"
#include "tessaluna/platform/events/KeyboardAtPress.h"
#include "tessaluna/platform/views/NSSlider.h"
#include "tessaluna/uikit/transport/TimeBubble.h"

namespace TessalunaUIKit {

// A part of a song that is loaded, in the song's audio frames; PlaybackTransportSliderCell says what 0 frames show.
struct LoadedSpan {
  std::uint64_t start = 0, frames = 0;
  bool isCompleted = false;
};

class PlaybackSlider : public tessaluna::platform::NSSlider, public tessaluna::platform::KeyboardAtPress {
 public:
  static const tessaluna::platform::ClassInfo staticClassInfo;
  const tessaluna::platform::ClassInfo& classInfo() const override { return staticClassInfo; }

  explicit PlaybackSlider(tessaluna::platform::CGRect frame) : NSSlider(frame) {}
  explicit PlaybackSlider(tessaluna::platform::NSCoder& coder) : NSSlider(coder) {}
  void didInit() override;

  struct Song {
    std::optional<double> seconds;  // absent: unknown or endless
    double framesPerSecond = 44100;
  };
  void beginSong(Song song);  // at its start, with nothing loaded
  const Song& song() const { return song_; }

  // What is loaded, as PlaybackTransportSliderCell shows it. Requests a redraw.
  void showLoaded(LoadedSpan first, LoadedSpan second = {});

  double position() const;  // of the knob, in seconds; of a song without a length, what the player reported
  void setPosition(double seconds);
  double requestedTime() const { return position(); }  // for the action
  bool isSeeking() const { return isPressed() || isUnconfirmed_; }
  void confirmSeek();
  double seekTimeout() const { return seekTimeout_; }  // 2 initially
  void setSeekTimeout(double seconds) { seekTimeout_ = seconds; }

  // Whether the user may move the knob; on initially. It also takes a song with a length.
  bool isSeekable() const { return isSeekable_ && song_.seconds.has_value(); }
  void setSeekable(bool isSeekable);

  // How far arrows, arrows with Shift, and Page keys go, in seconds: 5, 30 and 60 initially. A notch of the wheel, and a
  // step of an assistive client, go as far as an arrow. Home and End go to the ends.
  struct Steps {
    double arrow = 5, shiftArrow = 30, page = 60;
  };
  const Steps& steps() const { return steps_; }
  void setSteps(Steps steps) { steps_ = steps; }

  // Whether a press takes the keyboard from where it is, such as a list; off initially. Keys always can.
  bool takesKeyboardAtPress() const override { return takesKeyboardAtPress_; }
  void setTakesKeyboardAtPress(bool takes) { takesKeyboardAtPress_ = takes; }

  // What a press at the point asks for; absent where nothing can be asked for.
  std::optional<double> timeAtPoint(tessaluna::platform::CGPoint point) const;
  // "1:30" and "1 minute 30 seconds", for the tool tip and for assistive clients. The words are the main bundle's texts for "hour",
  // "hours", "minute", "minutes", "second", "seconds" and "of"; a language that builds its sentences in another way overrides.
  virtual std::string shownTime(double seconds) const;
  virtual std::string spokenTime(double seconds) const;
  virtual std::string spokenPosition() const;  // "1 minute 30 seconds of 5 minutes"

  void setObjectValue(tessaluna::platform::Ref<tessaluna::platform::NSObject> value) override;
  bool sendActionTo(std::string_view action, const tessaluna::platform::Ref<tessaluna::platform::NSObject>& target) override;
  bool acceptsFirstResponder() const override { return isSeekable() && NSSlider::acceptsFirstResponder(); }
  void mouseDown(const tessaluna::platform::Ref<tessaluna::platform::NSEvent>& event) override;
  void keyDown(const tessaluna::platform::Ref<tessaluna::platform::NSEvent>& event) override;
  void scrollWheel(const tessaluna::platform::Ref<tessaluna::platform::NSEvent>& event) override;
  void updateTrackingAreas() override;
  void mouseMoved(const tessaluna::platform::Ref<tessaluna::platform::NSEvent>& event) override;

 protected:
  tessaluna::platform::Ref<tessaluna::platform::NSCell> makeCell() override;
  tessaluna::platform::Ref<tessaluna::platform::NSCell> makeCell(tessaluna::platform::NSCoder& coder) override;
  std::optional<double> valueForKey(const tessaluna::platform::NSEvent& event) const override;

 private:
  class Cell;
  double framesOf(double seconds) const { return seconds * song_.framesPerSecond; }
  void showHeldPosition();
  void pressWasCancelled();
  void showTimeAboveKnob();
  void notifyAssistiveClients();

  Song song_;
  Steps steps_;
  double seekTimeout_ = 2;
  double playersPosition_ = 0;
  double valueBeforePress_ = 0;  // or of the last action
  tessaluna::backend::Timer timeout_, nextNotification_;
  tessaluna::platform::Ref<tessaluna::platform::NSTrackingArea> trackingArea_;
  TimeBubble bubble_;
  bool isPositionHeld_ = false;  // the player's, which came while the user sought
  bool isUnconfirmed_ = false;
  bool isSeekable_ = true;
  bool takesKeyboardAtPress_ = false;
};

}  // namespace TessalunaUIKit
