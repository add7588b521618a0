#include "tessaluna/uikit/links/linkMenu.h"

#include <utility>

#include "tessaluna/platform/menus/NSMenu.h"

namespace TessalunaUIKit {

using namespace tessaluna::platform;

void popUpLinkMenu(const std::vector<std::string>& strings, CGPoint below, NSView& view,
                   std::function<void(std::size_t index)> chosen) {
  const auto menu = make<NSMenu>();
  // What an item does is done here, and nobody in the responder chain is asked about it.
  menu->setAutoenablesItems(false);
  for (std::size_t i = 0; i < strings.size(); ++i)
    if (!strings[i].empty()) menu->addItemWithTitle(strings[i], "")->setTag(static_cast<std::int64_t>(i));
  menu->popUpMenuPositioningItem(nullptr, below, &view, [chosen = std::move(chosen)](const Ref<NSMenuItem>& item) {
    if (item) chosen(static_cast<std::size_t>(item->tag()));
  });
}

}  // namespace TessalunaUIKit
