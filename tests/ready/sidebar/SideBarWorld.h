// A side bar of eight places in a window of its own size, for a virtual user and an assistive client.
#pragma once

#include <gmock/gmock.h>

#include <memory>
#include <string>
#include <vector>

#include "tessaluna/platform/accessibility/AccessibleChanges.h"
#include "tessaluna/platform/accessibility/AccessibleDescription.h"
#include "tessaluna/platform/accessibility/accessibleTree.h"
#include "tessaluna/platform/accessibility/attributes.h"
#include "tessaluna/platform/layout/NSLayoutConstraint.h"
#include "tessaluna/ready/sidebar/SideBar.h"
#include "tests/harness/StillWorld.h"
#include "tests/harness/printing.h"

namespace tessaluna::ready {

// Three items, and a section with another one in it.
class Places : public SideBarModel {
 public:
  std::vector<SideSection> sections() const override { return now; }
  using SideBarModel::didChange;

  std::vector<SideSection> now{
      {.title = "Library", .items = {{.title = "Albums", .count = 12}, {.title = "Artists"}, {.title = "Songs"}}},
      {.title = "Playlists",
       .items = {{.title = "Morning", .id = "list-1"}},
       .sections = {{.title = "Old", .items = {{.title = "Autumn", .id = "list-2"}}}}},
  };
};

class SideBarWorld : public harness::StillWorld {
 protected:
  static constexpr platform::CGFloat width = 200, height = 300, row = 28;

  SideBarWorld() {
    platform::NSLayoutConstraint::setConflictHandler([this](const std::string& line) { conflicts.push_back(line); });
    bar->setOnChoose([this](const SideItem& item) { chosen.push_back(item.title); });
    bar->setFrame({0, 0, width, height});
    window->contentView()->addSubview(bar);
    desktop.settle();
  }
  ~SideBarWorld() override {
    EXPECT_THAT(conflicts, testing::IsEmpty());
    platform::NSLayoutConstraint::setConflictHandler(nullptr);
  }

  // The element of that name, below the bar.
  platform::Ref<platform::NSObject> element(const std::string& name) { return elementIn(bar, name); }
  platform::Ref<platform::NSObject> elementIn(const platform::Ref<platform::NSObject>& from, const std::string& name) {
    for (const platform::Ref<platform::NSObject>& child : accessibleChildrenOf(from)) {
      const std::string role = accessibleRoleOf(child);
      if (accessibleNameOf(child) == name && role != platform::NSAccessibilityListRole) return child;
      if (const platform::Ref<platform::NSObject> inner = elementIn(child, name)) return inner;
    }
    return nullptr;
  }
  platform::Ref<platform::NSView> view(const std::string& name) {
    return std::dynamic_pointer_cast<platform::NSView>(element(name));
  }
  // Of a place, from the top of the window.
  platform::CGFloat topOf(const std::string& name) {
    return height - CGRectGetMaxY(view(name)->convertRectToView(view(name)->bounds(), nullptr));
  }
  void click(const std::string& name) {
    user.click(*window, view(name)->convertPointToView({60, row / 2}, nullptr));
    desktop.advance(1);
  }
  void giveKeyboardTo(const std::string& name) { window->makeFirstResponder(view(name).get()); }
  void press(char32_t key) {
    user.pressKey(key);
    desktop.advance(1);
  }
  void press(const std::string& key) {
    user.pressKey(key);
    desktop.advance(1);
  }
  std::string focused() { return platform::accessibleNameOf(platform::focusedElement()); }
  bool isSelected(const std::string& name) {
    return accessibleStatesOf(element(name)).contains(platform::AccessibleState::Selected);
  }
  // As a client that has asked for all of it.
  void meetAll(const platform::Ref<platform::NSObject>& from) {
    accessibilityOf(from)->setAccessibilityCompanion(std::make_unique<platform::AccessibleMemory>(from));
    for (const platform::Ref<platform::NSObject>& child : accessibleChildrenOf(from)) meetAll(child);
  }
  std::vector<std::string> lines() { return accessibleTreeLines(bar); }

  std::vector<std::string> chosen, conflicts;
  std::shared_ptr<Places> places = std::make_shared<Places>();
  platform::Ref<SideBar> bar = platform::make<SideBar>(places);
  platform::Ref<platform::NSWindow> window = showWindow({100, 100, width, height});
};

}  // namespace tessaluna::ready
