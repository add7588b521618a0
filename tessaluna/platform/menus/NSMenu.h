// A menu that pops up at a point: a list of titles, each with an action. The desktop shows it.
//
//   auto menu = make<NSMenu>();
//   menu->addItem({.title = "Play next", .action = "playNext:", .target = host});
//   menu->popUpInView(*button, {0, 0});
#pragma once

#include <string>
#include <vector>

#include "tessaluna/platform/foundation/Geometry.h"
#include "tessaluna/platform/foundation/NSObject.h"
#include "tessaluna/platform/views/Forward.h"

namespace tessaluna::platform {

struct NSMenuItem {
  std::string title;
  std::string action;             // a selector's name
  WeakRef<NSObject> target = {};  // absent: the responder chain
  bool isEnabled = true;
  bool isOn = false;  // has a check mark
  bool isSeparator = false;
};

class NSMenu : public NSObject {
 public:
  static const ClassInfo staticClassInfo;
  const ClassInfo& classInfo() const override { return staticClassInfo; }

  void addItem(NSMenuItem item) { items_.push_back(std::move(item)); }
  void addSeparator() { items_.push_back({.title = "", .action = "", .isSeparator = true}); }
  const std::vector<NSMenuItem>& items() const { return items_; }

  // With its upper left corner at a point of the view. Returns at once; the action of the chosen item is sent later, with
  // the menu as the sender. Nothing for a view without a window.
  void popUpInView(NSView& view, CGPoint location);

 private:
  std::vector<NSMenuItem> items_;
};

}  // namespace tessaluna::platform
