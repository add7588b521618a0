// The places of a player at the side of its window: sections that fold, with items below their headings, of which one is
// selected. It scrolls where it is higher than its room.
//
//   const auto bar = make<ready::SideBar>(places);
//   bar->setOnChoose([this](const ready::SideItem& item) { show(item.id); });
//   bar->setSelected("Albums");
//
//   a click, Return, Space  choose an item, which is selected then; fold and open a section
//   Up, Down, Home, End     move the keyboard over items and headings, as do the Page keys
//   Left, Right             fold and open a section; from an item Left goes to its heading
//   letters                 go to the next title that begins with them
//   Tab                     stops at the bar once, where the keyboard was
//
// Main thread.
#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "tessaluna/platform/events/TypeSelect.h"
#include "tessaluna/platform/views/NSScrollView.h"
#include "tessaluna/ready/sidebar/SideBarModel.h"

namespace tessaluna::ready {

class SideBarSection;
class SideBarStack;

class SideBar : public platform::NSView, public SideBarModel::Observer {
 public:
  static const platform::ClassInfo staticClassInfo;
  const platform::ClassInfo& classInfo() const override { return staticClassInfo; }

  // 220 by 400 points until it gets a place; it keeps the model alive. A null model stops the program.
  explicit SideBar(std::shared_ptr<SideBarModel> model);
  ~SideBar() override;
  void didInit() override;

  const std::shared_ptr<SideBarModel>& model() const { return model_; }
  // Called when the user chooses an item, also the one that is selected. The bar may be removed in it.
  void setOnChoose(std::function<void(const SideItem& item)> chosen) { chosen_ = std::move(chosen); }
  // The id of the selected item. An id that no item has, or gets, selects nothing; nobody is notified.
  const std::optional<std::string>& selected() const { return selected_; }
  void setSelected(std::optional<std::string> id);
  // Of the section with that id; sections are open at the start. It opens and folds with animation while it shows. A section
  // that is moving finishes that first, and isOpen says what it will be afterwards.
  bool isOpen(std::string_view section) const;
  void setIsOpen(std::string_view section, bool isOpen);
  // What assistive clients call the bar; "Side bar" at the start.
  void setName(const std::string& name);

  const platform::Ref<platform::NSScrollView>& scrollView() const { return scrollView_; }

  void layout() override;
  bool isAccessibilityElement() const override { return true; }
  std::string accessibilityRole() const override;

  // From the model.
  void sideBarDidChange() override;

  // From headings and items. One of them is where Tab stops.
  void choose(const SideItem& item);
  void toggle(SideBarSection& section);
  bool handleKey(platform::NSView& place, const platform::NSEvent& event);
  bool isKeyPlace(const platform::NSView& place) const;
  void keyboardCameTo(platform::NSView& place);

 private:
  struct Place;
  std::vector<Place> places() const;  // those that show, from top to bottom
  platform::Ref<platform::NSView> keyPlace() const;
  void setIsOpen(SideBarSection& section, bool isOpen);
  std::size_t page() const;  // places that a Page key moves over
  void goTo(const platform::Ref<platform::NSView>& place);
  // Parts of handleKey, for the place at an index of all that show.
  bool moveByKey(const std::vector<Place>& all, std::size_t at, const platform::NSEvent& event);
  bool chooseByKey(const Place& here, const platform::NSEvent& event);
  bool searchByKey(const std::vector<Place>& all, std::size_t at, const platform::NSEvent& event);
  void showSelection();
  void update();
  void showModel();

  const std::shared_ptr<SideBarModel> model_;
  const platform::Ref<platform::NSScrollView> scrollView_;
  const platform::Ref<SideBarStack> stack_;
  std::vector<std::shared_ptr<SideBarSection>> sections_;
  std::function<void(const SideItem&)> chosen_;
  std::optional<std::string> selected_;
  bool isUpdating_ = false, isAskedAgain_ = false;
  mutable platform::WeakRef<platform::NSView> keyPlace_;  // where the keyboard is, was or will come
  platform::TypeSelect search_;
};

}  // namespace tessaluna::ready
