// A button over a pop-up's cell: a press, the space bar, or the up and down arrows open its menu. Its action comes when an item is
// chosen that has no action of its own, also if it was selected before. The key equivalents of its items choose them wherever the
// keyboard of the window is; those that the menu's delegate adds in menuNeedsUpdate may not be found.
#pragma once

#include "tessaluna/platform/cells/NSPopUpButtonCell.h"
#include "tessaluna/platform/views/NSButton.h"

namespace tessaluna::platform {

class NSPopUpButton : public NSButton {
 public:
  static const ClassInfo staticClassInfo;
  const ClassInfo& classInfo() const override { return staticClassInfo; }

  explicit NSPopUpButton(CGRect frame, bool pullsDown = false);
  explicit NSPopUpButton(NSCoder& coder) : NSButton(coder) {}

  // These are the cell's; the setters ask for a redraw. With a cell of another class there are no items, and they do nothing.
  bool pullsDown() const { return popUpCell() && popUpCell()->pullsDown(); }
  void setPullsDown(bool pullsDown);
  Ref<NSMenu> menu() const { return popUpCell() ? popUpCell()->menu() : nullptr; }
  void setMenu(Ref<NSMenu> menu);
  std::size_t numberOfItems() const { return popUpCell() ? popUpCell()->numberOfItems() : 0; }
  Ref<NSMenuItem> itemAtIndex(std::size_t index) const { return popUpCell() ? popUpCell()->itemAtIndex(index) : nullptr; }
  void addItemWithTitle(const std::string& title);
  void addItemsWithTitles(const std::vector<std::string>& titles);
  void insertItemWithTitle(const std::string& title, std::size_t index);
  void removeItemAtIndex(std::size_t index);
  void removeAllItems();
  Ref<NSMenuItem> selectedItem() const { return popUpCell() ? popUpCell()->selectedItem() : nullptr; }
  std::optional<std::size_t> indexOfSelectedItem() const;
  std::string titleOfSelectedItem() const { return popUpCell() ? popUpCell()->titleOfSelectedItem() : std::string(); }
  void selectItemAtIndex(std::optional<std::size_t> index);
  void selectItemWithTitle(std::string_view title);
  bool selectItemWithTag(std::int64_t tag);

  void performClick(NSObject* sender) override;  // opens the menu
  void mouseDown(const Ref<NSEvent>& event) override;
  void keyDown(const Ref<NSEvent>& event) override;
  bool performKeyEquivalent(const Ref<NSEvent>& event) override;
  void setEnabled(bool isEnabled) override;  // disabling closes the menu
  void viewDidHide() override;               // and so does hiding
  void enablesControlsDidChange() override;  // and what disables it from above

 protected:
  Ref<NSCell> makeCell() override { return make<NSPopUpButtonCell>(std::string(), startsAsPullDown_); }
  Ref<NSCell> makeCell(NSCoder& coder) override { return make<NSPopUpButtonCell>(coder); }
  void windowWillChange() override;

 private:
  NSPopUpButtonCell* popUpCell() const { return dynamic_cast<NSPopUpButtonCell*>(cell().get()); }
  template <class Change>
  void changeCell(Change change);
  void closeMenu();

  bool startsAsPullDown_ = false;
};

}  // namespace tessaluna::platform
