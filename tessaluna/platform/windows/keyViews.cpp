#include "tessaluna/platform/windows/keyViews.h"

#include <algorithm>

#include "tessaluna/platform/views/NSView.h"
#include "tessaluna/platform/windows/NSWindow.h"

namespace tessaluna::platform {

namespace {

struct KeyViews {
  std::vector<Ref<NSView>> views;
  const NSView* leftOut = nullptr;  // with what is below it
  std::size_t placeOfLeftOut = 0;   // how many of the views are before it

  void collect(const Ref<NSView>& view) {
    if (view.get() == leftOut) {
      placeOfLeftOut = views.size();
      return;
    }
    if (view->isHidden() || view->isLeftOut()) return;
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
  others.leftOut = &view;
  if (view.window() && view.window()->contentView()) others.collect(view.window()->contentView());
  std::rotate(others.views.begin(), others.views.begin() + static_cast<std::ptrdiff_t>(others.placeOfLeftOut),
              others.views.end());
  return std::move(others.views);
}

}  // namespace tessaluna::platform
