// A window with one line of links in it, in a font of which each character is five points wide and a line twelve high, and a
// target that remembers its clicks.
#pragma once

#include "tessaluna/platform/events/NSCursor.h"
#include "tessaluna/platform/events/NSEvent.h"
#include "tessaluna/platform/events/NSTrackingArea.h"
#include "tessaluna/platform/text/NSFont.h"
#include "tessaluna/uikit/links/MultipleLinksTextField.h"
#include "tests/harness/ProbeView.h"
#include "tests/harness/StillWorld.h"
#include "tests/harness/printing.h"
#include "tests/harness/recordingOf.h"

namespace harness {

class LinkTarget : public TessalunaUIKit::LinkTextFieldActionTarget {
 public:
  struct Click {
    std::size_t element;
    bool wasPressed;
    friend bool operator==(const Click&, const Click&) = default;
  };
  std::vector<Click> clicks;
  std::function<void(TessalunaUIKit::MultipleLinksTextField&)> onClick;

  void linkClicked(std::size_t elementIndex, TessalunaUIKit::MultipleLinksTextField& sender) override {
    clicks.push_back({elementIndex, sender.isPressed()});
    if (onClick) onClick(sender);
  }
};

class LinksWorld : public StillWorld {
 protected:
  using Field = TessalunaUIKit::MultipleLinksTextField;
  using Strings = std::vector<std::string>;
  static constexpr tessaluna::platform::CGPoint origin{20, 30};  // of the field, in the window

  // "abc, de, fgh": 60 points, links at 0 to 15, 25 to 35 and 45 to 60.
  const Strings three{"abc", "de", "fgh"};

  LinksWorld() { newField(three, 100); }

  void newField(std::optional<Strings> strings, tessaluna::platform::CGFloat width) {
    if (window) window->close();
    parent = tessaluna::platform::make<ProbeView>(tessaluna::platform::CGRect{0, 0, 200, 150});
    field = tessaluna::platform::make<Field>(tessaluna::platform::CGRect{origin, tessaluna::platform::CGSize{width, 20}});
    field->setFont(tessaluna::platform::NSFont::systemFontOfSize(10));
    field->setLinksEnabled(true);
    field->setStringValues(std::move(strings));
    target = std::make_shared<LinkTarget>();
    field->setTarget(target);
    parent->addSubview(field);
    window = showWindowWith(parent);
    user.moveTo(*window, {150, 120});
  }

  // In the window, x points from the field's left edge.
  static tessaluna::platform::CGPoint at(tessaluna::platform::CGFloat x) { return {origin.x + x, origin.y + 10}; }
  void moveTo(tessaluna::platform::CGFloat x) { user.moveTo(*window, at(x)); }

  // The text in a width, with the underlined part between "_" (single) or "=" (thick).
  std::string shownIn(tessaluna::platform::CGFloat width) const {
    const auto text = field->truncatedString(width);
    std::string shown;
    text->enumerateAttribute(
        tessaluna::platform::NSUnderlineStyleAttributeName, {0, text->length()},
        [&](const std::optional<tessaluna::platform::NSAttributeValue>& value, tessaluna::platform::NSRange range) {
          const char* mark = !value ? "" : std::get<std::int64_t>(*value) == 1 ? "_" : "=";
          shown += mark + text->attributedSubstring(range)->string() + mark;
        });
    return shown;
  }
  std::string shown() const { return shownIn(field->bounds().size.width); }

  Lines drawn() const {
    return recordingOf([&] { field->drawRect(tessaluna::platform::NSZeroRect); });
  }

  // Whether a click at x reaches a link. Nothing is drawn meanwhile, so that the cut stays that of the last truncatedString.
  bool isLinkAt(tessaluna::platform::CGFloat x) {
    target->clicks.clear();
    const auto event = tessaluna::platform::make<tessaluna::platform::NSEvent>(
        tessaluna::platform::NSEvent::Fields{.location = at(x), .window = window});
    field->mouseMoved(event);
    field->mouseDown(event);
    field->mouseUp(event);
    return !target->clicks.empty();
  }

  // Whether the pointer shows a hand at x.
  bool showsHandAt(tessaluna::platform::CGFloat x) const {
    return field->cursorAt({x, 10}) == tessaluna::platform::NSCursor::pointingHandCursor();
  }

  tessaluna::platform::Ref<ProbeView> parent;
  tessaluna::platform::Ref<Field> field;
  std::shared_ptr<LinkTarget> target;
  tessaluna::platform::Ref<tessaluna::platform::NSWindow> window;
};

}  // namespace harness
