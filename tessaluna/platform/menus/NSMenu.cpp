#include "tessaluna/platform/menus/NSMenu.h"

#include "tessaluna/platform/backend/Backend.h"
#include "tessaluna/platform/views/NSView.h"
#include "tessaluna/platform/windows/NSApplication.h"
#include "tessaluna/platform/windows/NSWindow.h"

namespace tessaluna::platform {

const ClassInfo NSMenu::staticClassInfo{.name = "NSMenu", .base = &NSObject::staticClassInfo};

void NSMenu::popUpInView(NSView& view, CGPoint location) {
  backend::Backend* backend = backend::Backend::current();
  if (!backend || !view.window() || !view.window()->nativeWindow()) return;
  std::vector<backend::MenuEntry> entries;
  for (const NSMenuItem& item : items_)
    entries.push_back(
        {.title = item.title, .isEnabled = item.isEnabled, .isChecked = item.isOn, .isSeparator = item.isSeparator});
  const CGPoint onScreen = view.window()->convertPointToScreen(view.convertPointToView(location, nullptr));
  backend->popUpMenu(*view.window()->nativeWindow(), onScreen, std::move(entries),
                     [menu = refTo(*this)](std::optional<std::size_t> chosen) {
                       if (!chosen || *chosen >= menu->items_.size() || !NSApp) return;
                       const NSMenuItem& item = menu->items_[*chosen];
                       NSApp->sendAction(item.action, item.target.lock().get(), menu.get());
                     });
}

}  // namespace tessaluna::platform
