// Whatever a document contains, reading it returns objects or an error with a message, and the objects can be shown.
#include <cstddef>
#include <cstdint>
#include <string_view>

#include "tessaluna/backends/headless/HeadlessBackend.h"
#include "tessaluna/platform/foundation/stopProgram.h"
#include "tessaluna/platform/interface_files/NSNib.h"
#include "tessaluna/platform/windows/NSApplication.h"
#include "tessaluna/platform/windows/NSWindow.h"
#include "tessaluna/uikit/interfaceFileClasses.h"
#include "tessaluna/uikit/suggestions/SuggestionItemViewController.h"

namespace {

using namespace tessaluna::platform;

struct World {
  World() {
    NSApplication::sharedApplication();
    TessalunaUIKit::registerInterfaceFileClasses();
  }
  tessaluna::backend::headless::HeadlessBackend desktop;
};

void show(const Ref<NSView>& view, World& world) {
  const auto window =
      make<NSWindow>(CGRect{0, 0, 100, 100}, NSWindowStyleMaskBorderless, NSBackingStoreBuffered, /*defer=*/true);
  window->contentView()->addSubview(view);
  window->orderFront(nullptr);
  world.desktop.settle();
  window->orderOut(nullptr);
  window->setContentView(nullptr);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  static World world;
  const std::string_view json(reinterpret_cast<const char*>(data), size);
  const auto owner = make<TessalunaUIKit::SuggestionItemViewController>(std::nullopt);
  const NSNib::Contents contents = make<NSNib>(json)->instantiateWithOwner(owner);
  if (contents.error && (contents.error->empty() || !contents.topLevelObjects.empty()))
    stopProgram("an error without a word, or with objects");
  for (const Ref<NSObject>& object : contents.topLevelObjects)
    if (const auto view = std::dynamic_pointer_cast<NSView>(object); view && !view->superview()) show(view, world);
  return 0;
}
