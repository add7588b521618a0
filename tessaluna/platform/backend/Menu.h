// Menus as a backend shows them: a tree of entries, and the place where it opens.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "tessaluna/platform/foundation/Geometry.h"

namespace tessaluna::platform {

class NSImage;

}  // namespace tessaluna::platform

namespace tessaluna::backend {

enum class MenuMark { None, Check, Dash };

struct MenuEntry {
  std::size_t number = 0;  // unlike those of all others in the menu and its submenus
  std::string title;
  bool isEnabled = true;
  bool isSeparator = false;
  MenuMark mark = MenuMark::None;
  int indentation = 0;                            // in levels
  std::shared_ptr<platform::NSImage> image = {};  // null for none
  std::string keyEquivalent = {};                 // only shown: characters as a key event has them
  std::uint32_t keyEquivalentModifiers = 0;       // modifier flags of events
  bool hasSubmenu = false;
  std::vector<MenuEntry> submenu = {};
};

// Where a menu opens. The desktop moves it as little as the screen's edges ask for.
struct MenuPlace {
  platform::CGRect over;  // screen space; a point has no size
  // The entry of the menu itself whose upper left corner lies at the rectangle's, or that lies in the middle of its height if
  // the rectangle is the higher one. Absent: the menu hangs below the rectangle, at its left edge.
  std::optional<std::size_t> entry;
  double minimumWidth = 0;  // points
};

// A menu that is open. Its end does not close the menu.
class NativeMenu {
 public:
  virtual ~NativeMenu() = default;
  virtual void close() = 0;  // nothing was chosen; without effect once the menu has closed
};

}  // namespace tessaluna::backend
