#include "tessaluna/uikit/transport/PlaybackSlider.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "tessaluna/platform/backend/Backend.h"
#include "tessaluna/platform/events/NSEvent.h"
#include "tessaluna/platform/events/trackVisibleRect.h"
#include "tessaluna/platform/foundation/NSBundle.h"
#include "tessaluna/platform/foundation/memberTables.h"
#include "tessaluna/platform/text/unicode.h"
#include "tessaluna/uikit/transport/PlaybackTransportSliderCell.h"

namespace TessalunaUIKit {

using namespace tessaluna::platform;
using tessaluna::backend::Backend;

namespace {

constexpr double notificationPeriod = 0.5;  // seconds

constexpr Property properties[] = {property<&PlaybackSlider::setSeekable, "seekable">(),
                                   property<&PlaybackSlider::setSeekTimeout, "seekTimeout">(),
                                   property<&PlaybackSlider::setTakesKeyboardAtPress, "takesKeyboardAtPress">()};

std::string inUsersLanguage(std::string_view word) { return NSBundle::mainBundle()->localizedStringForKey(word); }

// Whole seconds that have passed; 0 for what is not a time.
std::int64_t wholeSeconds(double seconds) {
  constexpr double longest = 1e15;
  return seconds > 0 ? static_cast<std::int64_t>(std::min(seconds, longest)) : 0;
}

}  // namespace

const ClassInfo PlaybackSlider::staticClassInfo{
    .name = "TessalunaUIKit.PlaybackSlider", .base = &NSSlider::staticClassInfo, .properties = properties};

// Its value is a count of frames; assistive clients get seconds and words.
class PlaybackSlider::Cell : public PlaybackTransportSliderCell {
 public:
  Cell() = default;
  explicit Cell(NSCoder& coder) : PlaybackTransportSliderCell(coder) {}
  Ref<NSCell> copy() const override { return make<Cell>(*this); }

  double valueAfterSteps(double steps) const override {
    const PlaybackSlider* own = slider();
    if (!own) return PlaybackTransportSliderCell::valueAfterSteps(steps);
    return allowedValue(doubleValue() + own->framesOf(steps * own->steps_.arrow));
  }

  void drawKnob(CGRect knobRect) override {
    if (std::isfinite(knobRect.origin.x)) PlaybackTransportSliderCell::drawKnob(knobRect);
  }

  bool startTrackingAt(CGPoint start, NSView& view) override {
    if (auto* own = dynamic_cast<PlaybackSlider*>(&view)) own->valueBeforePress_ = doubleValue();
    return PlaybackTransportSliderCell::startTrackingAt(start, view) && showTime(view);
  }
  bool continueTracking(CGPoint last, CGPoint current, NSView& view) override {
    return PlaybackTransportSliderCell::continueTracking(last, current, view) && showTime(view);
  }
  void stopTracking(CGPoint last, CGPoint stop, NSView& view, bool isMouseUp) override {
    auto* own = dynamic_cast<PlaybackSlider*>(&view);
    if (own) own->bubble_.hide();
    PlaybackTransportSliderCell::stopTracking(last, stop, view, isMouseUp);
    // Where only the cell was disabled, the release sends no action.
    if (own && (!isMouseUp || !own->isEnabled())) own->pressWasCancelled();
  }

  AccessibilityValue accessibilityValue() const override { return seconds(doubleValue()); }
  AccessibilityValue accessibilityAttributeValue(std::string_view attribute) const override {
    if (attribute == NSAccessibilityMaxValueAttribute) return seconds(maxValue());
    return PlaybackTransportSliderCell::accessibilityAttributeValue(attribute);
  }
  std::string accessibilityHelp() const override { return slider() ? slider()->spokenPosition() : std::string(); }
  bool isUserChangeable() const override { return slider() && slider()->isSeekable(); }
  void accessibilitySetValue(const AccessibilityValue& value, std::string_view forAttribute) override {
    const double* number = forAttribute == NSAccessibilityValueAttribute ? value.as<double>() : nullptr;
    PlaybackTransportSliderCell::accessibilitySetValue(number && slider() ? slider()->framesOf(*number) : value,
                                                       forAttribute);
  }

 private:
  static bool showTime(NSView& view) {
    if (auto* own = dynamic_cast<PlaybackSlider*>(&view)) own->showTimeAboveKnob();
    return true;
  }
  const PlaybackSlider* slider() const { return dynamic_cast<const PlaybackSlider*>(controlView()); }
  double seconds(double frames) const {
    if (!slider()) return frames;
    return slider()->song_.seconds ? frames / slider()->song_.framesPerSecond : 0;
  }
};

Ref<NSCell> PlaybackSlider::makeCell() { return make<Cell>(); }
Ref<NSCell> PlaybackSlider::makeCell(NSCoder& coder) { return make<Cell>(coder); }

void PlaybackSlider::didInit() {
  NSSlider::didInit();
  // A player seeks once, where the knob is let go.
  setContinuous(false);
  beginSong({});
}

void PlaybackSlider::beginSong(Song song) {
  const Ref<NSView> held = refTo<NSView>(*this);  // an assistive client that is notified may release it
  // What was asked for was a time of another song. A cell that is set ends the press.
  if (isPressed()) setCell(Ref<NSCell>(cell()));
  isUnconfirmed_ = false;
  timeout_ = nullptr;
  isPositionHeld_ = false;
  playersPosition_ = 0;
  const bool isKnown =
      song.seconds && *song.seconds > 0 && song.framesPerSecond > 0 && std::isfinite(*song.seconds * song.framesPerSecond);
  if (!isKnown) song.seconds.reset();
  song_ = song;
  setMaxValue(isKnown ? framesOf(*song.seconds) : 0);
  setDoubleValue(0);
  showLoaded({});
  setToolTip("");
}

void PlaybackSlider::showLoaded(LoadedSpan first, LoadedSpan second) {
  if (auto* loaded = dynamic_cast<PlaybackTransportSliderCell*>(cell().get()))
    loaded->displayLoadStatusFrom(first.start, first.frames, first.isCompleted, second.start, second.frames,
                                  second.isCompleted, static_cast<std::uint64_t>(std::clamp(maxValue(), 0.0, 1e18)));
  setNeedsDisplay(true);
}

double PlaybackSlider::position() const { return song_.seconds ? doubleValue() / song_.framesPerSecond : playersPosition_; }

void PlaybackSlider::setPosition(double seconds) {
  const Ref<NSView> held = refTo<NSView>(*this);
  if (std::isnan(seconds)) seconds = 0;
  const bool isNew = std::exchange(playersPosition_, seconds) != seconds;
  isPositionHeld_ = true;
  if (!isSeeking()) showHeldPosition();
  if (!song_.seconds && isNew) notifyAssistiveClients();
}

void PlaybackSlider::showHeldPosition() {
  if (std::exchange(isPositionHeld_, false)) setDoubleValue(framesOf(playersPosition_));
}

// The knob returns to where it would be without the press, or to what a continuous slider last asked for.
void PlaybackSlider::pressWasCancelled() {
  if (isPositionHeld_ && !isUnconfirmed_) showHeldPosition();
  else setDoubleValue(valueBeforePress_);
}

void PlaybackSlider::confirmSeek() {
  isUnconfirmed_ = false;
  timeout_ = nullptr;
  // Those that came before it are from where the player was.
  isPositionHeld_ = false;
}

void PlaybackSlider::setSeekable(bool isSeekable) {
  const Ref<NSView> held = refTo<NSView>(*this);
  isSeekable_ = isSeekable;
  if (!isSeekable && isPressed()) setCell(Ref<NSCell>(cell()));
  setToolTip("");
}

// As NSSlider, but assistive clients are not notified of every frame.
void PlaybackSlider::setObjectValue(Ref<NSObject> value) {
  if (!cell()) return;
  const double earlier = doubleValue();
  cell()->setObjectValue(std::move(value));
  if (doubleValue() == earlier) return;
  setNeedsDisplay(true);
  notifyAssistiveClients();
}

void PlaybackSlider::notifyAssistiveClients() {
  if (nextNotification_) return;
  Backend* backend = Backend::current();
  if (!backend) return;
  nextNotification_ = backend->timer(notificationPeriod, [this, reported = position()] {
    nextNotification_ = nullptr;
    if (position() != reported) notifyAssistiveClients();
  });
  // Last, as it may bring another position, or the end of the slider.
  NSAccessibilityPostNotification(cell(), NSAccessibilityValueChangedNotification);
}

bool PlaybackSlider::sendActionTo(std::string_view action, const Ref<NSObject>& target) {
  isUnconfirmed_ = true;
  isPositionHeld_ = false;
  valueBeforePress_ = doubleValue();
  if (Backend* backend = Backend::current())
    timeout_ = backend->timer(seekTimeout_, [this] {
      timeout_ = nullptr;
      isUnconfirmed_ = false;
      if (!isPressed()) showHeldPosition();
    });
  return NSSlider::sendActionTo(action, target);
}

void PlaybackSlider::mouseDown(const Ref<NSEvent>& event) {
  if (isSeekable()) NSSlider::mouseDown(event);
}

void PlaybackSlider::keyDown(const Ref<NSEvent>& event) {
  if (isSeekable()) NSSlider::keyDown(event);
  else NSControl::keyDown(event);
}

void PlaybackSlider::scrollWheel(const Ref<NSEvent>& event) {
  if (isSeekable()) NSSlider::scrollWheel(event);
  else NSControl::scrollWheel(event);
}

std::optional<double> PlaybackSlider::valueForKey(const NSEvent& event) const {
  constexpr std::uint32_t others = NSEventModifierFlagControl | NSEventModifierFlagOption | NSEventModifierFlagCommand;
  if (event.modifierFlags() & others) return std::nullopt;
  const auto after = [this](double seconds) { return doubleValue() + framesOf(seconds); };
  const bool isShifted = event.modifierFlags() & NSEventModifierFlagShift;
  const double step = isShifted ? steps_.shiftArrow : steps_.arrow;
  switch (firstScalar(event.charactersIgnoringModifiers())) {
    case NSRightArrowFunctionKey:
    case NSUpArrowFunctionKey: return after(step);
    case NSLeftArrowFunctionKey:
    case NSDownArrowFunctionKey: return after(-step);
    case NSPageUpFunctionKey: return after(steps_.page);
    case NSPageDownFunctionKey: return after(-steps_.page);
    case NSHomeFunctionKey: return minValue();
    case NSEndFunctionKey: return maxValue();
    default: return std::nullopt;
  }
}

std::optional<double> PlaybackSlider::timeAtPoint(CGPoint point) const {
  const NSSliderCell* own = ownSliderCell();
  if (!own || !isSeekable() || !isEnabled()) return std::nullopt;
  return own->allowedValue(own->valueAtPoint(point)) / song_.framesPerSecond;
}

void PlaybackSlider::showTimeAboveKnob() {
  const NSSliderCell* own = ownSliderCell();
  const CGRect knob = own ? own->knobRectFlipped(isFlipped()) : NSZeroRect;
  if (window() && std::isfinite(knob.origin.x))
    bubble_.show(shownTime(requestedTime()), convertRectToView(knob, nullptr), *window());
}

void PlaybackSlider::updateTrackingAreas() {
  NSSlider::updateTrackingAreas();
  trackVisibleRect(*this, trackingArea_, NSTrackingMouseMoved);
}

// The window shows the tool tip as it is after the move.
void PlaybackSlider::mouseMoved(const Ref<NSEvent>& event) {
  const auto time = timeAtPoint(convertPointFromView(event->locationInWindow(), nullptr));
  setToolTip(time ? shownTime(*time) : std::string());
}

std::string PlaybackSlider::shownTime(double seconds) const {
  const std::int64_t whole = wholeSeconds(seconds), minutes = whole / 60;
  const auto twoDigits = [](std::int64_t number) {
    return number < 10 ? '0' + std::to_string(number) : std::to_string(number);
  };
  const std::string end = ':' + twoDigits(whole % 60);
  return minutes < 60 ? std::to_string(minutes) + end : std::to_string(minutes / 60) + ":" + twoDigits(minutes % 60) + end;
}

std::string PlaybackSlider::spokenTime(double seconds) const {
  const std::int64_t whole = wholeSeconds(seconds);
  const struct {
    std::int64_t count;
    std::string_view one, several;
  } parts[] = {{whole / 3600, "hour", "hours"}, {whole / 60 % 60, "minute", "minutes"}, {whole % 60, "second", "seconds"}};
  std::string words;
  for (const auto& [count, one, several] : parts) {
    if (count == 0) continue;
    if (!words.empty()) words += ' ';
    words += std::to_string(count) + ' ' + inUsersLanguage(count == 1 ? one : several);
  }
  return words.empty() ? "0 " + inUsersLanguage("seconds") : words;
}

std::string PlaybackSlider::spokenPosition() const {
  const std::string now = spokenTime(position());
  return song_.seconds ? now + ' ' + inUsersLanguage("of") + ' ' + spokenTime(*song_.seconds) : now;
}

}  // namespace TessalunaUIKit
