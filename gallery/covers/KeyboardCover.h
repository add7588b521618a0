// A cover that the Tab key reaches while it has an image, and that Space and Return enlarge.
#pragma once

#include "tessaluna/platform/events/NSEvent.h"
#include "tessaluna/uikit/coverart/CoverArtThumbnailView.h"

namespace gallery {

class KeyboardCover : public TessalunaUIKit::CoverArtThumbnailView {
 public:
  using CoverArtThumbnailView::CoverArtThumbnailView;

  bool acceptsFirstResponder() const override { return image() != nullptr; }
  void keyDown(const tessaluna::platform::Ref<tessaluna::platform::NSEvent>& event) override {
    using namespace tessaluna::platform;
    constexpr auto others = NSEventModifierFlagControl | NSEventModifierFlagOption | NSEventModifierFlagCommand;
    const bool isPress = event->characters() == " " || event->characters() == "\r";
    if (!isPress || (event->modifierFlags() & others)) return CoverArtThumbnailView::keyDown(event);
    // A key that is held presses once.
    if (!event->isARepeat()) accessibilityPerformAction(NSAccessibilityPressAction);
  }
};

}  // namespace gallery
