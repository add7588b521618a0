#include "tessaluna/platform/windows/ChildWindows.h"

#include <algorithm>
#include <utility>

#include "tessaluna/platform/time/PropertyAnimation.h"
#include "tessaluna/platform/windows/NSWindow.h"

namespace tessaluna::platform {

ChildWindows::~ChildWindows() {
  // Children may outlive this window in somebody else's hands; their way up ends here.
  for (const Child& child : children_) {
    child.window->children_.parent_ = nullptr;
    child.window->children_.linkNative();
  }
}

std::vector<Ref<NSWindow>> ChildWindows::windows() const {
  std::vector<Ref<NSWindow>> result;
  for (const Child& child : children_) result.push_back(child.window);
  return result;
}

void ChildWindows::add(const Ref<NSWindow>& child) {
  for (const NSWindow* ancestor = &window_; ancestor; ancestor = ancestor->parentWindow())
    if (ancestor == child.get()) return;
  if (NSWindow* earlier = child->parentWindow()) earlier->children_.remove(*child);
  children_.push_back({child, /*isShownWithParent=*/true});
  child->children_.parent_ = &window_;
  if (window_.isVisible()) {
    child->orderFront(nullptr);
  } else {
    child->children_.linkNative();
  }
}

void ChildWindows::remove(NSWindow& child) {
  const auto found =
      std::find_if(children_.begin(), children_.end(), [&](const Child& entry) { return entry.window.get() == &child; });
  if (found == children_.end()) return;
  const Ref<NSWindow> held = found->window;
  children_.erase(found);
  child.children_.parent_ = nullptr;
  child.children_.linkNative();
}

void ChildWindows::linkNative() {
  backend::NativeWindow* native = window_.nativeWindow();
  if (native) native->setParent(parent_ ? parent_->nativeWindow() : nullptr);
}

void ChildWindows::parentMoved(CGPoint by) {
  for (const Ref<NSWindow>& child : windows()) {
    // One on its way is there now: from where the parent was, the way leads to another place.
    finishAnimationOfProperty<&NSWindow::moveTo>(*child);
    if (child->parentWindow() != &window_) continue;  // whoever was notified of a move has removed it
    const CGRect frame = child->frame();
    child->setFrame(NSOffsetRect(frame, by.x, by.y), false);
  }
}

void ChildWindows::parentWasShown() {
  linkNative();
  for (const Child& child : std::vector<Child>(children_))
    if (child.isShownWithParent && child.window->parentWindow() == &window_) child.window->orderFront(nullptr);
}

void ChildWindows::parentWasHidden() {
  for (const Ref<NSWindow>& child : windows()) child->orderOut(nullptr);
}

void ChildWindows::childWasShown(NSWindow& child, bool isShown) {
  for (Child& entry : children_)
    if (entry.window.get() == &child) entry.isShownWithParent = isShown;
}

}  // namespace tessaluna::platform
