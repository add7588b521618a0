// A button that opens a menu. As a pop-up its title is that of the selected item, and the menu opens with that item over the
// button; choosing another selects it. As a pull-down it hangs its menu below itself, and the first item, which the menu does not
// show, is its title.
//
// An item without an action of its own has the control send its. The menu is the desktop's, and nothing waits for the user.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "tessaluna/platform/cells/NSButtonCell.h"
#include "tessaluna/platform/menus/NSMenu.h"

namespace tessaluna::platform {

class NSPopUpButtonCell : public NSButtonCell {
 public:
  static const ClassInfo staticClassInfo;
  const ClassInfo& classInfo() const override { return staticClassInfo; }

  NSPopUpButtonCell() : NSPopUpButtonCell(std::string(), false) {}
  NSPopUpButtonCell(std::string title, bool pullsDown);  // initTextCell:pullsDown: with an item of this title, unless empty
  // Keys besides those of a button's cell: "pullsDown", "selectedIndex"; "items", an array of objects with the keys "title",
  // "tag", "enabled" (true if missing) and "separator".
  explicit NSPopUpButtonCell(NSCoder& coder);
  NSPopUpButtonCell(const NSPopUpButtonCell& other);
  ~NSPopUpButtonCell() override;
  Ref<NSCell> copy() const override { return make<NSPopUpButtonCell>(*this); }  // with items of its own

  bool pullsDown() const { return pullsDown_; }
  void setPullsDown(bool pullsDown) { pullsDown_ = pullsDown; }
  const Ref<NSMenu>& menu() const { return menu_; }  // never null
  void setMenu(Ref<NSMenu> menu);
  // Whether the selected item has a check mark; initially it does.
  bool altersStateOfSelectedItem() const { return altersState_; }
  void setAltersStateOfSelectedItem(bool alters) { altersState_ = alters; }

  // An item that is added takes the place of an earlier one of the same title. Indices beyond the end stop the program.
  std::size_t numberOfItems() const { return menu_->numberOfItems(); }
  const std::vector<Ref<NSMenuItem>>& itemArray() const { return menu_->itemArray(); }
  std::vector<std::string> itemTitles() const;
  Ref<NSMenuItem> itemAtIndex(std::size_t index) const { return menu_->itemAtIndex(index); }
  Ref<NSMenuItem> itemWithTitle(std::string_view title) const { return menu_->itemWithTitle(title); }
  void addItemWithTitle(const std::string& title) { insertItemWithTitle(title, numberOfItems()); }
  void addItemsWithTitles(const std::vector<std::string>& titles);
  void insertItemWithTitle(const std::string& title, std::size_t index);
  void removeItemAtIndex(std::size_t index) { menu_->removeItemAtIndex(index); }
  void removeAllItems() { menu_->removeAllItems(); }

  // The first item until another is selected, or when the selected one was removed; null for none. Nothing is sent.
  Ref<NSMenuItem> selectedItem() const;
  std::optional<std::size_t> indexOfSelectedItem() const;
  std::string titleOfSelectedItem() const;
  void selectItem(const Ref<NSMenuItem>& item);  // null selects none, and so does one of another menu
  void selectItemAtIndex(std::optional<std::size_t> index);
  void selectItemWithTitle(std::string_view title) { selectItem(itemWithTitle(title)); }
  bool selectItemWithTag(std::int64_t tag);  // false, and nothing done, without such an item

  // Setting the title of a pop-up selects the item with it, which is added if there is none; that of a pull-down is its first
  // item's. The value is the index of the selected item, -1 for none.
  std::string title() const override;
  void setTitle(std::string_view title) override;
  Ref<NSObject> objectValue() const override;
  void setObjectValue(Ref<NSObject> value) override;

  // Opens the menu for the cell in the frame. False if it did not open. The cell is highlighted meanwhile.
  bool performClickWithFrame(CGRect frame, NSView& view);
  void dismissPopUp() { menu_->cancelTracking(); }
  // True if an item that can be chosen has the key: it was chosen, without an opening, unless the key repeats.
  bool performKeyEquivalent(const NSEvent& event);

  CGSize cellSize() const override;
  void drawWithFrame(CGRect frame, NSView& view) override;
  void drawInteriorWithFrame(CGRect frame, NSView& view) override { drawTitleWithFrame(frame, view); }
  // Of the whole frame, each.
  virtual void drawBorderAndBackgroundWithFrame(CGRect frame, NSView& view);
  virtual void drawTitleWithFrame(CGRect frame, NSView& view);

  // What is selected is the value; pressing opens the menu.
  std::string accessibilityRole() const override;
  AccessibilityValue accessibilityValue() const override;
  AccessibilityValue accessibilityAttributeValue(std::string_view attribute) const override;
  std::vector<std::string> accessibilityActionNames() const override;
  void accessibilityPerformAction(std::string_view action) override;
  bool accessibilityPerformPress() override;

 private:
  static const Selector selectors_[];
  void itemWasChosen(NSObject* item);  // "_popUpItemAction:"
  void didClose(const Ref<NSMenuItem>& chosen);
  void showTitleItem();
  void prepareItems();

  Ref<NSMenu> menu_;
  WeakRef<NSMenuItem> selected_;
  Uncopied<WeakRef<NSMenuItem>> hiddenTitle_;  // of a pull-down, while its menu is open
  bool pullsDown_ = false, altersState_ = true, isDeselected_ = false;
};

}  // namespace tessaluna::platform
