// Views below each other, each as wide as the stack but for margins, placed by constraints. Who has it may hang its own bottom
// on the stack's, which is at the last view's.
#pragma once

#include <vector>

#include "tessaluna/platform/layout/NSLayoutConstraint.h"
#include "tessaluna/platform/views/NSView.h"

namespace tessaluna::ready {

// An equality between attributes of two views.
platform::Ref<platform::NSLayoutConstraint> equalConstraint(const platform::Ref<platform::NSView>& view,
                                                            platform::NSLayoutAttribute attribute,
                                                            const platform::Ref<platform::NSView>& other,
                                                            platform::NSLayoutAttribute otherAttribute,
                                                            platform::CGFloat constant = 0);

// Of right margins, which give way where a bar is narrower than they are.
inline constexpr platform::NSLayoutPriority marginPriority = platform::NSLayoutPriorityRequired - 1;

class SideBarStack : public platform::NSView {
 public:
  static const platform::ClassInfo staticClassInfo;
  const platform::ClassInfo& classInfo() const override { return staticClassInfo; }

  // A document is as high as its views; any other stack gets its frame from constraints.
  enum class Kind { Document, Part };
  explicit SideBarStack(Kind kind);

  struct Entry {
    platform::Ref<platform::NSView> view;
    platform::CGFloat left = 0, margin = 0;  // the second at the right and below
    friend bool operator==(const Entry&, const Entry&) = default;
  };
  // Views that were in the stack before stay in their superview, and keep the keyboard.
  void show(std::vector<Entry> entries);

  bool isFlipped() const override { return true; }
  void layout() override;
  void subviewFrameDidChange(platform::NSView& view) override;

 protected:
  // From top to bottom, whatever came first.
  std::optional<platform::AccessibilityElements> accessibilityOwnChildren() const override;

 private:
  const Kind kind_;
  std::vector<Entry> entries_;
  std::vector<platform::Ref<platform::NSLayoutConstraint>> chain_;
};

}  // namespace tessaluna::ready
