// A window with a cover's thumbnail, on two screens of different scales.
#pragma once

#include "tessaluna/platform/graphics/NSImage.h"
#include "tessaluna/platform/graphics/NSImageRep.h"
#include "tessaluna/uikit/coverart/CoverArtThumbnailView.h"
#include "tests/harness/ProbeView.h"
#include "tests/harness/StillWorld.h"
#include "tests/harness/printing.h"

namespace harness {

class CoverArtWorld : public StillWorld {
 protected:
  static constexpr tessaluna::backend::Screen plainScreen{{0, 0, 1440, 900}, {0, 0, 1440, 876}, 1},
      fineScreen{{1440, 0, 1280, 800}, {1440, 40, 1280, 760}, 2};

  CoverArtWorld() {
    desktop.setScreens({plainScreen, fineScreen});
    window->contentView()->addSubview(thumbnail);
    desktop.settle();
  }

  // An image of so many pixels, and as a size another one.
  static tessaluna::platform::Ref<tessaluna::platform::NSImage> imageOf(int wide, int high) {
    const auto image = tessaluna::platform::make<tessaluna::platform::NSImage>(tessaluna::platform::CGSize{32, 32});
    image->addRepresentation(
        tessaluna::platform::make<tessaluna::platform::NSImageRep>(tessaluna::platform::CGSize{8, 8}, wide, high));
    return image;
  }

  void mouseUp() {
    thumbnail->mouseUp(tessaluna::platform::make<tessaluna::platform::NSEvent>(tessaluna::platform::NSEvent::Fields{
        .type = tessaluna::platform::NSEventType::LeftMouseUp, .location = {30, 30}, .window = window}));
  }
  void enlarge(int wide, int high) {
    thumbnail->setImage(imageOf(wide, high));
    mouseUp();
  }

  // All that are on the screen, in the order in which they were made.
  static std::vector<tessaluna::platform::Ref<TessalunaUIKit::CoverArtPanel>> panels() {
    std::vector<tessaluna::platform::Ref<TessalunaUIKit::CoverArtPanel>> result;
    for (const auto& each : tessaluna::platform::NSApp->windows())
      if (auto panel = std::dynamic_pointer_cast<TessalunaUIKit::CoverArtPanel>(each); panel && panel->isVisible())
        result.push_back(panel);
    return result;
  }
  // The one that is on the screen; null for none, and a failure for several.
  static tessaluna::platform::Ref<TessalunaUIKit::CoverArtPanel> panel() {
    const auto all = panels();
    EXPECT_LE(all.size(), 1u);
    return all.empty() ? nullptr : all[0];
  }
  static tessaluna::platform::Ref<tessaluna::platform::NSImageView> shown() {
    return std::dynamic_pointer_cast<tessaluna::platform::NSImageView>(panel()->contentView());
  }

  // The thumbnail's upper left corner is at (120, 154) of the screen.
  tessaluna::platform::Ref<tessaluna::platform::NSWindow> window = showWindow({100, 60, 200, 150});
  tessaluna::platform::Ref<TessalunaUIKit::CoverArtThumbnailView> thumbnail =
      tessaluna::platform::make<TessalunaUIKit::CoverArtThumbnailView>(tessaluna::platform::CGRect{20, 30, 64, 64});
};

}  // namespace harness
