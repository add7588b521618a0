// Pictures of the library as Qt icons, drawn again at the device pixels of each place where they show:
//
//   button.setIcon(backend::qt::icon(TessalunaStyleKit::imageOfRightArrow()));
//   button.setIcon(backend::qt::iconOfDrawing({32, 32}, TessalunaStyleKit::drawPlay));
//   button.setIcon(backend::qt::iconOfDrawing({32, 32}, TessalunaStyleKit::drawPlay, {.role = IconRole::ButtonText}));
//
// An icon fills the size that it is asked for as far as its proportions allow, keeps no pixels, and needs no QtBackend.
// Programs that make icons can decode pictures, with `NSImage::initWithData`, without one too.
// An icon without role and tint has the colors that its drawing sets; with `setNeutralsFollowPalette` it has the role Text. Its
// looks for disabled, active and selected are those that the application's style makes of the normal one.
#pragma once

#include <QColor>
#include <QIcon>
#include <functional>
#include <optional>

#include "tessaluna/platform/foundation/Geometry.h"
#include "tessaluna/platform/graphics/Forward.h"

namespace tessaluna::backend::qt {

// What black becomes in an icon, with grays on the way from there to the ground, and white the ground: two colors of the
// application's palette, those of the moment when the icon is painted. A disabled icon has the palette's colors for what is
// disabled, a selected one those of selected text.
enum class IconRole {
  None,
  Text,        // QPalette::WindowText on Window
  ButtonText,  // ButtonText on Button
  ListText,    // Text on Base
};

struct IconLook {
  IconRole role = IconRole::None;
  std::optional<QColor> tint = {};  // in place of the role's text, but where the icon is disabled or selected
};

// Shares the image. A null icon for an absent image or one without extent. The pixels of an image keep their colors.
QIcon icon(platform::Ref<platform::NSImage> image, IconLook look = {});

// The drawing is called with the frame (0, 0, size), in points with y up, and draws into the current context. An empty one
// stops the program.
QIcon iconOfDrawing(platform::CGSize size, std::function<void(platform::CGRect frame)> draw, IconLook look = {});

}  // namespace tessaluna::backend::qt
