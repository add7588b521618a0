#include "tessaluna/platform/menus/NSMenu.h"

#include <algorithm>

#include "tessaluna/platform/backend/Backend.h"
#include "tessaluna/platform/events/keyEquivalents.h"
#include "tessaluna/platform/foundation/AtEndOfScope.h"
#include "tessaluna/platform/foundation/NSNotificationCenter.h"
#include "tessaluna/platform/foundation/stopProgram.h"
#include "tessaluna/platform/graphics/NSImage.h"
#include "tessaluna/platform/views/NSView.h"
#include "tessaluna/platform/windows/NSApplication.h"
#include "tessaluna/platform/windows/NSWindow.h"
#include "tessaluna/platform/windows/NSWindowOcclusion.h"

namespace tessaluna::platform {

namespace {

backend::MenuMark markOf(NSControlStateValue state) {
  if (state == NSControlStateValueOff) return backend::MenuMark::None;
  return state == NSControlStateValueOn ? backend::MenuMark::Check : backend::MenuMark::Dash;
}

bool canBeChosen(const NSMenuItem& item) {
  return item.isEnabled() && !item.isHidden() && !item.isSeparatorItem() && !item.hasSubmenu();
}

}  // namespace

// One opening. The items are those of that moment, under the numbers that the desktop knows them by.
struct NSMenu::Tracking {
  std::vector<Ref<NSMenuItem>> items;
  Closed closed;
  std::unique_ptr<backend::NativeMenu> native;
  Ref<NSObject> windowObserver;
  bool isCancelled = false;  // before the desktop was asked
};

const ClassInfo NSMenu::staticClassInfo{.name = "NSMenu", .base = &NSObject::staticClassInfo};

Ref<NSMenu> NSMenu::supermenu() const {
  const Ref<NSMenuItem> item = superitem_.lock();
  return item ? item->menu() : nullptr;
}

Ref<NSMenuItem> NSMenu::itemAtIndex(std::size_t index) const {
  if (index >= items_.size()) stopProgram("NSMenu: there is no item at that index");
  return items_[index];
}

Ref<NSMenuItem> NSMenu::addItemWithTitle(std::string title, std::string action, std::string keyEquivalent) {
  auto item = make<NSMenuItem>(std::move(title), std::move(action), std::move(keyEquivalent));
  addItem(item);
  return item;
}

Ref<NSMenuItem> NSMenu::addItemWithTitle(std::string title, std::function<void()> action) {
  const auto item = addItemWithTitle(std::move(title), std::string());
  item->setAction(std::move(action));
  return item;
}

void NSMenu::insertItem(const Ref<NSMenuItem>& item, std::size_t index) {
  if (index > items_.size()) stopProgram("NSMenu: an item was inserted beyond the end");
  if (item->menu()) stopProgram("NSMenu: an item of two menus");
  for (Ref<NSMenu> above = item->submenu() ? refTo(*this) : nullptr; above; above = above->supermenu())
    if (above == item->submenu()) stopProgram("NSMenu: a menu within itself");
  item->menu_ = refTo(*this);
  items_.insert(items_.begin() + static_cast<std::ptrdiff_t>(index), item);
}

void NSMenu::removeItem(const Ref<NSMenuItem>& item) {
  const auto found = std::find(items_.begin(), items_.end(), item);
  if (found == items_.end()) return;
  (*found)->menu_.reset();
  items_.erase(found);
}

void NSMenu::removeAllItems() {
  for (const Ref<NSMenuItem>& item : items_) item->menu_.reset();
  items_.clear();
}

template <class Matches>
std::optional<std::size_t> NSMenu::indexWhere(Matches matches) const {
  const auto found = std::find_if(items_.begin(), items_.end(), [&](const auto& item) { return matches(*item); });
  if (found == items_.end()) return std::nullopt;
  return static_cast<std::size_t>(found - items_.begin());
}

std::optional<std::size_t> NSMenu::indexOfItem(const NSMenuItem& item) const {
  return indexWhere([&](const NSMenuItem& other) { return &other == &item; });
}

std::optional<std::size_t> NSMenu::indexOfItemWithRepresentedObject(const NSObject* object) const {
  return indexWhere([&](const NSMenuItem& item) { return areEqual(item.representedObject().get(), object); });
}

Ref<NSMenuItem> NSMenu::itemWithTitle(std::string_view title) const {
  const auto index = indexWhere([&](const NSMenuItem& item) { return item.title() == title; });
  return index ? items_[*index] : nullptr;
}

Ref<NSMenuItem> NSMenu::itemWithTag(std::int64_t tag) const {
  const auto index = indexWhere([&](const NSMenuItem& item) { return item.tag() == tag; });
  return index ? items_[*index] : nullptr;
}

void NSMenu::needsUpdate() {
  if (const Ref<NSMenuDelegate> delegate = delegate_.lock()) delegate->menuNeedsUpdate(*this);
  const std::vector<Ref<NSMenuItem>> copy = items_;
  for (const Ref<NSMenuItem>& item : copy)
    if (const Ref<NSMenu> submenu = item->submenu()) submenu->needsUpdate();  // which may take itself away
}

void NSMenu::update() {
  const std::vector<Ref<NSMenuItem>> copy = items_;
  for (const Ref<NSMenuItem>& item : copy) {
    if (const Ref<NSMenu> submenu = item->submenu()) submenu->update();
    if (!autoenablesItems_ || item->isSeparatorItem()) continue;
    const Ref<NSObject> target = NSApp ? NSApp->targetForAction(item->action(), item->target().get()) : nullptr;
    auto* validation = dynamic_cast<NSMenuItemValidation*>(target.get());
    item->setEnabled(item->hasSubmenu() || (target && (!validation || validation->validateMenuItem(*item))));
  }
}

std::vector<backend::MenuEntry> NSMenu::entries(std::vector<Ref<NSMenuItem>>& numbered) const {
  std::vector<backend::MenuEntry> result;
  for (const Ref<NSMenuItem>& item : items_) {
    if (item->isHidden()) continue;
    result.push_back({.number = numbered.size(),
                      .title = item->title(),
                      .isEnabled = item->isEnabled(),
                      .isSeparator = item->isSeparatorItem(),
                      .mark = markOf(item->state()),
                      .indentation = item->indentationLevel(),
                      .image = item->image(),
                      .keyEquivalent = item->keyEquivalent(),
                      .keyEquivalentModifiers = item->keyEquivalentModifierMask(),
                      .hasSubmenu = item->hasSubmenu()});
    numbered.push_back(item);
    if (item->submenu()) result.back().submenu = item->submenu()->entries(numbered);
  }
  return result;
}

bool NSMenu::popUpMenuPositioningItem(const Ref<NSMenuItem>& item, CGPoint location, NSView* view, Closed closed) {
  const auto positioned = [&item] { return item; };
  if (!view) return open(positioned, {location, {}}, NSApp ? NSApp->keyWindow().get() : nullptr, std::move(closed));
  if (!view->window()) return false;
  const CGPoint inWindow = view->convertPointToView(location, nullptr);
  return open(positioned, {view->window()->convertPointToScreen(inWindow), {}}, view->window(), std::move(closed));
}

bool NSMenu::popUpMenuPositioningItemOverRect(const Ref<NSMenuItem>& item, CGRect rect, NSView& view, Closed closed) {
  return popUpMenuOverRect(
      rect, view, [&item] { return item; }, std::move(closed));
}

bool NSMenu::popUpMenuOverRect(CGRect rect, NSView& view, const Positioned& positioned, Closed closed) {
  if (!view.window()) return false;
  const CGRect inWindow = view.convertRectToView(rect, nullptr);
  return open(positioned, view.window()->convertRectToScreen(inWindow), view.window(), std::move(closed));
}

bool NSMenu::open(const Positioned& positioned, CGRect onScreen, NSWindow* window, Closed closed) {
  const Ref<NSMenu> held = refTo(*this);
  const Ref<NSWindow> heldWindow = window ? refTo(*window) : nullptr;
  cancelTracking();
  needsUpdate();
  const Ref<NSMenuItem> item = positioned();
  update();
  backend::Backend* backend = backend::Backend::current();
  if (!backend || !window || !window->nativeWindow() || !window->isVisible()) return false;
  const auto tracking = std::make_shared<Tracking>();
  std::vector<backend::MenuEntry> entries = this->entries(tracking->items);
  if (entries.empty()) return false;
  backend::MenuPlace place{.over = onScreen, .entry = {}, .minimumWidth = std::max(minimumWidth_, onScreen.size.width)};
  const auto number = std::find(tracking->items.begin(), tracking->items.end(), item);
  if (item && item->menu() == held && number != tracking->items.end())
    place.entry = static_cast<std::size_t>(number - tracking->items.begin());
  tracking->closed = std::move(closed);
  tracking_ = tracking;
  // It goes with the window that it belongs to.
  tracking->windowObserver = NSNotificationCenter::defaultCenter().addObserverForName(
      NSWindowDidChangeOcclusionStateNotification, heldWindow, nullptr,
      [menu = WeakRef<NSMenu>(held)](const Ref<NSNotification>& notification) {
        const Ref<NSMenu> self = menu.lock();
        if (self && !dynamic_cast<NSWindow&>(*notification->object()).isVisible()) self->cancelTracking();
      });
  bool isRefused = true;
  const AtEndOfScope end([&] {
    if (isRefused) forget(tracking);
  });
  if (const Ref<NSMenuDelegate> delegate = delegate_.lock()) delegate->menuWillOpen(*this);
  isRefused = false;
  if (tracking->isCancelled || !window->isVisible()) {
    backend->callAfter(0, [held, tracking] { held->didClose(tracking, std::nullopt); });
    return true;
  }
  tracking->native =
      backend->popUpMenu(*window->nativeWindow(), place, std::move(entries),
                         [held, tracking](std::optional<std::size_t> chosen) { held->didClose(tracking, chosen); });
  return true;
}

void NSMenu::forget(const std::shared_ptr<Tracking>& tracking) {
  if (tracking_ == tracking) tracking_ = nullptr;
  NSNotificationCenter::defaultCenter().removeObserver(tracking->windowObserver);
}

void NSMenu::didClose(const std::shared_ptr<Tracking>& tracking, std::optional<std::size_t> chosen) {
  forget(tracking);
  const Ref<NSMenuItem> item = chosen && *chosen < tracking->items.size() ? tracking->items[*chosen] : nullptr;
  // Whoever is notified may empty the menu, and the item was chosen all the same.
  if (item && item->menu().get() == this) chosen_ = item;
  const AtEndOfScope end([this] { chosen_.reset(); });
  if (const Ref<NSMenuDelegate> delegate = delegate_.lock()) delegate->menuDidClose(*this);
  if (tracking->closed) tracking->closed(item);
  if (item) item->sendAction();
}

void NSMenu::cancelTracking() {
  if (!tracking_) return;
  if (tracking_->native) tracking_->native->close();
  else tracking_->isCancelled = true;
}

void NSMenu::performActionForItemAtIndex(std::size_t index) {
  const Ref<NSMenuItem> item = itemAtIndex(index);
  if (canBeChosen(*item)) item->sendAction();
}

Ref<NSMenuItem> NSMenu::itemForKey(const NSEvent& event) const {
  for (const Ref<NSMenuItem>& item : items_) {
    if (isKeyEquivalent(event, item->keyEquivalent(), item->keyEquivalentModifierMask()) && canBeChosen(*item)) return item;
    if (!item->submenu() || item->isHidden() || !item->isEnabled()) continue;
    if (const Ref<NSMenuItem> below = item->submenu()->itemForKey(event)) return below;
  }
  return nullptr;
}

Ref<NSMenuItem> NSMenu::itemForKeyEquivalent(const NSEvent& event) {
  const Ref<NSMenu> held = refTo(*this);
  needsUpdate();
  update();
  return itemForKey(event);
}

bool NSMenu::performKeyEquivalent(const Ref<NSEvent>& event) {
  const Ref<NSMenuItem> item = itemForKeyEquivalent(*event);
  if (item) item->sendAction();
  return item != nullptr;
}

}  // namespace tessaluna::platform
