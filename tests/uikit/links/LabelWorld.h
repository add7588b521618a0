// A window with a clickable label in it, in a font of which each character is five points wide and a line twelve high, and a
// target that remembers its calls.
#pragma once

#include "tessaluna/platform/events/NSCursor.h"
#include "tessaluna/platform/events/NSEvent.h"
#include "tessaluna/platform/text/NSFont.h"
#include "tessaluna/uikit/links/ClickableLabel.h"
#include "tests/harness/ProbeView.h"
#include "tests/harness/StillWorld.h"
#include "tests/harness/printing.h"

namespace harness {

class LabelTarget : public TessalunaUIKit::ClickableLabelTarget {
 public:
  std::vector<std::string> calls;
  std::function<void()> onCall;
  void labelClicked(TessalunaUIKit::ClickableLabel&) override { got("label"); }
  void linkClicked(const tessaluna::platform::URL& link) override { got(link.absoluteString()); }

 private:
  void got(std::string what) {
    calls.push_back(std::move(what));
    if (onCall) onCall();
  }
};

// Five points for each character, from x = 5 on, and twelve for each line.
class LabelWorld : public StillWorld {
 protected:
  using ClickableLabel = TessalunaUIKit::ClickableLabel;
  using Calls = std::vector<std::string>;
  static constexpr auto first = "https://example.org/1", second = "https://example.org/2";
  static constexpr tessaluna::platform::CGFloat middle = 6;  // of the first line
  static constexpr tessaluna::platform::CGPoint onLink{27, middle}, onText{8, middle}, besideText{150, 50};

  struct Link {
    tessaluna::platform::NSRange range;
    tessaluna::platform::NSAttributeValue value;
  };

  LabelWorld() {
    parent = tessaluna::platform::make<ProbeView>(tessaluna::platform::CGRect{0, 0, 200, 150});
    label = tessaluna::platform::make<ClickableLabel>(tessaluna::platform::CGRect{20, 50, 160, 60});
    label->setBezeled(false);
    label->setDrawsBackground(false);
    label->setEditable(false);
    label->setFont(tessaluna::platform::NSFont::systemFontOfSize(10));
    target = std::make_shared<LabelTarget>();
    label->setActionTarget(target);
    parent->addSubview(label);
    window = showWindowWith(parent);
  }

  void setText(std::string_view text, const std::vector<Link>& links) {
    const auto attributed = tessaluna::platform::make<tessaluna::platform::NSMutableAttributedString>(
        text, tessaluna::platform::NSAttributes{
                  {tessaluna::platform::NSFontAttributeName, tessaluna::platform::NSFont::systemFontOfSize(10)}});
    for (const auto& [range, value] : links)
      attributed->addAttribute(tessaluna::platform::NSLinkAttributeName, value, range);
    label->setAttributedStringValue(attributed);
    desktop.settle();
    window->resetCursorRects();
  }
  static tessaluna::platform::URL url(const std::string& text) { return *tessaluna::platform::URL::URLWithString(text); }

  // "go here now": the link lies at 20 to 40 points.
  void setOneLink(tessaluna::platform::NSAttributeValue value = url(first)) {
    setText("go here now", {{{3, 4}, std::move(value)}});
  }
  // "one two": links at 5 to 20 and at 25 to 40.
  void setTwoLinks() { setText("one two", {{{0, 3}, url(first)}, {{4, 3}, url(second)}}); }

  // Of the label, whose y goes down, in the window.
  tessaluna::platform::CGPoint at(tessaluna::platform::CGPoint point) const {
    return label->convertPointToView(point, nullptr);
  }
  void pressAndRelease(tessaluna::platform::CGPoint pressed, tessaluna::platform::CGPoint released) {
    user.press(*window, at(pressed));
    user.dragTo(at(released));
    user.release();
  }
  void click(tessaluna::platform::CGPoint point) { pressAndRelease(point, point); }
  // For the label's handlers alone: nothing resets the cursor rectangles.
  tessaluna::platform::Ref<tessaluna::platform::NSEvent> eventAt(tessaluna::platform::CGPoint point) const {
    return tessaluna::platform::make<tessaluna::platform::NSEvent>(
        tessaluna::platform::NSEvent::Fields{.location = at(point), .window = window});
  }
  void clickDirectly(tessaluna::platform::CGPoint point) {
    label->mouseDown(eventAt(point));
    label->mouseUp(eventAt(point));
  }
  bool showsHandAt(tessaluna::platform::CGPoint point) const {
    return label->cursorAt(point) == tessaluna::platform::NSCursor::pointingHandCursor();
  }

  tessaluna::platform::Ref<ProbeView> parent;
  tessaluna::platform::Ref<ClickableLabel> label;
  std::shared_ptr<LabelTarget> target;
  tessaluna::platform::Ref<tessaluna::platform::NSWindow> window;
};

}  // namespace harness
