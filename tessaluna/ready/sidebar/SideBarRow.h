// One item of a SideBar: icon, title, count. A click, Return and Space choose it; the bar knows which one is selected.
#pragma once

#include "tessaluna/platform/views/FocusRingSurroundings.h"
#include "tessaluna/ready/sidebar/SideBarModel.h"

namespace tessaluna::ready {

class SideBar;

inline constexpr platform::CGFloat sideBarRowHeight = 28;

// Where the chevron of a heading begins, and where its title and the items below it do, in a section that is in so many others.
constexpr platform::CGFloat sideBarHeadingLeft(int depth) { return 10 + 14 * depth; }
constexpr platform::CGFloat sideBarTextLeft(int depth) { return sideBarHeadingLeft(depth) + 14; }

class SideBarRow : public platform::NSView, public platform::FocusRingSurroundings {
 public:
  static const platform::ClassInfo staticClassInfo;
  const platform::ClassInfo& classInfo() const override { return staticClassInfo; }

  SideBarRow(platform::WeakRef<SideBar> bar, int depth);

  const SideItem& item() const { return item_; }
  // Beside an item with an icon the others leave the room of one.
  enum class IconRoom { Left, Absent };
  void showItem(SideItem item, IconRoom room);
  bool isSelected() const { return isSelected_; }
  void setIsSelected(bool isSelected);
  void choose();

  platform::NSView* hitTest(platform::CGPoint point) override;
  void layout() override;
  void drawRect(platform::CGRect rect) override;
  void mouseDown(const platform::Ref<platform::NSEvent>&) override {}
  void mouseUp(const platform::Ref<platform::NSEvent>& event) override;
  void keyDown(const platform::Ref<platform::NSEvent>& event) override;
  bool acceptsFirstResponder() const override { return true; }
  bool becomeFirstResponder() override;
  bool canBecomeKeyView() const override;
  // Within the ground of a selected item, whose color is the ring's usual one.
  platform::CGRect focusRingMaskBounds() const override;
  const platform::NSView& viewWithFocusRing() const override { return *this; }
  platform::Ref<platform::NSColor> focusRingGround() const override;

  bool isAccessibilityElement() const override { return true; }
  std::string accessibilityRole() const override;
  std::string accessibilityTitle() const override;
  std::vector<std::string> accessibilityActionNames() const override;
  void accessibilityPerformAction(std::string_view action) override;

 private:
  class Icon;
  platform::CGRect groundRect() const;
  void updateTint();

  const platform::WeakRef<SideBar> bar_;
  const int depth_;
  const platform::Ref<Icon> icon_;
  SideItem item_;
  IconRoom iconRoom_ = IconRoom::Absent;
  bool isSelected_ = false;
};

}  // namespace tessaluna::ready
