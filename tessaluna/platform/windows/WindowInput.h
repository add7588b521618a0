// What a backend passes to a window of what the user does, and what becomes of it: events, sent through NSApp. Part of each
// window. Every rule about input that does not depend on a desktop is here. An event may end the window: a call holds it.
#pragma once

#include <cstdint>
#include <deque>
#include <optional>

#include "tessaluna/platform/backend/Input.h"
#include "tessaluna/platform/events/NSEvent.h"
#include "tessaluna/platform/views/Forward.h"

namespace tessaluna::platform {

class NSTextInputClient;

class WindowInput {
 public:
  explicit WindowInput(NSWindow& window) : window_(window) {}

  // Presses are counted. A press that says again what the last one said is not sent; nor is a release without a press. A
  // button that is up without a release, which a desktop may keep for itself, is released outside of everything.
  void pointer(const backend::PointerInput& input);
  // The window is about to appear, move or grow, maybe under the pointer, and the desktop will say that the pointer enters it.
  // As long as the pointer has not been moved since, that is not so to the views.
  void pointerMayRest();
  // Ends the presses that are under way, outside of everything: nobody will report their releases.
  void endPresses();
  // Whether the press is still being sent and has ended already, as of a window that was hidden meanwhile. Never for a press
  // that the program sends itself.
  bool hasEndedWhileSent(const NSEvent& press) const;
  // A monitor has put another event in the place of one that is being sent.
  void eventWasReplaced(const NSEvent& event, const NSEvent& by);

  backend::Taken wheel(const backend::WheelInput& input);

  // An announced press is claimed: only the views know whether they take the key, and asking them lets them act. A
  // modifier key is a change of flags, and a release between the repeats of a key that is down is nothing.
  backend::KeyAnswer key(const backend::KeyInput& input);

  // Where no text has the keys, nothing happens, and there is no text.
  void composition(const backend::CompositionInput& input);
  std::optional<backend::EditedText> editedText() const;

  // By the window, while an event is being sent: nobody wanted it.
  void eventWasNotTaken() { taken_ = backend::Taken::No; }

 private:
  backend::Taken send(NSEvent::Fields fields);
  CGPoint inBaseSpace(CGPoint place) const;
  CGPoint onScreen(const backend::PointerInput& input) const;
  bool isAtRest(const backend::PointerInput& input);
  void endPressesExcept(std::uint32_t heldButtons);
  struct Press {
    int button = 0;
    CGPoint place;    // on the screen
    double time = 0;  // seconds
    friend bool operator==(const Press&, const Press&) = default;
  };
  Press pressOf(const backend::PointerInput& input) const;
  int count(const Press& press);  // from 1; within the desktop's limits it continues from the last one
  void claim(std::int64_t code);
  bool takeClaim(std::int64_t code);
  NSTextInputClient* text() const;  // that has the keys; null for none

  NSWindow& window_;
  Press last_;
  int clicks_ = 0;                  // of the last press
  std::optional<CGPoint> resting_;  // the pointer, on the screen; absent once it has moved
  std::uint32_t down_ = 0;          // buttons whose presses were sent, a bit each
  std::uint32_t sending_ = 0;       // those whose presses are being sent
  const NSEvent* sent_ = nullptr;   // the event that is being sent, the innermost of several
  backend::Taken taken_ = backend::Taken::Yes;
  std::deque<std::int64_t> claimed_;  // keys whose presses are to come, in their order
};

// The left button, or another one, went down on something that is not a window of ours. The place is on the screen.
void sendPressElsewhere(CGPoint place, int button, std::uint32_t modifiers);

}  // namespace tessaluna::platform
