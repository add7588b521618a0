// What a SideBar shows: a program's own places, in a few words. When they change, the model announces it.
//
//   class Places : public tessaluna::ready::SideBarModel {
//    public:
//     std::vector<SideSection> sections() const override {
//       return {{.title = "Library", .items = {{.title = "Albums", .count = albums_.size()}, {.title = "Artists"}}}};
//     }
//     void add(Album album) { albums_.push_back(std::move(album)); didChange(); }
//   };
#pragma once

#include <cstddef>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "tessaluna/platform/graphics/NSColor.h"
#include "tessaluna/platform/views/NSView.h"
#include "tessaluna/ready/parts/Observers.h"

namespace tessaluna::ready {

// One place to go to. Texts are UTF-8.
struct SideItem {
  std::string title = {};
  std::string id = {};  // the program's own, unique among the items of the bar; empty: the title
  // Draws into 16 by 16 points, y upward. Its black becomes the tint, or without one the color of the title; white the ground.
  std::function<void(platform::CGRect frame)> icon = {};
  platform::Ref<platform::NSColor> tint = {};  // a selected item has the title's color all the same
  std::optional<std::size_t> count = {};       // at the right of the title
};

// A heading that folds what is below it: items, then a view of the program's own, then sections within this one.
struct SideSection {
  std::string title = {};
  std::string id = {};  // the program's own, unique among the sections of the bar; empty: the title
  std::vector<SideItem> items = {};
  platform::Ref<platform::NSView> view = {};  // as wide as the bar but for a margin, and as high as its content wants
  std::vector<SideSection> sections = {};
};

class SideBarModel {
 public:
  virtual ~SideBarModel() = default;
  virtual std::vector<SideSection> sections() const = 0;

  // Who is notified of changes: the bars that show the model. Not kept alive: an observer removes itself before it ends.
  class Observer {
   public:
    virtual ~Observer() = default;
    virtual void sideBarDidChange() = 0;
  };
  void addObserver(Observer& observer) { observers_.add(observer); }
  void removeObserver(Observer& observer) { observers_.remove(observer); }

 protected:
  // Called when the change has been made; sections() knows it already. Items and sections are the same by their ids.
  // A call while a bar shows an earlier change shows when that is done.
  void didChange() {
    observers_.notify([](Observer& observer) { observer.sideBarDidChange(); });
  }

 private:
  Observers<Observer> observers_;
};

}  // namespace tessaluna::ready
