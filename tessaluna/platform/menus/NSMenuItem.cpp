#include "tessaluna/platform/menus/NSMenuItem.h"

#include <algorithm>

#include "tessaluna/platform/foundation/stopProgram.h"
#include "tessaluna/platform/graphics/NSImage.h"
#include "tessaluna/platform/menus/NSMenu.h"

namespace tessaluna::platform {

const ClassInfo NSMenuItem::staticClassInfo{.name = "NSMenuItem", .base = &NSObject::staticClassInfo};

NSMenuItem::NSMenuItem(std::string title, std::string action, std::string keyEquivalent)
    : title_(std::move(title)), keyEquivalent_(std::move(keyEquivalent)) {
  setAction(std::move(action));
}

Ref<NSMenuItem> NSMenuItem::separatorItem() {
  auto item = make<NSMenuItem>();
  item->isSeparator_ = true;
  return item;
}

void NSMenuItem::setIndentationLevel(int level) {
  constexpr int deepest = 15;
  if (level < 0) stopProgram("NSMenuItem: a negative indentation level");
  indentationLevel_ = std::min(level, deepest);
}

void NSMenuItem::setSubmenu(Ref<NSMenu> menu) {
  if (menu == submenu_) return;
  if (menu && menu->superitem_.lock()) stopProgram("NSMenuItem: a submenu of two menus");
  for (Ref<NSMenu> above = menu_.lock(); above; above = above->supermenu())
    if (above == menu) stopProgram("NSMenuItem: a menu within itself");
  if (submenu_) submenu_->superitem_.reset();
  submenu_ = std::move(menu);
  if (submenu_) submenu_->superitem_ = refTo(*this);
}

}  // namespace tessaluna::platform
