// A window with a row, one control of a track list's row in it, and a target that remembers its clicks.
#pragma once

#include "tessaluna/uikit/trackrow/TrackListRowActionTarget.h"
#include "tessaluna/uikit/trackrow/TrackRowFavoriteButton.h"
#include "tessaluna/uikit/trackrow/TrackRowMoreButton.h"
#include "tessaluna/uikit/trackrow/TrackRowPlayButton.h"
#include "tests/harness/ProbeView.h"
#include "tests/harness/StillWorld.h"
#include "tests/harness/printing.h"
#include "tests/harness/recordingOf.h"

namespace harness {

class RecordingTarget : public TessalunaUIKit::TrackListRowActionTarget {
 public:
  std::vector<std::string> clicks;
  std::vector<tessaluna::platform::NSView*> senders;
  std::function<void()> onClick;

  void trackRowPlayButtonClicked(TessalunaUIKit::TrackRowPlayButton& button) override { got("play", button); }
  void trackRowFavoriteButtonClicked(TessalunaUIKit::TrackRowFavoriteButton& button) override { got("favorite", button); }
  void trackRowMoreButtonClicked(TessalunaUIKit::TrackRowMoreButton& button) override { got("more", button); }

 private:
  void got(const char* what, tessaluna::platform::NSView& button) {
    clicks.push_back(what);
    senders.push_back(&button);
    if (onClick) onClick();
  }
};

template <class Button>
class TrackRowWorld : public StillWorld {
 protected:
  static constexpr tessaluna::platform::CGRect frame{50, 60, 15, 15};  // in the window
  static constexpr tessaluna::platform::CGRect bounds{0, 0, 15, 15};

  TrackRowWorld() { newButton(); }

  void newButton() {
    if (window) window->close();
    row = tessaluna::platform::make<ProbeView>(tessaluna::platform::CGRect{0, 40, 200, 50});
    button = tessaluna::platform::make<Button>(tessaluna::platform::CGRect{50, 20, 15, 15});
    target = std::make_shared<RecordingTarget>();
    button->setTarget(target);
    row->addSubview(button);
    window = showWindowWith(row);
  }

  // Calls one handler of the button, as a window would.
  void send(void (Button::*handler)(const tessaluna::platform::Ref<tessaluna::platform::NSEvent>&),
            tessaluna::platform::CGPoint location) {
    const auto event = tessaluna::platform::make<tessaluna::platform::NSEvent>(
        tessaluna::platform::NSEvent::Fields{.location = location, .window = window});
    (button.get()->*handler)(event);
  }

  void press() { send(&Button::mouseDown, {57, 67}); }

  // Everything that was asked for is painted, and forgotten.
  void settleAll() {
    desktop.settle();
    nativeOf(*window).forgetPaints();
  }

  Lines drawn() const {
    return recordingOf([&] { button->drawRect(button->bounds()); });
  }

  tessaluna::platform::Ref<ProbeView> row;
  tessaluna::platform::Ref<Button> button;
  tessaluna::platform::Ref<RecordingTarget> target;
  tessaluna::platform::Ref<tessaluna::platform::NSWindow> window;
};

}  // namespace harness
