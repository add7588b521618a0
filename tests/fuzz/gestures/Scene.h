// A window that gestures are tried on, and what its program may do to it meanwhile.
#pragma once

#include <functional>
#include <memory>
#include <span>
#include <string_view>
#include <vector>

#include "tessaluna/platform/views/NSView.h"
#include "tessaluna/platform/windows/NSWindow.h"
#include "tests/fuzz/FuzzInput.h"

namespace fuzz {

struct Scene {
  // Called by every action, delegate and source of the scene: the program may then change anything.
  std::function<void()> act;

  tessaluna::platform::Ref<tessaluna::platform::NSWindow> window;
  // The program's own views: it hides, moves and removes these, and no part of a view that the library made.
  struct Part {
    tessaluna::platform::Ref<tessaluna::platform::NSView> view;
    tessaluna::platform::WeakRef<tessaluna::platform::NSView> superview = {};  // while it is removed
  };
  std::vector<Part> parts;
  // What the program changes of its models and settings.
  std::vector<std::function<void(FuzzInput&)>> changes;
  std::vector<std::shared_ptr<void>> kept;  // delegates, targets, models

  template <class View, class... Arguments>
  tessaluna::platform::Ref<View> add(Arguments&&... arguments) {
    const auto view = tessaluna::platform::make<View>(std::forward<Arguments>(arguments)...);
    put(view);
    return view;
  }
  void put(const tessaluna::platform::Ref<tessaluna::platform::NSView>& view) {
    window->contentView()->addSubview(view);
    parts.push_back({view});
  }
  // A change of a view that may have been deleted by then.
  template <class View, class Change>
  void mayChange(const tessaluna::platform::Ref<View>& view, Change change) {
    changes.push_back([weak = tessaluna::platform::WeakRef<View>(view), change](FuzzInput& input) {
      if (const tessaluna::platform::Ref<View> held = weak.lock()) change(*held, input);
    });
  }
};

// Each fills a scene that has a window of 400 by 300 points.
using SceneMaker = void (*)(Scene&);
std::span<const SceneMaker> sceneMakers();

}  // namespace fuzz
