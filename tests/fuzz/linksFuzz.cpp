// Whatever a line of links contains, valid UTF-8 or not: it can be cut, drawn, pointed at, pressed and read by assistive
// clients at any width that has room for its "…", and its visible part fits into that width.
#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "tessaluna/backends/headless/HeadlessBackend.h"
#include "tessaluna/platform/events/NSEvent.h"
#include "tessaluna/platform/foundation/stopProgram.h"
#include "tessaluna/platform/text/NSFont.h"
#include "tessaluna/platform/text/unicode.h"
#include "tessaluna/platform/windows/NSApplication.h"
#include "tessaluna/platform/windows/NSWindow.h"
#include "tessaluna/uikit/links/MultipleLinksTextField.h"
#include "tests/fuzz/FuzzInput.h"

namespace {

using namespace tessaluna::platform;
using TessalunaUIKit::MultipleLinksTextField;

struct World {
  World() { NSApplication::sharedApplication(); }
  tessaluna::backend::headless::HeadlessBackend desktop;
};

constexpr CGFloat advance = 5;  // of each character, "…" included

class Target : public TessalunaUIKit::LinkTextFieldActionTarget {
 public:
  void linkClicked(std::size_t element, MultipleLinksTextField& sender) override {
    // The list may have changed since the pointer moved, but an element outside every list was never a link.
    if (element >= maxElements) stopProgram("a click on an element that there never was");
    sender.setIsPressed(false);
  }
  std::size_t maxElements = 0;
};

// A few strings, each with the bytes up to one that ends it.
std::vector<std::string> strings(fuzz::FuzzInput& input) {
  std::vector<std::string> result(input.below(8));
  for (std::string& string : result)
    for (std::uint8_t byte = input.byte(); byte != 0; byte = input.byte()) string += static_cast<char>(byte);
  return result;
}

void check(const MultipleLinksTextField& field, const NSAttributedString& shown, CGFloat width) {
  // If lines differ in length, a longer beginning of the text may be narrower.
  for (const char16_t unit : utf16FromUtf8(field.accessibilityLabel()))
    if (isLineEnd(unit)) return;
  const CGFloat whole = field.intrinsicContentSize().width, now = shown.size().width;
  if (whole <= width + 1 ? now != whole : now > width + 1 && shown.length() != 1)
    stopProgram("the text does not fit and is not the ellipsis alone");
}

Ref<NSEvent> event(fuzz::FuzzInput& input, const Ref<NSWindow>& window) {
  // The pointer may be anywhere on any screen.
  const CGFloat x = input.byte() * 2.0 - 100 + input.byte() / 256.0;
  return make<NSEvent>(NSEvent::Fields{.location = {x, input.byte() / 8.0}, .window = window});
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  static World world;
  fuzz::FuzzInput input({data, size});
  const auto target = std::make_shared<Target>();
  const auto field = make<MultipleLinksTextField>(CGRect{0, 0, 100, 20});
  field->setFont(NSFont::systemFontOfSize(2 * advance));
  field->setTarget(target);
  const auto window =
      make<NSWindow>(CGRect{0, 0, 400, 40}, NSWindowStyleMaskBorderless, NSBackingStoreBuffered, /*defer=*/true);
  window->contentView()->addSubview(field);
  window->orderFront(nullptr);
  constexpr int maxSteps = 40;
  for (int step = 0; step < maxSteps && !input.isAtEnd(); ++step) {
    switch (input.below(12)) {
      case 0: {
        const std::vector<std::string> now = strings(input);
        target->maxElements = std::max(target->maxElements, now.size());
        field->setStringValues(now);
        break;
      }
      case 1: field->setStringValues(std::nullopt); break;
      case 2: field->setFrameSize({advance + 0.25 + input.byte() + input.byte() / 256.0, 20}); break;
      case 3: field->setLinksEnabled(input.flag()); break;
      case 4: field->mouseEntered(event(input, window)); break;
      case 5: field->mouseMoved(event(input, window)); break;
      case 6: field->mouseDown(event(input, window)); break;
      case 7: field->mouseUp(event(input, window)); break;
      case 8: field->setTakesKeyboard(input.flag()); break;
      case 9: field->setShowsMenuAtEllipsis(input.flag()); break;
      case 10:
        if (const auto links = field->accessibilityChildren())
          for (const Ref<NSObject>& link : *links) {
            const NSAccessibility& element = *accessibilityOf(link);
            if (element.accessibilityTitle().empty() || element.accessibilityFrame().size.width < 0)
              stopProgram("a link without a name or with less than no width");
          }
        break;
      case 11: field->accessibilityPerformPress(); break;
    }
    const CGFloat width = field->bounds().size.width;
    check(*field, *field->truncatedString(width), width);
    world.desktop.settle();
  }
  window->orderOut(nullptr);
  window->setContentView(nullptr);
  return 0;
}
