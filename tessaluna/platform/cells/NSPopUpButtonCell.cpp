#include "tessaluna/platform/cells/NSPopUpButtonCell.h"

#include <algorithm>

#include "tessaluna/platform/cells/buttonBox.h"
#include "tessaluna/platform/foundation/AtEndOfScope.h"
#include "tessaluna/platform/foundation/NSCoder.h"
#include "tessaluna/platform/foundation/NSNumber.h"
#include "tessaluna/platform/foundation/memberTables.h"
#include "tessaluna/platform/graphics/NSBezierPath.h"
#include "tessaluna/platform/graphics/NSColor.h"
#include "tessaluna/platform/graphics/NSImage.h"
#include "tessaluna/platform/views/NSControl.h"

namespace tessaluna::platform {

const Selector NSPopUpButtonCell::selectors_[] = {action<&NSPopUpButtonCell::itemWasChosen>("_popUpItemAction:")};

namespace {

constexpr std::string_view itemAction = "_popUpItemAction:";

bool hasKeyEquivalents(const NSMenu& menu) {
  return std::ranges::any_of(menu.itemArray(), [](const Ref<NSMenuItem>& item) {
    return !item->keyEquivalent().empty() || (item->submenu() && hasKeyEquivalents(*item->submenu()));
  });
}

constexpr Property popUpButtonCellProperties[] = {
    property<&NSPopUpButtonCell::setPullsDown, "pullsDown">(),
    property<&NSPopUpButtonCell::setAltersStateOfSelectedItem, "altersStateOfSelectedItem">()};

// Beside the title, above and below it, and at the right for the arrows.
constexpr CGFloat titleMarginX = 10, titleMarginY = 4, arrowsWidth = 22;

Ref<NSMenu> copyOf(const NSMenu& menu) {
  const auto copy = make<NSMenu>(menu.title());
  copy->setAutoenablesItems(menu.autoenablesItems());
  copy->setMinimumWidth(menu.minimumWidth());
  for (const Ref<NSMenuItem>& item : menu.itemArray()) {
    const auto added =
        item->isSeparatorItem() ? NSMenuItem::separatorItem() : make<NSMenuItem>(item->title(), "", item->keyEquivalent());
    added->setKeyEquivalentModifierMask(item->keyEquivalentModifierMask());
    added->takeActionFrom(*item);
    added->setTag(item->tag());
    added->setImage(item->image());
    added->setState(item->state());
    added->setIndentationLevel(item->indentationLevel());
    added->setHidden(item->isHidden());
    added->setEnabled(item->isEnabled());
    added->setRepresentedObject(item->representedObject());
    if (item->submenu()) added->setSubmenu(copyOf(*item->submenu()));
    copy->addItem(added);
  }
  return copy;
}

}  // namespace

const ClassInfo NSPopUpButtonCell::staticClassInfo{.name = "NSPopUpButtonCell",
                                                   .base = &NSButtonCell::staticClassInfo,
                                                   .selectors = NSPopUpButtonCell::selectors_,
                                                   .properties = popUpButtonCellProperties};

NSPopUpButtonCell::NSPopUpButtonCell(std::string title, bool pullsDown) : menu_(make<NSMenu>()), pullsDown_(pullsDown) {
  setAlignment(NSTextAlignmentLeft);
  setLineBreakMode(NSLineBreakByTruncatingTail);
  if (!title.empty()) addItemWithTitle(title);
}

NSPopUpButtonCell::NSPopUpButtonCell(NSCoder& coder) : NSButtonCell(coder), menu_(make<NSMenu>()) {
  setAlignment(NSTextAlignmentLeft);
  setLineBreakMode(NSLineBreakByTruncatingTail);
  pullsDown_ = coder.decodeBoolForKey("pullsDown");
  const auto items = coder.decodeCodersForKey("items");
  for (std::size_t i = 0; items && i < items->size(); ++i) {
    const NSCoder& each = (*items)[i];
    const auto item = each.decodeBoolForKey("separator") ? NSMenuItem::separatorItem()
                                                         : make<NSMenuItem>(each.decodeStringForKey("title").value_or(""));
    item->setTag(each.decodeIntegerForKey("tag"));
    if (!each.boolForKey("enabled").value_or(true)) {
      item->setEnabled(false);
      menu_->setAutoenablesItems(false);  // which would enable it
    }
    menu_->addItem(item);
  }
  const auto selected = coder.numberForKey("selectedIndex");
  if (selected && *selected >= 0 && *selected < static_cast<double>(numberOfItems()))
    selectItemAtIndex(static_cast<std::size_t>(*selected));
}

NSPopUpButtonCell::NSPopUpButtonCell(const NSPopUpButtonCell& other)
    : NSButtonCell(other),
      menu_(copyOf(*other.menu_)),
      pullsDown_(other.pullsDown_),
      altersState_(other.altersState_),
      isDeselected_(other.isDeselected_) {
  if (const auto index = other.indexOfSelectedItem()) selected_ = menu_->itemAtIndex(*index);
}

// Its menu may be the program's, and still be open.
NSPopUpButtonCell::~NSPopUpButtonCell() { showTitleItem(); }

void NSPopUpButtonCell::setMenu(Ref<NSMenu> menu) {
  dismissPopUp();
  menu_ = menu ? std::move(menu) : make<NSMenu>();
  selected_.reset();
  isDeselected_ = false;
}

std::vector<std::string> NSPopUpButtonCell::itemTitles() const {
  std::vector<std::string> titles;
  for (const Ref<NSMenuItem>& item : itemArray()) titles.push_back(item->title());
  return titles;
}

void NSPopUpButtonCell::addItemsWithTitles(const std::vector<std::string>& titles) {
  for (const std::string& title : titles) addItemWithTitle(title);
}

void NSPopUpButtonCell::insertItemWithTitle(const std::string& title, std::size_t index) {
  const auto item = make<NSMenuItem>(title);
  menu_->insertItem(item, index);
  // The earlier one of the title, wherever it is.
  const auto isEarlier = [&](const Ref<NSMenuItem>& each) {
    return each != item && each->title() == title && !each->isSeparatorItem();
  };
  for (auto found = std::ranges::find_if(itemArray(), isEarlier); found != itemArray().end();
       found = std::ranges::find_if(itemArray(), isEarlier)) {
    const Ref<NSMenuItem> earlier = *found;
    menu_->removeItem(earlier);
  }
}

Ref<NSMenuItem> NSPopUpButtonCell::selectedItem() const {
  if (isDeselected_) return nullptr;
  const Ref<NSMenuItem> selected = selected_.lock();
  if (selected && selected->menu() == menu_) return selected;
  return itemArray().empty() ? nullptr : itemArray().front();
}

std::optional<std::size_t> NSPopUpButtonCell::indexOfSelectedItem() const {
  const Ref<NSMenuItem> item = selectedItem();
  return item ? menu_->indexOfItem(*item) : std::nullopt;
}

std::string NSPopUpButtonCell::titleOfSelectedItem() const {
  const Ref<NSMenuItem> item = selectedItem();
  return item ? item->title() : std::string();
}

void NSPopUpButtonCell::selectItem(const Ref<NSMenuItem>& item) {
  const Ref<NSMenuItem> before = selectedItem();
  isDeselected_ = !item || item->menu() != menu_;
  selected_ = isDeselected_ ? nullptr : item;
  if (!altersState_ || pullsDown_) return;
  if (before) before->setState(NSControlStateValueOff);
  if (!isDeselected_) item->setState(NSControlStateValueOn);
}

void NSPopUpButtonCell::selectItemAtIndex(std::optional<std::size_t> index) {
  selectItem(index ? itemAtIndex(*index) : nullptr);
}

bool NSPopUpButtonCell::selectItemWithTag(std::int64_t tag) {
  const Ref<NSMenuItem> item = menu_->itemWithTag(tag);
  if (item) selectItem(item);
  return item != nullptr;
}

std::string NSPopUpButtonCell::title() const {
  if (!pullsDown_) return titleOfSelectedItem();
  return itemArray().empty() ? std::string() : itemArray().front()->title();
}

void NSPopUpButtonCell::setTitle(std::string_view title) {
  if (pullsDown_ && !itemArray().empty()) return itemArray().front()->setTitle(std::string(title));
  if (!itemWithTitle(title)) addItemWithTitle(std::string(title));
  selectItemWithTitle(title);
}

Ref<NSObject> NSPopUpButtonCell::objectValue() const {
  const auto index = indexOfSelectedItem();
  return make<NSNumber>(index ? static_cast<int>(*index) : -1);
}

void NSPopUpButtonCell::setObjectValue(Ref<NSObject> value) {
  const double index = doubleOf(value.get());
  const bool isThere = index >= 0 && index < static_cast<double>(numberOfItems());
  selectItemAtIndex(isThere ? std::optional(static_cast<std::size_t>(index)) : std::nullopt);
}

// The items that have no action of their own get the cell's, so that the menu finds somebody who takes it and enables them. Those
// of a copy, or of a menu that another cell had before, may still have that of the other cell.
void NSPopUpButtonCell::prepareItems() {
  for (const Ref<NSMenuItem>& item : itemArray()) {
    const bool hasOwnAction = !item->action().empty() && item->action() != itemAction;
    if (hasOwnAction || item->hasSubmenu() || item->isSeparatorItem()) continue;
    item->setAction(std::string(itemAction));
    item->setTarget(shared_from_this());
  }
  const Ref<NSMenuItem> selected = selectedItem();
  if (selected && altersState_ && !pullsDown_) selected->setState(NSControlStateValueOn);
  if (pullsDown_ && !itemArray().empty() && !itemArray().front()->isHidden()) {
    hiddenTitle_.value = itemArray().front();
    itemArray().front()->setHidden(true);
  }
}

bool NSPopUpButtonCell::performClickWithFrame(CGRect frame, NSView& view) {
  if (!isEnabled()) return false;
  if (menu_->isOpen()) return true;
  const Ref<NSObject> held = shared_from_this();
  setHighlighted(true);
  view.setNeedsDisplay(true);
  const auto preparedItem = [this] {
    prepareItems();
    return pullsDown_ ? nullptr : selectedItem();
  };
  const WeakRef<NSPopUpButtonCell> self = refTo(*this);
  bool isOpen = false;
  const AtEndOfScope end([&] {
    if (!isOpen) didClose(nullptr);
  });
  isOpen = menu_->popUpMenuOverRect(frame, view, preparedItem, [self](const Ref<NSMenuItem>& chosen) {
    if (const auto cell = self.lock()) cell->didClose(chosen);
  });
  return isOpen;
}

bool NSPopUpButtonCell::performKeyEquivalent(const NSEvent& event) {
  // Without any such item a typed letter prepares none.
  if (!isEnabled() || menu_->isOpen() || !hasKeyEquivalents(*menu_)) return false;
  const Ref<NSObject> held = shared_from_this();
  const auto itemOfKey = [&] {
    const AtEndOfScope end([this] { showTitleItem(); });
    prepareItems();
    return menu_->itemForKeyEquivalent(event);
  };
  const Ref<NSMenuItem> item = itemOfKey();
  const Ref<NSMenu> menu = item ? item->menu() : nullptr;
  if (!menu) return false;
  if (event.isARepeat()) return true;  // a key that is held chooses once
  didClose(item);
  if (const std::optional<std::size_t> index = menu->indexOfItem(*item)) menu->performActionForItemAtIndex(*index);
  return true;
}

void NSPopUpButtonCell::showTitleItem() {
  if (const Ref<NSMenuItem> title = hiddenTitle_.value.lock()) title->setHidden(false);
  hiddenTitle_.value.reset();
}

void NSPopUpButtonCell::didClose(const Ref<NSMenuItem>& chosen) {
  showTitleItem();
  setHighlighted(false);
  if (chosen && chosen->menu() == menu_ && chosen != selectedItem()) {
    selectItem(chosen);
    NSAccessibilityPostNotification(shared_from_this(), NSAccessibilityValueChangedNotification);
  }
  if (controlView()) controlView()->setNeedsDisplay(true);
}

void NSPopUpButtonCell::itemWasChosen(NSObject* sender) {
  // The menu's own way to perform an item's action comes here without an opening.
  auto* item = dynamic_cast<NSMenuItem*>(sender);
  // One that was removed while the menu was open was not chosen.
  if (!item || (item->menu() != menu_ && item != menu_->chosenItem().get())) return;
  didClose(refTo(*item));
  if (auto* control = dynamic_cast<NSControl*>(controlView())) control->sendActionTo(control->action(), control->target());
}

CGSize NSPopUpButtonCell::cellSize() const {
  CGFloat width = 0;
  const NSAttributes attributes = plainAttributes();
  for (const Ref<NSMenuItem>& item : itemArray())
    width = std::max(width, NSAttributedString(std::string_view(item->title()), attributes).size().width);
  const CGFloat height = NSAttributedString(std::string_view("x"), attributes).size().height;
  return {titleMarginX + width + arrowsWidth, height + 2 * titleMarginY};
}

void NSPopUpButtonCell::drawWithFrame(CGRect frame, NSView& view) {
  drawBorderAndBackgroundWithFrame(frame, view);
  drawInteriorWithFrame(frame, view);
}

void NSPopUpButtonCell::drawBorderAndBackgroundWithFrame(CGRect frame, NSView&) {
  if (isBordered() || isBezeled()) drawButtonBox(frame, {.isDown = isHighlighted(), .isEnabled = isEnabled()});
  constexpr CGFloat half = 3.5, fromRight = 12;
  const CGFloat x = CGRectGetMaxX(frame) - fromRight, y = CGRectGetMidY(frame);
  const auto arrows = NSBezierPath::bezierPath();
  const auto addArrow = [&](CGFloat base, CGFloat tip) {
    arrows->moveToPoint({x - half, y + base});
    arrows->lineToPoint({x, y + tip});
    arrows->lineToPoint({x + half, y + base});
  };
  if (!pullsDown_) addArrow(-2, -5.5);
  addArrow(pullsDown_ ? -1.5 : 2, pullsDown_ ? 2 : 5.5);
  arrows->setLineWidth(1.5);
  plainTextColor()->setStroke();
  arrows->stroke();
}

void NSPopUpButtonCell::drawTitleWithFrame(CGRect frame, NSView&) {
  const NSAttributedString text(std::string_view(title()), plainAttributes());
  const CGFloat height = text.size().height, width = frame.size.width - titleMarginX - arrowsWidth;
  if (text.length() > 0 && width > 0)
    text.drawInRect({frame.origin.x + titleMarginX, frame.origin.y + (frame.size.height - height) * 0.5, width, height});
}

std::string NSPopUpButtonCell::accessibilityRole() const {
  return std::string(pullsDown_ ? NSAccessibilityMenuButtonRole : NSAccessibilityPopUpButtonRole);
}

AccessibilityValue NSPopUpButtonCell::accessibilityValue() const {
  return pullsDown_ ? AccessibilityValue() : titleOfSelectedItem();
}

AccessibilityValue NSPopUpButtonCell::accessibilityAttributeValue(std::string_view attribute) const {
  if (attribute == NSAccessibilityExpandedAttribute) return menu_->isOpen();
  return NSButtonCell::accessibilityAttributeValue(attribute);
}

std::vector<std::string> NSPopUpButtonCell::accessibilityActionNames() const {
  return {std::string(NSAccessibilityPressAction), std::string(NSAccessibilityShowMenuAction)};
}

void NSPopUpButtonCell::accessibilityPerformAction(std::string_view action) {
  if (action == NSAccessibilityPressAction || action == NSAccessibilityShowMenuAction) accessibilityPerformPress();
}

bool NSPopUpButtonCell::accessibilityPerformPress() {
  return controlView() && performClickWithFrame(controlView()->bounds(), *controlView());
}

}  // namespace tessaluna::platform
