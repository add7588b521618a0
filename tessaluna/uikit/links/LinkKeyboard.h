// An addition: the keyboard in a line of links. A view over the line that the pointer ignores, so that a press never takes
// the keyboard from anybody; the Tab key leads to it. The arrow keys, Home and End go from stop to stop, Return presses one.
#pragma once

#include <optional>
#include <vector>

#include "tessaluna/platform/views/FocusRingSurroundings.h"
#include "tessaluna/platform/views/NSView.h"

namespace TessalunaUIKit {

class LinkKeyboard : public tessaluna::platform::NSView, public tessaluna::platform::FocusRingSurroundings {
 public:
  static const tessaluna::platform::ClassInfo staticClassInfo;
  const tessaluna::platform::ClassInfo& classInfo() const override { return staticClassInfo; }

  // What the keys go to. Derived from by the view that this one is in.
  class Line {
   public:
    virtual ~Line() = default;
    // In the line's coordinates, in the order of the keys; empty while the keyboard is to pass by.
    virtual std::vector<tessaluna::platform::CGRect> keyboardStops() const = 0;
    virtual void pressKeyboardStop(std::size_t stop) = 0;
    virtual void keyboardStopDidChange() = 0;
    // What the stops are painted on; null for the window's ground.
    virtual tessaluna::platform::Ref<tessaluna::platform::NSColor> groundOfStops() const = 0;
  };
  // The line is the superview and outlives this view.
  LinkKeyboard(tessaluna::platform::CGRect frame, Line& line) : NSView(frame), line_(line) {}

  // Absent while the keys go elsewhere.
  std::optional<std::size_t> currentStop() const;
  // The stops or their places have changed.
  void stopsDidChange();

  tessaluna::platform::NSView* hitTest(tessaluna::platform::CGPoint) override { return nullptr; }
  bool acceptsFirstResponder() const override { return !line_.keyboardStops().empty(); }
  bool becomeFirstResponder() override;
  bool resignFirstResponder() override;
  void keyDown(const tessaluna::platform::Ref<tessaluna::platform::NSEvent>& event) override;
  tessaluna::platform::CGRect focusRingMaskBounds() const override;
  const tessaluna::platform::NSView& viewWithFocusRing() const override { return *superview(); }
  tessaluna::platform::Ref<tessaluna::platform::NSColor> focusRingGround() const override { return line_.groundOfStops(); }

 private:
  void moveTo(std::size_t stop);

  Line& line_;
  std::size_t stop_ = 0;
  bool hasKeys_ = false;
};

}  // namespace TessalunaUIKit
