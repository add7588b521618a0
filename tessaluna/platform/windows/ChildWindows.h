// The windows that are attached to another one: they are above it, move when it moves, and are hidden and shown with it. Part of
// each window.
#pragma once

#include <vector>

#include "tessaluna/platform/foundation/Geometry.h"
#include "tessaluna/platform/foundation/Reference.h"
#include "tessaluna/platform/views/Forward.h"

namespace tessaluna::platform {

class ChildWindows {
 public:
  explicit ChildWindows(NSWindow& window) : window_(window) {}
  ~ChildWindows();
  ChildWindows(const ChildWindows&) = delete;
  ChildWindows& operator=(const ChildWindows&) = delete;

  NSWindow* parent() const { return parent_; }
  std::vector<Ref<NSWindow>> windows() const;

  // Out of its earlier parent first. One that would be its own ancestor is left alone.
  void add(const Ref<NSWindow>& child);
  void remove(NSWindow& child);

  // What the window itself does is done to its children.
  void parentMoved(CGPoint by);
  void parentWasShown();
  void parentWasHidden();
  // A child that was hidden by itself stays so when the parent is shown again.
  void childWasShown(NSWindow& child, bool isShown);

 private:
  struct Child {
    Ref<NSWindow> window;
    bool isShownWithParent;
  };
  void linkNative();

  NSWindow& window_;
  NSWindow* parent_ = nullptr;
  std::vector<Child> children_;
};

}  // namespace tessaluna::platform
