// A list of items that the desktop shows at a place of a view, and from which the user chooses one.
//
//   const auto menu = make<NSMenu>();
//   menu->addItemWithTitle("Play next", [this] { queue_.playNext(); });
//   menu->popUpMenuPositioningItem(nullptr, {0, 0}, &button);
//
// Nothing waits for the user: opening returns at once, and what was chosen comes later, as the item's action.
#pragma once

#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "tessaluna/platform/foundation/Geometry.h"
#include "tessaluna/platform/menus/NSMenuItem.h"
#include "tessaluna/platform/views/Forward.h"

namespace tessaluna::backend {

struct MenuEntry;

}  // namespace tessaluna::backend

namespace tessaluna::platform {

// What a menu reports. A submenu's delegate gets menuNeedsUpdate when the menu that it is in opens, and nothing else.
class NSMenuDelegate {
 public:
  virtual ~NSMenuDelegate() = default;
  virtual void menuNeedsUpdate(NSMenu&) {}  // the time to change items; before menuWillOpen
  virtual void menuWillOpen(NSMenu&) {}
  virtual void menuDidClose(NSMenu&) {}  // before the chosen item's action
};

class NSMenu : public NSObject {
 public:
  static const ClassInfo staticClassInfo;
  const ClassInfo& classInfo() const override { return staticClassInfo; }

  explicit NSMenu(std::string title = {}) : title_(std::move(title)) {}

  const std::string& title() const { return title_; }
  void setTitle(std::string title) { title_ = std::move(title); }
  Ref<NSMenuDelegate> delegate() const { return delegate_.lock(); }  // not kept alive
  void setDelegate(const Ref<NSMenuDelegate>& delegate) { delegate_ = delegate; }
  CGFloat minimumWidth() const { return minimumWidth_; }  // points
  void setMinimumWidth(CGFloat width) { minimumWidth_ = width; }
  Ref<NSMenu> supermenu() const;  // null unless this is a submenu

  // Items. One that is in a menu already or whose submenu this one is below, and an index beyond the end, stop the program.
  const std::vector<Ref<NSMenuItem>>& itemArray() const { return items_; }
  std::size_t numberOfItems() const { return items_.size(); }
  Ref<NSMenuItem> itemAtIndex(std::size_t index) const;
  void addItem(const Ref<NSMenuItem>& item) { insertItem(item, items_.size()); }
  Ref<NSMenuItem> addItemWithTitle(std::string title, std::string action, std::string keyEquivalent = {});
  Ref<NSMenuItem> addItemWithTitle(std::string title, std::function<void()> action);
  Ref<NSMenuItem> addItemWithTitle(std::string title, std::nullptr_t) { return addItemWithTitle(std::move(title), ""); }
  void insertItem(const Ref<NSMenuItem>& item, std::size_t index);
  void removeItem(const Ref<NSMenuItem>& item);  // nothing for one that is not in this menu
  void removeItemAtIndex(std::size_t index) { removeItem(itemAtIndex(index)); }
  void removeAllItems();
  // The first that fits; absent for none.
  std::optional<std::size_t> indexOfItem(const NSMenuItem& item) const;
  std::optional<std::size_t> indexOfItemWithRepresentedObject(const NSObject* object) const;
  Ref<NSMenuItem> itemWithTitle(std::string_view title) const;
  Ref<NSMenuItem> itemWithTag(std::int64_t tag) const;

  // Where the menu enables its items itself (the start), an item with an action can be chosen when somebody has that action,
  // its target or the responder chain, and does not say otherwise in validateMenuItem; an item with a submenu always can.
  bool autoenablesItems() const { return autoenablesItems_; }
  void setAutoenablesItems(bool does) { autoenablesItems_ = does; }
  void update();  // brings all items up to date, those of submenus too

  // Opens with its upper left corner, or that of an item of its own, at a point of the view, or of the screen without one. It
  // closes with the view's window.
  // `closed` is called later, once, with what was chosen or null, before the action. False, and nothing is called, where
  // there is no visible window to open it for, or nothing to show.
  using Closed = std::function<void(const Ref<NSMenuItem>& chosen)>;
  bool popUpMenuPositioningItem(const Ref<NSMenuItem>& item, CGPoint location, NSView* view, Closed closed = nullptr);
  // The same with the item in the middle of the rectangle's height, and at least as wide as that: over a pop-up button.
  bool popUpMenuPositioningItemOverRect(const Ref<NSMenuItem>& item, CGRect rect, NSView& view, Closed closed = nullptr);
  // The same with the item that `positioned` returns. It is called after the delegate has changed the items, and may change them
  // too.
  using Positioned = std::function<Ref<NSMenuItem>()>;
  bool popUpMenuOverRect(CGRect rect, NSView& view, const Positioned& positioned, Closed closed = nullptr);
  bool isOpen() const { return tracking_ != nullptr; }
  // From the closing of the menu until the action has been sent: the item of it that was chosen, also if it was removed since.
  Ref<NSMenuItem> chosenItem() const { return chosen_; }
  void cancelTracking();  // closes an open menu, also from its delegate's menuWillOpen; nothing was chosen

  // As a choice would; not for an item that cannot be chosen. Without NSApp nothing happens.
  void performActionForItemAtIndex(std::size_t index);
  // True if an item that can be chosen, of this menu or a submenu, has the key: its action has then been sent.
  bool performKeyEquivalent(const Ref<NSEvent>& event);
  // That item, after all were brought up to date; null for none.
  Ref<NSMenuItem> itemForKeyEquivalent(const NSEvent& event);

 private:
  friend class NSMenuItem;
  struct Tracking;
  bool open(const Positioned& positioned, CGRect onScreen, NSWindow* window, Closed closed);
  void forget(const std::shared_ptr<Tracking>& tracking);
  void didClose(const std::shared_ptr<Tracking>& tracking, std::optional<std::size_t> chosen);
  void needsUpdate();
  Ref<NSMenuItem> itemForKey(const NSEvent& event) const;
  std::vector<backend::MenuEntry> entries(std::vector<Ref<NSMenuItem>>& numbered) const;
  template <class Matches>
  std::optional<std::size_t> indexWhere(Matches matches) const;

  std::string title_;
  std::vector<Ref<NSMenuItem>> items_;
  WeakRef<NSMenuItem> superitem_;
  WeakRef<NSMenuDelegate> delegate_;
  std::shared_ptr<Tracking> tracking_;  // while open
  Ref<NSMenuItem> chosen_;
  CGFloat minimumWidth_ = 0;
  bool autoenablesItems_ = true;
};

}  // namespace tessaluna::platform
