#include "tessaluna/platform/windows/keyViews.h"

#include <algorithm>

#include "tessaluna/platform/views/NSView.h"
#include "tessaluna/platform/windows/NSWindow.h"

namespace tessaluna::platform {

namespace {

struct KeyViews {
  std::vector<Ref<NSView>> views;
  const NSView* sought = nullptr;
  enum class Sought { Included, LeftOut } with = Sought::Included;  // what is below it, too
  std::size_t placeOfSought = 0;                                    // how many of the views are before it

  void collect(const Ref<NSView>& view) {
    const bool isSkipped = view->isHidden() || view->isLeftOut();
    if (view.get() == sought || (sought && isSkipped && sought->isDescendantOf(view.get()))) placeOfSought = views.size();
    if (isSkipped || (view.get() == sought && with == Sought::LeftOut)) return;
    if (view->canBecomeKeyView()) views.push_back(view);
    for (const Ref<NSView>& subview : view->subviews()) collect(subview);
  }
};

}  // namespace

std::vector<Ref<NSView>> keyViewsWithin(NSView& view) {
  KeyViews all;
  all.collect(refTo(view));
  return std::move(all.views);
}

std::vector<Ref<NSView>> keyViewsAfter(NSView& view) {
  KeyViews others;
  others.sought = &view;
  others.with = KeyViews::Sought::LeftOut;
  if (view.window() && view.window()->contentView()) others.collect(view.window()->contentView());
  std::rotate(others.views.begin(), others.views.begin() + static_cast<std::ptrdiff_t>(others.placeOfSought),
              others.views.end());
  return std::move(others.views);
}

std::optional<std::size_t> placeAmongKeyViewsWithin(NSView& view, const NSView& other) {
  if (!other.isDescendantOf(&view)) return std::nullopt;
  KeyViews all;
  all.sought = &other;
  all.collect(refTo(view));
  return all.placeOfSought;
}

}  // namespace tessaluna::platform
