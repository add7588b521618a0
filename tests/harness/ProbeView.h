// A view that does what a test sets and records what it was asked to do.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "tessaluna/platform/events/NSEvent.h"
#include "tessaluna/platform/views/NSView.h"

namespace harness {

class ProbeView : public tessaluna::platform::NSView {
 public:
  using NSView::NSView;

  // What it answers about itself.
  bool flipped = false, opaque = false, acceptsFirst = false, refusesToResign = false, refusesToBecome = false;
  bool takesKeyEquivalents = false;

  // What it received, in order: "mouseDown", "keyDown", ...
  std::vector<std::string> calls;
  std::vector<tessaluna::platform::Ref<tessaluna::platform::NSEvent>> events;
  std::vector<tessaluna::platform::CGRect> drawn;  // the arguments of drawRect:
  std::function<void(tessaluna::platform::CGRect)> onDraw;
  std::function<void(const std::string&)> onCall;

  bool isFlipped() const override { return flipped; }
  bool isOpaque() const override { return opaque; }
  bool acceptsFirstResponder() const override { return acceptsFirst; }
  bool becomeFirstResponder() override {
    calls.push_back("become");
    return !refusesToBecome;
  }
  bool resignFirstResponder() override {
    calls.push_back("resign");
    return !refusesToResign;
  }
  bool performKeyEquivalent(const tessaluna::platform::Ref<tessaluna::platform::NSEvent>& event) override {
    calls.push_back("keyEquivalent");
    return takesKeyEquivalents || NSView::performKeyEquivalent(event);
  }
  void drawRect(tessaluna::platform::CGRect rect) override {
    drawn.push_back(rect);
    if (onDraw) onDraw(rect);
  }
  void updateTrackingAreas() override { calls.push_back("updateTrackingAreas"); }

  using EventRef = tessaluna::platform::Ref<tessaluna::platform::NSEvent>;
  void mouseDown(const EventRef& e) override { got("mouseDown", e); }
  void mouseUp(const EventRef& e) override { got("mouseUp", e); }
  void mouseDragged(const EventRef& e) override { got("mouseDragged", e); }
  void rightMouseDown(const EventRef& e) override { got("rightMouseDown", e); }
  void rightMouseUp(const EventRef& e) override { got("rightMouseUp", e); }
  void mouseEntered(const EventRef& e) override { got("mouseEntered", e); }
  void mouseExited(const EventRef& e) override { got("mouseExited", e); }
  void mouseMoved(const EventRef& e) override { got("mouseMoved", e); }
  void scrollWheel(const EventRef& e) override { got("scrollWheel", e); }
  void keyDown(const EventRef& e) override { got("keyDown", e); }
  void keyUp(const EventRef& e) override { got("keyUp", e); }

 private:
  void got(const std::string& what, const EventRef& event) {
    calls.push_back(what);
    events.push_back(event);
    if (onCall) onCall(what);
  }
};

}  // namespace harness
