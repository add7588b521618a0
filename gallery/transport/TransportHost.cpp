#include "gallery/transport/TransportHost.h"

#include "tessaluna/platform/text/NSFont.h"

namespace gallery {

using namespace tessaluna::platform;
using namespace TessalunaUIKit;

namespace {

constexpr CGFloat width = 640, height = 78, buttonSize = 18, buttonGap = 14;
constexpr std::uint64_t play = 1, pause = 2, stopStyle = 3, previousStyle = 4, nextStyle = 5, shuffle = 6, repeat = 7;

constexpr Selector selectors[] = {
    action<&TransportHost::playOrPause>("playOrPause:"), action<&TransportHost::stop>("stop:"),
    action<&TransportHost::previous>("previous:"),       action<&TransportHost::next>("next:"),
    action<&TransportHost::changeMode>("changeMode:"),   action<&TransportHost::seek>("seek:")};

void setName(NSControl& control, const std::string& name) {
  control.cell()->accessibilitySetOverrideValue(name, NSAccessibilityDescriptionAttribute);
}

}  // namespace

const ClassInfo TransportHost::staticClassInfo{
    .name = "gallery.TransportHost", .base = &NSObject::staticClassInfo, .selectors = selectors};

void TransportHost::didInit() {
  NSObject::didInit();
  view_ = make<NSView>(CGRect{0, 0, width, height});
  CGFloat x = 0;
  const auto add = [&](std::uint64_t style, const char* action, const char* name) {
    const auto button = addButton(style, action, name, x);
    x += buttonSize + buttonGap;
    return button;
  };
  add(previousStyle, "previous:", "Previous");
  playButton_ = add(play, "playOrPause:", "Play");
  add(stopStyle, "stop:", "Stop");
  add(nextStyle, "next:", "Next");
  x += buttonGap;
  add(shuffle, "changeMode:", "Shuffle")->setButtonType(NSButtonType::Toggle);
  add(repeat, "changeMode:", "Repeat")->setButtonType(NSButtonType::Toggle);

  titleLabel_ = addLabel({0, 28, width - 160, 18});
  timeLabel_ = addLabel({width - 160, 28, 160, 18});
  timeLabel_->setAlignment(NSTextAlignmentRight);
  timeLabel_->setAutoresizingMask(NSViewMinXMargin);
  titleLabel_->setAutoresizingMask(NSViewWidthSizable);
  slider_ = make<PlaybackSlider>(CGRect{0, 2, width, 20});
  slider_->setAutoresizingMask(NSViewWidthSizable);
  slider_->setTarget(refTo(*this));
  slider_->setAction("seek:");
  setName(*slider_, "Position");
  view_->addSubview(slider_);
  showSong();
}

Ref<PlaybackTransportButton> TransportHost::addButton(std::uint64_t style, std::string action, const std::string& name,
                                                      CGFloat x) {
  const auto button = make<PlaybackTransportButton>(CGRect{x, height - buttonSize - 2, buttonSize, buttonSize});
  button->setTransportButtonStyle(style);
  button->setTarget(refTo(*this));
  button->setAction(std::move(action));
  button->setToolTip(name);
  setName(*button, name);
  view_->addSubview(button);
  return button;
}

Ref<NSTextField> TransportHost::addLabel(CGRect frame) {
  const auto label = NSTextField::labelWithString("");
  label->setFrame(frame);
  view_->addSubview(label);
  return label;
}

void TransportHost::start() {
  ticker_.start([this](double seconds) { advance(seconds); });
}

void TransportHost::advance(double seconds) {
  player_.advance(seconds);
  if (player_.songIndex() != shownSong_) {
    showSong();
    report("song " + player_.song().title);
  } else {
    showState();
  }
}

void TransportHost::showSong() {
  shownSong_ = player_.songIndex();
  awaitsSeek_ = false;
  const SimulatedPlayer::Song& song = player_.song();
  slider_->beginSong({.seconds = song.seconds, .framesPerSecond = song.framesPerSecond});
  showState();
}

void TransportHost::showState() {
  if (!player_.isSeeking()) {
    if (std::exchange(awaitsSeek_, false)) slider_->confirmSeek();
    slider_->setPosition(player_.position());
  }
  slider_->showLoaded(player_.loaded(0), player_.loaded(1));
  const std::uint64_t style = player_.isPlaying() ? pause : play;
  if (playButton_->transportButtonStyle() != style) {
    playButton_->setTransportButtonStyle(style);
    const std::string name = player_.isPlaying() ? "Pause" : "Play";
    setName(*playButton_, name);
    playButton_->setToolTip(name);
  }
  const std::string time = slider_->shownTime(slider_->position()) + " of " + slider_->shownTime(player_.song().seconds);
  if (time != timeLabel_->stringValue()) timeLabel_->setStringValue(time);
  const std::string title = player_.song().title + (player_.isWaitingForData() ? " – loading" : "");
  if (title != titleLabel_->stringValue()) titleLabel_->setStringValue(title);
}

void TransportHost::playOrPause(NSObject*) {
  player_.setPlaying(!player_.isPlaying());
  showState();
  report(player_.isPlaying() ? "play" : "pause");
}

void TransportHost::stop(NSObject*) {
  player_.setPlaying(false);
  player_.seek(0);
  slider_->confirmSeek();
  slider_->setPosition(0);
  showState();
  report("stop");
}

void TransportHost::previous(NSObject*) {
  player_.previous();
  showSong();
  report("song " + player_.song().title);
}

void TransportHost::next(NSObject*) {
  player_.next();
  showSong();
  report("song " + player_.song().title);
}

void TransportHost::changeMode(NSObject* sender) {
  const auto& button = dynamic_cast<const PlaybackTransportButton&>(*sender);
  const char* state = button.state() == NSControlStateValueOn ? " on" : " off";
  report((button.transportButtonStyle() == shuffle ? "shuffle" : "repeat") + std::string(state));
}

void TransportHost::seek(NSObject*) {
  player_.seek(slider_->requestedTime());
  awaitsSeek_ = true;
  showState();
  report("seek " + slider_->shownTime(slider_->requestedTime()));
}

void TransportHost::report(const std::string& what) const {
  if (report_) report_(what);
}

}  // namespace gallery
