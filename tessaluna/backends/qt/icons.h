// Pictures of the library as Qt icons, drawn at the device pixels of each place where they show:
//
//   button.setIcon(backend::qt::icon(TessalunaStyleKit::imageOfRightArrow()));
//   button.setIcon(backend::qt::iconOfDrawing({32, 32}, TessalunaStyleKit::drawPlay));
//   button.setIcon(backend::qt::iconOfDrawing({32, 32}, TessalunaStyleKit::drawPlay, {.role = IconRole::ButtonText}));
//
// An icon fills the requested size as far as its proportions allow, keeps no pixels, and needs no QtBackend. Programs that
// make icons can decode pictures, with `NSImage::initWithData`, without one too.
// An icon without role and tint has the colors that its drawing sets; with `setNeutralsFollowPalette` it has the role Text. The
// application's style derives its disabled, active and selected looks from the normal one.
#pragma once

#include <QColor>
#include <QIcon>
#include <functional>
#include <optional>

#include "tessaluna/platform/foundation/Geometry.h"
#include "tessaluna/platform/graphics/Forward.h"

namespace tessaluna::backend::qt {

// What black becomes in an icon; white becomes the ground, and grays lie between the two. Both are colors of the
// application's palette, looked up when the icon is painted. A disabled icon has the palette's colors for disabled widgets,
// a selected one those of selected text.
enum class IconRole {
  None,
  Text,        // QPalette::WindowText on Window
  ButtonText,  // ButtonText on Button
  ListText,    // Text on Base
};

struct IconLook {
  IconRole role = IconRole::None;
  std::optional<QColor> tint = {};  // replaces the role's text, except where the icon is disabled or selected
};

// Shares the image. A null icon for a null image or one without extent. The pixels of an image keep their colors.
QIcon icon(platform::Ref<platform::NSImage> image, IconLook look = {});

// Calls the drawing with the frame (0, 0, size), in points with y up; it draws into the current context. A glyph with flags is
// called in a lambda: [](CGRect frame) { TessalunaStyleKit::drawMoodLove(frame, false); }. An empty function stops the program.
QIcon iconOfDrawing(platform::CGSize size, std::function<void(platform::CGRect frame)> draw, IconLook look = {});

}  // namespace tessaluna::backend::qt
