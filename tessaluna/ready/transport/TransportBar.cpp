#include "tessaluna/ready/transport/TransportBar.h"

#include <algorithm>
#include <utility>

#include "tessaluna/platform/views/NSSlider.h"
#include "tessaluna/ready/parts/controlName.h"
#include "tessaluna/ready/parts/songLength.h"

namespace tessaluna::ready {

using namespace platform;
using TessalunaUIKit::PlaybackSlider;
using TessalunaUIKit::PlaybackTransportButton;

const ClassInfo TransportBar::staticClassInfo{.name = "tessaluna.ready.TransportBar", .base = &NSView::staticClassInfo};

namespace {

enum Style : std::uint64_t { Play = 1, Pause, Stop, Previous, Next, Shuffle, Repeat };

constexpr CGFloat usualHeight = 52, buttonSide = 18, gap = 14, usualTimeWidth = 52, timeGap = 6, lineHeight = 18,
                  sliderHeight = 20, volumeWidth = 90;
// What the song's title and position get at least, before controls are left out for them.
constexpr CGFloat middleWidth = 200;

// The width of a time, with the gap to the slider.
CGFloat roomFor(const NSTextField& time) { return time.intrinsicContentSize().width + timeGap; }

// False if it is there already.
bool setText(NSTextField& label, const std::string& text) {
  if (label.stringValue() == text) return false;
  label.setStringValue(text);
  return true;
}

void setIsOn(const Ref<PlaybackTransportButton>& button, bool isOn) {
  const auto state = isOn ? NSControlStateValueOn : NSControlStateValueOff;
  if (button && button->state() != state) button->setState(state);
}

}  // namespace

// Knows whether the user holds its knob.
class TransportBar::Volume : public NSSlider {
 public:
  using NSSlider::NSSlider;
  bool isHeld() const { return isPressed(); }
};

void TransportBar::didInit() {
  NSView::didInit();
  slider_ = make<PlaybackSlider>(CGRect{});
  slider_->setAction([this] {
    awaitsSeek_ = true;
    const Ref<NSView> alive = refTo<NSView>(*this);
    const auto seek = actions_.seek;
    if (seek) seek(slider_->requestedTime());
    // A paused player may not report its new position.
    showTime(*elapsed_, slider_->position());
  });
  title_ = NSTextField::labelWithString("");
  title_->setLineBreakMode(NSLineBreakByTruncatingTail);
  elapsed_ = NSTextField::labelWithString("");
  length_ = NSTextField::labelWithString("");
  elapsed_->setAlignment(NSTextAlignmentRight);
  timeWidth_ = usualTimeWidth;
  makeControls();
  showSong({});
}

TransportBar::Button TransportBar::makeButton(std::uint64_t style, std::function<void()> action) {
  if (!action) return nullptr;
  const auto button = make<PlaybackTransportButton>(CGRect{0, 0, buttonSide, buttonSide});
  button->setTransportButtonStyle(style);
  button->setAction(std::move(action));
  addSubview(button);
  return button;
}

void TransportBar::makeControls() {
  while (!subviews().empty()) subviews().back()->removeFromSuperview();
  const auto toggle = [this](std::uint64_t style, Button TransportBar::*button, std::function<void(bool)> action) {
    if (!action) return Button();
    const Button made = makeButton(
        style, [this, button, action = std::move(action)] { action((this->*button)->state() == NSControlStateValueOn); });
    made->setButtonType(NSButtonType::Toggle);
    return made;
  };
  previous_ = makeButton(Previous, actions_.previous);
  play_ = makeButton(Play, actions_.playOrPause);
  stop_ = makeButton(Stop, actions_.stop);
  next_ = makeButton(Next, actions_.next);
  shuffle_ = toggle(Shuffle, &TransportBar::shuffle_, actions_.shuffle);
  repeat_ = toggle(Repeat, &TransportBar::repeat_, actions_.repeat);
  for (const Ref<NSTextField>& label : {title_, elapsed_, length_}) addSubview(label);
  addSubview(slider_);
  slider_->setSeekable(actions_.seek != nullptr);
  volume_ = actions_.setVolume ? make<Volume>(CGRect{}) : nullptr;
  if (volume_) {
    volume_->setAction([this, set = actions_.setVolume] { set(volume_->doubleValue()); });
    volume_->setDoubleValue(state_.volume);
    addSubview(volume_);
  }
  setTexts(texts_);
  place();
}

void TransportBar::setActions(TransportActions actions) {
  actions_ = std::move(actions);
  makeControls();
  const TransportState state = std::exchange(state_, {});
  showState(state);
}

void TransportBar::setTexts(TransportTexts texts) {
  texts_ = std::move(texts);
  const std::pair<const Button&, const std::string&> names[] = {
      {previous_, texts_.previous}, {play_, state_.isPlaying ? texts_.pause : texts_.play},
      {stop_, texts_.stop},         {next_, texts_.next},
      {shuffle_, texts_.shuffle},   {repeat_, texts_.repeat}};
  for (const auto& [button, name] : names)
    if (button) setNameAndToolTip(*button, name);
  slider_->cell()->accessibilitySetOverrideValue(texts_.position, NSAccessibilityDescriptionAttribute);
  if (volume_) setNameAndToolTip(*volume_, texts_.volume);
}

void TransportBar::showSong(TransportSong song) {
  song_ = std::move(song);
  if (song_.seconds > longestSong) song_.seconds.reset();
  awaitsSeek_ = false;
  slider_->beginSong({.seconds = song_.seconds, .framesPerSecond = song_.framesPerSecond});
  const std::optional<double> length = slider_->song().seconds;  // not what is no length
  const bool wasWide = std::exchange(timeWidth_, usualTimeWidth) > usualTimeWidth;
  showTime(*length_, length);
  showTexts();
  if (!wasWide) return;
  // A time that shows already needs its room again.
  timeWidth_ = std::max({timeWidth_, roomFor(*elapsed_), roomFor(*length_)});
  place();
}

void TransportBar::showState(TransportState state) {
  const bool wasPlaying = std::exchange(state_, std::move(state)).isPlaying;
  if (!state_.isSeeking) {
    if (std::exchange(awaitsSeek_, false)) slider_->confirmSeek();
    slider_->setPosition(state_.position);
  }
  slider_->showLoaded(state_.first, state_.second);
  if (play_ && (wasPlaying != state_.isPlaying || (play_->transportButtonStyle() == Pause) != state_.isPlaying)) {
    play_->setTransportButtonStyle(state_.isPlaying ? Pause : Play);
    setNameAndToolTip(*play_, state_.isPlaying ? texts_.pause : texts_.play);
  }
  setIsOn(shuffle_, state_.isShuffled);
  setIsOn(repeat_, state_.isRepeated);
  // The user's hand is before the player's report.
  if (volume_ && !volume_->isHeld() && volume_->doubleValue() != state_.volume) volume_->setDoubleValue(state_.volume);
  showTexts();
}

void TransportBar::showTexts() {
  std::string title = song_.title;
  if (!song_.artists.empty()) title += (title.empty() ? "" : " – ") + song_.artists;
  if (!state_.note.empty()) title += (title.empty() ? "" : " – ") + state_.note;
  setText(*title_, title);
  // A knob that is held returns where the press is cut short: the player's time shows meanwhile, or what was sought before.
  if (!slider_->isSeeking()) showTime(*elapsed_, slider_->position());
  else if (!awaitsSeek_) showTime(*elapsed_, std::min(state_.position, slider_->song().seconds.value_or(state_.position)));
}

void TransportBar::showTime(NSTextField& label, std::optional<double> seconds) {
  const bool isShown = seconds && *seconds <= longestSong;
  if (!setText(label, isShown ? slider_->shownTime(*seconds) : "")) return;
  // Until the next song the room only grows, so that the slider does not move with each digit.
  const CGFloat width = roomFor(label);
  if (width <= timeWidth_) return;
  timeWidth_ = width;
  place();
}

CGSize TransportBar::intrinsicContentSize() const { return {noIntrinsicMetric, usualHeight}; }

void TransportBar::resizeSubviewsWithOldSize(CGSize) { place(); }

void TransportBar::place() {
  const CGSize size = bounds().size;
  const auto widthOf = [](std::initializer_list<const Button*> buttons) {
    return static_cast<CGFloat>(std::ranges::count_if(buttons, [](const Button* one) { return *one != nullptr; })) *
           (buttonSide + gap);
  };
  const CGFloat always = widthOf({&previous_, &play_, &stop_, &next_}), modes = widthOf({&shuffle_, &repeat_});
  const CGFloat volume = volume_ ? volumeWidth + gap : 0;
  const bool hasModes = size.width >= always + modes + middleWidth;
  const bool hasVolume = size.width >= always + modes + volume + middleWidth;

  CGFloat x = 0;
  const auto put = [&](const Button& button, bool shows) {
    if (!button) return;
    button->setHidden(!shows);
    if (!shows) return;
    button->setFrame({x, (size.height - buttonSide) / 2, buttonSide, buttonSide});
    x += buttonSide + gap;
  };
  for (const Button* button : {&previous_, &play_, &stop_, &next_}) put(*button, true);
  for (const Button* button : {&shuffle_, &repeat_}) put(*button, hasModes);
  const CGFloat right = size.width - (hasVolume ? volume : 0), middle = std::max<CGFloat>(right - x, 0);
  const CGFloat low = (size.height - lineHeight - sliderHeight - 4) / 2;
  title_->setFrame({x + timeWidth_, low + sliderHeight + 4, std::max<CGFloat>(middle - timeWidth_, 0), lineHeight});
  elapsed_->setFrame({x, low + 1, timeWidth_ - timeGap, lineHeight});
  length_->setFrame({right - timeWidth_ + timeGap, low + 1, timeWidth_ - timeGap, lineHeight});
  slider_->setFrame({x + timeWidth_, low, std::max<CGFloat>(middle - 2 * timeWidth_, 0), sliderHeight});
  if (!volume_) return;
  volume_->setHidden(!hasVolume);
  volume_->setFrame({size.width - volumeWidth, (size.height - sliderHeight) / 2, volumeWidth, sliderHeight});
}

}  // namespace tessaluna::ready
